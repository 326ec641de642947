// The floating-point exception flags of the processor (IEEE 754, section 7; C's <fenv.h>).
//
// The classes of reals, fpclass and fpclasstext, are in foundation/numtext.h.
#pragma once

#include <cstdint>

#include "foundation/numtext.h"
#include "foundation/visibility.h"

namespace optxv {

/// The flags, the same numbers on every processor. A set of them is one byte.
enum exceptionflag : std::uint8_t {
  exinvalidop = 1,
  exzerodivide = 4,
  exoverflow = 8,
  exunderflow = 16,
  exprecision = 32
};

/// All the flags there are.
inline constexpr std::uint8_t exallflags = 61;

/// Lowers those flags of the set that are in exallflags; others are ignored.
OPTXV_EXPORT void clearexceptionflags(std::uint8_t flags) noexcept;

/// The set of the flags that are raised now.
OPTXV_EXPORT std::uint8_t getexceptionflags() noexcept;

}  // namespace optxv
