#include "foundation/exactreal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

namespace optxv {

namespace {

/// A whole number of up to 4096 bits; more than that never comes up here.
class bignumber {
 public:
  /// Multiplies by the factor, then adds the summand.
  void multiply(std::uint32_t factor, std::uint32_t summand) {
    std::uint64_t carry = summand;
    for (std::size_t i = 0; i < used_; ++i) {
      carry += std::uint64_t{limbs_[i]} * factor;
      limbs_[i] = static_cast<std::uint32_t>(carry);
      carry >>= 32;
    }
    if (carry != 0) limbs_[used_++] = static_cast<std::uint32_t>(carry);
  }

  void multiplybyten(std::int64_t power) {
    for (; power >= 9; power -= 9) multiply(1000000000, 0);
    for (; power > 0; --power) multiply(10, 0);
  }

  int bits() const {
    return used_ == 0 ? 0 : static_cast<int>(32 * used_) - std::countl_zero(limbs_[used_ - 1]);
  }
  bool iszero() const { return used_ == 0; }

  void shiftleft(int count) {
    multiply(std::uint32_t{1} << count % 32, 0);
    const auto whole = static_cast<std::size_t>(count / 32);
    if (used_ == 0 || whole == 0) return;
    std::copy_backward(limbs_.begin(), limbs_.begin() + used_, limbs_.begin() + used_ + whole);
    std::fill_n(limbs_.begin(), whole, 0);
    used_ += whole;
  }

  /// Multiplies by 2 to the power of 32 and divides by the divisor: gives the quotient, keeps the
  /// rest. REQUIRES: less than the divisor; the highest bit of the divisor's highest limb is set.
  std::uint32_t nextlimb(const bignumber& divisor) {
    shiftleft(32);
    const std::size_t top = divisor.used_;
    const std::uint64_t high = std::uint64_t{at(top)} << 32 | at(top - 1);
    std::uint64_t quotient = std::min<std::uint64_t>(high / divisor.limbs_[top - 1], 0xFFFFFFFF);
    for (bool over = subtract(divisor, quotient); over; --quotient) over = !add(divisor);
    while (used_ > 0 && limbs_[used_ - 1] == 0) --used_;
    return static_cast<std::uint32_t>(quotient);
  }

 private:
  std::uint32_t at(std::size_t i) const { return i < used_ ? limbs_[i] : 0; }

  /// Takes a multiple of the other away; true if that was too much, and what is left is negative.
  bool subtract(const bignumber& other, std::uint64_t factor) {
    std::uint64_t product = 0;
    std::int64_t rest = 0;
    for (std::size_t i = 0; i <= other.used_; ++i) {
      product += other.at(i) * factor;
      rest += std::int64_t{at(i)} - static_cast<std::uint32_t>(product);
      limbs_[i] = static_cast<std::uint32_t>(rest);
      product >>= 32;
      rest >>= 32;
    }
    used_ = other.used_ + 1;
    return rest < 0;
  }

  /// Adds the other to a negative number; true if the sum is one no more.
  bool add(const bignumber& other) {
    std::uint64_t sum = 0;
    for (std::size_t i = 0; i <= other.used_; ++i) {
      sum += std::uint64_t{limbs_[i]} + other.at(i);
      limbs_[i] = static_cast<std::uint32_t>(sum);
      sum >>= 32;
    }
    return sum != 0;
  }

  std::size_t used_ = 0;
  std::array<std::uint32_t, 128> limbs_;  ///< the lowest first; those beyond used_ count as 0
};

/// Half the distance of two reals has at most 767 digits that count. What lies beyond these tells
/// only whether a number is above them.
constexpr std::int64_t mostdigits = 780;

/// The digits of a mantissa as a whole number, and the power of ten that it is to be multiplied by.
struct decimal {
  bignumber number;
  std::int64_t digits = 0;  ///< of the number
  std::int64_t exponent = 0;
  bool more = false;  ///< digits above 0 were left out

  explicit decimal(std::string_view mantissa) {
    bool point = false;
    for (const char c : mantissa) {
      if (c == '.')
        point = true;
      else
        take(static_cast<std::uint32_t>(c - '0'), point);
    }
    flush();
    if (!more) return;
    number.multiply(10, 1);
    ++digits, --exponent;
  }

 private:
  void take(std::uint32_t digit, bool fraction) {
    const bool kept = digits < mostdigits;
    exponent += (kept ? 0 : 1) - (fraction ? 1 : 0);
    if (!kept) {
      more |= digit != 0;
      return;
    }
    if (digits == 0 && digit == 0) return;
    ++digits;
    pending_ = pending_ * 10 + digit;
    scale_ *= 10;
    if (scale_ == 1000000000) flush();
  }
  void flush() {
    number.multiply(scale_, pending_);
    pending_ = 0;
    scale_ = 1;
  }

  std::uint32_t pending_ = 0, scale_ = 1;  ///< the last digits, up to nine, and ten to their count
};

/// The real nearest to the fraction, of 2 to the power of 64, times 2 to the exponent. The lowest
/// bit of the fraction is set if the number is above it.
double rounded(std::uint64_t fraction, int exponent) {
  const int top = 64 - std::countl_zero(fraction);
  const int biased = exponent - 64 + top - 1 + 1023;
  if (biased >= 0x7FF) return std::numeric_limits<double>::infinity();
  const int lowest = std::max(biased, 1);
  const int dropped = top - 53 + lowest - biased;
  if (dropped > 64) return 0;
  const std::uint64_t half = std::uint64_t{1} << (dropped - 1);
  const std::uint64_t rest = fraction & (half - 1 + half);
  std::uint64_t kept = dropped == 64 ? 0 : fraction >> dropped;
  kept += rest > half || (rest == half && kept % 2 == 1) ? 1 : 0;
  return std::bit_cast<double>((static_cast<std::uint64_t>(lowest - 1) << 52) + kept);
}

}  // namespace

double exactreal(std::string_view mantissa, std::int64_t exponent) noexcept {
  decimal number(mantissa);
  const std::int64_t power = number.exponent + exponent;
  if (number.digits == 0 || number.digits + power < -330) return 0;
  if (number.digits + power > 310) return std::numeric_limits<double>::infinity();
  bignumber dividend = number.number, divisor;
  divisor.multiply(1, 1);
  (power < 0 ? divisor : dividend).multiplybyten(power < 0 ? -power : power);

  // Both are shifted so that the quotient lies between a quarter and 1.
  const int above = dividend.bits(), below = divisor.bits();
  const int target = (std::max(above + 1, below) + 31) / 32 * 32;
  dividend.shiftleft(target - 1 - above);
  divisor.shiftleft(target - below);
  std::uint64_t fraction = dividend.nextlimb(divisor);
  fraction = fraction << 32 | dividend.nextlimb(divisor);
  if (!dividend.iszero()) fraction |= 1;
  return rounded(fraction, above - below + 1);
}

}  // namespace optxv
