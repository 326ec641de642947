#include "foundation/pchutil.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "foundation/runtime.h"

namespace optxv {
namespace {

TEST(TextIn, LimitsAndNil) {
  const std::string most(254, 'm'), toolong(255, 't');
  const std::tuple<const char*, std::string, std::string, std::string> rows[] = {
      {nullptr, "", "", ""},
      {"elevenbytes", "elevenbytes", "elevenbyte", "elevenbytes"},
      {most.c_str(), most, "mmmmmmmmmm", most},
      {toolong.c_str(), "PCharToStr Overflow", "PCharToStr", "ConvertPChar Overflow"}};
  for (const auto& [text, full, cut, converted] : rows) {
    EXPECT_EQ(pchartostr(text).view(), full);
    EXPECT_EQ(pchartostr<10>(text).view(), cut);
    shortstring out = "old";
    convertpchar(text, out);
    EXPECT_EQ(out.view(), converted);
  }
}

TEST(TextOut, CopiesCountedBytesAndATerminator) {
  const std::tuple<std::int32_t, std::string> rows[] = {
      {-1, {"\0....", 5}}, {2, {"ab\0..", 5}}, {9, {"abc\0.", 5}}};
  for (const auto& [n, left] : rows) {
    std::string buffer(5, '.');
    strpcopyn(buffer.data(), "abc", n);
    EXPECT_EQ(buffer, left) << n;
  }
  EXPECT_EQ(strtopchar(""), nullptr);
  char* const text = strtopchar("abc");
  EXPECT_STREQ(text, "abc");
  freemem(text, 4);
}

TEST(TextOut, ConcatenationAtAnIndex) {
  std::string buffer(6, '.');
  std::int32_t w = 1;
  pcharconcatpchar(buffer.data(), w, nullptr);
  EXPECT_EQ(buffer, "......");
  pcharconcatstr(buffer.data(), w, "a");
  pcharconcatpchar(buffer.data(), w, "bc");
  EXPECT_EQ(buffer, std::string(".abc\0.", 6));
  EXPECT_EQ(w, 4);
}

}  // namespace
}  // namespace optxv
