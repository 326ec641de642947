#include "analysis/finding.h"

#include <array>

namespace command {
namespace {

// In the order of ownfinding.
constexpr std::array<coderow, 32> rules = {{
    {"unreadable", severity::error, "A file cannot be read"},
    {"empty-file", severity::note, "A file is empty"},
    {"byte-order-mark", severity::note,
     "A file begins with a byte-order mark, which the language does not know"},
    {"zero-byte", severity::warning, "A file has a zero byte in it"},
    {"rest-unread", severity::warning,
     "A byte 26 ends a line, and what follows it there is not read"},
    {"line-cut", severity::warning, "A line has more than 1,020 bytes, and the rest is not read"},
    {"name-cut", severity::warning, "A name has more than 255 bytes, and the rest is lost"},
    {"value-cut", severity::warning, "A value has more than 255 bytes, and the rest is lost"},
    {"number-saturated", severity::warning,
     "A number is beyond the limit of its type, which is taken in its place"},
    {"set-twice", severity::warning, "An option is set again in the same file"},
    {"value-dropped", severity::warning, "A value is dropped for a quote that is not closed"},
    {"foreign-quotes", severity::warning, "Quotes of another kind are kept in a text"},
    {"obsolete-set", severity::warning, "An obsolete option is set all the same"},
    {"new-list", severity::warning,
     "A key with two dashes makes a list, where an option has its name"},
    {"slashes", severity::warning, "A line that looks like a comment makes a list"},
    {"definition-ended", severity::error,
     "A line that is no record ends the definition before its file does"},
    {"no-option", severity::error, "A definition declares no option"},
    {"usermap-twice", severity::warning, "Two options have the same usermap"},
    {"no-group", severity::warning, "An option is in a group that no record declares"},
    {"item-twice", severity::warning, "An enumeration has an item twice"},
    {"boolean-default", severity::warning, "The default of a boolean is neither 0 nor 1"},
    {"boolean-bounds", severity::warning,
     "The text of a boolean begins with numbers, which are no bounds"},
    {"names-meet", severity::warning, "Two names become one in a programming language"},
    {"not-in-schema", severity::warning, "A schema cannot say something of the definition"},
    {"bad-json", severity::error, "A text is not JSON, or not the JSON of settings"},
    {"no-member", severity::error, "A member of the settings is no option"},
    {"member-twice", severity::error, "A member of the settings stands there twice"},
    {"wrong-value", severity::error, "A value of the settings is not one of its option"},
    {"not-expressible", severity::error, "A value cannot be written in the other form"},
    {"bad-table", severity::error, "A table cannot be understood"},
    {"bad-cell", severity::error, "A cell of a table is not what its column holds"},
    {"not-in-definition", severity::warning, "A definition cannot say something of the table"},
}};
static_assert(rules[static_cast<std::size_t>(ownfinding::notindefinition)].code ==
              "not-in-definition");

}  // namespace

std::string_view severityword(severity level) {
  constexpr std::array<std::string_view, 4> words = {"error", "warning", "note", "help"};
  return words[static_cast<std::size_t>(level)];
}

const coderow& ruleof(ownfinding what) {
  return rules[static_cast<std::size_t>(what)];
}

std::span<const coderow> owncodes() {
  return rules;
}

finding own(ownfinding what, const place& where, std::string text) {
  const coderow& found = ruleof(what);
  finding result;
  result.level = found.level;
  result.code = found.code;
  result.where = where;
  result.text = std::move(text);
  return result;
}

tally& tally::operator+=(const tally& other) {
  errors += other.errors;
  warnings += other.warnings;
  files += other.files;
  unreadable += other.unreadable;
  dotoptions += other.dotoptions;
  indicators += other.indicators;
  omitted += other.omitted;
  return *this;
}

}  // namespace command
