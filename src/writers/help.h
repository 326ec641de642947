// Help output: the option table as lines of kind optMsgHelp in the message queue. The operation is
// tzmaoptions::optshowhelp.
//
// A request is an option's name (or a synonym; blanks stand for underscores) for the definition of
// that option, or a number that selects parts of the listing, one bit each:
//   1  summary by group
//   2  definitions in alphabetical order
//   4  the sorted names on standard output, for debugging
//   8  with 1: marks of deprecation after the names
// A number below 1 is 3, and a name that is not known is 1. Options whose help context or group is
// not above 0 appear in no listing, nor do their synonyms, but can be asked for by name.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/lists.h"

namespace optxv {

enum helppart : std::int32_t {
  helpSummary = 1,
  helpDefinitions = 2,
  helpDebug = 4,
  helpMarks = 8,
};

/// The names of a listing, sorted without regard to case, and a number at the end of a name by its
/// value: x2 comes before x10. The object word is the option, nil for a synonym.
///
/// KEEP: a name without a number and the same name ending in 0 compare equal, and what the sort's
/// unstable steps make of such a pair stands.
class tmysortstringlist : public txstringlist {
 public:
  int compare(std::int32_t i, std::int32_t j) override;
};

}  // namespace optxv
