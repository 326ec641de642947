#include "platform/arguments.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "foundation/runtime.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

namespace fs = std::filesystem;

class Arguments : public ::testing::Test {
 protected:
  ~Arguments() override { setarguments(-1, nullptr); }

  /// Makes these the arguments of the program.
  void are(std::vector<std::string> words) {
    words_ = std::move(words);
    pointers_.clear();
    for (std::string& word : words_) pointers_.push_back(word.data());
    pointers_.push_back(nullptr);
    setarguments(static_cast<int>(words_.size()), pointers_.data());
  }

  const test::keptdirectory directory_{};
  const test::keptvariable variable_{"PATH"};
  const test::scratchfolder folder_;
  std::vector<std::string> words_;
  std::vector<char*> pointers_;
};

TEST_F(Arguments, ComeByNumberFromTheLoaderOrElseFromAFile) {
  const std::string file = folder_.put("cmdline", std::string("prog\0a b\0\0last\0", 15));
  setarguments(-1, nullptr);  // as where no library has been loaded
  keephostarguments(0, nullptr);
  initarguments((folder_ / "absent").c_str());
  EXPECT_EQ(std::pair(argumentcount(), paramcount()), std::pair(-1, 0));
  EXPECT_EQ(paramstr(1), "");
  initarguments(file.c_str());
  const char* const texts[] = {"", "a b", "", "last", ""};
  for (const int i : {-1, 1, 2, 3, 4}) EXPECT_EQ(paramstr(i), texts[i < 0 ? 0 : i]) << i;
  EXPECT_EQ(paramcount(), 3);
  are({"program", std::string(300, 'x')});
  EXPECT_EQ(paramstr(1), std::string(255, 'x'));
  EXPECT_EQ(argumenttext(1), std::string(300, 'x'));
  pointers_[1] = nullptr;  // a host may clear its arguments
  EXPECT_EQ(paramstr(1), "");
  keephostarguments(2, pointers_.data());
  setarguments(-1, nullptr);
  initarguments(file.c_str());
  EXPECT_EQ(argumentvector(), pointers_.data());
  keephostarguments(0, nullptr);
}

TEST_F(Arguments, LeadToTheProgram) {
  const std::string x(5000, 'x'), home = folder_.path();
  fs::create_directories(folder_ / "bin/a");
  folder_.putscript("a", "");
  folder_.putscript("bin/b", "");
  folder_.put("bin/text", "");
  fs::create_symlink("b", folder_ / "bin/near");
  fs::create_symlink("near", folder_ / "bin/twice");
  fs::create_symlink("bin/b", folder_ / "down");
  fs::current_path(home);
  const auto finds = [&](const std::string& path, const std::string& word, std::string found) {
    setenv("PATH", path.c_str(), 1);
    are({word});
    char room[4096] = "left over";
    if (!found.empty()) found.insert(0, home + '/');
    ioresult();
    EXPECT_EQ(unixgetmodulefilename(room, sizeof room), found.empty() ? 22 : 0) << word;
    EXPECT_EQ(ioresult(), found.empty() ? 22 : 0);
    EXPECT_EQ(room, found) << path << " and " << word;
    EXPECT_EQ(unixgetmodulefilename(room, found.size()), 22) << "there is no room";
  };
  // With a slash there is no search. One link is followed, and one only, a relative target taking
  // the place of the last name.
  finds("", "./a", "a");
  finds("", "././a", "./a");
  finds("", "bin/../a", "bin/../a");
  finds("", home + "/bin/twice", "bin/near");
  finds("", "./down", "bin/b");
  finds("", "./c", "");
  finds("", "", "");
  finds("", '/' + x, "");
  finds("", "bin/near", "bin/b");
  // Along PATH: folders and what is no program are skipped, an empty entry is the current
  // directory.
  finds(home + "/bin/", "b", "bin/b");
  finds("/no:" + home + "/bin:", "near", "bin/b");
  finds("bin:" + home, "a", "a");
  finds("bin", "text", "");
  finds("./bin", "b", "bin/b");
  finds(".", "a", "a");
  finds("/no:", "a", "a");
  finds(home, x, "");
  finds(x, "a", "");
  // A path is cut at 4095 bytes.
  std::string far = "./a";
  while (home.size() + 1 + far.size() < 4094) far.insert(0, "./");
  if (home.size() + 1 + far.size() < 4095) far.insert(1, "/");
  finds("", home + '/' + far, far);
  finds("", home + '/' + far + "bc", far);
  // Where the current directory is gone, nothing is found by it.
  fs::create_directory(folder_ / "gone");
  fs::current_path(folder_ / "gone");
  fs::remove(folder_ / "gone");
  finds("", "./a", "");
  finds(":", "a", "");
  finds(':' + home, "a", "a");
}

}  // namespace
}  // namespace optxv
