// Text that is broken at blanks to fit a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace command {

/// A text behind a label, as lines with a line feed each. The text begins in column `indent`
/// (counted from 0), in the label's line if that ends in front of it, else in the next one, and so
/// do further lines. `width` is that of the terminal; 0 breaks nothing. However narrow the terminal
/// is, the text gets `narrowesttext` columns; a word that is wider than its line stays whole.
/// Blanks within a line stay as they are. REQUIRES: label and text are printable.
std::string paragraph(std::string_view label, std::string_view text, std::size_t indent,
                      std::size_t width);
inline constexpr std::size_t narrowesttext = 20;

}  // namespace command
