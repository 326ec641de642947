// What each piece of a text is, for the colours of an editor.
#pragma once

#include "server/session.h"

namespace command {

/// The types and modifiers of the tokens, as the server tells them at the start.
json tokenlegend();

/// Answer textDocument/semanticTokens/full and /range.
json semantictokens(session& in, const json& params);

}  // namespace command
