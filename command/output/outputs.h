// The former face of delivery.h, for the tasks that still call it; goes with the last of them.
#pragma once

#include <string>
#include <string_view>

#include "text/memoryfile.h"

namespace command {

/// Delivers a text to a file; an empty name is standard output. Gives 0 or a system error number.
int deliver(const std::string& file, std::string_view text);

/// `optxv: error: file: reason` for a system error number; gives the exit status.
int unusable(const std::string& file, int error);

}  // namespace command
