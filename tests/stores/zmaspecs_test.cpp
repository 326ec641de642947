#include "stores/zmaspecs.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

namespace optxv {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notanumber = std::numeric_limits<double>::quiet_NaN();

TEST(SpecialValues, AreTheseToTheBit) {
  const struct {
    double value, twin;
    std::uint64_t bits;
  } rows[] = {
      {valund, xvalund, 0x7e37e43c8800759c},  {valna, xvalna, 0x7e47e43c8800759c},
      {valpin, xvalpin, 0x7e51eb2d66005835},  {valmin, xvalmin, 0x7e57e43c8800759c},
      {valeps, xvaleps, 0x7e5ddd4baa009303},  {valacr, xvalacr, 0x7e6ddd4baa009303},
      {valiup, xvaliup, 0x4059000000000000},  {valbig, -valsmall, 0x7e031cfd3999f7b0},
      {old_valund, 1e30, 0x46293e5939a08cea}, {old_valna, 2e30, 0x46393e5939a08cea},
      {old_valpin, 3e30, 0x4642eec2eb3869af}, {old_valmin, 4e30, 0x46493e5939a08cea},
      {old_valeps, 5e30, 0x464f8def8808b024}, {old_valacr, 1e31, 0x465f8def8808b024},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(row.value), row.bits) << row.value;
    EXPECT_EQ(row.twin, row.value);
  }
}

TEST(SpecialValues, HaveTheirClasses) {
  const struct {
    double x;
    int plain, extended;
  } rows[] = {
      {-infinity, 0, 0},
      {-1e305, 0, 0},
      {-3e300, 0, 0},
      {-0.5, 0, 0},
      {-5e-324, 0, 0},
      {-0.0, 0, 1},
      {0, 0, 1},
      {5e-324, 0, 2},
      {3.5, 0, 2},
      {9.9e299, 0, 2},
      {std::nextafter(1e300, 0), 0, 2},
      {1e300, 1, 3},
      {std::nextafter(1e300, infinity), 1, 3},
      {1.000009e300, 1, 3},
      {1.5e300, 1, 3},
      {1.99998e300, 1, 3},
      {1.999992e300, 2, 4},
      {2e300, 2, 4},
      {2.000008e300, 2, 4},
      {2.00002e300, 1, 3},
      {2.5e300, 1, 3},
      {3e300, 3, 5},
      {4e300, 4, 6},
      {5e300, 5, 7},
      {5.5e300, 1, 3},
      {6e300, 6, 8},
      {8e300, 6, 8},
      {9.5e300, 1, 3},
      {std::nextafter(1e301, 0), 6, 8},
      {1e301, 6, 8},
      {1.05e301, 6, 8},
      {7e301, 6, 8},
      {infinity, 6, 8},
      {notanumber, 6, 2},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(mapval(row.x), row.plain) << row.x;
    EXPECT_EQ(xmapval(row.x), row.extended) << row.x;
  }
}

TEST(SpecialValues, ComeFromTheOldScale) {
  const struct {
    double old, present;
  } rows[] = {
      {-infinity, -infinity},
      {-4e30, -4e30},
      {0, 0},
      {1e29, 1e29},
      {std::nextafter(1e30, 0), std::nextafter(1e30, 0)},
      {1e30, 1e300},
      {2e30, 2e300},
      {2.00002e30, 1e300},
      {2.000008e30, 2e300},
      {2.5e30, 1e300},
      {3e30, 3e300},
      {4e30, 4e300},
      {5e30, 5e300},
      {6e30, 1e300},
      {9e30, 1e300},
      {1e31, 1e301},
      {1.4e31, 1e301},
      {1.5e31, 2e301},
      {3e31, 3 * 1e301},
      {123e31, 123 * 1e301},
      {1e300, infinity},  // an acronym whose number the present scale cannot hold
      {infinity, infinity},
      {notanumber, 1e300},
  };
  for (const auto& row : rows)
    EXPECT_EQ(std::bit_cast<std::uint64_t>(old_new_val(row.old)),
              std::bit_cast<std::uint64_t>(row.present))
        << row.old;
  EXPECT_TRUE(std::signbit(old_new_val(-0.0)));
}

TEST(VariableTypes, HaveNamesAndSets) {
  const struct {
    std::string_view name;
    bool continuous, discrete;
  } rows[] = {
      {"unknown ", false, false}, {"binary  ", false, true}, {"integer ", false, true},
      {"positive", true, false},  {"negative", true, false}, {"free    ", true, false},
      {"sos1    ", false, true},  {"sos2    ", false, true}, {"semicont", false, true},
      {"semiint ", false, true},
  };
  ASSERT_EQ(std::size(rows), varstyptxt.size());
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    EXPECT_EQ(varstyptxt[i], rows[i].name);
    EXPECT_EQ(varstypx[i], rows[i].continuous) << rows[i].name;
    EXPECT_EQ(varstypi[i], rows[i].discrete) << rows[i].name;
  }
}

}  // namespace
}  // namespace optxv
