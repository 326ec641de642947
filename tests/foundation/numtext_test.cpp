#include "foundation/numtext.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <string>

namespace optxv {
namespace {

using namespace std::string_view_literals;

std::uint64_t bitsof(double x) {
  std::uint64_t bits;
  std::memcpy(&bits, &x, sizeof bits);
  return bits;
}

TEST(IntegerText, Rows) {
  const struct {
    std::string_view text;
    std::int32_t value;
    int code;
  } rows[] = {
      {"", 0, 1},
      {"   ", 0, 4},
      {"\t1", 0, 1},
      {"+", 0, 2},
      {"- 1", 0, 2},
      {"+-1", 0, 2},
      {"007", 7, 0},
      {"08", 8, 0},
      {"  +7", 7, 0},
      {"0", 0, 0},
      {"-0", 0, 0},
      {"0 ", 0, 1},
      {" 0a", 0, 2},
      {"0\0"sv, 0, 1},
      {"12\0"sv, 12, 3},
      {"12x", 12, 3},
      {"7 ", 7, 2},
      {"0x1F", 31, 0},
      {"-0X1f", -31, 0},
      {"0x", 0, 2},
      {"-0xg", 0, 3},
      {"0x1g", 1, 4},
      {"$1F", 31, 0},
      {"-$1F", -31, 0},
      {"$", 0, 2},
      {" $-1", 0, 3},
      {"$0x1F", 31, 0},
      {"$0x", 0, 3},
      {"$0x0x1", 0, 5},
      {"2147483647", 2147483647, 0},
      {"2147483648", 2147483647, 0},
      {"-2147483648", -2147483647 - 1, 0},
      {"-99999999999999999999999", -2147483647 - 1, 0},
      {"0xFFFFFFFFFFFFFFFFFFFF", 2147483647, 0},
      {"99999999999999999999999z", 2147483647, 24},
      {"1e3", 1, 2},
  };
  for (const auto& row : rows) {
    int code = -1;
    EXPECT_EQ(_Q9_Val_SPD(row.text, code), row.value) << row.text;
    EXPECT_EQ(code, row.code) << row.text;
  }
}

TEST(RealText, Rows) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const struct {
    std::string_view text;
    double value;
    int code;
  } rows[] = {
      {"", 0, 1},
      {"  ", 0, 3},
      {"5", 5, 0},
      {" -5.", -5, 0},
      {".5", .5, 0},
      {"-.5", -.5, 0},
      {"+1e3", 1000, 0},
      {".", 0, 0},
      {"-.", 0.0, 0},
      {"-0", -0.0, 0},
      {"-.x", -0.0, 2},
      {".d5", 0, 1},
      {"..5", 0, 1},
      {".e5", 0, 0},
      {"-.E", -0.0, 3},
      {".e+", 0, 2},
      {"1d3", 1, 2},
      {"1e", 1, 2},
      {"1e+", 1, 2},
      {"1e-x", 1, 2},
      {"1.5.2", 1.5, 4},
      {"0x10", 0, 2},
      {"1x", 0, 2},
      {"-7X", 0, 3},
      {"12x", 12, 3},
      {"1 ", 1, 2},
      {"1,5", 1, 2},
      {"5\0"sv, 5, 2},
      {".\0"sv, 0, 1},
      {"INF", 0, 1},
      {"-nan", 0, 2},
      {"1e999", infinity, 0},
      {"-1e99999999999999999999", -infinity, 0},
      {"1e-999", 0, 0},
      {"-1e-99999999999999999999", -0.0, 0},
      {"0e99999999999999999999", 0, 0},
      {"4.9e-324", 4.9e-324, 0},
      {"2.4e-324", 0, 0},
      {"2.2250738585072011e-308", 2.2250738585072011e-308, 0},
      {"1.7976931348623158e308", 1.7976931348623157e308, 0},
      {"1.7976931348623159e308", infinity, 0},
  };
  for (const auto& row : rows) {
    int code = -1;
    EXPECT_EQ(bitsof(_Q9_Val_d(row.text, code)), bitsof(row.value)) << row.text;
    EXPECT_EQ(code, row.code) << row.text;
  }
}

// What strtol and strtod make of a text, with the code from where they stopped.
int codeof(const std::string& text, const char* end) {
  return *end == '\0' ? 0 : static_cast<int>(end - text.c_str()) + 1;
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
      text += random() % 2 == 0 ? "e" : "E";
      text += std::array{"", "+", "-", "-"}[random() % 4];
      text += i % 50 == 0 ? randomdigits(random, 25) : std::to_string(random() % 345);
    }
    text += tails[random() % std::size(tails)];
    const std::size_t second = text[0] == '-' ? 2 : 1;
    if (text.size() > second && text[second] == 'x') continue;  // refused by a rule of its own
    char* end;
    const double expected = strtod(text.c_str(), &end);
    int code = -1;
    ASSERT_EQ(bitsof(_Q9_Val_d(text, code)), bitsof(expected)) << text;
    ASSERT_EQ(code, codeof(text, end)) << text;
  }
}

double randomreal(std::mt19937_64& random) {
  if (random() % 3 == 0) return static_cast<double>(random() % 2000000) / 1000 - 1000;
  double value;
  const std::uint64_t bits = random();
  std::memcpy(&value, &bits, sizeof value);
  return value;
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
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const double special[] = {0.0,    -0.0,   0.5,      2.5,       1e37,         1.1e37,
                            -1e299, 5e-324, infinity, -infinity, std::nan(""), -std::nan("")};
  for (const double x : special)
    for (const int width : {-400, -30, -5, 0, 9, 10, 26, 27, 254, 300, 3000})
      for (const int decimals : {0, 3, 300, 1100, 1500}) expectprinted(x, width, decimals);
  for (int i = 0; i < 20000; ++i)
    expectprinted(randomreal(random), static_cast<int>(random() % 40) - 5,
                  static_cast<int>(random() % 25));
  for (const std::int32_t n : {0, 7, -7, 2147483647, -2147483647 - 1})
    for (const int width : {-300, -12, 0, 5, 300}) {
      EXPECT_EQ(_Q9_Str_i0(n), printed("%d", n));
      EXPECT_EQ(_Q9_Str_i1(n, width), printed("%*d", width, n));
    }
}

// A directory with one locale whose decimal point is a comma; gone at the end of its life.
class commalocale {
 public:
  commalocale() {
    char name[] = "/tmp/optxvlocaleXXXXXX";
    if (mkdtemp(name) != nullptr) folder_ = name;
    std::ofstream(folder_ + "/source")
        << "LC_NUMERIC\ndecimal_point \",\"\nthousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n";
    const std::string command = "localedef -c -i " + folder_ + "/source -f ANSI_X3.4-1968 " +
                                folder_ + "/comma >/dev/null 2>&1";
    if (std::system(command.c_str()) == -1)
      return;  // its warnings count as failure: ask the result
    setenv("LOCPATH", folder_.c_str(), 1);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr) std::setlocale(LC_NUMERIC, "comma");
  }
  ~commalocale() {
    std::setlocale(LC_ALL, "C");
    unsetenv("LOCPATH");
    if (!folder_.empty()) std::filesystem::remove_all(folder_);
  }
  bool works() const { return *std::localeconv()->decimal_point == ','; }

 private:
  std::string folder_;
};

TEST(NumberToText, IgnoresTheLocale) {
  const commalocale locale;
  if (!locale.works()) GTEST_SKIP() << "no locale with a decimal comma, and localedef makes none";
  ASSERT_STREQ(printed("%.1f", 1.5).c_str(), "1,5");
  int code = -1;
  EXPECT_EQ(_Q9_Val_d("1.5e1", code), 15);
  EXPECT_EQ(code, 0);
  EXPECT_EQ(_Q9_Val_d("1,5", code), 1);
  EXPECT_EQ(code, 2);
  EXPECT_EQ(_Q9_Str_d0(-1234.5), "  -1.23450000000000E+03");
  EXPECT_EQ(_Q9_Str_d2(1234567.25, 12, 1), "   1234567.2");
  EXPECT_EQ(_Q9_Val_SPD("1234567", code), 1234567);
  EXPECT_EQ(syserrormessage(2), "No such file or directory");
}

TEST(Reals, RoundAndClass) {
  const struct {
    double real;
    std::int64_t rounded;
    int realclass;
  } rows[] = {
      {0.5, 1, 9},
      {-0.5, -1, 8},
      {2.4999, 2, 9},
      {-2.5, -3, 8},
      {0.49999999999999994, 1, 9},
      {0.0, 0, 7},
      {-0.0, 0, 6},
      {5e-324, 0, 5},
      {-2.2250738585072009e-308, 0, 4},
      {2.2250738585072014e-308, 0, 9},
      {1e300, std::numeric_limits<std::int64_t>::max(), 9},
      {-HUGE_VAL, std::numeric_limits<std::int64_t>::min(), 2},
      {HUGE_VAL, std::numeric_limits<std::int64_t>::max(), 3},
      {std::numeric_limits<double>::quiet_NaN(), 0, 1},
      {std::numeric_limits<double>::signaling_NaN(), 0, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(round(row.real), row.rounded) << row.real;
    EXPECT_EQ(fpclass(row.real), row.realclass) << row.real;
  }
  EXPECT_EQ(fpclasstext(0), "signaling NaN");
  EXPECT_EQ(fpclasstext(5), "positive denormalized non-zero");
  EXPECT_EQ(fpclasstext(9), "positive normalized non-zero");
  EXPECT_EQ(fpclasstext(10), "");
  EXPECT_EQ(fpclasstext(-1), "");
}

TEST(SystemError, Texts) {
  EXPECT_EQ(syserrormessage(21), "Is a directory");
  EXPECT_EQ(syserrormessage(99999), "Unknown error 99999");
}

}  // namespace
}  // namespace optxv
