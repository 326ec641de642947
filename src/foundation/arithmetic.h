// What a conversion of reals needs so that it gives the same bits whatever the host has done to the
// arithmetic of its thread.
#pragma once

#include <bit>
#include <cstdint>

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

// By their bits, since a comparison takes a denormal for 0 where the host has chosen that.

/// 0 or -0.
constexpr bool iszero(double x) noexcept {
  return std::bit_cast<std::uint64_t>(x) << 1 == 0;
}

/// Not 0, but below the smallest real of full precision.
constexpr bool isdenormal(double x) noexcept {
  return !iszero(x) && (std::bit_cast<std::uint64_t>(x) >> 52 & 0x7FF) == 0;
}

}  // namespace optxv
