// How the library gets at a document, as long as it reads by name alone; goes when it does not.
#pragma once

#include <string>

#include "text/document.h"

namespace command {

/// Where the library can read a document, any number of times: under its own name if that is a
/// regular file whose name it can hold, or else from a copy in memory, which is kept to the end of
/// the process. Empty, with errno set, if there is no room for a copy.
std::string readablepath(const textdocument& text);

/// The path of the copy that was made of a document of that name; the name itself if there is none.
std::string readablepath(const std::string& file);

/// Why a file cannot be read, as a system error number; 0 if nothing is known to be in the way.
/// Nothing is opened but regular files, since to open a pipe is to take it from its reader. "-" is
/// standard input.
int whynotreadable(const std::string& file);

}  // namespace command
