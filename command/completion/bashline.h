// A command line as bash has it: its words, and how the last one is written.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace command {

/// A line up to the cursor, taken apart.
struct bashline {
  /// As the program gets them, but that ~ and $ stand as they are. The last one is at the cursor
  /// and may be empty. Redirections are left out.
  std::vector<std::string> words;
  bool redirected = false;  ///< the cursor is in the name of a file behind < or >
  char quote = 0;           ///< open at the cursor: ' or ", or 0
  std::size_t kept = 0;     ///< bytes of the last word that stay: what bash replaces comes after
};

/// Reads a line. replaced: the end of the line as it is written, that bash replaces by a reply: it
/// begins after the last character of COMP_WORDBREAKS, or after an open quote.
bashline readbashline(std::string_view line, std::string_view replaced);

/// A text as it must be written so that bash takes it as it is, within that quote or, with 0,
/// without one. REQUIRES: no line feed in it.
std::string bashquoted(std::string_view text, char quote);

}  // namespace command
