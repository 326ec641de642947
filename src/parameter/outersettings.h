// Settings that come from outside any text of parameters: an argument of the program, or a variable
// of its environment. Each is read as a line of parameter text in end-of-line mode, by the same
// reader, but its key is known beforehand, and comment characters have no meaning in it. The bodies
// are in parameterreader.cpp.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "language/places.h"
#include "options/zmaoptions.h"

namespace optxv {

/// One argument or variable. BORROWS: the text.
struct outertext {
  std::int32_t kind;   ///< optxv_source_...
  std::string source;  ///< its name in messages and places, such as "argument 3"
  std::string_view text;
};

/// A text that begins, after a few bytes, with a name; then comes nothing, or = and a value.
struct outersetting {
  outertext from;
  std::size_t before;  ///< how many bytes stand in front of the name
  std::size_t size;    ///< of the name
  std::int32_t dashes = 0;

  std::string_view name() const { return from.text.substr(before, size); }
  bool hasvalue() const { return before + size < from.text.size(); }
  textplace nameplace() const { return textplace{1, 1, 0}.part(before, size); }
};

/// The option that a name stands for, and the name under which it was found.
struct foundoption {
  toption* option;  ///< nil if there is none
  std::string name;
};

/// Looks a name up as parameter text does; where it is not found, with underscores for its hyphens.
foundoption findouter(tzmaoptions& options, std::string_view name);

/// Reads a setting of an option that was found. values: the further texts that are its values, at
/// most two; none if the setting has its value itself, or needs none. A Boolean without a value
/// becomes 1.
void readouter(tzmaoptions& options, const outersetting& setting, const foundoption& found,
               std::span<const outertext> values);

/// Reports a setting of an unknown option, in a message of that kind, and the names that are near.
void reportunknown(tzmaoptions& options, const outersetting& setting, messagekind kind);

}  // namespace optxv
