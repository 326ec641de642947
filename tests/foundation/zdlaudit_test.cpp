#include "foundation/zdlaudit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <string>
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

std::string line(const std::string& body) {
  return "<head>" + body + "<tail>";
}
std::string padded(std::string text, std::size_t length) {
  text.resize(length, ' ');
  return text;
}

TEST_F(ZdlAudit, BodyIsCutOrPaddedTo78) {
  const struct {
    std::string given;
    std::string kept;
  } rows[] = {
      {line("name"), padded("name", 78)},
      {line(std::string(78, 'x')), std::string(78, 'x')},
      {line(std::string(77, 'x') + "yz"), std::string(77, 'x') + "y"},
      {line(std::string(200, 'x')), std::string(78, 'x')},
      {"123456a123456", padded("a", 78)},
      {"123456123456", padded("", 78)},
      {"short", padded("", 78)},
      {"", padded("", 78)},
  };
  for (const auto& row : rows) {
    zdlsetauditlinelib(row.given);
    EXPECT_EQ(zdlgetauditline().view(), row.kept) << row.given;
  }
}

TEST_F(ZdlAudit, HostLineWinsAndNamesTheSystem) {
  EXPECT_TRUE(zdlgetauditline().empty());
  EXPECT_EQ(zdldata().zdlsysnam.view(), padded("Uninitialized", 16));

  zdlsetauditlinelib(line("The library here, and more"));
  EXPECT_EQ(zdlgetauditline().view(), padded("The library here, and more", 78));
  EXPECT_EQ(zdldata().zdlsysnam.view(), padded("Uninitialized", 16));

  zdlsetauditline(line("A host program  , and more"));
  EXPECT_EQ(zdlgetauditline().view(), padded("A host program  , and more", 78));
  EXPECT_EQ(zdldata().zdlsysnam.view(), "A host program  ");

  zdlsetauditline("");  // still a line: 78 blanks
  EXPECT_EQ(zdlgetauditline().view(), padded("", 78));
}

TEST_F(ZdlAudit, OwnLineStandsInItsFields) {
  zdlsetauditlinelib(zdlbuildauditline());
  const std::string text{zdlgetauditline().view()};
  EXPECT_EQ(text.substr(0, 17), padded("optxv", 17));
  // day and month, version, platform code, build day and second, build code, processor/system
  EXPECT_THAT(text.substr(17),
              ::testing::MatchesRegex("[0-9][0-9][A-Z][a-z][a-z] [0-9]+\\.[0-9]\\.[0-9] [A-Z]+ "
                                      "[0-9]+\\.[0-9]+ [A-Z0-9]+ [^ ]+/[^ ]+ *"));
}

TEST_F(ZdlAudit, AuditRunIsAskedForByTheFirstArgument) {
  const struct {
    std::vector<const char*> arguments;
    bool run;
  } rows[] = {
      {{"program", "AUDIT"}, true},
      {{"program", "audit"}, true},
      {{"program", "AuDiT", "x"}, true},
      {{"program", "AUDITS"}, false},
      {{"program", "AUDI"}, false},
      {{"program", "x", "AUDIT"}, false},
      {{"program"}, false},
      {{"AUDIT"}, false},
  };
  EXPECT_FALSE(zdlauditrun());
  for (const auto& row : rows) {
    setarguments(static_cast<int>(row.arguments.size()), const_cast<char**>(row.arguments.data()));
    EXPECT_EQ(zdlauditrun(), row.run) << row.arguments.size() << row.arguments.back();
  }
}

TEST_F(ZdlAudit, DayNumbers) {
  const struct {
    std::int64_t seconds;
    std::int32_t day;
  } rows[] = {
      {0, 25568},  // 1 January 1970; 1 January 1900 is day 1
      {86399, 25568},      {86400, 25569}, {951782400, 36584},  // 29 February 2000
      {4102444800, 73050},                                      // 1 January 2100
  };
  for (const auto& row : rows) EXPECT_EQ(zdldaynumber(row.seconds), row.day) << row.seconds;
  EXPECT_LE(zdldaynumber(std::time(nullptr)) - zdlgettoday(), 1);
  EXPECT_LE(zdlgetjul(), zdlgettoday());
}

// The three dates of the record are made of one number; this takes them apart and compares.
TEST_F(ZdlAudit, DatesAgree) {
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
  zdlrecord& record = zdldata();
  record.zdlrelplc.assign("LNX");
  record.zdlrelmaj.assign("22");
  record.zdlrelmin.assign("7");
  record.zdlsysver.assign("227");
  EXPECT_EQ(zdlgetrel().view(), "22.7");
  EXPECT_EQ(zdlgetvid().view(), "LNX227-227");
  EXPECT_EQ(zdlgetver(), 227);
  record.zdlsysver.assign("x");
  EXPECT_EQ(zdlgetver(), 0);
  EXPECT_EQ(zdlgethdr().length(), 22);
  EXPECT_EQ(zdlgetcpr().length(), 70);
  EXPECT_EQ(zdlgetcpr().view().substr(0, 10), "Copyright ");
  EXPECT_EQ(zdlgetcod().length(), 3);
  EXPECT_EQ(zdlgetbldcod().length(), 3);
}

TEST_F(ZdlAudit, ReleaseTagTellsWhetherItIsOne) {
  const struct {
    const char* tag;
    bool alfa;
    bool beta;
  } rows[] = {{"ALFA 01Jan26", true, false},
              {"BETA 01Jan26", false, true},
              {"alfa 01Jan26", false, false},
              {"BET", false, false}};
  EXPECT_FALSE(zdlisalfa() || zdlisbeta());
  for (const auto& row : rows) {
    zdldata().zdlreldat.assign(row.tag);
    EXPECT_EQ(zdlisalfa(), row.alfa) << row.tag;
    EXPECT_EQ(zdlisbeta(), row.beta) << row.tag;
  }
}

}  // namespace
}  // namespace optxv
