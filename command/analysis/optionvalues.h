// One value of an option, as data and as it is written.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "optxv/optxv.hpp"

namespace command {

/// A value by the type in which the library keeps it: an integer (also of a Boolean and of an
/// enumeration of integers), a real, a text.
using optionvalue = std::variant<std::int32_t, double, std::string>;

/// A value of an option as it is now, its default if it is not set; of a list of texts, the item
/// that came last. `which` is 1 or 2. An empty text for a kind without a value.
optionvalue valuenow(optxv_handle options, std::int32_t optnr, std::int32_t which = 1);

/// The value as parameter text would give it, printable. The limits of integers and reals go by
/// their names, as a definition has them: `kind` is that of the option.
std::string shownvalue(std::int32_t kind, const optionvalue& value);

/// Whether options of that kind have a value of their own: a number or a text.
inline bool hasvalue(const optxv::option& option) {
  return option.kind < optxv_kind_multilist;
}
inline bool hastwovalues(const optxv::option& option) {
  return option.takes == optxv_takes_two && hasvalue(option);
}

}  // namespace command
