#include "tasks/optionview.h"

#include <algorithm>
#include <array>

#include "output/originforms.h"
#include "text/printable.h"
#include "text/wording.h"

namespace command {
namespace {

using nlohmann::ordered_json;

constexpr std::int32_t first = 1, second = 2;  // of the values, and their bits in the masks

constexpr std::array<std::string_view, 4> modifiers = {"", ".NV", ".OPT", ".TWO"};

std::string numbered(const std::string& name, std::size_t number) {
  return name + '[' + std::to_string(number) + ']';
}

ordered_json dotrow(const run& read, const optxv::dot_option& entry, const origin& from) {
  return {{"symbol", entry.symbol},
          {"attribute", shownname(read.options().handle(), entry.option)},
          {"labels", entry.labels},
          {"value", entry.value},
          {"origin", originjson(from)}};
}

ordered_json indicatorrow(const optxv::indicator& entry, const origin& from) {
  return {{"equation", entry.equation}, {"equationlabels", entry.equation_labels},
          {"variable", entry.variable}, {"variablelabels", entry.variable_labels},
          {"value", entry.mark},        {"origin", originjson(from)}};
}

}  // namespace

std::string optionview::name() const {
  return shownname(read_.options().handle(), option_.number);
}

std::string optionview::kind() const {
  const auto sub = static_cast<std::size_t>(option_.takes);
  return kindword(option_.kind) +
         std::string(isscalar() && sub < modifiers.size() ? modifiers[sub] : "");
}

std::vector<std::string> optionview::items() const {
  return islist() ? read_.options().get<std::vector<std::string>>(number())
                  : std::vector<std::string>();
}

std::string optionview::valueof(const optxv::options& from, std::int32_t which) const {
  return shown(valuenow(from.handle(), number(), which));
}

std::vector<std::string> optionview::values() const {
  if (!isscalar()) {
    std::vector<std::string> result = items();
    for (std::string& each : result) each = printable(each);
    return result;
  }
  std::vector<std::string> result = {valueof(read_.options(), first)};
  if (istwo()) result[0] += ' ' + valueof(read_.options(), second);
  return result;
}

std::string optionview::defaultvalue() const {
  return isscalar() ? valueof(fresh_, first) : std::string();
}

std::string_view optionview::whatisset() const {
  if (!isset()) return "-";
  if (!istwo()) return "set";
  if (option_.defined == first) return "first";
  return option_.defined == second ? "second" : "both";
}

std::vector<std::string> optionview::places() const {
  const originteller teller(read_);
  std::vector<std::string> all;
  for (const origin& each : islist() ? teller.ofitems(number()) : std::vector<origin>())
    all.push_back(placewords(each.where));
  if (islist()) return all;
  const std::string one = placewords(teller.lastof(number(), first).where);
  const std::string two = placewords(teller.lastof(number(), second).where);
  return {one + (one.empty() || two.empty() || one == two ? "" : " ") + (one == two ? "" : two)};
}

std::vector<namedvalue> optionview::histories() const {
  const originteller teller(read_);
  const std::string label = printable(name());
  std::vector<namedvalue> all;
  if (islist()) {
    const std::vector<std::string> texts = items();
    std::vector<origin> from = teller.ofitems(number());
    for (std::size_t i = 0; i < texts.size(); i++)
      all.push_back({numbered(label, i + 1), texts[i], {{{texts[i], std::move(from[i])}}, 0}});
    return all;
  }
  if (!isscalar()) return {};
  for (std::int32_t which = first; which <= (istwo() ? second : first); which++)
    all.push_back({istwo() ? numbered(label, static_cast<std::size_t>(which)) : label,
                   valuenow(fresh_.handle(), number(), which), teller.historyof(number(), which)});
  return all;
}

ordered_json optionview::typed(const optxv::options& from, std::int32_t which) const {
  return valuejson(option_.kind, valuenow(from.handle(), number(), which));
}

ordered_json optionview::originrow(originwanted wanted, std::int32_t which) const {
  const originteller teller(read_);
  if (wanted == originwanted::last) return originjson(teller.lastof(number(), which));
  return historyjson(option_.kind, teller.historyof(number(), which));
}

ordered_json optionview::originrows(originwanted wanted) const {
  if (istwo()) return {originrow(wanted, first), originrow(wanted, second)};
  if (!islist()) return originrow(wanted, first);
  ordered_json rows = ordered_json::array();
  for (const origin& each : originteller(read_).ofitems(number())) rows.push_back(originjson(each));
  return rows;
}

ordered_json optionview::json(originwanted wanted) const {
  ordered_json row = {{"number", number()}, {"name", name()}, {"kind", kind()}};
  if (islist()) row["value"] = items();
  if (isscalar()) {
    row["value"] = typed(read_.options(), first);
    if (istwo()) row["value"] = {row["value"], typed(read_.options(), second)};
    row["default"] = typed(fresh_, first);
  }
  row["set"] = isset();
  if (istwo()) row["set"] = {(option_.defined & first) != 0, (option_.defined & second) != 0};
  if (isset()) row["origin"] = originrows(wanted);
  return row;
}

std::vector<optionview> chosen(const run& read, const optxv::options& fresh, bool all) {
  std::vector<optionview> result;
  for (const optxv::option& option : read.options().table()) {
    const optionview each(read, fresh, option);
    if (all || each.isset()) result.push_back(each);
  }
  return result;
}

void addentries(jsonlists& json, const run& read, const entrywanted& wanted) {
  const originteller teller(read);
  std::size_t position = 0;
  json.list("dotoptions");
  for (const optxv::dot_option& each : read.options().dot_options()) {
    const std::size_t at = position++;
    if (wanted(each.option)) json.row(dotrow(read, each, teller.ofdotoption(at)));
  }
  position = 0;
  json.list("indicators");
  for (const optxv::indicator& each : read.options().indicators()) {
    const std::size_t at = position++;
    if (wanted(0)) json.row(indicatorrow(each, teller.ofindicator(at)));
  }
}

std::int32_t optionof(const optxv::options& options, std::string name) {
  std::ranges::replace(name, ' ', '_');
  return options.find(name).value_or(0);
}

}  // namespace command
