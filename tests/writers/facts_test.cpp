#include "writers/facts.h"

#include <gmock/gmock.h>

#include "writers/everykind.h"

namespace optxv {
namespace {

using testing::ElementsAre;

/// The facts of an option in one line, those that it lacks left out.
std::string line(const optionfacts& option) {
  std::string all = option.tablename + " " + option.kind;
  const auto add = [&](const char* mark, const std::string& text) {
    if (!text.empty()) all += mark + text;
  };
  add(".", option.modifier);
  if (option.hasdefault) add(" =", option.defaultvalue);
  add(" >", option.low);
  add(" <", option.high);
  for (const valuefacts& each : option.values)
    all += " {" + each.value + "|" + std::to_string(each.helpcontext) + "|" + each.help + "}";
  for (const std::string& member : option.members) add(" +", member);
  add(" !", option.action);
  for (const std::string& synonym : option.synonyms) add(" ~", synonym);
  if (option.deprecated) all += " deprecated";
  if (option.obsolete) all += " obsolete";
  add(" own:", option.deprecatedtext);
  if (option.synonymdeprecated) all += " synonymdeprecated";
  if (option.synonymobsolete) all += " synonymobsolete";
  add(" synonym:", option.synonymdeprecatedtext);
  return all;
}

TEST(Facts, TellEveryKind) {
  const optiontable read(everykind);
  const tablefacts facts = describe(read.options);
  lines all;
  for (const optionfacts& option : facts.options) all.push_back(line(option));
  EXPECT_THAT(all,
              ElementsAre("Help immediate.OPT !Help",
                          "rate integer.OPT =1 >0 <maxint ~stop synonymdeprecated synonym:Say rate",
                          "tol double =1E-6 >mindouble <maxdouble obsolete own:No more",
                          "logname string =\"a, b\"", "flag boolean.NV =1 deprecated own:Too old",
                          "method enumstr =\"by size\" {\"by size\"|81|By size} {dual|82|}",
                          "level enumint =2147483647 {0|90|Silent} {maxint|91|All}",
                          "pair multilist +rate +tol", "paths strlist obsolete own:Never again",
                          "fast macro +flag +method", ".scale double.TWO =1 >1E-20 <10",
                          "rf immediate !ReadFile"));
  const optionfacts& rate = facts.options[1];
  EXPECT_EQ(rate.name + rate.help, "rateRate <b> \"q\"");
  EXPECT_THAT(rate.longhelp, ElementsAre("Long help,", "", "indented."));
  EXPECT_THAT((std::vector{rate.refnr, rate.helpcontext, rate.group}), ElementsAre(3, 1, 2));
  ASSERT_EQ(facts.groups.size(), 1U);
  EXPECT_EQ(facts.groups[0].name + facts.groups[0].title, "generalGeneral options");
  EXPECT_EQ(facts.groups[0].number * 10 + facts.groups[0].helpcontext, 21);
}

TEST(Facts, NamesAsUsersSeeThem) {
  const optiontable read("Minos lookup\na_b boolean 1 0 1 1 x\nc_d synonym a_b\nrow indicator\n");
  const tablefacts facts = describe(read.options);
  EXPECT_EQ(facts.options[1].tablename + "," + facts.options[1].name, "a_b,a b");
  EXPECT_THAT(facts.options[1].synonyms, ElementsAre("c d"));
  EXPECT_EQ(facts.indicatorkey, "row");
}

}  // namespace
}  // namespace optxv
