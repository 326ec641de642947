// One value of JSON as the value of an option in parameter text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "exchange/jsontree.h"
#include "exchange/settingsform.h"

namespace command {

/// What is wrong with a value.
struct valuefault {
  std::string text;        ///< what the option takes, and what there is
  std::string write;       ///< what could be written; may be empty
  bool nowriting = false;  ///< JSON has the value, and parameter text cannot have it
};

/// A value that can be written.
struct valuetext {
  std::string text = {};     ///< as an entry has it
  ordered_json wanted = {};  ///< what the option is to have then; null if only it knows
  bool outside = false;      ///< it is out of bounds
  bool blankends = false;    ///< a text begins or ends with a blank, which token mode alone keeps
  std::optional<valuefault> fault = {};  ///< then the rest is empty
};

/// Converts a value for an option with one, or for one of its two. Whether it is within bounds, or
/// among the allowed values, is for the reader of the text to say.
valuetext valuetextof(const optxv::options& table, const optxv::option& option,
                      const jsonvalue& value, std::string_view commentcharacters);

/// The same for a text that no option judges.
valuetext valuetextof(const std::string& text, std::string_view commentcharacters);

/// What a member takes: "a whole number from 1 to 64, or null".
std::string takenby(const optxv::options& table, const optxv::option& option);

}  // namespace command
