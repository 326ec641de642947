#include "foundation/q9private.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/runtime.h"

namespace optxv {
namespace {

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

TEST(PlatformText, AppendsBehindTheTextAtTheIndex) {
  char buffer[12] = "......";
  q9private::strtostrbuf("abc", buffer);
  std::int32_t w = 3;
  q9private::pcharconcatpchar(buffer, w, nullptr);
  q9private::pcharconcatstr(buffer, w, "def");
  EXPECT_EQ(w, 6);
  w = 2;
  q9private::pcharconcatpchar(buffer, w, "gh");
  EXPECT_STREQ(buffer, "abcdefgh");
  EXPECT_EQ(w, 4) << "the index moves by the length, wherever the text went";
}

}  // namespace
}  // namespace optxv
