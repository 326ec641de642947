#include "platform/q9utils.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cfenv>
#include <cmath>
#include <cstdio>
#include <string>

#include "foundation/runtime.h"
#include "platform/q9ieeefp.h"
#include "platform/q9platform.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

TEST(Files, ModesOfOpening) {
  const test::scratchfolder folder;
  // Result for a file that is not there; content of one that was, after an attempt to write "new".
  const auto opens = [&](int mode, int absent, const char* content, bool reads, bool writes) {
    tq9filehandle handle = 77;
    EXPECT_EQ(q9fileopen(folder / std::to_string(mode), mode, handle), absent) << mode;
    EXPECT_EQ(handle > 0, absent == 0);
    if (handle > 0) q9fileclose(&handle);
    EXPECT_EQ(q9fileopen(folder.put("there", "content"), mode, handle), 0);
    EXPECT_NE(fcntl(handle, F_GETFD) & FD_CLOEXEC, 0);
    char byte = 0;
    std::uint32_t done = 77;
    std::int64_t position = 0;
    EXPECT_EQ(q9fileread(handle, &byte, 1, done) == 0, reads) << mode;
    EXPECT_EQ(done, reads ? 1U : 0U);
    q9filesetpointer(handle, 0, position, 0);
    EXPECT_EQ(q9filewrite(handle, "new", 3, done) == 0, writes) << mode;
    EXPECT_EQ(done, writes ? 3U : 0U);
    EXPECT_EQ(q9fileclose(&handle) + handle, 0);
    EXPECT_EQ(folder.get("there"), content) << mode;
  };
  opens(0, ENOENT, "content", true, false);
  opens(1, 0, "new", false, true);
  opens(2, 0, "newtent", true, true);
  opens(3, 0, "", false, false);
  opens(4, ENOENT, "content", true, false);
  opens(-2, 0, "newtent", true, true);

  tq9filehandle handle = 77;
  EXPECT_EQ(q9fileopen(folder.path(), 0, handle), 21);
  EXPECT_EQ(handle, 0);
  EXPECT_EQ(q9fileopen(folder / "no/file", 2, handle), ENOENT);
  EXPECT_EQ(q9chmod(folder / "absent", 0444), ENOENT);
  EXPECT_EQ(q9fileclose(nullptr), 9);
  const auto child = [&] {  // a 0 closes the standard input, whose place no other file takes
    const bool closed = q9fileclose(&handle) == 0 && fcntl(0, F_GETFD) < 0;
    _exit(closed && q9fileopen(folder / "there", 0, handle) == 0 && handle > 2 ? 42 : 1);
  };
  EXPECT_EXIT(child(), ::testing::ExitedWithCode(42), "");
  for (const tq9filehandle none : {0, -1, 1000000}) {
    char byte = 0;
    std::uint32_t done = 77;
    std::int64_t size = 77, position = 77;
    EXPECT_EQ(q9fileread(none, &byte, 1, done), 9);
    EXPECT_EQ(done, 0U);
    EXPECT_EQ(q9filewrite(none, &byte, 1, done), 9);
    EXPECT_EQ(q9filegetsize(none, size), 9);
    EXPECT_EQ(q9filesetpointer(none, 0, position, 0), 9);
    EXPECT_EQ(std::pair(size, position), (std::pair<std::int64_t, std::int64_t>(-1, 77)));
  }
}

TEST(Files, PositionsGoBeyondFourGigabytes) {
  const test::scratchfolder folder;
  constexpr std::int64_t far = 5'000'000'000;
  tq9filehandle handle = 0;
  std::int64_t position = 0, size = 0, told = 0;
  std::uint32_t done = 77;
  ASSERT_EQ(q9fileopen(folder / "sparse", 2, handle), 0);
  ASSERT_EQ(q9filesetpointer(handle, far, position, 0), 0);
  if (q9filewrite(handle, "x", 1, done) != 0) GTEST_SKIP() << "the file system has no such files";
  EXPECT_EQ(q9filegetsize(handle, size), 0);
  EXPECT_EQ(size, far + 1);
  const auto moves = [&](std::int64_t distance, int method, int result, std::int64_t to) {
    EXPECT_EQ(q9filesetpointer(handle, distance, position, method), result);
    EXPECT_EQ(position, to) << distance << ' ' << method;
    EXPECT_EQ(q9filegetpointer(handle, told), 0);
    EXPECT_EQ(told, position);
  };
  moves(-1, 2, 0, far);
  moves(-100, 1, 0, far - 100);
  moves(0, 0, 0, 0);
  moves(1, 2, 0, far + 2);
  moves(far, 3, 22, far + 2);
  moves(0, -1, 22, far + 2);
  moves(-1, 0, EINVAL, far + 2);
  q9fileclose(&handle);
}

TEST(Environment, DirectoriesGoBeforeTheOldPaths) {
  const test::keptvariable path("PATH"), library("LD_LIBRARY_PATH"), darwin("DYLD_LIBRARY_PATH");
  const test::kept platform(osplatform);
  const auto gives = [](const char* directory, const char* before, const std::string& after) {
    before == nullptr ? q9unsetenv("PATH") : void(q9setenv("PATH", before));
    EXPECT_EQ(q9issetenv("PATH"), before != nullptr);
    EXPECT_TRUE(prefixpath(directory));
    EXPECT_EQ(getenv("PATH"), after);
  };
  gives("/a", "/b:/c", "/a:/b:/c");
  gives("/a", "", "/a");
  gives("/a", nullptr, "/a");
  gives("", "/b", "/b");
  EXPECT_FALSE(q9setenv("", "value"));
  char program[] = "/bin/sh";
  char* vector[] = {program, nullptr};
  setarguments(1, vector);
  const auto loads = [](std::int32_t number, const char* variable) {
    osplatform = number;
    if (variable != nullptr) setenv(variable, "/old", 1);
    EXPECT_EQ(prefixloadpath("/new"), variable != nullptr) << number;
    EXPECT_EQ(prefixloadpath(""), variable != nullptr) << number;
    if (variable != nullptr) {
      EXPECT_TRUE(std::string(getenv(variable)).ends_with("bin:/new:/old")) << getenv(variable);
    }
  };
  loads(6, "LD_LIBRARY_PATH");
  loads(10, "DYLD_LIBRARY_PATH");
  loads(11, "LD_LIBRARY_PATH");
  loads(13, nullptr);
  loads(14, "DYLD_LIBRARY_PATH");
  loads(16, nullptr);
  loads(-1, nullptr);
  setarguments(-1, nullptr);
}

TEST(Environment, NamesThatAreNone) {
  EXPECT_FALSE(q9setenv("", "x"));
  EXPECT_FALSE(q9setenv("a=b", "x"));
  q9unsetenv("");
  std::int64_t position = 7;
  EXPECT_EQ(q9filegetpointer(0, position), EBADF);
  EXPECT_EQ(position, 7);
  const test::kept platform(osplatform);
  for (const std::int32_t number : {-1, 99}) {
    osplatform = number;
    EXPECT_FALSE(prefixloadpath("x")) << number;
  }
}

TEST(FileNames, Extensions) {
  for (const std::string name : {"a", "a.b/c", ""})
    EXPECT_EQ(completefileext(name, ".x"), name + ".x");
  for (const char* name : {"a.b", "/a/.b", "a."}) EXPECT_EQ(completefileext(name, ".x"), name);
  EXPECT_EQ(replacefileext("a.b.c", ".x"), "a.b.x");
  EXPECT_EQ(replacefileext("a.b/c", ".x"), "a.b/c.x");
}

TEST(Reals, FixedLayout) {
  const auto gives = [](double x, int decimals, const char* text) {
    EXPECT_EQ(floattoe(x, decimals), text) << x;
  };
  gives(-0.0, 0, "  0.E+00");
  gives(-0.09999, 2, " -1.00E-01");
  gives(9.996, 2, "  1.00E+01");
  gives(2.5, 0, "  3.E+00");
  gives(1, -3, "  1.E+00");
  gives(1e99, 1, "  1.0E+99");
  gives(1.0 / 3, 30, "  3.33333333333333E-01");
  gives(4.94065645841246e-324, 2, "  4.94E-324");
  gives(1.7976931348623157e308, 1, "  1.7E+308");  // 1.8E+308 is no real
  gives(-HUGE_VAL, 2, " -INF");
  gives(std::nan(""), 2, "  NAN");
  for (int exponent = -300; exponent <= 300; ++exponent) {  // away from halves, as printf has it
    char text[64];
    const double x = 1.23456 * std::pow(10.0, exponent);
    std::snprintf(text, sizeof text, "  %.4E", x);
    gives(x, 4, text);
  }
  EXPECT_EQ(realround(-0.5), -1);
  EXPECT_EQ(realround(0.49999999999999994), 1);
  EXPECT_EQ(realtrunc(-2.6), -2);
}

// In the name "Every": valgrind keeps no flags of exceptions, and skips such cases.
TEST(Reals, EveryFlagOfExceptions) {
  const int native[] = {FE_INVALID, 0, FE_DIVBYZERO, FE_OVERFLOW, FE_UNDERFLOW, FE_INEXACT};
  for (unsigned bit = 0; bit < 6; ++bit) {
    std::feraiseexcept(FE_ALL_EXCEPT);
    clearexceptionflags(static_cast<std::uint8_t>(1U << bit | 192U));
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), FE_ALL_EXCEPT & ~native[bit]) << bit;
    EXPECT_EQ(getexceptionflags(), 61U & ~(1U << bit));
  }
}

}  // namespace
}  // namespace optxv
