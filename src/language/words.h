// Words of the parameter language that its readers and every writer share.
#pragma once

#include <string_view>

#include "foundation/boundedstring.h"

namespace optxv {

/// What a word says as a switch, case ignored: 0 for 1, Y, YES, ON, TRUE and T; 1 for 0, N, NO,
/// OFF, FALSE and F; 2 for anything else.
/// KEEP: true is 0 and false is 1, as callers of the library know it.
int checkboolean(std::string_view word);

/// Whether the parameter reader takes a value back only between double quotes: it is empty or holds
/// a tab, a blank or a comma.
bool needsquotes(std::string_view value);

/// A value as the parameter reader takes it back: between double quotes if it needs them, otherwise
/// as it stands.
/// KEEP: nothing is escaped, and a value of 254 or 255 bytes loses its closing quote by the cut at
/// 255 bytes.
shortstring strexternal(std::string_view value);

}  // namespace optxv
