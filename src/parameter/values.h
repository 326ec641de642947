// Values in parameter text, and where they are: what the readers of entries share.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "language/miniparser.h"
#include "language/places.h"
#include "options/zmaoptions.h"

namespace optxv {

/// A value as it was read, and where it is.
struct readvalue {
  std::string_view text;   ///< good until the next line: it stands in the line, or in own
  bool good = false;       ///< there is a value, and the reader keeps it
  textplace place = {};    ///< of the text, without quotes
  textplace written = {};  ///< with them
  std::int32_t quotes = optxv_quotes_none;
  shortstring own = {};  ///< a text that is not as it was written
};

/// Takes the value of end-of-line mode: what is left of the line up to a comment, or a text between
/// double quotes, in which a comment character has no special meaning. The rest of the line is
/// skipped.
///
/// Not good, with an empty text, if nothing is left. Blanks and tabs are trimmed at both ends, and
/// of a longer value the first 255 bytes are kept.
/// KEEP: the first quote is taken off; the last one is too, and where the value does not end with a
/// quote, one is added: "ab" cd gives ab" cd" and an unclosed "ab gives ab".
void readrest(tminiparser& in, readvalue& value);

/// Takes one token as a value (see tminiparser::nexttoken).
void readtoken(tminiparser& in, readvalue& value);

/// Reports a value to the listener. option: the one whose value it is, nil for an indicator's
/// value; which: 1 or 2. REQUIRES: options has a listener.
void tellvalue(const tzmaoptions& options, const readvalue& value, const toption* option,
               std::int32_t which);

/// Notes that what is assigned next comes from this value, and reports it.
inline void beginvalue(tzmaoptions& options, const readvalue& value, const toption* option,
                       std::int32_t which = 1) {
  options.assigning.at = value.place;
  if (options.told) tellvalue(options, value, option, which);
}

}  // namespace optxv
