#include "foundation/numtext.h"

#include <locale.h>
#include <string.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

#include "foundation/arithmetic.h"
#include "foundation/exactreal.h"

namespace optxv {

// What every conversion here takes for granted.
static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == 8);
static_assert(FLT_EVAL_METHOD == 0 || FLT_EVAL_METHOD == 1, "reals of 64 bits: -mfpmath=sse");

namespace {

constexpr bool isdigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool ishexmark(char c) {
  return c == 'x' || c == 'X';
}
constexpr bool isexponentmark(char c) {
  return c == 'e' || c == 'E';
}

/// The value of a digit in any base up to 36, 36 for any other byte.
constexpr int digitvalue(char c) {
  if (isdigit(c)) return c - '0';
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'z' ? lower - 'a' + 10 : 36;
}

/// Reads a text from the left; what lies past its end looks like a zero byte, which is no part
/// of any number.
struct cursor {
  std::string_view text;
  std::size_t at = 0;

  char peek(std::size_t ahead = 0) const {
    return at + ahead < text.size() ? text[at + ahead] : '\0';
  }
  bool done() const { return at >= text.size(); }
  /// The position of the next byte, from 1.
  int position() const { return static_cast<int>(at) + 1; }
  int codehere() const { return done() ? 0 : position(); }

  void skipdigits() {
    while (isdigit(peek())) ++at;
  }
  /// Skips blanks and a sign; true for a minus.
  bool passsign() {
    while (peek() == ' ') ++at;
    const bool minus = peek() == '-';
    if (minus || peek() == '+') ++at;
    return minus;
  }
};

/// The digits at the cursor with their sign, as strtol reads them, held in 32 bits; saturated says
/// whether they had to be.
std::int32_t convertdigits(cursor& c, int base, bool minus, bool& saturated) {
  if (base == 16 && c.peek() == '0' && ishexmark(c.peek(1)) && digitvalue(c.peek(2)) < 16)
    c.at += 2;
  constexpr std::int64_t limit = std::int64_t{1} << 31;
  std::int64_t magnitude = 0;
  for (int digit; (digit = digitvalue(c.peek())) < base; ++c.at)
    magnitude = std::min(magnitude * base + digit, limit + 1);
  const std::int64_t largest = minus ? limit : limit - 1;
  saturated = magnitude > largest;
  magnitude = std::min(magnitude, largest);
  return static_cast<std::int32_t>(minus ? -magnitude : magnitude);
}

/// The value of a text of one to nine digits, as most numbers are; -1 for any other text.
std::int32_t digitsonly(std::string_view text) {
  if (text.empty() || text.size() > 9) return -1;
  std::int32_t value = 0;
  for (const char c : text) {
    if (!isdigit(c)) return -1;
    value = value * 10 + (c - '0');
  }
  return value;
}

/// The base of the digits at the cursor, which is moved to where strtol would begin; 0 if there
/// are none, with the cursor on the bad byte.
int findbase(cursor& c) {
  if (c.peek() == '$') {
    ++c.at;
    return digitvalue(c.peek()) < 16 ? 16 : 0;
  }
  if (!isdigit(c.peek())) return 0;
  if (c.peek() != '0' || c.at + 1 == c.text.size() || isdigit(c.peek(1))) return 10;
  return ishexmark(c.peek(1)) ? 16 : 0;
}

}  // namespace

std::int32_t _Q9_Val_SPD(std::string_view s, int& code) {
  if (const std::int32_t value = digitsonly(s); value >= 0) {
    code = 0;
    return value;
  }
  bool saturated = false;
  return val_spd(s, code, saturated);
}

std::int32_t val_spd(std::string_view s, int& code, bool& saturated) {
  cursor c{s};
  saturated = false;
  const bool minus = c.passsign();
  const int base = findbase(c);
  if (base == 0) {
    code = c.position();
    return 0;
  }
  const std::int32_t value = convertdigits(c, base, minus, saturated);
  code = c.codehere();
  return value;
}

namespace {

/// The exponent at the cursor, if a whole one stands there; 0 otherwise, with the cursor unmoved.
/// Held at a size that no count of digits makes up for.
std::int64_t passexponent(cursor& c) {
  if (!isexponentmark(c.peek())) return 0;
  const bool hassign = c.peek(1) == '+' || c.peek(1) == '-';
  if (!isdigit(c.peek(hassign ? 2 : 1))) return 0;
  const bool minus = c.peek(1) == '-';
  c.at += hassign ? 2 : 1;
  std::int64_t exponent = 0;
  for (; isdigit(c.peek()); ++c.at)
    exponent = std::min<std::int64_t>(exponent * 10 + (c.peek() - '0'), std::int64_t{1} << 50);
  return minus ? -exponent : exponent;
}

/// The real that a text of digits, a point and an exponent stands for; mantissa and exponent are
/// its parts. The parts alone do where the C++ library reads no reals, and where it does not tell
/// on which side the number lies beyond them.
double nearestreal([[maybe_unused]] std::string_view text, std::string_view mantissa,
                   std::int64_t exponent) {
#ifdef __cpp_lib_to_chars
  double value = 0;
  const plainarithmetic plain;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc()) return value;
#endif
  return exactreal(mantissa, exponent);
}

/// The unsigned decimal number at the cursor as strtod reads it. Takes nothing and gives 0 if
/// there is no digit before the exponent.
double convertreal(cursor& c) {
  const std::size_t start = c.at;
  c.skipdigits();
  std::size_t digits = c.at - start;
  if (c.peek() == '.') {
    ++c.at;
    const std::size_t fraction = c.at;
    c.skipdigits();
    digits += c.at - fraction;
  }
  if (digits == 0) {
    c.at = start;
    return 0;
  }
  const std::string_view mantissa = c.text.substr(start, c.at - start);
  const std::int64_t exponent = passexponent(c);
  return nearestreal(c.text.substr(start, c.at - start), mantissa, exponent);
}

/// A number that begins with a point, at the cursor.
double convertpoint(cursor& c) {
  if (c.at + 1 == c.text.size()) {
    c.at = c.text.size();
    return 0;
  }
  if (!isexponentmark(c.peek(1))) return convertreal(c);
  ++c.at;  // the point counts as a 0, whatever the exponent
  passexponent(c);
  return 0;
}

}  // namespace

double _Q9_Val_d(std::string_view s, int& code) {
  if (const std::int32_t value = digitsonly(s); value >= 0) {
    code = 0;
    return value;
  }
  cursor c{s};
  const bool minus = c.passsign();
  if (isdigit(c.peek()) && ishexmark(c.peek(1))) {
    code = c.position() + 1;
    return 0;
  }
  if (!isdigit(c.peek()) && c.peek() != '.') {
    code = c.position();
    return 0;
  }
  const bool lonepoint = c.peek() == '.' && c.at + 1 == s.size();
  const double value = c.peek() == '.' ? convertpoint(c) : convertreal(c);
  code = c.codehere();
  return minus && !lonepoint ? -value : value;
}

std::optional<double> realfromtext(std::string_view s) {
  cursor c{s};
  const bool minus = c.peek() == '-';
  if (minus) ++c.at;
  const std::size_t start = c.at;
  const double value = convertreal(c);
  if (c.at == start || !c.done()) return std::nullopt;
  return minus ? -value : value;
}

namespace {

// No double has more than 1074 decimals: what printf adds after them is zeros, and they begin
// beyond the 255 bytes of any result.
constexpr int mostdecimals = 1100;

/// The text in a field of the width's magnitude, after the padding or, for a negative width, before
/// it. missing bytes of the text lie beyond the cut and are not there.
shortstring infield(std::string_view text, int width, int missing = 0) {
  const std::int64_t field = std::abs(std::int64_t{width});
  const std::int64_t padding = field - static_cast<std::int64_t>(text.size()) - missing;
  const auto blanks = static_cast<std::size_t>(std::clamp<std::int64_t>(padding, 0, 255));
  std::array<char, 255> pad;
  pad.fill(' ');
  const std::string_view padtext(pad.data(), blanks);
  return width < 0 ? concat(text, padtext) : concat(padtext, text);
}

shortstring formatreal(double value, int width, int decimals, bool exponent) {
  if (isnotanumber(value)) {  // some libraries have more words for some of these
    const std::string_view words = exponent ? "-NAN" : "-nan";
    return infield(words.substr(std::signbit(value) ? 0 : 1), width);
  }
  std::array<char, mostdecimals + 64> buffer;
  const int kept = std::clamp(decimals, 0, mostdecimals);
  const auto form = exponent ? std::chars_format::scientific : std::chars_format::fixed;
  const plainarithmetic plain;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, form, kept).ptr;
  // Only the form with an exponent has letters.
  std::transform(buffer.data(), end, buffer.data(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  const int missing = isfinitereal(value) ? std::max(decimals, 0) - kept : 0;
  return infield({buffer.data(), static_cast<std::size_t>(end - buffer.data())}, width, missing);
}

}  // namespace

shortstring _Q9_Str_i0(std::int32_t value) {
  return _Q9_Str_i1(value, 0);
}

shortstring _Q9_Str_i1(std::int32_t value, int width) {
  std::array<char, 12> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  return infield({buffer.data(), static_cast<std::size_t>(end - buffer.data())}, width);
}

shortstring _Q9_Str_d0(double value) {
  return formatreal(value, 23, 14, true);
}

shortstring _Q9_Str_d1(double value, int width) {
  if (width <= 9) return formatreal(value, 10, 2, true);
  return formatreal(value, width, std::min(width - 8, 18), true);
}

shortstring _Q9_Str_d2(double value, int width, int decimals) {
  return formatreal(value, width, decimals, isbelow(1e37, std::fabs(value)));
}

std::int64_t round(double value) {
  constexpr double limit = 9223372036854775808.0;  // 2 to the power of 63
  if (isnotanumber(value)) return 0;
  const plainarithmetic plain;
  const volatile double half = std::signbit(value) ? -0.5 : 0.5;
  const volatile double sum = value + half;
  if (sum >= limit) return std::numeric_limits<std::int64_t>::max();
  if (sum < -limit) return std::numeric_limits<std::int64_t>::min();
  const volatile auto whole = static_cast<std::int64_t>(sum);
  return whole;
}

int fpclass(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const bool negative = (bits >> 63) != 0;
  const std::uint64_t exponent = bits >> 52 & 0x7FF;
  const std::uint64_t mantissa = bits & 0xFFFFFFFFFFFFF;
  if (exponent == 0x7FF && mantissa != 0) return static_cast<int>(mantissa >> 51);
  int pair = 8;
  if (exponent == 0x7FF)
    pair = 2;
  else if (exponent == 0)
    pair = mantissa != 0 ? 4 : 6;
  return negative ? pair : pair + 1;
}

std::string_view fpclasstext(int realclass) {
  static constexpr std::array<std::string_view, 10> texts = {
      "signaling NaN",
      "quiet NaN",
      "negative infinity",
      "positive infinity",
      "negative denormalized non-zero",
      "positive denormalized non-zero",
      "-0.0",
      "+0.0",
      "negative normalized non-zero",
      "positive normalized non-zero",
  };
  if (realclass < 0 || realclass >= static_cast<int>(texts.size())) return {};
  return texts[static_cast<std::size_t>(realclass)];
}

shortstring syserrormessage(int number) {
  const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
  if (plain == nullptr) return concat("Unknown error ", _Q9_Str_i0(number));
  const shortstring text(strerror_l(number, plain));
  freelocale(plain);
  return text;
}

}  // namespace optxv
