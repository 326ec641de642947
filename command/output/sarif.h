// Findings for tools that gather those of many programs: SARIF 2.1.0, a form of JSON.
#pragma once

#include <memory>
#include <vector>

#include "output/reporter.h"

namespace command {

/// Writes one log with one run: the codes as rules, a result per finding as they come, and at the
/// end the files and the exit status.
///
/// - Columns are in code units of UTF-16 (textcolumns.h).
/// - The message of a result goes on with what adds to it, but notes with a place of their own are
///   its related locations.
/// - Edits are its fixes, except where a line or the new text is not UTF-8: nothing there says
///   exactly which bytes are meant.
/// - A name of a file is a relative URI, and one that begins with a slash a URI of a file, with
///   every byte escaped that URIs give a meaning to. Standard input is `-`.
/// - Lines that somebody asked for say nothing about a file and are left out.
///
/// `strict` says that warnings count for the exit status. BORROWS: the stream.
std::unique_ptr<reporter> makesarif(std::FILE* out, std::vector<coderow> codes, bool strict);

}  // namespace command
