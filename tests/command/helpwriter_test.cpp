// The help of a definition as its readers see it.

#include "commandrun.h"

namespace optxv::test {
namespace {

const char* const definition =
    "limits group 1 1 Limits\nempty group 2 1 Nobody\nsecret group 3 0 Secret\n"
    "step_limit integer.OPT 1 100 0 maxint 1 1 Step limit\n Stops the run\n after so many steps.\n"
    "x10 boolean.NV 2 0 1 1 Tenth\nx9 integer.TWO 3 1 0 9 1 1 Ninth\n"
    "method enumstr 4 auto 1 1 Way of working\n auto 1 By the step\n \"two words\" 2 Both\n"
    "fast macro 1 1 Fast\n x10\n x9\npair multilist 9 1 1 Pair\n x9\n x10\n"
    "names strlist 5 1 1 Names\n.scale double 6 1 eps 10 1 1 Scale\n"
    "hidden integer 7 1 0 9 1 3 Hidden\nlone integer 8 1 0 9 1 8 No group\n"
    "steplim synonym step_limit\nstepmax synonym step_limit\nsteplim deprecated\n"
    " steplim Use step_limit\nold deprecated\n x9 Use x10.\n";

class Helpwriter : public commandrun {
 protected:
  void SetUp() override { save("s.def", definition); }
};

TEST_F(Helpwriter, BlocksSayWhatTheUserMayWrite) {
  const std::pair<std::string, std::string> rows[] = {
      {"step_limit",
       "step_limit: Step limit\n"
       "    integer, range 0 to maxint, default 100\n"
       "    The value may be left out; that sets the default.\n"
       "    Stops the run\n"
       "    after so many steps.\n"
       "    Synonyms: steplim (deprecated), stepmax\n"},
      {"x10",
       "x10: Tenth\n    boolean, default 0\n    It takes no value: its name alone sets it.\n"},
      {"x9",
       "x9: Ninth\n"
       "    integer, range 0 to 9, default 1\n"
       "    It takes two values. One alone sets both, and a * keeps the one in its place.\n"
       "    Deprecated: Use x10.\n"},
      {"method",
       "method: Way of working\n"
       "    enumstr, default auto\n"
       "      auto         By the step\n"
       "      \"two words\"  Both\n"},
      {"fast",
       "fast: Fast\n    macro\n    It hands its value to each of these:\n"
       "      x10  Tenth\n      x9   Ninth\n"},
      {"pair",
       "pair: Pair\n    multilist\n    It takes a value for each of these, in this order:\n"
       "      x9   Ninth\n      x10  Tenth\n"},
      {"names", "names: Names\n    strlist\n    It is a list of texts: each use adds one.\n"},
      {".scale",
       ".scale: Scale\n    double, range 1E-20 to 10, default 1\n"
       "    It belongs to a symbol of the model, as in x.scale('label') = value.\n"},
      {"hidden", "hidden: Hidden\n    integer, range 0 to 9, default 1\n"}};
  for (const auto& [name, block] : rows) EXPECT_EQ(run("help s.def " + name).out, block);
  EXPECT_EQ(run("help s.def STEPMAX").out,
            "STEPMAX is a synonym for step_limit\n" + rows[0].second);
}

TEST_F(Helpwriter, GroupsWithoutOptionsAreLeftOut) {
  EXPECT_EQ(run("help s.def").out,
            "Limits\n"
            "  .scale      Scale\n"
            "  fast        Fast\n"
            "  method      Way of working\n"
            "  names       Names\n"
            "  pair        Pair\n"
            "  step_limit  Step limit\n"
            "  steplim     synonym for step_limit (deprecated)\n"
            "  stepmax     synonym for step_limit\n"
            "  x9          Ninth (deprecated)\n"
            "  x10         Tenth\n"
            "\nOptions without a group\n"
            "  lone        No group\n");
  save("p", "b integer 1 1 0 9 1 1 B\na integer 1 1 0 9 1 1 A\n");
  const outcome got = run("help p");
  EXPECT_EQ(got.out,
            "a: A\n    integer, range 0 to 9, default 1\nb: B\n    integer, range 0 to 9, default "
            "1\n");
  EXPECT_EQ(got.err, "optxv: note: no option stands in a group that the help shows\n");
}

TEST_F(Helpwriter, LinesAreBrokenAtTheWidthOfTheTerminal) {
  EXPECT_EQ(run("help s.def x9", "COLUMNS=40").out,
            "x9: Ninth\n"
            "    integer, range 0 to 9, default 1\n"
            "    It takes two values. One alone sets\n"
            "    both, and a * keeps the one in its\n"
            "    place.\n"
            "    Deprecated: Use x10.\n");
  EXPECT_NE(run("help s.def", "COLUMNS=1")
                .out.find("  steplim     synonym for\n"
                          "              step_limit\n"),
            std::string::npos);
}

TEST_F(Helpwriter, WordsAreFoundInNamesBeforeTexts) {
  const std::pair<std::string, std::vector<std::string>> rows[] = {
      {"step", {"step_limit", "method"}},
      {"STEP-LIM", {"step_limit"}},
      {"stepmax", {"step_limit"}},
      {"step way", {"method"}},
      {"both", {"method"}},
      {"'so many'", {"step_limit"}}};
  for (const auto& [words, names] : rows) {
    std::string expected;
    for (const std::string& each : names) expected += run("help s.def " + each).out;
    EXPECT_EQ(run("help s.def --search " + words).out, expected) << words;
  }
}

TEST_F(Helpwriter, WhatIsNotThereIsSaidAlone) {
  const std::string name(300, 'n');
  const std::pair<std::string, std::string> rows[] = {
      {"steplimt", "is called \"steplimt\"\noptxv: note: did you mean \"steplim\""},
      {name, "is called \"" + name + "\"\noptxv: note: --search looks through the names and texts"},
      {"--search step hidden", "has \"step\" and \"hidden\" in its names and texts\n"}};
  for (const auto& [arguments, told] : rows) {
    const outcome got = run("help s.def " + arguments);
    EXPECT_EQ(got.out + std::to_string(got.status), "1") << arguments;
    EXPECT_EQ(got.err.find("optxv: error: no option " + told), 0U) << got.err;
  }
}

TEST_F(Helpwriter, NothingSteersATerminal) {
  save("p", "b boolean 1 0 1 1 He\x9blp\xe2\x80\xae\tx\n \x1b]0;title\x07 \xc3\xa9\n");
  const std::string help = "He\\x9Blp\\xE2\\x80\\xAE x\n", title = "\\x1B]0;title\\x07 \xc3\xa9\n";
  EXPECT_EQ(run("help p b").out, "b: " + help + "    boolean, default 0\n    " + title);
  const std::string library = run("help p 2").out;
  EXPECT_NE(library.find(help), library.npos) << library;
  EXPECT_NE(library.find(title), library.npos) << library;
}

}  // namespace
}  // namespace optxv::test
