#include "definition/definitionreader.h"

#include <cerrno>

#include "definition/described.h"

namespace optxv {
namespace {

TEST(Definition, OfEveryKindIsReadLineByLine) {
  optiontable options(sampledefinition);
  EXPECT_EQ(described(options), lines({"steplim int 1 1000 0 2147483647 10 1 Step limit",
                                       "  | Ends the run after so many steps.",
                                       "  | ",
                                       "  | Restarts count.",
                                       "  ! 2 ;Use steplim",
                                       "tol dbl 2 1E-6 0 1 11 1 Feasibility tolerance",
                                       "logname str 3 'run log' 12 1 Log file name",
                                       "scale bool 4 '1' 13 1 Scale the model",
                                       "verbose bool.NV 5 '0' 14 1 Talk more",
                                       "method estr 6 'auto' 20 1 Solution method",
                                       "  - auto 21 By model size",
                                       "  - primal 22 Primal simplex",
                                       "printlevel eint 7 '1' 23 1 Output volume",
                                       "  - 0 24 Silent",
                                       "  - 1 25 Normal",
                                       "paths list 8 26 1 Search paths",
                                       "fast macro -1 27 1 Fast settings",
                                       "  - scale",
                                       "rf imm -1 1 28 1 Read a parameter file",
                                       ".scale dbl 9 1 0 1E299 29 1 Scale factor"}));
  EXPECT_EQ(options->indicatorkey.view(), "rowtype");
  EXPECT_TRUE(options->eolcommset.has('!'));
}

// Text >> messages ("@" stands for " for option '") >> table.
TEST(Definition, ReportsFaultsAndCompletesTheRecord) {
  constexpr std::string_view rows = R"(
* c\n\np integer.NV 1 5 0 9 7 3 text\na integer >> D4: Bad usermap value@a'
    D4: Bad default value@a' | D4: Bad low value@a' | D4: Bad high value@a' | D4: Bad HC value@a'
    D4: Bad Group value@a' >> p int.NV 1 5 0 9 7 3 text | a int 1 5 0 9 7 3
a integer 1 12x 0 9 1 1 t >> D1: Bad default value@a' | D1: Default not in range@a'
    >> a int 1 12 0 9 1 1 t
a integer $10 -5 minint MaxInt "3" +1  two  words \t  >>
    >> a int 16 -5 -2147483648 2147483647 3 1 two words
a string.nv 1 x 0 0\nb string.xx 1 x 0 0\nc string 1 x 0 0\nd string. 1 x 0 0
    >> D2: Unknown type modifier = XX@b' | D4: Unknown type modifier = @d' >> a str.NV 1 'x' 0 0
    b str.NV 1 'x' 0 0 | c str 1 'x' 0 0 | d str 1 'x' 0 0
a foo 5 rest\nb strlist 1 0 0 >> D1: Unknown option type 'foo'@a' >> b list 1 0 0
a strlist 1 0 0\nA string 2 x 0 0\nHELP strlist 3 0 0\ns synonym a\ns strlist 4 0 0
    >> D2: Duplicate option@A' | D3: Duplicate option@HELP' | D5: Duplicate option@s'
    >> a list 1 0 0 | A str 2 'x' 0 0 | HELP list 3 0 0 | s list 4 0 0
.~ strlist 1 0 0\n~ strlist 1 0 0 >> D1: Identifier too long@~' >> .~ list 1 0 0 | ~ list 1 0 0
s string 1\nt string 2 "ab 0 0 >> D1: Bad HC@s' | D1: Bad Group value@s' | D2: Bad HC@t'
    D2: Bad Group value@t' >> s str 1 '' 0 0 | t str 2 'ab 0 0' 0 0
)";
  for (const lines& row : rowsof(rows)) {
    optiontable options;
    options.define(longer(row[0]) + "\n");
    EXPECT_EQ(replaced(options.brief(), " for option '", "@"), longer(row[1])) << row[0];
    EXPECT_EQ(flat(joined(described(options))), longer(row[2])) << row[0];
  }
}

TEST(Definition, EndsInSilence) {
  // Text >> the number of options, Help among them.
  constexpr std::string_view rows = R"(
^ >> 2
\n ^\n^ >> 1
^\n\x1a\n^ >> 2
g group 1 0\n help\n^ >> 1
%\n help\n \n^ >> 3
^\r\ns string 1 x 0 0\r >> 3
)";
  for (const lines& row : rowsof(rows)) {
    optiontable options;
    options.define(replaced(replaced(longer(row[0]), "\\r", "\r"), "\\x1a", "\x1a") + "\n");
    EXPECT_EQ(options.queue(), lines()) << row[0];
    EXPECT_EQ(std::to_string(options->optcount()), row[1]) << row[0];
  }
}

TEST(Definition, ThatCannotBeOpenedLeavesNothing) {
  optiontable options;
  EXPECT_EQ(options->optreaddefinition("/nowhere/x.def"), ENOENT);
  EXPECT_EQ(options.brief(),
            "D Cannot open option file '/nowhere/x.def' | "
            "D Error code = 2; No such file or directory");
  EXPECT_EQ(options->optcount(), 0);
}

}  // namespace
}  // namespace optxv
