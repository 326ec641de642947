// What the library knows of the program that loaded it, started in the ways that users start it.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/scratchfolder.h"

namespace {

TEST(HostArguments, AreKnownHoweverItStarts) {
  const optxv::test::scratchfolder folder;
  const std::string program = folder / "program", in = "cd " + folder.path() + " && ";
  const auto prints = [&](const std::string& command, const std::string& text) {
    EXPECT_EQ(std::system((command + " > " + folder.path() + "/out").c_str()), 0) << command;
    EXPECT_EQ(folder.get("out"), text) << command;
  };
  std::filesystem::create_symlink("program", folder / "link");
  for (const char* const host : {OPTXV_LINKED_PROGRAM, OPTXV_LOADING_PROGRAM}) {
    std::filesystem::copy_file(host, program, std::filesystem::copy_options::overwrite_existing);
    prints(program + " audit 'b c' \"\"", "3 audit " + program);
    prints(in + "./link AUDIT", "1 audit " + program);
    prints("PATH=/nowhere:" + folder.path() + ":$PATH; link", "0 - " + program);
  }
#ifdef OPTXV_PYTHON
  folder.put("AUDIT",
             "import ctypes\nlibrary = ctypes.CDLL('" OPTXV_LIBRARY_FILE
             "')\nlibrary._ZN5optxv11zdlauditrunEv.restype = ctypes.c_bool\n"
             "print(library._ZN5optxv10paramcountEv(), library._ZN5optxv11zdlauditrunEv())");
  prints(in + OPTXV_PYTHON " AUDIT", "1 True\n");
  prints(in + OPTXV_PYTHON " ./AUDIT AUDIT x", "3 False\n");
#endif
}

}  // namespace
