#include "foundation/pchutil.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/runtime.h"

namespace optxv {
namespace {

TEST(TextOut, CopiesCountedBytesAndATerminator) {
  const std::pair<std::int32_t, std::string> rows[] = {
      {-1, {"\0....", 5}}, {2, {"ab\0..", 5}}, {9, {"abc\0.", 5}}};
  for (const auto& [count, left] : rows) {
    std::string buffer(5, '.');
    strpcopyn(buffer.data(), "abc", count);
    EXPECT_EQ(buffer, left) << count;
  }
  std::string line(8, '.');
  std::int32_t at = 1;
  pcharconcatstr(line.data(), at, "ab");
  pcharconcatstr(line.data(), at, "");
  pcharconcatpchar(line.data(), at, nullptr);
  pcharconcatpchar(line.data(), at, "cd");
  EXPECT_EQ(line + std::to_string(at), std::string(".abcd\0..5", 9));
  EXPECT_EQ(strtopchar(""), nullptr);
  char* const text = strtopchar("abc");
  EXPECT_STREQ(text, "abc");
  freemem(text, 4);
}

}  // namespace
}  // namespace optxv
