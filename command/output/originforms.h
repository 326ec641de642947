// Values and where they come from, in words and as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "analysis/origins.h"

namespace command {

/// "night.opt:3:9", as editors take it; empty for no place. Printable.
std::string placewords(const place& where);

/// How the value came there, if not by an entry of its own in a file of the run: "macro all_cuts",
/// "read at night.opt:2:6". Printable.
std::string roadwords(const origin& from);

/// The value in its own type: a Boolean, if it is one, else a number or a text.
nlohmann::ordered_json valuejson(std::int32_t kind, const optionvalue& value);

/// `file`, `line`, `column`, `length`.
nlohmann::ordered_json placejson(const place& where);

/// The same and `road`; and `through` and `from`, if there are any. Null for
/// no road.
nlohmann::ordered_json originjson(const origin& from);

/// The same of the value in effect, with `overrode`, the settings before it, the last one first;
/// each has its `value` besides. `forgotten`, if there are any, is how many more there were.
nlohmann::ordered_json historyjson(std::int32_t kind, const valuehistory& history);

}  // namespace command
