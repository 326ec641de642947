// The lines of a text as they are in the file, with what ends each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace command {

/// A line and its end: a line feed, with or without a carriage return; at the end of a text it may
/// lack the line feed, or be nothing. Both together, line by line, are the text, byte for byte.
struct fileline {
  std::string_view body, ending;
};

/// BORROWS: the text.
std::vector<fileline> filelines(std::string_view text);

/// A line that is laid out has no more bytes than this, since a reader takes the first 1,020.
inline constexpr std::size_t longestline = 1000;

/// A piece of a line, as offsets.
struct piece {
  std::uint32_t from = 0, to = 0;

  bool empty() const { return to <= from; }
  std::string_view of(std::string_view line) const { return line.substr(from, to - from); }
};

/// The end that a line has once another one follows it: one with a line feed.
std::string_view innerending(std::string_view ending);

bool isblank(std::string_view text);
/// Without the blanks and tabs at its start, at its end.
std::string_view trimmedleft(std::string_view text);
std::string_view trimmedright(std::string_view text);

}  // namespace command
