// Names of options and items as identifiers of a programming language.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace command {

/// What a language asks of its names, beyond letters, digits and underscores.
struct namerules {
  std::string_view keywords;  ///< that no name may be, with a blank before and after each
  bool cased = true;          ///< whether a keyword is one in its own case alone
  std::size_t longest = 0;    ///< bytes; 0 if any number will do
};

/// A name in letters, digits and single underscores between them: each run of other characters
/// becomes an underscore, a minus in front of a digit the word "minus". `word` goes before a name
/// that begins with a digit, and stands for one of which nothing is left; it may be empty.
std::string wordsof(std::string_view name, std::string_view word);

/// A name that is to become an identifier.
struct wantedname {
  std::string text;     ///< as made by wordsof, perhaps with more before it
  bool asitis = false;  ///< whether that is the name itself
};

/// Two names of a scope that would be the same identifier; the second one got another.
struct meeting {
  std::size_t first = 0;   ///< the position of the one that has it, or identifiers::own
  std::size_t second = 0;  ///< the position of the other
  std::string shared;      ///< the identifier that both would have
  std::string given;       ///< what the second one got
};

/// The identifiers of one scope. No two are the same, not even by case alone.
///
/// A name that is an identifier as it is keeps it, whatever comes before it; the others follow in
/// their order. An underscore goes after a keyword, and a number after a name that is taken.
/// BORROWS: the rules.
class identifiers {
 public:
  /// The position of a name of the generated code itself.
  static constexpr std::size_t own = static_cast<std::size_t>(-1);

  explicit identifiers(const namerules& rules) : rules_(rules) {}

  /// Keeps a name for the generated code.
  void reserve(std::string_view name);
  /// The identifiers of these names, in their order. Reports where two meet.
  std::vector<std::string> give(const std::vector<wantedname>& names,
                                const std::function<void(const meeting&)>& report);

 private:
  std::string legal(std::string_view name) const;
  std::string unused(std::string_view name) const;

  const namerules& rules_;
  std::unordered_map<std::string, std::size_t> taken_;  ///< in small letters, with the positions
};

}  // namespace command
