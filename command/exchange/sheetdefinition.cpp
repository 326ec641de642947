#include "exchange/sheetdefinition.h"

#include <algorithm>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr const char* nogroup = "Options";  // the title where the table gives none

std::string titleof(const sheetcell& cell) {
  std::string title = cell.empty() ? nogroup : cell.text;
  std::ranges::replace(title, '\n', ' ');
  return title;
}

/// What a cell says of a mark: nothing for "no"; an empty text for "yes".
std::optional<std::string> markof(const sheetcell& cell) {
  constexpr std::array<std::string_view, 4> no = {"0", "no", "false", "n"};
  constexpr std::array<std::string_view, 4> yes = {"1", "yes", "true", "y"};
  const auto isin = [&](const auto& words) {
    return std::ranges::any_of(words, [&](std::string_view w) { return samename(w, cell.text); });
  };
  if (cell.empty() || isin(no)) return std::nullopt;
  std::string text = isin(yes) ? "" : cell.text;
  std::ranges::replace(text, '\n', ' ');
  return text;
}

}  // namespace

void sheetdefinition::read(std::string_view text) {
  const sheet table = readsheet(text);
  for (const jsonfault& each : table.faults)
    to_.tell(to_.fault(ownfinding::badtable, each.where,
                       each.twice ? "a member of this name is there already" : each.text));
  const sheetcolumns columns(table, to_);
  if (!columns.good()) return;
  addgroups(table, columns);
  for (const sheetrow& each : table.rows) addoption(each, columns);
  addmarks(table, columns, column::deprecated, "deprecated");
  addmarks(table, columns, column::obsolete, "obsolete");
}

void sheetdefinition::addgroups(const sheet& table, const sheetcolumns& columns) {
  for (const sheetrow& each : table.rows) {
    const sheetcell cell = columns.of(each, column::group);
    const std::string title = titleof(cell);
    if (groups_.contains(title)) continue;
    const group next = {groups_.size() + 1, groupname(title)};
    groups_.emplace(title, next);
    const std::string number = std::to_string(next.number);
    to_.addline(next.name + " group " + number + " 1 " + title, cell.where);
  }
}

/// A name for the group of a title, which no other group has.
std::string sheetdefinition::groupname(const std::string& title) const {
  const std::string base = folded(identifierof(title).empty() ? "group" : identifierof(title));
  const std::string name = base.starts_with('.') ? base.substr(1) : base;
  const auto taken = [&](const std::string& word) {
    return std::ranges::any_of(groups_, [&](const auto& each) { return each.second.name == word; });
  };
  std::string result = name;
  for (std::size_t i = 2; taken(result); i++) result = name + '_' + std::to_string(i);
  return result;
}

void sheetdefinition::addoption(const sheetrow& row, const sheetcolumns& columns) {
  const group& of = groups_.at(titleof(columns.of(row, column::group)));
  std::optional<rowrecord> record = recordof(row, columns, of.number, made_.size() + 1, to_);
  if (!record) return;
  for (const std::string& line : record->lines) to_.addline(line, record->where);
  addsynonyms(columns.of(row, column::synonyms), record->name);
  made_.push_back(std::move(*record));
}

void sheetdefinition::addsynonyms(const sheetcell& synonyms, const std::string& name) {
  for (const sheetpart& each : synonyms.parts()) {
    const std::string synonym = identifierof(each.value);
    if (synonym != each.value || synonym.empty())
      to_.tell(to_.fault(ownfinding::badcell, synonyms.where,
                         inquotes(name) + ": " + inquotes(each.value) + " is no name"));
    else
      to_.addline(synonym + " synonym " + name, synonyms.where);
  }
}

void sheetdefinition::addmarks(const sheet& table, const sheetcolumns& columns, column which,
                               std::string_view word) {
  bool begun = false;
  for (const sheetrow& row : table.rows) {
    const sheetcell cell = columns.of(row, which);
    const std::optional<std::string> text = markof(cell);
    if (!text) continue;
    if (!begun) to_.addline(std::string(word) + "_names " + std::string(word), cell.where);
    begun = true;
    const std::string name = identifierof(columns.of(row, column::name).text);
    to_.addline(' ' + name + (text->empty() ? "" : ' ' + *text), cell.where);
  }
}

void sheetdefinition::compare(const optxv::options& read) const {
  for (const rowrecord& each : made_) {
    const std::optional<std::int32_t> number = read.find(each.name);
    if (!number) continue;
    const optxv::option option = read.describe(*number);
    const auto tell = [&](const std::string& what, std::string_view text) {
      to_.tell(to_.fault(ownfinding::badcell, each.where,
                         inquotes(each.name) + ": a definition has no way to write its " + what +
                             ", which would be " + inquotes(text)));
    };
    if (each.kind == "string" && option.default_text != each.standard)
      tell("default", option.default_text);
    const auto items = read.items(*number);
    for (std::size_t i = 0; i < std::min(items.size(), each.items.size()); i++)
      if (each.kind == "enumstr" && items[i].text != each.items[i].value)
        tell("value " + inquotes(each.items[i].value), items[i].text);
  }
}

}  // namespace command
