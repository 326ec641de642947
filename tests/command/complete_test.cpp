// What shells are told to offer, and the scripts that ask.

#include <sys/stat.h>

#include <algorithm>

#include "commandrun.h"
#include "completion/optioncandidates.h"
#include "optxv/optxv.hpp"
#include "support/everykind.h"

namespace optxv::test {
namespace {

using std::string;

const char* const definition =
    "g group 1 1 General\ntime_limit double 1 3600 0 1e6 10 1 Seconds\n"
    "Steps integer 2 1000 0 100000 10 1 Steps\nlog_file string 3 run.log 12 1 Log\n"
    "method enumstr 6 auto 14 1 Method\n auto 15 A\n simplex 16 S\n"
    "xray boolean 7 1 1 1 Ray\ndive boolean.NV 9 0 1 1 Dive\nrange double.TWO 8 1 0 9 1 1 Range\n"
    "Sites integer 10 1 0 9 0 1 Hidden\nclock synonym time_limit\nold deprecated\n"
    " clock Use time_limit\nc integer 11 1 0 9 1 1 C\n";

class Complete : public commandrun {
 protected:
  void SetUp() override { save("s.def", definition); }
  void expect(const string& words, const string& answer) const {
    const outcome got = run("complete " + words);
    EXPECT_EQ(got.out, answer) << words;
    EXPECT_EQ(got.err, "") << words;
    EXPECT_EQ(got.status, 0) << words;
  }
};

TEST_F(Complete, OffersWhatTheRowsSay) {
  const std::pair<string, string> rows[] = {
      {"sho", "words\nshow\tShow options, values and defaults\n"},
      {"--sub",
       "words\n--subcommands\tPrint what the subcommands take as JSON, for other programs\n"},
      {"poli", "words\n"},
      {"polish ''", "words\n"},
      {"check ''", "files\t\n"},
      {"check a b --max-errors 1 ''", "files\t\n"},
      {"check --max-errors ''", "words\n"},
      {"check a --strict --str", "words\n"},
      {"show a --all --se", "words\n"},
      {"write a -o x ''", "files\t\n"},
      {"write a -ox", "files\t-o\n"},
      {"write a --output=x", "files\t--output=\n"},
      {"reference a -o ''", "folders\t\n"},
      {"reference a --force=x", "words\n"},
      {"generate a --lang f", "words\nfortran\n"},
      {"generate a --lang=F", "words\n--lang=Fortran\n"},
      {"api ''",
       "words\n--json\tPrint JSON, for other programs\n-h\tShow the words and flags, with "
       "examples\n"
       "--help\tShow the words and flags, with examples\n"},
      {"api -- --j", "words\n"},
      {"complete f", "words\nfish\n"},
      {"help s.def time", "words\ntime_limit\tSeconds\n"},
      {"help s.def --search a -- ti", "words\n"},
      {"help -- s.def ti", "words\ntime_limit\tSeconds\n"},
      {"help s.def S", "words\nSteps\tSteps\n"},
      {"help s.def Si", "words\nSites\tHidden\n"},
      {"help s.def st", "words\nsteps\tSteps\n"},
      {"help s.def c", "words\nc\tC\n"},
      {"help s.def cl", "words\nclock\tsynonym for time_limit\n"}};
  for (const auto& [words, answer] : rows) expect("zsh -- optxv " + words, answer);
}

TEST_F(Complete, OffersTheOptionsOfAProgram) {
  const std::pair<string, string> rows[] = {
      {"ti", "words\ntime_limit=\tSeconds\n"},
      {"--ti", "words\n--time_limit=\tSeconds\n"},
      {"--time-l", "words\n--time-limit=\tSeconds\n"},
      {"--y_", "words\n"},
      {"-t", "files\t\n"},
      {"div", "files\t\n"},
      {"--div", "words\n--dive\tDive\n"},
      {"-- ti", "files\t\n"},
      {"time_limit=", "words\ntime_limit=3600\tdefault, from 0 to 1000000\n"},
      {"clock=3", "words\nclock=3600\tdefault, from 0 to 1000000\n"},
      {"method=", "words\nmethod=auto\tA (default)\nmethod=simplex\tS\n"},
      {"METHOD=S", "words\nMETHOD=Simplex\tS\n"},
      {"--method s", "words\nsimplex\tS\n"},
      {"--method=auto s", "words\nsteps=\tSteps\n"},
      {"--method --s", "words\n--steps=\tSteps\n"},
      {"--dive me", "words\nmethod=\tMethod\n"},
      {"--xray y", "words\nyes\tdefault\n"},
      {"--xray ti", "words\ntime_limit=\tSeconds\n"},
      {"--range 3 ''", "words\n1\tdefault, from 0 to 9\n"},
      {"--log_file r", "words\nrun.log\tdefault\n"},
      {"--log_file a", "files\t\n"},
      {"log_file=a", "files\tlog_file=\n"},
      {"--range 3 4 ''",
       "words\ntime_limit=\tSeconds\nSteps=\tSteps\nlog_file=\tLog\nmethod=\tMethod\n"
       "xray=\tRay\nrange=\tRange\nc=\tC\n"},
      {"model=a", "files\t\n"}};
  for (const auto& [words, answer] : rows)
    expect("fish --host prog --definition s.def -- prog " + words, answer);
}

/// A line, of which bash replaces what follows |, and the replies.
TEST_F(Complete, AnswersBashInItsOwnWriting) {
  save("o.def", "g group 1 1 G\nt enumstr 1 a 1 1 T\n a 1\n \"x y:z'!\" 1 x\n \"x-\" 1 x\n");
  const std::pair<string, string> rows[] = {{R"(p t=|x\ )", R"(x\ y:z\'\!)"},
                                            {R"(p t=x\ y:|)", R"(z\'\!)"},
                                            {R"(p "|t=x )", R"(t=x y:z'"'!'")"},
                                            {R"(p '|t=x )", R"(t=x y:z'\''!)"},
                                            {R"(p t="|x )", R"(x y:z'"'!'")"},
                                            {R"(p a"b\"" 2>"t"=x t=|x\ )", R"(x\ y:z\'\!)"},
                                            {R"(p 12345|6 t=)", "t=a\nt=x\\ y:z\\'\\!\nt=x-"},
                                            {R"(p "a\"b" "\x" t=|x\ )", R"(x\ y:z\'\!)"},
                                            {R"(p a 2>&1 >>out t=|x\ )", R"(x\ y:z\'\!)"},
                                            {R"(p 'a b' x1>out   t=|x\ )", R"(x\ y:z\'\!)"},
                                            {R"(p t=|x\)", "x\\ y:z\\'\\!\nx-"}};
  for (const auto& [line, replies] : rows) {
    const std::size_t bar = line.find('|');
    save("line", line.substr(0, bar) + line.substr(bar + 1));
    save("replaced", line.substr(bar + 1));
    expect("bash --host p --definition o.def -- \"$(cat line)\" \"$(cat replaced)\"",
           "words\n" + replies + "\n");
  }
  save("line", "p >t=");
  expect("bash --host p --definition o.def -- \"$(cat line)\" 't='", "files\n");
}

/// Every name and value that is offered, in a table of that rule.
std::vector<string> offeredsettings(const string& file) {
  const command::optioncandidates table(file);
  std::vector<string> all;
  for (const string typed : {"", "--"})
    for (const command::candidate& name :
         table.argument(std::vector<string>{"prog", typed}).candidates) {
      const std::vector<string> words = {"prog", name.word};
      const auto values = table.argument(words).candidates;
      if (!name.word.ends_with('=')) all.push_back(name.word);
      for (const command::candidate& each : values) all.push_back(each.word);
    }
  return all;
}

TEST_F(Complete, OffersNothingThatArgumentsRefuse) {
  for (const string rule : {"Normal", "Path", "Minos"}) {
    save("t.def", "g group 1 1 G\n" + rule + " lookup\n" + everykind() + definition);
    options table;
    table.read_definition(folder_.path() + "/t.def");
    const std::vector<string> offered = offeredsettings(folder_.path() + "/t.def");
    EXPECT_GT(offered.size(), 30U);
    for (string each : offered) {
      std::array<char*, 3> arguments = {each.data(), each.data(), nullptr};
      int count = 2;
      table.reset_all();
      EXPECT_TRUE(table.read_arguments(count, arguments.data())) << rule << ": " << each;
      EXPECT_EQ(count, 1) << rule << ": " << each;
    }
  }
}

TEST_F(Complete, TellsNothingOfADefinitionThatIsNone) {
  save("bad", "what is\nthis\n");
  ASSERT_EQ(mkfifo((folder_.path() + "/fifo").c_str(), 0600), 0);
  for (const string file : {"bad", "none", "fifo", "-", ".", "/dev/zero", "''"}) {
    expect("fish -- optxv help " + file + " ti", "words\n");
    expect("fish --host p --definition '~/" + file + "' -- p --ti", "words\n");
    expect("fish --host p --definition " + (file == "''" ? "none" : file) + " -- p --ti",
           "words\n");
  }
}

TEST_F(Complete, PrintsScripts) {
  const outcome old = run("--completion");
  EXPECT_EQ(old.out, run("complete bash").out);
  EXPECT_NE(old.out.find("complete -F _optxv optxv\n"), old.out.npos);
  save("it's.def", definition);
  const string host = run("complete fish --host 'so\\l' --definition \"it's.def\"").out;
  EXPECT_NE(host.find("--host 'so\\\\l' --definition '/"), host.npos);
  EXPECT_NE(host.find("/it\\'s.def' -- "), host.npos);
  EXPECT_NE(host.find("complete -c 'so\\\\l' -n __optxv_of_so_5cl -f"), host.npos);
  const std::pair<string, string> wrong[] = {
      {"tcsh", "SHELL cannot be \"tcsh\"\noptxv: note: it is bash, zsh or fish\n"},
      {"bash --host x", "--host and --definition belong together\n"},
      {"bash --host \"$(printf 'a\\nb')\" --definition x",
       "\"a\\x0Ab\" cannot stand in a script\n"}};
  for (const auto& [words, error] : wrong) {
    const outcome got = run("complete " + words);
    EXPECT_EQ(got.err, "optxv: error: " + error);
    EXPECT_EQ(got.out, "");
    EXPECT_EQ(got.status, 2);
  }
}

}  // namespace
}  // namespace optxv::test
