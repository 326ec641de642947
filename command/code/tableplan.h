// What a table of options holds, as far as generated code speaks of it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "code/languages.h"
#include "optxv/embedding.h"

namespace command {

/// One of the values that an enumeration allows.
struct planneditem {
  std::string text;
  std::int32_t integer = 0;  ///< of an enumerated integer
  std::string help;
};

/// One option. The texts of its facts are the handle's.
struct plannedoption {
  std::int32_t number = 0;
  optxv_option facts = {};
  std::string name;
  shape form = shape::none;  ///< none for one without a value of its own, and for dot attributes
  bool pair = false;         ///< it has two values
  std::vector<std::string> help;   ///< its lines
  std::vector<planneditem> items;  ///< of an enumeration, each value once
  std::size_t standard = 0;        ///< the position of the default among them

  bool isenumerated() const { return form == shape::choice || form == shape::listed; }
  /// Whether the definition gives it a number of the program's.
  bool hasreference() const;
};

/// The options of a handle, in their order. BORROWS: the handle.
std::vector<plannedoption> planof(optxv_handle handle);

}  // namespace command
