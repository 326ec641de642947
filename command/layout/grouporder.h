// The rows of parameter text in the order of the definition's groups.
#pragma once

#include "layout/entryrows.h"
#include "optxv/optxv.hpp"

namespace command {

/// Sorts entries by the groups of their options, in the order in which the definition declares the
/// groups, each group under a heading, which is a comment: `* ---- Limits ----`. Entries of one
/// group keep their order. Comments and empty lines above an entry go with it.
///
/// Only entries of single options are moved, and none across a line that stays: one with a fault,
/// with many entries, or with an entry that does something else than to set its option (an
/// instruction, a macro, a multi-list, a list of the user's own, a dot option, an indicator).
/// Headings of the same form that were there are written anew. A comment at the start of the text
/// with an empty line after it stays there.
void sortbygroup(entryrows& rows, const optxv::options& options);

}  // namespace command
