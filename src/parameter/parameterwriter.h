// The writer of parameter files, tzmaoptions::optwriteparameterfile, and the pieces of a line that
// it shares with the lists of dot options and of indicators.
//
// A file holds a line for every value that has been set, in table order, then the dot options, then
// the indicators. Reading it gives the same values again, those beyond their bounds included: such
// a value stands between two lines that turn the test of bounds off and on. There is no escape in
// the language, so that a text with a double quote cannot be read back.
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
