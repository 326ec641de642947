#include "foundation/pchutil.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/q9private.h"
#include "foundation/runtime.h"

namespace optxv {
namespace {

TEST(TextOut, CopiesCountedBytesAndATerminator) {
  const auto leaves = [](std::int32_t n, const std::string& left) {
    std::string buffer(5, '.');
    strpcopyn(buffer.data(), "abc", n);
    EXPECT_EQ(buffer, left) << n;
  };
  leaves(-1, {"\0....", 5}), leaves(2, {"ab\0..", 5}), leaves(9, {"abc\0.", 5});
  EXPECT_EQ(strtopchar(""), nullptr);
  char* const text = strtopchar("abc");
  EXPECT_STREQ(text, "abc");
  freemem(text, 4);
}

TEST(PlatformText, LongTextIsCutAndEmptyTextIsABlock) {
  for (const std::size_t length : {0, 255, 256}) {
    const std::string text(length, 'x');
    EXPECT_EQ(q9private::pchartostr(text.c_str()).view(), text.substr(0, 255)) << length;
    EXPECT_EQ(q9private::strbuftostr(text.c_str()).view(), text.substr(0, 255)) << length;
  }
  const std::int64_t bytes = allocmemsize();
  char* const empty = q9private::strtopchar("");
  EXPECT_STREQ(empty, "");
  EXPECT_EQ(allocmemsize() - bytes, 1);
  freemem(empty, 1);
}

}  // namespace
}  // namespace optxv
