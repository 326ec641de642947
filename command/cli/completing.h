// Completion of command lines in shells: of the command's own words, from the rows of its
// subcommands, and of those of programs that take options as arguments.
#pragma once

#include <span>
#include <string>

#include "completion/candidates.h"
#include "tasks/request.h"

namespace command {

/// What can stand at the end of a command line of optxv itself. The first word is the program, and
/// the last one is what was typed.
offer completed(std::span<const std::string> words);

/// The subcommand: prints the script for a shell, or answers it, where it hands words over. It is a
/// task, but needs the rows. Gives the exit status; an answer never fails, and tells of nothing.
int complete(const request& given);

}  // namespace command
