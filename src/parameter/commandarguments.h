// Options in the arguments of a program. The public header, optxv/embedding.h, says which arguments
// are options.
#pragma once

#include <span>
#include <vector>

#include "options/zmaoptions.h"

namespace optxv {

/// Reads the options among arguments, of which the first is the name of the program. Gives those
/// arguments that are none, in their order, the first one too. Where keepunknown, an argument with
/// an unknown name is none, and causes no message.
/// BORROWS: the arguments.
std::vector<char*> readarguments(tzmaoptions& options, std::span<char* const> arguments,
                                 bool keepunknown);

}  // namespace optxv
