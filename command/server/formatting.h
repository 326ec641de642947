// A document laid out anew, as `optxv format` does it.
#pragma once

#include "server/session.h"

namespace command {

/// Answers textDocument/formatting: one edit from the first line that changes to the last one, or
/// none.
json formatting(session& in, const json& params);

}  // namespace command
