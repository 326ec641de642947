// Multi-lists, string lists and macros.

#include <gtest/gtest.h>

#include <string>

#include "options/toption.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr std::string_view table =
    "x integer 1 0 0 100 0 0\n"
    "y string 2 \"\" 0 0\n"
    "l strlist 3 0 0\n"
    "m multilist 4 0 0\n x y\n"
    "both macro 0 0\n x\n y\n"
    "outer macro 0 0\n both\n l\n"
    "none macro 0 0\n"
    "empty multilist 6 0 0\n"
    "over multilist 7 0 0\n m both y\n";

TEST(Values, GoToTheMembers) {
  constexpr std::string_view rows = R"(
m >> \t
m >> 1:b >> >> x=1 y=b
m >> 1:b:c:d >> V Too many items for multilist 'm' >> x=1 y=b
m >> 1:b: >> >> x=1 y=b
m >> \t1:  b c >> >> x=1 y=b c
m >> 1  :b >> V Integer expected, for option 'm' saw '1  ' >> y=b
m >> 101:b >> V Integer range error for option 'm' saw '101' | V    Valid range is 0 to 100 >> y=b
empty >> a:b >> V Too many items for multilist 'empty'
over >> 3:4:5 >> >> x=4 y=5
OUTER >> 7 >> >> x=7 y=7 l=[7]
outer >> >> V Integer expected, for option 'outer' saw '' >> y= l=[]
)";
  for (const lines& row : rowsof(rows)) {
    optiontable options(table);
    options->setasstring(row[0], row[1]);
    EXPECT_EQ(options.brief(), row[2]) << row[0] << ' ' << row[1];
    EXPECT_EQ(options.state(), row[3]) << row[0] << ' ' << row[1];
  }
}

TEST(MultiList, LosesItsMembersInAReset) {
  optiontable options(table);
  options.option("m").reset();
  options->setasstring("m", "2");
  EXPECT_EQ(options.brief(), "V Too many items for multilist 'm'");
}

TEST(MultiList, MayBeAMemberOfItself) {
  optiontable options(
      "x integer 1 0 0 9 0 0\ny integer 2 0 0 9 0 0\nm multilist 3 0 0\n x m y\n"
      "endless multilist 4 0 0\n endless x\n");
  options->setasstring("m", "1:2:3");
  EXPECT_EQ(options.brief() + options.state(), "x=2 y=3");
  options->setasstring("endless", "1:4");
  EXPECT_EQ(options.state(), "x=4 y=3");
  EXPECT_EQ(options.brief(), "V Members nested too deep for option 'endless'");
}

TEST(Nesting, DoublingEndsSomewhere) {
  std::string definition = "m0 integer 1 0 0 9 0 0\n";
  for (int i = 1; i <= 60; ++i) {
    const std::string below = " m" + std::to_string(i - 1) + '\n';
    definition += "m" + std::to_string(i) + " macro 0 0\n" + below + below;
  }
  optiontable options(definition);
  options->setasstring("m60", "6");
  EXPECT_EQ(options.brief(), "V Too many members for option 'm60'");
  EXPECT_EQ(options.state(), "m0=6");
  options->optclearmessages();
  options->setasstring("m10", "7");
  EXPECT_EQ(options.brief() + options.state(), "m0=7");
}

TEST(Nesting, OfAnyDepthIsResetAndWithinReasonAssigned) {
  constexpr int levels = 100000;
  std::string definition = "m0 integer 1 0 0 9 0 0\n";
  for (int i = 1; i <= levels; ++i)
    definition += "m" + std::to_string(i) + " macro 0 0\n m" + std::to_string(i - 1) + "\n";
  optiontable options(definition);
  options->setasstring("m500", "5");
  for (const char* name : {"m501", "m100000"}) {
    options->optclearmessages();
    options->setasstring(name, "6");
    ASSERT_EQ(options.queue().size(), 1U) << name;
    EXPECT_NE(options.brief().find("'" + str(name) + "'"), std::string::npos) << options.brief();
    EXPECT_EQ(options.state(), "m0=5");
  }
  EXPECT_EQ(options->assigndepth, 0);
  options->getobjects(levels + 1)->reset();
  EXPECT_EQ(options.state(), "");
}

}  // namespace
}  // namespace optxv
