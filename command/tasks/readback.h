// What a written parameter file does not say as it was meant. The language has no escape, so that a
// text with a comment character or with quotes in it, for example, comes back as another one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "analysis/run.h"

namespace command {

/// Reads the text that was written of a run's options into a set of its own, which has read the
/// same definition, and compares. Gives a sentence for each option, dot option and indicator that
/// differs, with what it was and what comes back; none if all is the same. Whether the first or
/// only the second of a pair of values was set is no difference.
std::vector<std::string> readbacklosses(const run& read, std::string_view text);

}  // namespace command
