// Files that are only in memory: for code that still reads or writes by name.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "text/descriptors.h"

namespace command {

/// A file in memory, which anything can open under its path while this lives. Its number is never
/// that of a standard stream. number() is -1, with errno set, if the system has no such files.
class memoryfile : public descriptor {
 public:
  memoryfile();
  std::string path() const;
};

/// What a writer puts into a file whose name it is given, so that nothing is seen of a product that
/// fails halfway. Nothing, with errno set, if the system has no such files or the writer gives an
/// error number other than 0.
std::optional<std::string> captured(const std::function<int(const std::string& name)>& write);

}  // namespace command
