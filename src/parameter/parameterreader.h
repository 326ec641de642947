// The reader of parameter text. Its operations are methods of tzmaoptions: optreadparameterfile,
// optreadfromstr, optreadfrompchar and parse. This header is for the two entry forms that have
// files of their own, and for those who test the pieces.
#pragma once

#include <string_view>

#include "foundation/boundedstring.h"
#include "language/miniparser.h"

namespace optxv {

/// Takes the value of end-of-line mode: what is left of the line up to a comment, or a text between
/// double quotes, within which a comment character means nothing. The rest of the line is gone.
///
/// False, with an empty value, if nothing is left. Blanks and tabs are trimmed at both ends, and of
/// a longer value the first 255 bytes are kept.
/// KEEP: a quoted value with text behind its closing quote comes out with the quotes the rule makes
/// of it: "ab" cd gives ab" cd" and an unclosed "ab gives ab".
bool getrestofline(tminiparser& in, shortstring& value);

}  // namespace optxv
