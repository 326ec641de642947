// Indexes beside lists: the first entry with a name or a number, found at the same cost in a list
// of ten entries and of ten thousand. They give what a walk from the front would give.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/lists.h"
#include "foundation/strutilx.h"

namespace optxv {

/// A hash of the text that ignores the case of letters. The last eight bytes go in together,
/// even if some of them have gone in before.
std::uint32_t foldedhash(std::string_view text);

/// Positions under the hashes of their keys: open addressing of (hash, position) with linear
/// probing, at most three quarters full. The keys stay where they are: `same`, a function of a
/// position, says whether its key is the one that is meant.
class positiontable {
 public:
  bool empty() const { return used_ == 0; }

  /// The position of the key, or -1.
  template <class Same>
  std::int32_t find(std::uint32_t hash, Same same) const {
    return used_ == 0 ? -1 : slots_[seek(hash, same)].position;
  }

  /// Enters a position; false if one with the same key is held already, which stays.
  template <class Same>
  bool add(std::uint32_t hash, std::int32_t position, Same same) {
    if (used_ * 4 >= slots_.size() * 3) grow();
    slot& place = slots_[seek(hash, same)];
    if (place.position >= 0) return false;
    place = {hash, position};
    ++used_;
    return true;
  }

 private:
  struct slot {
    std::uint32_t hash;
    std::int32_t position;  ///< -1 in an empty slot
  };

  /// The slot that holds the key, or the empty one where it belongs.
  template <class Same>
  std::size_t seek(std::uint32_t hash, Same same) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    for (; slots_[at].position >= 0; at = (at + 1) & mask)
      if (slots_[at].hash == hash && same(slots_[at].position)) break;
    return at;
  }
  void grow();

  std::vector<slot> slots_;
  std::size_t used_ = 0;
};

/// Finds the first entry of a list whose name equals a text, ASCII case ignored. An empty name
/// equals no text, as in the lists themselves.
///
/// BORROWS: the list, which must outlive the index; names are compared where they stand.
/// INVARIANT: of several entries with equal names the first is held.
/// REQUIRES: entries once entered keep their position and name.
class nameindex {
 public:
  explicit nameindex(const txcustomstringlist& names) : names_(names) {}

  /// Enters what the list has gained since the last time.
  void enternew() {
    for (; entered_ < names_.count(); ++entered_) add(entered_);
  }

  /// The position of the first entry of that name, or -1. Knows what has been entered.
  std::int32_t find(std::string_view name) const;

 private:
  void add(std::int32_t position);

  const txcustomstringlist& names_;
  positiontable positions_;
  std::int32_t entered_ = 0;
};

/// What a lookup rule compares of a name is its key: two names match if both have one and the keys
/// are equal, ASCII case ignored. Appends the key; false for a name that nothing matches. A key is
/// no longer than its name.
using namereduction = bool (*)(std::string_view name, std::string& key);

/// Words separated by '_', of which the first three characters count each.
/// KEEP: a name with a word of fewer than three characters is never found.
bool pathkey(std::string_view name, std::string& key);

/// Words separated by '_', of which the first counts with three characters, any later one with
/// four.
bool minoskey(std::string_view name, std::string& key);

/// Finds the first entry of a list whose name matches a text by a rule.
///
/// The keys stand here, each after its position, so that a lookup touches two places in memory and
/// not the names.
/// BORROWS: the list, which must outlive the index.
/// REQUIRES: entries keep their position and name once a lookup has been made.
class ruleindex {
 public:
  ruleindex(const txcustomstringlist& names, namereduction reduce)
      : names_(names), reduce_(reduce) {}

  /// The position of the first entry that matches, or -1.
  std::int32_t find(std::string_view name);

 private:
  void add(std::int32_t position);
  std::int32_t positionat(std::int32_t place) const;
  std::string_view keyat(std::int32_t place) const;

  const txcustomstringlist& names_;
  namereduction reduce_;
  positiontable places_;  ///< in keys_, in steps of eight bytes
  std::string keys_;      ///< position, length and key, filled up to a step
  std::int32_t entered_ = 0;
};

/// A list of up to so many entries is walked: an index would cost more than it saves.
inline constexpr std::int32_t shortlist = 16;

/// Finds the first place of a number in a list that grows. A short list is walked; a longer one
/// gets an index with the first search. The size of a pointer. REQUIRES: the list is the same in
/// each call, and its numbers stay what they are.
class numberindex {
 public:
  /// The first place below count with the number, or -1; numberat(i) gives the number of a place.
  template <class NumberAt>
  std::int32_t find(std::int32_t number, std::int32_t count, NumberAt numberat) {
    const auto same = [&](std::int32_t place) { return numberat(place) == number; };
    if (count > shortlist) return enternew(count, numberat).find(hashof(number), same);
    for (std::int32_t i = 0; i < count; ++i)
      if (same(i)) return i;
    return -1;
  }
  /// Forgets the list, which was emptied.
  void clear() { index_.reset(); }

 private:
  struct builtindex {
    positiontable positions;
    std::int32_t entered = 0;
  };

  /// The high half of a product by 2^64 over the golden ratio, to which all bits have come.
  static std::uint32_t hashof(std::int32_t number) {
    return static_cast<std::uint32_t>(
        static_cast<std::uint32_t>(number) * std::uint64_t{0x9E3779B97F4A7C15U} >> 32);
  }

  template <class NumberAt>
  const positiontable& enternew(std::int32_t count, NumberAt numberat) {
    if (!index_) index_ = std::make_unique<builtindex>();
    for (std::int32_t& i = index_->entered; i < count; ++i) {
      const std::int32_t number = numberat(i);
      index_->positions.add(hashof(number), i,
                            [&](std::int32_t place) { return numberat(place) == number; });
    }
    return index_->positions;
  }

  std::unique_ptr<builtindex> index_;  ///< nil until a search in a longer list
};

}  // namespace optxv
