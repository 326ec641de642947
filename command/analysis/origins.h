// Where what is set comes from, in full: the place, the road, the files that led there, and what
// was set before.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/run.h"

namespace command {

/// Where a value comes from.
struct origin {
  place where = {};  ///< of the value, or of the key of an entry without one; else no line
  std::int32_t road = optxv_road_none;
  std::string through = {};  ///< the macro or multi-list that handed it on, as it is shown; or none
  std::vector<place> from =
      {};  ///< where the file is named, and the file with that, and so on, up to one of the run
};

/// One of the times that an option got a value.
struct pastvalue {
  optionvalue value;
  origin from;
};

/// The settings of one value of an option.
struct valuehistory {
  std::vector<pastvalue> settings = {};  ///< the last one first
  std::size_t forgotten = 0;             ///< how many more there were before those
};

/// Tells where the values of a run come from; of a run without .origins among its parts, only of
/// the values in effect. BORROWS: the run.
class originteller {
 public:
  explicit originteller(const run& read) : read_(read) {}

  /// Of an option's first or second value, `which` 1 or 2. Of a list of texts the settings are its
  /// items, the last one first, none of which overrides another.
  valuehistory historyof(std::int32_t optnr, std::int32_t which = 1) const;
  /// Where the value in effect comes from; no road if it is the default.
  origin lastof(std::int32_t optnr, std::int32_t which = 1) const;
  /// Of the items of a list of texts, in their order; those that are forgotten have no road.
  std::vector<origin> ofitems(std::int32_t optnr) const;
  /// Of the dot option or the indicator at a position from 0.
  origin ofdotoption(std::size_t position) const;
  origin ofindicator(std::size_t position) const;

 private:
  origin originof(const spot& at, std::int32_t road, std::int32_t through) const;

  const run& read_;
};

}  // namespace command
