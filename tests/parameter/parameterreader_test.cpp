#include <fcntl.h>

#include <cerrno>
#include <string>

#include "support/everykind.h"
#include "support/optiontable.h"
#include "support/rows.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

/// Holds rows to what comes of their texts, each read by a new object.
void check(const std::string& definition, bool toeol, const std::string& rows) {
  const auto told = [&](const std::string& text) {
    optiontable options(definition);
    options->opteolonlyset(toeol);
    return options.read(text).told();
  };
  EXPECT_EQ(retold(rows, told), rows);
}

TEST(Entries, ReadToTheEndOfTheLine) {
  check(everykind(), true, rowsof("parameter/lines.rows"));
}

TEST(Entries, ReadWordByWord) {
  check(everykind(), false, rowsof("parameter/words.rows"));
}

const std::string minos =
    "Minos lookup\nmax_iter integer 1 0 0 99 0 0\nmax_iter_count integer 2 0 0 99 0 0\n"
    "super_basics_limit integer 3 0 0 99 0 0\none_two_three_four_five strlist 4 0 0\n"
    "print strlist 5 0 0\nms synonym max_iter\n";

TEST(MinosKeys, JoinTheWordsOfTheLine) {
  check(minos, true, rowsof("parameter/minos.rows"));
  check(minos, false, R"(max iter 5 max iter count 6
> *** Value Error Integer expected, for option "max_iter" saw "count"
> *** Error Option keyword expected, saw "6"
> max_iter=5
bad one two three four max iter 6
> *** Error Unknown option "bad_one_two_three"
> max_iter=6
--x_y=1 --x_y=2 --x=3 --x=4
> --x_y=[1] --x_y=[2] --x=[3|4]
)");
}

TEST(MarkedNames, AreReportedAndObsoleteOnesDropped) {
  for (const bool toeol : {true, false})
    check(everykind() +
              "passing deprecated\n level Say method\ndead obsolete\n verbose Off\n"
              " range None\n reltol Gone\n say Gone\n",
          toeol, rowsof("parameter/marked.rows"));
}

// An abbreviation is not the option's own name.
TEST(MarkedNames, AreSeenWhole) {
  check("Path lookup\nlong_name integer 4 0 0 9 0 0\ndead obsolete\n long_name Gone\n", true,
        R"(lon_nam 5
> long_name=5
LONG_name 5
> *** Warning obsolete option "LONG_name"; Gone
)");
}

TEST(Files, NameTheLineOfAFaultAndGoOn) {
  check(everykind(), true, rowsof("parameter/files.rows"));
}

TEST(Files, KeepTheirModeToThemselves) {
  optiontable options(everykind());
  options.put("inner", "whole no\nscale yes verbose\n");
  options.read("read \"{inner}\"\nsteplim 5 6\nwhole no\nrange 1 2 quick 3\n");
  EXPECT_EQ(options.told(),
            "*** Value Error line 2: Integer expected, for option \"steplim\" saw \"5 6\"\n"
            "verbose=1 quick=3 range=1/2 scale=1");
}

TEST(Files, NestNineLevelsDeep) {
  optiontable options(everykind());
  options.files["self"];
  options.put("self", "--level x\nread {self}\n");
  options.read("read {self}");  // a string is no level
  EXPECT_EQ(options.queue(true).size(), 23U);
  EXPECT_EQ(options.queue(), lines{"*** Error File nesting level too deep; file ignored"});
  EXPECT_EQ(options.state(), "--level=[x|x|x|x|x|x|x|x|x]");
}

// A file that reads itself ten times would be opened a billion times.
TEST(Files, AreTenThousandInOneRead) {
  optiontable options(everykind());
  options.put("once", "--read x\n");
  options.read(joined(lines(10001, "read {once}\n"), "") + "steplim 5\n");
  const auto& taken = static_cast<const tstrlistoption&>(options.option("--read"));
  EXPECT_EQ(taken.count(), 9999) << "and the file that reads them";
  EXPECT_EQ(options.queue(),
            lines{"*** Error line 10000: More than 10000 files; the rest ignored"});
  options.read("steplim 6 read {once}").read("read {once}");
  EXPECT_EQ(taken.count(), 10000) << "each read of the program counts anew";
  options.files["self"];
  options.put("self", "--read x\n" + joined(lines(10, "read {self}\n"), ""));
  EXPECT_EQ(options->optreadparameterfile(options.path("self")), 0);
  EXPECT_LE(taken.count(), 20000);
}

// A device may never end: a file may not name it, but the program may.
TEST(Files, OfDevices) {
  check(everykind(), true, R"(read /dev/null
steplim 5
read /dev/zero
steplim 5
> *** Error Cannot open parameter file "/dev/zero"
> *** Error Error code = 95; Operation not supported
> steplim=5
read /dev/zero
> *** Error Cannot open parameter file "/dev/zero"
> *** Error Error code = 95; Operation not supported
)");
}

// A line without an end is read for a while, and no longer.
TEST(Files, WithAnEndlessLine) {
  optiontable options(everykind());
  EXPECT_EQ(options->optreadparameterfile("/dev/zero"), EFBIG);
  const lines queue = options.queue();
  ASSERT_GE(queue.size(), 2U);
  EXPECT_EQ(queue[queue.size() - 2] + " | " + queue.back(),
            "*** Error line 1: Cannot read parameter file \"/dev/zero\" | "
            "*** Error line 1: Error code = 27; File too large");
}

// A read that fails is reported before the file is left, and what was read stays.
TEST(Files, ThatCannotBeRead) {
  optiontable options(everykind());
  const test::keptstream input(0);
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
  ASSERT_EQ(write(ends[1], "foo\nsteplim 5", 13), 13);
  dup2(ends[0], 0);
  EXPECT_EQ(options->optreadparameterfile(""), EAGAIN);
  EXPECT_EQ(options.state(), "steplim=5");
  EXPECT_EQ(joined(options.queue(true)),
            "Reading parameter(s) from \"\" | *** Error line 1: Unknown option \"foo\" | "
            "*** Error line 2: Cannot read parameter file \"\" | "
            "*** Error line 2: Error code = 11; Resource temporarily unavailable | "
            "Finished reading from \"\"");
  std::clearerr(stdin);
  close(ends[0]);
  close(ends[1]);
}

TEST(Strings, AreOneLine) {
  optiontable options(everykind());
  options->optreadfromstr("steplim 1\nquick 2");
  options->optreadfrompchar("scale 1\nquick 2");
  EXPECT_EQ(options.state(), "steplim=1 scale=1");
  options->optreadfrompchar(nullptr);
  options->optechoset(1);
  options->optreadfromstr("* 1");
  options.read("quick 4\n");
  EXPECT_EQ(joined(options.queue(true), "\n"), R"(>>  * 1
Reading parameter(s) from "string"
*** Error Option keyword expected, saw "*"
Finished reading from "string"
Reading parameter(s) from "{par}"
>>  quick 4
Finished reading from "{par}")");
}

TEST(Strings, KeepAsMuchOfAValueAsFits) {
  optiontable options(everykind());
  const std::string text = "logname " + std::string(246, 'x') + "yz";
  options->optreadfromstr(text);
  EXPECT_EQ(options.option("logname").getasstring(), text.substr(8, 247)) << "the string is cut";
  for (const char* quote : {"", "\""}) {
    options.read("logname " + (quote + text) + text + quote);
    EXPECT_EQ(options.option("logname").getasstring(), text.substr(0, 255));
  }
}

}  // namespace
}  // namespace optxv
