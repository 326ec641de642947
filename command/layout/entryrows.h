// The lines of parameter text as rows with columns, and how these are written.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "layout/entrypieces.h"
#include "layout/filelines.h"

namespace command {

/// A line as it is to be written. The texts are without blanks at their ends.
struct entryrow {
  enum class kind : std::uint8_t {
    kept,     ///< `text` as it is
    blank,    ///< an empty line
    remark,   ///< a comment alone in its line
    further,  ///< a comment that goes on with the one at the end of the line above
    one,      ///< an entry in columns
    many      ///< entries that share a line: all of them are `head`
  };
  kind what = kind::kept;
  entryform form = entryform::plain;
  std::int32_t option = 0;     ///< of the entry; 0 if none, or if it may not be sorted
  std::string_view text = {};  ///< the whole line, as it was; empty for a part of one
  std::string_view head = {}, separator = {}, value = {}, comment = {};
  std::string_view ending = "\n";
};

/// The rows of a text.
/// BORROWS: the lines. OWNS: texts that differ from what the lines have.
class entryrows {
 public:
  entryrows(const std::vector<fileline>& lines, const entrypieces& pieces,
            const instructions& words);

  std::vector<entryrow>& rows() { return rows_; }
  /// A text that is kept for a row.
  std::string_view keep(std::string text) { return texts_.emplace_back(std::move(text)); }
  /// The text of the rows, with what stands below one another in columns.
  std::string written() const;

 private:
  void add(const fileline& line, const linedtext& told, const linedentry* entries);
  void addsplit(const fileline& line, const linedtext& told, const linedentry* entries);
  void addjoined(const fileline& line, const linedtext& told, const linedentry* entries);
  entryrow one(const fileline& line, const linedentry& entry);
  std::string_view headof(std::string_view body, const linedentry& entry);
  std::string_view valueof(std::string_view body, const linedentry& entry);
  bool further(std::string_view body) const;

  const instructions& words_;
  std::vector<entryrow> rows_;
  std::deque<std::string> texts_;
};

}  // namespace command
