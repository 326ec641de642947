#include "parameter/dotoptions.h"

#include <climits>
#include <string>

#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"

namespace optxv {
namespace {

// The entries through the getters, as x.scale(a,*)=2; the elements have lost their quotes.
std::string entriesof(const tzmaoptions& options) {
  lines all;
  std::int32_t errors = 0;
  for (std::int32_t i = 1; i <= options.optdotoptcount(errors); ++i) {
    shortstring symbol, attribute, label;
    std::int32_t number = 0, dimension = 0;
    double value = -1;
    EXPECT_EQ(options.optgetdotoptnr(i, symbol, number, dimension, value), 1);
    EXPECT_EQ(options.optgetnamenr(number, attribute), 1);
    lines labels;
    for (std::int32_t k = 1; k <= dimension; ++k) {
      EXPECT_EQ(options.optgetdotoptuel(i, k, label), 1);
      labels.push_back(str(label));
    }
    all.push_back(str(symbol) + str(attribute) + "(" + joined(labels, ",") +
                  ")=" + str(dbltostr(value)));
  }
  return joined(all, " ");
}

/// What comes of a text: the messages, the entries, and how many more were dropped.
std::string toldof(const std::string& text) {
  optiontable t(everykind());
  lines all = t.read(text).queue();
  if (const std::string entries = entriesof(t.options); !entries.empty()) all.push_back(entries);
  if (t->dotoptionerrors > 0) all.push_back(std::to_string(t->dotoptionerrors) + " dropped");
  return joined(all, "\n");
}

TEST(DotOptions, EntriesAndFaults) {
  const std::string rows = rowsof("parameter/dotoptions.rows");
  EXPECT_EQ(retold(rows, toldof), rows);
}

TEST(DotOptions, NumbersOutOfRange) {
  optiontable t(everykind());
  t.read("x.scale('a') 2 y.scale(i z.scale 3");
  for (const std::int32_t bad : {INT_MIN, -1, 0, 3, INT_MAX}) {
    shortstring text = "left", element = "left";
    std::int32_t number = 7, dimension = 7;
    double value = 7;
    EXPECT_EQ(t->optgetdotoptnr(bad, text, number, dimension, value), 0);
    EXPECT_EQ(t->optgetdotoptuel(bad, 1, element) + t->optgetdotoptuel(1, bad, element), 0);
    EXPECT_TRUE(text.empty() && element.empty() && number + dimension == 0 && value == 0) << bad;
  }
  EXPECT_EQ(t.option(".scale").getasstring(), "3");  // an attribute holds the last value
}

// The message of the read itself is one of those that fill the queue. The value is still refused,
// so the entry has the default.
TEST(DotOptions, FullQueueKeepsFaultyEntries) {
  for (const auto& [before, kept] : {std::pair{4999, false}, {5000, true}}) {
    optiontable t(everykind());
    for (int i = 0; i < before; ++i) t->optaddmessage("mine");
    t.read("x.scale -1");
    EXPECT_EQ(entriesof(t.options), kept ? "x.scale()=1" : "") << before;
    EXPECT_EQ(t->dotoptionerrors, kept ? 0 : 1) << before;
  }
}

}  // namespace
}  // namespace optxv
