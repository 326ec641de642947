// A text that is edited line by line, and what became of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace command {

/// Other text for a piece of one line, as the text stands before the edit. Lines and columns count
/// from 1, columns and lengths in bytes. The text may have line feeds in it, which make lines.
struct textedit {
  std::int64_t line = 0, column = 0, length = 0;
  std::string text = {};
};

/// Edits that belong together: all of them are made, or none.
using textchange = std::vector<textedit>;

/// A text with edits. Edits may be made again and again, each time to the text as it is then.
/// BORROWS: the text.
class editedtext {
 public:
  explicit editedtext(std::string_view text);

  /// Makes those changes that touch no change before them in the list, and that lie within the
  /// text. Gives how many were made.
  std::size_t apply(const std::vector<textchange>& changes);

  bool changed() const { return !changed_.empty(); }
  /// The text as it is now.
  std::string text() const;
  /// What has changed since the start, in the unified format of POSIX diff with three lines of
  /// context; empty if nothing has.
  std::string difference(std::string_view name) const;

 private:
  /// Where a line of the text as it is now lies: in which line of the start, and where in what
  /// became of that.
  struct location {
    std::size_t line = 0, offset = 0, size = 0;
  };
  struct placed {
    location at;
    std::size_t column, length;
    const std::string* text;
  };

  /// The lines of the text as it is now, by their numbers from 0.
  std::vector<location> locations() const;
  std::string_view now(std::size_t line) const;
  bool endsopen(std::size_t line) const { return open_ && line + 1 == lines_.size(); }
  void addhunk(std::string& to, std::size_t first, std::size_t last, std::size_t ahead) const;

  std::vector<std::string_view> lines_;         ///< at the start, without their line feeds
  bool open_ = false;                           ///< the last one has none
  std::map<std::size_t, std::string> changed_;  ///< what became of lines, by position
};

}  // namespace command
