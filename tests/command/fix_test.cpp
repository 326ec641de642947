// What fix repairs, what it leaves, and how it shows and writes that.

#include <algorithm>
#include <random>

#include "commandrun.h"

namespace optxv::test {
namespace {

using std::string;

const char* const definition =
    "g group 1 1 General\ntime_limit double 1 3600 0 1e6 10 1 Time\n"
    "steps integer 2 1000 0 100000 10 1 Steps\nlog_file string 3 run.log 12 1 Log\n"
    "method enumstr 6 auto 14 1 Method\n auto 15 A\n simplex 16 S\n"
    "range double.TWO 9 0 0 100 22 1 Range\nlines immediate EolFlag 25 1 Mode\n"
    "pair multilist 10 23 1 Two\n steps time_limit\n"
    ".prior integer 12 0 0 1000 29 1 Priority\ntlim synonym time_limit\ntlim deprecated\n"
    " tlim Use time_limit\n";

class Fix : public commandrun {
 protected:
  void SetUp() override {
    save("s.def", definition);
    save("c.def", string("c eolcomm !\n") + definition);
  }
  /// What becomes of a text.
  string fixed(const string& text, const string& words = "s.def") const {
    save("p", text);
    run("fix --write " + words + " p");
    return get("p");
  }
};

TEST_F(Fix, RepairsWhatCanMeanOneThing) {
  const std::pair<string, string> rows[] = {
      {"stesp 5", "steps 5"},
      {"stesp 10,000;  ", "steps 10000  "},
      {"  steps = 10,000", "  steps = 10000"},
      {"tlim 7", "time_limit 7"},
      {"time_limit: 5", "time_limit 5"},
      {"time_limit:=5", "time_limit 5"},
      {"time-limit = 5", "time_limit 5"},
      {"time limit 5", "time_limit 5"},
      {"steps '5'", "steps 5"},
      {"log_file \u201ca b.log\u201d", "log_file \"a b.log\""},
      {"time_limit 1,5", "time_limit 1.5"},
      {"range 1 2,5", "range 1 2.5"},
      {"range 1,5 2", "range 1.5 2"},
      {"range 9, 8", "range 9 8"},
      {"method simplx", "method simplex"},
      {"x.proir 3", "x.prior 3"},
      {"# a note", "* a note"},
      {"  // a note", "* a note"},
      {"//note", "*note"},
      {"steps 5 // a note", "* a note\nsteps 5"},
      {"steps: 5 # a note", "* a note\nsteps 5"},
      {"\xEF\xBB\xBFsteps 5", "steps 5"},
      {"steps 1\nmethod auto\nsteps 2", "* steps 1\nmethod auto\nsteps 2"},
      {"steps 1\r\nsteps: 2\r", "* steps 1\r\nsteps 2\r"}};
  for (const auto& [before, after] : rows) {
    EXPECT_EQ(fixed(before + "\n"), after + "\n");
    EXPECT_EQ(fixed(before), after) << "without a line feed at the end";
  }
  EXPECT_EQ(fixed("steps 5 // a note\n", "c.def"), "steps 5 ! a note\n");
}

TEST_F(Fix, LeavesWhatTakesAPerson) {
  for (const string each :
       {"time_limit 1,234", "time_limit 10s", "time_limit inf", "steps auto", "steps 500000",
        "500 steps", "--steps 5", "log_file \"a", "range 1", "range 1,5", "* steps: 5",
        "lines no\nsteps: 5 x", "lines no\nsteps 1\nsteps 2", "lins no\nsteps 1",
        "x.prior 1 steps 1\nsteps 2", "pair 5#:2", "read: \"nothing\""})
    EXPECT_EQ(fixed(each + "\n"), each + "\n");
  EXPECT_EQ(fixed("steps 1 steps 2\nstesp 3 range 1 2\n", "s.def --tokens"),
            "steps 1 steps 2\nsteps 3 range 1 2\n");
}

TEST_F(Fix, ShowsADifferenceThatPatchTakes) {
  string text = "stesp 1\n";
  for (int line = 2; line <= 20; line++) text += "* " + std::to_string(line) + "\n";
  save("p", text + "time_limit 1 # one\ntime_limit: 2\nmethod 7");
  const outcome told = run("fix s.def p");
  EXPECT_EQ(told.status, 1);
  EXPECT_TRUE(told.out.starts_with("--- p\n+++ p\n@@ -1,4 +1,4 @@\n-stesp 1\n+steps 1\n * 2\n"));
  EXPECT_TRUE(
      told.out.ends_with("@@ -18,6 +18,7 @@\n * 18\n * 19\n * 20\n-time_limit 1 # one\n"
                         "-time_limit: 2\n+* one\n+* time_limit 1\n+time_limit 2\n"
                         " method 7\n\\ No newline at end of file\n"))
      << told.out;
  EXPECT_TRUE(told.err.ends_with("\n4 repairs in 1 file; 1 error is left\n")) << told.err;
  save("d", told.out);
  save("q", get("p"));
  EXPECT_EQ(run("fix --write s.def q").out, "");
  std::system(("cd '" + folder_.path() + "' && patch -s <d").c_str());
  EXPECT_EQ(get("p"), get("q"));
}

TEST_F(Fix, WritesNothingWhereAFileIsUnusable) {
  save("p", "stesp 1\n");
  save("bad.def", "no record\n");
  EXPECT_EQ(run("fix --write s.def p nothing").status, 2);
  EXPECT_EQ(run("fix --write s.def p ./p").status, 2);
  EXPECT_EQ(run("fix --write bad.def p").status, 1);
  EXPECT_EQ(get("p"), "stesp 1\n");
}

/// Lines put together at random are repaired once and for all, with no more faults than before.
TEST_F(Fix, OnceIsEnough) {
  const string keys[] = {"steps", "stesp", "tlim", "time_limit", "log_file", "method", "#", "//"};
  const string separators[] = {" ", " = ", ":", " := ", "=", "-"};
  const string values[] = {"5",       "1,5",      "'a'",           "10,000;",
                           "\"a b\"", "auto # c", "\u201cx\u201d", "5'"};
  std::mt19937 random(7);
  const auto one = [&](const auto& of) { return of[random() % std::size(of)]; };
  for (int round = 0; round < 40; round++) {
    string text;
    for (int line = 0; line < 12; line++) text += one(keys) + one(separators) + one(values) + "\n";
    save("before", text);
    const string once = fixed(text);
    save("after", once);
    EXPECT_EQ(fixed(once), once) << text;
    const auto errors = [&](const string& file) {
      const string told = run("check s.def " + file).out;
      return std::ranges::count(told, '\n') == 1
                 ? 0
                 : std::stoi(told.substr(told.rfind('\n', told.size() - 2) + 1));
    };
    EXPECT_LE(errors("after"), errors("before")) << text;
  }
}

}  // namespace
}  // namespace optxv::test
