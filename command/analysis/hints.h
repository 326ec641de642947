// What would do in place of what is wrong.
#pragma once

#include "analysis/finding.h"
#include "analysis/reading.h"
#include "analysis/symbols.h"
#include "analysis/trial.h"

namespace command {

/// What hints are made from.
struct hintsource {
  const reading& at;
  symbols& names;
  trial& library;
};

/// Adds to a finding in parameter text what could be written instead, and names that may have been
/// meant. Forms are guesses by the habits of other languages: a colon, a decimal comma, a unit, a
/// quote, a comment. Only what the library takes without an error is told.
void addhints(finding& found, const optxv_message& said, const hintsource& from);

/// The text without the quotes round it that the language does not know: single ones, and those of
/// print; and whether there were any.
bool withoutforeignquotes(std::string_view& text);

}  // namespace command
