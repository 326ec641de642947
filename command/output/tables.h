// Aligned columns of text.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace command {

/// A table as it is printed: cells that are printable text, and headings above.
struct table {
  struct column {
    std::string heading;
    bool rightaligned = false;
  };
  std::vector<column> columns;
  std::vector<std::vector<std::string>> rows;  ///< each as long as columns
};

/// The table in aligned columns, two blanks between them, no blanks at a line's end. A cell that is
/// wider than `widestcolumn` runs over its column and moves the rest of its row alone.
std::string tabletext(const table& content);
inline constexpr std::size_t widestcolumn = 40;

/// The columns of the widest row of that text.
std::size_t tablewidth(const table& content);

/// The columns that a stream's terminal has; 0 for what is no terminal. COLUMNS of the environment
/// counts first, in either case.
std::size_t terminalwidth(std::FILE* out);

}  // namespace command
