#include "parameter/environmentvariables.h"

#include <gtest/gtest.h>

#include "optxv/embedding.h"
#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"

namespace optxv {
namespace {

TEST(Environment, IsReadByPrefixInTheOrderOfNames) {
  const std::string rows = rowsof("parameter/environment.rows");
  const auto told = [](std::string text) {
    if (!text.ends_with('\n')) text += '\n';
    std::vector<const char*> variables;
    for (char* at = text.data(); *at != 0; ++at) {
      variables.push_back(at);
      at += std::string_view(at).find('\n');
      *at = 0;
    }
    variables.push_back(nullptr);
    optiontable table(everykind());
    readenvironment(*table, "S_", variables.data());
    return table.told();
  };
  EXPECT_EQ(retold(rows, told), rows);
}

TEST(Environment, TellsTheVariableAsAPlace) {
  optiontable table(everykind());
  setenv("OPTXVTEST_STEPLIM", "12", 1);
  EXPECT_EQ(optxv_read_environment(&*table, "OPTXVTEST_"), optxv_ok);
  optxv_place place;
  ASSERT_EQ(optxv_value_place(&*table, table.number("steplim"), &place, nullptr, nullptr), 1);
  EXPECT_STREQ(place.file, "variable OPTXVTEST_STEPLIM");
  EXPECT_EQ(place.line, 1);
  EXPECT_EQ(place.column, 19);
  EXPECT_EQ(place.length, 2);
  EXPECT_EQ(optxv_read_environment(&*table, ""), optxv_bad_argument);
}

}  // namespace
}  // namespace optxv
