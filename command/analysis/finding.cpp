#include "analysis/finding.h"

#include <array>

namespace command {
namespace {

// In the order of ownfinding.
constexpr std::array<ownrule, 32> rules = {{
    {"unreadable", severity::error},         {"empty-file", severity::note},
    {"byte-order-mark", severity::note},     {"zero-byte", severity::warning},
    {"rest-unread", severity::warning},      {"line-cut", severity::warning},
    {"name-cut", severity::warning},         {"value-cut", severity::warning},
    {"number-saturated", severity::warning}, {"set-twice", severity::warning},
    {"value-dropped", severity::warning},    {"foreign-quotes", severity::warning},
    {"obsolete-set", severity::warning},     {"new-list", severity::warning},
    {"slashes", severity::warning},          {"definition-ended", severity::error},
    {"no-option", severity::error},          {"usermap-twice", severity::warning},
    {"no-group", severity::warning},         {"item-twice", severity::warning},
    {"boolean-default", severity::warning},  {"boolean-bounds", severity::warning},
    {"names-meet", severity::warning},       {"not-in-schema", severity::warning},
    {"bad-json", severity::error},           {"no-member", severity::error},
    {"member-twice", severity::error},       {"wrong-value", severity::error},
    {"not-expressible", severity::error},    {"bad-table", severity::error},
    {"bad-cell", severity::error},           {"not-in-definition", severity::warning},
}};
static_assert(rules[static_cast<std::size_t>(ownfinding::notindefinition)].code == "not-in-definition");

}  // namespace

std::string_view severityword(severity level) {
  constexpr std::array<std::string_view, 4> words = {"error", "warning", "note", "help"};
  return words[static_cast<std::size_t>(level)];
}

const ownrule& ruleof(ownfinding what) {
  return rules[static_cast<std::size_t>(what)];
}

finding own(ownfinding what, const place& where, std::string text) {
  const ownrule& rule = ruleof(what);
  finding result;
  result.level = rule.level;
  result.code = rule.code;
  result.where = where;
  result.text = std::move(text);
  return result;
}

}  // namespace command
