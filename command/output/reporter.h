// Where findings go: to a person, in the form of compilers, or to a program, as JSON.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/diagnostics.h"
#include "text/document.h"

namespace command {

/// Writes each finding as it comes: `file:line:column: error: text`, with the line beneath and a
/// caret if the column is known, then its notes. BORROWS: the stream. In colour if it is a terminal
/// and the environment does not ask for none (NO_COLOR, or TERM=dumb).
std::unique_ptr<reporter> makelines(std::FILE* out);

/// Writes one JSON object at the end. BORROWS: the stream.
std::unique_ptr<reporter> makejson(std::FILE* out);

/// Whether colours suit a stream.
bool wantscolour(std::FILE* out);

/// "3 errors, 1 warning in 2 files", with what else there is to count.
std::string summaryline(const tally& total);

/// "did you mean "a", "b" or "c"?" REQUIRES: there is a name.
std::string question(const std::vector<std::string>& names);

/// Writes a text.
void put(std::FILE* out, std::string_view text);

}  // namespace command
