// The reference of a table's options as a page for a browser.
#pragma once

#include <string>

#include "writers/facts.h"

namespace command {

/// One HTML page that needs no other file: every option in the section of its group, in table
/// order; also those that the help listings hide, with a mark. A script finds options as the user
/// types in the search box; without scripts the page is complete and has no box. `source` names the
/// definition file. Bytes that are not UTF-8 are shown as \xNN; all text is escaped.
std::string referencepage(const optxv::tablefacts& table, const std::string& source);

}  // namespace command
