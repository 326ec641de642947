// The columns of a table of options, known by their names.
#pragma once

#include <array>
#include <string>

#include "exchange/madetext.h"
#include "exchange/sheet.h"

namespace command {

enum class column {
  name,
  type,
  standard,
  low,
  high,
  group,
  text,
  items,
  synonyms,
  deprecated,
  obsolete,
  number,
  count
};

/// Which column is where. Names are compared without case, blanks, hyphens and underscores, and
/// each has several. BORROWS: the table.
class sheetcolumns {
 public:
  /// Tells of columns that are missing, there twice, or of no use.
  sheetcolumns(const sheet& table, madetext& to);

  /// Whether there are the columns without which there is no option.
  bool good() const { return has(column::name) && has(column::type); }
  bool has(column which) const { return at_[static_cast<std::size_t>(which)] != none; }
  /// The cell of a row; an empty one at the row's end for a column that is not there.
  sheetcell of(const sheetrow& row, column which) const;

 private:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  void add(const sheetcell& cell, std::size_t position, madetext& to);

  std::array<std::size_t, static_cast<std::size_t>(column::count)> at_ = {};
};

}  // namespace command
