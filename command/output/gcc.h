// Findings in the lines of gcc, which editors read.
#pragma once

#include <memory>

#include "output/reporter.h"

namespace command {

/// Writes a finding as `file:line:column: error: text [code]`, and a line `note:` for each thing
/// that adds to it. What concerns a file as a whole is told at 1:1, since editors take no line
/// without numbers. Columns are in bytes. Lines that somebody asked for are left out.
/// BORROWS: the stream.
std::unique_ptr<reporter> makegcc(std::FILE* out);

}  // namespace command
