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
#include "writers/facts.h"

namespace command {
namespace {

constexpr std::int32_t firstset = 1, secondset = 2;  // the bits of the masks

constexpr std::array<std::string_view, 4> modifiers = {"", ".NV", ".OPT", ".TWO"};

/// An option with what has been read into it. The defaults come from a second option set that has
/// read the definition and nothing else: there every value is the default.
class optionview {
 public:
  optionview(const optionset& options, const optionset& fresh, std::int32_t optnr)
      : options_(options), fresh_(fresh), optnr_(optnr), info_(options.info(optnr)) {}

  bool isset() const { return info_.defined != 0 || (islist() && options_.itemcount(optnr_) > 0); }
  bool islist() const { return info_.type == optTypeStrList; }
  bool istwo() const { return info_.sub == optsub2Values && isscalar(); }
  /// Whether the option has a value of its own.
  bool isscalar() const { return info_.type < optTypeMultiList; }
  bool istext() const { return info_.type == optTypeString || info_.type == optTypeEnumStr; }
  const optioninfo& info() const { return info_; }
  std::int32_t number() const { return optnr_; }
  std::string name() const { return options_.name(optnr_); }
  std::vector<std::string> items() const {
    return islist() ? options_.items(optnr_) : std::vector<std::string>();
  }

  /// integer, string.OPT, ...
  std::string kind() const {
    const auto sub = static_cast<std::size_t>(info_.sub);
    return optionset::typeword(info_.type) +
           std::string(isscalar() && sub < modifiers.size() ? modifiers[sub] : "");
  }

  std::vector<std::string> values() const {
    if (islist()) return shownitems();
    if (!isscalar()) return {};
    std::vector<std::string> result = {shown(options_)};
    if (istwo()) result[0] += ' ' + shown(options_, true);
    return result;
  }

  std::string defaultvalue() const { return isscalar() ? shown(fresh_) : std::string(); }

  std::string_view whatisset() const {
    if (!isset()) return "-";
    if (!istwo()) return "set";
    if (info_.defined == firstset) return "first";
    return info_.defined == secondset ? "second" : "both";
  }

  nlohmann::ordered_json json() const {
    nlohmann::ordered_json row = {{"number", optnr_}, {"name", name()}, {"kind", kind()}};
    if (islist()) row["value"] = items();
    if (isscalar()) {
      row["value"] = typed(options_, false);
      if (istwo()) row["value"] = {typed(options_, false), typed(options_, true)};
      row["default"] = typed(fresh_, false);
    }
    row["set"] = isset();
    if (istwo()) row["set"] = {(info_.defined & firstset) != 0, (info_.defined & secondset) != 0};
    return row;
  }

 private:
  std::vector<std::string> shownitems() const {
    std::vector<std::string> result = items();
    for (std::string& each : result) each = printable(each);
    return result;
  }

  /// The value as parameter text would give it: a limit goes by its name, as in the help.
  std::string shown(const optionset& from, bool second = false) const {
    if (info_.type == optTypeInteger)
      return optxv::numbertext(second ? from.integer2(optnr_) : from.integer(optnr_));
    if (info_.type == optTypeDouble)
      return optxv::numbertext(second ? from.real2(optnr_) : from.real(optnr_));
    const std::string value = second ? from.value2(optnr_) : from.value(optnr_);
    return istext() ? externalform(value) : value;
  }

  nlohmann::ordered_json typed(const optionset& from, bool second) const {
    if (istext()) return second ? from.value2(optnr_) : from.value(optnr_);
    if (info_.type == optTypeDouble) return second ? from.real2(optnr_) : from.real(optnr_);
    const std::int32_t value = second ? from.integer2(optnr_) : from.integer(optnr_);
    if (info_.type == optTypeBoolean && (value == 0 || value == 1)) return value == 1;
    return value;
  }

  const optionset& options_;
  const optionset& fresh_;
  std::int32_t optnr_;
  optioninfo info_;
};

/// The options that are to be shown, in the order of the table.
std::vector<optionview> chosen(const optionset& options, const optionset& fresh, bool all) {
  std::vector<optionview> result;
  for (std::int32_t optnr = 1; optnr <= options.count(); optnr++) {
    const optionview each(options, fresh, optnr);
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

std::string entrysections(const optionset& options) {
  std::string text;
  std::int32_t dropped = 0;
  const std::vector<std::string> dots = dotlines(options, dropped);
  addsection(text, "Dot options", dots, dropped);
  const std::vector<std::string> marks = indicatorlines(options, dropped);
  addsection(text, "Indicators", marks, dropped);
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

std::string countline(const std::vector<optionview>& shown, std::int32_t count) {
  const auto set = static_cast<std::size_t>(std::ranges::count_if(shown, &optionview::isset));
  return grouped(set) + " of " + counted(static_cast<std::size_t>(count), "option") +
         (set == 1 ? " is set\n" : " are set\n");
}

std::string astable(const optionset& options, const optionset& fresh, bool all) {
  const std::vector<optionview> shown = chosen(options, fresh, all);
  const std::string rows = optiontable(shown);
  return rows + (rows.empty() ? "" : "\n") + countline(shown, options.count()) +
         entrysections(options);
}

// --- JSON

std::string asjson(const optionset& options, const optionset& fresh, bool all) {
  using nlohmann::ordered_json;
  ordered_json rows = ordered_json::array(), dots = rows, marks = rows;
  for (const optionview& each : chosen(options, fresh, all)) rows.push_back(each.json());
  std::int32_t dropped = 0;
  for (const dotoption& each : options.dotoptions(dropped))
    dots.push_back({{"symbol", each.symbol},
                    {"attribute", options.name(each.optnr)},
                    {"labels", each.labels},
                    {"value", each.value}});
  for (const indicator& each : options.indicators(dropped))
    marks.push_back({{"equation", each.equation},
                     {"equationlabels", each.equationlabels},
                     {"variable", each.variable},
                     {"variablelabels", each.variablelabels},
                     {"value", each.mark}});
  const ordered_json all_ = {{"options", rows}, {"dotoptions", dots}, {"indicators", marks}};
  return printablejson(all_.dump(2, ' ', false, ordered_json::error_handler_t::replace)) + '\n';
}

}  // namespace

int show(const request& given) {
  run read(tostandarderror());
  if (!read.read(readingof(given))) return read.total().status();
  optionset fresh;
  read.readdefinition(fresh);
  const optionset& options = read.options();
  put(stdout, given.json ? asjson(options, fresh, given.all) : astable(options, fresh, given.all));
  return read.total().status();
}

}  // namespace command
