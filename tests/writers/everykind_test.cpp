// What is made of a table with an option of every kind: facts of it, and the documents.
#include "writers/optionwriter.h"

#include "support/optiontable.h"
#include "writers/facts.h"

namespace optxv {
namespace {

constexpr std::string_view everykind =
    "general group 2 1 General options\n"
    "rate integer.OPT 3 1 0 maxint 1 2 Rate <b> \"q\"\n Long help,\n \n   indented.\n"
    "tol double 4 1e-6 mindouble 1e299 5 2 Tolerance\n"
    "logname string 5 \"a, b\" 6 2 Caf\xE9 & co\n"
    "flag boolean.NV 6 1 7 2 Flag\n Help of the flag.\n"
    "method enumstr 7 \"by size\" 8 2 Method\n \"by size\" 81 By size\n dual 82\n"
    "level enumint 8 maxint 9 maxint Level\n 0 90 Silent\n maxint 91 All\n"
    "pair multilist 9 10 2 Pair\n rate tol\npaths strlist 10 11 2 Paths\n"
    "fast macro 12 2 Fast\n flag\n method\n"
    ".scale double.TWO 11 1 eps 10 13 2 Scale\nrf immediate ReadFile 14 2 Read\n"
    "stop synonym rate\n"
    "passing deprecated\n stop Say rate\n flag Too old\n"
    "gone obsolete\n tol No more\n paths Never again\n";

/// How one document is written to a file, and to a text in memory.
struct operation {
  void (tzmaoptionwriter::*tofile)(std::string_view) const;
  std::string (tzmaoptionwriter::*totext)() const;
};
constexpr operation ashtml = {&tzmaoptionwriter::writeashtml, &tzmaoptionwriter::htmltext};
constexpr operation asdefinition = {&tzmaoptionwriter::writedefinition,
                                    &tzmaoptionwriter::definitiontext};
constexpr operation asinclude = {&tzmaoptionwriter::writedelphiinc,
                                 &tzmaoptionwriter::delphiinctext};

std::string written(const tzmaoptions& options, operation write) {
  const tzmaoptionwriter writer(options);
  const scratchfile file;
  (writer.*write.tofile)(file.name());
  EXPECT_EQ(ioresult(), 0);
  EXPECT_EQ((writer.*write.totext)(), file.content());
  return file.content();
}

/// What a definition, which must be free of faults, is written back as, without the line for help.
std::string definition(std::string_view text) {
  const std::string all = written(optiontable(text).options, asdefinition);
  EXPECT_TRUE(all.starts_with("Help immediate.OPT Help 0 \n"));
  return all.substr(all.find('\n') + 1);
}

TEST(DefinitionDocument, HoldsEveryKind) {
  EXPECT_EQ(definition(everykind),
            "rate integer.OPT 3 1 0 maxint 1 2 Rate <b> \"q\"\n   Long help,\n   \n   indented.\n"
            "tol double 4 1E-6 mindouble maxdouble 5 2 Tolerance\n"
            "logname string 5 \"a, b\" 6 2 Caf\xE9 & co\n"
            "flag boolean.NV 6 1  7 2 Flag\n   Help of the flag.\n"
            "method enumstr 7 \"by size\"  8 2 Method\n by size 81 By size\n dual 82 \n"
            "level enumint 8 2147483647  9 2147483647 Level\n 0 90 Silent\n maxint 91 All\n"
            "pair multilist 9  10 2 Pair\n rate tol\nfast macro  12 2 Fast\n flag\n method\n"
            ".scale double.TWO 11 1 1E-20 10 13 2 Scale\nrf immediate ReadFile 14 Read\n"
            "stop synonym rate\nver deprecated options\n   rate  \n   flag  Too old\n"
            "ver obsolete options\n   tol  No more\n   paths  Never again\n");
}

// What it does not write in a form that is read is left out: lists of texts and marks, and an
// instruction without its hc.
TEST(DefinitionDocument, ReadsBackAsTheSameTable) {
  std::string text, written;
  std::istringstream in{str(everykind)};
  for (std::string line; std::getline(in, line) && !line.starts_with("passing");)
    if (!line.starts_with("paths") && !line.starts_with("rf") && !line.starts_with("general"))
      text += replaced(line, "by size", "by_size") + "\n";
  const tablefacts first = describe(optiontable(text).options);
  const tablefacts again = describe(optiontable(definition(text)).options);
  ASSERT_EQ(first.options.size(), again.options.size());
  for (std::size_t i = 0; i < first.options.size(); ++i) {
    const optionfacts &a = first.options[i], &b = again.options[i];
    EXPECT_EQ(std::tie(a.tablename, a.kind, a.modifier, a.refnr, a.defaultvalue, a.low, a.high),
              std::tie(b.tablename, b.kind, b.modifier, b.refnr, b.defaultvalue, b.low, b.high));
    EXPECT_EQ(std::tie(a.helpcontext, a.group, a.help, a.members),
              std::tie(b.helpcontext, b.group, b.help, b.members));
    EXPECT_EQ(a.synonyms.size(), b.synonyms.size());
  }
}

TEST(DefinitionDocument, MembersFillEightyColumns) {
  std::string flags, line;
  for (int i = 100; i < 107; ++i) {
    flags += "member" + std::to_string(i) + " boolean 0 0 1 1 x\n";
    line += " member" + std::to_string(i);
  }
  ASSERT_EQ(line.size(), 70U);
  for (const std::size_t size : {9U, 10U, 85U}) {
    const std::string last(size, 'z'), flag = last + " boolean 0 0 1 1 x\n";
    const std::string whole =
        definition(flags + flag + "all multilist 1 2 3 All\n" + line + "\n " + last + "\n");
    EXPECT_TRUE(whole.ends_with(line + (size == 9 ? " " : "\n ") + last + "\n")) << whole;
  }
}

TEST(DefinitionDocument, EdgeRows) {
  const std::pair<const char*, const char*> rows[] = {
      {"all multilist 1 2 3 All\n", "all multilist 1  2 3 All\n\n"},
      {"p strlist 1 1 1 P\nd deprecated\n p gone\n", ""},
      {"p strlist 1 1 1 P\nb boolean 1 0 1 1 B\nd deprecated\n b too\n p gone\n",
       "b boolean 1 0  1 1 B\nver deprecated options\n   p  gone\n   b  too\n"},
      {"s string 1 \"\" 1 1\nm macro 1 1 M\n", "s string 1 \"\" 1 1 \nm macro  1 1 M\n"}};
  for (const auto& [text, expected] : rows) EXPECT_EQ(definition(text), expected);
}

/// A row of the option table, from texts that are escaped already.
std::string row(const lines& texts) {
  const bool open = texts.size() == 3 && !texts[0].empty() && texts[1] != "synonym";
  return "\n<tr>\n<td> " + joined(texts, " </td>\n<td> ") + " </td>\n" + (open ? "" : "</tr>\n");
}

std::string tableof(const optiontable& of) {
  const std::string all = written(of.options, ashtml);
  const std::string top =
      "<html>\n<body>\n\n<table border>\n" +
      row({"Option", "Type", "UserMap", "Default", "Low", "High", "Group", "Hc", "Help Text"}) +
      row({"Help", "immediate", "0", "Help", "", "", "0", "0", ""});
  const std::string end = "</table>\n\n</body>\n</html>\n";
  EXPECT_TRUE(all.starts_with(top) && all.ends_with(end)) << all;
  return all.substr(top.size(), all.size() - top.size() - end.size());
}

// KEEP: some kinds leave their row open, and the values of an enumint share one opening.
TEST(OptionTable, HoldsEveryKind) {
  EXPECT_EQ(
      tableof(optiontable(everykind)),
      row({"rate", "integer", "3", "1", "0", "maxint", "2", "1", "Rate &lt;b&gt; \"q\""}) +
          row({"tol", "double", "4", "1E-6", "mindouble", "maxdouble", "2", "5", "Tolerance"}) +
          row({"logname", "string", "5", "\"a, b\"", "", "", "2", "6", "Caf&eacute; &amp; co"}) +
          row({"flag", "boolean", "6", "1", "", "", "2", "7", "Flag"}) +
          row({"method", "enumstr", "7", "\"by size\"", "", "", "2", "8", "Method"}) +
          row({"", "", "", "by size", "", "", "", "81", "By size"}) +
          row({"", "", "", "dual", "", "", "", "82", ""}) +
          row({"level", "enumint", "8", "2147483647", "", "", "maxint", "9", "Level"}) +
          row({"", "", "", "0", "", "", "", "90", "Silent"}) +
          row({"", "", "", "2147483647", "", "", "", "91", "All"}).substr(6) +
          row({"pair", "multilist", "9", "", "", "", "2", "10", "Pair"}) + row({"", "", "rate"}) +
          row({"", "", "tol"}) + row({"paths", "strlist", "10"}) + row({"fast", "macro", "-1"}) +
          row({".scale", "double", "11", "1", "1E-20", "10", "2", "13", "Scale"}) +
          row({"rf", "immediate", "-1", "ReadFile", "", "", "2", "14", "Read"}) +
          row({"stop", "synonym", "rate"}));
  EXPECT_EQ(tableof(optiontable("")), "");
}

TEST(OptionTable, OfWhatAFaultyDefinitionLeft) {
  optiontable faulty("a_b string 1 \"\" 1 1\n");
  faulty.options.addoption("e", faulty.options.make<tenumintoption>("e", 1, optionhelp()));
  faulty.options.addsynonym("s", -1);
  EXPECT_EQ(tableof(faulty), row({"a_b", "string", "1", "\"\"", "", "", "1", "1", ""}) +
                                 row({"e", "enumint", "0", "1", "", "", "0", "0", ""}) +
                                 "\n<tr>\n" + row({"s", "synonym", ""}));
}

std::string include(std::string_view text) {
  const std::string all = written(optiontable(text).options, asinclude);
  shortstring version;
  tzmaoptions::optversion(version);
  const std::string top = "// file created by " + str(version) + "\ntype\n";
  EXPECT_TRUE(all.starts_with(top) && all.ends_with("\n")) << all;
  return all.substr(top.size(), all.size() - top.size() - 1);
}

TEST(SourceInclude, HoldsABucketForEachClassOfValue) {
  const std::string types =
      "\n   Tpfintegerkeys = (\n"
      "       pfrate             , pfflag             , pflevel       );\n"
      "\n   Tpfrealkeys = (\n       pftol              , pf.scale      );\n"
      "\n   Tpfstringkeys = (\n       pflogname          , pfmethod      );\n"
      "\n   Tpfkeys = (\n       pffast        );\n";
  const std::string maps =
      "\n   pfintegermap: array[Tpfintegerkeys] of integer = (\n"
      "       2        , 5        , 7    );\n"
      "\n   pfrealmap: array[Tpfrealkeys] of integer = (\n       3        , 11   );\n"
      "\n   pfstringmap: array[Tpfstringkeys] of integer = (\n       4        , 6    );\n"
      "\n   pfmap: array[Tpfkeys] of integer = (\n       10   );\n";
  EXPECT_EQ(include(everykind), types + "\nconst\n" + maps);
  EXPECT_EQ(include("p strlist 1 1 1 P\nl multilist 1 1 1 L\n p\n"), "\nconst\n");
}

// Items are padded to a multiple of 14; one that is such a multiple gets no blank.
TEST(SourceInclude, ItemsStandInLines) {
  std::string text, names, numbers;
  for (int i = 0; i < 12; ++i) {
    const std::string name(i == 11 ? 26 : 12, static_cast<char>('a' + i));
    const std::string number = std::to_string(i + 2);
    text += name + " boolean 1 0 1 1 x\n";
    names += (i == 0 ? "  " : i % 5 == 0 ? "\n     , " : "     , ") + ("pf" + name);
    numbers += (i == 0 ? "  " : i % 10 == 0 ? "\n     , " : "     , ") + number;
    numbers.append(4 - number.size(), ' ');
  }
  EXPECT_EQ(include(text), "\n   Tpfintegerkeys = (\n     " + names +
                               ");\n\nconst\n\n   pfintegermap: array[Tpfintegerkeys] of integer = "
                               "(\n     " +
                               numbers + " );\n");
}

TEST(Facts, NamesAsUsersSeeThem) {
  const optiontable read("Minos lookup\na_b boolean 1 0 1 1 x\nc_d synonym a_b\nrow indicator\n");
  const tablefacts facts = describe(read.options);
  EXPECT_EQ(facts.options[1].tablename + "," + facts.options[1].name, "a_b,a b");
  EXPECT_EQ(facts.options[1].synonyms.at(0).name + "," + facts.indicatorkey, "c d,row");
}

TEST(Documents, FilesThatCannotBeWrittenAreRefused) {
  const optiontable options("a integer 1 1 0 9 1 1 A\n");
  const std::int64_t before = allocmemcount();
  const tzmaoptionwriter writer(options.options);
  for (const operation write : {asdefinition, ashtml, asinclude})
    for (const char* name : {"/dev/full", "/", "/none/such"}) {
      EXPECT_THROW((writer.*write.tofile)(name), einouterror) << name;
      EXPECT_EQ(ioresult(), 0) << name;
    }
  EXPECT_EQ(allocmemcount(), before);
}

}  // namespace
}  // namespace optxv
