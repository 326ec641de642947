// What the library knows of the program that brought it: one that is linked with it, one that loads
// it later, and an interpreter. The programs are started in the ways in which users start them.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "support/scratchfolder.h"

namespace {

namespace fs = std::filesystem;
using optxv::test::scratchfolder;

/// What a command of the shell prints, and its exit code behind that where it is not 0.
std::string printed(const std::string& command) {
  std::string text;
  FILE* const pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return "no pipe";
  char block[512];
  for (std::size_t got; (got = fread(block, 1, sizeof block, pipe)) != 0;) text.append(block, got);
  const int status = pclose(pipe);
  if (status != 0) text += " exit " + std::to_string(WEXITSTATUS(status));
  return text;
}

class HostArguments : public ::testing::TestWithParam<const char*> {};

TEST_P(HostArguments, AreKnownHoweverItStarts) {
  const scratchfolder folder;
  const std::string program = folder / "program";
  fs::copy_file(GetParam(), program);
  fs::create_symlink("program", folder / "link");
  const std::string in = "cd " + folder.path() + " && ";
  const struct {
    std::string command, printed;
  } rows[] = {
      {program, "0 - " + program},
      {program + " AUDIT", "1 audit " + program},
      {program + " audit 'b c' \"\"", "3 audit " + program},
      {program + " x AUDIT", "2 - " + program},
      {in + "./program x", "1 - " + program},
      {in + "./link audit", "1 audit " + program},
      {folder / "link", "0 - " + program},
      {"PATH=/nowhere:" + folder.path() + ":$PATH; link x", "1 - " + program},
      {in + "PATH=.:$PATH; program x", "1 - " + program},
  };
  for (const auto& row : rows) EXPECT_EQ(printed(row.command), row.printed) << row.command;
}

TEST_P(HostArguments, APathTakes254Bytes) {
  const scratchfolder folder;
  std::string path = folder.path();
  while (path.size() < 200) path += "/folder";
  fs::create_directories(path);
  path += '/' + std::string(253 - path.size(), 'p');
  fs::copy_file(GetParam(), path);
  EXPECT_EQ(printed(path + " x"), "1 - " + path);
  fs::rename(path, path + 'p');
  EXPECT_EQ(printed(path + "p x"), "1 - nowhere exit 22");
}

INSTANTIATE_TEST_SUITE_P(Programs, HostArguments,
                         ::testing::Values(OPTXV_LINKED_PROGRAM, OPTXV_LOADING_PROGRAM));

#ifdef OPTXV_PYTHON
TEST(HostArgumentsOfAnInterpreter, AreItsOwn) {
  const scratchfolder folder;
  folder.put(
      "AUDIT",
      "import ctypes, sys\n"
      "library = ctypes.CDLL('" OPTXV_LIBRARY_FILE
      "')\n"
      "path = ctypes.create_string_buffer(4096)\n"
      "failed = library.unixgetmodulefilename(path, ctypes.c_size_t(4096))\n"
      "library._ZN5optxv11zdlauditrunEv.restype = ctypes.c_bool\n"
      "print(library._ZN5optxv10paramcountEv(), library._ZN5optxv11zdlauditrunEv(), failed,\n"
      "      len(path.value) > 0, end='')\n");
  const std::string in = "cd " + folder.path() + " && " OPTXV_PYTHON " ";
  EXPECT_EQ(printed(in + "AUDIT"), "1 True 0 True");
  EXPECT_EQ(printed(in + "./AUDIT AUDIT x"), "3 False 0 True");
}
#endif

}  // namespace
