#include "foundation/numtext.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <array>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <tuple>

#include "support/scratchfolder.h"

namespace optxv {
namespace {

using namespace std::string_view_literals;
using std::tuple;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::uint64_t bitsof(double x) {
  return std::bit_cast<std::uint64_t>(x);
}

TEST(IntegerText, Rows) {
  const tuple<std::string_view, std::int32_t, int> rows[] = {
      {"", 0, 1},    {"\t1", 0, 1},  {"0\0"sv, 0, 1},  {"12\0"sv, 12, 3},
      {"   ", 0, 4}, {"- 1", 0, 2},  {"0x1F", 31, 0},  {"-0X1f", -31, 0},
      {"+", 0, 2},   {"+-1", 0, 2},  {"-0xg", 0, 3},   {"$0x0x1", 0, 5},
      {"08", 8, 0},  {"007", 7, 0},  {"0x1g", 1, 4},   {"2147483648", 2147483647, 0},
      {"0 ", 0, 1},  {" 0a", 0, 2},  {" $-1", 0, 3},   {"99999999999999999999z", 2147483647, 21},
      {"0x", 0, 2},  {"12x", 12, 3}, {"$0x1F", 31, 0}, {"0xFFFFFFFFFFFFFFFFFFFF", 2147483647, 0},
      {"$", 0, 2},   {"$0x", 0, 3}};
  for (const auto& [text, value, expected] : rows) {
    int code = -1;
    const std::int32_t number = _Q9_Val_SPD(text, code);
    EXPECT_EQ(tuple(number, code), tuple(value, expected)) << text;
  }
}

TEST(RealText, Rows) {
  const tuple<std::string_view, double, int> rows[] = {
      {"", 0, 1},    {"-.", 0.0, 0}, {" -5.", -5, 0},  {"+1e3", 1000, 0},
      {".5", .5, 0}, {".e+", 0, 2},  {"-.E", -0.0, 3}, {"1e999", infinity, 0},
      {".", 0, 0},   {"1d3", 1, 2},  {"12x", 12, 3},   {"-1e99999999999999999999", -infinity, 0},
      {".d5", 0, 1}, {"1e-x", 1, 2}, {"5\0"sv, 5, 2},  {"4.9e-324", 4.9e-324, 0},
      {"..5", 0, 1}, {"0x10", 0, 2}, {".\0"sv, 0, 1},  {"-1e-99999999999999999999", -0.0, 0},
      {"1e", 1, 2},  {"-7X", 0, 3},  {"-nan", 0, 2},   {"0e99999999999999999999", 0, 0},
      {"1x", 0, 2},  {"INF", 0, 1},  {"1e-999", 0, 0}};
  for (const auto& [text, value, expected] : rows) {
    int code = -1;
    const double number = _Q9_Val_d(text, code);
    EXPECT_EQ(tuple(bitsof(number), code), tuple(bitsof(value), expected)) << text;
  }
}

TEST(RealText, NamesEveryClass) {
  const std::pair<std::uint64_t, std::string_view> rows[] = {
      {0x7FF0000000000001, "signaling NaN"},
      {0x7FF8000000000000, "quiet NaN"},
      {0xFFF8000000000001, "quiet NaN"},
      {0xFFF0000000000000, "negative infinity"},
      {0x7FF0000000000000, "positive infinity"},
      {0x8000000000000001, "negative denormalized non-zero"},
      {0x000FFFFFFFFFFFFF, "positive denormalized non-zero"},
      {0x8000000000000000, "-0.0"},
      {0, "+0.0"},
      {0xBFF0000000000000, "negative normalized non-zero"},
      {0x0010000000000000, "positive normalized non-zero"}};
  for (const auto& [bits, text] : rows)
    EXPECT_EQ(fpclasstext(fpclass(std::bit_cast<double>(bits))), text) << std::hex << bits;
  EXPECT_EQ(fpclasstext(-1), "");
  EXPECT_EQ(fpclasstext(10), "");
}

std::string randomdigits(std::mt19937& random, std::size_t most) {
  std::string digits;
  for (std::size_t n = random() % (most + 1); n > 0; --n)
    digits += static_cast<char>('0' + random() % 10);
  return digits;
}

TEST(RealText, AgreesWithTheCLibrary) {
  std::mt19937 random(20240611);
  const char* const tails[] = {"", "", "", "", "e", "e+", ".", "x", " "};
  for (int i = 0; i < 60000; ++i) {
    const std::size_t most = i % 100 == 0 ? 800 : i % 3 == 0 ? 40 : 9;
    std::string text = random() % 4 == 0 ? "-" : "";
    text += std::to_string(random() % 10);
    text += random() % 5 == 0 ? std::string(random() % 330, '0') : randomdigits(random, most);
    if (random() % 3 != 0) text += "." + std::string(random() % 4 == 0 ? random() % 400 : 0, '0');
    text += randomdigits(random, most);
    if (random() % 2 == 0) {
      text += std::array{"e", "E", "e+", "e-", "E-"}[random() % 5];
      text += i % 50 == 0 ? randomdigits(random, 25) : std::to_string(random() % 345);
    }
    text += tails[random() % std::size(tails)];
    if (text.find('x') == (text[0] == '-' ? 2 : 1)) continue;  // refused by a rule of its own
    char* end;
    const double expected = strtod(text.c_str(), &end);
    int code = -1;
    ASSERT_EQ(bitsof(_Q9_Val_d(text, code)), bitsof(expected)) << text;
    ASSERT_EQ(code, *end == '\0' ? 0 : end - text.c_str() + 1) << text;
  }
}

TEST(RealText, WholeTexts) {
  const tuple<std::string_view, std::optional<double>> rows[] = {
      {"-1.5e1", -15},     {"5.", 5},         {".5", .5},  {"-0", -0.0},
      {"1e999", infinity}, {"-1e-999", -0.0}, {"", {}},    {".", {}},
      {"-", {}},           {"+1", {}},        {" 1", {}},  {"1 ", {}},
      {"1e", {}},          {"0x1", {}},       {"inf", {}}, {"--1", {}}};
  for (const auto& [text, value] : rows) {
    const std::optional<double> real = realfromtext(text);
    EXPECT_EQ(tuple(real.has_value(), bitsof(real.value_or(0))),
              tuple(value.has_value(), bitsof(value.value_or(0))))
        << text;
  }
}

// The bounded text that snprintf gives with a format.
template <class... Arguments>
std::string printed(const char* format, Arguments... arguments) {
  std::string buffer(20000, '\0');
  const int length = std::snprintf(buffer.data(), buffer.size(), format, arguments...);
  return buffer.substr(0, static_cast<std::size_t>(std::min(length, 255)));
}

void expectprinted(double x, int width, int decimals) {
  EXPECT_EQ(_Q9_Str_d0(x), printed("%23.14E", x));
  const int shown = width <= 9 ? 2 : std::min(width - 8, 18);
  EXPECT_EQ(_Q9_Str_d1(x, width), printed("%*.*E", width <= 9 ? 10 : width, shown, x));
  const char* format = std::fabs(x) > 1e37 ? "%*.*E" : "%*.*f";
  EXPECT_EQ(_Q9_Str_d2(x, width, decimals), printed(format, width, decimals, x));
}

TEST(NumberToText, AgreesWithTheCLibrary) {
  std::mt19937_64 random(7);
  for (const double x :
       {0.0, -0.0, 0.5, 2.5, 1e37, 1.1e37, -1e299, 5e-324, infinity, -infinity, nan, -nan})
    for (const int width : {-400, -30, -5, 0, 9, 10, 26, 27, 254, 300, 3000})
      for (const int decimals : {0, 3, 300, 1100, 1500}) expectprinted(x, width, decimals);
  for (int i = 0; i < 20000; ++i)
    expectprinted(i % 3 == 0 ? static_cast<double>(random() % 2000000) / 1000 - 1000
                             : std::bit_cast<double>(random()),
                  static_cast<int>(random() % 40) - 5, static_cast<int>(random() % 25));
  for (const std::int32_t n : {0, 7, -7, 2147483647, -2147483647 - 1})
    for (const int width : {-300, -12, 0, 5, 300}) {
      EXPECT_EQ(_Q9_Str_i0(n), printed("%d", n));
      EXPECT_EQ(_Q9_Str_i1(n, width), printed("%*d", width, n));
    }
}

// Builds a locale whose decimal point is a comma, as the system may have none.
TEST(NumberToText, IgnoresTheLocale) {
  const test::scratchfolder folder;
  const test::keptvariable path("LOCPATH");
  folder.put(
      "source",
      "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n");
  const std::string command =
      "cd " + folder.path() +
      " && localedef -c -i source -f ANSI_X3.4-1968 ./comma >/dev/null 2>&1";
  EXPECT_NE(std::system(command.c_str()), -1);  // it fails for its warnings: ask the result
  setenv("LOCPATH", folder.path().c_str(), 1);
  if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) std::setlocale(LC_NUMERIC, "comma");
  const std::string comma = printed("%.1f", 1.5);
  int code = -1;
  const double real = _Q9_Val_d("1.5e1", code);
  const shortstring e = _Q9_Str_d0(-1234.5), f = _Q9_Str_d2(1234567.25, 12, 1);
  std::setlocale(LC_ALL, "C");
  if (comma != "1,5") GTEST_SKIP() << "no locale with a decimal comma is available";
  EXPECT_EQ(tuple(real, code), tuple(15.0, 0));
  EXPECT_EQ(e, "  -1.23450000000000E+03");
  EXPECT_EQ(f, "   1234567.2");
}

TEST(Reals, RoundAndClass) {
  const tuple<double, std::int64_t, int> rows[] = {{-0.5, -1, 8},  {0.49999999999999994, 1, 9},
                                                   {5e-324, 0, 5}, {-2.2250738585072009e-308, 0, 4},
                                                   {nan, 0, 1},    {-0.0, 0, 6}};
  for (const auto& [real, rounded, realclass] : rows)
    EXPECT_EQ(tuple(round(real), fpclass(real)), tuple(rounded, realclass)) << real;
}

}  // namespace
}  // namespace optxv
