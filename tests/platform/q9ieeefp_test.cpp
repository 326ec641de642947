#include "platform/q9ieeefp.h"

#include <gtest/gtest.h>

#include <cfenv>

namespace optxv {
namespace {

TEST(ExceptionFlags, EveryOneIsRaisedAndLowered) {
  const struct {
    int native;
    unsigned ours;
  } rows[] = {
      {FE_INVALID, 1}, {FE_DIVBYZERO, 4}, {FE_OVERFLOW, 8}, {FE_UNDERFLOW, 16}, {FE_INEXACT, 32}};
  for (const auto& row : rows) {
    clearexceptionflags(255);
    EXPECT_EQ(getexceptionflags(), 0);
    std::feraiseexcept(row.native);
    EXPECT_EQ(getexceptionflags() & row.ours, row.ours);

    std::feraiseexcept(FE_ALL_EXCEPT);
    EXPECT_EQ(getexceptionflags(), 61);
    clearexceptionflags(static_cast<std::uint8_t>(row.ours | 2 | 64 | 128));
    EXPECT_EQ(getexceptionflags(), 61 & ~row.ours);
  }
  clearexceptionflags(exallflags);
  volatile double big = 1e300;
  big = big * big;
  EXPECT_EQ(getexceptionflags(), exoverflow | exprecision);
  clearexceptionflags(exallflags);
}

}  // namespace
}  // namespace optxv
