#include "parameter/parameterwriter.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>

#include "foundation/runtime.h"
#include "parameter/tabletext.h"

namespace optxv {
namespace {

constexpr std::string_view definition =
    "count integer 1 10 0 100 0 1 Count\n"
    "pair integer.TWO 1 10 0 100 0 1 Pair\n"
    "tol double 1 0.5 0 maxdouble 0 1 Tolerance\n"
    "quiet boolean.NV 1 1 0 1 Quiet\n"
    "flag boolean 1 0 0 1 Flag\n"
    "name string 1 none 0 1 Name\n"
    "both string.TWO 1 none 0 1 Names\n"
    "way enumstr.OPT 1 up 0 1 Way\n"
    " up 0 Up\n"
    " down 0 Down\n"
    "level enumint 1 1 0 1 Level\n"
    " 1 0 One\n"
    "paths strlist 1 0 1 Paths\n"
    "wide multilist 1 0 1 Several\n"
    " count tol\n"
    "all macro 0 1 Group\n"
    " count\n"
    "free_way immediate NoBounds 0 1 Bounds\n"
    "other immediate NoBounds 0 1 Bounds again\n"
    "row indicator\n"
    ".scale double 1 1 0 maxdouble 0 1 Scale\n";

constexpr std::string_view nobounds = "n_b immediate NoBounds 0 1 Bounds\n";

TEST(ParameterWriter, Bytes) {
  const struct {
    std::string definition, text, bytes;
  } rows[] = {
      {"", "", ""},
      // In table order, whatever the order of the text; the kinds without a value are left out.
      {std::string(definition),
       "row e(i,'a') $ v(i) no\nx.scale['a' , *] 2.5\nx.scale 1e-7\n--late one two\n"
       "paths \"a b\"\npaths\npaths x,y\npaths \"\"\nlevel 1\nway DOWN\nboth \"a b\" c\n"
       "name \"\"\nflag yes\nquiet\ntol 1e20\npair 3 *\nother no\nwide 7:0.25\n",
       "count=7\npair=3 10\ntol=0.25\nquiet\nflag=1\nname=\"\"\nboth=\"a b\" c\nway=down\n"
       "level=1\npaths=\"a b\"\npaths=\"x,y\"\npaths=\"\"\n--late=\"one two\"\n"
       "x.scale('a',*) = 2.5\nx.scale = 1E-7\nrow e(i,'a')$v(i)=0\n"},
      // A value beyond its bounds stands between two lines under the first switch of the table.
      {std::string(definition), "free_way 1\ncount 101\npair 5 -1\nway left\nlevel 2\n",
       "free_way 1\ncount=101\nfree_way 0\nfree_way 1\npair=5 -1\nfree_way 0\nfree_way 1\n"
       "way=\"\"\nfree_way 0\nfree_way 1\nlevel=2\nfree_way 0\n"},
      // Several words show as users write them, but for the lists and the switch.
      {"Minos lookup\nmax_step integer 1 1 0 9 0 1 Step\npath_list strlist 1 0 1 Paths\n" +
           std::string(nobounds),
       "max step 5\npath list a_b\n", "max step=5\npath_list=a_b\n"},
  };
  for (const auto& row : rows) {
    table t(row.definition);
    t.read(row.text);
    EXPECT_EQ(t.written(), row.bytes);
  }
}

TEST(ParameterWriter, BoundsLinesWithoutASwitch) {
  table t("count integer 1 10 0 100 0 1 Count\n");
  t.options.optnoboundsset(1);
  t.read("count 101");
  EXPECT_EQ(t.written(), " 1\ncount=101\n 0\n");
}

TEST(ParameterWriter, ChangesNothing) {
  table t(definition);
  t.read("count 5\nx.scale 2\nrow e$v 1\nname\n");
  const texts messages = t.messages();
  std::int32_t defined = 0, recent = 0, refnr = 0, data = 0, type = 0, sub = 0;
  const std::string first = t.written();
  EXPECT_EQ(t.written(), first);
  EXPECT_EQ(t.messages(), messages);
  t.options.optgetinfonr(t.number("count"), defined, recent, refnr, data, type, sub);
  EXPECT_TRUE(defined == 1 && recent == 1);
}

TEST(ParameterWriter, StandardOutput) {
  table t(definition);
  t.read("count 5");
  testing::internal::CaptureStdout();
  EXPECT_EQ(t.options.optwriteparameterfile(""), 0);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "count=5\n");
}

TEST(ParameterWriter, FileThatCannotBeCreated) {
  char folder[] = "/tmp/optxvXXXXXX";
  ASSERT_NE(mkdtemp(folder), nullptr);
  const std::string name = folder;
  ASSERT_EQ(chmod(folder, 0500), 0);
  struct row {
    std::string name;
    int error;
    std::string why;
  };
  std::vector<row> rows = {{name, 21, "Is a directory"},
                           {name + "/none/file", 2, "No such file or directory"}};
  if (geteuid() != 0) rows.push_back({name + "/file", 13, "Permission denied"});
  for (const auto& [file, error, why] : rows) {
    table t(definition);
    EXPECT_EQ(t.options.optwriteparameterfile(file), error);
    EXPECT_EQ(t.messages(), (texts{"Error Cannot write parameter file \"" + file + "\"",
                                   "Error    Error code = " + std::to_string(error) + "; " + why}));
  }
  rmdir(folder);
}

int opendescriptors() {
  int count = 0;
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir("/proc/self/fd"), &closedir);
  while (readdir(folder.get()) != nullptr) ++count;
  return count;
}

// Few lines fail when the file is closed, many while they are written.
TEST(ParameterWriter, FullDeviceRaises) {
  for (const int lines : {1, 20000}) {
    table t(definition);
    std::string text;
    for (int i = 0; i < lines; ++i) text += "paths something\n";
    t.read(text);
    const int before = opendescriptors();
    EXPECT_THROW(t.options.optwriteparameterfile("/dev/full"), einouterror);
    EXPECT_EQ(opendescriptors(), before);
    EXPECT_EQ(t.messages(), texts());
  }
}

// Round trips ------------------------------------------------------------------------------------

using generator = std::mt19937;

int below(generator& random, int limit) {
  return std::uniform_int_distribution<int>(0, limit - 1)(random);
}

std::int32_t randominteger(generator& random) {
  constexpr std::int32_t edges[] = {0, 1, -1, std::numeric_limits<std::int32_t>::max(),
                                    std::numeric_limits<std::int32_t>::min()};
  return below(random, 2) == 0 ? edges[below(random, 5)] : static_cast<std::int32_t>(random());
}

// A real whose text has all of it.
double randomreal(generator& random) {
  const double digits = below(random, 2'000'000'000) - 1e9;
  double real = 0;
  EXPECT_TRUE(strasdoubleex(
      concat(inttostr(static_cast<std::int64_t>(digits)), 'e', inttostr(below(random, 500) - 280)),
      real));
  return real;
}

// A text that both reading modes take back: no double quote, no blank at either end, no line end,
// short enough for its quotes, and not the star that stands for no change.
std::string randomtext(generator& random) {
  constexpr std::string_view inner = "aZ09_.:;=,*'()$%-+/\\ \t\x80\xFF!#";
  std::string text;
  for (int left = below(random, 4) == 0 ? below(random, 250) : below(random, 8); left > 0; --left)
    text += inner[static_cast<std::size_t>(below(random, static_cast<int>(inner.size())))];
  const std::size_t first = text.find_first_not_of(" \t");
  text.erase(0, first);
  text.erase(text.find_last_not_of(" \t") + 1);
  return text == "*" ? "" : text;
}

// A table of scalar options and a list, with bounds that most values break.
std::string randomdefinition(generator& random) {
  constexpr std::string_view modifiers[] = {"", ".OPT", ".TWO"};
  constexpr std::string_view records[] = {" 1 5 0 9 0 1 Help\n",
                                          " 1 0.5 -1 1e9 0 1 Help\n",
                                          " 1 none 0 1 Help\n",
                                          " 1 0 0 1 Help\n",
                                          " 1 a 0 1 Help\n a 0 A\n \"b c\" 0 B\n",
                                          " 1 1 0 1 Help\n 1 0 A\n 7 0 B\n"};
  constexpr std::string_view words[] = {"integer", "double",  "string",
                                        "boolean", "enumstr", "enumint"};
  std::string text = std::string(nobounds) + "row indicator\n.scale double 1 1 0 9 0 1 Help\n";
  for (int i = 0; i < 12; ++i) {
    const auto kind = static_cast<std::size_t>(below(random, 6));
    text += concat("o_", inttostr(i), ' ', words[kind], modifiers[below(random, 3)], records[kind]);
  }
  return text + "items strlist 1 0 1 Help\n";
}

void setrandomvalues(table& t, generator& random) {
  tzmaoptions& options = t.options;
  options.optnoboundsset(below(random, 2));
  for (std::int32_t i = 1; i <= options.optcount(); ++i) {
    if (below(random, 5) == 0 || options.getstrings(i - 1) == ".scale") continue;
    const toption& option = *options.getobjects(i - 1);
    // Beyond 0 and 1 a switch has no text that is read back.
    const bool boolean = option.opttype == optTypeBoolean;
    const auto number = [&] { return boolean ? below(random, 2) : randominteger(random); };
    const std::int32_t integer = number();
    const double real = randomreal(random);
    const std::string text = randomtext(random);
    options.optsetvaluesnr(i, integer, real, text);
    if (option.subtype != optsub2Values) continue;
    const bool broken = option.outofbounds != 0;
    options.optsetvalues2nr(i, number(), randomreal(random), randomtext(random));
    // A good second value hides that the first is beyond its bounds: see below.
    if (broken && option.outofbounds == 0) options.optsetvalues2nr(i, integer, real, text);
  }
  for (int i = below(random, 4); i > 0; --i) t.read("items " + randomtext(random));
  for (int i = below(random, 4); i > 0; --i)
    t.read(
        concat("s", inttostr(i), ".scale(*,'", inttostr(i), " b') ", inttostr(below(random, 9))));
  for (int i = below(random, 4); i > 0; --i)
    t.read("row e(i,\"a b\")$v(I) " + std::to_string(i % 2));
}

std::string stateof(table& t) {
  std::string all;
  for (std::int32_t i = 0; i < t.options.optcount(); ++i) {
    const toption& option = *t.options.getobjects(i);
    if (option.defined != 0 && t.options.getstrings(i) != ".scale")
      all.append(concat(t.options.getstrings(i), ' ', option.outofbounds != 0 ? "!" : "", '['))
          .append(option.getasstring())
          .append("][")
          .append(option.getasstring2())
          .append("]\n");
  }
  return all;
}

TEST(ParameterWriter, WrittenFilesRestoreValues) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE(seed);
    generator random(seed);
    const std::string text = randomdefinition(random);
    table source(text);
    setrandomvalues(source, random);
    const std::string written = source.written();
    for (const std::int32_t toeol : {1, 0}) {
      table restored(text);
      restored.options.opteolonlyset(toeol);
      restored.read(written + "\n");
      std::int32_t errors = 0, warnings = 0;
      restored.options.opterrorcount(errors, warnings);
      ASSERT_EQ(errors, 0) << testing::PrintToString(restored.messages()) << written;
      ASSERT_EQ(stateof(restored), stateof(source)) << written;
      ASSERT_EQ(restored.written(), written);
    }
  }
}

// What the language has no form for, in end-of-line mode: the value that comes back.
TEST(ParameterWriter, ValuesThatAreNotRestored) {
  const std::string longtext = "a " + std::string(252, 'x');
  const struct {
    std::string_view record;
    std::function<void(tzmaoptions&, std::int32_t)> set;
    std::string restored;
  } rows[] = {
      {"string 1 none 0 1 A", [](auto& o, auto n) { o.optsetvaluesnr(n, 0, 0, "a\"b"); }, "none"},
      {"string 1 none 0 1 A", [](auto& o, auto n) { o.optsetstrnr(n, " a "); }, "a"},
      {"string 1 none 0 1 A", [](auto& o, auto n) { o.optsetstrnr(n, "a!b"); }, "a"},
      {"string 1 none 0 1 A", [](auto& o, auto n) { o.optsetstrnr(n, "a\nb"); }, "a"},
      // The closing quote is lost, so that the end of the text is taken for none.
      {"string 1 none 0 1 A", [&](auto& o, auto n) { o.optsetstrnr(n, longtext); }, "none"},
      {"string.TWO 1 none 0 1 A",
       [](auto& o, auto n) { o.optsetstrnr(n, "*"), o.optsetstr2nr(n, "b"); }, "none"},
      // A good second value takes the mark of the first away, and with it the lines of the switch.
      {"integer.TWO 1 3 0 9 0 1 A",
       [](auto& o, auto n) { o.optsetintnr(n, 10), o.optsetint2nr(n, 5); }, "3"},
      {"boolean.NV 1 0 0 1 A", [](auto& o, auto n) { o.optsetvaluesnr(n, 1, 0, ""); }, "0"},
      {"boolean 1 0 0 1 A", [](auto& o, auto n) { o.optsetintnr(n, 5); }, "0"},
      {"double 1 0 0 1 0 1 A",
       [](auto& o, auto n) { o.optsetdblnr(n, std::numeric_limits<double>::infinity()); }, "0"},
  };
  for (const auto& row : rows) {
    const std::string text(concat("c eolcomm !\n", nobounds, "o ", row.record, "\n").view());
    table source(text), restored(text);
    source.options.optnoboundsset(1);
    row.set(source.options, source.number("o"));
    const std::string written = source.written();
    restored.read(written + "\n");
    EXPECT_EQ(restored.options.getasstring("o"), row.restored) << written;
  }
  // Of a real 15 digits are written; a list made at run time does not look at quotes.
  table source(definition), restored(definition);
  source.options.optsetdblnr(source.number("tol"), 0.1 + 0.2);
  source.read("--run a b");
  restored.read(source.written() + "\n");
  EXPECT_EQ(restored.options.getasstring("tol"), "0.3");
  EXPECT_EQ(restored.options.optlistcountstr("--run"), 0);
}

}  // namespace
}  // namespace optxv
