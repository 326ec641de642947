#include "frame/compatibility.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>
#include <vector>

namespace optxv {
namespace {

TEST(CheckFunction, Findings) {
  const std::string longname(250, 'n');
  const std::tuple<std::string, std::int32_t, std::vector<std::int32_t>, std::string> rows[] = {
      {"optGetIntNr", 2, {3, 3, 4}, ""},
      {"optGetMessage", 3, {0, 3, 12, 4}, ""},
      {"optReadFromPChar", 1, {0, 10}, ""},
      {"optSetValuesNr", 4, {3, 3, 3, 13, 11}, ""},
      {"optGetDblNr", 2, {3, 3, 14}, ""},
      {"optCount", 1, {3, 3}, " has wrong number of arguments, the API expects 0 but it has 1 in"},
      {"optGetIntNr", -1, {}, " has wrong number of arguments, the API expects 2 but it has -1 in"},
      {"optGetIntNr", 2, {0, 0, 0}, " has wrong argument type for argument 0,1,2"},
      {"optgetintnr", 2, {3, 3, 4}, " cannot be found in optxvlib."},
      {"coptGetNameNr", 2, {3, 3, 12}, " cannot be found in optxvlib."},
      {"xcreate", 0, {0}, " cannot be found in optxvlib."},
      {"", 0, {0}, " cannot be found in optxvlib."},
      {longname, 0, {0}, " cann"}};
  for (const auto& [function, count, codes, finding] : rows) {
    shortstring message = "left over";
    EXPECT_EQ(checkfunction(function, count, codes.data(), message), finding.empty() ? 1 : 0);
    const std::string tail = finding.ends_with(" in") ? " the library." : "";
    EXPECT_EQ(message.view(), finding.empty() ? "" : function + finding + tail);
  }
}

TEST(CheckVersion, Findings) {
  const std::string tooold = "The API is too old for the used library, API version: ";
  const std::tuple<std::int32_t, std::int32_t, std::int32_t, std::string> rows[] = {
      {std::numeric_limits<std::int32_t>::min(), 0, 0, tooold + "-2147483648, library version: 2"},
      {0, 0, 0, tooold + "0, library version: 2"},
      {1, 1, 2, "Client version is compatible to this version of the library."},
      {2, 1, 1, "API version and library version are the same."},
      {3, 1, 3, "API version is newer than this library."}};
  for (const auto& [version, result, status, text] : rows) {
    shortstring message = "left over";
    std::int32_t found = 77;
    EXPECT_EQ(checkversion(version, message, found), result) << version;
    EXPECT_EQ(found, status) << version;
    EXPECT_EQ(message.view(), text);
  }
}

}  // namespace
}  // namespace optxv
