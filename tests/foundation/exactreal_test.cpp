#include "foundation/exactreal.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <tuple>

namespace optxv {
namespace {

std::uint64_t bitsof(double x) {
  return std::bit_cast<std::uint64_t>(x);
}

TEST(ExactReal, Rows) {
  const std::string zeros(900, '0'), nines(900, '9');
  const std::tuple<std::string, std::int64_t, double> rows[] = {
      {"", 0, 0},
      {".", 5, 0},
      {"000.000", 400, 0},
      {zeros + "." + zeros, -5, 0},
      {zeros + "7." + zeros, -1, 0.7},
      {"." + zeros + "7", 901, 7},
      {"7" + zeros + ".", -900, 7},
      {nines, -900, 1},
      {"1", 308, 1e308},
      {"1", 309, std::numeric_limits<double>::infinity()},
      {"1", std::int64_t{1} << 60, std::numeric_limits<double>::infinity()},
      {"1", -(std::int64_t{1} << 60), 0},
      // The largest real, and the half above it that is none.
      {"179769313486231570", 291, 0x1.fffffffffffffp1023},
      {"179769313486231580793728971405302", 276, 0x1.fffffffffffffp1023},
      {"179769313486231580793728971405304", 276, std::numeric_limits<double>::infinity()},
      // The smallest of full precision, the denormals, and the half of the smallest one.
      {"2.2250738585072011", -308, 0x1.ffffffffffffep-1023},
      {"2.2250738585072014", -308, 0x1p-1022},
      {"4.9406564584124654", -324, 0x1p-1074},
      {"2.4703282292062328", -324, 0x1p-1074},
      {"2.4703282292062327", -324, 0},
      {"7.4109846876186981", -324, 0x1p-1074},
      {"7.4109846876186982", -324, 0x1p-1073},
      // Ties go to the even real, and a digit far behind breaks them, though not one of 0.
      {"9007199254740993", 0, 0x1p53},
      {"9007199254740993." + zeros + "1", 0, 0x1.0000000000001p53},
      {"9007199254740993." + zeros, 0, 0x1p53},
      {"9007199254740995", 0, 0x1.0000000000002p53},
      {"9007199254740994" + nines, -900, 0x1.0000000000001p53},
  };
  for (const auto& [mantissa, exponent, value] : rows)
    EXPECT_EQ(bitsof(exactreal(mantissa, exponent)), bitsof(value)) << mantissa << 'e' << exponent;
}

TEST(ExactReal, AgreesWithTheCLibrary) {
  std::mt19937_64 random(20250301);
  for (int i = 0; i < 30000; ++i) {
    std::string mantissa;
    for (std::size_t n = random() % (i % 50 == 0 ? 1000 : 30) + 1; n > 0; --n)
      mantissa += static_cast<char>('0' + random() % 10);
    mantissa.insert(random() % (mantissa.size() + 1), ".");
    const int exponent = static_cast<int>(random() % 700) - 360;
    const std::string text = mantissa + 'e' + std::to_string(exponent);
    ASSERT_EQ(bitsof(exactreal(mantissa, exponent)), bitsof(std::strtod(text.c_str(), nullptr)))
        << text;
  }
}

}  // namespace
}  // namespace optxv
