// Where the bytes of a text are by line and column.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/finding.h"
#include "exchange/jsontree.h"

namespace command {

/// Makes findings about pieces of a text. BORROWS: the text.
class lineplaces {
 public:
  lineplaces(std::string file, std::string_view text);

  /// The place of a piece, as far as its first line has it.
  place at(const textspan& where) const;
  /// A finding there, with its line.
  finding found(ownfinding what, const textspan& where, std::string words) const;

 private:
  std::size_t lineof(std::size_t byte) const;
  std::string_view line(std::size_t number) const;

  std::string file_;
  std::string_view text_;
  std::vector<std::size_t> starts_;  ///< of the lines
};

}  // namespace command
