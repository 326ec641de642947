// The real that decimal digits stand for, found by whole numbers alone.
//
// std::from_chars is quicker, but not every C++ library has it for reals, and where it has, it does
// not tell too large a number from too small a one. Nothing of the host has a say here: neither its
// locale nor the mode of its arithmetic, since no operation on reals is made.
#pragma once

#include <cstdint>
#include <string_view>

namespace optxv {

/// The real nearest to the mantissa times ten to the exponent; of two that are equally near, that
/// with the even last bit. Beyond the largest real it is an infinity, near 0 a denormal or 0.
/// mantissa: decimal digits, with at most one point among them; without a digit it is 0.
/// exponent: at most 2 to the power of 60 in magnitude. Takes 3 KiB of stack and no other memory.
double exactreal(std::string_view mantissa, std::int64_t exponent) noexcept;

}  // namespace optxv
