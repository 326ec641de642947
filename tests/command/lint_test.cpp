// What lint finds beyond the examples of docs/lint.md, what silences it, and what it does not say.

#include <algorithm>
#include <nlohmann/json.hpp>
#include <random>

#include "commandrun.h"
#include "support/everykind.h"

namespace optxv::test {
namespace {

using nlohmann::json;
using std::string;

const char* const definition =
    "e eolcomm !\ng group 1 1 General\nsteps integer 1 1000 0 100000 10 1 Steps\n"
    "log_file string 2 run.log 12 1 Log\nmethod enumstr 3 auto 14 1 Method\n auto 15 A\n"
    " simplex 16 S\nrange double.TWO 4 0 0 100 22 1 Range\nthreads integer.OPT 5 1 1 64 1 1 T\n"
    "quick boolean.NV 6 1 10 1 Quick\ncover_cuts boolean 7 0 1 1 Cover\n"
    "gomory_cuts boolean 8 1 1 1 Gomory\nall_cuts macro 1 1 All\n cover_cuts\n gomory_cuts\n"
    "paths strlist 9 1 1 Paths\nlines immediate EolFlag 25 1 Mode\nread immediate ReadFile 1 1 R\n"
    "free immediate NoBounds 1 1 Bounds\n.prior integer 12 0 0 1000 29 1 Priority\n"
    "stp synonym steps\nold integer.NV 13 1 0 9 1 1 Old\npassing deprecated\n stp Use steps\n"
    "gone obsolete\n old Use steps\n";

class Lint : public commandrun {
 protected:
  void SetUp() override { save("s.def", definition); }

  /// What is found, each as code, line and column; errors as "error".
  string found(const string& words) const {
    string all;
    const json told = json::parse(run("lint --json " + words).out);
    for (const json& each : told["diagnostics"])
      all += (all.empty() ? "" : " ") +
             (each["severity"] == "error" ? "error" : each["code"].get<string>()) + ':' +
             std::to_string(each["line"].get<int>()) + ':' +
             std::to_string(each["column"].get<int>());
    return all;
  }
  string indefinition(const string& text) const {
    save("d", text);
    return found("d");
  }
  string inparameters(const string& text, const string& words = "") const {
    save("p", text);
    return found("s.def p " + words);
  }
};

TEST_F(Lint, TakesEntriesForWhatTheyDo) {
  const std::pair<string, string> rows[] = {
      {"steps 1000\n", "P101:1:7"},
      {"steps $3E8\nrange 0\nrange 0 0\n", "P101:1:7 P101:2:7 P101:3:7 P102:2:7"},
      {"steps 5\nsteps 1000\n", "P102:1:7"},
      {"range 1 2\nrange * 0\n", ""},
      {"range 1 *\nrange 2 5\n", "P102:1:7"},
      {"threads\nquick\nall_cuts no\n", ""},
      {"all_cuts no\ncover_cuts yes\n", ""},
      {"cover_cuts yes\nall_cuts yes\n", "P102:1:12"},
      {"paths a\npaths a\npaths b\n", "P107:2:7"},
      {"Stp 5\n", "P104:1:1 P201:1:1"},
      {"old\n", "P105:1:1"},
      {"METHOD Simplex\nmethod \"AUTO\"\n", "P201:1:1 P202:1:8 P102:1:8 P202:2:9"},
      {"log_file a b\nlog_file \"a b\"\nlog_file a,b\n", "P106:1:10 P102:1:10 P102:2:11 P106:3:10"},
      {"x.prior 5\nlines yes\nfree yes\nsteps 200000\nfree no\n", ""},
      {"--note first try\n--Note 1\n", "P106:1:8"},
      {"steps x\nsteps 1000 y\nstep 1000\n", "error:1:7 error:2:7 error:3:1"},
      {"lines no\nsteps 5 log_file a threads 2\n", "P106:2:9"}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(inparameters(text), expected) << text;
  EXPECT_EQ(inparameters("steps 5, method simplex\nlines yes\nlog_file a b\n", "--tokens"),
            "P106:1:10 P106:3:10");
}

TEST_F(Lint, FollowsFilesIntoOneAnother) {
  save("q", "steps 7\nfree yes\n");
  EXPECT_EQ(inparameters("steps 6\nread q\nsteps 8\n"), "P103:1:7 P103:1:7 P108:2:6");
  EXPECT_EQ(inparameters("steps 6\n", "q q"), "P103:1:7 P108:2:6 P103:1:7 P108:2:6");
  const outcome told = run("lint s.def p q");
  EXPECT_TRUE(
      told.out.starts_with("p:1:7: note: this has no effect: \"steps\" is set again by "
                           "another file [P103]\n    1 | steps 6\n      |       ^\n"
                           "q:1:7: note: it is set here\n"))
      << told.out;
}

TEST_F(Lint, AsksTheLibraryForNames) {
  const string option = " integer 1 1 0 9 1 1 Text\n";
  const std::pair<string, string> rows[] = {
      {"Minos lookup\nlog" + option + "log_file_name" + option + "logging" + option,
       "error:4:1 D201:3:1"},
      {"Minos lookup\nlog" + option + "log_file_name" + option, "D201:3:1"},
      {"Minos lookup\nfile_name" + option + "log synonym file_name\nlog_level" + option,
       "D201:4:1"},
      {"Minos lookup\na_b_c_d" + option + "e_f_g_h_i" + option, "D202:3:1"},
      {"Minos lookup\nread immediate ReadFile 1 1 R\nread_d" + option, "D201:3:1"},
      {"Path lookup\nsteplimit" + option + "lp" + option + "stepping synonym lp\n",
       "error:4:18 D202:3:1"},
      {"Path lookup\nsteplimit" + option + "steps synonym steplimit\n", "D203:3:1"},
      {"a_b" + option + "ab" + option + "a synonym a_b\nA_B synonym ab\n", "D205:2:1 D203:4:1"}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(indefinition(text), expected) << text;
}

TEST_F(Lint, TakesDefinitionsForWhatTheyMean) {
  const string group = "g group 1 1 Group\nh group 2 1 Unused\n";
  const std::pair<string, string> rows[] = {
      {"hidden integer 1 5 5 5 0 1\nnowhere integer 1 1 0 9 1 0\n", "D301:1:20"},
      {group + "a integer 1 1 0 9 1 1 A\n", "D103:2:1"},
      {group + "a integer 1 x 0 9 1 1\n", "error:3:13"},
      {group + "a integer 1 1 0 9 1 1\n1\nb integer 1 1 0 9 1 2 B\n", "error:4:1 D101:3:1"},
      {"a double 1 -1 -1 1 1 1 A\nb double 1 -1 -1 2 1 1 B\n Not -1.\nc double 1 mindouble "
       "mindouble 1 1 1 C\nd double 1 -1.5 -1.5 2 1 1 D\n",
       "D303:5:12"},
      {"a enumstr 1 one 1 1 A\n one 1 O\nb string 1 \" x\" 1 1 B\nc string 1 `x` 1 1 C\n",
       "D301:2:2 D302:3:12 D304:4:12"},
      {"a integer 1 1 0 9 1 1 A\nb synonym a\nx deprecated\n a\n b\n", "D401:4:2 D401:5:2"},
      {"ab integer 1 1 0 9 1 1 A\nb_c integer 1 1 0 9 1 1 B\nd_e integer 1 1 0 9 1 1 D\n"
       "x integer 1 1 0 9 1 1 X\nyZ integer 1 1 0 9 1 1 Y\n.Prior integer 1 1 0 9 1 1 P\n",
       "D204:5:1"}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(indefinition(text), expected) << text;
}

TEST_F(Lint, CommentsSilence) {
  const std::pair<string, string> rows[] = {
      {"* optxv: ignore P101\n\n* why\nsteps 1000\n", ""},
      {"* optxv: ignore P1 and so on\n*optxv:ignore P201\nSTEPS 1000\n", ""},
      {"steps 1000 ! optxv: ignore P101, P102\nrange 0 ! optxv: ignore P\n", "I101:1:34"},
      {"lines no\nsteps 1000 threads 2 ! optxv: ignore P101,P106\n", ""},
      {"steps 5 ! optxv: ignore P102\nsteps 6\n", ""},
      {"* optxv: ignore P101\nrange 5\nsteps 1000\n", "P101:3:7 I101:1:17"},
      {"* optxv: ignore D101\n* optxv: ignore\n* optxv: ignored P101\nrange 5\n", "I102:2:16"},
      {"* optxv: ignore P101", "I101:1:17"}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(inparameters(text), expected) << text;
  EXPECT_EQ(indefinition("* optxv: ignore D102\na enumint 1 1 1 1 A\n 1 1\n* optxv: ignore D304\n"
                         " 2 1 Two\n* optxv: ignore D101\nb integer 1 1 0 9 1 1\n"),
            "I101:4:17");
  EXPECT_EQ(inparameters("* optxv: ignore P101, X1\n", "--ignore P101,I102"), "");
}

TEST_F(Lint, CodesChooseAndStatusIsThatOfCheck) {
  save("p", "STEPS 1000\nsteps 5\nstp 5\n");
  save("bare.def", "a integer 1 1 0 9 1 1\nb integer 1 1 1 1 1 1 B\n");
  const std::pair<string, string> rows[] = {
      {"bare.def", "D101:1:1 D301:2:15"},
      {"bare.def p --ignore P", "error:1:1 error:2:1 error:3:1"},
      {"bare.def --ignore D --select D3", "D301:2:15"},
      {"bare.def --select D301,P --ignore D301", ""},
      {"s.def p --select P2", "P201:1:1"},
      {"--select P101,P104 s.def p --ignore P10", "P101:1:7 P104:3:1"},
      {"--ignore P1 --ignore P2 s.def p", ""}};
  for (const auto& [words, expected] : rows) EXPECT_EQ(found(words), expected) << words;
  const std::pair<string, int> statuses[] = {
      {"bare.def", 0},      {"bare.def --strict", 1},    {"bare.def p", 1},
      {"bare.def none", 2}, {"bare.def --select D9", 2}, {"s.def p --select P101 --strict", 0}};
  for (const auto& [words, status] : statuses) EXPECT_EQ(run("lint " + words).status, status);
  EXPECT_EQ(run("lint bare.def --select D9").err, "optxv: error: there is no rule \"D9\"\n");
  EXPECT_TRUE(run("lint bare.def").out.ends_with("\n2 warnings in 1 file\n"));
}

TEST_F(Lint, ManyAlikeAreCounted) {
  string text;
  for (int i = 0; i < 1030; i++) text += "a" + std::to_string(i) + " integer 0 1 0 9 1 1\n";
  save("bare.def", text);
  const auto lines = [](const string& of) { return std::ranges::count(of, '\n'); };
  const string some = run("lint bare.def").out, all = run("lint --all bare.def").out;
  EXPECT_TRUE(
      some.ends_with("\n1,010 more of D101 not shown; --all shows them\n"
                     "1,030 warnings in 1 file\n"))
      << some.substr(some.size() - 200);
  EXPECT_EQ(lines(some), 20 * 3 + 2);
  EXPECT_EQ(lines(all), 1030 * 3 + 1);
  EXPECT_EQ(json::parse(run("lint --json bare.def").out)["diagnostics"].size(), 1030U);
}

TEST_F(Lint, FixMakesItsSureRepairs) {
  save("p", "STEPS 5\nlog_file a b\nmethod SIMPLEX\n--note a b\nlines no\nthreads 2 paths x\n");
  EXPECT_EQ(run("fix s.def p").out, "");
  EXPECT_EQ(run("fix s.def p --lint P3").status, 2);
  const outcome told = run("fix --write --lint P2,P106 s.def p");
  EXPECT_EQ(told.err, "3 repairs in 1 file; nothing is left\n");
  EXPECT_EQ(get("p"),
            "steps 5\nlog_file \"a b\"\nmethod simplex\n--note a b\nlines no\nthreads 2 paths x\n");
}

/// A file without P106 is read alike in both modes; repairs of lint change no value.
TEST_F(Lint, WhatItSaysOfTheModesIsSo) {
  const string keys[] = {"steps", "STEPS", "log_file", "method", "range", "paths", "stp"};
  const string values[] = {" 5", " = a b", " a,b", " \"a b\"", " 1 2", " SIMPLEX", " x ! y"};
  std::mt19937 random(5);
  int alike = 0;
  for (int round = 0; round < 100; round++) {
    string text;
    for (int line = 0; line < 2; line++) {
      text += keys[random() % std::size(keys)];  // in an order that each compiler keeps
      text += values[random() % std::size(values)] + "\n";
    }
    const string findings = inparameters(text);
    if (findings.find("error") != findings.npos) continue;
    const string shown = run("convert s.def p --to json").out;
    const bool same = shown == run("convert --tokens s.def p --to json").out;
    EXPECT_TRUE(same || findings.find("P106") != findings.npos) << text << findings;
    alike += same ? 1 : 0;
    run("fix --write --lint P s.def p");
    EXPECT_EQ(run("convert s.def p --to json").out, shown) << text << get("p");
  }
  EXPECT_GT(alike, 5);
}

TEST_F(Lint, AnyBytesAreReadWithoutHarm) {
  std::mt19937 random(11);
  const string words = "steplim tol x.scale('a') = 1 \"tie e$v\n\n* optxv: ignore D1,\n \x1a\t*#,";
  for (int round = 0; round < 12; round++) {
    string text;
    for (int i = 0; i < 3000; i++)
      text += round % 2 == 0 ? static_cast<char>(random()) : words[random() % words.size()];
    save("junk", text);
    save("junk.def", everykind() + text);
    for (const string files : {"s.def junk", "junk.def junk", "junk junk"}) {
      const outcome told = run("lint --json --select D,P " + files);
      EXPECT_LE(told.status, 1) << files;
      EXPECT_TRUE(json::accept(told.out)) << files;
    }
  }
}

}  // namespace
}  // namespace optxv::test
