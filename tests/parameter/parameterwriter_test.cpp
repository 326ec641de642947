#include <array>
#include <climits>
#include <filesystem>
#include <random>
#include <string>

#include "foundation/runtime.h"
#include "foundation/textfile.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

const std::string definition =
    "count integer 1 10 0 100 0 1 C\npair integer.TWO 1 10 0 100 0 1 P\n"
    "tol double 1 0.5 0 maxdouble 0 1 T\nquiet boolean.NV 1 1 0 1 Q\nflag boolean 1 0 0 1 F\n"
    "name string 1 none 0 1 N\nboth string.TWO 1 none 0 1 N\n"
    "way enumstr.OPT 1 up 0 1 W\n up 0 Up\n down 0 Down\nlevel enumint 1 1 0 1 L\n 1 0 One\n"
    "paths strlist 1 0 1 P\nwide multilist 1 0 1 S\n count tol\nall macro 0 1 G\n count\n"
    "free_way immediate NoBounds 0 1 B\nrow indicator\n.scale double 1 1 0 maxdouble 0 1 S\n";
const std::string nobounds = "n_b immediate NoBounds 0 1 Bounds\n";

std::string written(optiontable& t) {
  const scratchfile file;
  EXPECT_EQ(t->optwriteparameterfile(file.name()), 0);
  std::string text = "what was there before";
  textfile memory;
  memory.rewritememory(text);
  t->writeparameters(memory);
  EXPECT_EQ(text, file.content());
  return text;
}

TEST(ParameterWriter, Bytes) {
  const std::string long254 = "a " + std::string(252, 'x'), long255 = long254 + 'y';
  const std::array<std::string, 3> rows[] = {
      // In table order, whatever the order of the text; the kinds without a value are left out.
      {definition,
       "row e(i,'a') $ v(i) no\nx.scale['a' , *] 2.5\nx.scale 1e-7\n--late one two\n"
       "paths \"a b\"\npaths\npaths x,y\npaths \"\"\nlevel 1\nway DOWN\nboth \"a b\" c\n"
       "name \"\"\nflag yes\nquiet\ntol 1e20\npair 3 *\nwide 7:0.25\n",
       "count=7\npair=3 10\ntol=0.25\nquiet\nflag=1\nname=\"\"\nboth=\"a b\" c\nway=down\n"
       "level=1\npaths=\"a b\"\npaths=\"x,y\"\npaths=\"\"\n--late=\"one two\"\n"
       "x.scale('a',*) = 2.5\nx.scale = 1E-7\nrow e(i,'a')$v(i)=0\n"},
      // A value out of its bounds is between two lines that use the first switch of the table.
      {definition, "free_way 1\ncount 101\npair 5 -1\nway left\nlevel 2\n",
       "free_way 1\ncount=101\nfree_way 0\nfree_way 1\npair=5 -1\nfree_way 0\nfree_way 1\n"
       "way=\"\"\nfree_way 0\nfree_way 1\nlevel=2\nfree_way 0\n"},
      // Names of several words are written as users write them, except for the lists and the
      // switch.
      {"Minos lookup\nmax_step integer 1 1 0 9 0 1 Step\npath_list strlist 1 0 1 Paths\n" +
           nobounds,
       "max step 5\npath list a_b\n", "max step=5\npath_list=a_b\n"},
      // An item gets both its quotes, however long it is; a scalar value loses what does not fit.
      {definition, "paths " + long254 + "\npaths " + long255 + "\nname " + long255 + "\n",
       "name=\"" + long254 + "\npaths=\"" + long254 + "\"\npaths=\"" + long255 + "\"\n"},
  };
  for (const auto& [table, text, bytes] : rows) {
    optiontable t(table);
    EXPECT_EQ(written(t.read(text)), bytes);
  }
}

TEST(ParameterWriter, ChangesNothing) {
  optiontable t(definition), plain("count integer 1 10 0 100 0 1 Count\n");
  t.read("count 5\nx.scale 2\nrow e$v 1\nname\n");
  const std::string messages = t.brief(), first = written(t);
  EXPECT_EQ(written(t), first);
  EXPECT_EQ(t.brief(), messages);
  plain->optnoboundsset(1);
  EXPECT_EQ(written(plain.read("count 101")), " 1\ncount=101\n 0\n");  // there is no switch
}

TEST(ParameterWriter, FilesThatCannotBeWritten) {
  for (const auto& [file, why] : {std::pair("/tmp", "21; Is a directory"),
                                  std::pair("/none/file", "2; No such file or directory")}) {
    optiontable t(definition);
    EXPECT_EQ(t->optwriteparameterfile(file), std::stoi(why));
    EXPECT_EQ(t.brief(),
              "E Cannot write parameter file '" + str(file) + "' | E    Error code = " + why);
  }
  using files = std::filesystem::directory_iterator;
  const auto opened = [] { return std::distance(files("/proc/self/fd"), files()); };
  // Few lines fail in the close, many while they are written.
  for (const std::size_t count : {1U, 20000U}) {
    optiontable t(definition);
    t.read(joined(lines(count, "paths something\n"), ""));
    const auto before = opened();
    EXPECT_THROW(t->optwriteparameterfile("/dev/full"), einouterror);
    EXPECT_EQ(opened(), before);
    EXPECT_EQ(t.queue(), lines());
  }
}

// A text that both reading modes read back: no double quote, no blank at either end, no line end,
// short enough for its quotes, and not the star that means no change.
std::string randomtext(std::mt19937& random) {
  constexpr std::string_view inner = "aZ09_.:;=,*'()$%-+/\\ \t\x80\xFF!#";
  std::string text;
  for (std::size_t left = random() % (random() % 4 == 0 ? 250 : 8); left > 0; --left)
    text += inner[random() % inner.size()];
  text.erase(0, text.find_first_not_of(" \t"));
  text.erase(text.find_last_not_of(" \t") + 1);
  return text == "*" ? "" : text;
}

// A table of scalar options and a list, with bounds that most values break.
std::string randomdefinition(std::mt19937& random) {
  const lines kinds = {"integer# 1 5 0 9 0 1",
                       "double# 1 0.5 -1 1e9 0 1",
                       "string# 1 none 0 1",
                       "boolean# 1 0 0 1",
                       "enumstr# 1 a 0 1\n a 0 A\n \"b c\" 0 B",
                       "enumint# 1 1 0 1\n 1 0 A\n 7 0 B"};
  std::string text = nobounds + "row indicator\n.scale double 1 1 0 9 0 1 Help\n";
  for (int i = 0; i < 12; ++i)
    text += "o_" + std::to_string(i) + " " +
            replaced(kinds[random() % 6], "#", lines{"", ".OPT", ".TWO"}[random() % 3]) + "\n";
  return text + "items strlist 1 0 1 Help\n";
}

void setrandomvalues(optiontable& t, std::mt19937& random) {
  t->optnoboundsset(static_cast<std::int32_t>(random() % 2));
  for (std::int32_t i = 1; i <= t->optcount(); ++i) {
    const toption& option = *t->getobjects(i - 1);
    if (random() % 5 == 0 || option.optname.view() == ".scale") continue;
    double real = 0;
    std::string text;
    const auto draw = [&] {  // only 0 and 1 of a switch have a text that is read back
      const double edges[] = {0, 1, -1, INT_MAX, INT_MIN};
      real = random() % 2 == 0 ? edges[random() % 5] : double(random() % 4096) / 64 - 9;
      if (option.opttype == optTypeBoolean) real = std::int32_t(real) & 1;
      text = randomtext(random);
    };
    draw();
    t->optsetvaluesnr(i, std::int32_t(real), real, text);
    if (option.subtype != optsub2Values) continue;
    if (option.outofbounds == 0) draw();  // a good second value would hide a first that is not
    t->optsetvalues2nr(i, std::int32_t(real), real, text);
  }
  for (auto i = random() % 4; i > 0; --i) {
    t.read("items " + randomtext(random));
    t.read(replaced("s#.scale(*,'# b') #", "#", std::to_string(i)));
    t.read("row e(i,\"a b\")$v(I) " + std::to_string(i % 2));
  }
}

TEST(ParameterWriter, WrittenFilesRestoreValues) {
  const auto stateof = [](optiontable& t) {  // what is not set has its default
    lines all;
    for (std::int32_t i = 1; i < t->optcount(); ++i)
      if (const toption& o = *t->getobjects(i); o.defined != 0)
        all.push_back(str(concat(o.getasstring(), o.outofbounds != 0 ? '!' : '/')) +
                      str(o.getasstring2()));
    return all;
  };
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::string text = randomdefinition(random);
    optiontable source(text);
    setrandomvalues(source, random);
    const std::string first = written(source);
    for (const std::int32_t toeol : {1, 0}) {
      optiontable restored(text);
      restored->opteolonlyset(toeol);
      std::int32_t errors = 0, warnings = 0;
      restored.read(first + "\n")->opterrorcount(errors, warnings);
      ASSERT_EQ(errors, 0) << restored.brief() << first;
      ASSERT_EQ(written(restored), first);
      ASSERT_EQ(stateof(restored), stateof(source)) << first;
    }
  }
}

}  // namespace
}  // namespace optxv
