// The library's own words for what it has: names, kinds, constants, and what it says of itself.
#pragma once

#include <cstdint>
#include <string>

#include "optxv/embedding.h"

namespace command {

/// The name of an option as it is shown. It differs from that in the table where a table's
/// underscores are shown as blanks.
std::string shownname(optxv_handle options, std::int32_t optnr);

/// The definition language's word for a kind of option; empty for what is none.
std::string kindword(std::int32_t kind);

/// The name of a constant of the header, empty for what is none.
std::string constantname(std::int32_t group, std::int32_t index);

/// The library's line about its build.
std::string auditline();

}  // namespace command
