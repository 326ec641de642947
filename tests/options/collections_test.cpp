// Multi-lists, string lists and macros.

#include <gtest/gtest.h>

#include <string>

#include "options/toption.h"
#include "support/optiontable.h"

namespace optxv::test {
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

const std::string toomany = "*** Value Error Too many items for multilist ";
const std::string expected = "*** Value Error Integer expected, for option ";

TEST(Values, GoToTheMembers) {
  const struct {
    const char* option;
    std::string text;
    std::string queue;
    std::string state;
  } rows[] = {
      {"m", "", "", ""},
      {"m", " \t ", "", ""},
      {"m", "1", "", "x=1"},
      {"m", "1:b", "", "x=1 y=b"},
      {"m", "1:b:c:d", "V Too many items for multilist 'm'", "x=1 y=b"},
      {"m", "1:", "", "x=1"},
      {"m", "1::", "", "x=1"},
      {"m", "1: :", "", "x=1"},
      {"m", "1:b:", "", "x=1 y=b"},
      {"m", "1: ", "", "x=1"},
      {"m", ":b", "V Integer expected, for option 'm' saw ''", "y=b"},
      {"m", "  \t1:  b \t", "", "x=1 y=b \t"},
      {"m", "1  :b c", "V Integer expected, for option 'm' saw '1  '", "y=b c"},
      {"m", ":", "", ""},
      {"m", "::", "V Integer expected, for option 'm' saw ''", ""},
      {"m", "101:b",
       "V Integer range error for option 'm' saw '101' | V    Valid range is 0 to 100", "y=b"},
      {"empty", "a:b", "V Too many items for multilist 'empty'", ""},
      {"empty", "", "", ""},
      {"over", "3:4:5", "", "x=4 y=5"},
      {"both", "5", "", "x=5 y=5"},
      {"both", "a", "V Integer expected, for option 'both' saw 'a'", "y=a"},
      {"OUTER", "7", "", "x=7 y=7 l=[7]"},
      {"outer", "", "V Integer expected, for option 'outer' saw ''", "y= l=[]"},
      {"none", "a", "", ""}};
  for (const auto& row : rows) {
    optiontable options(table);
    options->setasstring(row.option, row.text);
    EXPECT_EQ(options.brief(), row.queue) << row.option << ' ' << row.text;
    EXPECT_EQ(options.state(), row.state) << row.option << ' ' << row.text;
  }
}

// Only a direct call reaches these: the entry point for texts refuses a double quote.
TEST(MultiList, CutsQuotedTokens) {
  const struct {
    std::string text;
    std::string state;
  } rows[] = {
      {"\"a:b\"", "y=a"},           // a separator ends a quoted token too; b" is refused
      {"\"a\":b", "y=a z= l=[b]"},  // an empty token stands between the quote and the separator
      {"\"a\"b", "y=a z=b"},
      {"\"a", "y=a"},
      {"\"", ""},
      {"\"\"", ""},
      {"\"\":", "y="},
      {"a\"b:c", "z=c"}};
  for (const auto& row : rows) {
    optiontable options(
        "y string 1 x 0 0\nz string 1 x 0 0\nl strlist 2 0 0\nt multilist 3 0 0\n y z l\n");
    dynamic_cast<tmultilistoption&>(options.option("t")).setasstring(row.text);
    EXPECT_EQ(options.state(), row.state) << row.text;
  }
}

TEST(MultiList, LosesItsMembersInAReset) {
  optiontable options(table);
  options->setasstring("m", "1:b");
  options.option("m").reset();
  EXPECT_EQ(options.state(), "x=1 y=b");
  options->setasstring("m", "2");
  EXPECT_EQ(options.queue(), lines({toomany + "\"m\""}));
  options->optclearmessages();
  options->optresetall();
  options->setasstring("over", "3");
  EXPECT_EQ(options.queue(), lines({toomany + "\"over\""}));
  EXPECT_EQ(options.state(), "");
}

TEST(MultiList, DropsTheTokenOfAMemberThatWasNotFound) {
  optiontable options;
  options.define("x integer 1 0 0 9 0 0\nm multilist 2 0 0\n nil x\n");
  options->optclearmessages();
  options->setasstring("m", "a:3");
  EXPECT_EQ(options.queue(), lines());
  EXPECT_EQ(options.state(), "x=3");
}

TEST(MultiList, DoesNotAssignItselfWhileItIsAssigned) {
  optiontable options("x integer 1 0 0 9 0 0\nm multilist 2 0 0\n m x\n");
  options->setasstring("m", "1:2");
  EXPECT_EQ(options.state(), "x=2");
  ASSERT_EQ(options.queue().size(), 1U);
  EXPECT_NE(options.queue()[0].find("\"m\""), std::string::npos) << options.queue()[0];
  EXPECT_TRUE(options.queue()[0].starts_with("*** Value Error "));
  options->optclearmessages();
  options->setasstring("m", "");
  EXPECT_EQ(options.queue(), lines());
}

TEST(StringList, KeepsEveryValueInOrder) {
  optiontable options(table);
  for (const char* text : {"b", "a", "b", ""}) options->setasstring("l", text);
  EXPECT_EQ(options.state(), "l=[b|a|b|]");
  tstrlistoption& list = dynamic_cast<tstrlistoption&>(options.option("l"));
  EXPECT_EQ(str(list.takefirst()), "b");
  EXPECT_EQ(list.count(), 3);
  list.reset();
  EXPECT_EQ(options.state(), "");
  list.setasstring("c");
  EXPECT_EQ(options.state(), "l=[c]");
}

TEST(Macro, ResetsMembersOfMembers) {
  optiontable options(table);
  options->setasstring("outer", "5");
  options->setasstring("m", "6");
  EXPECT_EQ(options.state(), "x=6 y=5 l=[5]");
  options.option("outer").reset();
  EXPECT_EQ(options.state(), "");
  options->setasstring("outer", "8");
  EXPECT_EQ(options.state(), "x=8 y=8 l=[8]");
}

TEST(Nesting, OfAnyDepthIsResetAndWithinReasonAssigned) {
  constexpr int levels = 100000;
  std::string definition = "m0 integer 1 0 0 9 0 0\n";
  for (int i = 1; i <= levels; ++i)
    definition += "m" + std::to_string(i) + " macro 0 0\n m" + std::to_string(i - 1) + "\n";
  optiontable options(definition);
  const auto set = [&](int level, const char* text) {
    options->optclearmessages();
    options->setasstring("m" + std::to_string(level), text);
    return options.queue();
  };
  EXPECT_EQ(set(500, "5"), lines());
  EXPECT_EQ(options.state(), "m0=5");
  for (const int level : {501, 40000, levels}) {
    const lines queue = set(level, "6");
    ASSERT_EQ(queue.size(), 1U) << level;
    EXPECT_TRUE(queue[0].starts_with("*** Value Error ")) << queue[0];
    EXPECT_NE(queue[0].find("\"m" + std::to_string(level) + "\""), std::string::npos) << queue[0];
    EXPECT_EQ(options.state(), "m0=5");
  }
  EXPECT_EQ(options->assigndepth, 0);
  options->getobjects(levels + 1)->reset();
  EXPECT_EQ(options.state(), "");
  EXPECT_EQ(set(500, "7"), lines());
  options->optresetrecentchanges();
  EXPECT_EQ(options.state(), "");
}

}  // namespace
}  // namespace optxv::test
