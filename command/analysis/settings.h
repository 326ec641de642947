// Where the options got their values.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "analysis/reading.h"

namespace command {

/// How an option got a value: the place of the value, the road (optxv_road_...), the macro or
/// multi-list that handed it on, and what was there before.
struct setting {
  std::int32_t road = optxv_road_none;
  std::int32_t through = 0;
  place where = {};
  place overridden = {};  ///< of the value that it took the place of; no line if of none
  std::size_t times = 0;  ///< how often the option was set
};

/// Gathers the last setting of each option, either value on its own.
class settings : public listener {
 public:
  /// which: 1 or 2. A setting without a road for an option that was not set.
  const setting& of(std::int32_t optnr, std::int32_t which = 1) const;

  void stored(const optxv_store& store) override;

 private:
  std::vector<std::array<setting, 2>> settings_;  ///< by the option's number
};

}  // namespace command
