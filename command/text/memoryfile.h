// Files that are in memory alone: for what reads or writes by name and cannot yet do without.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "text/descriptors.h"

namespace command {

/// A file in memory, which anything can open under its path while this lives. Its number is none of
/// the standard streams'. number() is -1, with errno set, if the system has no such file.
class memoryfile : public descriptor {
 public:
  memoryfile();
  std::string path() const;
};

/// What a writer puts into the file that it is handed the name of, so that nothing of a product
/// that fails halfway is seen. Nothing, with errno set, if the system has no such file or the
/// writer gives an error number other than 0.
std::optional<std::string> captured(const std::function<int(const std::string& name)>& write);

}  // namespace command
