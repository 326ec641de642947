
#include <fcntl.h>

#include <cerrno>
#include <string>

#include "support/optiontable.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

constexpr std::string_view table =
    "steplim integer 1 1000 0 maxint 0 0\ntwo integer.TWO 2 0 0 99 0 0\ns string 3 dflt 0 0\n"
    "p string.TWO 4 x 0 0\nopt integer.OPT 5 42 0 99 0 0\nnv integer.NV 6 7 0 9 0 0\n"
    "b boolean 7 0 0 0\ne strlist 8 0 0\ncmt eolcomm !;\neol immediate EolFlag 0 0\n"
    "rf immediate ReadFile 0 0\nmsg immediate Message 0 0\nnb immediate NoBounds 0 0\n"
    "syn synonym steplim\n";

/// Reads each text in one line, on a new object. Rows: text >> what is then set >> messages, whose
/// most common ones have names here.
void check(std::string_view definition, bool toeol, std::string_view rows) {
  const lines names = {"E1", "E Option keyword expected, saw",
                       "E2", "E Bad separator after key",
                       "E3", "E Unknown option",
                       "E4", "E Value expected for key",
                       "E6", "E Remainder of line ignored",
                       "VQ", "V Bad double-quote in value",
                       "VI", "V Integer expected, for option"};
  for (const lines& row : rowsof(rows)) {
    optiontable options(definition);
    options->opteolonlyset(toeol);
    options.read(row[0]);
    std::string queue = row[2];
    for (std::size_t i = 0; i < names.size(); i += 2)
      queue = replaced(queue, names[i], names[i + 1]);
    EXPECT_EQ(options.state(), row[1]) << row[0];
    EXPECT_EQ(options.brief(), queue) << row[0];
  }
}

TEST(Entries, InBothModes) {
  check(table, true, R"(
\t -STEPLIM\t5\t >> steplim=5
, syn := 5;x >> steplim=5
steplim : 5 >> >> E4 'steplim' | E6 | E1 '5'
steplim,5 >> >> E2 'steplim'
-x.y 5 >> >> E3 'x'
# The character at which the rest of the line begins is read as one more entry.
nv , x >> nv=7 >> E6 | E1 '\n'
two 100 5 >> two=/5 >> V Integer range error for option 'two' saw '100'
    V    Valid range is 0 to 99
p "a b" "c ! d"!x >> p=a b/c ! d
s "ab ! cd" ! note >> s=ab ! cd
two * 5 >> two=/5
--x first try >> --x=[first try]
e a b >> e=[a b]
--x "first" >> >> VQ
msg := a,msg = b >> >> E a | E b
nb x steplim -5 >> steplim=-5!1 >> W Integer range error for option 'steplim' saw '-5'
    W    Valid range is 0 to maxint
nb on nb OFF steplim -5 >> >> V Integer range error for option 'steplim' saw '-5'
    V    Valid range is 0 to maxint
)");
  check(table, false, R"(
steplim , b yes >> b=1 >> VI 'steplim' saw ''
s "a, b",b yes >> s=a, b b=1
s "ab"c" d" b yes >> b=1 >> VQ
p a "b >> p=a/a
p a,b yes >> p=a/ b=1
two 1,b yes >> two=1 b=1 >> VI 'two' saw ''
--x a --x "b c" b yes >> b=1 --x=[a|b c]
eol what steplim 5 6 >> >> VI 'steplim' saw '5 6'
)");
}

TEST(MinosKeys, JoinTheWordsOfTheLine) {
  const std::string_view definition =
      "Minos lookup\nmax_iter integer 1 0 0 99 0 0\nmax_iter_count integer 2 0 0 99 0 0\n"
      "super_basics_limit integer 3 0 0 99 0 0\none_two_three_four_five strlist 4 0 0\n"
      "print strlist 5 0 0\nms synonym max_iter\n";
  check(definition, true, R"(
maximum iterations = 5 >> max_iter=5
max iter count 5 >> >> VI 'max_iter' saw 'count 5'
superb bases limits 6 >> >> E3 'superb_bases_limits'
max_iter = 5 >> >> E3 'max_iter'
max_iter count = 5 >> max_iter_count=5
max iter = >> >> E4 'max iter'
bad -5 >> >> E3 'bad'
one two_three >> >> E3 'one_two__'
one two three four five x >> >> E3 'one_two_three_four'
)");
  check(definition, false, R"(
max iter 5 max iter count 6 >> max_iter=5 >> VI 'max_iter' saw 'count' | E1 '6'
bad one two three four max iter 6 >> max_iter=6 >> E3 'bad_one_two_three'
--x_y=1 --x_y=2 --x=3 --x=4 >> --x_y=[1] --x_y=[2] --x=[3|4]
)");
}

TEST(MarkedNames, AreReportedAndObsoleteOnesDropped) {
  const std::string base =
      "x integer 1 0 0 99 0 0\ntwo integer.TWO 3 0 0 9 0 0\nnv integer.NV 4 7 0 9 0 0\n"
      "s synonym x\nt synonym x\nmsg immediate Message 0 0\n";
  const std::pair<const char*, const char*> cases[] = {
      {"h deprecated\n x Old\n",
       "X 5 >> x=5 >> W deprecated option 'X'; Old\n"
       "x a >> >> W deprecated option 'x'; Old | VI 'x' saw 'a'\ns 5 >> x=5\n"},
      {"h deprecated\n s Use x\n", "T 5 >> x=5 >> W deprecated synonym 'T'; Use x\nx 5 >> x=5\n"},
      {"h obsolete\n x Gone\n two None\n nv Off\n",
       "x 5 >> >> W obsolete option 'x'; Gone\ntwo 1 2 >> >> W obsolete option 'two'; None\n"
       "nv >> nv=7 >> W obsolete option 'nv'; Off\n"},
      {"h obsolete\n s Gone\n msg Gone\n",
       "t 5 >> >> W obsolete synonym 't'; Gone\nmsg a >> >> E a\n"},
      // An abbreviation is not the option's own name.
      {"Path lookup\nlong_name integer 4 0 0 9 0 0\nh obsolete\n long_name Gone\n",
       "lon_nam 5 >> long_name=5\nLONG_name 5 >> >> W obsolete option 'LONG_name'; Gone\n"}};
  for (const auto& [marks, rows] : cases)
    for (const bool toeol : {true, false}) check(base + marks, toeol, rows);
}

TEST(Files, NameTheLineOfAFaultAndGoOn) {
  optiontable options(str(table) + "old deprecated\n syn Use steplim\n");
  options.read("* text\n\nfoo 1\n   \nsteplim x\n5 6\r\nnv x\nmsg told\ntwo 100 ! x\nsyn 7");
  const std::string range =
      " | V9: Integer range error for option 'two' saw '100' | V9:    Valid range is 0 to 99";
  EXPECT_EQ(options.brief(),
            "E3: Unknown option 'foo' | V5: Integer expected, for option 'steplim' saw 'x' | "
            "E6: Option keyword expected, saw '5' | E7: Remainder of line ignored | "
            "E7: Unknown option 'x' | E8: told" +
                range + range + " | W10: deprecated synonym 'syn'; Use steplim");
  EXPECT_EQ(options.state(), "steplim=7 nv=7");
}

TEST(Files, KeepTheirModeToThemselves) {
  optiontable options(table);
  options.put("inner", "eol no\nb yes nv\n");
  options.read("rf \"{inner}\"\nsteplim 5 6\neol no\ntwo 1 2 opt 3\n");
  EXPECT_EQ(options.brief(), "V2: Integer expected, for option 'steplim' saw '5 6'");
  EXPECT_EQ(options.state(), "two=1/2 opt=3 nv=7 b=1");
}

TEST(Files, NestNineLevelsDeep) {
  optiontable options(table);
  options.files["self"];
  options.put("self", "--level x\nrf {self}\n");
  options.read("rf {self}");  // a string is no level
  EXPECT_EQ(options.queue(true).size(), 23U);
  EXPECT_EQ(options.queue(), lines{"*** Error File nesting level too deep; file ignored"});
  EXPECT_EQ(options.state(), "--level=[x|x|x|x|x|x|x|x|x]");
}

// A file that reads itself ten times would be opened a billion times.
TEST(Files, AreTenThousandInOneRead) {
  optiontable options(table);
  options.put("once", "--read x\n");
  options.read(joined(lines(10001, "rf {once}\n"), "") + "steplim 5\n");
  const auto& taken = static_cast<const tstrlistoption&>(options.option("--read"));
  EXPECT_EQ(taken.count(), 9999) << "and the file that reads them";
  EXPECT_EQ(options.brief(), "E10000: More than 10000 files; the rest ignored");
  options.read("steplim 6 rf {once}").read("rf {once}");
  EXPECT_EQ(taken.count(), 10000) << "each read of the program counts anew";
  options.files["self"];
  options.put("self", "--read x\n" + joined(lines(10, "rf {self}\n"), ""));
  EXPECT_EQ(options->optreadparameterfile(options.path("self")), 0);
  EXPECT_LE(taken.count(), 20000);
}

// A device may never end: a file may not name it, but the program may.
TEST(Files, OfDevices) {
  const char* const refused =
      "E Cannot open parameter file '/dev/zero' | "
      "E Error code = 95; Operation not supported";
  for (const char* const device : {"/dev/null", "/dev/zero"}) {
    optiontable options(table);
    options.read("\nrf " + str(device) + "\nsteplim 5\n");
    EXPECT_EQ(options.brief(), str(device) == "/dev/zero" ? refused : "");
    EXPECT_EQ(options.state(), "steplim=5");
  }
  optiontable options(table);
  options.read("rf /dev/zero");
  EXPECT_EQ(options.brief(), refused) << "a string names a file as a file does";
}

// A line without an end is read for a while, and no longer.
TEST(Files, WithAnEndlessLine) {
  optiontable options(table);
  EXPECT_EQ(options->optreadparameterfile("/dev/zero"), EFBIG);
  const lines queue = options.queue();
  ASSERT_GE(queue.size(), 2U);
  EXPECT_EQ(queue[queue.size() - 2] + " | " + queue.back(),
            "*** Error line 1: Cannot read parameter file \"/dev/zero\" | "
            "*** Error line 1: Error code = 27; File too large");
}

TEST(Files, ThatCannotBeOpened) {
  optiontable options(table);
  EXPECT_EQ(options->optreadparameterfile("/nowhere/x"), ENOENT);
  options.read("\nrf /nowhere/x steplim 5\nfoo\n");  // reported while no line has been read
  const std::string queue =
      "E Cannot open parameter file '/nowhere/x' | E Error code = 2; No such file or directory | ";
  EXPECT_EQ(options.brief(), queue + queue + "E3: Unknown option 'foo'");
  EXPECT_EQ(options.state(), "steplim=5");
}

// A text in memory under the name of a file has the effects of the file: messages, state, result.
TEST(Texts, ReadAsTheFileOfTheirName) {
  const std::string values = "* remark\n\nsteplim 5\r\nfoo 1\nopt";
  for (const std::string& text : {std::string(), values, values + "\n" + std::string(1030, 'x'),
                                  "rf {self}\nsteplim x\n--a b\nrf /nowhere/x\n" + values}) {
    optiontable file(table), memory(table);
    file->optechoset(1);
    memory->optechoset(1);
    file.files["self"];
    file.put("self", text);
    const std::string name = file.path("self");
    const std::string content = file.files["self"].content();
    EXPECT_EQ(memory->readparametertext(name, content), file->optreadparameterfile(name));
    EXPECT_EQ(memory.state(), file.state()) << text;
    EXPECT_EQ(joined(memory.queue(true)), replaced(joined(file.queue(true)), "{self}", name));
  }
}

// A read that fails is reported before the file is left, and what was read stays.
TEST(Files, ThatCannotBeRead) {
  optiontable options(table);
  options.read("\nrf /proc/self/mem\nfoo\n");
  EXPECT_EQ(
      options.brief(),
      "E Cannot read parameter file '/proc/self/mem' | E Error code = 5; Input/output error | "
      "E3: Unknown option 'foo'");
  EXPECT_EQ(ioresult(), 0);
  options->optclearmessages();
  const test::keptstream input(0);
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
  ASSERT_EQ(write(ends[1], "foo\nsteplim 5", 13), 13);
  dup2(ends[0], 0);
  EXPECT_EQ(options->optreadparameterfile(""), EAGAIN);
  EXPECT_EQ(options.state(), "steplim=5");
  EXPECT_EQ(joined(options.queue(true)),
            "Reading parameter(s) from \"\" | *** Error line 1: Unknown option \"foo\" | "
            "*** Error line 2: Cannot read parameter file \"\" | "
            "*** Error line 2: Error code = 11; Resource temporarily unavailable | "
            "Finished reading from \"\"");
  std::clearerr(stdin);
  close(ends[0]);
  close(ends[1]);
}

TEST(Strings, AreOneLine) {
  optiontable options(table);
  options->optreadfromstr("steplim 1\nopt 2");
  options->optreadfrompchar("b 1\nopt 2");
  EXPECT_EQ(options.state(), "steplim=1 b=1");
  options->optreadfrompchar(nullptr);
  options->optechoset(1);
  options->optreadfromstr("* 1");
  options.read("opt 4\n");
  EXPECT_EQ(joined(options.queue(true)),
            ">>  * 1 | Reading parameter(s) from \"string\" | "
            "*** Error Option keyword expected, saw \"*\" | Finished reading from \"string\" | "
            "Reading parameter(s) from \"{par}\" | >>  opt 4 | Finished reading from \"{par}\"");
  const std::string text = "s " + std::string(252, 'x') + "yz";
  options->optreadfromstr(text);
  EXPECT_EQ(options.option("s").getasstring(), text.substr(2, 253));
  for (const char* quote : {"", "\""}) {  // a long value keeps its first 255 bytes
    options.read("s " + (quote + text) + text + quote);
    EXPECT_EQ(options.option("s").getasstring(), text.substr(0, 255));
  }
}

}  // namespace
}  // namespace optxv
