#include "parameter/parameterreader.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "support/optiontable.h"

namespace optxv::test {
namespace {

constexpr std::string_view table =
    "steplim integer 1 1000 0 maxint 0 0\n"
    "two integer.TWO 2 0 0 99 0 0\n"
    "s string 3 dflt 0 0\n"
    "p string.TWO 4 x 0 0\n"
    "opt integer.OPT 5 42 0 99 0 0\n"
    "nv integer.NV 6 7 0 9 0 0\n"
    "b boolean 7 0 0 0\n"
    "e strlist 8 0 0\n"
    "cmt eolcomm !;\n"
    "eol immediate EolFlag 0 0\n"
    "rf immediate ReadFile 0 0\n"
    "msg immediate Message 0 0\n"
    "nb immediate NoBounds 0 0\n"
    "syn synonym steplim\n";

/// Reads each text in one line, on a new object. Rows: text >> what is then set >> messages, whose
/// most common ones have names here.
void check(std::string_view definition, bool toeol, std::string_view rows) {
  const std::pair<const char*, const char*> names[] = {
      {"E1", "E Option keyword expected, saw"},
      {"E2", "E Bad separator after key"},
      {"E3", "E Unknown option"},
      {"E4", "E Value expected for key"},
      {"E5", "E Value expected for immediate option"},
      {"E6", "E Remainder of line ignored"},
      {"VI", "V Integer expected, for option"},
      {"VQ", "V Bad double-quote in value"}};
  for (const lines& row : rowsof(rows)) {
    optiontable options(definition);
    options->opteolonlyset(toeol);
    options.readline(row[0]);
    std::string queue = row[2];
    for (const auto& [name, words] : names) queue = replaced(queue, name, words);
    EXPECT_EQ(options.state(), row[1]) << row[0];
    EXPECT_EQ(options.brief(), queue) << row[0];
  }
}

TEST(EndOfLineMode, Entries) {
  constexpr std::string_view rows = R"(
steplim 5 >> steplim=5
\t -STEPLIM\t5\t >> steplim=5
, syn := 5;x >> steplim=5
steplim:=5 >> >> E2 'steplim'
SYN = ! 5 >> >> E4 'steplim'
steplim : 5 >> >> E4 'steplim' | E6 | E1 '5'
syn 5 x >> >> VI 'syn' saw '5 x'
foo 5 ! x >> >> E3 'foo'
# What cannot begin an entry.
5 >> >> E1 '5'
" >> >> E1 '''
, >> >> E1 '\n'
-- >> >> E1 '\n'
# No value, or one that may be left out. What is left of the line reads as one more entry,
# of the character at which it began.
nv >> nv=7
nv xtra >> nv=7 >> E6 | E3 'x'
nv extra >> nv=7 >> E6 | E4 'e'
nv , x >> nv=7 >> E6 | E1 '\n'
nv=5 >> nv=7 >> E6 | E1 '='
opt !5 >> opt=42
opt = >> >> E4 'opt'
# Two values.
two * 5 >> two=/5
two 5 *\t >> two=5
two * >>
two x >> >> VI 'two' saw 'x' | VI 'two' saw 'x'
two 100 5 >> two=/5 >> V Integer range error for option 'two' saw '100'
    V    Valid range is 0 to 99
two 1, 2 >> two=1 >> VI 'two' saw ', 2'
p "a b" "c ! d"!x >> p=a b/c ! d
p "a b >>
p a "b"c >> p=a >> VQ
p "" "*" >> p=
# The value of one entry.
s a  b \t >> s=a  b
s ab!c >> s=ab
s "ab cd" >> s=ab cd
s "ab ! cd" ! note >> s=ab ! cd
s "ab"!"cd" >> s=ab
s " a " >> s=a
s " >> s=
s "ab" cd >> >> VQ
s "ab >> >> VQ
# Options that come about by their use; quotes mean nothing there.
--x first try >> --x=[first try]
/-/x = a = b >> --x=[a = b]
--steplim 5 >> --steplim=[5]
--x >> --x=[]
--x "a b" >> >> VQ
# Immediate options take a token, and the line goes on.
msg "a b" rest >> >> E a b | E3 'rest'
msg:=a,msg b >> >> E2 'msg'
msg := a,msg = b >> >> E a | E b
MSG >> >> E5 'MSG'
msg "a >> >> E5 'msg'
nb x steplim -5 >> steplim=-5!1 >> W Integer range error for option 'steplim' saw '-5'
    W    Valid range is 0 to maxint
nb on nb OFF steplim -5 >> >> V Integer range error for option 'steplim' saw '-5'
    V    Valid range is 0 to maxint
eol no steplim 5, two 1 2 s "a b" nv b yes,opt >> steplim=5 two=1/2 s=a b opt=42 nv=7 b=1
eol 0 eol what s a b >> s=a b
)";
  check(table, true, rows);
}

TEST(TokenMode, Entries) {
  constexpr std::string_view rows = R"(
steplim 5 b yes >> steplim=5 b=1
steplim , b yes >> b=1 >> VI 'steplim' saw ''
steplim : b yes >> b=1 >> E4 'steplim'
nv 5 b yes >> nv=7 >> E1 '5'
opt b yes >> >> VI 'opt' saw 'b' | E3 'yes'
two * 2,two 1 * >> two=1/2
two 1 b yes >> two=1 >> VI 'two' saw 'b' | E3 'yes'
bad 5 b yes >> b=1 >> E3 'bad'
bad = 5 b yes >> >> E3 'bad' | E1 '5'
# A quote closes in front of a separator, behind an odd number of quotes.
s "a, b",b yes >> s=a, b b=1
s "ab"c" d" b yes >> b=1 >> VQ
s "ab"c" >> >> VQ
s "ab"c" b yes >>
s "a b"b yes >>
s "" b yes >> s= b=1
p a "b >> p=a/a
--x a --x "b c" b yes >> b=1 --x=[a|b c]
--x "a b >>
eol yes s a b >> s=a b
msg "a b" b yes >> b=1 >> E a b
)";
  check(table, false, rows);
  optiontable options(table);
  options->opteolonlyset(0);
  options.readline("--x \"a b");  // the option exists all the same
  EXPECT_EQ(options->optlistcountstr("--x"), 0);
}

TEST(MinosKeys, JoinTheWordsOfTheLine) {
  const std::string_view definition =
      "Minos lookup\nmax_iter integer 1 0 0 99 0 0\nmax_iter_count integer 2 0 0 99 0 0\n"
      "super_basics_limit integer 3 0 0 99 0 0\none_two_three_four_five strlist 4 0 0\n"
      "print strlist 5 0 0\nms synonym max_iter\n";
  constexpr std::string_view rows = R"(
max iter 5 >> max_iter=5
maximum iterations = 5 >> max_iter=5
max_iter 5 >> >> E3 'max_iter'
max_iter abc 5 >> >> E3 'max_iter_abc'
max iter count 5 >> >> VI 'max_iter' saw 'count 5'
superb bases limits 6 >> >> E3 'superb_bases_limits'
superb basics limits >> >> E4 'super basics limit'
superb basics limits 6 >> super_basics_limit=6
bad = 5 >> >> E3 'bad'
bad one -1 >> >> E3 'bad_one'
bad "x" >> >> E3 'bad___'
bad a_b >> >> E3 'bad_a__'
one two three four five x >> >> E3 'one_two_three_four'
print print x >> print=[print x]
--note first try >> --note_first_try=[]
--note a b c d >> --note_a_b_c=[d]
)";
  check(definition, true, rows);
  constexpr std::string_view tokens = R"(
max iter 5 max iter count 6 >> max_iter=5 >> VI 'max_iter' saw 'count' | E1 '6'
bad one two three four max iter 6 >> max_iter=6 >> E3 'bad_one_two_three'
--x_y 5 --x_y 6 >> --x_y=[5] --x_y=[6]
)";
  check(definition, false, tokens);
}

TEST(MarkedNames, AreToldOfAndObsoleteOnesDropped) {
  const std::string base =
      "x integer 1 0 0 99 0 0\ny integer.NV 2 7 0 9 0 0\ntwo integer.TWO 3 0 0 9 0 0\n"
      "s synonym x\nt synonym x\nmsg immediate Message 0 0\n";
  const struct {
    std::string marks;
    std::string_view rows;
  } cases[] = {{"h deprecated\n x Old\n", R"(
X 5 >> x=5 >> W deprecated option 'X'; Old
x a >> >> W deprecated option 'x'; Old | VI 'x' saw 'a'
x >> >> E4 'x'
s 5 >> x=5)"},
               {"h deprecated\n s Use x\n", R"(
T 5 >> x=5 >> W deprecated synonym 'T'; Use x
x 5 >> x=5)"},
               {"h obsolete\n x Gone\n y none\n two None\n", R"(
x 5 >> >> W obsolete option 'x'; Gone
s 5 >> x=5
y >> y=7 >> W obsolete option 'y'; none
two 1 2 >> >> W obsolete option 'two'; None)"},
               {"h obsolete\n x Gone\nh deprecated\n s Use x\n", R"(
x 5 >> >> W deprecated option 'x'; Gone
s 5 >> x=5 >> W deprecated synonym 's'; Use x)"},
               {"h obsolete\n s Gone\n msg Gone\n", R"(
t 5 >> >> W obsolete synonym 't'; Gone
msg a >> >> E a)"},
               // An abbreviation is not the option's own name.
               {"Path lookup\nlong_name integer 4 0 0 9 0 0\nh obsolete\n long_name Gone\n", R"(
lon_nam 5 >> long_name=5
LONG_name 5 >> >> W obsolete option 'LONG_name'; Gone)"}};
  for (const auto& marked : cases)
    for (const bool toeol : {true, false}) check(base + marked.marks, toeol, marked.rows);
}

TEST(Files, TellTheLineAndGoOn) {
  optiontable options(table);
  options.readfile("* text\n\nfoo 1\n   \nsteplim x\n5 6\r\nnv x\nmsg told\ntwo 100 ! x\nsyn 7");
  EXPECT_EQ(
      joined(options.queue(true)),
      "Reading parameter(s) from \"{par}\" | *** Error line 3: Unknown option \"foo\" | "
      "*** Value Error line 5: Integer expected, for option \"steplim\" saw \"x\" | "
      "*** Error line 6: Option keyword expected, saw \"5\" | "
      "*** Error line 7: Remainder of line ignored | *** Error line 7: Unknown option \"x\" | "
      "*** Error line 8: told | "
      "*** Value Error line 9: Integer range error for option \"two\" saw \"100\" | "
      "*** Value Error line 9:    Valid range is 0 to 99 | "
      "*** Value Error line 9: Integer range error for option \"two\" saw \"100\" | "
      "*** Value Error line 9:    Valid range is 0 to 99 | Finished reading from \"{par}\"");
  EXPECT_EQ(options.state(), "steplim=7 nv=7");
}

TEST(Files, ReadTheSampleText) {
  optiontable options(sampledefinition);
  options.put("more", "tol 0.5 ! and nothing else\n");
  options.readfile(
      "* run settings\nsteplim 500\ntol = 1e-8 ! tighter\nlogname \"my run.log\"\n"
      "method := PRIMAL\nverbose\n-scale no\nstplim 100\n--note first try\nrf \"{more}\"\n"
      "printlevel 0\npaths a b\npaths c\nfast yes\n");
  EXPECT_EQ(options.brief(), "W8: deprecated synonym 'stplim'; Use steplim");
  EXPECT_EQ(options.state(),
            "steplim=100 tol=0.5 logname=my run.log scale=1 verbose=0 method=primal printlevel=0 "
            "paths=[a b|c] --note=[first try]");
}

TEST(Files, KeepTheirModeToThemselves) {
  optiontable options(table);
  options.put("inner", "eol no\nb yes nv\n");
  options.put("plain", "s a b\n");
  options.readfile("rf {inner}\nsteplim 5 6\neol no\nrf {plain} two 1 2 opt 3\n");
  EXPECT_EQ(options.brief(), "V2: Integer expected, for option 'steplim' saw '5 6'");
  EXPECT_EQ(options.state(), "two=1/2 s=a b opt=3 nv=7 b=1");
  EXPECT_TRUE(options->eolonly);
}

TEST(Files, NestNineLevelsDeep) {
  optiontable options(table);
  options.put("self", "");
  options.put("self", "--level x\nrf {self}\n");
  options.readline("rf {self}");  // a string is no level
  lines expected = {"Reading parameter(s) from \"pchar\""};
  expected.insert(expected.end(), 10, "Reading parameter(s) from \"{self}\"");
  expected.push_back("*** Error File nesting level too deep; file ignored");
  expected.insert(expected.end(), 10, "Finished reading from \"{self}\"");
  expected.push_back("Finished reading from \"pchar\"");
  EXPECT_EQ(options.queue(true), expected);
  EXPECT_EQ(options.state(), "--level=[x|x|x|x|x|x|x|x|x]");
  options->optresetall();
  options.put("self", "rf {self}\nrf {self}\n");
  options.readfile("rf {self}\n");
  EXPECT_EQ(options.queue().size(), 256U);  // once for each line that reads it at the last level
}

TEST(Files, ThatCannotBeOpened) {
  optiontable options(table);
  EXPECT_EQ(options->optreadparameterfile("/nowhere/x"), ENOENT);
  const std::string queue =
      "E Cannot open parameter file '/nowhere/x' | E Error code = 2; No such file or directory";
  EXPECT_EQ(options.brief(), queue);
  options->optclearmessages();
  options.readfile("\nrf /nowhere/x steplim 5\nfoo\n");  // told by a reader that has no line yet
  EXPECT_EQ(options.brief(), queue + " | E3: Unknown option 'foo'");
  EXPECT_EQ(options.state(), "steplim=5");
}

TEST(Strings, AreOneLine) {
  optiontable options(table);
  options->optreadfromstr("steplim 1\nopt 2");
  options->optreadfrompchar("b 1\nopt 2");
  EXPECT_EQ(options.state(), "steplim=1 b=1");
  options->optreadfromstr("");
  options->optreadfrompchar("");
  options->optreadfrompchar(nullptr);
  EXPECT_EQ(options.queue(true), lines());
  options->optechoset(1);
  options->optreadfromstr("* 1");
  options->optreadfrompchar("opt 3");
  options.readfile("opt 4\n");
  EXPECT_EQ(joined(options.queue(true)),
            ">>  * 1 | Reading parameter(s) from \"string\" | "
            "*** Error Option keyword expected, saw \"*\" | Finished reading from \"string\" | "
            ">>  opt 3 | Reading parameter(s) from \"{par}\" | >>  opt 4 | "
            "Finished reading from \"{par}\"");
  options->optechoset(0);
  const std::string text = "s " + std::string(252, 'x') + "yz";
  options->optreadfromstr(text);
  EXPECT_EQ(options.option("s").getasstring(), text.substr(2, 253));
  for (const char* quote : {"", "\""}) {  // a long value keeps its first 255 bytes
    options.readline("s " + (quote + text) + text + quote);
    EXPECT_EQ(options.option("s").getasstring(), text.substr(0, 255));
  }
}

// --- Text of any kind ---------------------------------------------------------------------------

class garbage {
 public:
  explicit garbage(unsigned seed) : random_(seed) {}

  std::string text(bool definition) {
    std::string all;
    for (std::size_t n = random_() % 40; n > 0; --n) all += line(definition) + "\n";
    return all;
  }

 private:
  /// A word of a text in which words stand between blanks.
  std::string pick(const std::string& words) {
    std::istringstream in(words);
    const lines all{std::istream_iterator<std::string>(in), {}};
    return all[random_() % all.size()];
  }

  std::string line(bool definition) {
    static const std::string names =
        "a bb ccc_ddd ccc_dddd eee f1 .dot eee_ syn Minos Path Normal synonym g";
    static const std::string kinds =
        "integer double string boolean enumstr enumint multilist strlist macro immediate synonym "
        "group deprecated obsolete indicator lookup eolcomm integer.TWO string.OPT boolean.NV x.zz";
    static const std::string words =
        "1 0 -5 1e3 maxint mindouble \"a\" \"x a:b:c , = := ! * yes ( 'q', ) $ ReadFile /dev/null "
        "NoBounds EolFlag Message -- - . {";
    std::string all = definition && random_() % 3 == 0 ? " " : "";
    if (all.empty() && definition && random_() % 40 != 0) all = pick(names) + " " + pick(kinds);
    if (!definition && random_() % 5 == 0) all = pick("-- - . , eee.dot syn");
    for (std::size_t n = random_() % 9; n > 0; --n)
      all += (random_() % 8 == 0 ? "" : " ") + pick(random_() % 2 == 0 ? names : words);
    for (std::size_t n = random_() % 16 == 0 ? random_() % 1500 : 0; n > 0; --n)
      all += static_cast<char>(random_());
    return all;
  }

  std::mt19937 random_;
};

/// Nothing is running, and every number leads to the option that it led to before.
void checksound(optiontable& options, std::vector<const toption*>& numbers) {
  ASSERT_EQ(options->parser, nullptr);
  ASSERT_EQ(options->filedepth + options->assigndepth, 0);
  ASSERT_TRUE(options->echoflag || options->optmessagecount() <= 5001);
  ASSERT_GE(options->optcount(), static_cast<std::int32_t>(numbers.size()));
  for (std::int32_t i = 0; i < options->optcount(); ++i) {
    const toption& option = *options->getobjects(i);
    if (static_cast<std::size_t>(i) == numbers.size()) numbers.push_back(&option);
    ASSERT_EQ(numbers[static_cast<std::size_t>(i)], &option);
    ASSERT_EQ(options->getstrings(i), option.optname.view());
    ASSERT_EQ(option.outofbounds & ~option.defined, 0);
    const std::int32_t found = options->optlookup(option.optname);
    ASSERT_TRUE(found <= i && (found >= 0 || options->lookupmode != lookupNormal));
    options->optsetstrnr(i + 1, option.getasstring());
  }
}

TEST(TextOfAnyKind, LeavesAGoodObject) {
  ASSERT_NE(std::freopen("/dev/null", "r", stdin), nullptr);  // an empty file name reads this
  for (unsigned seed = 0; seed < 100; ++seed) {
    optiontable options;
    garbage texts(seed);
    options->optechoset(seed % 3 == 0);
    options->opteolonlyset(seed % 2);
    std::vector<const toption*> numbers;
    for (int round = 0; round < 9; ++round) {
      if (round % 3 == 0) options.define(texts.text(true));
      const std::string text = texts.text(false);
      options.readfile(text);
      options->optreadfromstr(text.substr(0, 300));
      options->optreadfrompchar(text.c_str());
      options->optshowhelp(seed % 2 == 0 ? "3" : "11");
      ASSERT_NO_FATAL_FAILURE(checksound(options, numbers)) << seed;
      if (round % 4 == 0) options->optresetrecentchanges();
    }
    options->optresetall();
    EXPECT_EQ(options.state(), "");
  }
}

}  // namespace
}  // namespace optxv::test
