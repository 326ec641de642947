// The languages that code is generated in, one row each.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "code/identifiers.h"
#include "code/literals.h"

namespace command {

/// What the field of an option holds.
enum class shape {
  integer,
  real,
  text,
  boolean,
  choice,  ///< one of the texts of an enumeration
  listed,  ///< one of the integers of an enumeration
  list,    ///< texts
  none     ///< the option has no field
};

/// How a field is declared, as lines of a skeleton: of one value, and of two.
struct declarationforms {
  std::string_view one, two;
};

/// What generated code looks like. The forms are lines of skeletons (skeleton.h), with the names
/// that generator.cpp gives them.
struct language {
  std::string_view name;
  namerules rules;
  std::string_view ownwords;  ///< names that no option may have, with blanks between them
  bool scoped = false;        ///< an enumeration is a scope for its items
  bool ascending = false;     ///< the items of an enumeration are in the order of their values
  bool lowercase = false;     ///< identifiers are in small letters, but for constants
  bool listfields = true;     ///< a list of texts has a field
  std::size_t longestdecoration = 0;  ///< bytes that come before an identifier after the prefix
  std::size_t longestprefix = 0;      ///< bytes; 0 if any number will do
  commentform comment;

  std::string (*textliteral)(std::string_view);
  std::string (*rawliteral)(std::string_view) = nullptr;  ///< of bytes, where that is another one
  std::string (*realliteral)(double);
  std::string (*integerliteral)(std::int32_t);
  std::array<std::string_view, 2> booleans;  ///< false and true

  std::array<declarationforms, 7> declarations;  ///< in the order of shape
  std::string_view constant;                     ///< the identifier of an item
  std::string_view itemvalue;                    ///< an item as a value
  std::string_view pairvalue;                    ///< of `first` and `second`
  std::string_view listvalue = "{}";             ///< an empty list
  std::array<std::string_view, 2> parts;         ///< what goes after a field for one of two values
  std::string_view skeleton;
};

/// All of them.
std::span<const language* const> languages();
/// Their names.
std::span<const std::string_view> languagenames();
/// The one of that name; nil if there is none.
const language* languageof(std::string_view name);

extern const language clanguage, cpplanguage, pythonlanguage, fortranlanguage, pascallanguage;

}  // namespace command
