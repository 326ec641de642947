// What format makes of parameter files and of definitions, what it leaves alone, and that it never
// changes what is read.

#include <filesystem>
#include <fstream>
#include <random>

#include "commandrun.h"
#include "layout/layout.h"

namespace optxv::test {
namespace {

using command::laidout;
using command::layoutdefinition;
using command::layoutparameters;
using command::layoutsettings;
using std::string;

const string definition =
    "c eolcomm !\nlimits group 1 1 Limits\nfiles group 2 1 Files\n"
    "time_limit double 1 3600 0 1e6 10 1 Time\nsteps integer 2 1000 0 maxint 10 1 Steps\n"
    "log_file string 3 run.log 12 2 Log\nfast boolean.NV 4 1 13 1 Fast\n"
    "threads integer.OPT 5 1 1 64 13 1 Threads\nmethod enumstr 6 auto 14 1 Method\n auto 15 A\n"
    " simplex 16 S\nrange double.TWO 9 0 0 100 22 1 Range\nboth multilist 10 23 1 Both\n"
    " steps time_limit\npaths strlist 11 24 2 Paths\nlines immediate EolFlag 25 1 Mode\n"
    "read immediate \"readFile\" 26 1 Reads\nloose immediate NoBounds 27 1 Bounds\n"
    "say immediate Message 27 1 Says\n.prior integer 12 0 0 1000 29 1 Priority\n"
    "indic indicator\ntlim synonym time_limit\nold deprecated\n tlim Use time_limit\n";

/// A text, and what becomes of it.
struct row {
  string before, after;
};

laidout entries(const string& text, const layoutsettings& settings = {}) {
  const laidout result = layoutparameters(definition, text, settings);
  EXPECT_FALSE(result.refused) << text;
  EXPECT_EQ(layoutparameters(definition, result.text, settings).text, result.text) << text;
  return result;
}

laidout records(const string& text, const layoutsettings& settings = {}) {
  const laidout result = layoutdefinition(text, settings);
  EXPECT_FALSE(result.refused) << text;
  EXPECT_EQ(layoutdefinition(result.text, settings).text, result.text) << text;
  return result;
}

TEST(Format, EntriesStandInColumns) {
  const row rows[] = {
      {"time_limit\t5\n  steps 7   \nfast\n", "time_limit 5\nsteps      7\nfast\n"},
      {"time_limit=5\nsteps :=7\nlog_file a  b\n",
       "time_limit  = 5\nsteps      := 7\nlog_file      a  b\n"},
      {"steps 7\n\ntime_limit 5\n", "steps 7\n\ntime_limit 5\n"},
      {"steps 7!a\nrange 1   2 ! b \n\t! c\n ! d\n* e\n  ! f\n",
       "steps 7    !a\nrange 1 2  ! b\n           ! c\n           ! d\n* e\n! f\n"},
      {"-steps 7\n/log_file \"a ! b\"!c\n--mine x y\n",
       "-steps    7\n/log_file \"a ! b\"  !c\n--mine    x y\n"},
      {"x.prior( 'a b' ,  * )5\nx.prior=6\n", "x.prior('a b', *)   5\nx.prior           = 6\n"},
      {"indic  eq (i)$ v( i )yes\n", "indic eq(i)$v(i) yes\n"},
      {"read a.opt steps 5\nx.prior 5, y.prior 6 ! z\n",
       "read  a.opt\nsteps 5\nx.prior 5\ny.prior 6  ! z\n"},
      {"log_file " + string(70, 'x') + " ! wide\nsteps 5 ! narrow\n",
       "log_file " + string(70, 'x') + "  ! wide\nsteps    5  ! narrow\n"},
      {"log_file \u00e4\u00f6 ! a\nsteps 10 ! b\n",
       "log_file \u00e4\u00f6  ! a\nsteps    10  ! b\n"},
      {"   \n\t\nsteps 5\n \n", "\n\nsteps 5\n\n"},
      {"steps  5\r\nfast  \r\n! a  \r\ntime_limit 5",
       "steps      5\r\nfast\r\n! a\r\ntime_limit 5"},
      {"", ""}};
  for (const row& each : rows) EXPECT_EQ(entries(each.before).text, each.after);
}

TEST(Format, TokensShareTheirLine) {
  const row rows[] = {
      {"steps=5,fast  time_limit =  7 ! a\n", "steps=5, fast  time_limit = 7  ! a\n"},
      {"steps   5\nlog_file \"a  b\"\n", "steps    5\nlog_file \"a  b\"\n"},
      {"lines   yes\nsteps  5\n", "lines yes\nsteps 5\n"},
      {"lines on steps  5\n", "lines on  steps 5\n"}};
  for (const row& each : rows) EXPECT_EQ(entries(each.before, {.tokens = true}).text, each.after);
  EXPECT_EQ(entries("lines  off\nsteps  1   fast\n").text, "lines off\nsteps 1  fast\n");
}

TEST(Format, LinesThatAreNotReadWholeStay) {
  using namespace std::string_literals;
  for (const string& line :
       {" stesp  5"s, "steps  x"s, "steps  5  x"s, "method  other"s, "log_file  \"a  b"s,
        "fast  now"s, "range  1"s + string(260, '0'), "  ,steps  5"s, "steps  5\x1A  6"s,
        "log_file  a\rb"s, "log_file  a\0b"s, "log_file  "s + string(1020, 'x'),
        "*"s + string(1020, ' '), "\xEF\xBB\xBFsteps  5"s, "x.prior ( a )  5"s, "time_limit:=  5"s})
    EXPECT_EQ(entries(line + "\nsteps  5").text, line + "\nsteps 5");
  EXPECT_EQ(entries("x.prior('a\n ') 5\n\n  steps  5\n").text, "x.prior('a\n ') 5\n\nsteps 5\n");
  const string bounded = "threads  99\n";
  EXPECT_EQ(entries(bounded).text, bounded);
  EXPECT_EQ(entries(bounded, {.nobounds = true}).text, "threads 99\n");
  EXPECT_EQ(entries("loose  on\n" + bounded).text, "loose   on\nthreads 99\n");
}

TEST(Format, GroupsAreSortedAndNothingElse) {
  const row rows[] = {
      {"* Night.\n\n* where\nlog_file a\nsteps 5 ! b\n        ! c\n\npaths x\ntime_limit 7\n",
       "* Night.\n\n* ---- Limits ----\nsteps      5  ! b\n              ! c\ntime_limit 7\n\n"
       "* ---- Files ----\n* where\nlog_file a\npaths    x\n"},
      {"log_file a\nsteps 5\nlines on\nlog_file b\nboth 1:2\nsteps 6",
       "* ---- Limits ----\nsteps 5\n\n* ---- Files ----\nlog_file a\n\nlines on\n\n"
       "* ---- Files ----\nlog_file b\n\nboth 1:2\n\n* ---- Limits ----\nsteps 6"},
      {"log_file a\r\nsteps 5\r",
       "* ---- Limits ----\r\nsteps 5\r\n\r\n* ---- Files ----\r\nlog_file a\r"},
      {"log_file a\nsteps five\nsteps 5\n",
       "* ---- Files ----\nlog_file a\n\nsteps five\n\n* ---- Limits ----\nsteps 5\n"}};
  for (const row& each : rows) EXPECT_EQ(entries(each.before, {.bygroup = true}).text, each.after);
}

TEST(Format, RecordsStandInColumns) {
  const row rows[] = {
      {"a integer 1 10 0 maxint 2 1 Text\n help\nlong_name boolean.NV 22 0 3 1  Other  text \n",
       "a          integer     1   10  0  maxint  2  1  Text\n help\n"
       "long_name  boolean.NV  22  0              3  1  Other  text\n"},
      {"g group 10 1 One\nother group 2 1 Two\na integer 1 1 0 1 1 1 A\n\nbee integer 10 1 0 1 1 "
       "1\n",
       "g      group  10  1  One\nother  group  2   1  Two\na  integer  1  1  0  1  1  1  A\n\n"
       "bee  integer  10  1  0  1  1  1\n"},
      {"m enumstr 1 \"a b\" 2 1 M\n   \"a b\"  3 One\n c 44\tTwo\n",
       "m  enumstr  1  \"a b\"  2  1  M\n \"a b\"  3   One\n c      44  Two\n"},
      {"a boolean 1 1 1 1 A\nb boolean 2 1 1 1 B\nl multilist 3 4 1 L\n   a   b\nm macro 4 1\n"
       "  a and more\nb2  synonym  a  unread\nold deprecated\n   b  Gone\n",
       "a  boolean    1  1  1  1  A\nb  boolean    2  1  1  1  B\nl  multilist  3     4  1  L\n a "
       "b\n"
       "m  macro            4  1\n a  and more\nb2  synonym  a  unread\nold  deprecated\n"
       " b  Gone\n"},
      {"a boolean 1 1 1 1 A\n   One\n     more\n\n \n  - two\n* c  \n",
       "a  boolean  1  1  1  1  A\n  One\n    more\n\n \n - two\n* c\n"},
      {"Path  lookup\nx eolcomm  !#\n", "Path  lookup\nx     eolcomm  !#\n"},
      {"s string 1 \"" + string(30, 'x') + "\" 1 1 S\nt string 1 y 1 1 T\n",
       "s  string  1  \"" + string(30, 'x') + "\"  1  1  S\nt  string  1  y  1  1  T\n"}};
  for (const row& each : rows) EXPECT_EQ(records(each.before).text, each.after);
}

TEST(Format, LongHelpIsWrapped) {
  const string head = "a  boolean  1  1  1  1  A\n";
  const row rows[] = {{" one two three four\n five\n", " one two three\n four five\n"},
                      {" one two three four\n \n five\n", " one two three\n four\n \n five\n"},
                      {" one two three four\n - five\n", " one two three\n four\n - five\n"},
                      {" one two  three four\n   five six seven eight\n",
                       " one two  three four\n   five six seven eight\n"},
                      {" short\n one " + string(30, 'x') + " two\n",
                       " short\n one\n " + string(30, 'x') + "\n two\n"},
                      {" one two three four\r\n", " one two three\r\n four\r\n"},
                      {" one two three four", " one two three\n four"}};
  for (const row& each : rows)
    EXPECT_EQ(records(head + each.before, {.width = 15}).text, head + each.after);
  const string cut = " " + string(200, 'x') + " " + string(200, 'y') + "\n";
  EXPECT_EQ(records(head + cut).text, head + cut) << "what is not read whole stays on its line";
}

TEST(Format, RecordsThatAreNotReadWholeStay) {
  const string good = "a boolean  1 1 1 1\n", laid = "a  boolean  1  1  1  1\n";
  for (const string line :
       {"b  integer 1  x 0 1 1 1", "b  intger  1", "b string 1 \"a  b", "a boolean  1 1 1 1",
        "m enumint 1 1 1 1  M\n  1  1  M\n  x  1", "b string 1 a 1 1\n  ends  here",
        "b boolean 1  1 1 1 \x1A", "l multilist 1 1 1\n  a,  b"})
    EXPECT_NE(records(good + line + "\n").text.find(line.substr(line.rfind('\n') + 1)),
              string::npos)
        << line;
  EXPECT_EQ(records(good + "\tb  boolean\nc  boolean 1 1 1 1\n").text,
            laid + "\tb  boolean\nc  boolean 1 1 1 1\n");
}

// --- At random ---------------------------------------------------------------------------------

/// Texts of pieces that mean something and pieces that do not.
class maker {
 public:
  explicit maker(unsigned seed) : random_(seed) {}

  template <class All>
  string one(const All& of) {
    return of[random_() % std::size(of)];
  }
  string blanks() { return one(blanks_); }
  string ending() { return random_() % 20 == 0 ? "\r\n" : "\n"; }
  bool often() { return random_() % 4 != 0; }

 private:
  static constexpr const char* blanks_[] = {" ", " ", "  ", "\t", "   ", "     ", " \t "};
  std::mt19937 random_;
};

string entrytext(maker& make) {
  static const char* const starts[] = {
      "steps",  "time_limit", "log_file", "fast",    "threads",
      "method", "range",      "both",     "paths",   "lines",
      "read",   "loose",      "say",      "x.prior", "indic e$v",
      "tlim",   "--own",      "-steps",   "nobody",  "x.prior('a', *)",
      "*",      "!",          "help",     ",steps",  "y.prior( 'b' ,"};
  static const char* const separators[] = {" ", " = ", "=", " := ", " :=", "\t", "  ", ":", " ="};
  static const char* const values[] = {"5",      "1:2",
                                       "auto",   "\"a  b\"",
                                       "a b",    "yes",
                                       "no",     "* 3",
                                       "1 2",    "1,2",
                                       "\"open", "9999",
                                       "",       "'q'",
                                       "5 ! c",  "5!c",
                                       "a\"b",   "x\ry",
                                       "\x1A",   "simplex, fast",
                                       "\u00e4", "no fast steps 3"};
  string text = make.often() ? "" : make.blanks();
  text += make.one(starts);
  if (make.often()) text += make.one(separators) + make.one(values);
  if (!make.often()) text += make.blanks() + "! a remark" + make.blanks();
  if (!make.often()) text += make.blanks() + make.one(starts);
  return text;
}

string recordtext(maker& make) {
  static const char* const heads[] = {"aa integer",  "b double.TWO", "cc string",  "d boolean",
                                      "e enumstr",   "f enumint",    "g group",    "h multilist",
                                      "i macro",     "j strlist",    "k synonym",  "l deprecated",
                                      "m immediate", "n indicator",  ".o double",  "Minos lookup",
                                      "p eolcomm",   "q.r boolean",  "aa boolean", "s intger"};
  static const char* const fields[] = {"1",    "0",           "10",     "maxint",   "1e-6",
                                       "auto", "\"a b\"",     "aa",     "Readfile", "text",
                                       "of",   "two  blanks", "\"open", ",",        "\xFF"};
  static const char* const lines[] = {" ", " help", "   deeper",    " - item",   "* remark",
                                      "",  " aa d", " auto 1 Text", " 1 2 Text", "\ttab"};
  if (!make.often()) return make.one(lines);
  string text = make.often() ? make.one(heads) : " a line that goes on and on";
  for (int field = 0; field < 8 && make.often(); field++) text += make.blanks() + make.one(fields);
  return text;
}

/// Layout functions ask for the same reading themselves; that they never have to refuse their own
/// work is what is tested.
TEST(Format, WhateverIsThereIsReadAsBefore) {
  for (unsigned seed = 0; seed < 1500; seed++) {
    maker make(seed);
    string text, table;
    for (int line = 0; line < 12; line++) {
      text += entrytext(make) + make.ending();
      table += recordtext(make) + make.ending();
    }
    const layoutsettings settings = {
        .tokens = !make.often(), .bygroup = !make.often(), .width = make.often() ? 20U : 100U};
    EXPECT_FALSE(entries(text, settings).refused);
    EXPECT_FALSE(records(table, settings).refused);
    layoutparameters(table, text, settings);
  }
}

// --- The command -------------------------------------------------------------------------------

class FormatCommand : public commandrun {
 protected:
  void SetUp() override {
    save("s.def", definition);
    save("good", "steps 5\n");
    save("p", "steps   5\n");
  }
};

TEST_F(FormatCommand, ShowsNamesOrWrites) {
  EXPECT_EQ(run("format s.def p good").out, "steps 5\nsteps 5\n");
  const outcome named = run("format --check s.def good p");
  EXPECT_EQ(named.out, "p\n");
  EXPECT_EQ(named.status, 1);
  EXPECT_EQ(run("format --check s.def good").status, 0);
  EXPECT_EQ(get("p"), "steps   5\n");
  const outcome written = run("format --write s.def p good");
  EXPECT_EQ(written.out + written.err, "");
  EXPECT_EQ(get("p"), "steps 5\n");
  EXPECT_EQ(run("format --definitions --write s.def").status, 0);
  EXPECT_EQ(run("format --definitions --check s.def").status, 0);
  EXPECT_NE(get("s.def"), definition);
}

TEST_F(FormatCommand, HelpThatATextAsksForIsNoProduct) {
  save("p", "help   4\n");
  EXPECT_EQ(run("format s.def p").out, "help 4\n");
  EXPECT_TRUE(run("check --json s.def p").out.starts_with("{"));
}

TEST_F(FormatCommand, TellsErrorsAndLeavesTheirLines) {
  save("p", "steps   five\nsay   hello\nfast   \n");
  const outcome told = run("format s.def p");
  EXPECT_EQ(told.status, 1);
  EXPECT_EQ(told.out, "steps   five\nsay hello\nfast\n");
  EXPECT_TRUE(told.err.starts_with("p:1:9: error: Integer expected")) << told.err;
  EXPECT_EQ(told.err.find("hello"), string::npos) << "a message that the file asks for is no error";
}

TEST_F(FormatCommand, WritesNothingWhereWordsOrFilesAreUnusable) {
  const std::pair<const char*, const char*> rows[] = {
      {"format --write s.def p nothing", "nothing: cannot be read"},
      {"format --write s.def p ./p", "./p: cannot be laid out: it is the same file as p"},
      {"format --write none p", "none: cannot be read"},
      {"format s.def", "FILE is required"},
      {"format --sort name s.def p", "--sort cannot be \"name\""},
      {"format --check --write s.def p", "--write excludes --check"}};
  for (const auto& [words, error] : rows) {
    const outcome told = run(words);
    EXPECT_EQ(told.status, 2) << words;
    EXPECT_TRUE(told.err.starts_with(string("optxv: error: ") + error)) << told.err;
    EXPECT_EQ(told.out, "");
  }
  EXPECT_EQ(get("p"), "steps   5\n");
}

TEST_F(FormatCommand, TheExamplesAreInOrder) {
  const std::filesystem::path folder = OPTXV_SOURCE_DIR "/examples";
  const auto text = [&](const std::filesystem::path& file) {
    std::ifstream in(folder / file);
    return string(std::istreambuf_iterator<char>(in), {});
  };
  const string table = text("solver.def");
  records(table);
  for (const char* each : {"solver.opt", "notices.opt", "faulty.opt", "tight.opt"})
    for (const bool bygroup : {false, true}) {
      const laidout result = layoutparameters(table, text(each), {.bygroup = bygroup});
      EXPECT_FALSE(result.refused) << each;
      EXPECT_EQ(layoutparameters(table, result.text, {.bygroup = bygroup}).text, result.text);
    }
}

}  // namespace
}  // namespace optxv::test
