// What the command says about itself, from the rows of its subcommands.
#pragma once

#include <string>

#include "cli/subcommands.h"

namespace command {

/// One line per subcommand, for users who gave none.
std::string shortlist();

/// The subcommand with its words and what else it requires: `optxv reference DEFINITION -o TARGET`.
std::string usage(const subcommand& row);

/// What follows the flags in the help of a subcommand: its further sentences, examples, and the
/// exit status.
std::string footer(const subcommand& row);

/// The versions of the command and the interface that it was built for, and the build of the
/// library that it runs with.
std::string versiontext();

/// The script with which bash completes the words of optxv.
std::string completionscript();

/// The rows as JSON: `subcommands`, each with word, usage, help, more, words, flags and examples;
/// and the `flags` of the command itself. The manual page is made from it.
std::string rowsjson();

}  // namespace command
