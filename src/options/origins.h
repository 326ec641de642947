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
  /// The options that there is room for; 0 until an option gets a value.
  std::int32_t count() const { return count_; }
  void grow(std::int32_t count) {
    origins_.resize(static_cast<std::size_t>(count));
    count_ = count;
  }
  /// REQUIRES: 0 <= position < count().
  void set(std::int32_t position, const valueorigin& origin) {
    origins_[static_cast<std::size_t>(position)] = origin;
  }
  void clear(std::int32_t position) {
    if (position < count_) set(position, {});
  }
  /// The origin of an option, which is no road where there is none. REQUIRES: position >= 0.
  valueorigin get(std::int32_t position) const {
    return position < count_ ? origins_[static_cast<std::size_t>(position)] : valueorigin();
  }

 private:
  std::vector<valueorigin> origins_;
  std::int32_t count_ = 0;  ///< of origins_, which would divide to know it
};

}  // namespace optxv
