#include "parameter/dotoptions.h"

#include <cstdint>
#include <limits>
#include <string>

#include "parameter/tabletext.h"

namespace optxv {
namespace {

constexpr std::string_view definition =
    ".scale double 9 1 0 maxdouble 0 1 Scale factor\n"
    ".flag boolean 0 0 0 1 Flag\n"
    ".level enumint 0 1 0 1 Level\n"
    " 1 0 one\n"
    " 3 0 three\n"
    ".name string 0 none 0 1 Text\n"
    "nb immediate NoBounds 0 1 Bounds\n";

// The entries through the getters, as x.scale(a,*)=2; the elements have lost their quotes.
texts entriesof(const tzmaoptions& options) {
  texts all;
  std::int32_t errors = 0;
  for (std::int32_t i = 1; i <= options.optdotoptcount(errors); ++i) {
    shortstring symbol, attribute, label;
    std::int32_t number = 0, dimension = 0;
    double value = -1;
    EXPECT_EQ(options.optgetdotoptnr(i, symbol, number, dimension, value), 1);
    EXPECT_EQ(options.optgetnamenr(number, attribute), 1);
    std::string text(concat(symbol, attribute, '(').view());
    for (std::int32_t k = 1; k <= dimension; ++k) {
      EXPECT_EQ(options.optgetdotoptuel(i, k, label), 1);
      text.append(k > 1 ? "," : "").append(label);
    }
    all.push_back(text.append(")=").append(dbltostr(value)));
  }
  return all;
}

TEST(DotOptions, EntriesAndFaults) {
  const std::string seen1 = R"(Error Option keyword expected, saw "1")";
  const std::string seen2 = R"(Error Option keyword expected, saw "2")";
  const struct {
    std::string_view text;
    texts messages, entries;
    std::int32_t dropped;
  } rows[] = {
      {"x.scale 2", {}, {"x.scale()=2"}, 0},
      {"x.scale('a',*) := 2.5", {}, {"x.scale(a,*)=2.5"}, 0},
      {"X_1.SCALE [ 'a' , \"b ,c  \" ] 1", {}, {"X_1.scale(a,b ,c)=1"}, 0},
      {"x.scale{''}=maxdouble, y.flag yes z.level 3",
       {},
       {"x.scale()=1E299", "y.flag()=1", "z.level()=3"},
       0},
      {"x.name hello x.scale : 3", {}, {"x.name()=0", "x.scale()=3"}, 0},
      {"x.scale 1 x.scale 1", {}, {"x.scale()=1", "x.scale()=1"}, 0},
      // Before an entry begins: nothing is dropped, and what is left is read on.
      {"x. 2", {R"(Error .suffix expected for key "x")", seen2}, {}, 0},
      {"x.", {R"(Error .suffix expected for key "x")"}, {}, 0},
      {"x.scale 2 y.size z.scale 3",
       {R"(Error unknown .suffix ".size" for key "y")"},
       {"x.scale()=2", "z.scale()=3"},
       0},
      // In the index list: the reader stays where it stood.
      {"x.scale(1) 2", {R"(Error Element expected for .option "x")", seen1}, {}, 1},
      {"x.scale('a',) 2",
       {R"(Error Element expected for .option "x")", R"x(Error Option keyword expected, saw ")")x"},
       {},
       1},
      {"x.scale(i y.scale 3 z.scale(j w.scale 4",
       {R"(Error Set name not allowed .option "x")", R"(Error Set name not allowed .option "z")"},
       {"y.scale()=3", "w.scale()=4"},
       2},
      {"x.scale('a'] 1",
       {R"x(Error Closing bracket ")" expected for .option "x")x",
        R"(Value Error Double expected for option ".scale" saw "]")", seen1},
       {},
       1},
      {"x.scale[*} 1",
       {R"(Error Closing bracket "]" expected for .option "x")",
        R"(Value Error Double expected for option ".scale" saw "}")", seen1},
       {},
       1},
      // At the value.
      {"x.scale", {R"(Error Value expected for .option "x")"}, {}, 1},
      {"x.scale(*) =", {R"(Error Value expected for .option "x")"}, {}, 1},
      {"x.scale \"2", {R"(Error Value expected for .option "x")"}, {}, 1},
      {"x.scale, 2", {R"(Value Error Double expected for option ".scale" saw "")", seen2}, {}, 1},
      {"x.scale('a') -1 y.level 2",
       {R"(Value Error Double out of range for option ".scale" saw "-1")",
        "Value Error    Valid range is 0 to maxdouble",
        R"(Value Error Unknown value for option ".level" saw "2")",
        "Value Error    Possible values are  1 3"},
       {},
       2},
      {"nb 1 x.scale -1",
       {R"(Warning Double out of range for option ".scale" saw "-1")",
        "Warning    Valid range is 0 to maxdouble"},
       {"x.scale()=-1"},
       0},
      // A quote that is not closed leads over the end of a line.
      {"x.scale('a\n) 2\n", {}, {"x.scale(a)=2"}, 0},
      {"x.scale('a\ny.scale 1\n",
       {R"x(Error line 2: Closing bracket ")" expected for .option "x")x",
        R"(Value Error line 2: Double expected for option ".scale" saw "y.scale")",
        R"(Error line 2: Option keyword expected, saw "1")"},
       {},
       1},
      {"x.scale('a",
       {R"x(Error Closing bracket ")" expected for .option "x")x",
        R"(Error Value expected for .option "x")"},
       {},
       1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    table t(definition);
    EXPECT_EQ(t.read(row.text).messages(), row.messages);
    EXPECT_EQ(entriesof(t.options), row.entries);
    EXPECT_EQ(t.options.dotoptionerrors, row.dropped);
  }
}

TEST(DotOptions, Limits) {
  const std::string name(63, 'n');
  const std::string many = R"(Error Too many dimensions for .option "x")";
  const struct {
    std::string text;
    texts messages;
  } rows[] = {
      {name + ".scale 1", {}},
      {name + "n.scale 1", {"Error .Option ID too long \"" + name + "n\""}},
      {"x.scale(" + repeated("'e'", 20) + ") 1", {}},
      {"x.scale(" + repeated("*", 21) + ") 1", {many}},
      {"x.scale(" + repeated("*", 23) + ") 1", {many, many, many}},
      {"x.scale('" + std::string(254, 'e') + "') 1", {}},
  };
  for (const auto& row : rows) {
    table t(definition);
    EXPECT_EQ(t.read(row.text).messages(), row.messages);
    EXPECT_EQ(entriesof(t.options).size(), row.messages.empty() ? 1U : 0U) << row.text;
  }
  // An element that is too long for its closing quote is given without the opening one.
  table t(definition);
  const std::string element(254, 'e');
  EXPECT_EQ(entriesof(t.read("x.scale('" + element + "') 1").options),
            texts{"x.scale(" + element + ")=1"});
}

TEST(DotOptions, NumbersOutOfRange) {
  constexpr auto least = std::numeric_limits<std::int32_t>::min();
  constexpr auto most = std::numeric_limits<std::int32_t>::max();
  table t(definition);
  t.read("x.scale('a') 2");
  for (const std::int32_t bad : {least, -1, 0, 2, most}) {
    shortstring text = "left";
    std::int32_t number = 7, dimension = 7;
    double value = 7;
    EXPECT_EQ(t.options.optgetdotoptnr(bad, text, number, dimension, value), 0);
    EXPECT_TRUE(text.empty() && number == 0 && dimension == 0 && value == 0) << bad;
    for (const auto& [entry, index] : {std::pair{bad, 1}, {1, bad}}) {
      text = "left";
      EXPECT_EQ(t.options.optgetdotoptuel(entry, index, text), 0);
      EXPECT_TRUE(text.empty()) << bad;
    }
  }
}

TEST(DotOptions, AttributeHoldsTheLastValue) {
  table t(definition);
  double value = 0;
  t.read("x.scale 2 y.scale(i z.scale 3 w.scale('a'");
  EXPECT_EQ(t.options.optgetdblnr(t.number(".scale"), value), 1);
  EXPECT_EQ(value, 3);
}

TEST(DotOptions, ManyEntries) {
  constexpr int count = 6000;
  table t(definition);
  std::string text;
  texts expected;
  for (int i = 1; i <= count; ++i) {
    text += "x.scale('e') " + std::to_string(i) + (i % 3 == 0 ? " y.scale(k\n" : "\n");
    expected.push_back("x.scale(e)=" + std::to_string(i));
  }
  EXPECT_EQ(entriesof(t.read(text).options), expected);
  EXPECT_EQ(t.options.dotoptionerrors, count / 3);
  t.options.optresetall();
  EXPECT_EQ(entriesof(t.options), texts());
  EXPECT_EQ(t.options.dotoptionerrors, 0);
}

// The message of the read itself is one of those that fill the queue.
TEST(DotOptions, FullQueueKeepsFaultyEntries) {
  for (const auto& [before, kept] : {std::pair{4998, 0}, {4999, 0}, {5000, 1}, {6000, 1}}) {
    table t(definition);
    for (int i = 0; i < before; ++i) t.options.optaddmessage("mine");
    t.read("x.scale -1");
    EXPECT_EQ(entriesof(t.options).size(), static_cast<std::size_t>(kept)) << before;
    EXPECT_EQ(t.options.dotoptionerrors, 1 - kept) << before;
  }
}

TEST(DotOptions, NoEntryToAddTo) {
  tzmaoptions options;
  EXPECT_THROW(dotoptionsof(options).addindex("*"), eassertionfailed);
  EXPECT_THROW(dotoptionsof(options).setvalue("1"), eassertionfailed);
}

}  // namespace
}  // namespace optxv
