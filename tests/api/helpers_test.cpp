// The platform helpers of the built library: each reaches what it is named for, with its arguments
// in their places.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <string>

#include "optxv/optxv.h"
#include "support/scratchfolder.h"

namespace {

TEST(Helpers, ReachTheSystem) {
  char text[4096];
  char expected[4096];
  ASSERT_NE(getcwd(expected, sizeof expected), nullptr);
  EXPECT_EQ(get_cwd(text, sizeof text), 0);
  EXPECT_STREQ(text, expected);
  EXPECT_EQ(get_cwd(text, 1), ERANGE);
  EXPECT_STREQ(text, "");

  const optxv::test::keptvariable variable("OPTXV_TEST");
  setenv("OPTXV_TEST", "value", 1);
  EXPECT_EQ(get_env("OPTXV_TEST", text, 6), 0);
  EXPECT_STREQ(text, "value");
  EXPECT_EQ(get_env("OPTXV_TEST", text, 5), ERANGE);

  utsname system{};
  char names[5][256];
  ASSERT_EQ(uname(&system), 0);
  EXPECT_EQ(get_uname(names[0], names[1], names[2], names[3], names[4], 256), 0);
  const char* const texts[] = {system.sysname, system.nodename, system.release, system.version,
                               system.machine};
  for (int i = 0; i < 5; ++i) EXPECT_STREQ(names[i], texts[i]);
  EXPECT_EQ(getosfilesys(), 4);

  EXPECT_EQ(unixgetmodulefilename(text, sizeof text), 0);
  EXPECT_NE(std::string(text).find("helpers_test"), std::string::npos) << text;
}

TEST(Helpers, TellTimes) {
  int64_t cpu = 0;
  int64_t now = 0;
  EXPECT_EQ(get_cpu_time(&cpu), 0);
  EXPECT_GT(cpu, 0);
  EXPECT_EQ(get_time(&now), 0);
  EXPECT_NEAR(static_cast<double>(now) / 1e9, static_cast<double>(std::time(nullptr)), 5);
  const int64_t ticks = gettickcount();
  usleep(5000);
  EXPECT_GE(gettickcount() - ticks, 4);
}

TEST(Helpers, TellOfFiles) {
  const optxv::test::scratchfolder folder;
  const std::string file = folder.put("file", "content");
  int64_t size = 0;
  int64_t modified = 0;
  int32_t mode = 0;
  EXPECT_EQ(get_file_stat_by_name(file.c_str(), &size, &modified, &mode), 0);
  EXPECT_EQ(size, 7);
  EXPECT_NEAR(static_cast<double>(modified) / 1e9, static_cast<double>(std::time(nullptr)), 60);
  EXPECT_EQ(mode & S_IFMT, S_IFREG);
  const int handle = open(folder.path().c_str(), O_RDONLY | O_CLOEXEC);
  EXPECT_EQ(get_file_stat(handle, &size, &modified, &mode), 0);
  EXPECT_EQ(mode & S_IFMT, S_IFDIR);
  close(handle);
  EXPECT_EQ(get_file_stat(handle, &size, &modified, &mode), EBADF);
}

}  // namespace
