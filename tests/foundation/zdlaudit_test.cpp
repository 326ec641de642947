#include "foundation/zdlaudit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <tuple>
#include <vector>

#include "foundation/runtime.h"

namespace optxv {
namespace {

// Puts the record and the program's arguments back as they were.
class ZdlAudit : public ::testing::Test {
 protected:
  void SetUp() override { initzdlaudit(); }
  void TearDown() override {
    zdldata() = saved_;
    setarguments(-1, nullptr);
  }

 private:
  zdlrecord saved_ = zdldata();
};

std::string padded(std::string text, std::size_t length) {
  text.resize(length, ' ');
  return text;
}

TEST_F(ZdlAudit, HostLineWinsAndNamesTheSystem) {
  EXPECT_TRUE(zdlgetauditline().empty());
  const std::tuple<std::string, std::string> rows[] = {
      {"name", "name"},
      {std::string(77, 'x') + "yz", std::string(77, 'x') + "y"},
      {std::string(200, 'x'), std::string(78, 'x')},
      {"", ""}};
  for (const auto& [body, kept] : rows) {
    zdlsetauditlinelib("<head>" + body + "<tail>");
    EXPECT_EQ(zdlgetauditline().view(), padded(kept, 78)) << body;
  }
  EXPECT_EQ(zdldata().zdlsysnam.view(), padded("Uninitialized", 16));
  zdlsetauditlinelib(zdlbuildauditline());
  zdlsetauditline("<head>A host program  , and more<tail>");
  EXPECT_EQ(zdlgetauditline().view(), padded("A host program  , and more", 78));
  EXPECT_EQ(zdldata().zdlsysnam.view(), "A host program  ");
  zdlsetauditline("short");  // still a line: 78 blanks
  EXPECT_EQ(zdlgetauditline().view(), padded("", 78));
}

TEST_F(ZdlAudit, OwnLineStandsInItsFields) {
  zdlsetauditlinelib(zdlbuildauditline());
  // name, day and month, version, platform code, build day and second, build code, platform
  EXPECT_THAT(std::string(zdlgetauditline().view()),
              ::testing::MatchesRegex("optxv            [0-9][0-9][A-Z][a-z][a-z] [0-9]+\\.[0-9]\\."
                                      "[0-9] [A-Z]+ [0-9]+\\.[0-9]+ [A-Z0-9]+ [^ ]+/[^ ]+ *"));
}

TEST_F(ZdlAudit, AuditRunIsAskedForByTheFirstArgument) {
  EXPECT_FALSE(zdlauditrun());
  const std::tuple<std::vector<const char*>, bool> rows[] = {{{"program", "AuDiT", "x"}, true},
                                                             {{"program", "AUDITS"}, false},
                                                             {{"program", "x", "AUDIT"}, false},
                                                             {{"AUDIT"}, false}};
  for (const auto& [arguments, run] : rows) {
    setarguments(static_cast<int>(arguments.size()), const_cast<char**>(arguments.data()));
    EXPECT_EQ(zdlauditrun(), run) << arguments.size() << arguments.back();
  }
}

// The three dates of the record are made of one number; this takes them apart and compares.
TEST_F(ZdlAudit, DatesAgree) {
  const std::tuple<std::int64_t, std::int32_t> rows[] = {// 1 January 1900 is day 1
                                                         {0, 25568},
                                                         {86399, 25568},
                                                         {86400, 25569},
                                                         {951782400, 36584},
                                                         {4102444800, 73050}};
  for (const auto& [seconds, day] : rows) EXPECT_EQ(zdldaynumber(seconds), day) << seconds;
  EXPECT_LE(zdldaynumber(std::time(nullptr)) - zdlgettoday(), 1);
  std::tm date{};
  const std::time_t noon = (std::time_t{zdlgetjul()} - 25568) * 86400 + 43200;
  ASSERT_NE(gmtime_r(&noon, &date), nullptr);
  char text[32];
  std::strftime(text, sizeof text, "%b %d, %Y", &date);
  EXPECT_EQ(zdlgetblddat().view(), text);
  std::strftime(text, sizeof text, "PROD %d%b%y", &date);
  EXPECT_EQ(zdlgetreldat().view(), text);
}

TEST_F(ZdlAudit, AccessorsPutTheFieldsTogether) {
  zdldata().zdlrelplc.assign("LNX"), zdldata().zdlrelmaj.assign("22");
  zdldata().zdlrelmin.assign("7"), zdldata().zdlsysver.assign("227");
  EXPECT_EQ(zdlgetrel().view(), "22.7");
  EXPECT_EQ(zdlgetvid().view(), "LNX227-227");
  EXPECT_EQ(zdlgetver(), 227);
  zdldata().zdlreldat.assign("BETA 01Jan26");
  EXPECT_TRUE(zdlisbeta() && !zdlisalfa());
}

}  // namespace
}  // namespace optxv
