#include "options/zmaoptions.h"

#include <gtest/gtest.h>

#include "support/optiontable.h"

namespace optxv {
namespace {

TEST(Module, SeparatorFollowsTheFileSystem) {
  dllloadpath() = "kept";
  const std::string separators = ";//\\:?";
  for (int type = -1; type <= 6; ++type) {
    initzmaoptions(4);
    initzmaoptions(type);
    const bool known = type >= 0 && type < 6;
    EXPECT_EQ(charpath(), known ? separators[static_cast<std::size_t>(type)] : ':') << type;
  }
  initzmaoptions(4);
  EXPECT_EQ(dllloadpath(), "");
}

}  // namespace
}  // namespace optxv
