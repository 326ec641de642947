// show: the state of the options as a table, or as JSON.

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "output/reporter.h"
#include "output/tables.h"
#include "tasks/entryforms.h"
#include "tasks/product.h"
#include "tasks/tasks.h"
#include "text/printable.h"
#include "text/wording.h"
#include "writers/facts.h"

namespace command {
namespace {

constexpr std::int32_t first = 1, second = 2;  // of the values, and their bits in the masks

constexpr std::array<std::string_view, 4> modifiers = {"", ".NV", ".OPT", ".TWO"};

/// An option with what has been read into it. The defaults come from a second option set that has
/// read the definition and nothing else: there every value is the default.
class optionview {
 public:
  optionview(const optxv::options& options, const optxv::options& fresh,
             const optxv::option& option)
      : options_(options), fresh_(fresh), option_(option) {}

  bool isset() const { return option_.defined != 0 || (islist() && option_.items > 0); }
  bool islist() const { return option_.kind == optxv_kind_list; }
  bool istwo() const { return option_.takes == optxv_takes_two && isscalar(); }
  /// Whether the option has a value of its own.
  bool isscalar() const { return option_.kind < optxv_kind_multilist; }
  bool istext() const { return option_.data == optxv_data_text; }
  std::int32_t number() const { return option_.number; }
  std::string name() const { return shownname(options_.handle(), option_.number); }
  std::vector<std::string> items() const {
    return islist() ? options_.get<std::vector<std::string>>(option_.number)
                    : std::vector<std::string>();
  }

  /// integer, string.OPT, ...
  std::string kind() const {
    const auto sub = static_cast<std::size_t>(option_.takes);
    return kindword(option_.kind) +
           std::string(isscalar() && sub < modifiers.size() ? modifiers[sub] : "");
  }

  std::vector<std::string> values() const {
    if (islist()) return shownitems();
    if (!isscalar()) return {};
    std::vector<std::string> result = {shown(options_, first)};
    if (istwo()) result[0] += ' ' + shown(options_, second);
    return result;
  }

  std::string defaultvalue() const { return isscalar() ? shown(fresh_, first) : std::string(); }

  std::string_view whatisset() const {
    if (!isset()) return "-";
    if (!istwo()) return "set";
    if (option_.defined == first) return "first";
    return option_.defined == second ? "second" : "both";
  }

  nlohmann::ordered_json json() const {
    nlohmann::ordered_json row = {{"number", number()}, {"name", name()}, {"kind", kind()}};
    if (islist()) row["value"] = items();
    if (isscalar()) {
      row["value"] = typed(options_, first);
      if (istwo()) row["value"] = {typed(options_, first), typed(options_, second)};
      row["default"] = typed(fresh_, first);
    }
    row["set"] = isset();
    if (istwo()) row["set"] = {(option_.defined & first) != 0, (option_.defined & second) != 0};
    return row;
  }

 private:
  std::vector<std::string> shownitems() const {
    std::vector<std::string> result = items();
    for (std::string& each : result) each = printable(each);
    return result;
  }

  /// The value as parameter text would give it: a limit goes by its name, as in the help.
  std::string shown(const optxv::options& from, std::int32_t which) const {
    if (option_.kind == optxv_kind_integer)
      return optxv::numbertext(from.get<std::int32_t>(number(), which));
    if (option_.kind == optxv_kind_real)
      return optxv::numbertext(from.get<double>(number(), which));
    if (istext()) return externalform(from.get<std::string>(number(), which));
    return from.shown(number(), which);
  }

  nlohmann::ordered_json typed(const optxv::options& from, std::int32_t which) const {
    if (istext()) return from.get<std::string>(number(), which);
    if (option_.data == optxv_data_real) return from.get<double>(number(), which);
    const auto value = from.get<std::int32_t>(number(), which);
    if (option_.kind == optxv_kind_boolean && (value == 0 || value == 1)) return value == 1;
    return value;
  }

  const optxv::options& options_;
  const optxv::options& fresh_;
  optxv::option option_;
};

/// The options that are to be shown, in the order of the table.
std::vector<optionview> chosen(const optxv::options& options, const optxv::options& fresh,
                               bool all) {
  std::vector<optionview> result;
  for (const optxv::option& option : options.table()) {
    const optionview each(options, fresh, option);
    if (all || each.isset()) result.push_back(each);
  }
  return result;
}

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
void addrows(table& content, const optionview& option) {
  std::vector<std::string> values = option.values();
  if (values.empty()) values.emplace_back();
  content.rows.push_back({std::to_string(option.number()), printable(option.name()), option.kind(),
                          values[0], option.defaultvalue(), std::string(option.whatisset())});
  for (std::size_t i = 1; i < values.size(); i++)
    content.rows.push_back({"", "", "", values[i], "", ""});
}

/// For a terminal that the table does not fit: two lines an option.
std::string stacked(const std::vector<optionview>& options) {
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
  }
  return text;
}

std::string optiontable(const std::vector<optionview>& options) {
  if (options.empty()) return {};
  table content{.columns = {{"Nr", true}, {"Name"}, {"Kind"}, {"Value"}, {"Default"}, {"Set"}},
                .rows = {}};
  for (const optionview& each : options) addrows(content, each);
  const std::size_t width = terminalwidth(stdout);
  return width > 0 && tablewidth(content) > width ? stacked(options) : tabletext(content);
}

std::string countline(const std::vector<optionview>& shown, std::size_t count) {
  const auto set = static_cast<std::size_t>(std::ranges::count_if(shown, &optionview::isset));
  return grouped(set) + " of " + counted(count, "option") + (set == 1 ? " is set\n" : " are set\n");
}

std::string astable(const optxv::options& options, const optxv::options& fresh, bool all) {
  const std::vector<optionview> shown = chosen(options, fresh, all);
  const std::string rows = optiontable(shown);
  return rows + (rows.empty() ? "" : "\n") + countline(shown, options.table().size()) +
         entrysections(options);
}

// --- JSON

std::string asjson(const optxv::options& options, const optxv::options& fresh, bool all) {
  using nlohmann::ordered_json;
  ordered_json rows = ordered_json::array(), dots = rows, marks = rows;
  for (const optionview& each : chosen(options, fresh, all)) rows.push_back(each.json());
  for (const optxv::dot_option& each : options.dot_options())
    dots.push_back({{"symbol", each.symbol},
                    {"attribute", shownname(options.handle(), each.option)},
                    {"labels", each.labels},
                    {"value", each.value}});
  for (const optxv::indicator& each : options.indicators())
    marks.push_back({{"equation", each.equation},
                     {"equationlabels", each.equation_labels},
                     {"variable", each.variable},
                     {"variablelabels", each.variable_labels},
                     {"value", each.mark}});
  const ordered_json all_ = {{"options", rows}, {"dotoptions", dots}, {"indicators", marks}};
  return printablejson(all_.dump(2, ' ', false, ordered_json::error_handler_t::replace)) + '\n';
}

}  // namespace

int show(const request& given) {
  run read(tostandarderror());
  if (!read.read(readingof(given))) return read.total().status();
  optxv::options fresh;
  read.readdefinition(fresh);
  const optxv::options& options = read.options();
  put(stdout, given.json ? asjson(options, fresh, given.all) : astable(options, fresh, given.all));
  return read.total().status();
}

}  // namespace command
