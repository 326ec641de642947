#include "platform/q9platform.h"

#include <gtest/gtest.h>
#include <sys/utsname.h>

#include <bit>
#include <string>

#include "support/scratchfolder.h"

namespace optxv {
namespace {

TEST(Platform, SystemNamesLeadToNumbers) {
  const struct {
    std::string_view sysname, release, machine;
    std::int32_t platform;
  } rows[] = {
      {"AIX", "7", "00F", 4},        {"HP-UX", "B.11", "ia64", 5},
      {"IRIX64", "6.5", "IP35", 6},  {"Linux", "6.1", "x86_64", 11},
      {"Linux", "6.1", "i686", 7},   {"Linux", "6.1", "aarch64", 7},
      {"Linux", "5", "", 7},         {"SunOS", "5.11", "i86pc", 12},
      {"SunOS", "4.1", "i86pc", 12}, {"SunOS", "5.11", "sun4v", 8},
      {"SunOS", "4.1", "sun4", 15},  {"SunOS", "", "sun4", 15},
      {"OSF1", "V5", "alpha", 9},    {"Darwin", "8", "i386", 14},
      {"Darwin", "22", "arm64", 10}, {"linux", "6", "x86_64", 15},
      {"Linux2", "6", "x86_64", 15}, {"", "", "", 15},
  };
  for (const auto& row : rows)
    EXPECT_EQ(platformof(row.sysname, row.release, row.machine), row.platform)
        << row.sysname << ' ' << row.release << ' ' << row.machine;
}

TEST(Platform, TablesGoTogether) {
  const struct {
    std::size_t platform;
    std::string_view text, extension, prefix;
  } rows[] = {
      {0, "DOS", ".dll", ""},
      {3, "Win64EMT", ".dll", ""},
      {4, "AIX", ".so", "lib"},
      {5, "HP-UX", ".sl", "lib"},
      {8, "SunOS-sparc32", ".so", "lib"},
      {10, "Darwin-ppc", ".dylib", "lib"},
      {11, "Linux86_64", ".so", "lib"},
      {13, "SunOS-sparc64", ".so", "lib"},
      {14, "Darwin-i386", ".dylib", "lib"},
      {15, "Missing", ".XXX", "lib"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(osplatformtext[row.platform], row.text);
    EXPECT_EQ(osdllextension[row.platform], row.extension) << row.text;
    EXPECT_EQ(osdllprefix[row.platform], row.prefix) << row.text;
  }
}

TEST(Platform, LoadStepFindsThisMachine) {
  initq9platform();
  utsname system{};
  ASSERT_EQ(uname(&system), 0);
  EXPECT_EQ(osfiletypetext[static_cast<std::size_t>(osfiletype)], "UNIX");
  EXPECT_EQ(osplatform, platformof(system.sysname, system.release, system.machine));
  EXPECT_EQ(nativeislittleendian, std::endian::native == std::endian::little);
}

TEST(Platform, DevicesFollowTheFileType) {
  const test::kept filetype(osfiletype);
  const struct {
    std::int32_t filetype;
    std::string_view nullfile, console;
  } rows[] = {{0, "nul", "con"}, {1, "", ""},  {3, "", "SYS$OUTPUT"}, {5, "", ""},
              {6, "", ""},       {-1, "", ""}, {7, "", ""},           {4, "/dev/null", "/dev/tty"}};
  for (const auto& row : rows) {
    osfiletype = row.filetype;
    initq9platform();
    EXPECT_EQ(osnullfilename, row.nullfile) << row.filetype;
    EXPECT_EQ(osconsolename, row.console) << row.filetype;
  }
}

}  // namespace
}  // namespace optxv
