// The writer of parameter files, tzmaoptions::optwriteparameterfile, and the pieces of a line that
// it shares with the lists of dot options and of indicators.
//
// A file holds a line for every value that has been set, in table order, then the dot options, then
// the indicators. A value beyond its bounds stands between two lines that turn the test of bounds
// off and on; that of a dot option does not. Reading a file gives the same values again wherever
// the language can say them: it has no escape, so that quotes within quotes, blanks at the ends of
// a text, a comment character and a name that the rule of lookup does not find stay behind.
#pragma once

#include <string_view>

#include "foundation/textfile.h"
#include "parameter/entries.h"

namespace optxv {

/// Writes a name and, if there are any, its indices: x('a',*).
void writeindex(textfile& file, std::string_view name, const indexlist& indices);

/// Ends a line. Raises einouterror if anything written so far has failed.
void endline(textfile& file);

}  // namespace optxv
