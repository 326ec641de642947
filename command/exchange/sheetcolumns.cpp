#include "exchange/sheetcolumns.h"

#include <algorithm>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

struct columnname {
  std::string_view word;
  column is;
};
// The first of each column is the one that messages use.
constexpr auto columnnames = std::to_array<columnname>({
    {"name", column::name},         {"option", column::name},
    {"parameter", column::name},    {"key", column::name},
    {"type", column::type},         {"kind", column::type},
    {"default", column::standard},  {"defaultvalue", column::standard},
    {"low", column::low},           {"min", column::low},
    {"minimum", column::low},       {"lower", column::low},
    {"lowerbound", column::low},    {"high", column::high},
    {"max", column::high},          {"maximum", column::high},
    {"upper", column::high},        {"upperbound", column::high},
    {"group", column::group},       {"section", column::group},
    {"category", column::group},    {"text", column::text},
    {"help", column::text},         {"description", column::text},
    {"doc", column::text},          {"items", column::items},
    {"values", column::items},      {"choices", column::items},
    {"members", column::items},     {"synonyms", column::synonyms},
    {"synonym", column::synonyms},  {"aliases", column::synonyms},
    {"alias", column::synonyms},    {"deprecated", column::deprecated},
    {"obsolete", column::obsolete}, {"number", column::number},
    {"usermap", column::number},    {"id", column::number},
});

std::string plainname(std::string_view name) {
  constexpr std::string_view ignored = " -_";
  std::string result;
  for (const char c : name)
    if (ignored.find(c) == ignored.npos) result += folded(c);
  return result;
}

}  // namespace

sheetcolumns::sheetcolumns(const sheet& table, madetext& to) {
  at_.fill(none);
  for (std::size_t i = 0; i < table.header.size(); i++) add(table.header[i], i, to);
  for (const column each : {column::name, column::type}) {
    if (has(each)) continue;
    const auto word = std::ranges::find(columnnames, each, &columnname::is)->word;
    to.tell(to.fault(ownfinding::badtable, {}, "the table has no column " + inquotes(word)));
  }
}

void sheetcolumns::add(const sheetcell& cell, std::size_t position, madetext& to) {
  const auto known = std::ranges::find(columnnames, plainname(cell.text), &columnname::word);
  if (known == columnnames.end()) {
    to.tell(to.fault(ownfinding::notindefinition, cell.where,
                     "the column " + inquotes(cell.text) + " has no place in a definition"));
    return;
  }
  std::size_t& at = at_[static_cast<std::size_t>(known->is)];
  if (at != none)
    to.tell(to.fault(ownfinding::badtable, cell.where,
                     "there is a column " + inquotes(known->word) + " already"));
  else
    at = position;
}

sheetcell sheetcolumns::of(const sheetrow& row, column which) const {
  const std::size_t position = at_[static_cast<std::size_t>(which)];
  if (position != none) return row.cells[position];
  return {.where = {row.where.begin, row.where.begin}};
}

}  // namespace command
