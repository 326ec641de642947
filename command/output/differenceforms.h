// What differs between two settings, for people and for programs.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "analysis/differences.h"

namespace command {

/// A line with the name and the default, and below it a line for each value: after `-` what only
/// the old side has, after `+` what only the new side has, with where it comes from. Printable.
std::string differencetext(const difference& found, bool colours);

/// `what`, `name`, of an option `number`, `kind` and `default`, of a value of two `position`; then
/// `old` and `new`, each a `value` and its `origin`; of a list and of entries, lists of these.
nlohmann::ordered_json differencejson(const difference& found);

}  // namespace command
