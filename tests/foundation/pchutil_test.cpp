#include "foundation/pchutil.h"

#include <gtest/gtest.h>

#include <string>

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

}  // namespace
}  // namespace optxv
