// How the numbers and defaults of a definition read, for all writers.
#pragma once

#include <cstdint>

#include "foundation/strutilx.h"
#include "language/words.h"
#include "options/optionkinds.h"

namespace optxv {

/// A number as a definition would write it: limits have their names (maxint, maxdouble).
inline shortstring numberform(std::int32_t number) {
  return inttostrex(number);
}
inline shortstring numberform(double number) {
  return dbltostrex(number);
}

/// The kinds whose values lie between two bounds.
template <class Class>
concept boundedkind = scalarkind<Class> && requires(const Class& option) {
  option.lowbound;
  option.highbound;
};

/// The default of a scalar option as a field of a definition: a number, or a text in its external
/// form. KEEP: only the kinds with bounds name their limits; an enumerated integer that is the
/// largest number comes out in digits.
template <scalarkind Class>
shortstring defaultform(const Class& option) {
  if constexpr (boundedkind<Class>)
    return numberform(option.defaultvalue);
  else if constexpr (integerkind<Class>)
    return inttostr(option.defaultvalue);
  else
    return strexternal(option.defaultvalue);
}

}  // namespace optxv
