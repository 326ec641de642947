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
  const std::string rows = rowsof("definition/faults.rows");
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
> \s
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

TEST(Definition, TakesCharactersThatNoValueBeginsWith) {
  std::string taken;
  for (char c = ' ' + 1; c < 127; ++c)
    if (optiontable(std::string("c eolcomm ") + c).options.eolcommset.has(c)) taken += c;
  EXPECT_EQ(taken, "!#$%&()*,/:;<=>?@[\\]^_`{|}~");
  const optiontable three("c eolcomm !#0%");
  EXPECT_EQ(declared(three.options), lines{"hash eolcomm !#"}) << "up to the first that is none";
}

}  // namespace
}  // namespace optxv
