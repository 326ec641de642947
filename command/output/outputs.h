// How the command's products reach their files: whole, or not at all.
#pragma once

#include <string>
#include <string_view>

#include "output/reporter.h"
#include "text/memoryfile.h"

namespace command {

/// Writes a text to a file; an empty name is standard output. A regular file is written beside and
/// renamed, and keeps its permissions; a device, a pipe and the like are written as they are. The
/// result is 0 or the system's error number, and then the file is what it was.
int deliver(const std::string& file, std::string_view text);

/// `optxv: file: reason` on standard error for a system error number; gives the exit status. An
/// empty name is standard output.
int unusable(const std::string& file, int error);

}  // namespace command
