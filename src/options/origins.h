// Where values come from: the names of the sources; and for each option where, and by which road,
// it last got a value.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "language/places.h"

namespace optxv {

/// The names of the sources that an object has read, each held once, under numbers from 1.
/// INVARIANT: a name stays where it is for the life of the object.
class sourcenames {
 public:
  /// How many names are held at most. This is far more than most programs read, and a limit for one
  /// that makes up a new name for each read.
  static constexpr std::size_t most = 65535;

  /// The number of a name, which is entered if it is new; 0 if there is no room for it.
  std::uint16_t number(std::string_view name);
  /// The name of a number, zero-terminated; empty for 0.
  const char* name(std::uint16_t number) const {
    return number == 0 ? "" : names_[static_cast<std::size_t>(number) - 1].c_str();
  }

 private:
  std::deque<std::string> names_;
  std::unordered_map<std::string_view, std::uint16_t> numbers_;
  std::uint16_t last_ = 0;  ///< the number given last: most programs read under one name
};

/// The road by which a value comes to an option; the numbers are those of the public header.
enum valueroad : std::uint8_t {
  roadNone,
  roadEntry,
  roadMacro,
  roadList,
  roadDot,
  roadCall,
};

/// Where a value comes from. Kept to 24 bytes, since each option of a table may have one.
struct valueorigin {
  textplace at = {};
  std::int32_t through = 0;  ///< the number of the list or macro that handed it on, else 0
  std::uint16_t source = 0;  ///< see sourcenames
  valueroad road = roadNone;
};
static_assert(sizeof(valueorigin) == 24);

/// The origins of the options of a table, by 0-based position.
class originlist {
 public:
  /// Sets the origin of an option. capacity: the number of options in the table.
  void set(std::int32_t position, const valueorigin& origin, std::int32_t capacity) {
    const auto index = static_cast<std::size_t>(position);
    if (index >= origins_.size()) origins_.resize(static_cast<std::size_t>(capacity));
    origins_[index] = origin;
  }
  void clear(std::int32_t position) {
    const auto index = static_cast<std::size_t>(position);
    if (index < origins_.size()) origins_[index] = {};
  }
  valueorigin get(std::int32_t position) const {
    const auto index = static_cast<std::size_t>(position);
    return index < origins_.size() ? origins_[index] : valueorigin();
  }

 private:
  std::vector<valueorigin> origins_;  ///< empty until an option gets a value
};

}  // namespace optxv
