#include "stores/zmaspecs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

namespace optxv {
namespace {

constexpr double infinity = HUGE_VAL, notanumber = std::numeric_limits<double>::quiet_NaN();

TEST(SpecialValues, HaveTheirClasses) {
  const std::vector<double> classes[] = {
      {-infinity, -3e300, -0.5, -5e-324},
      {-0.0, 0},
      {5e-324, 3.5, std::nextafter(1e300, 0)},
      {1e300, std::nextafter(1e300, 3e300), 1.5e300, 1.99998e300, 2.00002e300, 5.5e300, 9.5e300},
      {1.999992e300, 2e300, 2.000008e300},
      {3e300},
      {4e300},
      {5e300},
      {6e300, std::nextafter(1e301, 0), 1e301, 7e301, infinity}};
  for (int i = 0; i < 9; ++i)
    for (const double x : classes[i]) {
      EXPECT_EQ(xmapval(x), i) << x;
      EXPECT_EQ(mapval(x), std::max(i - 2, 0)) << x;
    }
  EXPECT_EQ(std::pair(mapval(notanumber), xmapval(notanumber)), std::pair(6, 2));
}

// The last acronym is one whose number the present scale cannot hold.
TEST(SpecialValues, ComeFromTheOldScale) {
  const double below = std::nextafter(1e30, 0);
  const double old[] = {-infinity, -0.0,   below, 1e30,     2e30,      2.00002e30, 2.000008e30,
                        3e30,      4e30,   5e30,  6e30,     1e31,      1.4e31,     1.5e31,
                        3e31,      123e31, 1e300, infinity, notanumber};
  const double present[] = {-infinity, -0.0,        below,    1e300,    2e300, 1e300, 2e300,
                            3e300,     4e300,       5e300,    1e300,    1e301, 1e301, 2e301,
                            3 * 1e301, 123 * 1e301, infinity, infinity, 1e300};
  const auto bitsof = [](double value) { return std::bit_cast<std::uint64_t>(value); };
  for (std::size_t i = 0; i < std::size(old); ++i)
    EXPECT_EQ(bitsof(old_new_val(old[i])), bitsof(present[i])) << old[i];
}

}  // namespace
}  // namespace optxv
