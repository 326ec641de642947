// The changes of a definition, for people and for programs.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "analysis/tablediff.h"

namespace command {

/// A line in the form of compilers: place, `breaking` or `change`, name, words, code. Printable.
std::string changeline(const change& made, bool colours);

/// "2 breaking changes, 5 others"; as JSON, `breaking` and `others`.
std::string changesummary(const std::vector<change>& all);
nlohmann::ordered_json countsjson(const std::vector<change>& all);

/// `code`, `breaking`, `name`, `text`; `old` and `new`, if the text has them; and the place:
/// `file`, `line`, `column`, `length`.
nlohmann::ordered_json changejson(const change& made);

}  // namespace command
