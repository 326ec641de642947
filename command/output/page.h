// The reference of a table's options as a page for a browser.
#pragma once

#include <string>

#include "writers/facts.h"

namespace command {

/// One HTML page that needs nothing but itself: every option in a section of its group, in table
/// order, those that the help listings hide among them, marked. A script filters them as one types
/// in the search box; without it the page is complete and has no box. `source` names the definition
/// file. Bytes that are no UTF-8 stand as \xNN; all text is escaped.
std::string referencepage(const optxv::tablefacts& table, const std::string& source);

}  // namespace command
