#include "foundation/arithmetic.h"

#include <gtest/gtest.h>

#include <cfenv>
#include <cstdio>
#include <limits>
#include <string>

#include "foundation/numtext.h"
#include "foundation/sortedlists.h"
#include "foundation/strutilx.h"
#include "platform/q9utils.h"
#include "stores/zmaspecs.h"

namespace optxv {
namespace {

/// The bits of a register that say how to calculate, which only some machines have beside rounding.
struct denormals {
  const char* name;
  unsigned bits;
};
#if defined(__x86_64__)
constexpr denormals treatments[] = {
    {"kept", 0}, {"flushed", 0x8000}, {"taken for 0", 0x8040}, {"trapped as all else", 0x1F80}};
unsigned control() {
  return _mm_getcsr() & ~0x3FU;
}
void changecontrol(unsigned bits) {
  _mm_setcsr(_mm_getcsr() ^ bits);
}
#else
constexpr denormals treatments[] = {{"kept", 0}};
unsigned control() {
  return 0;
}
void changecontrol(unsigned) {}
#endif

std::string hex(double x) {
  char text[32];
  std::snprintf(text, sizeof text, " %016llx",
                static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(x)));
  return text;
}

/// All that the library makes of a number's text.
std::string readings(const std::string& text) {
  int code = 0;
  std::int32_t whole = 0;
  double real = 0;
  std::string all = hex(_Q9_Val_d(text, code)) + ' ' + std::to_string(code);
  all += strasdoubleex(text, real) ? hex(real) : " bad";
  all += strasintex2(text, whole) ? ' ' + std::to_string(whole) : " bad";
  txstrstrlist list;
  list.setasdouble("x", real);
  return all + std::string(list.getasstring("x")) + hex(list.getasdouble("x"));
}

/// What it says of a number: its order among others, its class.
std::string judgements(double x) {
  std::string all = std::to_string(mapval(x)) + std::to_string(xmapval(x)) + hex(old_new_val(x));
  for (const double other : {0.0, 4.9e-324, x, 1e-309, 1e300})
    all += {isbelow(x, other) ? 'b' : '-', atmost(other, x) ? 'a' : '-', iswhole(x) ? 'w' : '-'};
  return all;
}

/// All that it makes of a number.
std::string writings(double x) {
  std::string all = std::to_string(round(x)) + hex(realround(x)) + hex(realtrunc(x));
  for (const shortstring& text :
       {_Q9_Str_d0(x), _Q9_Str_d1(x, 20), _Q9_Str_d2(x, 0, 7), dbltostr(x), dbltostrex(x),
        floattoe(x, 0), floattoe(x, 5), floattoe(x, 14)})
    (all += ' ').append(text.view());
  return all;
}

const char* const texts[] = {"0.1",
                             "-0.7",
                             "123456789012345678901234567890",
                             "1.7976931348623157e308",
                             "-1.2345678901234567e-5",
                             "9007199254740993",
                             "2.2250738585072011e-308",
                             "1e-310",
                             "-4.9e-324",
                             "1e400",
                             "-1e-400",
                             "5e-1"};
const double numbers[] = {0.0,
                          -0.0,
                          0.49999999999999994,
                          0.5,
                          2.5,
                          -1234567.890625,
                          1.0 / 3,
                          1e22 / 7,
                          std::numeric_limits<double>::max(),
                          std::numeric_limits<double>::min(),
                          -1e-310,
                          std::numeric_limits<double>::denorm_min(),
                          2e30,
                          3.1e300,
                          std::numeric_limits<double>::quiet_NaN(),
                          std::numeric_limits<double>::infinity()};

/// What becomes of all of them in a mode, and whether the mode was the same at the end.
std::string results(int rounding, const denormals& treatment, bool& kept) {
  std::string all;
  std::fenv_t before;
  std::fegetenv(&before);
  std::fesetround(rounding);
  changecontrol(treatment.bits);
  const unsigned set = control();
  for (const char* text : texts) all += readings(text) + '\n';
  for (const double number : numbers) all += writings(number) + judgements(number) + '\n';
  kept = std::fegetround() == rounding && control() == set;
  std::fesetenv(&before);
  return all;
}

TEST(PlainArithmetic, OrdersReals) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const double rising[] = {-std::numeric_limits<double>::infinity(), -1e-310, -0.0, 4.9e-324, 1e9};
  for (const double& a : rising)
    for (const double& b : rising) {
      EXPECT_EQ(isbelow(a, b), a < b) << a << ' ' << b;
      EXPECT_EQ(atmost(a, b), a <= b) << a << ' ' << b;
    }
  EXPECT_TRUE(atmost(0.0, -0.0) && !isbelow(-0.0, 0.0));
  EXPECT_FALSE(isbelow(nan, 1) || isbelow(1, nan) || atmost(nan, nan));
  EXPECT_TRUE(iswhole(-2147483648.0) && iswhole(-0.0));
  EXPECT_FALSE(iswhole(2147483648.0) || iswhole(0.5) || iswhole(nan) || iswhole(4.9e-324));
}

TEST(PlainArithmetic, GivesTheSameBitsInEveryMode) {
  bool kept = false;
  const std::string expected = results(FE_TONEAREST, treatments[0], kept);
  for (const int rounding : {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO})
    for (const denormals& treatment : treatments) {
      const std::string got = results(rounding, treatment, kept);
      EXPECT_EQ(got, expected) << rounding << ", denormals " << treatment.name;
      EXPECT_TRUE(kept) << rounding << ", denormals " << treatment.name;
    }
}

}  // namespace
}  // namespace optxv
