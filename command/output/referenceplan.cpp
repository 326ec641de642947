#include "output/referenceplan.h"

#include <algorithm>
#include <array>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

using optxv::groupfacts;
using optxv::optionfacts;
using optxv::synonymfacts;
using optxv::tablefacts;

struct wordrow {
  std::string_view word, meaning;
};

constexpr std::array<wordrow, 10> kinds = {{
    {"integer", "whole number"},
    {"double", "real number"},
    {"string", "text"},
    {"boolean", "switch: 1 or 0, also yes or no"},
    {"enumstr", "one of a list of words"},
    {"enumint", "one of a list of numbers"},
    {"multilist", "sets the options named, each to its own value"},
    {"strlist", "list of texts; each use adds one"},
    {"macro", "sets the options named, all to the same value"},
    {"immediate", "instruction to the reader of parameters"},
}};

constexpr std::array<wordrow, 3> modifiers = {{
    {"NV", "takes no value: naming it sets it"},
    {"OPT", "the value may be left out"},
    {"TWO", "takes two values"},
}};

template <std::size_t Count>
std::string_view meaning(const std::array<wordrow, Count>& rows, std::string_view word) {
  const auto row = std::ranges::find(rows, word, &wordrow::word);
  return row == rows.end() ? std::string_view() : row->meaning;
}

/// The address of an option of that name. Bytes that ordinary names do not have are written as
/// numbers.
std::string placeof(std::string_view tablename) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string place = "option-";
  for (const char c : tablename) {
    const auto byte = static_cast<unsigned char>(c);
    place += isnamecharacter(c) || c == '.'
                 ? std::string(1, c)
                 : std::string{'-', digits[byte >> 4], digits[byte & 15]};
  }
  return place;
}

referencesection sectionof(const groupfacts& group) {
  return {group.title.empty() ? group.name : group.title,
          "group-" + std::to_string(group.number),
          group.helpcontext == 0,
          {}};
}

}  // namespace

referenceplan::referenceplan(const tablefacts& table) : table_(table) {
  for (const groupfacts& group : table.groups) sections_.push_back(sectionof(group));
  sections_.push_back({"Options without a group", "group-none", false, {}});
  std::map<std::int32_t, std::size_t> home;  // the first group of each number has its options
  for (std::size_t i = 0; i < table.groups.size(); ++i) home.emplace(table.groups[i].number, i);
  for (const optionfacts& option : table.options) {
    const auto found = home.find(option.group);
    sections_[found == home.end() ? table.groups.size() : found->second].options.push_back(&option);
    first_.emplace(option.tablename, &option);
    for (const std::string& member : option.members)
      if (optionlist& setters = setters_[member]; setters.empty() || setters.back() != &option)
        setters.push_back(&option);
  }
  std::erase_if(sections_, [](const referencesection& each) { return each.options.empty(); });
}

/// A repeated name is followed by a point and its number; no name has a point inside.
std::string referenceplan::place(const optionfacts& option) const {
  const std::string place = placeof(option.tablename);
  return first_.at(option.tablename) == &option
             ? place
             : place + "." + std::to_string(&option - table_.options.data() + 1);
}

optionlist referenceplan::members(const optionfacts& option) const {
  optionlist all;
  for (const std::string& member : option.members) all.push_back(first_.at(member));
  return all;
}

optionlist referenceplan::setters(const optionfacts& option) const {
  const auto found = setters_.find(option.tablename);
  if (found == setters_.end() || first_.at(option.tablename) != &option) return {};
  return found->second;
}

std::string referenceplan::counts() const {
  std::size_t synonyms = 0;
  for (const optionfacts& option : table_.options) synonyms += option.synonyms.size();
  return counted(table_.options.size(), "option") + " in " +
         counted(table_.groups.size(), "group") + ", " + counted(synonyms, "synonym");
}

std::string_view kindmeaning(const optionfacts& option) {
  return meaning(kinds, option.kind);
}

std::string_view modifiermeaning(const optionfacts& option) {
  return meaning(modifiers, option.modifier);
}

std::vector<notice> noticesof(const optionfacts& option) {
  std::vector<notice> all;
  if (option.deprecated)
    all.push_back({"Deprecated: it still works, with a warning.", option.deprecatedtext});
  if (option.obsolete) all.push_back({"Obsolete: it no longer works.", option.deprecatedtext});
  if (option.helpcontext == 0)
    all.push_back({"Hidden: the help listings leave this option out.", {}});
  return all;
}

std::string_view synonymnotice(const optionfacts& option) {
  const bool obsolete = option.synonymobsolete;
  const bool all = std::ranges::all_of(option.synonyms, [&](const synonymfacts& each) {
    return obsolete ? each.obsolete : each.deprecated;
  });
  if (all || (!obsolete && !option.synonymdeprecated)) return {};
  return obsolete ? "As one synonym is obsolete, none of them works."
                  : "As one synonym is deprecated, each of them gives the warning.";
}

std::string dotexample(const optionfacts& option) {
  if (!option.tablename.starts_with('.')) return {};
  return "x" + option.tablename + "('label') = value";
}

std::vector<std::vector<std::string_view>> helpparagraphs(const optionfacts& option) {
  std::vector<std::vector<std::string_view>> all(1);
  for (const std::string& line : option.longhelp) {
    if (line.find_first_not_of(" \t") == line.npos)
      all.emplace_back();
    else
      all.back().push_back(line);
  }
  std::erase_if(all, [](const auto& lines) { return lines.empty(); });
  return all;
}

}  // namespace command
