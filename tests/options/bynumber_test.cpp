// Access by number, and what an interface needs of the module as a whole.

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "options/zmaoptions.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr std::string_view table =
    "grp group 5 7 The group\n"
    "far group 9 0 Other\n"
    "twin_group group 11 1\n"
    "i integer.TWO 11 3 0 10 21 5 int text\n"  // 2
    "d double.TWO 12 0.5 0 1 22 5 dbl text\n"  // 3
    "s string.TWO 13 \"a b\" 23 5 str text\n"  // 4
    "b boolean.TWO 14 1 24 5 bool text\n"      // 5
    "es enumstr.TWO 15 one 25 5 es text\n"     // 6
    " one 31 first\n two 32 second\n"
    "ei enumint.TWO 16 4 26 5 ei text\n"  // 7
    " 4 41 four\n -8 42 minus eight\n"
    "ml multilist 17 27 5 ml text\n i s\n"    // 8
    "sl strlist 18 28 5 sl text\n"            // 9
    "ma macro 29 5 ma text\n i\n"             // 10
    "im immediate Message 30 5 im text\n"     // 11
    "one integer 19 1 0 9 33 6 one value\n"   // 12
    "nv integer.NV 20 2 0 9 34 6 no value\n"  // 13
    "syn synonym i\n";

/// Numbers in one text, made from left to right.
std::string digits(std::initializer_list<std::int32_t> numbers) {
  std::string all;
  for (const std::int32_t number : numbers) all += std::to_string(number);
  return all;
}

TEST(Getters, TakeTheirKindsAndSubtypes) {
  // int int2 dbl dbl2 str str2 boundsint boundsdbl defaultstr enumcount enumstr values
  const std::pair<std::int32_t, const char*> rows[] = {
      {0, "000000000000"},  {INT_MIN, "000000000000"}, {14, "000000000000"}, {1, "000010000000"},
      {2, "110011100001"},  {3, "001111010001"},       {4, "000011001001"},  {5, "110011000001"},
      {6, "000011000111"},  {7, "110011000101"},       {8, "000010000000"},  {9, "000010000000"},
      {11, "000010000000"}, {12, "100010100001"},      {13, "100010100001"}};
  optiontable options(table);
  options->curoptname = "kept";
  for (const auto& [number, expected] : rows) {
    std::int32_t n[3] = {77, 77, 77};
    double d[3] = {77, 77, 77};
    shortstring t[2] = {"77", "77"};
    const tzmaoptions& o = *options;
    std::string results = digits({o.optgetintnr(number, n[0]), o.optgetint2nr(number, n[1]),
                                  o.optgetdblnr(number, d[0]), o.optgetdbl2nr(number, d[1])});
    EXPECT_EQ(n[0] == 77, results[0] == '0');  // what is not said to be cleared stays
    results += digits({o.optgetstrnr(number, t[0]), o.optgetstr2nr(number, t[1]),
                       o.optgetboundsint(number, n[0], n[1], n[2]),
                       o.optgetboundsdbl(number, d[0], d[1], d[2]),
                       o.optgetdefaultstr(number, t[0]), o.optgetenumcount(number, n[0])});
    EXPECT_EQ(t[1].empty(), results[5] == '0');
    EXPECT_EQ(str(t[0]), results[8] == '1' ? "a b" : "");
    EXPECT_EQ(n[0], results[9] == '1' ? 2 : -1);
    results += digits({o.optgetenumstrnr(number, t[0], n[0])});
    EXPECT_EQ(str(t[0]) + digits({n[0]}), results[10] == '1' ? "one1" : "-1");
    results += digits({o.optgetvaluesnr(number, t[0], n[0], d[0], t[1])});
    EXPECT_EQ(results, expected) << number;
  }
  EXPECT_EQ(str(options->curoptname), "kept");
}

TEST(Setters, TakeTheirKindsAndSubtypes) {
  // Rows: number >> integer >> text >> results of int int2 dbl dbl2 str str2 values values2 refnr.
  constexpr std::string_view rows = R"(
0 >> 1 >> 1 >> 000000000/
1 >> 1 >> 1 >> 000010001/
2 >> 4 >> 5 >> 110011111/i=4/4
3 >> 4 >> 0.75 >> 001111111/d=0.25/0.25
4 >> 4 >> x >> 000011111/s=x/x
5 >> 1 >> no >> 110011111/b=1/1
6 >> 4 >> TWO >> 000011111/es=two/two
7 >> -8 >> 4 >> 110011111/ei=-8/-8
12 >> 4 >> 5 >> 100010101/one=4
)";
  for (const lines& row : rowsof(rows)) {
    optiontable o(table);
    const std::int32_t number = std::stoi(row[0]), integer = std::stoi(row[1]);
    const std::string results = digits(
        {o->optsetintnr(number, integer), o->optsetint2nr(number, integer),
         o->optsetdblnr(number, 0.5), o->optsetdbl2nr(number, 0.5), o->optsetstrnr(number, row[2]),
         o->optsetstr2nr(number, row[2]), o->optsetvaluesnr(number, integer, 0.25, row[2]),
         o->optsetvalues2nr(number, integer, 0.25, row[2]), o->optsetrefnr(number, 1234)});
    EXPECT_EQ(results + "/" + o.state(), row[3]) << number;
    EXPECT_EQ(o.queue(), lines()) << number;
  }
}

TEST(Setters, SeeByTheQueueWhetherTheValueWasTaken) {
  optiontable options(table);
  options->optaddmessage("an error before");
  EXPECT_EQ(options->optsetintnr(2, 11) + options->optsetdblnr(3, 1.5), 0);
  EXPECT_EQ(options->optsetstrnr(5, "maybe") + options->optsetstrnr(8, "1:x:y"), 0);
  EXPECT_EQ(options.state(), "i=1 s=x");
  options->optnoboundsset(1);
  EXPECT_EQ(options->optsetintnr(2, 11), 1);
  EXPECT_EQ(options->errorcount(), 7);
  options->optnoboundsset(0);
  while (!options->queueclosed()) options->optaddmessage("full");
  EXPECT_EQ(options->optsetintnr(2, 12), 1);  // refused, and there is no room to say so
  EXPECT_EQ(options.state(), "i=11!1 s=x");
}

TEST(Resets, GoAsFarAsTheySay) {
  optiontable options(sampledefinition);
  const auto entries = [&] {
    std::int32_t n[2] = {};
    const std::string counts =
        digits({options->optdotoptcount(n[0]), options->optindicatorcount(n[1])});
    return counts + digits({n[0], n[1], options->optmessagecount()});
  };
  for (const char* text : {"steplim 5", "method primal", "x.scale 2", "rowtype a$b yes", "paths a"})
    options.read(text);
  options->optaddmessage("kept");
  options->dotoptionerrors = 3;
  options->indicatorerrors = 4;
  EXPECT_EQ(options->optresetnr(options.number("steplim")), 1);
  EXPECT_EQ(options.state(), "method=primal paths=[a] .scale=2");
  EXPECT_EQ(entries(), "11341");
  options->optresetallrecent();
  EXPECT_EQ(entries(), "00341");
  options->setasstring("steplim", "7");
  options->setasstring("method", "auto");
  options->optresetrecentchanges();  // to the default, not to the value before
  EXPECT_EQ(options.state(), "paths=[a] .scale=2");
  options->optresetall();
  EXPECT_EQ(options.state(), "");
  EXPECT_EQ(entries(), "00000");
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
