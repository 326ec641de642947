// Findings as the protocol has them, and the actions that put them right.
#pragma once

#include "server/session.h"

namespace command {

/// What is found in a document, and in the files that it names, by path: rows as the protocol has
/// them. Each file has at most `mostshown`; one row more says how many are left out.
inline constexpr std::size_t mostshown = 2000;
std::map<std::string, json> diagnosticsof(session& in, const std::string& path);

/// Answers textDocument/codeAction: a change for each edit that a finding in the range has, the
/// names that may have been meant, and all sure repairs of the document at once.
json codeactions(session& in, const json& params);

}  // namespace command
