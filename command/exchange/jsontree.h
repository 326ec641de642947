// A JSON text as a tree of values that know where they stand, and all that is wrong with it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace command {

/// A piece of a text, in bytes from its start.
struct textspan {
  std::size_t begin = 0, end = 0;
};

struct jsonmember;

/// A value.
struct jsonvalue {
  enum class kind { null, boolean, number, text, list, object };
  kind is = kind::null;
  bool yes = false;                   ///< of a boolean
  std::string text = {};              ///< of a text; of a number, as it is written
  std::vector<jsonvalue> items = {};  ///< of a list
  std::vector<jsonmember> members;    ///< of an object, each name once
  textspan where = {};                ///< of a list or an object: its bracket

  /// The member of a name; nil if there is none.
  const jsonvalue* find(std::string_view name) const;
};

struct jsonmember {
  std::string name;
  textspan where = {};  ///< of the name
  jsonvalue value;
};

/// What is wrong with a text.
struct jsonfault {
  textspan where;
  std::string text;
  bool twice = false;   ///< a name that its object has twice
  textspan first = {};  ///< where that stands first
};

/// What was read. The tree is that of all that stands before the first fault that is none of names.
struct jsontree {
  jsonvalue root = {};
  bool whole = false;  ///< the text is JSON
  std::vector<jsonfault> faults = {};
};

/// Lists and objects may be that deep in one another.
inline constexpr std::size_t deepestjson = 64;

/// Reads a text of RFC 8259; a byte-order mark may come first. Of two members of one name the first
/// counts. A number may have any size: it is for the caller to convert it.
jsontree readjson(std::string_view text);

/// The word for what a value is: "a number".
std::string_view wordof(jsonvalue::kind kind);

}  // namespace command
