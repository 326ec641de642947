// File descriptors: owned, read to their end, written whole; and files that are in memory alone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace command {

/// OWNS: an open file descriptor, or none (-1).
class descriptor {
 public:
  explicit descriptor(int number) : number_(number) {}
  ~descriptor() { finish(); }
  descriptor(const descriptor&) = delete;
  descriptor& operator=(const descriptor&) = delete;
  int number() const { return number_; }
  /// Closes it; false with errno set if the system reports a failed write only now.
  bool finish();

 private:
  int number_;
};

/// A file in memory, which anything can open under its path while this lives.
/// number() is -1, with errno set, if the system has no such file.
class memoryfile : public descriptor {
 public:
  memoryfile();
  std::string path() const;
};

/// What a descriptor gives from where it stands to its end; nothing, with errno set, on a failure.
std::optional<std::string> readall(int file);

/// Writes all of the text; false, with errno set, on a failure.
bool writeall(int file, std::string_view text);

}  // namespace command
