// A folder of the test's own, and changes of the process that end with the test.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

namespace optxv::test {

/// An empty folder, which is removed with all that is in it.
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

/// Calls at its end what it was given.
class atend {
 public:
  explicit atend(std::function<void()> call) : call_(std::move(call)) {}
  atend(const atend&) = delete;
  atend& operator=(const atend&) = delete;
  ~atend() { call_(); }

 private:
  std::function<void()> call_;
};

/// Puts an environment variable back.
struct keptvariable : atend {
  explicit keptvariable(const char* name)
      : atend([name, value = std::getenv(name) == nullptr
                                 ? std::optional<std::string>()
                                 : std::optional<std::string>(std::getenv(name))] {
          value ? setenv(name, value->c_str(), 1) : unsetenv(name);
        }) {}
};

/// Puts a plain variable back.
template <class Type>
struct kept : atend {
  explicit kept(Type& variable) : atend([&variable, value = variable] { variable = value; }) {}
};

/// Puts one of the standard descriptors back, at its end or before.
class keptstream {
 public:
  explicit keptstream(int descriptor) : descriptor_(descriptor), kept_(dup(descriptor)) {}
  keptstream(const keptstream&) = delete;
  keptstream& operator=(const keptstream&) = delete;
  ~keptstream() {
    restore();
    close(kept_);
  }
  void restore() const { dup2(kept_, descriptor_); }

 private:
  int descriptor_;
  int kept_;
};

/// Puts the current directory back.
struct keptdirectory : atend {
  keptdirectory()
      : atend([path = std::filesystem::current_path()] { std::filesystem::current_path(path); }) {}
};

}  // namespace optxv::test
