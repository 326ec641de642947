// The platform helpers of the built library, with their arguments in their places.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/utsname.h>

#include <cerrno>
#include <ctime>

#include "optxv/optxv.h"
#include "support/scratchfolder.h"

namespace {

TEST(Helpers, ReportOnTheSystemAndFiles) {
  char text[4096], n[5][256];
  const optxv::test::keptvariable variable("OPTXV_TEST");
  setenv("OPTXV_TEST", "value", 1);
  EXPECT_EQ(get_env("OPTXV_TEST", text, 6), 0);
  EXPECT_STREQ(text, "value");
  EXPECT_EQ(get_env("OPTXV_TEST", text, 5), ERANGE);
  EXPECT_EQ(get_env("", text, sizeof text), ENOENT);
  EXPECT_EQ(get_cwd(text, sizeof text), 0);
  EXPECT_EQ(text, std::filesystem::current_path());
  utsname s{};
  uname(&s);
  EXPECT_EQ(get_uname(n[0], n[1], n[2], n[3], n[4], 256), 0);
  int i = 0;
  for (const char* name : {s.sysname, s.nodename, s.release, s.version, s.machine})
    EXPECT_STREQ(n[i++], name);
  int64_t cpu = 0, now = 0, later = 0, start = gettickcount();
  EXPECT_EQ(get_cpu_time(&cpu) + get_time(&now), 0);
  EXPECT_NEAR(static_cast<double>(now) / 1e9, static_cast<double>(std::time(nullptr)), 5);
  while (gettickcount() < start + 5 || later <= cpu) get_cpu_time(&later);

  const optxv::test::scratchfolder folder;
  const std::string file = folder.put("file", "content");
  const timespec times[2] = {{1, 0}, {1600000000, 123000000}};
  ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
  int64_t size = -7, modified = -7;
  int32_t mode = -7;
  EXPECT_EQ(get_file_stat_by_name((file + "/x").c_str(), &size, &modified, &mode), ENOTDIR);
  EXPECT_EQ(size + modified + mode, -21);
  EXPECT_EQ(get_file_stat_by_name(file.c_str(), &size, &modified, &mode), 0);
  EXPECT_EQ(size, 7);
  EXPECT_EQ(modified, 1'600'000'000'123'000'000);
  EXPECT_EQ(mode & S_IFMT, S_IFREG);

  const int descriptor = open(file.c_str(), O_RDONLY);
  EXPECT_EQ(get_file_stat(descriptor, &size, &modified, &mode), 0);
  close(descriptor);
  EXPECT_EQ(get_file_stat(descriptor, &size, &modified, &mode), EBADF);
  // The last second of 2262 that nanoseconds count, the next one, and years that not every file
  // system knows.
  for (const time_t second : {9223372035, 9223372036, 12000000000}) {
    const timespec late[2] = {{1, 0}, {second, 500000000}};
    struct stat status {};
    if (utimensat(AT_FDCWD, file.c_str(), late, 0) != 0 || stat(file.c_str(), &status) != 0 ||
        status.st_mtim.tv_sec != second)
      continue;
    EXPECT_EQ(get_file_stat_by_name(file.c_str(), &size, &modified, &mode), 0);
    EXPECT_EQ(modified, second == 9223372035 ? 9'223'372'035'500'000'000 : INT64_MAX) << second;
  }
}

}  // namespace
