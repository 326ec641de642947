// Aligned columns of text.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace command {

/// A table to be printed: cells of printable text, with headings above them.
struct table {
  struct column {
    std::string heading;
    bool rightaligned = false;
  };
  std::vector<column> columns;
  std::vector<std::vector<std::string>> rows;  ///< each as long as columns
};

/// The table in aligned columns, with two blanks between them and no blanks at the end of a line. A
/// cell that is wider than `widestcolumn` runs over its column and moves only the rest of its row.
std::string tabletext(const table& content);
inline constexpr std::size_t widestcolumn = 40;

/// The width of the widest row of that text, in columns of a terminal.
std::size_t tablewidth(const table& content);

/// The columns of a stream's terminal; 0 if it is not a terminal. If the environment has COLUMNS,
/// that counts in either case.
std::size_t terminalwidth(std::FILE* out);

}  // namespace command
