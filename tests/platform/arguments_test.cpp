#include "platform/arguments.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "foundation/runtime.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

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

  std::vector<std::string> words_;
  std::vector<char*> pointers_;
};

TEST_F(Arguments, ByNumber) {
  EXPECT_EQ(paramcount(), 0);
  EXPECT_EQ(paramstr(0), "");
  EXPECT_EQ(paramstr(1), "");

  are({"program", "one", "", std::string(300, 'x')});
  EXPECT_EQ(paramcount(), 3);
  EXPECT_EQ(paramstr(-1), "");
  EXPECT_EQ(paramstr(1), "one");
  EXPECT_EQ(paramstr(2), "");
  EXPECT_EQ(paramstr(3), std::string(255, 'x'));
  EXPECT_EQ(argumenttext(3), std::string(300, 'x'));
  EXPECT_EQ(paramstr(4), "");
  EXPECT_EQ(paramstr(2147483647), "");

  pointers_[1] = nullptr;  // a host may clear its arguments
  EXPECT_EQ(paramstr(1), "");
}

TEST_F(Arguments, ComeFromTheLoaderOrElseFromAFile) {
  const test::scratchfolder folder;
  const std::string file = folder.put("cmdline", std::string("prog\0a b\0\0last\0", 15));
  initarguments((folder / "absent").c_str());
  EXPECT_EQ(argumentcount(), -1);

  initarguments(file.c_str());
  EXPECT_EQ(paramcount(), 3);
  EXPECT_EQ(paramstr(1), "a b");
  EXPECT_EQ(paramstr(2), "");
  EXPECT_EQ(paramstr(3), "last");

  char name[] = "host";
  char* vector[] = {name, name, nullptr};
  keephostarguments(2, vector);
  initarguments(file.c_str());
  EXPECT_EQ(argumentvector(), vector);
  keephostarguments(0, vector);
  initarguments(folder.put("empty", "").c_str());
  EXPECT_EQ(argumentvector(), vector);  // nothing better is known

  initarguments();  // what this system says of this process
  std::ifstream known("/proc/self/cmdline");
  std::string first;
  if (std::getline(known, first, '\0')) {
    EXPECT_EQ(argumenttext(0), first);
  }
}

// Programs a and bin/b, links to them, a folder, a file that is no program, and a link to nothing.
class ProgramPath : public Arguments {
 protected:
  ProgramPath() {
    namespace fs = std::filesystem;
    fs::create_directories(folder_ / "bin/a");
    folder_.putscript("a", "");
    folder_.putscript("bin/b", "");
    folder_.put("bin/text", "");
    fs::create_symlink("b", folder_ / "bin/near");
    fs::create_symlink("near", folder_ / "bin/twice");
    fs::create_symlink(folder_ / "a", folder_ / "bin/far");
    fs::create_symlink("nowhere", folder_ / "bin/broken");
    fs::create_symlink("bin/b", folder_ / "down");
    fs::current_path(folder_.path());
  }

  /// The path that is found, the scratch folder as a tilde.
  std::string found(const std::string& word) {
    are({word});
    char path[4096] = "left over";
    ioresult();
    const int result = unixgetmodulefilename(path, sizeof path);
    EXPECT_EQ(result, *path == '\0' ? 22 : 0) << word;
    EXPECT_EQ(ioresult(), result) << word;
    std::string text(path);
    if (text.starts_with(folder_.path())) text.replace(0, folder_.path().size(), "~");
    return text;
  }

  const test::keptdirectory directory_;
  const test::keptvariable variable_{"PATH"};
  const test::scratchfolder folder_;
};

TEST_F(ProgramPath, FoundByItsFirstWord) {
  const struct {
    const char* path;
    std::string word;
    const char* found;
  } rows[] = {
      {"", folder_ / "a", "~/a"},  // with a slash: no search
      {"", folder_ / "bin/near", "~/bin/b"},
      {"", folder_ / "bin/far", "~/a"},
      {"", folder_ / "bin/twice", "~/bin/near"},  // one link, and one only
      {"", folder_ / "bin/broken", "~/bin/nowhere"},
      {"", folder_ / "bin/absent", ""},
      {"", "./a", "~/a"},
      {"", "././a", "~/./a"},
      {"", "bin/b", "~/bin/b"},
      {"", "./bin/near", "~/bin/b"},
      {"", "bin/../a", "~/bin/../a"},
      {"", "./down", "~/bin/b"},  // a relative target takes the place of the last name
      {"", "./absent", ""},
      {"", "", ""},
      {"~/bin", "b", "~/bin/b"},  // along PATH
      {"~/bin/", "b", "~/bin/b"},
      {"/nowhere:~/bin:~", "near", "~/bin/b"},
      {"~/bin:~", "a", "~/a"},  // bin/a is a folder
      {"~/bin", "text", ""},    // no program
      {"~/bin", "broken", ""},
      {"bin", "b", "~/bin/b"},
      {"./bin", "b", "~/bin/b"},
      {".", "a", "~/a"},
      {"/nowhere:", "a", "~/a"},  // nothing behind the colon: the current directory
      {"~/bin", "c", ""},
      {nullptr, "a", ""},
  };
  for (const auto& row : rows) {
    std::string path(row.path == nullptr ? "" : row.path);
    for (std::size_t at; (at = path.find('~')) != std::string::npos;)
      path.replace(at, 1, folder_.path());
    row.path == nullptr ? unsetenv("PATH") : setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(found(row.word), row.found) << path << " and " << row.word;
  }
}

TEST_F(ProgramPath, HasToFit) {
  const std::string whole = folder_ / "a";
  are({whole});
  char path[4096];
  EXPECT_EQ(unixgetmodulefilename(path, whole.size() + 1), 0);
  EXPECT_EQ(path, whole);
  EXPECT_EQ(unixgetmodulefilename(path, whole.size()), 22);
  EXPECT_EQ(path[0], '\0');
  path[0] = 'x';
  EXPECT_EQ(unixgetmodulefilename(path, 0), 22);
  EXPECT_EQ(path[0], 'x');
}

TEST_F(ProgramPath, OfTheProgramTakes254Bytes) {
  std::string name = folder_.path();
  while (name.size() < 200) name += "/folder";
  std::filesystem::create_directories(name);
  name += '/' + std::string(253 - name.size(), 'p');
  for (const std::size_t length : {254U, 255U}) {
    std::ofstream(name) << "x";
    are({name});
    ASSERT_EQ(name.size(), length);
    ioresult();
    EXPECT_EQ(std::string(paramstr(0)), length == 254 ? name : "");
    EXPECT_EQ(ioresult(), length == 254 ? 0 : 22);
    name += 'p';
  }
}

TEST_F(ProgramPath, OverLongWordsAreRefused) {
  EXPECT_EQ(found('/' + std::string(5000, 'x')), "");
  EXPECT_EQ(found(std::string(5000, 'x')), "");
  setenv("PATH", std::string(5000, 'x').c_str(), 1);
  EXPECT_EQ(found("a"), "");
}

}  // namespace
}  // namespace optxv
