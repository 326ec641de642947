#include "parameter/dotoptions.h"

#include <climits>
#include <string>

#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr std::string_view definition =
    ".scale double 9 1 0 maxdouble 0 1 S\n.flag boolean 0 0 0 1 F\n"
    ".level enumint 0 1 0 1 L\n 1 0 one\n 3 0 three\n.name string 0 none 0 1 T\n"
    "nb immediate NoBounds 0 1 B\n";

// The entries through the getters, as x.scale(a,*)=2; the elements have lost their quotes.
std::string entriesof(const tzmaoptions& options) {
  lines all;
  std::int32_t errors = 0;
  for (std::int32_t i = 1; i <= options.optdotoptcount(errors); ++i) {
    shortstring symbol, attribute, label;
    std::int32_t number = 0, dimension = 0;
    double value = -1;
    EXPECT_EQ(options.optgetdotoptnr(i, symbol, number, dimension, value), 1);
    EXPECT_EQ(options.optgetnamenr(number, attribute), 1);
    lines labels;
    for (std::int32_t k = 1; k <= dimension; ++k) {
      EXPECT_EQ(options.optgetdotoptuel(i, k, label), 1);
      labels.push_back(str(label));
    }
    all.push_back(str(symbol) + str(attribute) + "(" + joined(labels, ",") +
                  ")=" + str(dbltostr(value)));
  }
  return joined(all, " ");
}

TEST(DotOptions, EntriesAndFaults) {
  // Text >> entries >> messages >> the number of entries that were dropped. ~ is a name of 63
  // characters, & stands for 20 stars, ^ for an element of 254.
  constexpr std::string_view rows = R"(
x.scale('a',*) := 2.5 >> x.scale(a,*)=2.5
X_1.SCALE [ 'a' , "b ,c  " ] 1 >> X_1.scale(a,b ,c)=1
x.scale('a dozen',*,"of letters",'in four',*,'labels and more') 1
    >> x.scale(a dozen,*,of letters,in four,*,labels and more)=1
x.scale{''}=maxdouble, y.flag yes z.level 3 >> x.scale()=1E299 y.flag()=1 z.level()=3
x. 2 >> >> E .suffix expected for key 'x' | E Option keyword expected, saw '2'
x.scale 2 y.size z.scale 3 >> x.scale()=2 z.scale()=3 >> E unknown .suffix '.size' for key 'y'
x.scale('a',) 2 >> >> E Element expected for .option 'x' | E Option keyword expected, saw ')' >> 1
x.scale(i y.scale 3 z.scale(j w.scale 4 >> y.scale()=3 w.scale()=4
    >> E Set name not allowed .option 'x' | E Set name not allowed .option 'z' >> 2
x.scale[*} 1 >> >> E Closing bracket ']' expected for .option 'x'
    V Double expected for option '.scale' saw '}' | E Option keyword expected, saw '1' >> 1
x.scale >> >> E Value expected for .option 'x' >> 1
x.scale('a') -1 y.level 2 >> >> V Double out of range for option '.scale' saw '-1'
    V    Valid range is 0 to maxdouble | V Unknown value for option '.level' saw '2'
    V    Possible values are  1 3 >> 2
nb 1 x.scale -1 >> x.scale()=-1 >> W Double out of range for option '.scale' saw '-1'
    W    Valid range is 0 to maxdouble
x.scale('a\ny.scale 1\n >> >> E2: Closing bracket ')' expected for .option 'x'
    V2: Double expected for option '.scale' saw 'y.scale' | E2: Option keyword expected, saw '1' >> 1
x.scale('a >> >> E Closing bracket ')' expected for .option 'x' | E Value expected for .option 'x' >> 1
~.scale 1 >> ~.scale()=1
~n.scale 1 >> >> E .Option ID too long '~n' >> 1
x.scale(&) 1 >> x.scale(&)=1
x.scale(&,*,*) 1 >> >> E Too many dimensions for .option 'x'
    E Too many dimensions for .option 'x' >> 1
# An element that is too long for its closing quote is given without the opening one.
x.scale('^') 1 >> x.scale(^)=1
)";
  std::string all = replaced(str(rows), "~", std::string(63, 'n'));
  all = replaced(replaced(all, "&", joined(lines(20, "*"), ",")), "^", std::string(254, 'e'));
  for (const lines& row : rowsof(all)) {
    optiontable t(definition);
    EXPECT_EQ(t.read(row[0]).brief(), row[2]) << row[0];
    EXPECT_EQ(entriesof(t.options), row[1]) << row[0];
    EXPECT_EQ(t->dotoptionerrors, row[3].empty() ? 0 : std::stoi(row[3])) << row[0];
  }
}

TEST(DotOptions, NumbersOutOfRange) {
  optiontable t(definition);
  t.read("x.scale('a') 2 y.scale(i z.scale 3");
  for (const std::int32_t bad : {INT_MIN, -1, 0, 3, INT_MAX}) {
    shortstring text = "left", element = "left";
    std::int32_t number = 7, dimension = 7;
    double value = 7;
    EXPECT_EQ(t->optgetdotoptnr(bad, text, number, dimension, value), 0);
    EXPECT_EQ(t->optgetdotoptuel(bad, 1, element) + t->optgetdotoptuel(1, bad, element), 0);
    EXPECT_TRUE(text.empty() && element.empty() && number + dimension == 0 && value == 0) << bad;
  }
  EXPECT_EQ(t.option(".scale").getasstring(), "3");  // an attribute holds the last value
}

// The message of the read itself is one of those that fill the queue. The value is still refused,
// so the entry has the default.
TEST(DotOptions, FullQueueKeepsFaultyEntries) {
  for (const auto& [before, kept] : {std::pair{4999, false}, {5000, true}}) {
    optiontable t(definition);
    for (int i = 0; i < before; ++i) t->optaddmessage("mine");
    t.read("x.scale -1");
    EXPECT_EQ(entriesof(t.options), kept ? "x.scale()=1" : "") << before;
    EXPECT_EQ(t->dotoptionerrors, kept ? 0 : 1) << before;
  }
}

}  // namespace
}  // namespace optxv
