// The table of options by which parameter text is laid out.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "layout/entrypieces.h"
#include "optxv/optxv.hpp"

namespace command {

/// A definition that reads parameter text without opening a file: an instruction to read a file
/// only tells of it. OWNS: its own copy of the definition.
class layouttable {
 public:
  explicit layouttable(std::string_view definition);

  /// A set of options with the table.
  optxv::options make(bool tokens, bool nobounds) const;
  const instructions& words() const { return words_; }

 private:
  std::string definition_;
  instructions words_;
};

}  // namespace command
