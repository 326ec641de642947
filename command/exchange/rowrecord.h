// The record of a definition for one row of a table of options.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "exchange/madetext.h"
#include "exchange/sheetcolumns.h"

namespace command {

/// What a row becomes.
struct rowrecord {
  std::string name;
  textspan where;                  ///< of the name in the table
  std::string kind;                ///< the type word, without a modifier
  std::string standard;            ///< the default, as the option has it
  std::vector<sheetpart> items;    ///< of an enumeration
  std::vector<std::string> lines;  ///< of the definition
};

/// Makes the record, and tells what is wrong with the row and what the record does not say. Nothing
/// if there is none to be made.
std::optional<rowrecord> recordof(const sheetrow& row, const sheetcolumns& columns,
                                  std::size_t group, std::size_t number, madetext& to);

/// A name that a definition takes, made of another text: what is no letter or digit becomes an
/// underscore. Empty if there is none.
std::string identifierof(std::string_view text);

}  // namespace command
