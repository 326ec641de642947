// Places in characters, for programs that count so.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include "analysis/finding.h"
#include "analysis/hearing.h"

namespace command {

/// A place within a line in code units of UTF-16, from 1; `end` is that after the last one.
struct unitrange {
  std::int64_t begin = 1;
  std::int64_t end = 1;
};

/// Keeps the lines of a reading that are not plain ASCII, and counts the characters in them. A byte
/// that is not UTF-8 counts as one unit; a byte-order mark at the beginning of a file as none. A
/// character is in a place if any of its bytes is.
class textcolumns : public listener {
 public:
  void line(const optxv_place& where, std::string_view text) override;

  /// REQUIRES: the place has a line and a column, of a line that was heard.
  unitrange units(const place& where) const;
  /// Whether the line of a place is good UTF-8, so that everybody counts its characters alike.
  bool isgood(const place& where) const;

 private:
  const std::string* lineof(const place& where) const;

  std::map<std::string, std::unordered_map<std::int64_t, std::string>, std::less<>> lines_;
};

/// Whether a text is good UTF-8.
bool isutf8(std::string_view text);

}  // namespace command
