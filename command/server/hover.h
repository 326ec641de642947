// What there is to say about what stands at a place.
#pragma once

#include "server/session.h"

namespace command {

/// Answers textDocument/hover: of an option its help, kind, bounds and default, what it is set to
/// and where; of a value of an enumeration its text; of a field of a definition what it is. Null
/// where there is nothing to say.
json hover(session& in, const json& params);

}  // namespace command
