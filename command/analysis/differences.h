// What differs in effect between two settings of the options of one definition.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/origins.h"

namespace command {

/// An option of one option set, and the same of another; 0 where that has none.
struct optionpair {
  std::int32_t left = 0, right = 0;
};

/// The options of two sets with the same definition, which declares `declared` of them. The lists
/// that parameter text made, which come after those, are paired by their names.
std::vector<optionpair> pairedoptions(const optxv::options& left, const optxv::options& right,
                                      std::int32_t declared);

/// A value that one side has. One without a road is the default.
struct heldvalue {
  optionvalue value;
  origin from = {};
};

enum class differing { option, dotoption, indicator };

/// A value that differs, with what each side has of it: one value; of a list the items that differ,
/// without those at its beginning and at its end that do not; of a dot option or an indicator what
/// its entries give, in their order. There may be none.
struct difference {
  differing what = differing::option;
  optionpair which = {};   ///< of an option
  std::int32_t kind = 0;   ///< of that: optxv_kind_...
  std::int32_t value = 0;  ///< 1 or 2: which one of an option that has two; else 0
  std::string name = {};   ///< as it is shown; of an entry all before its equals sign
  std::optional<optionvalue> standard = {};  ///< the default, if there is one
  std::vector<heldvalue> was = {}, is = {};
};

/// What differs in effect: values, set or by default. An option that may be named without a value
/// differs also if only one side names it. Entries are those of the same text, whatever their
/// order. REQUIRES: runs of one definition, with .origins among their parts, that have read.
std::vector<difference> differences(const run& left, const run& right);

}  // namespace command
