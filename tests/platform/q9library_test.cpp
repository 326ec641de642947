#include "platform/q9library.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/q9platform.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

using ::testing::HasSubstr;

TEST(LibraryNames, AreMadeByThePlatform) {
  const test::kept platform(osplatform);
  const struct {
    std::int32_t platform;
    std::string_view path, base, name;
  } rows[] = {
      {11, "", "foo", "libfoo.so"},
      {11, "/opt/x/", "foo", "/opt/x/libfoo.so"},
      {11, "/opt/x", "foo", "/opt/x/libfoo.so"},
      {11, "/", "foo", "/libfoo.so"},
      {11, "x//", "", "x//lib.so"},
      {5, "", "foo", "libfoo.sl"},
      {2, "bin", "foo", "bin/foo.dll"},
      {14, "", "foo", "libfoo.dylib"},
      {15, "", "foo", "libfoo.XXX"},
      {99, "", "foo", "libfoo.XXX"},
  };
  for (const auto& row : rows) {
    osplatform = row.platform;
    EXPECT_EQ(q9makelibname(row.path, row.base), row.name);
  }
  osplatform = 10;
  EXPECT_EQ(q9libraryprefix(), "lib");
  EXPECT_EQ(q9libraryext(), ".dylib");
}

TEST(Libraries, LoadFindAndFree) {
  const test::scratchfolder folder;
  const std::string source = folder.put(
      "sample.c", "int answer(void) { return 42; }\n__asm__(\".globl none\\n.set none, 0\\n\");\n");
  osplatform = 11;
  const shortstring name = q9makelibname(folder.path(), "sample");
  const std::string library(name);
  if (std::system(("cc -shared -fPIC -o " + library + ' ' + source).c_str()) != 0)
    GTEST_SKIP() << "no C compiler";

  shortstring message = "left over";
  const tq9libhandle handle = q9loadlibrary(name, message);
  ASSERT_FALSE(q9libhandleisnil(handle)) << std::string(message);
  EXPECT_EQ(message, "");
  const auto answer = reinterpret_cast<int (*)()>(q9getprocaddress(handle, "answer"));
  ASSERT_NE(answer, nullptr);
  EXPECT_EQ(answer(), 42);
  EXPECT_EQ(q9getprocaddress(handle, "question"), nullptr);
  EXPECT_EQ(dlerror(), nullptr) << "the error of the search is still pending";
  EXPECT_EQ(q9getprocaddress(handle, "none"), nullptr);
  EXPECT_TRUE(q9freelibrary(handle));
  EXPECT_EQ(dlopen(library.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr) << "is still loaded";
}

TEST(Libraries, FailuresHaveAMessage) {
  const test::scratchfolder folder;
  const struct {
    std::string name, says;
  } rows[] = {
      {folder.put("libbroken.so", "no library at all"), "libbroken.so"},
      {folder / "libabsent.so", "libabsent.so"},
      {folder.path(), folder.path()},
  };
  for (const auto& row : rows) {
    shortstring message;
    EXPECT_TRUE(q9libhandleisnil(q9loadlibrary(row.name, message)));
    EXPECT_THAT(std::string(message), HasSubstr(row.says));
  }
  shortstring message;
  EXPECT_EQ(q9loadlibrary(std::string(250, 'x'), message), q9nillibhandle());
  EXPECT_EQ(message.length(), 255);
  EXPECT_FALSE(q9freelibrary(q9nillibhandle()));
}

}  // namespace
}  // namespace optxv
