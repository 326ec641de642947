#include "parameter/dotoptions.h"

#include <climits>
#include <string>

#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"

namespace optxv {
namespace {

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

/// What comes of a text: the messages, the entries, and how many more were dropped.
std::string toldof(const std::string& text) {
  optiontable t(everykind());
  lines all = t.read(text).queue();
  if (const std::string entries = entriesof(t.options); !entries.empty()) all.push_back(entries);
  if (t->dotoptionerrors > 0) all.push_back(std::to_string(t->dotoptionerrors) + " dropped");
  return joined(all, "\n");
}

TEST(DotOptions, EntriesAndFaults) {
  const std::string rows = R"rows(x.scale('a',*) := 2.5
> x.scale(a,*)=2.5
X_1.SCALE [ 'a' , "b ,c  " ] 1
> X_1.scale(a,b ,c)=1
x.scale('a dozen',*,"of letters",'in four',*,'labels and more') 1
> x.scale(a dozen,*,of letters,in four,*,labels and more)=1
x.scale{''}=maxdouble, y.keep yes z.scale 3
> x.scale()=1E299 y.keep()=1 z.scale()=3
x. 2
> *** Error .suffix expected for key "x"
> *** Error Option keyword expected, saw "2"
x.scale 2 y.size z.scale 3
> *** Error unknown .suffix ".size" for key "y"
> x.scale()=2 z.scale()=3
x.scale('a',) 2
> *** Error Element expected for .option "x"
> *** Error Option keyword expected, saw ")"
> 1 dropped
x.scale(i y.scale 3 z.scale(j w.scale 4
> *** Error Set name not allowed .option "x"
> *** Error Set name not allowed .option "z"
> y.scale()=3 w.scale()=4
> 2 dropped
x.scale[*} 1
> *** Error Closing bracket "]" expected for .option "x"
> *** Value Error Double expected for option ".scale" saw "}"
> *** Error Option keyword expected, saw "1"
> 1 dropped
x.scale
> *** Error Value expected for .option "x"
> 1 dropped
x.scale('a') -1 y.keep 2
> *** Value Error Double out of range for option ".scale" saw "-1"
> *** Value Error    Valid range is 0 to maxdouble
> *** Value Error Boolean value expected for option ".keep" saw "2"
> 2 dropped
free 1 x.scale -1
> *** Warning Double out of range for option ".scale" saw "-1"
> *** Warning    Valid range is 0 to maxdouble
> x.scale()=-1
x.scale('a
> *** Error Closing bracket ")" expected for .option "x"
> *** Error Value expected for .option "x"
> 1 dropped
x.scale('a\ny.scale 1\n
> *** Error line 2: Closing bracket ")" expected for .option "x"
> *** Value Error line 2: Double expected for option ".scale" saw "y.scale"
> *** Error line 2: Option keyword expected, saw "1"
> 1 dropped
<n*63>.scale 1
> <n*63>.scale()=1
<n*64>.scale 1
> *** Error .Option ID too long "<n*64>"
> 1 dropped
x.scale(<*,*19>*) 1
> x.scale(*,*,*,*,*,*,*,*,*,*,*,*,*,*,*,*,*,*,*,*)=1
x.scale(<*,*21>*) 1
> *** Error Too many dimensions for .option "x"
> *** Error Too many dimensions for .option "x"
> 1 dropped
x.scale('<e*254>') 1
> x.scale(<e*254>)=1
)rows";
  EXPECT_EQ(retold(rows, toldof), rows);
}

TEST(DotOptions, NumbersOutOfRange) {
  optiontable t(everykind());
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
    optiontable t(everykind());
    for (int i = 0; i < before; ++i) t->optaddmessage("mine");
    t.read("x.scale -1");
    EXPECT_EQ(entriesof(t.options), kept ? "x.scale()=1" : "") << before;
    EXPECT_EQ(t->dotoptionerrors, kept ? 0 : 1) << before;
  }
}

}  // namespace
}  // namespace optxv
