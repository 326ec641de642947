#include "platform/q9utils.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "foundation/runtime.h"
#include "platform/q9platform.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

class Files : public ::testing::Test {
 protected:
  tq9filehandle opened(const std::string& name, int mode) {
    tq9filehandle handle = -5;
    EXPECT_EQ(q9fileopen(name, mode, handle), 0) << name;
    EXPECT_GT(handle, 2);
    EXPECT_NE(fcntl(handle, F_GETFD) & FD_CLOEXEC, 0);
    return handle;
  }

  const test::scratchfolder folder_;
};

TEST_F(Files, ModesOfOpening) {
  const struct {
    int mode;
    int absent;           // the result for a file that is not there
    const char* content;  // of a file that was, after an attempt to write "new"
    bool reads, writes;
  } rows[] = {
      {0, ENOENT, "content", true, false}, {1, 0, "new", false, true},
      {2, 0, "newtent", true, true},       {3, 0, "", false, false},
      {4, ENOENT, "content", true, false},  // only the low two bits count
      {-2, 0, "newtent", true, true},
  };
  for (const auto& row : rows) {
    tq9filehandle handle = 77;
    const std::string absent = folder_ / ("absent" + std::to_string(row.mode));
    EXPECT_EQ(q9fileopen(absent, row.mode, handle), row.absent) << row.mode;
    EXPECT_EQ(handle > 0, row.absent == 0);
    if (handle > 0) {
      EXPECT_EQ(q9fileclose(&handle), 0);
    }
    EXPECT_EQ(handle, 0);

    handle = opened(folder_.put("there", "content"), row.mode);
    char byte = 0;
    std::uint32_t done = 77;
    const bool reads = q9fileread(handle, &byte, 1, done) == 0;
    EXPECT_EQ(reads, row.reads) << row.mode;
    if (!reads) {
      EXPECT_EQ(done, 0U);
    }
    std::int64_t position = 0;
    q9filesetpointer(handle, 0, position, 0);
    EXPECT_EQ(q9filewrite(handle, "new", 3, done) == 0, row.writes) << row.mode;
    EXPECT_EQ(done, row.writes ? 3U : 0U);
    q9fileclose(&handle);
    EXPECT_EQ(folder_.get("there"), row.content) << row.mode;
  }
}

TEST_F(Files, RefusedWithTheirNumbers) {
  tq9filehandle handle = 77;
  EXPECT_EQ(q9fileopen(folder_.path(), 0, handle), 21);
  EXPECT_EQ(handle, 0);
  EXPECT_EQ(q9fileopen(folder_.path(), 1, handle), 21);
  EXPECT_EQ(q9fileopen(folder_ / "no/file", 2, handle), ENOENT);
  EXPECT_EQ(q9fileopen("", 0, handle), ENOENT);
  const std::string file = folder_.put("readonly", "x");
  EXPECT_EQ(q9chmod(file, 0444), 0);
  struct stat status {};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0444U);
  EXPECT_EQ(q9chmod(folder_ / "absent", 0444), ENOENT);
  if (geteuid() == 0) GTEST_SKIP() << "nothing is read-only for root";
  EXPECT_EQ(q9fileopen(file, 2, handle), EACCES);
}

TEST_F(Files, HandlesThatAreNone) {
  const struct { tq9filehandle handle; } rows[] = {{0}, {-1}, {-2147483647}, {1000000}};
  for (const auto& row : rows) {
    char byte = 0;
    std::uint32_t done = 77;
    std::int64_t size = 77;
    std::int64_t position = 77;
    EXPECT_EQ(q9fileread(row.handle, &byte, 1, done), 9);
    EXPECT_EQ(done, 0U);
    done = 77;
    EXPECT_EQ(q9filewrite(row.handle, &byte, 1, done), 9);
    EXPECT_EQ(done, 0U);
    EXPECT_EQ(q9filegetsize(row.handle, size), 9);
    EXPECT_EQ(size, -1);
    EXPECT_EQ(q9filegetpointer(row.handle, position), 9);
    EXPECT_EQ(q9filesetpointer(row.handle, 0, position, 0), 9);
    EXPECT_EQ(position, 77);
  }
  tq9filehandle closed = opened(folder_.put("file", ""), 0);
  tq9filehandle copy = closed;
  EXPECT_EQ(q9fileclose(&closed), 0);
  EXPECT_EQ(closed, 0);
  EXPECT_EQ(q9fileclose(&copy), 9);
  EXPECT_EQ(copy, 0);
  EXPECT_EQ(q9fileclose(nullptr), 9);
}

// The value of the variable is not looked at: a 0 closes the standard input. What is opened then
// takes the place of no standard stream.
TEST_F(Files, CloseOfZeroClosesStandardInput) {
  const std::string file = folder_.put("file", "");
  const auto child = [&] {
    tq9filehandle handle = 0;
    const bool closed = q9fileclose(&handle) == 0 && fcntl(0, F_GETFD) < 0;
    const bool above = q9fileopen(file, 0, handle) == 0 && handle > 2 && fcntl(0, F_GETFD) < 0;
    _exit(closed && above ? 42 : 1);
  };
  EXPECT_EXIT(child(), ::testing::ExitedWithCode(42), "");
}

TEST_F(Files, PositionsGoBeyondFourGigabytes) {
  constexpr std::int64_t far = 5'000'000'000;
  tq9filehandle handle = opened(folder_ / "sparse", 2);
  std::int64_t position = 0;
  std::int64_t size = 0;
  std::uint32_t done = 0;
  ASSERT_EQ(q9filesetpointer(handle, far, position, 0), 0);
  if (q9filewrite(handle, "x", 1, done) != 0) GTEST_SKIP() << "the file system has no such files";
  EXPECT_EQ(q9filegetsize(handle, size), 0);
  EXPECT_EQ(size, far + 1);
  const struct {
    std::int64_t distance;
    int method, result;
    std::int64_t position;
  } rows[] = {
      {-1, 2, 0, far},
      {-100, 1, 0, far - 100},
      {0, 0, 0, 0},
      {1, 2, 0, far + 2},
      {far, 3, 22, far + 2},
      {0, -1, 22, far + 2},
      {-1, 0, EINVAL, far + 2},
      {7, 0, 0, 7},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(q9filesetpointer(handle, row.distance, position, row.method), row.result);
    EXPECT_EQ(position, row.position) << row.distance << ' ' << row.method;
    std::int64_t told = 0;
    EXPECT_EQ(q9filegetpointer(handle, told), 0);
    EXPECT_EQ(told, position);
  }
  char byte = 'y';
  q9filesetpointer(handle, 0, position, 2);
  EXPECT_EQ(q9fileread(handle, &byte, 1, done), 0);  // the end is no error
  EXPECT_EQ(done, 0U);
  q9fileclose(&handle);
}

TEST(Environment, SetAskedAndRemoved) {
  const test::keptvariable variable("OPTXV_TEST");
  q9unsetenv("OPTXV_TEST");
  EXPECT_FALSE(q9issetenv("OPTXV_TEST"));
  EXPECT_TRUE(q9setenv("OPTXV_TEST", ""));
  EXPECT_TRUE(q9issetenv("OPTXV_TEST"));
  EXPECT_TRUE(q9setenv("OPTXV_TEST", "two words"));
  EXPECT_STREQ(getenv("OPTXV_TEST"), "two words");
  EXPECT_FALSE(q9setenv("", "value"));
  EXPECT_FALSE(q9setenv("a=b", "value"));
  q9unsetenv("");
  EXPECT_TRUE(q9issetenv("OPTXV_TEST"));
}

TEST(Environment, DirectoriesGoInFrontOfPaths) {
  const test::keptvariable path("PATH");
  const std::string longvalue(1000, 'x');
  const struct {
    std::string directory;
    const char* before;
    std::string after;
  } rows[] = {
      {"/a", "/b:/c", "/a:/b:/c"},
      {"/a", "", "/a"},
      {"/a", nullptr, "/a"},
      {"", "/b", "/b"},
      {"/a", longvalue.c_str(), "/a:" + longvalue},
  };
  for (const auto& row : rows) {
    row.before == nullptr ? unsetenv("PATH") : setenv("PATH", row.before, 1);
    EXPECT_TRUE(prefixpath(row.directory));
    EXPECT_EQ(getenv("PATH"), row.after);
  }
}

TEST(Environment, TheLoadersVariableDependsOnThePlatform) {
  const test::kept platform(osplatform);
  const test::kept filetype(osfiletype);
  const test::scratchfolder folder;
  std::string program = folder.put("program", "");
  char* vector[] = {program.data(), nullptr};
  setarguments(1, vector);
  const struct {
    std::int32_t platform;
    const char* variable;
  } rows[] = {
      {3, nullptr},
      {4, "LIBPATH"},
      {5, "SHLIB_PATH"},
      {6, "LD_LIBRARY_PATH"},
      {7, "LD_LIBRARY_PATH"},
      {8, "LD_LIBRARY_PATH"},
      {9, "LD_LIBRARY_PATH"},
      {10, "DYLD_LIBRARY_PATH"},
      {11, "LD_LIBRARY_PATH"},
      {12, nullptr},
      {13, nullptr},
      {14, "DYLD_LIBRARY_PATH"},
      {15, nullptr},
      {16, nullptr},
      {-1, nullptr},
  };
  for (const auto& row : rows) {
    osplatform = row.platform;
    const test::keptvariable variable(row.variable == nullptr ? "LIBPATH" : row.variable);
    if (row.variable != nullptr) setenv(row.variable, "/old", 1);
    EXPECT_EQ(prefixloadpath("/new"), row.variable != nullptr) << row.platform;
    EXPECT_EQ(prefixloadpath(""), row.variable != nullptr) << row.platform;
    if (row.variable != nullptr) {
      EXPECT_EQ(getenv(row.variable), folder.path() + ":/new:/old");
    }
  }
  osplatform = 11;
  osfiletype = 0;
  EXPECT_FALSE(prefixloadpath("/new"));
  setarguments(-1, nullptr);
}

TEST(FileNames, Extensions) {
  const struct {
    std::string_view name, completed, replaced;
  } rows[] = {
      {"a", "a.x", "a.x"},
      {"a.b", "a.b", "a.x"},
      {"a.b.c", "a.b.c", "a.b.x"},
      {"a.b/c", "a.b/c.x", "a.b/c.x"},
      {"/a/.b", "/a/.b", "/a/.x"},
      {"a.", "a.", "a.x"},
      {"", ".x", ".x"},
      {"a/", "a/.x", "a/.x"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(completefileext(row.name, ".x"), row.completed);
    EXPECT_EQ(replacefileext(row.name, ".x"), row.replaced);
  }
  EXPECT_EQ(completefileext("a", ""), "a");
  EXPECT_EQ(completefileext(std::string(254, 'a'), ".x"), std::string(254, 'a') + '.');
}

TEST(Reals, FixedLayout) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const struct {
    double x;
    int decimals;
    std::string_view text;
  } rows[] = {
      {0, 2, "  0.00E+00"},
      {-0.0, 0, "  0.E+00"},
      {1.5, 2, "  1.50E+00"},
      {-1.5, 2, " -1.50E+00"},
      {123456, 3, "  1.235E+05"},
      {0.00098765, 2, "  9.88E-04"},
      {9.996, 2, "  1.00E+01"},  // the rounding shows in the digits
      {-0.09999, 2, " -1.00E-01"},
      {2.5, 0, "  3.E+00"},
      {1, -3, "  1.E+00"},
      {1.0 / 3, 14, "  3.33333333333333E-01"},
      {1.0 / 3, 30, "  3.33333333333333E-01"},
      {1e99, 1, "  1.0E+99"},
      {1e100, 1, "  1.0E+100"},
      {-1.25e-300, 2, " -1.25E-300"},
      {4.9406564584124654e-324, 2, "  4.94E-324"},
      {1.7976931348623157e308, 14, "  1.79769313486232E+308"},
      {1.7976931348623157e308, 1, "  1.7E+308"},  // 1.8E+308 is no real
      {infinity, 2, "  INF"},
      {-infinity, 2, " -INF"},
      {std::nan(""), 2, "  NAN"},
  };
  for (const auto& row : rows) EXPECT_EQ(floattoe(row.x, row.decimals), row.text) << row.x;
}

// Away from halves, the text is that of printf in a layout of its own.
TEST(Reals, FixedLayoutAgreesAtEveryExponent) {
  for (int exponent = -300; exponent <= 300; ++exponent) {
    const double x = 1.23456 * std::pow(10.0, exponent);
    char text[64];
    std::snprintf(text, sizeof text, "  %.4E", x);
    EXPECT_EQ(floattoe(x, 4), text);
  }
}

TEST(Reals, WholeParts) {
  const struct {
    double x, rounded, truncated;
  } rows[] = {
      {0.5, 1, 0},
      {-0.5, -1, 0},
      {2.4, 2, 2},
      {-2.6, -3, -2},
      {0, 0, 0},
      {1e300, 1e300, 1e300},
      {0.49999999999999994, 1, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(realround(row.x), row.rounded) << row.x;
    EXPECT_EQ(realtrunc(row.x), row.truncated) << row.x;
  }
}

}  // namespace
}  // namespace optxv
