#include <algorithm>
#include <nlohmann/json.hpp>
#include <random>
#include <regex>
#include <tuple>

#include "commandrun.h"
#include "support/everykind.h"
#include "support/sanitized.h"

namespace optxv::test {
namespace {

using nlohmann::json;
using std::string;

const char* const settings =
    "steplim 7\nverbose\nrange * 4\nlogname = my log\nnames one\nnames \"two, three\"\n"
    "--note first try\nx.scale('a',*) = 2.5\ntie e('i')$v = yes\n";

class Command : public commandrun {
 protected:
  void SetUp() override { save("s.def", everykind()); }
};

TEST_F(Command, UnusableFilesAreNamedWithTheReason) {
  const std::string none = "none: error: cannot be read: No such file or directory\n",
                    name(256, 'n');
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"check s.def . good none",
       ".: error: cannot be read: Is a directory\n" + none + "2 errors in 4 files, 2 not read\n",
       ""},
      {"check s.def " + name,
       name + ": error: cannot be read: File name too long\n1 error in 2 files, 1 not read\n", ""},
      {"help none", "", none},
      {"show s.def none", "0 of 24 options are set\n", none},
      {"show s.def >/dev/full", "",
       "optxv: error: standard output: cannot be written: No space left on device\n"}};
  save("good", "steplim 5\n");
  for (const auto& [arguments, out, err] : rows) {
    const outcome got = run(arguments);
    EXPECT_EQ(std::tuple(got.status, got.out, got.err), std::tuple(2, out, err)) << arguments;
  }
}

TEST_F(Command, WhatTheSystemRefusesIsToldAndNotTakenForNothing) {
  const string astray = "sh -c 'mkdir gone && cd gone && rmdir ../gone && exec \"$0\" \"$@\"'",
               full = "sh -c 'exec 3>&-; ulimit -n 4 && exec \"$0\" \"$@\"'",
               looping = "sh -c 'ln -s optxv.json optxv.json; exec \"$0\" \"$@\"'";
  const std::tuple<string, string, string> rows[] = {
      {astray, "check", "the current folder cannot be found: No such file or directory\n"},
      {astray, "complete bash --host h --definition d",
       "the path of \"d\" cannot be found: No such file or directory\n"},
      {full, "lsp", "standard input: cannot be served: Too many open files\n"},
      {looping, "check",
       folder_ / "optxv.json: cannot be read: Too many levels of symbolic links\n"}};
  for (const auto& [system, arguments, sentence] : rows) {
    if (OPTXV_SANITIZED && system == full) continue;  // it opens files of its own
    const outcome got = run(arguments, system);
    EXPECT_EQ(std::tuple(got.status, got.out, got.err),
              std::tuple(2, "", "optxv: error: " + sentence))
        << arguments;
  }
}

TEST_F(Command, ModesAreSwitched) {
  save("p", "steplim 99999, tol 0.25\n");
  EXPECT_EQ(run("write --no-bounds --tokens s.def p").out,
            "free 1\nsteplim=99999\nfree 0\ntol=0.25 0.25\n");
  EXPECT_EQ(run("check --tokens s.def p").out.find("p:1:9: error: Integer range error"), 0U);
  EXPECT_EQ(run("check --no-bounds --tokens s.def p").status, 0);
  EXPECT_EQ(run("check --no-bounds s.def p").status, 1);
}

TEST_F(Command, ADashIsStandardInput) {
  save("p", "steplim 7\nread q\n");
  save("q", "tol y\n");
  save("bad", "steplim\n");
  const auto named = [](std::string text) {
    return std::regex_replace(text, std::regex("(^|\n)(p|s.def):"), "$1-:");
  };
  EXPECT_EQ(run("check s.def - bad <p").out, named(run("check s.def p bad").out));
  EXPECT_EQ(run("check bad - <p").out, named(run("check bad p").out));
  EXPECT_EQ(run("show --json - p <s.def").out, run("show --json s.def p").out);
  EXPECT_EQ(run("write --force s.def - <p").out, "steplim=7\n");
  EXPECT_EQ(run("html - <s.def").out, run("html s.def").out);
  EXPECT_EQ(run("check s.def - <&-").out,
            "-: error: cannot be read: Bad file descriptor\n1 error in 2 files, 1 not read\n");
}

TEST_F(Command, ShowPrintsATable) {
  save("p", settings);
  EXPECT_EQ(run("show s.def p").out, R"(Nr  Name     Kind         Value       Default    Set
 2  steplim  integer      7           1000       set
 4  logname  string       "my log"    "run log"  set
 7  verbose  boolean.NV   1           1          set
 9  names    strlist      one                    set
                          two, three
13  .scale   double       2.5         1          set
21  range    integer.TWO  2 4         2          second
25  --note   strlist      first try              set

7 of 25 options are set

Dot options
  x.scale('a',*) = 2.5

Indicators
  e('i')$v = 1
)");
}

TEST_F(Command, LimitsGoByTheirNames) {
  save("p",
       "d double 1 maxdouble 0 maxdouble 1 1 D\ni integer 1 maxint minint maxint 1 1 I\n"
       "r double 1 2147483647 mindouble 3e9 1 1 R\ns string 1 1E299 1 1 S\n");
  save("q", "i minint\nd 1e299\nr -1e299\n");
  EXPECT_EQ(run("show --all p q").out,
            "Nr  Name  Kind       Value      Default     Set\n"
            " 1  Help  immediate                         -\n"
            " 2  d     double     maxdouble  maxdouble   set\n"
            " 3  i     integer    minint     maxint      set\n"
            " 4  r     double     mindouble  2147483647  set\n"
            " 5  s     string     1E299      1E299       -\n\n3 of 5 options are set\n");
}

// A list under the lookup of paths is not found by its name, and so has a twin.
TEST_F(Command, ShowAsksByNumber) {
  save("d", "Path lookup\nlogname string 1 a 1 1 L\n");
  save("p", "--note one\n--note two\x1b[2J\x9b\n--ab x\n");
  const outcome got = run("show - p <d");
  EXPECT_NE(got.out.find("one"), got.out.npos) << got.out;
  EXPECT_NE(got.out.find("two\\x1B[2J\\x9B\n"), got.out.npos) << got.out;
}

TEST_F(Command, JsonHoldsTheSame) {
  save("p", std::string(settings) + "steplim 50000\n\xff\n");
  const json shown = json::parse(run("show --json s.def p").out), options = shown["options"];
  EXPECT_EQ(json({options[5]["value"], options[5]["set"], shown["dotoptions"]}), json::parse(R"([
      [2, 4], [false, true],
      [{"symbol": "x", "attribute": ".scale", "labels": ["a", "*"], "value": 2.5,
        "origin": {"file": "p", "line": 8, "column": 1, "length": 1, "road": "dot"}}]])"));
  EXPECT_EQ(json::parse(run("api --json").out)["functions"].size(), 75U);
}

TEST_F(Command, WrittenStateReadsBack) {
  save("p",
       "steplim 7\nverbose\nrange 2 4\nlogname = my log\nnames one\nnames two, three\n"
       "x.scale('a',*) = 2.5\ntie e('i')$v = yes\n");
  EXPECT_EQ(run("write s.def p -o again").out, "");
  EXPECT_EQ(run("write s.def again").out, get("again"));
  EXPECT_EQ(run("show s.def again").out, run("show s.def p").out);
}

TEST_F(Command, AnyBytesAreReadWithoutHarm) {
  std::mt19937 random(3);
  const std::string words = "steplim tol x.scale('a') = 1 \"tie e$v\n\n\n \x1a\t*#,integer";
  for (int round = 0; round < 12; round++) {
    std::string text;
    for (int i = 0; i < 3000; i++)
      text += round % 2 == 0 ? static_cast<char>(random()) : words[random() % words.size()];
    save("junk", text);
    save("junk.def", everykind() + text);
    for (const char* arguments :
         {"check junk.def junk", "show --all junk.def junk", "write s.def junk"}) {
      const outcome got = run(arguments);
      EXPECT_TRUE(got.status == 0 || got.status == 1) << arguments << ' ' << got.err.substr(0, 200);
      if (arguments[0] == 'w') continue;  // that is data, byte for byte
      const auto control = [](char c) { return (c >= 0 && c < ' ' && c != '\n') || c == 0x7F; };
      EXPECT_EQ(std::ranges::count_if(got.out + got.err, control), 0) << arguments;
    }
  }
}

}  // namespace
}  // namespace optxv::test
