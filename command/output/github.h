// Findings as annotations of a forge.
#pragma once

#include <memory>

#include "output/reporter.h"

namespace command {

/// Writes a finding as a command of GitHub's workflows, `::error file=F,line=L,col=C,endColumn=E,
/// title=CODE::TEXT` in one line, where the text goes on with what adds to it, and at the end the
/// summary. Columns are in characters, and endColumn is the one after the last. Nothing that a file
/// holds can be a command of its own: lines that somebody asked for are left out.
/// BORROWS: the stream.
std::unique_ptr<reporter> makegithub(std::FILE* out);

}  // namespace command
