#include "options/toption.h"

#include <gtest/gtest.h>

#include <string>

#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr std::string_view table =
    "i integer.TWO 1 7 0 10 0 0\n"
    "s string.TWO 3 \"\" 0 0\n"
    "nv integer.NV 7 7 0 10 0 0\n"
    "l strlist 8 0 0\n"
    "mac macro 0 0\n i\n l\n"
    "im immediate Message 0 0\n";

TEST(Assignment, TestsForQuotesAndForOptionsWithoutAValue) {
  // Rows: option >> text, "2:" in front for the second >> messages >> what is then set. Being
  // mentioned is a value: nothing is looked at, and what the field held shows.
  constexpr std::string_view rows = R"(
nv >> x"y >> >> nv=0
nv >> 2:8 >> >> nv=/8
nv >> 2:"8 >> V Bad double-quote in value
s >> a"b >> V Bad double-quote in value
l >> " >> V Bad double-quote in value
im >> " >> V Bad double-quote in value
mac >> 2:1
im >> 2:x
)";
  for (const lines& row : rowsof(rows)) {
    optiontable options(table);
    toption& option = options.option(row[0]);
    row[1].starts_with("2:") ? option.setasstring2(row[1].substr(2)) : option.setasstring(row[1]);
    EXPECT_EQ(options.brief(), row[2]) << row[0];
    EXPECT_EQ(options.state(), row[3]) << row[0] << row[1];
  }
}

}  // namespace
}  // namespace optxv
