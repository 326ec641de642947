// What check finds and how it is told.

#include <nlohmann/json.hpp>
#include <regex>
#include <tuple>

#include "commandrun.h"

namespace optxv::test {
namespace {

using nlohmann::json;
using std::string;

const char* const definition =
    "c eolcomm !\ng group 1 1 General\n"
    "time_limit double 1 3600 0 1e6 10 1 Time\nsteps integer 2 1000 0 100000 10 1 Steps\n"
    "log_file string 3 run.log 12 1 Log\nquiet boolean.NV 4 1 13 1 Quiet\n"
    "scale boolean 5 1 13 1 Scale\nmethod enumstr 6 auto 14 1 Method\n auto 15 A\n simplex 16 S\n"
    "range double.TWO 9 0 0 100 22 1 Range\npaths strlist 11 24 1 Where\n"
    "rf immediate ReadFile 25 1 Read\nlines immediate EolFlag 25 1 Mode\n"
    "old integer.OPT 14 1 0 9 10 1 Old\nmarks macro 3 1 Both\n scale\n quiet\n"
    ".prior integer 12 0 0 1000 29 1 Priority\ntlim synonym time_limit\ntlim deprecated\n"
    " tlim Use time_limit\ngone obsolete\n old Not here\n";

class Check : public commandrun {
 protected:
  void SetUp() override { save("s.def", definition); }
  /// What check prints, and 1 if there is no place.
  string check(const string& arguments) const {
    return std::regex_replace(run("check " + arguments).out, std::regex(folder_.path()), "HERE");
  }
  /// The same without the lines of the source.
  string told(const string& arguments) const {
    return std::regex_replace(check(arguments), std::regex("(^|\n) *[0-9]* \\|[^\n]*(?=\n)"), "");
  }
};

TEST_F(Check, TellsPlaceLineAndRemedy) {
  save("q", "steps 5\ntime_limit y\n");
  save("p",
       "* note\n\nsteps = 500000 ! 500000\n\tstesp 4\r\nx.proir 1\ntlim 7\nrf q\nrf \"no such\"\n"
       "\x1b[31m\xc2\x9b\xc3\xa9\xff 5\n* " +
           string(2000, 'c') + "\nlog_file " + string(1100, 'x') + "\n");
  EXPECT_EQ(check("s.def p"),
            R"(p:3:9: error: Integer range error for option "steps" saw "500000"
    3 | steps = 500000 ! 500000
      |         ^~~~~~
p:3:9: note: Valid range is 0 to 100000
p:4:2: error: Unknown option "stesp"
    4 |  stesp 4
      |  ^~~~~
p:4:2: note: did you mean "steps"?
p:4:2: help: write "steps 4"
p:5:2: error: unknown .suffix ".proir" for key "x"
    5 | x.proir 1
      |  ^~~~~~
p:5:2: note: it also leads to: Option keyword expected, saw "1"
p:5:2: note: did you mean ".prior"?
p:5:2: help: write "x.prior 1"
p:6:1: warning: deprecated synonym "tlim"; Use time_limit
    6 | tlim 7
      | ^~~~
p:6:1: help: write "time_limit 7"
q:2:12: error: Double expected for option "time_limit" saw "y"
    2 | time_limit y
      |            ^
p:8:5: error: Cannot open parameter file "no such"
    8 | rf "no such"
      |     ^~~~~~~
p:8:5: note: looked for in "HERE"
p:8:5: note: Error code = 2; No such file or directory
p:9:1: error: Option keyword expected, saw "\x1B"
    9 | \x1B[31m\xC2\x9Bé\xFF 5
      | ^~~~
p:11:1021: warning: the first 1,020 bytes of the line are read; 89 bytes are lost
   11 | ...xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx
      |                                                      ^
p:11:10: warning: a value has 255 bytes at most; 756 bytes are lost
   11 | log_file )" +
                string(91, 'x') + "...\n      |          " + '^' + string(90, '~') +
                "\n6 errors, 3 warnings in 2 files\n");
}

TEST_F(Check, TellsWhatWouldDo) {
  const std::pair<string, string> rows[] = {
      {"time_limit: 5", "time_limit 5"},
      {"time-limit = 5", "time_limit 5"},
      {"time limit 5", "time_limit 5"},
      {"time_limit\xc2\xa0"
       "5",
       "time_limit 5"},
      {"time_limit 1,5", "time_limit 1.5"},
      {"time_limit 10s", "time_limit 10"},
      {"time_limit inf", "time_limit 1e6"},
      {"time_limit", "time_limit 3600\" for the default"},
      {"steps '5'", "steps 5"},
      {"'steps' 5", "steps 5"},
      {"log_file \"the \"big\" log\"", "log_file the big log"},
      {"steps 5 // note", "steps 5"},
      {"steps: \xe2\x80\x9c"
       "10,000\xe2\x80\x9d;",
       "steps 10000"},
      {"range 1 2,5", "range 1 2.5"},
      {"time_limit -infinity", "time_limit 0"},
      {"time_limit +inf", "time_limit 1e6"},
      {"time_limit auto", "time_limit 3600\" for the default"},
      {"time_limit: auto", "time_limit 3600\" for the default"},
      {"steps 12,345", "steps 12345"},
      {"steps 12,34", ""},
      {"steps 5 /* note */", "steps 5"},
      {"scale disabled", "scale no"},
      {"scale always", "scale yes"},
      {"x.prior(jan,'feb',*) 3", "x.prior('jan','feb',*) 3"},
      {"x.prior(jan 3", ""},
      {"a b c d e", ""},
      {"scale maybe", "scale yes"},
      {"quiet yes", "quiet"},
      {"500 steps", "steps 500"},
      {"\"steps\" 5", "steps 5"},
      {"--steps 5", "steps 5"},
      {"x.prior(jan) 3", "x.prior('jan') 3"},
      {"rf a b.opt", "rf \"a b.opt\""},
      {"lines no steps 1,5 time_limit 2", ""},
      {"lines no time_limit 1,5", "time_limit 1.5"},
      {"steps 5\xc2\xa0", "steps 5"},
      {"steps 1,2345", ""},
      {"steps 123,456x", ""},
      {"steps 9, 10", ""},
      {"range 1,5 2", "range 1.5 2"},
      {"range 9, 8", "range 9 8"},
      {"range 9,", "range 9"},
      {"steps ,5", ""},
      {"scale inf", "scale yes"},
      {"method = = simplex", "method = simplex"},
      {"range", "range 0\" for the default"},
      {"---steps 5", "steps 5"},
      {"x.prior)jan( 3", ""},
      {"method 'auto'", "method auto"},
      {"x.prior(jan,) 3", ""},
      {"steps \"\"", ""},
      {"rf a c.opt", ""},
      {"rf", ""}};
  save("a b.opt", "");
  for (const auto& [line, form] : rows) {
    save("p", line + "\n");
    const string out = check("s.def p");
    if (form.empty())
      EXPECT_EQ(out.find("help:"), out.npos) << out;
    else
      EXPECT_NE(out.find("help: write \"" + form), out.npos) << out;
  }
  save("p", "// note here\n# note\n//note\nmethod simplx\n");
  EXPECT_EQ(told("s.def p"),
            R"(p:1:3: error: Option keyword expected, saw " "
p:1:3: help: a comment has a line of its own, with a * in column 1
p:2:1: error: Option keyword expected, saw "#"
p:2:1: help: a comment has a line of its own, with a * in column 1
p:3:3: warning: this is no comment but an entry for a list called "--note"
p:3:3: help: a comment has a line of its own, with a * in column 1
p:4:8: error: Unknown value for option "method" saw "simplx"
p:4:8: note: Possible values are  auto simplex
p:4:8: note: did you mean "simplex"?
p:4:8: help: write "method simplex"
3 errors, 1 warning in 2 files
)");
}

TEST_F(Check, TellsWhatTheLibraryTakesAsItIs) {
  const std::pair<string, string> rows[] = {
      {"steps 5\nsteps 6\n",
       "p:2:7: warning: the option \"steps\" is set again\n"
       "p:1:7: note: it was set here before\n"
       "p:2:7: help: make the first a comment: it has no effect\n"},
      {"range 1 2\nrange * 3\nmarks yes\nscale no\npaths a\npaths b\n", ""},
      {"scale no\nmarks yes\n",
       "p:2:7: warning: the option \"scale\" is set again by \"marks\"\n"
       "p:1:7: note: it was set here before\n"},
      {"lines no\nlog_file \"abc\n",
       "p:2:10: warning: the quote is not closed; the value is dropped\n"},
      {"steps 99999999999\n",  // beyond its type too, which is one thing to tell
       "p:1:7: error: Integer range error for option \"steps\" saw \"2147483647\"\n"
       "p:1:7: note: Valid range is 0 to 100000\n"},
      {"old\n",
       "p:1:1: warning: obsolete option \"old\"; Not here\n"
       "p:1:1: warning: the obsolete option \"old\" is set all the same\n"},
      {"lines no\nsteps 5 \x1a 6\n",
       "p:2:10: warning: byte 26 ends the line here; 2 bytes are not read\n"},
      {"quiet yes\n",
       "p:1:7: error: Remainder of line ignored\n"
       "p:1:7: note: it also leads to: Unknown option \"y\"\n"
       "p:1:7: help: write \"quiet\"\n"},
      {"\xEF\xBB\xBF* c\n",
       "p:1:1: note: the file begins with a byte-order mark (UTF-8), which the language does not "
       "know\np:1:1: help: save the file as plain text without the mark\n"
       "p:1:1: error: Option keyword expected, saw \"\\xEF\"\n"},
      {"\xFF\xFEs\n",
       "p:1:1: note: the file begins with a byte-order mark (UTF-16), which the language does not "
       "know\np:1:1: help: save the file as plain text without the mark\n"
       "p:1:1: error: Option keyword expected, saw \"\\xFF\"\n"},
      {string("* \0 a\nlog_file a\0\n", 18),
       "p:2:11: warning: the line has a zero byte in it; is this a text file?\n"}};
  for (const auto& [text, findings] : rows) {
    save("p", text);
    const string out = told("s.def p");
    EXPECT_EQ(out.substr(0, findings.size()), findings);
    EXPECT_EQ(std::ranges::count(out, '\n'), std::ranges::count(findings, '\n') + 1) << out;
  }
}

TEST_F(Check, WritesBlanksWhereNamesHaveThem) {
  save("m.def", "Minos lookup\ng group 1 1 G\ntime_limit double 1 5 0 9 1 1 T\n");
  save("p", "time_limit = 3\n");
  EXPECT_EQ(told("m.def p"),
            "p:1:1: error: Unknown option \"time_limit\"\np:1:1: help: write \"time limit 3\"\n"
            "1 error in 2 files\n");
  save("p", "time_limit 3\n");
  EXPECT_NE(check("m.def p").find("help: write \"time limit 3\""), string::npos);
  save("p", "steps " + string(400, '1') + "\n");
  EXPECT_EQ(run("check s.def p").status, 1);
}

TEST_F(Check, LooksForAFileWithAWholeNameNowhereElse) {
  save("p", "rf /no/such\nrf such\n");
  const string out = told("s.def p");
  EXPECT_EQ(out.find("looked for"), out.rfind("looked for"));
  EXPECT_GT(out.find("looked for"), out.find("p:2:")) << out;
}

TEST_F(Check, TellsOfMarks) {
  save("d",
       "a integer 1 5 0 9 1 1 A\nm macro 1 1 M\n a\no obsolete\n a No\nd deprecated\n m Use a\n");
  save("p", "m 5\na 5\n");
  EXPECT_EQ(told("d p"),
            R"(p:1:1: warning: deprecated option "m"; Use a
p:1:3: warning: the obsolete option "a" is set all the same
p:2:1: warning: obsolete option "a"; No
3 warnings in 2 files
)");
}

TEST_F(Check, TellsOfDefinitions) {
  const std::pair<string, string> rows[] = {
      {"a integer 7 10\n",
       R"(d:1:15: error: Bad low value for option "a"
d:1:15: note: expected: usermap default low high hc group text
d:1:15: note: the line ends before low
d:1:15: note: it also leads to: Bad high value for option "a"
d:1:15: note: it also leads to: Bad HC value for option "a"
d:1:15: note: it also leads to: Bad Group value for option "a"
d:1:15: note: it also leads to: Default not in range for option "a"
)"},
      {"a integer 7 1O 0 20 7 1 A\n",
       R"(d:1:13: error: Bad default value for option "a"
d:1:13: note: expected: usermap default low high hc group text
d:1:13: note: saw "1O" as default
)"},
      {"a integer 7 50 0 20 7 1 A\n",
       R"(d:1:13: error: Default not in range for option "a"
d:1:13: note: default 50, low 0, high 20
)"},
      {"a integr 1 5 0 9 1 1 x\nb boolean 1 1 1 1 B\n",
       R"(d:1:3: error: Unknown option type "integr" for option "a"
d:1:3: note: did you mean "integer"?
)"},
      {"a integr x\nb boolean 1 1 1 1 B\n",
       R"(d:1:3: error: Unknown option type "integr" for option "a"
d:1:3: note: it also leads to: Bad usermap value for option "a"
d:1:3: note: did you mean "integer"?
)"},
      {"a boolean 7 3 1 1 A\nb boolean 7 1 0 1 13 1 B\n",
       R"(d:1:13: warning: the default of a boolean is 0 or 1, not 3
d:2:11: warning: the usermap 7 is taken
d:1:11: note: by the option "a"
d:2:19: warning: the text begins with numbers; a boolean has no bounds
d:2:19: note: expected: usermap default hc group text
)"},
      {"a enumint 0 1 1 1 A\n 1 1 A\n 01 1 A\n",
       "d:3:2: warning: the item \"01\" stands twice\nd:2:2: note: it stands here first\n"},
      {"g group 1 1 G\na boolean 0 1 1 2 A\nb boolean 0 1 1 2 B\n",
       "d:2:17: warning: no record declares the group 2\nd:2:17: note: 1 more option stands in "
       "it\n"},
      {"s string 0 a 1 1 Name\n of the file\nc double 0 0 0 1 0 1 x\n",
       R"(d:2:1: error: the definition ends here, since the line neither begins a record nor continues one
d:2:1: note: 1 record further down is not read
d:2:1: help: a record begins in column 1, and the one above takes no line more
)"},
      {"s string 0 a 1 1 Name\n// end\n",
       R"(d:2:1: error: the definition ends here, since the line neither begins a record nor continues one
d:2:1: help: a comment has a * in column 1
)"},
      {"s string 0 a 1 1 Name\n; end\n",
       R"(d:2:1: error: the definition ends here, since the line neither begins a record nor continues one
d:2:1: help: a comment has a * in column 1
)"},
      {"s string 0 a 1 1 Name\n5 end\n",
       R"(d:2:1: error: the definition ends here, since the line neither begins a record nor continues one
d:2:1: help: a record begins with a letter in column 1
)"},
      {"a boolean x z 1 y A\n",
       R"(d:1:11: error: Bad usermap value for option "a"
d:1:11: note: expected: usermap default hc group text
d:1:11: note: saw "x" as usermap
d:1:13: error: Bad default value for option "a"
d:1:13: note: expected: usermap default hc group text
d:1:13: note: saw "z" as default
d:1:17: error: Bad Group value for option "a"
d:1:17: note: expected: usermap default hc group text
d:1:17: note: saw "y" as group
)"},
      {"s string 0 a 1 1 Name\n# end\na integer 0 1 0 9 1 1 A\nb integer 0 1 0 9 1 1 B\n",
       R"(d:2:1: error: the definition ends here, since the line neither begins a record nor continues one
d:2:1: note: 2 records further down are not read
d:2:1: help: a comment has a * in column 1
)"},
      {"g group +1 1 G\na integer 0 1 0 9 1 1 A\nb boolean 0 1 1 0 B\n", ""},
      {"g group $1 1 G\na integer $7 1 0 9 1 1 A\nb boolean 7 $3 1 1 B\n",
       R"(d:3:11: warning: the usermap 7 is taken
d:2:11: note: by the option "a"
d:3:13: warning: the default of a boolean is 0 or 1, not 3
)"},
      {"g group 1 1 G\na integer 0 1 0 9 1 2 A\nb boolean 0 1 1 2 B\nc boolean 0 1 1 2 C\n",
       "d:2:21: warning: no record declares the group 2\nd:2:21: note: 2 more options stand in "
       "it\n"},
      {"g group 1 1 G\na integer 0 1 0 9 1 2 A\n",
       "d:2:21: warning: no record declares the group 2\n"},
      {"a boolean 0 1 1 1 5 bees\n", ""},
      {"steps integer 1 1 0 9 1 1 S\nm macro 1 1 M\n stesp\ns synonym step\nd deprecated\n setps "
       "x\n",
       R"(d:3:2: error: Unknown option "stesp" for macro "m" for option "m"
d:3:2: note: did you mean "steps"?
d:4:11: error: Unknown option for synonym"s"
d:4:11: note: did you mean "steps"?
d:6:2: error: Deprecated option "setps" is undefined for option "d"
d:6:2: note: did you mean "steps"?
)"},
      {"s string 0 a 1 1 Name\n  \n\t\n", ""},
      {"", "d: note: the file is empty\nd: error: the definition declares no option\n"}};
  for (const auto& [text, findings] : rows) {
    save("d", text);
    const string out = told("d");
    EXPECT_EQ(out.substr(0, findings.size()), findings);
    EXPECT_EQ(std::ranges::count(out, '\n'), std::ranges::count(findings, '\n') + 1) << out;
  }
  save("d", "g group 1 1 G\na boolean 0 1 1 2 A\nb boolean 0 1 1 1 B\n");
  EXPECT_EQ(check("d"), R"(d:2:17: warning: no record declares the group 2
    2 | a boolean 0 1 1 2 A
      |                 ^
1 warning in 1 file
)");
  save("d", "* nothing\n");
  EXPECT_EQ(told("d s.def"),
            R"(d: error: the definition declares no option
d: help: the definition comes first, then the parameter files; are the two swapped?
1 error in 1 file
)");
}

TEST_F(Check, TellsAllAndCountsWhatCounts) {
  string bad;
  for (int i = 0; i < 5100; i++) bad += "zzz" + std::to_string(i) + " 1\n";
  save("many", bad);
  save("one", "steps x\n");
  save("warned", "tlim 5\n");
  EXPECT_TRUE(check("s.def many one").ends_with("\n5,101 errors in 3 files\n"));
  EXPECT_EQ(run("check s.def warned").status, 0);
}

TEST_F(Check, JsonHoldsTheSame) {
  save("p", "steps 500000\nsteps 5\nsteps 6 s\nsteps 6\nsteps: 8\n");
  const json all = json::parse(run("check --json s.def p").out)["diagnostics"];
  EXPECT_EQ(all[0], json::parse(R"({"severity": "error", "kind": "optMsgValueError",
      "code": "range", "file": "p", "line": 1, "column": 7, "length": 6, "source": "steps 500000",
      "text": "Integer range error for option \"steps\" saw \"500000\"",
      "notes": [{"text": "Valid range is 0 to 100000"}]})"));
  EXPECT_EQ(all[1]["hints"], json::parse(R"([{"write": "steps 6", "sure": false,
      "edits": [{"file": "p", "line": 3, "column": 7, "length": 3, "text": "6"}]}])"));
  EXPECT_EQ(all[2], json::parse(R"({"severity": "warning", "kind": null, "code": "set-twice",
      "file": "p", "line": 4, "column": 7, "length": 1, "source": "steps 6",
      "text": "the option \"steps\" is set again",
      "notes": [{"text": "it was set here before", "file": "p", "line": 2, "column": 7,
                 "length": 1}],
      "hints": [{"text": "make the first a comment: it has no effect", "sure": true,
                 "edits": [{"file": "p", "line": 2, "column": 1, "length": 0, "text": "* "}]}]})"));
  EXPECT_EQ(all[3]["hints"], json::parse(R"([{"write": "steps 8", "sure": true,
      "edits": [{"file": "p", "line": 5, "column": 6, "length": 1, "text": ""}]}])"));
}

// The line is cut, and given once.
TEST_F(Check, AManyTimesFaultyLineStaysSmall) {
  string line = "lines no";
  for (int i = 0; i < 150; i++) line += " zz 1";
  save("p", line + string(4 << 20, ' ') + "\n");
  EXPECT_LT(run("check --json s.def p").out.size(), 100000U);
  EXPECT_LT(run("check s.def p").out.size(), 100000U);
}

}  // namespace
}  // namespace optxv::test
