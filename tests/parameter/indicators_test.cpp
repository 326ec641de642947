#include "parameter/indicators.h"

#include <cstdint>
#include <limits>
#include <string>

#include "parameter/tabletext.h"

namespace optxv {
namespace {

constexpr std::string_view definition =
    "rowtype indicator\n"
    "steplim integer 1 10 0 100 0 1 Steps\n";

using getter = std::int32_t (tzmaoptions::*)(std::int32_t, std::int32_t, shortstring&) const;

std::string listof(const tzmaoptions& options, getter get, std::int32_t entry, std::int32_t count) {
  std::string all;
  shortstring label;
  for (std::int32_t k = 1; k <= count; ++k) {
    EXPECT_EQ((options.*get)(entry, k, label), 1);
    all.append(k > 1 ? "," : "").append(label);
  }
  return all;
}

// The entries through the getters, as e(i,'a')$v(i)=1.
texts entriesof(const tzmaoptions& options) {
  texts all;
  std::int32_t errors = 0;
  for (std::int32_t i = 1; i <= options.optindicatorcount(errors); ++i) {
    shortstring equation, variable;
    std::int32_t first = 0, second = 0, mark = -1;
    EXPECT_EQ(options.optgetindicatornr(i, equation, variable, first, second, mark), 1);
    all.push_back(std::string(equation.view()) + '(' +
                  listof(options, &tzmaoptions::optgetequindicatornr, i, first) + ")$" +
                  std::string(variable.view()) + '(' +
                  listof(options, &tzmaoptions::optgetvarindicatornr, i, second) +
                  ")=" + std::to_string(mark));
  }
  return all;
}

TEST(Indicators, EntriesAndFaults) {
  const std::string nodollar = R"(Error $ expected after equation identifier "e")";
  const std::string nosymbol = "Error Equation ID expected for indicator";
  const std::string novalue = R"(Error Boolean value expected for equation indicator "e")";
  const struct {
    std::string_view text;
    texts messages, entries;
    std::int32_t dropped;
  } rows[] = {
      {"rowtype eqa('a')$vara('a') = yes", {}, {"eqa('a')$vara('a')=1"}, 0},
      {"RowType e ( i , \"b ,c \" ) $ v [ I,'z' ] := off", {}, {"e(i,\"b ,c\")$v(I,'z')=0"}, 0},
      {"rowtype e{i}$v 1 rowtype f$w(\"q\") F, rowtype e$v on steplim 5",
       {},
       {"e(i)$v()=1", "f()$w(\"q\")=0", "e()$v()=1"},
       0},
      // No list is read, or not to its end; what ends the entry takes the line with it.
      {"rowtype", {nosymbol}, {}, 0},
      {"rowtype = e$v 1 rowtype e$v 1", {nosymbol}, {}, 0},
      {"rowtype e$ 1 rowtype e$v 1", {nosymbol}, {}, 1},
      {"rowtype e v 1 rowtype e$v 1", {nodollar}, {}, 1},
      {"rowtype e(1)$v 1",
       {R"(Error Unique element expected for indicator id "e")", nodollar},
       {},
       1},
      {"rowtype e(*)$v 1", {R"(Error Universe not allowed for indicator id "e")", nodollar}, {}, 1},
      {"rowtype e('a']$v 1",
       {R"x(Error Closing bracket ")" expected for id "e")x", nodollar},
       {},
       1},
      {"rowtype e$v('a',*) 1",
       {R"(Error Universe not allowed for indicator id "v")", novalue + R"x(, Saw ")")x"},
       {},
       1},
      {"rowtype e$v[ 1", {R"(Error Unique element expected for indicator id "v")"}, {}, 1},
      {"rowtype e$v{'a') 1",
       {R"(Error Closing bracket "}" expected for id "v")", novalue + R"x(, Saw ")")x"},
       {},
       1},
      {"rowtype e(i,'j')$v(j,'k',I,m) 1",
       {R"(Error Index "j" not controled for variable "v")",
        R"(Error Index "m" not controled for variable "v")"},
       {},
       1},
      {"rowtype e$v", {novalue}, {}, 1},
      {"rowtype e$v \"yes", {novalue}, {}, 1},
      {"rowtype e$v maybe rowtype f$w no", {novalue + R"(, Saw "maybe")"}, {}, 1},
      {"rowtype f$w no rowtype e$v, 1", {novalue + R"(, Saw "")"}, {"f()$w()=0"}, 1},
      // A dash makes a plain key of the word.
      {"-rowtype e$v 1", {R"(Error Unknown option "rowtype")"}, {}, 0},
      // A quote that is not closed leads over the end of a line.
      {"rowtype e('a\n)$v yes\n", {}, {"e('a')$v()=1"}, 0},
      {"rowtype e('a\nsteplim 7\nsteplim 8\n",
       {R"x(Error line 2: Closing bracket ")" expected for id "e")x",
        R"(Error line 2: $ expected after equation identifier "e")"},
       {},
       1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    table t(definition);
    EXPECT_EQ(t.read(row.text).messages(), row.messages);
    EXPECT_EQ(entriesof(t.options), row.entries);
    EXPECT_EQ(t.options.indicatorerrors, row.dropped);
  }
}

TEST(Indicators, Limits) {
  const std::string n(63, 'n');
  const std::string element = "'" + n + "'";
  const std::string longer = "'" + n + "n'";
  const std::string twenty = repeated("i", 20);
  const std::string controled = " not controled for variable \"v\"";
  const struct {
    std::string entry;
    texts messages;
  } rows[] = {
      {n + "$" + n, {}},
      {n + "n$v", {"Error Not a good equation identifier \"" + n + "n\""}},
      {"e$" + n + "n", {"Error Variable \"" + n + "n\" is not a good identifier"}},
      {"e(" + n + "," + element + ")$v(" + n + "," + element + ")", {}},
      {"e(" + n + "n)$v", {R"(Error Bad Equation index = "e")"}},
      {"e(" + longer + ")$v", {R"(Error Bad Equation index = "e")"}},
      {"e$v(" + longer + ")", {R"(Error Bad variable index = "v")"}},
      // A long identifier is not looked for among the equation's indices.
      {"e$v(" + n + "n)", {R"(Error Bad variable index = "v")"}},
      {"e$v(" + n + ")", {"Error Index \"" + n + "\"" + controled}},
      {"e(" + twenty + ")$v(" + twenty + ")", {}},
      {"e(" + twenty + ",i," + longer + ")$v",
       {R"(Error Too many dimensions for equation "e")",
        R"(Error Too many dimensions for equation "e")", R"(Error Bad Equation index = "e")"}},
      {"e(i)$v(" + twenty + ",j)",
       {R"(Error Too many dimensions for variable "v")", "Error Index \"j\"" + controled}},
  };
  for (const auto& row : rows) {
    table t(definition);
    EXPECT_EQ(t.read("rowtype " + row.entry + " 1").messages(), row.messages) << row.entry;
    EXPECT_EQ(entriesof(t.options).size(), row.messages.empty() ? 1U : 0U) << row.entry;
  }
}

TEST(Indicators, NumbersOutOfRange) {
  constexpr auto least = std::numeric_limits<std::int32_t>::min();
  constexpr auto most = std::numeric_limits<std::int32_t>::max();
  table with(definition), without("steplim integer 1 10 0 100 0 1 Steps\n");
  with.read("rowtype e(i)$v(i) 1");
  EXPECT_EQ(without.read("rowtype e$v 1").messages(), texts{R"(Error Unknown option "rowtype")"});
  const auto expectnothing = [](const tzmaoptions& options, std::int32_t entry) {
    shortstring equation = "left", variable = "left";
    std::int32_t first = 7, second = 7, mark = 7;
    EXPECT_EQ(options.optgetindicatornr(entry, equation, variable, first, second, mark), 0);
    EXPECT_TRUE(equation.empty() && variable.empty()) << entry;
    EXPECT_TRUE(first == 0 && second == 0 && mark == 0) << entry;
  };
  const auto expectnoindex = [](const tzmaoptions& options, std::int32_t entry, std::int32_t k) {
    for (const getter get :
         {&tzmaoptions::optgetequindicatornr, &tzmaoptions::optgetvarindicatornr}) {
      shortstring label = "left";
      EXPECT_EQ((options.*get)(entry, k, label), 0);
      EXPECT_TRUE(label.empty()) << entry << ' ' << k;
    }
  };
  for (const std::int32_t bad : {least, -1, 0, 2, most}) {
    expectnothing(with.options, bad);
    expectnoindex(with.options, bad, 1);
    expectnoindex(with.options, 1, bad);
  }
  expectnothing(without.options, 1);
  expectnoindex(without.options, 1, 1);
}

TEST(Indicators, ManyEntries) {
  constexpr int count = 4000;
  table t(definition);
  std::string text;
  texts expected;
  for (int i = 1; i <= count; ++i) {
    const std::string name = "e" + std::to_string(i);
    text += "rowtype " + name + "('q')$v = yes" + (i % 4 == 0 ? " rowtype bad$v(*)\n" : "\n");
    expected.push_back(name + "('q')$v()=1");
  }
  EXPECT_EQ(entriesof(t.read(text).options), expected);
  EXPECT_EQ(t.options.indicatorerrors, count / 4);
  t.options.optresetallrecent();
  EXPECT_EQ(entriesof(t.read("rowtype e$v 0").options), texts{"e()$v()=0"});
  EXPECT_EQ(t.options.indicatorerrors, count / 4);
}

}  // namespace
}  // namespace optxv
