#include "parameter/indicators.h"

#include <climits>
#include <string>

#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr std::string_view definition = "rowtype indicator\nsteplim integer 1 10 0 100 0 1 Steps\n";

using getter = std::int32_t (tzmaoptions::*)(std::int32_t, std::int32_t, shortstring&) const;
constexpr getter getters[] = {&tzmaoptions::optgetequindicatornr,
                              &tzmaoptions::optgetvarindicatornr};

// The entries through the getters, as e(i,'a')$v(i)=1.
std::string entriesof(const tzmaoptions& options) {
  lines all;
  std::int32_t errors = 0;
  for (std::int32_t i = 1; i <= options.optindicatorcount(errors); ++i) {
    shortstring names[2], label;
    std::int32_t dimensions[2] = {0, 0}, mark = -1;
    EXPECT_EQ(options.optgetindicatornr(i, names[0], names[1], dimensions[0], dimensions[1], mark),
              1);
    lines sides;
    for (const std::size_t side : {0U, 1U}) {
      lines labels;
      for (std::int32_t k = 1; k <= dimensions[side]; ++k) {
        EXPECT_EQ((options.*getters[side])(i, k, label), 1);
        labels.push_back(str(label));
      }
      sides.push_back(str(names[side]) + "(" + joined(labels, ",") + ")");
    }
    all.push_back(joined(sides, "$") + "=" + std::to_string(mark));
  }
  return joined(all, " ");
}

TEST(Indicators, EntriesAndFaults) {
  // Text >> entries >> messages >> the number that was dropped. A fault ends the line.
  // ~ is a name of 63 characters, & stands for 20 indices "i".
  constexpr std::string_view rows = R"(
rowtype eqa('a')$vara('a') = yes >> eqa('a')$vara('a')=1
RowType e ( i , "b ,c " ) $ v [ I,'z' ] := off >> e(i,"b ,c")$v(I,'z')=0
rowtype e{i}$v 1 rowtype f$w("q") F, rowtype e$v on steplim 5 >> e(i)$v()=1 f()$w("q")=0 e()$v()=1
rowtype = e$v 1 rowtype e$v 1 >> >> @1
rowtype e('a']$v 1 >> >> E Closing bracket ')' expected for id 'e' | @2 >> 1
rowtype e$v('a',*) 1 >> >> E Universe not allowed for indicator id 'v' | @3, Saw ')' >> 1
rowtype e(i,'j')$v(j,'k',I,m) 1 >> >> E Index 'j' not controled for variable 'v'
    E Index 'm' not controled for variable 'v' >> 1
rowtype e$v "yes >> >> @3 >> 1
-rowtype e$v 1 >> >> E Unknown option 'rowtype'
rowtype e('a\nsteplim 7\nsteplim 8\n >> >> E2: Closing bracket ')' expected for id 'e'
    E2: $ expected after equation identifier 'e' >> 1
rowtype ~$~ 1 >> ~()$~()=1
rowtype ~n$v 1 >> >> E Not a good equation identifier '~n' >> 1
rowtype e$~n 1 >> >> E Variable '~n' is not a good identifier >> 1
rowtype e(~,'~')$v(~,'~') 1 >> e(~,'~')$v(~,'~')=1
rowtype e('~n')$v 1 >> >> E Bad Equation index = 'e' >> 1
rowtype e$v(~n) 1 >> >> E Bad variable index = 'v' >> 1
rowtype e(&,i,'~n')$v 1 >> >> E Too many dimensions for equation 'e'
    E Too many dimensions for equation 'e' | E Bad Equation index = 'e' >> 1
rowtype e(i)$v(&,j) 1 >> >> E Too many dimensions for variable 'v'
    E Index 'j' not controled for variable 'v' >> 1
)";
  const std::string names = replaced(str(rows), "~", std::string(63, 'n'));
  for (const lines& row : rowsof(replaced(names, "&", joined(lines(20, "i"), ",")))) {
    std::string queue = replaced(row[2], "@1", "E Equation ID expected for indicator");
    queue = replaced(queue, "@2", "E $ expected after equation identifier 'e'");
    queue = replaced(queue, "@3", "E Boolean value expected for equation indicator 'e'");
    optiontable t(definition);
    EXPECT_EQ(t.read(row[0]).brief(), queue) << row[0];
    EXPECT_EQ(entriesof(t.options), row[1]) << row[0];
    EXPECT_EQ(t->indicatorerrors, row[3].empty() ? 0 : std::stoi(row[3])) << row[0];
  }
}

TEST(Indicators, NumbersOutOfRange) {
  optiontable with(definition), without("steplim integer 1 10 0 100 0 1 Steps\n");
  with.read("rowtype e(i)$v(i) 1");
  EXPECT_EQ(without.read("rowtype e$v 1").brief(), "E Unknown option 'rowtype'");
  for (const std::int32_t bad : {INT_MIN, -1, 0, 2, INT_MAX}) {
    shortstring texts[3] = {"left", "left", "left"};
    std::int32_t n[3] = {7, 7, 7};
    EXPECT_EQ(with->optgetindicatornr(bad, texts[0], texts[1], n[0], n[1], n[2]), 0);
    EXPECT_TRUE(texts[0].empty() && texts[1].empty() && n[0] + n[1] + n[2] == 0) << bad;
    for (const getter get : getters)
      for (const auto& [entry, index] : {std::pair{bad, 1}, {1, bad}})
        EXPECT_EQ((with.options.*get)(entry, index, texts[2]), 0);
    EXPECT_TRUE(texts[2].empty()) << bad;
  }
}

// With the queue full no fault shows, so that an entry stays as it was read, however long.
TEST(Indicators, OverlongListsAreStored) {
  lines equation, variable;
  for (int i = 0; i < 60; ++i) equation.push_back("i" + std::to_string(i));
  for (int i = 59; i >= 0; i -= 7) variable.push_back("I" + std::to_string(i));
  const auto entry = [&] {
    return "rowtype e(" + joined(equation, ",") + ")$v(" + joined(variable, ",") + ")";
  };
  optiontable full(definition);
  while (!full->queueclosed()) full->optaddmessage("full");
  full.read(entry() + " 1");
  EXPECT_EQ(entriesof(full.options), entry().substr(8) + "=1");
  variable.push_back("i60");
  variable.push_back("i19");
  optiontable open(definition);
  lines messages(40, "E Too many dimensions for equation 'e'");
  messages.push_back("E Index 'i60' not controled for variable 'v'");
  EXPECT_EQ(open.read(entry() + " 1").brief(), joined(messages));
  EXPECT_EQ(open->indicatorerrors, 1);
}

}  // namespace
}  // namespace optxv
