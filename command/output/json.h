// Findings for a program, as JSON.
#pragma once

#include <memory>

#include "output/reporter.h"

namespace command {

/// Writes one JSON object: the list `diagnostics`, a row at a time as the findings come, and at the
/// end `summary`. The line of a finding is left out where the row before has the same.
/// BORROWS: the stream.
std::unique_ptr<reporter> makejson(std::FILE* out);

}  // namespace command
