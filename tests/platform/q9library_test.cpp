#include "platform/q9library.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/q9platform.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

TEST(Platform, LeadsToNumbersAndNames) {
  const auto is = [](std::string_view sysname, std::string_view release, std::string_view machine,
                     std::int32_t platform) {
    EXPECT_EQ(platformof(sysname, release, machine), platform) << sysname;
  };
  is("AIX", "7", "00F", 4);
  is("HP-UX", "B", "ia64", 5);
  is("IRIX64", "6.5", "IP35", 6);
  is("Linux", "6.1", "x86_64", 11);
  is("Linux", "6.1", "i686", 7);
  is("SunOS", "4.1", "i86pc", 12);
  is("SunOS", "5.11", "sun4v", 8);
  is("SunOS", "4.1", "sun4", 15);
  is("linux", "6", "", 15);
  is("Darwin", "8", "i386", 14);
  is("Darwin", "22", "arm64", 10);
  is("OSF1", "V5", "alpha", 9);
  const test::kept platform(osplatform);
  const auto names = [](std::int32_t number, std::string_view path, std::string_view name) {
    osplatform = number;
    EXPECT_EQ(q9makelibname(path, "foo"), name);
  };
  names(11, "", "libfoo.so");
  names(11, "/opt/", "/opt/libfoo.so");
  names(14, "", "libfoo.dylib");
  names(11, "/opt", "/opt/libfoo.so");
  names(2, "bin", "bin/foo.dll");
  names(99, "", "libfoo.XXX");
}

TEST(Libraries, LoadFindAndFree) {
  const test::scratchfolder folder;
  const std::string source = folder.put(
      "sample.c", "int answer(void) { return 42; }\n__asm__(\".globl none\\n.set none, 0\\n\");\n");
  const std::string library = folder / "sample.so";
  if (std::system(("cc -shared -fPIC -o " + library + ' ' + source).c_str()) != 0)
    GTEST_SKIP() << "no C compiler";
  shortstring message = "left over";
  const tq9libhandle handle = q9loadlibrary(library, message);
  ASSERT_FALSE(q9libhandleisnil(handle)) << std::string(message);
  EXPECT_EQ(message, "");
  const auto answer = reinterpret_cast<int (*)()>(q9getprocaddress(handle, "answer"));
  EXPECT_TRUE(answer != nullptr && answer() == 42);
  for (const char* name : {"question", "none"}) {
    EXPECT_EQ(q9getprocaddress(handle, name), nullptr);
    EXPECT_EQ(dlerror(), nullptr) << "the error of the search is still pending";
  }
  EXPECT_TRUE(q9freelibrary(handle));
  EXPECT_EQ(dlopen(library.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr) << "is still loaded";

  for (const std::string& name : {folder.put("broken.so", "text"), folder / "absent.so"}) {
    EXPECT_TRUE(q9libhandleisnil(q9loadlibrary(name, message)));
    EXPECT_NE(std::string(message).find(name), std::string::npos) << std::string(message);
  }
  EXPECT_EQ(q9loadlibrary(std::string(250, 'x'), message), q9nillibhandle());
  EXPECT_EQ(message.length(), 255);
  EXPECT_FALSE(q9freelibrary(q9nillibhandle()));
}

}  // namespace
}  // namespace optxv
