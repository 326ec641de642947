// What dot options and indicators share: the index list of a symbol, how it is read and written,
// and the rule that either the whole entry is kept or nothing of it.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/boundedstring.h"
#include "foundation/lists.h"
#include "foundation/runtime.h"
#include "foundation/strutilx.h"
#include "foundation/textfile.h"
#include "language/miniparser.h"
#include "options/nameindex.h"
#include "options/zmaoptions.h"

namespace optxv {

/// The longest name of a symbol, and the longest index without its quotes.
inline constexpr std::size_t maximumidentifier = 63;
/// The longest index list.
inline constexpr std::int32_t maximumindices = 20;

/// Whether an index is an element between quotes; the quotes are stored with it.
inline bool isquoted(std::string_view index) {
  return index.starts_with('\'') || index.starts_with('"');
}

/// The indices of one symbol, in the order written.
///
/// There may be thousands of entries, and most of them have one or two short indices. So the texts
/// are stored one after another, each after its length as in a heap string, and in the list itself
/// while they fit there. A list that is longer than it may be is stored too, and then knows where
/// each text begins.
class indexlist {
 public:
  std::int32_t count() const noexcept { return count_; }

  /// Appends the first 255 bytes of an index and gives its 0-based position.
  std::int32_t add(std::string_view index) {
    if (count_ >= maximumindices) notestart();
    const std::string_view kept = keptpart(index);
    const std::size_t taken = 1 + kept.size();
    const bool far = used_ + taken > near_.size();
    if (far) {
      if (far_.empty()) far_.assign(near_.data(), used_);
      far_.resize(used_ + taken);
    }
    char* const to = (far ? far_.data() : near_.data()) + used_;
    *to = static_cast<char>(kept.size());
    std::copy(kept.begin(), kept.end(), to + 1);
    used_ += taken;
    return count_++;
  }

  /// REQUIRES: 0 <= i < count(). BORROWS: good until the next add.
  std::string_view get(std::int32_t i) const noexcept {
    if (i >= maximumindices)
      return textat(more_->starts[static_cast<std::size_t>(i - maximumindices)]);
    std::size_t at = 0;
    for (; i > 0; --i) at += 1 + textat(at).size();
    return textat(at);
  }

  /// Whether the list has an index, case ignored.
  bool has(std::string_view index) const {
    std::size_t at = 0;
    for (std::int32_t i = 0; i < count_ && i < maximumindices; ++i) {
      const std::string_view text = textat(at);
      if (struequal(text, index)) return true;
      at += 1 + text.size();
    }
    return more_ && hasmore(index);
  }

 private:
  /// What is known of the texts past the longest list.
  struct furthertexts {
    std::vector<std::size_t> starts;
    positiontable places;  ///< in starts; of the texts looked for among
    std::size_t entered = 0;
  };

  std::string_view textat(std::size_t at) const noexcept {
    const char* text = (far_.empty() ? near_.data() : far_.data()) + at;
    return {text + 1, static_cast<unsigned char>(*text)};
  }

  void notestart() {
    if (!more_) more_ = std::make_unique<furthertexts>();
    more_->starts.push_back(used_);
  }

  bool hasmore(std::string_view index) const {
    const auto sameas = [this](std::string_view text) {
      return [this, text](std::int32_t place) {
        return struequal(textat(more_->starts[static_cast<std::size_t>(place)]), text);
      };
    };
    for (; more_->entered < more_->starts.size(); ++more_->entered) {
      const std::string_view text = textat(more_->starts[more_->entered]);
      more_->places.add(foldedhash(text), static_cast<std::int32_t>(more_->entered), sameas(text));
    }
    return more_->places.find(foldedhash(index), sameas(index)) >= 0;
  }

  std::int32_t count_ = 0;
  std::size_t used_ = 0;  ///< bytes of the texts
  std::array<char, 40> near_{};
  std::string far_;  ///< all the texts, once they do not fit in near_ any more
  std::unique_ptr<furthertexts> more_;
};

/// The three brackets that open an index list, and the partner that closes each.
inline constexpr charset openingbrackets("([{");
constexpr char partnerof(char opening) {
  return opening == '(' ? ')' : opening == '[' ? ']' : '}';
}

/// Reads an index list, if one begins here after any blanks.
///
/// Calls element(good, index, place) for each index in turn, with good false if something else is
/// there. If that call gives false, the reader stays there, within the list, and the result is
/// false. Calls unclosed(partner) if something other than a comma or the partner of the opening
/// bracket follows an index; otherwise the reader ends up after the list.
template <class Element, class Unclosed>
bool readindexlist(tminiparser& in, Element element, Unclosed unclosed) {
  char opening = 0;
  if (!in.skiptochars(openingbrackets, opening)) return true;
  shortstring index;
  do {
    in.skipbl();
    const textplace rest = in.restplace();
    const bool good = in.nextindex(index);
    if (!element(good, index, in.since(rest))) return false;
  } while (in.skiptochar(','));
  const char partner = partnerof(opening);
  if (in.ch() == partner)
    in.nextch();
  else
    unclosed(partner);
  return true;
}

/// Runs read(), which adds to list and puts its messages in the queue of options. If it has
/// reported an error, whatever it added is deleted, last first, and counted in dropped; a warning
/// does no harm. So it is where an exception ends the read. Gives whether the entry was kept.
/// KEEP: a full queue takes no more messages, so no error is seen there and a faulty entry stays.
template <class List, class Read>
bool keepwhole(const tzmaoptions& options, List& list, std::int32_t& dropped, Read read) {
  const std::int32_t mark = options.messagelist.count();
  const std::int32_t kept = list.count();
  const auto drop = [&] {
    for (; list.count() > kept; ++dropped) list.delete_(list.count() - 1);
  };
  try {
    read();
  } catch (...) {
    drop();
    throw;
  }
  if (options.errorssince(mark) == 0) return true;
  drop();
  return false;
}

/// Writes a name and, if there are any, its indices: x('a',*).
inline void writeindex(textfile& file, std::string_view name, const indexlist& indices) {
  file.write(name);
  if (indices.count() == 0) return;
  for (std::int32_t i = 0; i < indices.count(); ++i) {
    file.write(i == 0 ? "(" : ",");
    file.write(indices.get(i));
  }
  file.write(")");
}

/// Ends a line. Raises einouterror if anything written so far has failed.
inline void endline(textfile& file) {
  file.writeln();
  _Q9error_check();
}

}  // namespace optxv
