#include "foundation/pchutil.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/runtime.h"

namespace optxv {
namespace {

TEST(TextIn, LimitsAndNil) {
  const std::string most(254, 'm');
  const std::string toolong(255, 't');
  const std::string huge(100000, 'h');
  const struct {
    const char* text;
    std::string full, cut, converted;
  } rows[] = {
      {nullptr, "", "", ""},
      {"", "", "", ""},
      {"abc", "abc", "abc", "abc"},
      {"elevenbytes", "elevenbytes", "elevenbyte", "elevenbytes"},
      {most.c_str(), most, "mmmmmmmmmm", most},
      {toolong.c_str(), "PCharToStr Overflow", "PCharToStr", "ConvertPChar Overflow"},
      {huge.c_str(), "PCharToStr Overflow", "PCharToStr", "ConvertPChar Overflow"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(pchartostr(row.text).view(), row.full);
    EXPECT_EQ(pchartostr<10>(row.text).view(), row.cut);
    shortstring converted = "old";
    convertpchar(row.text, converted);
    EXPECT_EQ(converted.view(), row.converted);
  }
  EXPECT_EQ(pcharlen(nullptr), 0);
  EXPECT_EQ(pcharlen(huge.c_str()), 100000);
}

TEST(TextOut, CopiesCountedBytesAndATerminator) {
  const struct {
    std::int32_t n;
    std::string left;
  } rows[] = {{-1, std::string("\0......", 7)},
              {0, std::string("\0......", 7)},
              {2, std::string("ab\0....", 7)},
              {9, std::string("abc\0...", 7)}};
  for (const auto& row : rows) {
    std::string buffer(7, '.');
    strpcopyn(buffer.data(), "abc", row.n);
    EXPECT_EQ(buffer, row.left) << row.n;
  }
  std::string buffer(7, '.');
  strpcopy(buffer.data(), std::string_view("a\0b", 3));
  EXPECT_EQ(buffer, std::string("a\0b\0...", 7));
}

TEST(TextOut, NewTexts) {
  const std::int64_t bytes = allocmemsize();
  char* const text = strtopchar("abc");
  char* const empty = emptytopchar();
  EXPECT_STREQ(text, "abc");
  EXPECT_STREQ(empty, "");
  EXPECT_EQ(strtopchar(""), nullptr);
  EXPECT_EQ(allocmemsize() - bytes, 5);
  freemem(text, 4);
  freemem(empty, 1);
}

TEST(TextOut, ConcatenationAtAnIndex) {
  std::string buffer(6, '.');
  std::int32_t w = 1;
  pcharconcatstr(buffer.data(), w, "");
  pcharconcatpchar(buffer.data(), w, nullptr);
  EXPECT_EQ(buffer, "......");
  pcharconcatpchar(buffer.data(), w, "");
  EXPECT_EQ(buffer, std::string(".\0....", 6));
  pcharconcatstr(buffer.data(), w, "a");
  pcharconcatpchar(buffer.data(), w, "bc");
  EXPECT_EQ(buffer, std::string(".abc\0.", 6));
  EXPECT_EQ(w, 4);
}

}  // namespace
}  // namespace optxv
