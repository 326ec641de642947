// The text of the files that are read, as far as it helps to explain what is wrong with them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace command {

/// Where a file of the command line can be read, any number of times: under its own name, or, where
/// that is "-", from a copy of standard input, which is taken to its end at the first call.
std::string readablepath(const std::string& file);

/// Why a file cannot be read, as a system error number; 0 if nothing is known to be in the way.
/// Nothing is opened but regular files, since to open a pipe is to take it from its reader. "-" is
/// standard input.
int whynotreadable(const std::string& file);

/// The system's words for an error number.
std::string systemtext(int error);

/// A text file in memory, by lines. A line ends at a line feed, and a carriage return before that
/// is no part of it, which is how the library counts and reads. What is no regular file, cannot be
/// read, or is larger than `largest` has no lines here.
class sourcefile {
 public:
  static constexpr std::size_t largest = std::size_t{64} << 20;

  explicit sourcefile(const std::string& path);

  /// Whether the text is here.
  bool known() const { return known_; }
  bool empty() const { return content_.empty(); }
  std::int32_t linecount() const { return static_cast<std::int32_t>(starts_.size()); }
  /// The line of a number from 1. BORROWS: valid as long as this object. Nothing for a bad number.
  std::optional<std::string_view> line(std::int32_t number) const;

 private:
  bool known_ = false;
  std::string content_;
  std::vector<std::size_t> starts_;
};

/// The files that have been looked at, each read once. "-" is standard input.
class sourcefiles {
 public:
  const sourcefile& at(const std::string& file);

 private:
  std::map<std::string, sourcefile> files_;
};

}  // namespace command
