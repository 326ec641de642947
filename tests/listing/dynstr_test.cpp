#include "listing/dynstr.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "foundation/runtime.h"

namespace optxv {
namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();

TEST(DynamicString, TakesRoomByTheNeededLength) {
  const struct {
    std::int32_t length, room;
  } rows[] = {{0, 256}, {255, 256}, {256, 512}, {257, 512}, {-300, 0}, {largest, largest}};
  for (const auto& row : rows) EXPECT_EQ(tdynamicstr::getallocsize(row.length), row.room);

  const std::int64_t before = allocmemsize();
  {
    tdynamicstr text(0), roomy(300), odd(lowest);
    EXPECT_EQ(text.allocated(), 0);
    EXPECT_EQ(roomy.allocated(), 512);
    EXPECT_EQ(odd.allocated(), 256);
    text.addstr("a");
    EXPECT_EQ(text.allocated(), 256);
    text.addbl(255);
    EXPECT_EQ(text.allocated(), 256) << "it fits";
    text.addstr("b");
    EXPECT_EQ(text.allocated(), 512);
    EXPECT_EQ(text.view(), "a" + std::string(255, ' ') + "b") << "the old text stays";
    EXPECT_EQ(allocmemsize() - before, 512 + 512 + 256);
    text.clear();
    EXPECT_EQ(text.allocated(), 512);
    roomy.assign(text);
    EXPECT_EQ(roomy.allocated(), 512);
    EXPECT_EQ(roomy.length(), 0);
  }
  EXPECT_EQ(allocmemsize(), before);
}

TEST(DynamicString, AppendsAndCopies) {
  tdynamicstr text, other;
  text.addpchar("abc", 2);
  text.addpchar(nullptr, 0), text.addpchar("x", -1), text.addbl(lowest), text.addstr("");
  text.addint(lowest), text.addbl(1), text.addint(7);
  EXPECT_EQ(text.view(), "ab-2147483648 7");
  other.assign(text), other.assign(other);
  EXPECT_EQ(other.view(), text.view());
  std::string doubled(text.view());
  for (int i = 0; i < 6; ++i) {  // through several moves of the bytes that are appended
    text.addpchar(text.getcharp(), text.length());
    doubled += doubled;
  }
  EXPECT_EQ(text.view(), doubled);
}

TEST(DynamicString, ReadsBlanksOutside) {
  tdynamicstr text;
  text.addstr("abc");
  const struct {
    std::int32_t index;
    char ch, character;
  } rows[] = {{-1, ' ', ' '}, {0, 'a', ' '}, {1, 'b', 'a'},      {2, 'c', 'b'},
              {3, ' ', 'c'},  {4, ' ', ' '}, {lowest, ' ', ' '}, {largest, ' ', ' '}};
  for (const auto& row : rows) {
    EXPECT_EQ(text.getch(row.index), row.ch) << row.index;
    EXPECT_EQ(text.getchar(row.index), row.character) << row.index;
  }
  text.setch(1, 'B'), text.setch(3, 'x'), text.setch(-1, 'x');
  const struct {
    std::int32_t start, count;
    std::string expected;
  } parts[] = {{1, 2, "aB"},
               {2, 4, "Bc  "},
               {4, 2, "  "},
               {largest, 2, "  "},
               {1, 300, "aBc" + std::string(252, ' ')},
               {0, 2, ""},
               {1, 0, ""}};
  for (const auto& part : parts)
    EXPECT_EQ(text.getstr(part.start, part.count).view(), part.expected) << part.start;
  tdynamicstr wide;
  wide.addbl(300), wide.addstr("end");
  EXPECT_EQ(wide.getstr(301, 3).view(), "end");
  EXPECT_EQ(wide.getstr(1, largest).length(), 255);
}

TEST(DynamicString, FailsWithoutMemoryAndStaysUsable) {
  tdynamicstr text;
  text.addstr("abc");
  const char c = 'x';
  EXPECT_THROW(text.addstr({&c, std::size_t{largest}}), exception) << "past the largest length";
  EXPECT_EQ(text.view(), "");
  text.addstr("again");
  EXPECT_EQ(text.view(), "again");
}

TEST(DynamicString, Prints) {
  tdynamicstr text;
  text.addstr("one\n"), text.addpchar("\0", 1), text.addstr("two");
  testing::internal::CaptureStdout();
  text.write();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string("one\n\0two", 8));
  setioresult(5);
  EXPECT_THROW(text.write(), einouterror);
}

}  // namespace
}  // namespace optxv
