// The subcommands, and the words and flags that they take, one row each. From these rows come the
// parser, its help, the messages about wrong flags, what shells offer, and the listing from which
// the manual page is made: a new flag is a row and a field of the request.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tasks/request.h"

namespace command {

/// The field of a request that a word or a flag sets: a switch, a count, a text, or any number of
/// texts. Nothing for a flag that the parser itself answers.
using field = std::variant<std::monostate, bool request::*, std::size_t request::*,
                           std::string request::*, std::vector<std::string> request::*>;

/// What a value is, for those who offer values.
enum class valuekind { text, file, folder, option };

/// A flag, or a word that is known by its position.
struct argument {
  std::string_view names;  ///< `-o,--output`; for a word, what it stands for: `DEFINITION`
  std::string_view value;  ///< what the value of a flag stands for; empty for a flag without one
  std::string_view help;   ///< without the full stop
  field into;
  bool required = false;
  const argument* excludes = nullptr;                      ///< one that may not be given with it
  std::span<const std::string_view> (*fixed)() = nullptr;  ///< the only values, if there is a list
  bool commas = false;  ///< a value is a list with commas; the next word is none of it

  /// The only values that it takes; empty if it takes others too.
  std::span<const std::string_view> choices() const {
    return fixed == nullptr ? std::span<const std::string_view>() : fixed();
  }
  /// What its values are: rows use the same words for the same thing, FILE for a file.
  valuekind valueis() const;
  constexpr bool isflag() const { return names.starts_with('-'); }
  constexpr bool ismany() const {
    return std::holds_alternative<std::vector<std::string> request::*>(into);
  }
};

/// What a subcommand is called, what it takes and what it does.
struct subcommand {
  std::string_view word;
  std::string_view help;                    ///< one line without the full stop
  std::string_view more;                    ///< whole sentences, in lines; may be empty
  std::array<const argument*, 10> takes;    ///< words in their order, then flags; then null
  std::array<std::string_view, 4> example;  ///< command lines; then empty
  int (*run)(const request& given);

  std::span<const argument* const> arguments() const {
    return {takes.begin(), std::ranges::find(takes, nullptr)};
  }
  std::span<const std::string_view> examples() const {
    return {example.begin(), std::ranges::find(example, std::string_view())};
  }
};

/// All of them, in the order in which they are listed.
std::span<const subcommand> subcommands();

/// The flags of the command itself.
extern const argument helpflag, versionflag, listflag, completionflag;
inline constexpr std::array<const argument*, 4> commonflags = {&helpflag, &versionflag, &listflag,
                                                               &completionflag};

/// The names of an argument, each on its own: `-o` and `--output`.
std::vector<std::string> namesof(const argument& row);

/// The help of an argument with the values that it takes, if there is a list.
std::string helpof(const argument& row);

/// "a, b or c".
std::string listed(std::span<const std::string_view> words);

}  // namespace command
