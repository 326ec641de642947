// The reference of a table's options as a manual page.
#pragma once

#include <string>

#include "writers/facts.h"

namespace command {

/// A page of section 5 in the man macros of roff: a section for each group, and a paragraph with a
/// tag for each option. Its name is that of the file `source` without its ending. No text of the
/// definition acts as a request; characters that are not ASCII are written by their numbers, and
/// bytes that are not UTF-8 as \xNN.
std::string referencemanpage(const optxv::tablefacts& table, const std::string& source);

}  // namespace command
