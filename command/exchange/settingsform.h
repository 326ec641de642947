// The form that settings have in JSON. One object; its members are
//
//   "time_limit": 60             an option, by the name that the definition gives it
//   "--note": ["first try"]      a list that parameter text makes by a key of its own
//   "dot-options": [...]         symbol, attribute, labels, value: x.scale('a') = 2.5
//   "indicator-entries": [...]   equation, equationlabels, variable, variablelabels, value
//   "$schema": "..."             for editors; it says nothing about an option
//
// No option has a hyphen or a dollar sign in its name. An option is a member if parameter text sets
// it and it keeps what it got: so a macro or a multi-list is none, since only its members have
// values; nor is an instruction to the reader, nor an obsolete option, whose value is dropped. An
// option has its own name alone: a synonym is no member.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "optxv/optxv.hpp"

namespace command {

using nlohmann::ordered_json;

inline constexpr std::string_view schemamember = "$schema", dotmember = "dot-options",
                                  indicatormember = "indicator-entries", ownlist = "--";

enum class memberform {
  none,      ///< no member
  flag,      ///< takes no value: true if it is named, false if it is not
  one,       ///< a value
  optional,  ///< a value, or null for the option's name alone
  pair,      ///< a list of two; one of them may be null, which keeps what is there
  list       ///< a list of texts
};
memberform formof(const optxv::option& option);

/// Whether it is the attribute of dot options, whose entries keep the number that they get.
bool isattribute(const optxv::option& option);

/// The longest text that parameter text holds, in bytes, and the characters that it has no way to
/// write.
inline constexpr std::size_t longesttext = 255;
inline constexpr std::string_view unwritable = "\"\n\x1A";
/// The most labels of a symbol, and the longest identifier.
inline constexpr int mostlabels = 20, longestidentifier = 63;

/// How much of a text is good UTF-8, as all of JSON is, and whether all of it is.
std::size_t goodbytes(std::string_view text);
inline bool isutf8(std::string_view text) {
  return goodbytes(text) == text.size();
}

/// Adds a member at the end, without a look at those before it.
void addmember(ordered_json& object, std::string_view name, ordered_json value);

/// JSON as it is written, in lines. What is no UTF-8 becomes the character for that.
std::string jsontext(const ordered_json& value);

}  // namespace command
