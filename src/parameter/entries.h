// What the readers of dot options and of indicators share: the index list of a symbol, and the rule
// that an entry is kept whole or not at all.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "options/zmaoptions.h"
#include "parameter/miniparser.h"

namespace optxv {

/// The longest name of a symbol, and the longest index without its quotes.
inline constexpr std::size_t maximumidentifier = 63;
/// The longest index list.
inline constexpr std::int32_t maximumindices = 20;

/// Whether an index is an element between quotes, which it keeps as it is stored.
inline bool isquoted(std::string_view index) {
  return index.starts_with('\'') || index.starts_with('"');
}

/// The three brackets that open an index list, and what closes each.
inline constexpr charset openingbrackets("([{");
constexpr char partnerof(char opening) {
  return opening == '(' ? ')' : opening == '[' ? ']' : '}';
}

/// Reads an index list, if one begins behind the blanks here.
///
/// Calls element(good, index) for each index in turn, or once with good false where something else
/// stands; when that gives false the reading ends there, in the list, and so does this, with false.
/// Calls unclosed(partner) if something other than a comma or the partner of the opening bracket
/// follows an index. Otherwise the reader stands behind the list.
template <class Element, class Unclosed>
bool readindexlist(tminiparser& in, Element element, Unclosed unclosed) {
  char opening = 0;
  if (!in.skiptochars(openingbrackets, opening)) return true;
  shortstring index;
  do {
    const bool good = in.nextindex(index);
    if (!element(good, index)) return false;
  } while (in.skiptochar(','));
  const char partner = partnerof(opening);
  if (in.ch() == partner)
    in.nextch();
  else
    unclosed(partner);
  return true;
}

/// Appends an index and gives its place. Most symbols have one or two indices, and a list that
/// finds its own size begins with sixteen places: entries come by the thousand, so they begin with
/// two.
inline std::int32_t storeindex(txstrings& indices, std::string_view index) {
  if (indices.count() == 0) indices.setcapacity(2);
  return indices.add(index);
}

/// Runs read(), which adds to list and complains in the queue of options. If it has complained of
/// an error, whatever it added is deleted, last first, and counted in dropped; a warning costs
/// nothing.
/// KEEP: a full queue takes no message any more, so no error shows there and a faulty entry stays.
template <class List, class Read>
void keepwhole(const tzmaoptions& options, List& list, std::int32_t& dropped, Read read) {
  const std::int32_t mark = options.messagelist.count();
  const std::int32_t kept = list.count();
  read();
  if (options.errorssince(mark) == 0) return;
  for (; list.count() > kept; ++dropped) list.delete_(list.count() - 1);
}

}  // namespace optxv
