#include "parameter/indicators.h"

#include <climits>
#include <string>

#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"

namespace optxv {
namespace {

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

/// What comes of a text: the messages, the entries, and how many more were dropped.
std::string toldof(const std::string& text) {
  optiontable t(everykind());
  lines all = t.read(text).queue();
  if (const std::string entries = entriesof(t.options); !entries.empty()) all.push_back(entries);
  if (t->indicatorerrors > 0) all.push_back(std::to_string(t->indicatorerrors) + " dropped");
  return joined(all, "\n");
}

// A fault ends the line.
TEST(Indicators, EntriesAndFaults) {
  const std::string rows = rowsof("parameter/indicators.rows");
  EXPECT_EQ(retold(rows, toldof), rows);
}

TEST(Indicators, NumbersOutOfRange) {
  optiontable with(everykind()), without("steplim integer 1 10 0 100 0 1 Steps\n");
  with.read("tie e(i)$v(i) 1");
  EXPECT_EQ(without.read("tie e$v 1").told(), "*** Error Unknown option \"tie\"");
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
    return "tie e(" + joined(equation, ",") + ")$v(" + joined(variable, ",") + ")";
  };
  optiontable full(everykind());
  while (!full->queueclosed()) full->optaddmessage("full");
  full.read(entry() + " 1");
  EXPECT_EQ(entriesof(full.options), entry().substr(4) + "=1");
  variable.push_back("i60");
  variable.push_back("i19");
  optiontable open(everykind());
  lines messages(40, "*** Error Too many dimensions for equation \"e\"");
  messages.push_back("*** Error Index \"i60\" not controled for variable \"v\"");
  EXPECT_EQ(open.read(entry() + " 1").queue(), messages);
  EXPECT_EQ(open->indicatorerrors, 1);
}

}  // namespace
}  // namespace optxv
