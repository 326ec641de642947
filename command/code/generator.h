// Code for a program that has the options of a definition: constants, types, and functions that
// move values between them and a handle.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "code/languages.h"
#include "optxv/embedding.h"

namespace command {

/// What code is to be made.
struct codeorder {
  const language* as = nullptr;
  std::string prefix;     ///< of all names; it is made a legal one. Empty: after the definition
  bool embed = false;     ///< whether the definition's text becomes part of it
  std::string_view file;  ///< the definition, as a path or "-"
  std::string_view text;  ///< of the definition
};

/// Takes a sentence about two names that would be the same identifier, and the number of the option
/// that it is about.
using meetingtaker = std::function<void(std::int32_t optnr, const std::string& text)>;

/// The code for the options of a handle, which has read that definition and nothing else. The same
/// for the same definition and order, whatever the folder and the day.
/// BORROWS: the handle.
std::string generated(optxv_handle handle, const codeorder& order, const meetingtaker& report);

}  // namespace command
