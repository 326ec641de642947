// The rules of the linter, one row each, and which of them are wanted.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "lint/declaredtable.h"
#include "lint/entryfacts.h"

namespace command {

/// How a rule says what it has found: where, and in which words. Code and level come from its row.
using telling = std::function<void(finding)>;
/// A finding without its code and level.
finding said(const place& where, std::string text);

/// What a rule looks at: all that a definition declares; an entry of parameter text; all that a
/// parameter file leaves behind. Nothing for those about the comments that silence others.
using tablerule = void (*)(const declaredtable& table, const telling& tell);
using entryrule = void (*)(const entryfacts& entry, const telling& tell);
using leavingrule = void (*)(const leavingfacts& left, const telling& tell);
using rulefunction = std::variant<std::monostate, tablerule, entryrule, leavingrule>;

struct lintrule {
  std::string_view code;      ///< D for definitions, P for parameters, I for comments; three digits
  severity level;             ///< a warning, or a note where it is a matter of taste or purpose
  std::string_view sentence;  ///< what it finds, without the full stop
  rulefunction find;
};

/// All of them, by code.
std::span<const lintrule> lintrules();

/// The rules about comments, which the linter itself applies.
inline constexpr std::string_view ignoreunused = "I101", ignoreunknown = "I102";

/// Whether a word is the code of a rule, or what several codes begin with.
bool namesrules(std::string_view word);
/// The first of the words that names no rule; nil if each does.
const std::string* unknownrule(const std::vector<std::string>& words);

/// Which rules are wanted.
class ruleset {
 public:
  /// Wanted are the rules that a word of `select` names, or if it is empty those of the usual
  /// families, and always those about comments; but not those that a word of `ignore` names. Of two
  /// words for a rule the longer one counts.
  ruleset(std::string_view usual, std::vector<std::string> select, std::vector<std::string> ignore);

  bool has(std::string_view code) const;
  /// Whether a word names a rule that is wanted.
  bool hasany(std::string_view word) const;

 private:
  std::vector<std::string> select_, ignore_;
};

}  // namespace command
