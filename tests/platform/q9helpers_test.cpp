#include "platform/q9helpers.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <filesystem>
#include <initializer_list>
#include <string>

#include "support/scratchfolder.h"

namespace optxv::q9helpers {
namespace {

// A call that takes a text's room, on rooms that are too small, just enough, and none.
template <class Call>
void fits(const std::string& whole, Call call) {
  std::string room(whole.size() + 1, '#');
  EXPECT_EQ(call(room.data(), whole.size() + 1), 0);
  EXPECT_STREQ(room.c_str(), whole.c_str());
  EXPECT_EQ(call(room.data(), whole.size()), ERANGE);
  EXPECT_STREQ(room.c_str(), "");
  room = "#";
  EXPECT_EQ(call(room.data(), 0), ERANGE);
  EXPECT_EQ(room, "#");
}

TEST(Helpers, TextsAndTheirRoom) {
  const test::keptdirectory directory;
  const test::keptvariable variable("OPTXV_TEST");
  const test::scratchfolder folder;
  std::filesystem::current_path(folder.path());
  fits(folder.path(), [](char* path, std::size_t size) { return get_cwd(path, size); });
  setenv("OPTXV_TEST", "some value", 1);
  fits("some value",
       [](char* value, std::size_t size) { return get_env("OPTXV_TEST", value, size); });

  char value[8] = "#";
  setenv("OPTXV_TEST", "", 1);
  EXPECT_EQ(get_env("OPTXV_TEST", value, sizeof value), 0);
  EXPECT_STREQ(value, "");
  unsetenv("OPTXV_TEST");
  for (const char* const name : std::initializer_list<const char*>{"OPTXV_TEST", "", nullptr}) {
    value[0] = '#';
    EXPECT_EQ(get_env(name, value, sizeof value), ENOENT);
    EXPECT_STREQ(value, "");
  }
  std::filesystem::remove(folder.path());
  EXPECT_EQ(get_cwd(value, sizeof value), ENOENT);
  EXPECT_STREQ(value, "");
}

TEST(Helpers, NamesOfTheSystem) {
  utsname system{};
  ASSERT_EQ(uname(&system), 0);
  char texts[5][256];
  EXPECT_EQ(get_uname(texts[0], texts[1], texts[2], texts[3], texts[4], 256), 0);
  EXPECT_STREQ(texts[0], system.sysname);
  EXPECT_STREQ(texts[1], system.nodename);
  EXPECT_STREQ(texts[2], system.release);
  EXPECT_STREQ(texts[3], system.version);
  EXPECT_STREQ(texts[4], system.machine);
  EXPECT_EQ(get_uname(texts[0], texts[1], texts[2], texts[3], texts[4], 2), ERANGE);
  for (const char* text : texts) EXPECT_STREQ(text, "");
  EXPECT_EQ(getosfilesys(), 4);
}

TEST(Helpers, Clocks) {
  std::int64_t now = 0;
  std::int64_t before = 0;
  std::int64_t after = 0;
  EXPECT_EQ(get_time(now), 0);
  EXPECT_NEAR(static_cast<double>(now) / 1e9, static_cast<double>(std::time(nullptr)), 5);

  const std::int64_t ticks = gettickcount();
  EXPECT_EQ(get_cpu_time(before), 0);
  usleep(30000);
  EXPECT_EQ(get_cpu_time(after), 0);
  EXPECT_GE(gettickcount() - ticks, 29);
  EXPECT_LT(gettickcount() - ticks, 20000);
  EXPECT_GE(after, before);
  while (after < before + 2'000'000) get_cpu_time(after);  // two milliseconds of work
  EXPECT_GT(before, 0);
}

TEST(Helpers, Files) {
  const test::scratchfolder folder;
  const std::string file = folder.put("file", "twelve bytes");
  std::filesystem::permissions(file, std::filesystem::perms(0640));
  const timespec times[2] = {{1, 0}, {1600000000, 123000000}};
  ASSERT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
  std::filesystem::create_symlink("file", folder / "link");

  std::int64_t size = -7;
  std::int64_t modified = -7;
  std::int32_t mode = -7;
  const filestat out{size, modified, mode};
  EXPECT_EQ(get_file_stat(-1, out), EBADF);
  EXPECT_EQ(get_file_stat_by_name((folder / "absent").c_str(), out), ENOENT);
  EXPECT_EQ(get_file_stat_by_name(nullptr, out), ENOENT);
  EXPECT_EQ(get_file_stat_by_name((file + "/below").c_str(), out), ENOTDIR);
  EXPECT_EQ(size, -7);
  EXPECT_EQ(modified, -7);
  EXPECT_EQ(mode, -7);

  const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  for (const bool byname : {false, true}) {
    size = modified = mode = 0;
    EXPECT_EQ(byname ? get_file_stat_by_name((folder / "link").c_str(), out)
                     : get_file_stat(descriptor, out),
              0);
    EXPECT_EQ(size, 12);
    EXPECT_EQ(modified, 1'600'000'000'123'000'000);
    EXPECT_EQ(mode, S_IFREG | 0640);
  }
  close(descriptor);
  EXPECT_EQ(get_file_stat_by_name(folder.path().c_str(), out), 0);
  EXPECT_EQ(mode & S_IFMT, S_IFDIR);
}

}  // namespace
}  // namespace optxv::q9helpers
