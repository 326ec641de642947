#include "foundation/q9private.h"

#include <gtest/gtest.h>

#include <cstring>
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
  std::string line(8, '.');
  std::int32_t at = 1;
  strcpy(line.data(), ".ab");
  q9private::pcharconcatpchar(line.data(), at, nullptr);
  q9private::pcharconcatpchar(line.data(), at, "cd");  // after what stands there already
  EXPECT_EQ(line + std::to_string(at), std::string(".abcd\0..3", 9));
}

}  // namespace
}  // namespace optxv
