#include "foundation/zdlaudit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <tuple>

namespace optxv {
namespace {

std::string padded(std::string text, std::size_t length) {
  text.resize(length, ' ');
  return text;
}

TEST(ZdlAudit, HostLineWinsAndNamesTheSystem) {
  initzdlaudit();
  for (const std::string& body :
       {std::string(77, 'x') + "yz", std::string(200, 'x'), std::string()}) {
    zdlsetauditlinelib("<head>" + body + "<tail>");
    EXPECT_EQ(zdlgetauditline().view(), padded(body, 78)) << body;
  }
  zdlsetauditlinelib(zdlbuildauditline());
  // name, day and month, version, platform code, build day and second, build code, platform
  EXPECT_THAT(std::string(zdlgetauditline().view()),
              ::testing::MatchesRegex("optxv            [0-9][0-9][A-Z][a-z][a-z] [0-9]+\\.[0-9]\\."
                                      "[0-9] [A-Z]+ [0-9]+\\.[0-9]+ [A-Z0-9]+ [^ ]+/[^ ]+ *"));
  zdlsetauditline("<head>A host program  , and more<tail>");
  EXPECT_EQ(zdlgetauditline().view(), padded("A host program  , and more", 78));
  EXPECT_EQ(zdldata().zdlsysnam.view(), "A host program  ");
}

// The dates of the record are made of one number; this takes them apart and compares.
TEST(ZdlAudit, DatesAgree) {
  const std::tuple<std::int64_t, std::int32_t> rows[] = {// 1 January 1900 is day 1
                                                         {86399, 25568},
                                                         {86400, 25569},
                                                         {951782400, 36584},
                                                         {4102444800, 73050}};
  for (const auto& [seconds, day] : rows) EXPECT_EQ(zdldaynumber(seconds), day) << seconds;
  std::tm date{};
  const std::time_t noon = (std::time_t{zdlgetjul()} - 25568) * 86400 + 43200;
  ASSERT_NE(gmtime_r(&noon, &date), nullptr);
  char text[32];
  std::strftime(text, sizeof text, "%b %d, %Y", &date);
  EXPECT_EQ(zdlgetblddat().view(), text);
}

}  // namespace
}  // namespace optxv
