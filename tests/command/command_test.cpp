#include <algorithm>
#include <nlohmann/json.hpp>
#include <random>
#include <regex>
#include <tuple>

#include "commandrun.h"

namespace optxv::test {
namespace {

using nlohmann::json;

const char* const definition =
    "comment eolcomm #\nsteplim integer 1 1000 0 10000 10 1 Step limit\n Stops the run.\n"
    "tol double 2 0.5 0 1 11 1 Tolerance\nlogname string 3 \"run log\" 12 1 Log file\n"
    "scale boolean 4 1 13 1 Scale\nverbose boolean.NV 5 0 14 1 Talk\n"
    "range integer.TWO 6 1 0 9 15 1 Range\n"
    "method enumstr 7 primal 16 1 Method\n primal 1 Primal\n dual 2 Dual\n"
    "names strlist 8 17 1 Names\nrf immediate ReadFile 0 1 Read\n"
    ".weight double 9 1 0 100 29 1 Weight\nstplim synonym steplim\nstplim deprecated\n"
    " stplim Use steplim\nrowtype indicator\n";
const char* const settings =
    "steplim 7\nverbose\nrange * 4\nlogname = my log\nnames one\nnames \"two, three\"\n"
    "--note first try\nx.weight('a',*) = 2.5\nrowtype e('i')$v = yes\n";

class Command : public commandrun {
 protected:
  void SetUp() override { save("s.def", definition); }
};

TEST_F(Command, CheckTellsPlaceLineAndRemedy) {
  save("q", "steplim 5\ntol y\n");
  save("p",
       "* note\n\nsteplim = 50000 # 50000\n\tstelpim 4\r\nx.weigth 1\nstplim 7\nrf q\nrf \"no "
       "such\"\n\n\n\x1b[31m\xc2\x9b\xc3\xa9\xff 5\nsteplim\x1a 5\n* " +
           std::string(2000, 'c') + "\nlogname " + std::string(1100, 'x') + "\n");
  const outcome got = run("check s.def p");
  EXPECT_EQ(got.out,
            R"(p:12:8: warning: byte 26 stands for the end of the line: what follows it is not read
   12 | steplim\x1A 5
      |        ^~~~
p:14:1021: warning: the line has 1,108 bytes, of which the first 1,020 are read
   14 | ...)" + std::string(100, 'x') +
                "...\n      | " + std::string(53, ' ') + R"(^
p:3:11: error: Integer range error for option "steplim" saw "50000"
    3 | steplim = 50000 # 50000
      |           ^~~~~
p:3:11: note: Valid range is 0 to 10000
p:4:2: error: Unknown option "stelpim"
    4 |  stelpim 4
      |  ^~~~~~~
p:4:2: note: did you mean "steplim"?
p:5:2: error: unknown .suffix ".weigth" for key "x"
    5 | x.weigth 1
      |  ^~~~~~~
p:5:2: note: did you mean ".weight"?
p:5:10: error: Option keyword expected, saw "1"
    5 | x.weigth 1
      |          ^
p:6:1: warning: deprecated synonym "stplim"; Use steplim
    6 | stplim 7
      | ^~~~~~
q:2:5: error: Double expected for option "tol" saw "y"
    2 | tol y
      |     ^
p:8:5: error: Cannot open parameter file "no such"
    8 | rf "no such"
      |     ^~~~~~~
p:8:5: note: Error code = 2; No such file or directory
p:11:1: error: Option keyword expected, saw "\x1B"
   11 | \x1B[31m\xC2\x9Bé\xFF 5
      | ^~~~
p:12:1: error: Bad separator after key "steplim"
   12 | steplim\x1A 5
      | ^~~~~~~
8 errors, 3 warnings in 2 files
)");
  EXPECT_EQ(got.err + std::to_string(got.status), "1");
}

TEST_F(Command, CheckTellsOfTheWholeFile) {
  const std::tuple<const char*, const char*, int, const char*> rows[] = {
      {"check s.def p", "x.weight('a') = 2\nrowtype e$v = yes\n", 0,
       "no errors in 2 files, 1 dot option, 1 indicator\n"},
      {"check s.def p", "\xEF\xBB\xBF* c\n", 1,
       R"(p:1:1: note: the first line begins with a byte-order mark (UTF-8), which the language does not know
    1 | \xEF\xBB\xBF* c
      | ^~~~~~~~~~~~
p:1:1: note: save the file as plain text without the mark
p:1:1: error: Option keyword expected, saw "\xEF"
    1 | \xEF\xBB\xBF* c
      | ^~~~
1 error in 2 files
)"},
      {"check p", "a integr 1 5 0 9 1 1 x\n", 1,
       R"(p:1:3: error: Unknown option type "integr" for option "a"
    1 | a integr 1 5 0 9 1 1 x
      |   ^~~~~~
p:1:3: note: did you mean "integer"?
p: warning: the definition declares no option
1 error, 1 warning in 1 file
)"},
      {"check p", "s string 1 a 1 1 Name\n of the file\nc double 1 0 0 1 0 1 x\n", 0,
       "p:2: warning: the definition ends here, since the line neither begins a record nor "
       "continues one\n    2 |  of the file\np:2: note: 1 record further down is not read\n"
       "1 warning in 1 file\n"}};
  for (const auto& [arguments, content, status, out] : rows) {
    save("p", content);
    const outcome got = run(arguments);
    EXPECT_EQ(got.out, out);
    EXPECT_EQ(got.err + std::to_string(got.status), std::to_string(status)) << content;
  }
}

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
      {"write s.def good -o none/x", "",
       "none/x: error: cannot be written: No such file or directory\n"},
      {"write s.def good -o /dev/full", "",
       "/dev/full: error: cannot be written: No space left on device\n"}};
  save("good", "steplim 5\n");
  for (const auto& [arguments, out, err] : rows) {
    const outcome got = run(arguments);
    EXPECT_EQ(std::tuple(got.status, got.out, got.err), std::tuple(2, out, err)) << arguments;
  }
}

TEST_F(Command, EachFileHasAQueueOfItsOwn) {
  std::string bad;
  for (int i = 0; i < 5100; i++) bad += "zzz" + std::to_string(i) + " 1\n";
  save("many", bad), save("one", "steplim x\n");
  const std::string out = run("check s.def many one").out;
  const auto full = out.find("many: error: Maximum of 5000 messages reached\nmany: note: ");
  ASSERT_NE(full, std::string::npos);
  EXPECT_NE(out.find("one:1:9: error: ", full), std::string::npos);
  EXPECT_TRUE(out.ends_with("\n5,001 errors in 3 files\n"));
}

TEST_F(Command, ModesAreSwitched) {
  save("p", "steplim 99999, tol 0.25\n");
  EXPECT_EQ(run("write --no-bounds --tokens s.def p").out, " 1\nsteplim=99999\n 0\ntol=0.25\n");
  EXPECT_EQ(run("check --tokens s.def p").out.find("p:1:9: error: Integer range error"), 0U);
  EXPECT_EQ(run("check --no-bounds --tokens s.def p").status, 0);
  EXPECT_EQ(run("check --no-bounds s.def p").status, 1);
}

TEST_F(Command, ADashIsStandardInput) {
  save("p", "steplim 7\nrf q\n"), save("q", "tol y\n"), save("bad", "steplim\n");
  const auto named = [](std::string text) {
    return std::regex_replace(text, std::regex("(^|\n)(p|s.def):"), "$1-:");
  };
  EXPECT_EQ(run("check s.def - bad <p").out, named(run("check s.def p bad").out));
  EXPECT_EQ(run("check bad - <p").out, named(run("check bad p").out));
  EXPECT_EQ(run("show --json - p <s.def").out, run("show --json s.def p").out);
  EXPECT_EQ(run("write s.def - <p").out, "steplim=7\n");
  EXPECT_EQ(run("html - <s.def").out, run("html s.def").out);
  EXPECT_EQ(run("check s.def - <&-").out,
            "-: error: cannot be read: Bad file descriptor\n1 error in 2 files, 1 not read\n");
}

TEST_F(Command, ShowPrintsATable) {
  save("p", settings);
  EXPECT_EQ(run("show s.def p").out,
            "Nr  Name     Kind         Value       Default    Set\n"
            " 2  steplim  integer      7           1000       set\n"
            " 4  logname  string       \"my log\"    \"run log\"  set\n"
            " 6  verbose  boolean.NV   0           0          set\n"
            " 7  range    integer.TWO  1 4         1          second\n"
            " 9  names    strlist      one                    set\n"
            "                          two, three\n"
            "11  .weight  double       2.5         1          set\n"
            "12  --note   strlist      first try              set\n"
            "\n7 of 12 options are set\n"
            "\nDot options\n  x.weight('a',*) = 2.5\n"
            "\nIndicators\n  e('i')$v = 1\n");
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

TEST_F(Command, HelpWithoutGroupsGoesByName) {
  save("p", "b integer 1 1 0 9 1 1 B\na integer 1 1 0 9 1 1 A\n");
  const outcome got = run("help p");
  EXPECT_EQ(got.out, run("help p 2").out);
  EXPECT_LT(got.out.find("a: A"), got.out.find("b: B"));
  EXPECT_EQ(got.err, "optxv: note: no option stands in a group that the help shows\n");
}

TEST_F(Command, HelpSteersNoTerminal) {
  save("p", "b boolean 1 0 1 1 He\x9blp\xe2\x80\xae\tx\n \x1b]0;title\x07 \xc3\xa9\n");
  const std::string out = run("help p b").out;
  EXPECT_NE(out.find("He\\x9Blp\\xE2\\x80\\xAE x\n"), out.npos) << out;
  EXPECT_NE(out.find("\\x1B]0;title\\x07 \xc3\xa9\n"), out.npos) << out;
}

TEST_F(Command, JsonHoldsTheSame) {
  save("p", std::string(settings) + "steplim 50000\n\xff\n");
  const json shown = json::parse(run("show --json s.def p").out), options = shown["options"];
  EXPECT_EQ(json({options[3]["value"], options[3]["set"], shown["dotoptions"]}), json::parse(R"([
      [1, 4], [false, true],
      [{"symbol": "x", "attribute": ".weight", "labels": ["a", "*"], "value": 2.5}]])"));
  EXPECT_EQ(json::parse(run("check --json s.def p").out)["diagnostics"][0],
            json::parse(R"({"severity": "error", "kind": "optMsgValueError",
      "file": "p", "line": 10, "column": 9, "length": 5, "source": "steplim 50000",
      "text": "Integer range error for option \"steplim\" saw \"50000\"",
      "notes": ["Valid range is 0 to 10000"]})"));
  EXPECT_EQ(json::parse(run("api --json").out)["functions"].size(), 75U);
}

TEST_F(Command, WrittenStateReadsBack) {
  save("p",
       "steplim 7\nverbose\nrange 2 4\nlogname = my log\nnames one\nnames two, three\n"
       "x.weight('a',*) = 2.5\nrowtype e('i')$v = yes\n");
  EXPECT_EQ(run("write s.def p -o again").out, "");
  EXPECT_EQ(run("write s.def again").out, get("again"));
  EXPECT_EQ(run("show s.def again").out, run("show s.def p").out);
}

TEST_F(Command, AnyBytesAreReadWithoutHarm) {
  std::mt19937 random(3);
  const std::string words = "steplim tol x.weight('a') = 1 \"rowtype e$v\n\n\n \x1a\t*#,integer";
  for (int round = 0; round < 12; round++) {
    std::string text;
    for (int i = 0; i < 3000; i++)
      text += round % 2 == 0 ? static_cast<char>(random()) : words[random() % words.size()];
    save("junk", text), save("junk.def", definition + text);
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
