// A folder of the test's own, and changes of the process that end with the test.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>

namespace optxv::test {

/// An empty folder, which goes with all that is in it.
class scratchfolder {
 public:
  scratchfolder() {
    std::string pattern = std::filesystem::canonical(::testing::TempDir()).string() + "/fXXXXXX";
    EXPECT_NE(mkdtemp(pattern.data()), nullptr);
    path_ = pattern;
  }
  scratchfolder(const scratchfolder&) = delete;
  scratchfolder& operator=(const scratchfolder&) = delete;
  ~scratchfolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::string& path() const { return path_; }
  std::string operator/(const std::string& name) const { return path_ + '/' + name; }

  /// Writes a file and gives its path.
  std::string put(const std::string& name, const std::string& content) const {
    std::ofstream(*this / name) << content;
    return *this / name;
  }
  /// The same for a program: a script of the shell.
  std::string putscript(const std::string& name, const std::string& content) const {
    const std::string path = put(name, "#!/bin/sh\n" + content + "\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
  }
  std::string get(const std::string& name) const {
    std::ifstream file(*this / name);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::string path_;
};

/// Puts an environment variable back.
class keptvariable {
 public:
  explicit keptvariable(const char* name) : name_(name) {
    if (const char* value = std::getenv(name)) value_ = value;
  }
  keptvariable(const keptvariable&) = delete;
  keptvariable& operator=(const keptvariable&) = delete;
  ~keptvariable() { value_ ? setenv(name_, value_->c_str(), 1) : unsetenv(name_); }

 private:
  const char* name_;
  std::optional<std::string> value_;
};

/// Puts a plain variable back.
template <class Type>
class kept {
 public:
  explicit kept(Type& variable) : variable_(variable), value_(variable) {}
  kept(const kept&) = delete;
  kept& operator=(const kept&) = delete;
  ~kept() { variable_ = value_; }

 private:
  Type& variable_;
  Type value_;
};

/// Puts the current directory back.
class keptdirectory {
 public:
  keptdirectory() = default;
  keptdirectory(const keptdirectory&) = delete;
  keptdirectory& operator=(const keptdirectory&) = delete;
  ~keptdirectory() { std::filesystem::current_path(path_); }

 private:
  std::filesystem::path path_ = std::filesystem::current_path();
};

}  // namespace optxv::test
