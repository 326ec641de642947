#include "frame/compatibility.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace optxv {
namespace {

TEST(CheckFunction, Findings) {
  const std::string longname(250, 'n');
  const struct {
    std::string function;
    std::int32_t count;
    std::vector<std::int32_t> codes;
    std::string message;  // empty for success
  } rows[] = {
      {"optCount", 0, {3}, ""},
      {"optGetInfoNr", 7, {3, 3, 4, 4, 4, 4, 4, 4}, ""},
      {"optReadFromPChar", 1, {0, 10}, ""},
      {"optGetValuesNr", 5, {3, 3, 12, 4, 14, 12}, ""},
      {"optCount",
       1,
       {3, 3},
       "optCount has wrong number of arguments, the API expects 0 but it has 1 in the library."},
      {"optGetIntNr",
       -1,
       {},
       "optGetIntNr has wrong number of arguments, the API expects 2 but it has -1 in the "
       "library."},
      {"optGetIntNr", 2, {3, 3, 3}, "optGetIntNr has wrong argument type for argument 2"},
      {"optGetIntNr", 2, {0, 3, 3}, "optGetIntNr has wrong argument type for argument 0,2"},
      {"optGetIntNr", 2, {0, 0, 0}, "optGetIntNr has wrong argument type for argument 0,1,2"},
      {"optCount", 0, {0}, "optCount has wrong argument type for argument 0"},
      {"optgetintnr", 2, {3, 3, 4}, "optgetintnr cannot be found in optxvlib."},
      {"coptGetNameNr", 2, {3, 3, 12}, "coptGetNameNr cannot be found in optxvlib."},
      {"xcreate", 0, {0}, "xcreate cannot be found in optxvlib."},
      {"optGetLoadPath", 1, {0, 12}, "optGetLoadPath cannot be found in optxvlib."},
      {"", 0, {0}, " cannot be found in optxvlib."},
      {longname, 0, {0}, longname + " cann"},
  };
  for (const auto& row : rows) {
    shortstring message = "left over";
    EXPECT_EQ(checkfunction(row.function, row.count, row.codes.data(), message),
              row.message.empty() ? 1 : 0)
        << row.function;
    EXPECT_EQ(message.view(), row.message);
  }
}

TEST(CheckVersion, Findings) {
  const struct {
    std::int32_t version;
    std::int32_t result;
    std::int32_t status;
    std::string message;
  } rows[] = {
      {std::numeric_limits<std::int32_t>::min(), 0, 0,
       "The API is too old for the used library, API version: -2147483648, library version: 2"},
      {0, 0, 0, "The API is too old for the used library, API version: 0, library version: 2"},
      {1, 1, 2, "Client version is compatible to this version of the library."},
      {2, 1, 1, "API version and library version are the same."},
      {3, 1, 3, "API version is newer than this library."},
      {std::numeric_limits<std::int32_t>::max(), 1, 3, "API version is newer than this library."},
  };
  for (const auto& row : rows) {
    shortstring message = "left over";
    std::int32_t status = 77;
    EXPECT_EQ(checkversion(row.version, message, status), row.result) << row.version;
    EXPECT_EQ(status, row.status) << row.version;
    EXPECT_EQ(message.view(), row.message);
  }
}

}  // namespace
}  // namespace optxv
