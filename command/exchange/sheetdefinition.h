// A definition made of a table of options.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/madetext.h"
#include "exchange/rowrecord.h"
#include "exchange/sheet.h"
#include "exchange/sheetcolumns.h"
#include "optxv/optxv.hpp"

namespace command {

/// Makes the records for the groups, the options with their synonyms, and the marks. Faults are
/// told where the table has them; what a definition has no way to say is a warning.
///
///   madetext made("options.csv", table, tell);
///   sheetdefinition definition(made);
///   definition.read(table);
///   options.read_definition_text("options.csv", made.text());    with findings through origin()
///   definition.compare(options);
///   use(made.text());
///
/// BORROWS: what it is made with.
class sheetdefinition {
 public:
  explicit sheetdefinition(madetext& to) : to_(to) {}

  void read(std::string_view table);
  /// Tells of texts that an option has otherwise than the table, now that it has been read.
  void compare(const optxv::options& read) const;

 private:
  struct group {
    std::size_t number;
    std::string name;
  };

  void addgroups(const sheet& table, const sheetcolumns& columns);
  std::string groupname(const std::string& title) const;
  void addoption(const sheetrow& row, const sheetcolumns& columns);
  void addsynonyms(const sheetcell& synonyms, const std::string& name);
  void addmarks(const sheet& table, const sheetcolumns& columns, column which,
                std::string_view word);

  madetext& to_;
  std::map<std::string, group> groups_;  ///< by title
  std::vector<rowrecord> made_;
};

}  // namespace command
