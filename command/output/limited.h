// A reporter that shows no more than so many errors.
#pragma once

#include <cstddef>
#include <memory>

#include "output/reporter.h"

namespace command {

/// Hands everything on but the errors past the first `most`, and counts those in the tally's
/// `omitted`. Warnings and notes are no errors and go on all the same. OWNS: the other reporter.
std::unique_ptr<reporter> makelimited(std::unique_ptr<reporter> shown, std::size_t most);

}  // namespace command
