// origin: where the values come from, and what they overrode.

#include <sys/stat.h>

#include <cerrno>

#include <algorithm>
#include <optional>
#include <set>

#include "analysis/entryforms.h"
#include "output/failure.h"
#include "output/originforms.h"
#include "output/reporter.h"
#include "output/tables.h"
#include "tasks/optionview.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr std::string_view before = "  before";

bool isfile(const std::string& name) {
  struct stat status = {};
  return name == "-" || stat(name.c_str(), &status) == 0 || errno != ENOENT;
}

/// What is asked for: the last words are names where there is no such file.
struct inquiry {
  request given;
  std::set<std::string> words = {};  ///< those names

  explicit inquiry(const request& from) : given(from) {
    std::vector<std::string>& files = given.parameters;
    for (; !files.empty() && !isfile(files.back()); files.pop_back()) {
      words.insert(files.back());
      given.names.push_back(files.back());
    }
  }
};

int unknown(run& read, const inquiry& asked, const std::string& name) {
  const bool word = asked.words.contains(name);
  failure told{.what = (word ? "no file and no option is called " : "no option is called ") +
                       inquotes(name)};
  if (const std::vector<std::string> nearest = read.names().nearest(name); !nearest.empty())
    told.notes.push_back(question(nearest));
  return tell(told);
}

/// The options that are asked for: all that are set, or some, by number.
class optionset {
 public:
  /// Adds an option; of a macro or a multi-list, which never have a value, the members too.
  void add(const optxv::options& options, std::int32_t optnr) {
    if (!numbers_.insert(optnr).second) return;
    const std::int32_t kind = options.describe(optnr).kind;
    if (kind != optxv_kind_macro && kind != optxv_kind_multilist) return;
    for (const optxv::item& each : options.items(optnr))
      if (each.option > 0) add(options, each.option);
  }

  bool isall() const { return numbers_.empty(); }
  bool has(std::int32_t optnr) const { return isall() || numbers_.contains(optnr); }

  std::vector<optionview> of(const run& read, const optxv::options& fresh) const {
    if (isall()) return chosen(read, fresh, false);
    std::vector<optionview> views;
    for (const std::int32_t optnr : numbers_)
      views.emplace_back(read, fresh, read.options().describe(optnr));
    return views;
  }

 private:
  std::set<std::int32_t> numbers_;
};

// --- Table

/// Cells for the columns Name, Value, Where and How.
using cells = std::vector<std::string>;

/// Of many earlier settings the last ones are shown; all of an option that is asked for.
constexpr std::size_t mostbefore = 10;

void addhistory(std::vector<cells>& rows, const optionview& option, const namedvalue& value,
                bool asked) {
  const std::vector<pastvalue>& all = value.history.settings;
  if (all.empty()) rows.push_back({value.name, option.shown(value.standard), "", "default"});
  const std::size_t shown = std::min(all.size(), asked ? all.size() : mostbefore + 1);
  for (std::size_t i = 0; i < shown; i++)
    rows.push_back({i == 0 ? value.name : std::string(before), option.shown(all[i].value),
                    placewords(all[i].from.where), roadwords(all[i].from)});
  if (const std::size_t more = value.history.forgotten + all.size() - shown; more > 0)
    rows.push_back({std::string(before), "", "", grouped(more) + " more"});
}

/// Why an option that was asked for has no value to tell of; empty if its members are told.
std::string_view whyempty(const optionview& option) {
  if (option.islist()) return "empty";
  return option.isimmediate() ? "an instruction" : "";
}

/// What an attribute has is the value of the last dot option, which has a row of its own.
bool isattribute(const namedvalue& value) {
  const std::vector<pastvalue>& all = value.history.settings;
  return !all.empty() && all.front().from.road == optxv_road_dot;
}

void addrows(std::vector<cells>& rows, const optionview& option, bool asked) {
  const std::vector<namedvalue> values = option.histories();
  for (const namedvalue& each : values)
    if (!isattribute(each) && (asked || !each.history.settings.empty()))
      addhistory(rows, option, each, asked);
  if (values.empty() && asked && !whyempty(option).empty())
    rows.push_back({printable(option.name()), "", "", std::string(whyempty(option))});
}

cells entryrow(const entryform& entry, const origin& from) {
  return {entry.name, entry.value, placewords(from.where), roadwords(from)};
}

void addentries(std::vector<cells>& rows, const run& read, const optionset& wanted) {
  const originteller teller(read);
  std::size_t position = 0;
  for (const optxv::dot_option& each : read.options().dot_options()) {
    const origin from = teller.ofdotoption(position++);
    if (wanted.has(each.option)) rows.push_back(entryrow(formof(read.options(), each), from));
  }
  position = 0;
  for (const optxv::indicator& each : read.options().indicators())
    if (wanted.isall()) rows.push_back(entryrow(formof(each), teller.ofindicator(position++)));
}

/// The cells that are not empty, with something between them.
std::string joined(const std::string& left, std::string_view between, const std::string& right) {
  return left + std::string(left.empty() || right.empty() ? "" : between) + right;
}

/// For a terminal that the table does not fit.
std::string stacked(const std::vector<cells>& rows) {
  std::string text;
  for (const cells& row : rows) {
    const std::string from = joined(row[2], ", ", row[3]);
    if (row[0] == before)
      text += "    before " + joined(row[1], ", ", from) + '\n';
    else
      text += joined(row[0], " = ", row[1]) + "\n    " + from + '\n';
  }
  return text;
}

std::string laidout(std::vector<cells> rows) {
  if (rows.empty()) return "nothing is set\n";
  table content{.columns = {{"Name"}, {"Value"}, {"Where"}, {"How"}}, .rows = std::move(rows)};
  const std::size_t width = terminalwidth(stdout);
  return width > 0 && tablewidth(content) > width ? stacked(content.rows) : tabletext(content);
}

std::string astable(const run& read, const std::vector<optionview>& shown,
                    const optionset& wanted) {
  std::vector<cells> rows;
  for (const optionview& each : shown) addrows(rows, each, !wanted.isall());
  addentries(rows, read, wanted);
  return laidout(std::move(rows));
}

// --- JSON

void putjson(const run& read, const std::vector<optionview>& shown, const optionset& wanted) {
  jsonlists json(stdout);
  json.list("options");
  for (const optionview& each : shown) json.row(each.json(originwanted::all));
  addentries(json, read, [&](std::int32_t attribute) { return wanted.has(attribute); });
  json.end();
}

}  // namespace

int origins(const request& given) {
  const inquiry asked(given);
  run read(tostandarderror(), {.origins = true});
  if (!read.read(readingof(asked.given))) return read.total().status();
  optionset wanted;
  for (const std::string& name : asked.given.names) {
    const std::int32_t optnr = optionof(read.options(), name);
    if (optnr == 0) return unknown(read, asked, name);
    wanted.add(read.options(), optnr);
  }
  optxv::options fresh;
  read.readdefinition(fresh);
  const std::vector<optionview> shown = wanted.of(read, fresh);
  if (given.json)
    putjson(read, shown, wanted);
  else
    put(stdout, astable(read, shown, wanted));
  return read.total().status();
}

}  // namespace command
