// What a conversion of reals needs so that it gives the same bits whatever the host has done to the
// arithmetic of its thread.
#pragma once

#include <bit>
#include <cstdint>
#include <limits>

#if defined(__x86_64__)
#include <xmmintrin.h>
#else
#include <cfenv>
#endif

namespace optxv {

/// Plain arithmetic for its life: results are rounded to nearest, denormals are numbers, and no
/// operation traps. At its end all is as it was. Where it is plain already, as nearly always, this
/// costs a look at one register.
///
/// A compiler may move an operation past either end unless its operands and its result are volatile
/// or it stands in a function of another source.
class plainarithmetic {
 public:
  plainarithmetic(const plainarithmetic&) = delete;
  plainarithmetic& operator=(const plainarithmetic&) = delete;

#if defined(__x86_64__)
  plainarithmetic() noexcept : before_(_mm_getcsr()) {
    if (!wasplain()) [[unlikely]]
      _mm_setcsr(plain);
  }
  ~plainarithmetic() {
    if (!wasplain()) [[unlikely]]
      _mm_setcsr(before_);
  }

 private:
  static constexpr unsigned raised = 0x3F;  ///< what operations so far have raised: no mode
  static constexpr unsigned plain = 0x1F80;

  bool wasplain() const noexcept {
    return (before_ & ~raised) == plain;
  }

  const unsigned before_;
#else
  plainarithmetic() noexcept {
    std::fegetenv(&before_);
    std::fesetenv(FE_DFL_ENV);
  }
  ~plainarithmetic() {
    std::fesetenv(&before_);
  }

 private:
  std::fenv_t before_;
#endif
};

// By their bits, since a comparison takes a denormal for 0 where the host has chosen that, and may
// trap on one or on a not-a-number.

/// 0 or -0.
constexpr bool iszero(double x) noexcept {
  return std::bit_cast<std::uint64_t>(x) << 1 == 0;
}

/// Not 0, but below the smallest real of full precision.
constexpr bool isdenormal(double x) noexcept {
  return !iszero(x) && (std::bit_cast<std::uint64_t>(x) >> 52 & 0x7FF) == 0;
}

constexpr bool isnotanumber(double x) noexcept {
  return std::bit_cast<std::uint64_t>(x) << 1 > std::uint64_t{0x7FF} << 53;
}

/// Neither an infinity nor a not-a-number.
constexpr bool isfinitereal(double x) noexcept {
  return std::bit_cast<std::uint64_t>(x) << 1 < std::uint64_t{0x7FF} << 53;
}

constexpr bool samebits(double a, double b) noexcept {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

/// Whole numbers in the order of the reals, one for 0 and -0. REQUIRES: not a not-a-number.
constexpr std::int64_t rankof(double x) noexcept {
  const auto bits = std::bit_cast<std::int64_t>(x);
  return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
}

/// a < b, and a <= b: false if one of them is a not-a-number.
constexpr bool isbelow(double a, double b) noexcept {
  return !isnotanumber(a) && !isnotanumber(b) && rankof(a) < rankof(b);
}
constexpr bool atmost(double a, double b) noexcept {
  return !isnotanumber(a) && !isnotanumber(b) && rankof(a) <= rankof(b);
}
constexpr bool atmost(std::int32_t a, std::int32_t b) noexcept {
  return a <= b;
}

/// Whether a real is an integer of 32 bits.
constexpr bool iswhole(double x) noexcept {
  using limits = std::numeric_limits<std::int32_t>;
  if (!atmost(double{limits::min()}, x) || !atmost(x, double{limits::max()})) return false;
  const auto bits = std::bit_cast<std::uint64_t>(x);
  const int exponent = static_cast<int>(bits >> 52 & 0x7FF) - 1023;
  return iszero(x) || (exponent >= 0 && bits << (12 + exponent) == 0);
}

}  // namespace optxv
