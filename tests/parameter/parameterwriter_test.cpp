#include <climits>
#include <filesystem>
#include <random>
#include <string>

#include "foundation/runtime.h"
#include "foundation/textfile.h"
#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"

namespace optxv {
namespace {

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

/// Holds rows to what is written once their texts are read.
void check(const std::string& definition, const std::string& rows) {
  const auto told = [&](const std::string& text) {
    optiontable table(definition);
    return written(table.read(text));
  };
  EXPECT_EQ(retold(rows, told), rows);
}

// In the order of the table, and without the kinds that have no value. A value out of its bounds
// stands between two lines that use the first switch of the table. An item gets both its quotes,
// however long it is; a scalar value loses what does not fit.
TEST(ParameterWriter, WritesWhatIsSet) {
  check(everykind(), rowsof("parameter/written.rows"));
}

// Names of several words are written as users write them, but for those of lists and switches.
TEST(ParameterWriter, WritesWordsAsTheyAreReadBack) {
  check(
      "Minos lookup\nmax_step integer 1 1 0 9 0 1 Step\npath_list strlist 1 0 1 Paths\n"
      "n_b immediate NoBounds 0 1 Bounds\n",
      R"(max step 5
path list a_b
> max step=5
> path_list=a_b
)");
}

TEST(ParameterWriter, ChangesNothing) {
  optiontable t(everykind()), plain("count integer 1 10 0 100 0 1 Count\n");
  t.read("steplim 5\nx.scale 2\ntie e$v 1\nlogname\n");
  const std::string before = t.told(), first = written(t);
  EXPECT_EQ(written(t), first);
  EXPECT_EQ(t.told(), before);
  plain->optnoboundsset(1);
  EXPECT_EQ(written(plain.read("count 101")), " 1\ncount=101\n 0\n");  // there is no switch
}

TEST(ParameterWriter, FilesThatCannotBeWritten) {
  for (const auto& [file, why] : {std::pair("/tmp", "21; Is a directory"),
                                  std::pair("/none/file", "2; No such file or directory")}) {
    optiontable t(everykind());
    EXPECT_EQ(t->optwriteparameterfile(file), std::stoi(why));
    EXPECT_EQ(t.queue(), lines({"*** Error Cannot write parameter file \"" + str(file) + "\"",
                                "*** Error    Error code = " + str(why)}));
  }
  using files = std::filesystem::directory_iterator;
  const auto opened = [] { return std::distance(files("/proc/self/fd"), files()); };
  // Few lines fail in the close, many while they are written.
  for (const std::size_t count : {1U, 20000U}) {
    optiontable t(everykind());
    t.read(joined(lines(count, "names something\n"), ""));
    const auto before = opened();
    EXPECT_THROW(t->optwriteparameterfile("/dev/full"), einouterror);
    EXPECT_EQ(opened(), before);
    EXPECT_EQ(t.queue(), lines());
  }
}

// A text that both reading modes read back: no double quote or comment, no blank at either end, no
// line end, short enough for its quotes, and not the star that means no change.
std::string randomtext(std::mt19937& random) {
  constexpr std::string_view inner = "aZ09_.:;=,*'()$%-+/\\ \t\x80\xFF";
  std::string text;
  for (std::size_t left = random() % (random() % 4 == 0 ? 250 : 8); left > 0; --left)
    text += inner[random() % inner.size()];
  text.erase(0, text.find_first_not_of(" \t"));
  text.erase(text.find_last_not_of(" \t") + 1);
  return text == "*" ? "" : text;
}

void setrandomvalues(optiontable& t, std::mt19937& random) {
  t->optnoboundsset(static_cast<std::int32_t>(random() % 2));
  for (std::int32_t i = 1; i <= t->optcount(); ++i) {
    const toption& option = *t->getobjects(i - 1);
    // A switch without a value, an obsolete name and an attribute are written in another way.
    const std::string name = str(option.optname);
    if (random() % 5 == 0 || name == "verbose" || name == "gone" || name[0] == '.') continue;
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
    t.read("names " + randomtext(random));
    t.read("x" + std::to_string(i) + ".scale(*,'a b') " + std::to_string(i));
    t.read("tie e(i,\"a b\")$v(I) " + std::to_string(i % 2));
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
    optiontable source(everykind());
    setrandomvalues(source, random);
    const std::string first = written(source);
    for (const std::int32_t toeol : {1, 0}) {
      optiontable restored(everykind());
      restored->opteolonlyset(toeol);
      std::int32_t errors = 0, warnings = 0;
      restored.read(first + "\n")->opterrorcount(errors, warnings);
      ASSERT_EQ(errors, 0) << restored.told() << first;
      ASSERT_EQ(written(restored), first);
      ASSERT_EQ(stateof(restored), stateof(source)) << first;
    }
  }
}

}  // namespace
}  // namespace optxv
