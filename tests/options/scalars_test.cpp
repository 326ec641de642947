// The setters: what all kinds check before they take a text, and what each kind checks then.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>

#include "options/toption.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr std::string_view table =
    "i integer.TWO 1 7 0 10 0 0\nwide integer 2 0 minint maxint 0 0\n"
    "d double.TWO 3 0.5 0 1 0 0\nbig double 4 0 mindouble maxdouble 0 0\n"
    "s string.TWO 6 dflt 0 0\nb boolean.TWO 7 1 0 0\n"
    "e enumstr.TWO 8 Alpha 0 0\n Alpha 0\n beta 0\n"
    "n enumint.TWO 9 4 0 0\n 4 0\n -8 0\n 1000 0\n"
    "nv integer.NV 10 7 0 10 0 0\nl strlist 11 0 0\nmac macro 0 0\n i\n l\n"
    "im immediate Message 0 0\n"
    "x integer 12 0 0 100 0 0\ny string 13 \"\" 0 0\nm multilist 14 0 0\n x y\n"
    "both macro 0 0\n x\n y\nouter macro 0 0\n both\n l\n"
    "empty multilist 15 0 0\nover multilist 16 0 0\n m both y\n";

// Rows: option ("!" before it: under nobounds) >> texts assigned in turn ("2:" before one: the
// second value) >> what is then set >> messages.
constexpr std::string_view assignments = R"(
i >> 10;2:1e1 >> i=10/10
i >> 5;11 >> i=5 >> V Integer range error for option 'i' saw '11' | V    Valid range is 0 to 10
!i >> -1;2:maxint;2:minint >> i=-1/-2147483648!3 >> W Integer range error for option 'i' saw '-1'
    W    Valid range is 0 to 10 | W Integer range error for option 'i' saw '2147483647'
    W    Valid range is 0 to 10 | W Integer range error for option 'i' saw '-2147483648'
    W    Valid range is 0 to 10
i >> ; >>  >> V Integer expected, for option 'i' saw ''
wide >> -2.5d1 >> wide=-25
d >> 2:1.0000001 >>  >> V Double out of range for option 'd' saw '1.0000001'
    V    Valid range is 0 to 1
!d >> 2;2:0.25 >> d=2/0.25 >> W Double out of range for option 'd' saw '2'
    W    Valid range is 0 to 1
!d >> nan >>  >> V Double expected for option 'd' saw 'nan'
big >> 1e300 >>  >> V Double out of range for option 'big' saw '1E300'
    V    Valid range is mindouble to maxdouble
s >> ;2: a  b  >> s=/ a  b 
e >> gamma >>  >> V Unknown value for option 'e' saw 'gamma' | V    Possible values are  Alpha beta
!e >> beta;gamma >> e=!1 >> W Unknown value for option 'e' saw 'gamma'
    W    Possible values are  Alpha beta
!e >> 2:;alpha >> e=Alpha/ >> W Unknown value for option 'e' saw ''
    W    Possible values are  Alpha beta
!n >> 2:5 >> n=/5!2 >> W Unknown value for option 'n' saw '5' | W    Possible values are  4 -8 1000
# For NV, being mentioned is the value: the text is not looked at, and the field keeps its value.
nv >> x"y >> nv=0
nv >> 2:8 >> nv=/8
nv >> 2:"8 >>  >> V Bad double-quote in value
s >> a"b >>  >> V Bad double-quote in value
l >> " >>  >> V Bad double-quote in value
im >> " >>  >> V Bad double-quote in value
mac >> 2:1
im >> 2:x
m >> \t
m >> 1:b >> x=1 y=b
m >> 1:b:c:d >> x=1 y=b >> V Too many items for multilist 'm'
m >> 1:b: >> x=1 y=b
m >> \t1:  b c >> x=1 y=b c
m >> 1  :b >> y=b >> V Integer expected, for option 'm' saw '1  '
m >> 101:b >> y=b >> V Integer range error for option 'm' saw '101' | V    Valid range is 0 to 100
empty >> a:b >>  >> V Too many items for multilist 'empty'
over >> 3:4:5 >> x=4 y=5
OUTER >> 7 >> l=[7] x=7 y=7
outer >> ; >> l=[] y= >> V Integer expected, for option 'outer' saw ''
)";

TEST(TextValues, AreCheckedAndStored) {
  for (const lines& row : rowsof(assignments)) {
    optiontable options(table);
    options->nobounds = row[0][0] == '!';
    toption& option = options.option(row[0].substr(options->nobounds ? 1 : 0));
    std::istringstream texts(row[1]);
    for (std::string text; std::getline(texts, text, ';');)
      text.starts_with("2:") ? option.setasstring2(text.substr(2)) : option.setasstring(text);
    EXPECT_EQ(options.state(), row[2]) << row[0] << ' ' << row[1];
    EXPECT_EQ(options.brief(), row[3]) << row[0] << ' ' << row[1];
  }
}

TEST(TypedValues, AreCheckedAsTheyAre) {
  optiontable options(table);
  auto& real = dynamic_cast<tdbloption&>(options.option("big"));
  auto& flag = dynamic_cast<tbooleanoption&>(options.option("b"));
  flag.setasinteger(-1);
  EXPECT_EQ(options.brief(),
            "V Boolean out of range for option 'b' saw '-1' | V    Valid values are 0 or 1");
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
  EXPECT_EQ(flag.getasinteger2(), 1);  // the default, not the first value
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

// What an entry hands on is counted on all levels together.
TEST(Nesting, HandsOnAHundredThousandValues) {
  std::string definition = "list strlist 1 0 0\nm0 macro 0 0\n list\n";
  for (int i = 1; i <= 20; ++i) {
    const std::string below = " m" + std::to_string(i - 1) + '\n';
    definition += "m" + std::to_string(i) + " macro 0 0\n" + below + below;
  }
  optiontable options(definition + "both multilist 1 0 0\n m15 m20\n");
  const auto& list = static_cast<const tstrlistoption&>(options.option("list"));
  options->setasstring("m15", "x");
  EXPECT_EQ(options.brief() + std::to_string(list.count()), "32768");
  options->setasstring("both", "y:z");
  EXPECT_EQ(options.brief(), "V Too many members for option 'both'");
  EXPECT_LT(list.count(), 2 * 32768 + 2000) << "what the first member took is gone for the second";
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
