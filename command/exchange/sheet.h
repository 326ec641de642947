// A table of options as other programs keep it: a row for each, in CSV or in JSON.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exchange/jsontree.h"

namespace command {

/// One of several things in a cell: a value, and a text about it.
struct sheetpart {
  std::string value, text = {};
};

struct sheetcell {
  std::string text = {};
  textspan where = {};
  std::vector<sheetpart> listed = {};  ///< of a list in JSON, which has no other text

  bool empty() const { return text.empty() && listed.empty(); }
  /// What is in the cell: parts with | between them, each a value, or value=text.
  std::vector<sheetpart> parts() const;
};

struct sheetrow {
  std::vector<sheetcell> cells;
  textspan where = {};
};

/// The names of the columns, and the rows; each row has a cell for each column.
struct sheet {
  std::vector<sheetcell> header = {};
  std::vector<sheetrow> rows = {};
  std::vector<jsonfault> faults = {};
};

/// Reads a table. A text that begins with a bracket is JSON: a list of objects, or an object with
/// such a list as "options". All others are CSV of RFC 4180, with commas, semicolons or tabs: the
/// one of them that the first line has most of. Empty lines do not count.
sheet readsheet(std::string_view text);

}  // namespace command
