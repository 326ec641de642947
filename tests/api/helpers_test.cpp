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

TEST(Helpers, ReportOnTheSystem) {
  char text[4096];
  const optxv::test::keptvariable variable("OPTXV_TEST");
  setenv("OPTXV_TEST", "value", 1);
  EXPECT_EQ(get_env("OPTXV_TEST", text, 6), 0);
  EXPECT_STREQ(text, "value");
  EXPECT_EQ(get_env("OPTXV_TEST", text, 5), ERANGE);
  EXPECT_EQ(get_env("", text, sizeof text), ENOENT);
  EXPECT_EQ(get_env(nullptr, text, sizeof text), ENOENT);
  EXPECT_EQ(get_env("OPTXV_TEST", text, 0), ERANGE);
  EXPECT_EQ(get_cwd(text, 0), ERANGE);
  EXPECT_EQ(get_cwd(text, 1), ERANGE);
  EXPECT_STREQ(text, "");
  EXPECT_EQ(get_cwd(text, sizeof text), 0);
  EXPECT_EQ(text, std::filesystem::current_path());
  utsname system{};
  uname(&system);
  char names[5][256];
  EXPECT_EQ(get_uname(names[0], names[1], names[2], names[3], names[4], 1), ERANGE);
  for (const char* name : names) EXPECT_STREQ(name, "") << "all of them, or none";
  EXPECT_EQ(get_uname(names[0], names[1], names[2], names[3], names[4], 256), 0);
  EXPECT_STREQ(names[0], system.sysname);
  EXPECT_STREQ(names[1], system.nodename);
  EXPECT_STREQ(names[2], system.release);
  EXPECT_STREQ(names[3], system.version);
  EXPECT_STREQ(names[4], system.machine);
}

TEST(Helpers, TellTheTime) {
  int64_t cpu = 0, now = 0, later = 0;
  const int64_t start = gettickcount();
  EXPECT_EQ(get_cpu_time(&cpu), 0);
  EXPECT_EQ(get_time(&now), 0);
  EXPECT_NEAR(static_cast<double>(now) / 1e9, static_cast<double>(std::time(nullptr)), 5);
  while (gettickcount() < start + 5 || later <= cpu) get_cpu_time(&later);
  EXPECT_LT(gettickcount() - start, 60'000) << "milliseconds";
}

/// What is known of a file: by its name, and by a descriptor.
struct filestatus {
  int64_t size = -7, modified = -7;
  int32_t mode = -7;
  bool operator==(const filestatus&) const = default;
};

TEST(Helpers, ReportOnFiles) {
  const optxv::test::scratchfolder folder;
  const std::string file = folder.put("file", "content");
  const timespec times[2] = {{1, 0}, {1600000000, 123000000}};
  ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
  ASSERT_EQ(chmod(file.c_str(), 0640), 0);
  const filestatus expected = {7, 1'600'000'000'123'000'000, S_IFREG | 0640}, untouched;
  filestatus byname, bynumber, none;
  EXPECT_EQ(get_file_stat_by_name(file.c_str(), &byname.size, &byname.modified, &byname.mode), 0);
  EXPECT_EQ(byname, expected);
  const int descriptor = open(file.c_str(), O_RDONLY);
  EXPECT_EQ(get_file_stat(descriptor, &bynumber.size, &bynumber.modified, &bynumber.mode), 0);
  EXPECT_EQ(bynumber, expected);
  close(descriptor);
  EXPECT_EQ(get_file_stat(descriptor, &none.size, &none.modified, &none.mode), EBADF);
  EXPECT_EQ(none, untouched);
  const std::string inside = file + "/x";
  EXPECT_EQ(get_file_stat_by_name(inside.c_str(), &none.size, &none.modified, &none.mode), ENOTDIR);
  EXPECT_EQ(none, untouched);
}

// The last second of 2262 that nanoseconds count, the next one, and years that not every file
// system knows.
TEST(Helpers, ReportOnFilesOfALaterDay) {
  const optxv::test::scratchfolder folder;
  const std::string file = folder.put("file", "");
  for (const time_t second : {9223372035, 9223372036, 12000000000}) {
    const timespec late[2] = {{1, 0}, {second, 500000000}};
    struct stat status {};
    if (utimensat(AT_FDCWD, file.c_str(), late, 0) != 0 || stat(file.c_str(), &status) != 0 ||
        status.st_mtim.tv_sec != second)
      continue;
    filestatus found;
    EXPECT_EQ(get_file_stat_by_name(file.c_str(), &found.size, &found.modified, &found.mode), 0);
    EXPECT_EQ(found.modified, second == 9223372035 ? 9'223'372'035'500'000'000 : INT64_MAX);
  }
}

}  // namespace
