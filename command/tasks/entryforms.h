// Dot options and indicators as lines of parameter text.
#pragma once

#include <string>
#include <vector>

#include "optxv/optxv.hpp"

namespace command {

/// The entries of an option set, a line each, in the order in which they were read, printable. A
/// label of a dot option, which comes without its quotes, gets some. `dropped` becomes the number
/// of entries that were given up for their faults.
std::vector<std::string> dotlines(const optxv::options& options);
std::vector<std::string> indicatorlines(const optxv::options& options);

}  // namespace command
