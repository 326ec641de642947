// Where a name is declared, where it is used, and what becomes of both when it is changed.
#pragma once

#include "server/session.h"

namespace command {

/// Answer textDocument/definition, references and documentHighlight. Uses are those in the
/// definition and in every parameter file that a binding names or a client has open, with the files
/// that these name.
json definitionof(session& in, const json& params);
json referencesof(session& in, const json& params);
json highlightsof(session& in, const json& params);

/// Answer textDocument/prepareRename and rename, for options and synonyms that a record declares.
/// A new name that no record could have, or that is taken, is a fault of the request.
json preparerename(session& in, const json& params);
json rename(session& in, const json& params);

}  // namespace command
