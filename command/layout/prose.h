// Lines of long help: how they are indented, and how they are wrapped.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "layout/filelines.h"

namespace command {

/// The columns that a line is indented by; a tab goes on to the next multiple of eight.
std::size_t indentation(std::string_view body);

/// Lines of long help that follow one another. They are indented by one blank, and by what they
/// were indented beyond the margin of their record. What goes beyond the width is moved to the next
/// line, or to a new one in front of a line that is no prose: an empty one, one that is indented
/// further, an item of a list, or one with two blanks in a row. A line within the width stays as it
/// is unless it takes such a rest in.
class prose {
 public:
  /// width: columns of a line, its indentation included. A line has 250 bytes at most, whatever the
  /// width. margin: the least indentation of the lines of the record.
  prose(std::size_t width, std::size_t margin) : width_(width), margin_(margin) {}

  /// The next line. BORROWS: until it is written.
  void add(const fileline& line) { lines_.push_back(line); }
  /// Appends all lines.
  void write(std::string& to) const;

 private:
  bool flows(const fileline& line) const;
  std::size_t fitting(std::string_view text) const;
  std::string_view wrap(std::string& to, std::string_view text, std::string_view ending) const;

  std::size_t width_, margin_;
  std::vector<fileline> lines_;
};

}  // namespace command
