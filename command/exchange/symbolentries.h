// Dot options and indicators in JSON as parameter text.
#pragma once

#include <string>
#include <vector>

#include "exchange/madetext.h"
#include "exchange/settingsform.h"

namespace command {

/// Adds a line for each entry of a list, in the form of settingsform.h, and tells what is wrong.
/// Gives the entries as they should come back. `word` is the one that begins an indicator.
ordered_json readdotoptions(const optxv::options& options, const jsonvalue& list, madetext& to);
ordered_json readindicators(std::string_view word, const jsonvalue& list, madetext& to);

}  // namespace command
