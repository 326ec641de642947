#include "writers/help.h"

#include <gtest/gtest.h>

#include <string>

#include "support/optiontable.h"
#include "support/rows.h"

namespace optxv {
namespace {

/// The help of a definition on a request, a line each.
std::string shown(const std::string& definition, const std::string& request) {
  optiontable options;
  options.define(definition);
  options->optclearmessages();
  options->optshowhelp(request);
  return joined(options.queue(), "\n");
}

TEST(Help, ShowsTheDefinitionOfEachKind) {
  const std::string definition = meant(R"(i integer 1 -3 minint 10 0 0 int text
 long one
\s
 long two
d double 2 .5 eps maxdouble 0 0
s string 4 "a b" 0 0 str
none string 4 "" 0 0
es enumstr 5 one 0 0 es text
 one 0 first
 eleven 0
 x 0 third
ei enumint 6 1 0 0
 1 0 one
 -200 0 low
wide enumint 6 maxint 0 0 w
 1 0
 maxint 0 all
syn synonym i
a_b strlist 9 0 0 two words
)");
  const std::string rows = rowsof("writers/kinds.rows");
  EXPECT_EQ(retold(rows, [&](auto& request) { return shown(definition, request); }), rows);
}

TEST(Help, ListsWhatTheModeSelects) {
  const std::string definition = R"(first group 2 1 First group
hidden group 3 0 Not shown
none group 1 1
name_of_23_characters__ strlist 1 1 2 longest
name_of_22_characters_ strlist 1 1 2 long
x10 strlist 1 1 2 ten
X9 strlist 1 1 2
off strlist 1 0 2 off
less strlist 1 1 0 less
other strlist 1 1 3 in a hidden group
z strlist 1 1 1 last
sy synonym z
soff synonym off
a deprecated
 z Old
 name_of_22_characters_ Old
b obsolete
 z Gone
 x10 Gone
)";
  const auto told = [&](const std::string& request) { return shown(definition, request); };
  const std::string rows = rowsof("writers/modes.rows");
  EXPECT_EQ(retold(rows, told), rows);
  const std::string summary = told("17"), full = told("10");
  for (const char* request : {"", "lost", "3x"}) EXPECT_EQ(told(request), summary) << request;
  for (const char* request : {"0", "-1", "$3"})
    EXPECT_EQ(told(request), summary + "\n" + full) << request;
  EXPECT_EQ(told("11"), told("9") + "\n" + full);
  for (const char* request : {"16", "8"}) EXPECT_EQ(told(request), "") << request;
  EXPECT_EQ(shown("g group 1 0 Hidden\nx strlist 1 0 1\n", "3"),
            "\nOptions summary by group\n\nOptions in alphabetical order\n")
      << "the title waits for a group";
}

TEST(Help, ShowsBlanksUnderMinos) {
  const std::string definition = "Minos lookup\nmax_iter strlist 1 1 1 t\nm_it synonym max_iter\n";
  const std::string rows = R"(max iter
> max iter: t
>                         strlist,\s
m_it
> m_it is a synonym for max iter
> max iter: t
>                         strlist,\s
)";
  EXPECT_EQ(retold(rows, [&](auto& request) { return shown(definition, request); }), rows);
}

TEST(Help, IsGivenByTheParameterReader) {
  const std::string rows = R"(help x
Help
help 2 x 1
> x: text
>                         strlist,\s
>
> Options summary by group
>
> G
> x                     : text
>
> Options in alphabetical order
>
> x: text
>                         strlist,\s
> x=[1]
)";
  const auto told = [](const std::string& text) {
    return optiontable("g group 1 1 G\nx strlist 1 1 1 text\n").read(text).told();
  };
  EXPECT_EQ(retold(rows, told), rows);
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
