#include "listing/dynstr.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>

#include "foundation/runtime.h"

namespace optxv {
namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();

TEST(DynamicString, TakesRoomAndGrows) {
  const std::int32_t lengths[] = {0, 255, 256, -300, largest};
  const std::int32_t rooms[] = {256, 256, 512, 0, largest};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(tdynamicstr::getallocsize(lengths[i]), rooms[i]);
  const std::int64_t before = allocmemsize();
  {
    tdynamicstr text(0), odd(lowest);
    EXPECT_EQ(allocmemsize() - before, 256);
    text.addpchar("ab", 1);
    text.addpchar(nullptr, 0);
    text.addpchar("ab", lowest);
    text.addbl(lowest);
    text.addbl(253);
    text.addint(-12);
    text.setch(0, 'A');
    text.setch(-1, 'x');
    text.setch(257, 'x');
    EXPECT_EQ(text.view(), "A" + std::string(253, ' ') + "-12") << "the old text stays";
    EXPECT_EQ(text.allocated(), 512);
    odd.assign(text);
    odd.assign(odd);
    EXPECT_EQ(odd.view(), text.view());
    for (int i = 0; i < 6; ++i) text.addpchar(text.getcharp(), text.length());
    EXPECT_EQ(text.getstr(257 * 63 + 1, largest), odd.getstr(1, 255)) << "its own bytes, moved";
    const char c = 'x';
    EXPECT_THROW(text.addstr({&c, std::size_t{largest}}), exception) << "past the largest length";
    text.addstr("again");
    EXPECT_EQ(text.view(), "again");
    text.addbl(300);
    EXPECT_EQ(text.view(), "again" + std::string(300, ' '));
    tdynamicstr blank(0);
    blank.addbl(256);
    EXPECT_EQ(std::pair(blank.length(), blank.allocated()), std::pair(256, 512));
  }
  EXPECT_EQ(allocmemsize(), before);
}

TEST(DynamicString, GivesBlanksPastItsEnds) {
  tdynamicstr text;
  text.addstr("abc");
  std::string bytes;
  for (const std::int32_t i : {-1, 0, 2, 3}) bytes += text.getch(i);
  for (const std::int32_t i : {0, 1, 3, 4}) bytes += text.getchar(i);
  EXPECT_EQ(bytes, " ac  ac ");
  const std::tuple<std::int32_t, std::int32_t, std::string> parts[] = {
      {0, 2, ""}, {1, 0, ""}, {2, 1, "b"}, {2, 4, "bc  "}, {3, 1, "c"}, {4, 2, "  "}};
  for (const auto& [start, count, part] : parts)
    EXPECT_EQ(text.getstr(start, count).view(), part) << start << ' ' << count;
  testing::internal::CaptureStdout();
  text.write();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "abc");
}

}  // namespace
}  // namespace optxv
