// The reference of a table's options in Markdown.
#pragma once

#include <string>

#include "writers/facts.h"

namespace command {

/// One file in the Markdown of the forges: a list of the groups, and a section for each option with
/// a table of its facts, one of its values, and the long help. Every group and option has an
/// address: `group-NUMBER`, `option-NAME`. `source` names the definition file. No text of the
/// definition acts as markup; bytes that are not UTF-8 are shown as \xNN.
std::string referencemarkdown(const optxv::tablefacts& table, const std::string& source);

}  // namespace command
