// The words of a command line: what they ask for, and what is reported if they are wrong.
#pragma once

namespace command {

/// Does what a command line asks for: runs the subcommand, or prints help, the version or the rows.
/// Wrong words are reported on standard error, with what may have been meant. `words` begins with
/// the name of the program. Gives the exit status.
int runcommandline(int count, const char* const* words);

}  // namespace command
