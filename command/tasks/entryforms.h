// Dot options and indicators as lines of parameter text.
#pragma once

#include <string>
#include <vector>

#include "analysis/optionset.h"

namespace command {

/// The entries of an option set, a line each, in the order in which they were read, printable. A
/// label of a dot option, which comes without its quotes, gets some. `dropped` becomes the number
/// of entries that were given up for their faults.
std::vector<std::string> dotlines(const optionset& options, std::int32_t& dropped);
std::vector<std::string> indicatorlines(const optionset& options, std::int32_t& dropped);

/// The shortest text that reads as that number.
std::string realtext(double value);

}  // namespace command
