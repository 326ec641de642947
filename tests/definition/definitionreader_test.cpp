#include "definition/definitionreader.h"

#include <algorithm>
#include <cerrno>

#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"
#include "writers/facts.h"

namespace optxv {
namespace {

/// Words with a blank between, where there is one.
std::string words(const lines& all) {
  std::string text;
  for (const std::string& word : all)
    if (!word.empty()) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::string n(std::int32_t number) {
  return std::to_string(number);
}

/// What the table holds, as a definition would declare it; without the option Help.
lines declared(const tzmaoptions& options) {
  const tablefacts facts = describe(options);
  lines all;
  std::string comment;
  for (int c = 0; c < 256; ++c)
    if (options.eolcommset.has(static_cast<char>(c))) comment += static_cast<char>(c);
  if (!comment.empty()) all.push_back("hash eolcomm " + comment);
  for (const groupfacts& group : facts.groups)
    all.push_back(words({group.name, "group", n(group.number), n(group.helpcontext), group.title}));
  for (const optionfacts& o : facts.options) {
    if (&o == &facts.options.front()) continue;
    const std::string type = o.kind + (o.modifier.empty() ? "" : "." + o.modifier);
    const std::string usermap = o.kind == "macro" ? "" : o.action.empty() ? n(o.refnr) : o.action;
    all.push_back(words({o.tablename, type, usermap, o.defaultvalue, o.low, o.high,
                         n(o.helpcontext), n(o.group), o.help}));
    for (const std::string& line : o.longhelp) all.push_back(" " + line);
    for (const valuefacts& value : o.values)
      all.push_back(" " + words({value.value, n(value.helpcontext), value.help}));
    if (o.kind == "multilist" && !o.members.empty()) all.push_back(" " + words(o.members));
    if (o.kind == "macro")
      for (const std::string& member : o.members) all.push_back(" " + member);
    if (o.deprecated || o.obsolete) all.push_back(" " + o.tablename + " " + o.deprecatedtext);
    for (const synonymfacts& synonym : o.synonyms)
      if (synonym.deprecated || synonym.obsolete)
        all.push_back(" " + synonym.name + " " + synonym.text);
  }
  for (std::int32_t i = 0; i < options.optsynonymcount(); ++i) {
    const toption* target = options.getobjects(options.synonymposition(i));
    all.push_back(words({str(options.synonymlist.getname(i)), "synonym",
                         target == nullptr ? "" : str(target->optname)}));
  }
  if (options.lookupmode != lookupNormal)
    all.push_back(str(lookupcodes[options.lookupmode]) + " lookup");
  if (!options.indicatorkey.isnil()) all.push_back(str(options.indicatorkey) + " indicator");
  return all;
}

/// What does not stay in the table is the remark and the names of two records. The order is
/// another.
TEST(Definition, OfEveryKindIsHeldAsItIsWritten) {
  lines held = declared(optiontable(everykind()).options);
  lines written;
  std::istringstream in(everykind());
  for (std::string line; std::getline(in, line);)
    if (line[0] != '*' && line != "passing deprecated" && line != "dead obsolete")
      written.push_back(line);
  std::ranges::sort(held);
  std::ranges::sort(written);
  EXPECT_EQ(held, written);
}

TEST(Definition, ReportsFaultsAndCompletesTheRecord) {
  const std::string rows = R"(* a remark counts as a line

p integer.NV 1 5 0 9 7 3 text
 Long help.
 
    Indented.
a integer
> *** Definition Error line 7: Bad usermap value for option "a"
> *** Definition Error line 7: Bad default value for option "a"
> *** Definition Error line 7: Bad low value for option "a"
> *** Definition Error line 7: Bad high value for option "a"
> *** Definition Error line 7: Bad HC value for option "a"
> *** Definition Error line 7: Bad Group value for option "a"
> p integer.NV 1 5 0 9 7 3 text
>  Long help.
>  
>  Indented.
> a integer 1 5 0 9 7 3
a integer 1 12x 0 9 1 1 t
> *** Definition Error line 1: Bad default value for option "a"
> *** Definition Error line 1: Default not in range for option "a"
> a integer 1 12 0 9 1 1 t
a integer $10 -5 minint MaxInt "3" +1  two  words \t
> a integer 16 -5 minint maxint 3 1 two  words
a string.nv 1 x 0 0
b string.xx 1 x 0 0
c string 1 x 0 0
d string. 1 x 0 0
> *** Definition Error line 2: Unknown type modifier = XX for option "b"
> *** Definition Error line 4: Unknown type modifier =  for option "d"
> a string.NV 1 x 0 0
> b string.NV 1 x 0 0
> c string 1 x 0 0
> d string 1 x 0 0
a foo 5 rest
b strlist.OPT 1 0 0
> *** Definition Error line 1: Unknown option type "foo" for option "a"
> *** Definition Error line 2: Type modifier not allowed for option "b"
> b strlist 1 0 0
a strlist 1 0 0
A string 2 x 0 0
HELP strlist 3 0 0
s synonym a
s strlist 4 0 0
> *** Definition Error line 2: Duplicate option for option "A"
> *** Definition Error line 3: Duplicate option for option "HELP"
> *** Definition Error line 5: Duplicate option for option "s"
> a strlist 1 0 0
> A string 2 x 0 0
> HELP strlist 3 0 0
> s strlist 4 0 0
> s synonym a
.<n*64> strlist 1 0 0
<n*64> strlist 1 0 0
> *** Definition Error line 1: Identifier too long for option "<n*64>"
> .<n*64> strlist 1 0 0
> <n*64> strlist 1 0 0
t string 2 "ab 0 0
> *** Definition Error line 1: Bad HC for option "t"
> *** Definition Error line 1: Bad Group value for option "t"
> t string 2 "ab 0 0" 0 0
e enumstr.TWO 1 "A b" 7 5 t
 "a B" 3 the text
 c
 d x u
> *** Definition Error line 3: Bad HC for option "e"
> *** Definition Error line 4: Bad HC for option "e"
> e enumstr.TWO 1 "A b" 7 5 t
>  "a B" 3 the text
>  c 3
>  d 0 u
e enumstr 1
l strlist 1 0 0
> *** Definition Error line 1: Bad default string for option "e"
> *** Definition Error line 1: Bad HC for option "e"
> *** Definition Error line 1: Bad Group value for option "e"
> *** Definition Error line 2: Default is undefined for option "e"
> e enumstr 1 "" 0 0
> l strlist 1 0 0
e enumstr 1 z 0 0
 a 1
 a 1
> *** Definition Error line 3: Default is undefined for option "e"
> e enumstr 1 z 0 0
>  a 1
>  a 1
n enumint.OPT 1 4 7 5 t
 4 3 four
 \s
 x y z
> *** Definition Error line 3: Bad integer enum for option "n"
> *** Definition Error line 3: Bad HC for option "n"
> *** Definition Error line 4: Bad integer enum for option "n"
> *** Definition Error line 4: Bad HC for option "n"
> n enumint.OPT 1 4 7 5 t
>  4 3 four
>  4 3
>  0 0 z
x integer 1 0 0 9 0 0
m multilist 2 3 4 t
 x nil x nil
 \s
 m "x
l strlist 1 0 0
> *** Definition Error line 3: MultiList option "nil" is undefined for option "m"
> *** Definition Error line 3: Duplicate option used for option "m"
> *** Definition Error line 3: MultiList option "nil" is undefined for option "m"
> *** Definition Error line 3: Duplicate option used for option "m"
> x integer 1 0 0 9 0 0
> m multilist 2 3 4 t
>  x x m
> l strlist 1 0 0
x integer 1 0 0 9 0 0
m multilist 2 0 0
 x,m
> *** Definition Error line 3: Comma in member list for option "m"
> x integer 1 0 0 9 0 0
> m multilist 2 0 0
>  x
Path lookup
first_name strlist 1 0 0
s synonym fir_nam
m multilist 2 0 0
 FIR_NAM s
k macro 0 0
 fir_nam
 FIRST_name
Soft lookup
> *** Definition Error line 5: MultiList option "s" is undefined for option "m"
> *** Definition Error line 7: Unknown option "fir_nam" for macro "k" for option "k"
> *** Definition Error line 9: Unknown lookup code "Soft" for option "Soft"
> first_name strlist 1 0 0
> m multilist 2 0 0
>  first_name
> k macro 0 0
>  first_name
> s synonym first_name
> Path lookup
x integer 1 0 0 9 0 0
s synonym x
m macro 3 4 t
 x nil
 m
 s
 x
> *** Definition Error line 5: Unknown option "m" for macro "m" for option "m"
> *** Definition Error line 6: Unknown option "s" for macro "m" for option "m"
> x integer 1 0 0 9 0 0
> m macro 3 4 t
>  x
>  x
> s synonym x
a immediate Foo 1 2 t
b immediate
l strlist 1 0 0
> *** Definition Error line 1: Unknown immediate option for option "a"
> *** Definition Error line 2: immediate type expected for option "b"
> *** Definition Error line 2: Bad HC for option "b"
> *** Definition Error line 2: Bad Group value for option "b"
> *** Definition Error line 2: Unknown immediate option for option "b"
> l strlist 1 0 0
x integer 1 0 0 9 0 0
s synonym X
S synonym nil
t synonym s
x synonym x
u synonym
> *** Definition Error line 3: Duplicate synonym"S"
> *** Definition Error line 3: Unknown option for synonym"S"
> *** Definition Error line 4: Unknown option for synonym"t"
> *** Definition Error line 6: Unknown option for synonym"u"
> x integer 1 0 0 9 0 0
> s synonym x
> S synonym
> t synonym
> x synonym x
> u synonym
g group 1 2 one
h group 7
G group 1 0 two
i group
> *** Definition Error line 2: Bad HC for option "h"
> *** Definition Error line 3: Duplicate group for option "G"
> *** Definition Error line 3: Group number not unique for option "G"
> *** Definition Error line 4: Bad group number for option "i"
> *** Definition Error line 4: Bad HC for option "i"
> *** Definition Error line 4: Group number not unique for option "i"
> g group 1 2 one
> h group 7 2
> G group 1 0 two
> i group 1 0
x integer 1 0 0 9 0 0
s synonym x
head deprecated no matter
 x Use y
 s Use x
 nil t
old obsolete
 X Gone for good
 nil
> *** Definition Error line 6: Deprecated option "nil" is undefined for option "head"
> *** Definition Error line 9: Deprecated option "nil" is undefined for option "old"
> x integer 1 0 0 9 0 0
>  x Gone for good
>  s Use x
> s synonym x
a indicator t
b indicator
<n*64> indicator
> *** Definition Error line 2: Indicator redefined for option "b"
> *** Definition Error line 3: Indicator redefined for option "<n*64>"
> *** Definition Error line 3: Indicator "<n*64>" not a good identifier for option "<n*64>"
> <n*64> indicator
)";
  const auto told = [](const std::string& text) {
    optiontable options;
    options.define(text);
    lines all = options.queue();
    for (const std::string& line : declared(options.options)) all.push_back(line);
    return joined(all, "\n");
  };
  EXPECT_EQ(retold(rows, told), rows);
}

// A line that is no record ends it: one that begins with a blank, with byte 26 or with a number.
TEST(Definition, EndsSilently) {
  const std::string rows = R"(one strlist 1 0 0
 two strlist 2 0 0
three strlist 3 0 0
> one strlist 1 0 0
one strlist 1 0 0
^Z
two strlist 2 0 0
> one strlist 1 0 0
one integer 1 0 0 9 0 0
 help
 \s
two strlist 2 0 0
> one integer 1 0 0 9 0 0
>  help
>  
> two strlist 2 0 0
one strlist 1 0 0^M
two string 1 x 0 0^M
> one strlist 1 0 0
> two string 1 x 0 0
)";
  const auto told = [](const std::string& text) {
    optiontable options;
    options.define(text);
    EXPECT_EQ(options.queue(), lines()) << text;
    return joined(declared(options.options), "\n");
  };
  EXPECT_EQ(retold(rows, told), rows);
}

TEST(Definition, ThatCannotBeOpenedLeavesNothing) {
  optiontable options;
  EXPECT_EQ(options->optreaddefinition("/nowhere/x.def"), ENOENT);
  EXPECT_EQ(options.told(),
            "*** Definition Error Cannot open option file \"/nowhere/x.def\"\n"
            "*** Definition Error Error code = 2; No such file or directory");
  EXPECT_EQ(options->optcount(), 0);
}

TEST(Definition, ThatCannotBeReadKeepsWhatWasRead) {
  optiontable options;
  EXPECT_EQ(options->optreaddefinition("/proc/self/mem"), EIO);
  EXPECT_EQ(options.told(),
            "*** Definition Error Cannot read option file \"/proc/self/mem\"\n"
            "*** Definition Error Error code = 5; Input/output error");
  EXPECT_EQ(options->optcount(), 1);
}

}  // namespace
}  // namespace optxv
