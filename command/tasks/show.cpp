// show: the state of the options as a table, or as JSON.

#include <algorithm>

#include "analysis/entryforms.h"
#include "output/originforms.h"
#include "output/reporter.h"
#include "output/tables.h"
#include "tasks/optionview.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/printable.h"

namespace command {
namespace {

// --- Dot options and indicators

void addsection(std::string& text, std::string_view title, const std::vector<std::string>& lines,
                std::int32_t dropped) {
  if (lines.empty() && dropped == 0) return;
  text += '\n' + std::string(title) + '\n';
  for (const std::string& line : lines) text += "  " + line + '\n';
  if (dropped > 0)
    text += "  (" + grouped(static_cast<std::size_t>(dropped)) + " dropped for faults)\n";
}

std::string entrysections(const optxv::options& options) {
  std::string text;
  addsection(text, "Dot options", dotlines(options), options.dropped_dot_options());
  addsection(text, "Indicators", indicatorlines(options), options.dropped_indicators());
  return text;
}

// --- Table

/// A row for the option, and one for each further item of a list.
void addrows(table& content, const optionview& option, bool withorigin) {
  std::vector<std::string> values = option.values();
  if (values.empty()) values.emplace_back();
  const std::vector<std::string> places = option.places();
  for (std::size_t i = 0; i < values.size(); i++) {
    std::vector<std::string> row(6);
    if (i == 0)
      row = {std::to_string(option.number()), printable(option.name()),       option.kind(), "",
             option.defaultvalue(),           std::string(option.whatisset())};
    row[3] = values[i];
    if (withorigin) row.push_back(i < places.size() ? places[i] : "");
    content.rows.push_back(std::move(row));
  }
}

/// For a terminal that the table does not fit: two lines an option.
std::string stacked(const std::vector<optionview>& options, bool withorigin) {
  std::string text;
  for (const optionview& each : options) {
    text += printable(each.name());
    const char* before = " = ";
    for (const std::string& value : each.values()) {
      text += before + value;
      before = "\n    ";
    }
    text += "\n    " + std::to_string(each.number()) + ", " + each.kind();
    if (each.isscalar()) text += ", default " + each.defaultvalue();
    text += ", " + std::string(each.isset() ? each.whatisset() : "not set") + '\n';
    if (!withorigin || !each.isset()) continue;
    for (const std::string& place : each.places()) text += "    " + place + '\n';
  }
  return text;
}

std::string optiontable(const std::vector<optionview>& options, bool withorigin) {
  if (options.empty()) return {};
  table content{.columns = {{"Nr", true}, {"Name"}, {"Kind"}, {"Value"}, {"Default"}, {"Set"}},
                .rows = {}};
  if (withorigin) content.columns.push_back({"Where"});
  for (const optionview& each : options) addrows(content, each, withorigin);
  const std::size_t width = terminalwidth(stdout);
  return width > 0 && tablewidth(content) > width ? stacked(options, withorigin)
                                                  : tabletext(content);
}

std::string countline(const std::vector<optionview>& shown, std::size_t count) {
  const auto set = static_cast<std::size_t>(std::ranges::count_if(shown, &optionview::isset));
  return grouped(set) + " of " + counted(count, "option") + (set == 1 ? " is set\n" : " are set\n");
}

std::string astable(const run& read, const std::vector<optionview>& shown, bool withorigin) {
  const std::string rows = optiontable(shown, withorigin);
  return rows + (rows.empty() ? "" : "\n") + countline(shown, read.options().table().size()) +
         entrysections(read.options());
}

// --- JSON

void putjson(const run& read, const std::vector<optionview>& shown) {
  jsonlists json(stdout);
  json.list("options");
  for (const optionview& each : shown) json.row(each.json(originwanted::last));
  addentries(json, read, [](std::int32_t) { return true; });
  json.end();
}

}  // namespace

int show(const request& given) {
  run read(tostandarderror(), {.origins = given.json || given.origin});
  if (!read.read(readingof(given))) return read.total().status();
  optxv::options fresh;
  read.readdefinition(fresh);
  const std::vector<optionview> shown = chosen(read, fresh, given.all);
  if (given.json)
    putjson(read, shown);
  else
    put(stdout, astable(read, shown, given.origin));
  return read.total().status();
}

}  // namespace command
