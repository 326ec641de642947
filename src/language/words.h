// Words of the parameter language that its readers and every writer share.
#pragma once

#include <string_view>

#include "foundation/boundedstring.h"

namespace optxv {

/// What a word means as a switch, case ignored: the result is 0 for 1, Y, YES, ON, TRUE and T; 1
/// for 0, N, NO, OFF, FALSE and F; 2 for anything else.
/// KEEP: true is 0 and false is 1; callers of the library rely on it.
int checkboolean(std::string_view word);

/// Whether the parameter reader reads a value back only from between double quotes: it is empty or
/// holds a tab, a blank or a comma.
bool needsquotes(std::string_view value);

/// A value in the form that the parameter reader reads back: between double quotes if it needs
/// them, otherwise unchanged.
/// KEEP: nothing is escaped, and a quoted value of 254 or 255 bytes loses its closing quote, since
/// texts are cut at 255 bytes.
shortstring strexternal(std::string_view value);

}  // namespace optxv
