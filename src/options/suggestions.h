// The names that somebody may have meant: those of a table, and the values of an enumeration.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "language/nearestnames.h"

namespace optxv {

class toption;
class tzmaoptions;

/// Answers for one table. What it looks in is made with the first question and kept until the table
/// grows.
/// BORROWS: the table, which outlives it.
class suggestions {
 public:
  explicit suggestions(const tzmaoptions& options) : options_(options) {}

  /// The names, of options and synonyms, that are nearest to a wrong one. An attribute of dot
  /// options, whose name begins with a point, is near to such names only. The lists that parameter
  /// text makes are no names to suggest.
  std::vector<std::string> names(std::string_view wrong);
  /// The values of an enumeration that are nearest to a wrong one; none for another kind.
  std::vector<std::string> values(const toption& option, std::string_view wrong);

 private:
  bool grown() const;
  void gather();

  const tzmaoptions& options_;
  std::int32_t optionsgathered_ = 0, synonymsgathered_ = 0;
  std::array<std::optional<nearestnames>, 2> names_;  ///< without a point in front, and with one
  const toption* valuesof_ = nullptr;                 ///< the option asked about last
  std::optional<nearestnames> values_;
};

}  // namespace optxv
