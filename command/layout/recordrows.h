// The lines of a definition in columns.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "layout/filelines.h"
#include "layout/recordpieces.h"

namespace command {

/// The text of the lines, with fields of one kind below one another, and long help within a width.
std::string recordtext(const std::vector<fileline>& lines, const recordpieces& pieces,
                       std::size_t width);

}  // namespace command
