// How the command's products reach their files: whole, or not at all.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "analysis/diagnostics.h"

namespace command {

/// What a writer puts into the file that it is handed the name of: a file in memory, so that
/// nothing of a product that fails halfway is seen. Nothing, with errno set, if the system has no
/// such file or the writer gives an error number other than 0.
std::optional<std::string> captured(const std::function<int(const std::string& name)>& write);

/// Writes a text to a file; an empty name is standard output. A regular file is written beside and
/// renamed, and keeps its permissions; a device, a pipe and the like are written as they are. The
/// result is 0 or the system's error number, and then the file is what it was.
int deliver(const std::string& file, std::string_view text);

/// `optxv: file: reason` on standard error for a system error number; gives the exit status. An
/// empty name is standard output.
int unusable(const std::string& file, int error);

}  // namespace command
