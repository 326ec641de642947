// Access by number, and what an interface needs of the module as a whole.

#include <gtest/gtest.h>

#include <climits>
#include <sstream>
#include <string>
#include <tuple>

#include "options/zmaoptions.h"
#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"

namespace optxv {
namespace {

/// The getters that take the option, and what they give.
std::string gettersof(const tzmaoptions& o, std::int32_t number) {
  std::ostringstream all;
  std::int32_t n = 77, low = 77, high = 77;
  double d = 77, dlow = 77, dhigh = 77;
  shortstring text, name;
  if (o.optgetintnr(number, n) == 1) all << "int " << n << '\n';
  if (o.optgetint2nr(number, n) == 1) all << "int2 " << n << '\n';
  if (o.optgetdblnr(number, d) == 1) all << "dbl " << d << '\n';
  if (o.optgetdbl2nr(number, d) == 1) all << "dbl2 " << d << '\n';
  if (o.optgetstrnr(number, text) == 1) all << "str " << text.view() << '\n';
  if (o.optgetstr2nr(number, text) == 1) all << "str2 " << text.view() << '\n';
  if (o.optgetboundsint(number, low, high, n) == 1)
    all << "bounds " << low << " to " << high << ", default " << n << '\n';
  if (o.optgetboundsdbl(number, dlow, dhigh, d) == 1)
    all << "bounds " << dlow << " to " << dhigh << ", default " << d << '\n';
  if (o.optgetdefaultstr(number, text) == 1) all << "default " << text.view() << '\n';
  if (o.optgetenumcount(number, n) == 1) all << "values allowed " << n << '\n';
  if (o.optgetenumstrnr(number, text, n) == 1) all << text.view() << " is number " << n << '\n';
  if (o.optgetvaluesnr(number, name, n, d, text) == 1)
    all << "all " << name.view() << ' ' << n << ' ' << d << ' ' << text.view() << '\n';
  return all.str();
}

TEST(Getters, TakeTheirKindsAndSubtypes) {
  optiontable options(everykind());
  options.read("tol 0.25 0.75\nmethod dual\nlevel 2\nverbose\nnames a\nrange 3 4\ntitle a b\n");
  const std::string rows = R"(steplim
> int 1000
> str 1000
> bounds 0 to 5000, default 1000
> all steplim 1000 0 1000
tol
> dbl 0.25
> dbl2 0.75
> str 0.25
> str2 0.75
> bounds 0 to 1, default 0.5
> all tol 0 0.25 0.25
logname
> str run log
> default run log
> all logname 0 0 run log
method
> str dual
> values allowed 2
> dual is number 2
> all method 0 0 dual
level
> int 2
> str 2
> values allowed 2
> all level 2 0 2
verbose
> int 1
> str 1
> all verbose 1 0 1
names
> str\s
range
> int 3
> int2 4
> str 3
> str2 4
> bounds 0 to 99, default 2
> all range 3 0 3
title
> str a
> str2 b
> default none
> all title 0 0 a
)";
  options->curoptname = "kept";
  const auto told = [&](const std::string& name) {
    return gettersof(*options, options->optlookup(name) + 1);
  };
  EXPECT_EQ(retold(rows, told), rows);
  EXPECT_EQ(str(options->curoptname), "kept");
}

/// The setters that take the option, each on a table of its own, and what is set then.
std::string settersof(const std::string& name, std::int32_t integer, const std::string& text) {
  std::string all;
  const auto say = [&](const char* setter, auto set) {
    optiontable o(everykind());
    if (set(*o, o->optlookup(name) + 1) == 1) all += std::string(setter) + ": " + o.told() + "\n";
  };
  say("int", [&](auto& o, auto number) { return o.optsetintnr(number, integer); });
  say("int2", [&](auto& o, auto number) { return o.optsetint2nr(number, integer); });
  say("dbl", [&](auto& o, auto number) { return o.optsetdblnr(number, 0.25); });
  say("dbl2", [&](auto& o, auto number) { return o.optsetdbl2nr(number, 0.25); });
  say("str", [&](auto& o, auto number) { return o.optsetstrnr(number, text); });
  say("str2", [&](auto& o, auto number) { return o.optsetstr2nr(number, text); });
  say("values", [&](auto& o, auto nr) { return o.optsetvaluesnr(nr, integer, 0.25, text); });
  say("values2", [&](auto& o, auto nr) { return o.optsetvalues2nr(nr, integer, 0.25, text); });
  return all;
}

// A row is an option, an integer and a text.
TEST(Setters, TakeTheirKindsAndSubtypes) {
  const std::string rows = R"(steplim 7 8
> int: steplim=7
> str: steplim=8
> values: steplim=7
tol 1 0.5
> dbl: tol=0.25
> dbl2: tol=/0.25
> str: tol=0.5
> str2: tol=/0.5
> values: tol=0.25
> values2: tol=/0.25
logname 1 a "b
> values: logname=a "b
method 1 dual
> str: method=dual
> values: method=dual
scale 1 no
> int: scale=1
> str: scale=0
> values: scale=1
both 1 2
> str: steplim=2 logname=2
range 4 5
> int: range=4
> int2: range=/4
> str: range=5
> str2: range=/5
> values: range=4
> values2: range=/4
title 4 x
> str: title=x
> str2: title=/x
> values: title=x
> values2: title=/x
)";
  const auto told = [](const std::string& row) {
    std::istringstream in(row);
    std::string name, text;
    std::int32_t integer = 0;
    in >> name >> integer;
    std::getline(in >> std::ws, text);
    return settersof(name, integer, text);
  };
  EXPECT_EQ(retold(rows, told), rows);
}

TEST(Setters, SeeByTheQueueWhetherTheValueWasTaken) {
  optiontable options(everykind());
  options->optaddmessage("an error before");
  const std::int32_t steplim = options.number("steplim");
  EXPECT_EQ(options->optsetintnr(steplim, 5001), 0);
  EXPECT_EQ(options->optsetdblnr(options.number("tol"), 1.5), 0);
  EXPECT_EQ(options->optsetstrnr(options.number("scale"), "maybe"), 0);
  EXPECT_EQ(options->optsetstrnr(options.number("pair"), "x:1:y"), 0);
  EXPECT_EQ(options.state(), "steplim=1 logname=x");
  options->optnoboundsset(1);
  EXPECT_EQ(options->optsetintnr(steplim, 5001), 1);
  EXPECT_EQ(options->errorcount(), 7);
  options->optnoboundsset(0);
  while (!options->queueclosed()) options->optaddmessage("full");
  EXPECT_EQ(options->optsetintnr(steplim, 5002), 1) << "refused, and there is no room to say so";
  EXPECT_EQ(options.state(), "steplim=5001!1 logname=x");
}

TEST(Resets, GoAsFarAsTheySay) {
  optiontable options(everykind());
  const auto entries = [&] {
    std::int32_t dropped = 0, faulty = 0;
    const std::int32_t dots = options->optdotoptcount(dropped);
    const std::int32_t indicators = options->optindicatorcount(faulty);
    return std::tuple(dots, dropped, indicators, faulty, options->optmessagecount());
  };
  options.read("steplim 5\nmethod dual\nx.scale 2\ntie a$b yes\nnames a\n");
  options->optclearmessages();
  options->optaddmessage("kept");
  options->dotoptionerrors = 3;
  options->indicatorerrors = 4;
  EXPECT_EQ(options->optresetnr(options.number("steplim")), 1);
  EXPECT_EQ(options.state(), "method=dual names=[a] .scale=2");
  EXPECT_EQ(entries(), std::tuple(1, 3, 1, 4, 1));
  options->setasstring("steplim", "6");
  options->optresetallrecent();
  EXPECT_EQ(entries(), std::tuple(0, 3, 0, 4, 1));
  options->optresetrecentchanges();
  EXPECT_EQ(options.state(), "steplim=6 method=dual names=[a] .scale=2") << "nothing is recent";
  options->setasstring("steplim", "7");
  options->setasstring("method", "primal");
  options->optresetrecentchanges();
  EXPECT_EQ(options.state(), "names=[a] .scale=2") << "the default, not the value before";
  options->optresetall();
  EXPECT_EQ(options.state(), "");
  EXPECT_EQ(entries(), std::tuple(0, 0, 0, 0, 0));
}

TEST(OptionKinds, HaveNamesInTheInterface) {
  std::string all;
  for (std::int32_t group = -1; group <= 6; ++group)
    for (std::int32_t i = -2; i < 12; ++i) {
      shortstring name = "?";
      const std::int32_t result = group == 0 ? tzmaoptions::optgettypename(i, name)
                                             : tzmaoptions::optgetconstname(group, i, name);
      EXPECT_EQ(result, name.empty() ? 0 : 1) << group << ' ' << i;
      if (result == 1) all += (i == 0 ? "|" : ",") + str(name);
    }
  EXPECT_EQ(all,  // the tenth kind of message has a name too, which no call gives
            "|integer,double,string,boolean,enumstr,enumint,multilist,strlist,macro,immediate|"
            "optDataNone,optDataInteger,optDataDouble,optDataString,optDataStrList|optTypeInteger,"
            "optTypeDouble,optTypeString,optTypeBoolean,optTypeEnumStr,optTypeEnumInt,"
            "optTypeMultiList,optTypeStrList,optTypeMacro,optTypeImmediate|optsubRequired,"
            "optsubNoValue,optsubOptional,optsub2Values|optMsgInputEcho,optMsgHelp,"
            "optMsgDefineError,optMsgValueError,optMsgValueWarning,optMsgDeprecated,"
            "optMsgFileEnter,optMsgFileLeave,optMsgTooManyMsgs");
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
}  // namespace optxv
