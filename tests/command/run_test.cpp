// What a run knows besides its findings: names, where values come from, and the files.

#include "analysis/run.h"

#include <gtest/gtest.h>

#include "support/scratchfolder.h"

namespace command {
namespace {

class Run : public testing::Test {
 protected:
  Run() : back_(std::filesystem::current_path()) { std::filesystem::current_path(folder_.path()); }
  ~Run() override { std::filesystem::current_path(back_); }

  /// Reads the definition d and the parameters p and q.
  void read() {
    folder_.put("d",
                "steps integer 1 5 0 9 1 1 S\npace integer 2 5 0 9 1 1 P\nall macro 1 1 A\n steps\n"
                " pace\nrf immediate ReadFile 1 1 R\nstp synonym steps\n");
    folder_.put("p", "stp 1\nall 2\nrf q\n");
    folder_.put("q", "  pace = 3\n");
    ASSERT_TRUE(run_.read({.definition = "d", .parameters = {"p"}}));
    ASSERT_EQ(run_.total().errors, 0U);
  }

  static std::string shown(const place& where) {
    return where.file + ':' + std::to_string(where.line) + ':' + std::to_string(where.column) +
           '+' + std::to_string(where.length);
  }

  const optxv::test::scratchfolder folder_;
  const std::filesystem::path back_;
  run run_{[](const finding&) {}, {.symbols = true}};
};

TEST_F(Run, KnowsWhereValuesComeFrom) {
  read();
  const std::int32_t steps = run_.names().find("STP"), pace = run_.names().find("pace");
  const setting& first = run_.values().of(steps);
  EXPECT_EQ(first.road, optxv_road_macro);
  EXPECT_EQ(run_.names().option(first.through).name, "all");
  EXPECT_EQ(shown(first.where) + " over " + shown(first.overridden), "p:2:5+1 over p:1:5+1");
  EXPECT_EQ(run_.values().of(pace).road, optxv_road_entry);
  EXPECT_EQ(shown(run_.values().of(pace).where), "q:1:10+1");
  EXPECT_EQ(run_.values().of(run_.names().find("all")).road, optxv_road_none);
}

TEST_F(Run, KnowsTheNames) {
  read();
  std::string declared, used;
  for (const declaredname& each : run_.names().declarations())
    if (each.what != optxv_declared_member) declared += each.name + ' ' + shown(each.where) + '\n';
  for (const mention& each : run_.names().mentions())
    used += run_.names().option(each.option).name + ' ' + shown(each.where) + '\n';
  EXPECT_EQ(declared.substr(declared.find("steps")),
            "steps d:1:1+5\npace d:2:1+4\nall d:3:1+3\nrf d:6:1+2\nstp d:7:1+3\n");
  EXPECT_EQ(used, "steps p:1:1+3\nall p:2:1+3\nrf p:3:1+2\npace q:1:3+4\n");
}

TEST_F(Run, KnowsTheFiles) {
  read();
  std::string names;
  for (const enteredfile& each : run_.files()) {
    struct stat status = {};
    ASSERT_EQ(stat(each.name.c_str(), &status), 0);
    EXPECT_EQ(each.id, identityof(status)) << each.name;
    names += each.name + ' ' + std::to_string(each.level) + ' ' + shown(each.from) + '\n';
  }
  EXPECT_EQ(names, "d 1 :0:0+0\np 1 :0:0+0\nq 2 p:3:4+1\n");
}

}  // namespace
}  // namespace command
