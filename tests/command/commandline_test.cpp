// The words of the command line: what they come to, and what is said where they are wrong.

#include <nlohmann/json.hpp>

#include "commandrun.h"
#include "support/sanitized.h"

namespace optxv::test {
namespace {

/// A command line, its status, and how standard output and standard error begin; where nothing is
/// said of one, nothing comes there.
struct row {
  std::string words;
  int status;
  std::string out, err;
};

class Commandline : public commandrun {
 protected:
  void SetUp() override {
    save("s.def", "steplim integer 1 1000 0 10000 10 1 Step limit\n");
    save("bad", "steplim x\nstpelim 1\nsteplim y\n");
    save("warned", "steplim 99999\n");
  }
  void expect(const row& wanted) const {
    const auto begins = [](const std::string& text, const std::string& start) {
      return start.empty() ? text.empty() : text.starts_with(start);
    };
    const outcome got = run(wanted.words);
    EXPECT_EQ(got.status, wanted.status) << wanted.words;
    EXPECT_TRUE(begins(got.out, wanted.out)) << wanted.words << '\n' << got.out;
    EXPECT_TRUE(begins(got.err, wanted.err)) << wanted.words << '\n' << got.err;
  }
};

/// What is wrong, and the note beneath.
row wrong(const std::string& words, const std::string& error, const std::string& note) {
  return {words, 2, "", "optxv: error: " + error + "\noptxv: note: " + note + '\n'};
}

TEST_F(Commandline, WordsThatAskForText) {
  const std::string version = "optxv 2.0.0, API version 2\nlibrary: optxv  ";
  const row rows[] = {
      {"", 2, "", "usage: optxv SUBCOMMAND ...\n  check       Report everything that is wrong"},
      {"--version", 0, version, ""},
      {"-h", 0, "Check, show, rewrite and document", ""},
      {"reference --help", 0,
       "Write a reference of the options: a page with a search box, Markdown, or a manual page\n"
       "Usage: optxv reference DEFINITION -o TARGET [FLAGS]\n\nWords:\n  DEFINITION   ",
       ""},
      {"--help >/dev/full", 2, "",
       "optxv: error: standard output: cannot be written: No space left"},
      {"--subcommands >&-", 2, "", "optxv: error: standard output: cannot be written: Bad file"}};
  for (const row& each : rows) expect(each);
}

TEST_F(Commandline, WrongWordsGetTheNearest) {
  const row rows[] = {
      wrong("polish s.def", "no subcommand is called \"polish\"", "see optxv --help"),
      wrong("chekc s.def", "no subcommand is called \"chekc\"", "did you mean \"check\"?"),
      wrong("--versoin", "optxv has no flag \"--versoin\"", "did you mean \"--version\"?"),
      wrong("check s.def --no-bound", "check has no flag \"--no-bound\"",
            "did you mean \"--no-bounds\"?"),
      wrong("check -json s.def", "check has no flag \"-json\"", "did you mean \"--json\"?"),
      wrong("check \"$(printf %b '--\\033[31m')\"", "check has no flag \"--\\x1B[31m\"",
            "see optxv check --help"),
      wrong("show --strict s.def", "show has no flag \"--strict\"",
            "it is a flag of check and lint"),
      wrong("--json show s.def", "optxv has no flag \"--json\"",
            "it is a flag of check, lint, show, origin, diff and api, and must come after the "
            "subcommand"),
      wrong("html s.def one", "one word too many: \"one\"", "see optxv html --help"),
      wrong("generate s.def --lang ada", "--lang cannot be \"ada\"",
            "it is c, c++, python, fortran or pascal"),
      wrong("generate s.def --lang ''", "--lang cannot be \"\"",
            "it is c, c++, python, fortran or pascal"),
      wrong("check", "DEFINITION is required",
            "without one, check looks for optxv.json here and in the folders above"),
      wrong("reference s.def", "--output is required", "see optxv reference --help"),
      wrong("show --all --set s.def", "--all excludes --set", "see optxv show --help"),
      wrong("check --max-errors -1 s.def",
            "--max-errors: a number is expected, of at most 9 digits, saw \"-1\"",
            "see optxv check --help")};
  for (const row& each : rows) expect(each);
}

TEST_F(Commandline, CheckCountsErrorsAsItIsTold) {
  const std::string first = "bad:1:9: error: Integer expected, for option \"steplim\" saw \"x\"\n";
  const std::string taken = "warned:1:9: warning: ";
  const row rows[] = {{"check s.def warned --no-bounds", 0, taken, ""},
                      {"check s.def warned --no-bounds --strict", 1, taken, ""},
                      {"check s.def --strict", 0, "no errors in 1 file\n", ""},
                      {"check s.def none --strict", 2, "none: error: cannot be read", ""},
                      {"check s.def bad --max-errors 1", 1, first, ""}};
  for (const row& each : rows) expect(each);
  const std::string all = "3 errors in 2 files\n", caret = "      |         ^\n";
  const std::pair<const char*, std::string> endings[] = {
      {"1", first + "    1 | steplim x\n" + caret + "2 more errors not shown\n" + all},
      {"2",
       "did you mean \"steplim\"?\nbad:2:1: help: write \"steplim 1\"\n1 more error not shown\n" +
           all},
      {"0", "    3 | steplim y\n" + caret + all}};
  for (const auto& [most, ending] : endings)
    EXPECT_TRUE(run(std::string("check s.def bad --max-errors ") + most).out.ends_with(ending))
        << most;
  const auto found = nlohmann::json::parse(run("check --json s.def bad --max-errors 1").out);
  EXPECT_EQ(found["diagnostics"].size(), 1U);
  EXPECT_EQ(found["summary"]["errors"], 3);
  EXPECT_EQ(found["summary"]["omitted"], 2);
}

// A sanitizer takes more address space than any limit leaves.
#if !OPTXV_SANITIZED
TEST_F(Commandline, MemoryThatRunsOutIsToldOnce) {
  save("big.def", std::string(std::size_t{48} << 20, 'a'));
  std::string records;
  for (int i = 0; i < 100000; i++) records += "o" + std::to_string(i) + " integer 0 1 0 9 1 1 x\n";
  save("many.def", records);
  for (const std::string file : {"big.def", "many.def"}) {  // the command's memory, the library's
    const std::string line = "cd '" + folder_.path() + "' && ulimit -v 32000 && '" +
                             OPTXV_COMMAND_FILE "' check " + file + " >.out 2>.err";
    const int status = std::system(line.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 2) << file;
    EXPECT_EQ(get(".out") + get(".err"), "optxv: error: out of memory\n") << file;
  }
}
#endif

}  // namespace
}  // namespace optxv::test
