// A JSON Schema of the settings of a table: what an editor or a validator needs to know of it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "exchange/settingsform.h"

namespace command {

/// Told what the schema cannot say of an option.
using schemanote = std::function<void(std::int32_t optnr, const std::string& text)>;

/// The schema, of draft 2020-12. It takes the settings that the table takes, and no others where a
/// schema can say so, with indicators if the definition has a word for them: types, bounds, allowed
/// values, the characters of texts. Defaults, help and deprecation are annotations; each group is a
/// definition whose values are the names of its options. It has standard keywords alone.
ordered_json jsonschema(const optxv::options& table, bool indicators, const std::string& title,
                        const schemanote& tell);

}  // namespace command
