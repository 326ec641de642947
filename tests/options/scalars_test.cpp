// The setters: what all kinds check before they take a text, and what each kind checks then.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "options/toption.h"
#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"
#include "support/smallstack.h"

namespace optxv {
namespace {

TEST(Values, AreCheckedAndStored) {
  const std::string rows = rowsof("options/values.rows");
  const auto told = [](const std::string& text) {
    return optiontable(everykind()).read(text).told();
  };
  EXPECT_EQ(retold(rows, told), rows);
}

/// What the program may assign, and a file may not.
TEST(Values, OfTheProgramMayHoldWhatAFileCannotSay) {
  optiontable options(everykind());
  toption& verbose = options.option("verbose");
  verbose.setasstring("x\"y");
  EXPECT_EQ(options.told(), "verbose=0") << "mentioned, and the text is not looked at";
  verbose.setasstring2("0");
  options.option("both").setasstring2("1");
  options.option("say").setasstring2("x");
  EXPECT_EQ(options.told(), "verbose=0/0") << "these have no second value";
  for (const char* name : {"logname", "names", "say"}) options.option(name).setasstring("a\"b");
  EXPECT_EQ(options.told(),
            "*** Value Error Bad double-quote in value\n*** Value Error Bad double-quote in value\n"
            "*** Value Error Bad double-quote in value\nverbose=0/0");
}

TEST(TypedValues, AreCheckedAsTheyAre) {
  optiontable options(everykind());
  auto& real = dynamic_cast<tdbloption&>(options.option(".scale"));
  auto& flag = dynamic_cast<tbooleanoption&>(options.option("scale"));
  flag.setasinteger(-1);
  EXPECT_EQ(options.told(),
            "*** Value Error Boolean out of range for option \"scale\" saw \"-1\"\n"
            "*** Value Error    Valid values are 0 or 1");
  real.setasdouble(std::nan(""));
  real.setasdouble(std::numeric_limits<double>::infinity());
  EXPECT_EQ(options.queue().size(), 6U);
  EXPECT_EQ(options.state(), "");
  options->nobounds = true;
  flag.setasinteger(-1);
  real.setasdouble(std::nan(""));
  EXPECT_TRUE(std::isnan(real.getasdouble()));
  EXPECT_EQ(real.outofbounds, 1);
  EXPECT_EQ(flag.getasinteger(), -1);
  EXPECT_EQ(flag.getasinteger2(), 0) << "the default, not the first value";
}

TEST(Messages, NameWhatTheUserWroteAndAreCutAtTheirLimit) {
  std::string definition = "e enumstr 1 word00 0 0\n";
  std::string possible = "*** Value Error    Possible values are ";
  for (int i = 0; i < 60; ++i) {
    definition += " word" + std::to_string(10 + i) + " 0\n";
    possible += " word" + std::to_string(10 + i);
  }
  optiontable options;
  options.define(definition + "syn synonym e\n");
  options->optclearmessages();
  options.option("SYN").setasstring("x");
  EXPECT_EQ(options.queue(), lines({"*** Value Error Unknown value for option \"SYN\" saw \"x\"",
                                    possible.substr(0, 255)}));
}

TEST(MultiList, LosesItsMembersInAReset) {
  optiontable options(everykind());
  options.option("pair").reset();
  EXPECT_EQ(options.read("pair a").told(), "*** Value Error Too many items for multilist \"pair\"");
}

TEST(MultiList, MayBeAMemberOfItself) {
  optiontable options(
      "x integer 1 0 0 9 0 0\ny integer 2 0 0 9 0 0\nm multilist 3 0 0\n x m y\n"
      "endless multilist 4 0 0\n endless x\n");
  options->setasstring("m", "1:2:3");
  EXPECT_EQ(options.told(), "x=2 y=3");
  options->setasstring("endless", "1:4");
  EXPECT_EQ(options.told(),
            "*** Value Error Members nested too deep for option \"endless\"\nx=4 y=3");
}

TEST(Nesting, GoesAsDeepAsItMayOnASmallStack) {
  std::string definition = "last integer 1 0 0 9 0 0\n", below = "last";
  for (int i = 1; i <= 501; ++i) {
    const std::string name = "m" + std::to_string(i);
    definition += name + (i % 2 == 0 ? " multilist 2 0 0\n " : " macro 0 0\n ") + below + '\n';
    below = name;
  }
  optiontable options(definition);
  ASSERT_TRUE(test::onstack(128 << 10, [&] { options->setasstring("m500", "7"); }));
  EXPECT_EQ(options.told(), "last=7");
  ASSERT_TRUE(test::onstack(128 << 10, [&] { options->setasstring("m501", "8"); }));
  EXPECT_EQ(options.told(), "*** Value Error Members nested too deep for option \"m501\"\nlast=7");
}

// What an entry hands on is counted on all levels together.
TEST(Nesting, HandsOnAHundredThousandValues) {
  std::string definition = "list strlist 1 0 0\nm0 macro 0 0\n list\n";
  for (int i = 1; i <= 50; ++i) {
    const std::string below = " m" + std::to_string(i - 1) + '\n';
    definition += "m" + std::to_string(i) + " macro 0 0\n" + below + below;
  }
  optiontable options(definition + "both multilist 1 0 0\n m15 m20\n");
  const auto& list = static_cast<const tstrlistoption&>(options.option("list"));
  options->setasstring("m15", "x");
  EXPECT_EQ(options.queue(), lines());
  EXPECT_EQ(list.count(), 32768);
  options->setasstring("both", "y:z");
  EXPECT_EQ(options.queue(), lines{"*** Value Error Too many members for option \"both\""});
  EXPECT_LT(list.count(), 2 * 32768 + 2000) << "what the first member took is gone for the second";
  options.option("m50").reset();  // each member once
  EXPECT_EQ(options.state(), "");
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
    EXPECT_NE(options.told().find("\"" + str(name) + "\""), std::string::npos) << options.told();
    EXPECT_EQ(options.state(), "m0=5");
  }
  EXPECT_EQ(options->assigndepth, 0);
  options->getobjects(levels + 1)->reset();
  EXPECT_EQ(options.state(), "");
}

}  // namespace
}  // namespace optxv
