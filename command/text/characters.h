// The characters of Unicode: how they are read from bytes, which of them may be shown, and how wide
// they are. The tables are from the data of Unicode 14.0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace command {

struct character {
  std::uint32_t code = 0;
  std::size_t bytes = 0;  ///< 0 if there is no good character
};

/// The character at the start of a text, in UTF-8 in its shortest form.
/// REQUIRES: the text is not empty.
character firstcharacter(std::string_view text);

/// Whether a character may be shown. Not shown are control characters, line separators, marks that
/// have no width or change the direction of writing, fillers, codes that are not characters, and
/// everything from plane 4 up, where there are none that people write with.
bool isshown(std::uint32_t code);

/// The columns of a terminal that a character takes: 2 if it is wide as in East Asia, 0 if it
/// combines with the one before it, else 1. REQUIRES: isshown(code).
std::size_t widthof(std::uint32_t code);

}  // namespace command
