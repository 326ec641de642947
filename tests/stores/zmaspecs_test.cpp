#include "stores/zmaspecs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

namespace optxv {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notanumber = std::numeric_limits<double>::quiet_NaN();

std::uint64_t bitsof(double value) {
  return std::bit_cast<std::uint64_t>(value);
}

TEST(SpecialValues, AreTheseToTheBit) {
  const struct {
    double value, twin;
    std::uint64_t bits;
  } rows[] = {{valund, xvalund, 0x7e37e43c8800759c},  {valna, xvalna, 0x7e47e43c8800759c},
              {valpin, xvalpin, 0x7e51eb2d66005835},  {valmin, xvalmin, 0x7e57e43c8800759c},
              {valeps, xvaleps, 0x7e5ddd4baa009303},  {valacr, xvalacr, 0x7e6ddd4baa009303},
              {valiup, xvaliup, 0x4059000000000000},  {valbig, -valsmall, 0x7e031cfd3999f7b0},
              {old_valund, 1e30, 0x46293e5939a08cea}, {old_valna, 2e30, 0x46393e5939a08cea},
              {old_valpin, 3e30, 0x4642eec2eb3869af}, {old_valmin, 4e30, 0x46493e5939a08cea},
              {old_valeps, 5e30, 0x464f8def8808b024}, {old_valacr, 1e31, 0x465f8def8808b024}};
  for (const auto& row : rows) {
    EXPECT_EQ(bitsof(row.value), row.bits) << row.value;
    EXPECT_EQ(row.twin, row.value);
  }
}

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
  EXPECT_EQ(mapval(notanumber), 6);
  EXPECT_EQ(xmapval(notanumber), 2);
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
  for (std::size_t i = 0; i < std::size(old); ++i)
    EXPECT_EQ(bitsof(old_new_val(old[i])), bitsof(present[i])) << old[i];
}

}  // namespace
}  // namespace optxv
