#include "writers/help.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "support/optiontable.h"

namespace optxv {
namespace {

const std::string in24(24, ' '), in22(22, ' ');

std::string pad(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text;
}

TEST(Help, ShowsTheDefinitionOfEachKind) {
  const std::string definition =
      "i integer 1 -3 minint 10 0 0 int text\n long one\n \n long two\n"
      "d double 2 .5 eps maxdouble 0 0\ns string 4 \"a b\" 0 0 str\nnone string 4 \"\" 0 0\n"
      "es enumstr 5 one 0 0 es text\n one 0 first\n eleven 0\n x 0 third\n"
      "ei enumint 6 1 0 0\n 1 0 one\n -200 0 low\n 99 0\n"
      "wide enumint 6 maxint 0 0 w\n 1 0\n maxint 0 all\n"
      "syn synonym i\na_b strlist 9 0 0 two words\n";
  // "~" stands for 24 blanks.
  const std::pair<const char*, const char*> rows[] = {
      {"D", "d:  | ~double,  range: 1E-20 to maxdouble default: 0.5"},
      {"s", "s: str | ~string,  default: \"a b\""},
      {"none", "none:  | ~string,  default: \" | \""},
      {"es",
       "es: es text | ~enumstr,  default: \"one\" | ~   one     first | ~   eleven   | "
       "~   x       third"},
      {"ei", "ei:  | ~enumint,  default: 1 | ~     1 one | ~    -200 low | ~    99 "},
      {"wide", "wide: w | ~enumint,  default: maxint | ~      1  | ~    2147483647 all"},
      {"syn",
       "syn is a synonym for i | i: int text | "
       "~integer,  range: minint to 10 default: -3 | ~long one | ~ | ~long two"},
      {"a b", "a b is a synonym for a_b | a_b: two words | ~strlist, "},
      {"Help", "Help:  | ~immediate, "}};
  for (const auto& [request, expected] : rows) {
    optiontable options(definition);
    options->optshowhelp(request);
    EXPECT_EQ(replaced(joined(options.queue()), " " + in24, " ~"), expected);
  }
}

TEST(Help, ListsWhatTheModeSelects) {
  const std::string definition =
      "first group 2 1 First group\nhidden group 3 0 Not shown\nnone group 1 1\n"
      "name_of_23_characters__ strlist 1 1 2 longest\nname_of_22_characters_ strlist 1 1 2 long\n"
      "x10 strlist 1 1 2 ten\nX9 strlist 1 1 2\noff strlist 1 0 2 off\nless strlist 1 1 0 less\n"
      "other strlist 1 1 3 in a hidden group\nz strlist 1 1 1 last\n"
      "sy synonym z\nsoff synonym off\nlost synonym nothing\n"
      "a deprecated\n z Old\n name_of_22_characters_ Old\nb obsolete\n z Gone\n x10 Gone\n";
  const std::string title = "\nOptions summary by group\n\nFirst group\n";
  const std::string middle =
      "name_of_23_characters__\n" + in22 + ": longest\n" + pad("X9", 22) + ": \n";
  const std::string summary = title + "name_of_22_characters_: long\n" + middle + pad("x10", 22) +
                              ": ten\n\nsy (Synonym for z)    : last\n" + pad("z", 22) + ": last\n";
  const std::string marked = title + "name_of_22_characters_ (Deprecated)\n" + in22 + ": long\n" +
                             middle + "x10 (Obsolete)        : ten\n" +
                             "\nsy (Synonym for z) (Deprecated)\n" + in22 +
                             ": last\nz (Deprecated)        : last\n";
  std::string full = "\nOptions in alphabetical order\n\n";
  for (const auto name : {"name_of_22_characters_: long", "name_of_23_characters__: longest",
                          "other: in a hidden group", "X9: ", "x10: ten", "z: last"})
    full += str(name) + "\n" + in24 + "strlist, \n";
  std::map<std::string, std::string> rows;
  for (const char* request : {"", "lost", "17", "3x"}) rows[request] = summary;
  for (const char* request : {"0", "-1", "$3"}) rows[request] = summary + full;
  for (const char* request : {"16", "8"}) rows[request] = "";
  rows["9"] = marked;
  rows["10"] = full;
  rows["11"] = marked + full;
  for (const auto& [request, expected] : rows) {
    optiontable options;
    options.define(definition);
    options->optclearmessages();
    options->optshowhelp(request);
    EXPECT_EQ(joined(options.queue(), "\n") + (expected.empty() ? "" : "\n"), expected) << request;
  }
  optiontable bare("g group 1 0 Hidden\nx strlist 1 0 1\n");  // the title waits for a group
  bare->optshowhelp("3");
  EXPECT_EQ(bare.queue(),
            lines({"", "Options summary by group", "", "Options in alphabetical order", ""}));
}

TEST(Help, ShowsBlanksUnderMinos) {
  optiontable options("Minos lookup\nmax_iter strlist 1 1 1 t\nm_it synonym max_iter\n");
  for (const char* request : {"max iter", "m_it"}) options->optshowhelp(request);
  EXPECT_EQ(replaced(joined(options.queue()), " " + in24, " ~"),
            "max iter: t | ~strlist,  | m_it is a synonym for max iter | max iter: t | ~strlist, ");
}

TEST(Help, IsGivenByTheParameterReader) {
  optiontable options("g group 1 1 G\nx strlist 1 1 1 text\n");
  options.read("help x\nHelp\nhelp 2 x 1\n");
  const std::string block = "x: text | ~strlist, ";
  const std::string summary =
      " |  | Options summary by group |  | G | x                     : text";
  EXPECT_EQ(replaced(joined(options.queue()), " " + in24, " ~"),
            block + summary + " |  | Options in alphabetical order |  | " + block);
  EXPECT_EQ(options.state(), "x=[1]");
}

TEST(Help, DebugListingGoesToStandardOutput) {
  optiontable options("b_2 strlist 1 1 1\na strlist 1 1 1\nab synonym a\nhidden strlist 1 1 0\n");
  testing::internal::CaptureStdout();
  options->optshowhelp("4");
  std::fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "\na \nab *****Nil = Syn\nb_2 \n");
  EXPECT_EQ(options.queue(), lines());
}

TEST(Help, SortsNumbersByValueAndLeavesTiesToTheSort) {
  std::string definition, shown;
  for (const char* name : {"y2", "x10", "X9", "x01", "x1y", "x", "x2147483647", "x_", "X1", "xa",
                           "x99999999999", "Y", "x00", "x2", "x0", "x2147483646"})
    definition += str(name) + " strlist 1 1 1\n";
  optiontable options(definition);
  options->optshowhelp("2");
  for (const std::string& line : options.queue())
    if (line.ends_with(": ")) shown += line;
  EXPECT_EQ(shown,
            "x00: x: x0: X1: x01: x2: X9: x10: x2147483646: x99999999999:"
            " x2147483647: x1y: xa: x_: Y: y2: ");
}

}  // namespace
}  // namespace optxv
