#include "foundation/zdlaudit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <string>

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

TEST(ZdlAudit, TellsTheDayOfTheBuild) {
  initzdlaudit();
  EXPECT_TRUE(zdldata().zdlbldcpr.view().starts_with("Copyright")) << "in the place of blanks";
  const std::time_t day = std::time_t{zdlgetjul() - 25568} * 86400;  // the number of 1 January 1970
  char text[32];
  std::strftime(text, sizeof text, "%b %d, %Y PROD %d%b%y", std::gmtime(&day));
  EXPECT_EQ(std::string(zdlgetblddat().view()) + ' ' + std::string(zdlgetreldat().view()), text);
}

}  // namespace
}  // namespace optxv
