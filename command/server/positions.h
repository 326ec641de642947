// Where things are in a text, as readers say it and as clients say it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/finding.h"

namespace command {

/// In what a client counts the characters of a line.
enum class encoding { utf8, utf16 };

/// A position as clients say it: both numbers count from 0.
struct position {
  std::size_t line = 0, character = 0;
  auto operator<=>(const position&) const = default;
};

/// A text with its lines. A client's line ends at a line feed, a carriage return, or both together;
/// a reader's line ends at a line feed alone. A byte that is no good UTF-8 counts as one character.
class linedtext {
 public:
  explicit linedtext(std::string text = {});

  const std::string& text() const { return text_; }

  /// The byte of a position. A position after the end of its line, or of the text, is that end; one
  /// in the middle of a character is its start.
  std::size_t offset(const position& at, encoding counts) const;
  /// The position of a byte; of one after the end, the end.
  position at(std::size_t offset, encoding counts) const;

  /// The byte of a reader's line and column, both from 1, held within the line.
  std::size_t offset(std::int64_t line, std::int64_t column) const;
  /// The reader's line of a byte, from 1, and its column there.
  std::int64_t lineof(std::size_t offset) const;
  std::int64_t columnof(std::size_t offset) const;

  /// Puts other text in place of what is between two bytes. REQUIRES: from <= to <= size.
  void replace(std::size_t from, std::size_t to, std::string_view with);

  /// The number of lines as clients count them.
  std::size_t lines() const { return starts_.size(); }

 private:
  void index();
  std::size_t endof(std::size_t line) const;

  std::string text_;
  std::vector<std::size_t> starts_;  ///< of the client's lines
  std::vector<std::size_t> feeds_;   ///< starts of the reader's lines
};

}  // namespace command
