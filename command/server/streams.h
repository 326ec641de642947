// The server on the standard streams of the process.
#pragma once

#include <string>

namespace command {

/// Serves the client at standard input and output until it says exit, closes its end, or its
/// process is gone. Meanwhile the two are out of reach for everything else in the process: a text
/// that names them finds an empty file. With a log, all that is received and sent is written to it.
/// Gives the exit status: that of the server, 1 for a client that went without a word, or 2 with a
/// failure told if the log cannot be written, or the streams cannot be read or written.
int serve(const std::string& log);

}  // namespace command
