#include "options/zmaoptions.h"

#include <gtest/gtest.h>

#include <climits>

#include "support/optiontable.h"

namespace optxv::test {
namespace {

TEST(OptionObject, NumbersFollowTheDefinition) {
  optiontable options(
      "grp group 1 1 Group\nfirst integer 1 0 0 1 0 0\nsyn synonym first\nlast strlist 2 0 0\n");
  EXPECT_EQ(options->optcount(), 3);
  EXPECT_EQ(options->optgroupcount(), 1);
  EXPECT_EQ(options->optsynonymcount(), 1);
  EXPECT_EQ(options->getstrings(0), "Help");
  EXPECT_EQ(options->getstrings(2), "last");
  for (const std::int32_t position : {-1, 3, INT_MIN, INT_MAX}) {
    EXPECT_EQ(options->getstrings(position), "");
    EXPECT_EQ(options->getobjects(position), nullptr);
  }
  options.readline("--new 1");
  EXPECT_EQ(options->optcount(), 4);
  EXPECT_EQ(options->getobjects(3)->optname.view(), "--new");
}

TEST(OptionObject, ShowsTheFileNameWithoutItsDirectory) {
  tzmaoptions options;
  shortstring name = "?";
  for (const auto& [path, file] : {std::pair("", ""), std::pair("opt.def", "opt.def"),
                                   std::pair("/a/b/opt.def", "opt.def"), std::pair("a/", "")}) {
    options.deffilename = path;
    options.optdefinitionfile(name);
    EXPECT_EQ(str(name), file);
  }
}

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
}  // namespace optxv::test
