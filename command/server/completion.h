// What can be written where somebody types.
#pragma once

#include "server/session.h"

namespace command {

/// Answers textDocument/completion. In parameter text: names of options and synonyms, values,
/// names of files where one is to be read, dot options and the symbols that the file has already.
/// In a definition: type words, groups, names of options, defaults, actions and rules of lookup.
/// What is there comes from the readers' marks; the list has at most `mostoffered` items, and says
/// so where there are more.
inline constexpr std::size_t mostoffered = 100;
json completion(session& in, const json& params);

}  // namespace command
