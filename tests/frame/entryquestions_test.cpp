#include <gtest/gtest.h>

#include <sstream>

#include "optxv/embedding.h"
#include "support/everykind.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

using ask = std::int32_t (*)(optxv_handle, std::int32_t, std::int32_t, optxv_text*);

/// The labels of an entry, and after them what the first number beyond them gives.
std::string labels(optxv_handle handle, std::int32_t position, ask label) {
  std::string all;
  optxv_text text = {};
  std::int32_t index = 1;
  for (; label(handle, position, index, &text) == optxv_ok; index++)
    all += std::string(text.bytes, text.size) + " ";
  return all + optxv_status_text(label(handle, position, index, &text));
}

std::int32_t equation(optxv_handle handle, std::int32_t position, std::int32_t index,
                      optxv_text* label) {
  return optxv_indicator_label(handle, position, 1, index, label);
}
std::int32_t variable(optxv_handle handle, std::int32_t position, std::int32_t index,
                      optxv_text* label) {
  return optxv_indicator_label(handle, position, 2, index, label);
}

TEST(Entries, AreToldWithTheirLabels) {
  optiontable table(everykind());
  table.read("x.scale('a',*) = 2.5\ny.scale 1\nz.scale -1\ntie eq(i,'b')$v(i) = 1\ntie e$v 0");
  optxv_dot_option dot;
  std::int32_t dropped = 0;
  ASSERT_EQ(optxv_dot_option_count(&*table, &dropped), 2);
  EXPECT_EQ(dropped, 1);
  ASSERT_EQ(optxv_dot_option_info(&*table, 1, &dot), optxv_ok);
  EXPECT_STREQ(dot.symbol.bytes, "x");
  EXPECT_EQ(dot.option, table.number(".scale"));
  EXPECT_EQ(dot.value * dot.labels, 5);
  EXPECT_EQ(labels(&*table, 1, optxv_dot_option_label), "a * no such option or entry");
  EXPECT_EQ(optxv_dot_option_info(&*table, 3, &dot), optxv_unknown);

  optxv_indicator entry;
  ASSERT_EQ(optxv_indicator_count(&*table, nullptr), 2);
  ASSERT_EQ(optxv_indicator_info(&*table, 1, &entry), optxv_ok);
  EXPECT_STREQ(entry.equation.bytes, "eq");
  EXPECT_STREQ(entry.variable.bytes, "v");
  EXPECT_EQ(entry.equation_labels * 100 + entry.variable_labels * 10 + entry.mark, 211);
  EXPECT_EQ(labels(&*table, 1, equation), "i 'b' no such option or entry");
  EXPECT_EQ(labels(&*table, 1, variable), "i no such option or entry");
  optxv_text label;
  EXPECT_EQ(optxv_indicator_label(&*table, 1, 3, 1, &label), optxv_bad_argument);
  optiontable without("count integer 0 5 0 10 1 1 Count");
  EXPECT_EQ(optxv_indicator_info(&*without, 1, &entry), optxv_unknown);
}

}  // namespace
}  // namespace optxv
