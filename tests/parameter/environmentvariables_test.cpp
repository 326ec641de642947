#include "parameter/environmentvariables.h"

#include <gtest/gtest.h>

#include "support/optiontable.h"

namespace optxv {
namespace {

TEST(Environment, IsReadByPrefixInTheOrderOfNames) {
  // the variables, what is set, and the messages
  const std::tuple<std::vector<const char*>, const char*, const char*> rows[] = {
      {{"S_STEPLIM=5", "s_tol=1", "TOL=1", "S_=3", "S_TOL=0.5", nullptr}, "steplim=5 tol=0.5", ""},
      {{"S_SCALE=", "S_VERBOSE=", "S_LOGNAME=a # b", nullptr}, "logname=a # b verbose=0", ""},
      {{"S_STPLIM=7", "S_STEPLIM=6", "S_TOL=2", nullptr},
       "steplim=7",
       "W variable S_STPLIM: deprecated synonym 'STPLIM'; Use steplim | "
       "V variable S_TOL: Double out of range for option 'TOL' saw '2' | "
       "V variable S_TOL:    Valid range is 0 to 1"},
      {{"S_SETPLIM=1", "S_X=1", nullptr},
       "",
       "W variable S_SETPLIM: Unknown option 'SETPLIM' | "
       "W variable S_SETPLIM:    Did you mean 'steplim'? | W variable S_X: Unknown option 'X'"},
      {{nullptr}, "", ""}};
  for (const auto& [variables, state, messages] : rows) {
    optiontable table(sampledefinition);
    readenvironment(*table, "S_", variables.data());
    EXPECT_EQ(table.state(), state) << variables[0];
    EXPECT_EQ(table.brief(), messages) << variables[0];
  }
}

TEST(Environment, TellsTheVariableAsAPlace) {
  optiontable table(sampledefinition);
  setenv("OPTXVTEST_STEPLIM", "12", 1);
  EXPECT_EQ(optxv_read_environment(&*table, "OPTXVTEST_"), optxv_ok);
  optxv_place place;
  ASSERT_EQ(optxv_value_place(&*table, table.number("steplim"), &place, nullptr, nullptr), 1);
  EXPECT_STREQ(place.file, "variable OPTXVTEST_STEPLIM");
  EXPECT_EQ(place.line * 1000 + place.column * 10 + place.length, 1192);
  EXPECT_EQ(optxv_read_environment(&*table, ""), optxv_bad_argument);
}

}  // namespace
}  // namespace optxv
