// Options in the environment. The public header, optxv/embedding.h, says which variables are
// options.
#pragma once

#include <string_view>

#include "options/zmaoptions.h"

namespace optxv {

/// Reads the variables whose names begin with a prefix, in the order of their names. variables: as
/// environ has them, NAME=value, nil at the end; nil for none.
/// BORROWS: the variables, which do not change during the call.
void readenvironment(tzmaoptions& options, std::string_view prefix, const char* const* variables);

}  // namespace optxv
