// A document from above: its symbols, and what can be folded away.
#pragma once

#include "server/session.h"

namespace command {

/// Answers textDocument/documentSymbol. A parameter file has its entries, in the groups of their
/// options; a definition its records, options with their items and members.
json documentsymbols(session& in, const json& params);

/// Answers textDocument/foldingRange: comments of two lines and more, and the lines that continue a
/// record.
json foldingranges(session& in, const json& params);

/// Answers textDocument/inlayHint, if they are switched on: after the value of a macro or a
/// multi-list, what each option gets.
json inlayhints(session& in, const json& params);

}  // namespace command
