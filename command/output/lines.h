// Findings for a person, in the form of compilers.
#pragma once

#include <memory>

#include "output/reporter.h"

namespace command {

/// Writes a finding as `file:line:column: error: text`, with the line beneath and a caret under the
/// place, then its notes and what would do. Of a long line the part round the place is shown, at
/// most 100 bytes. In colour if asked for, or else if that suits the stream. BORROWS: the stream.
std::unique_ptr<reporter> makelines(std::FILE* out, bool colours);
inline std::unique_ptr<reporter> makelines(std::FILE* out) {
  return makelines(out, wantscolour(out));
}

}  // namespace command
