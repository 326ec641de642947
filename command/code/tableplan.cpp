#include "code/tableplan.h"

#include <algorithm>

#include "analysis/hearing.h"
#include "text/names.h"

namespace command {
namespace {

shape formof(const optxv_option& facts) {
  switch (facts.kind) {
    case optxv_kind_integer:
      return shape::integer;
    case optxv_kind_real:
      return shape::real;
    case optxv_kind_text:
      return shape::text;
    case optxv_kind_boolean:
      return shape::boolean;
    case optxv_kind_enumerated_text:
      return facts.items > 0 ? shape::choice : shape::text;
    case optxv_kind_enumerated_integer:
      return facts.items > 0 ? shape::listed : shape::integer;
    case optxv_kind_list:
      return shape::list;
    default:
      return shape::none;
  }
}

bool sameitem(shape form, const planneditem& left, const planneditem& right) {
  return form == shape::listed ? left.integer == right.integer : samename(left.text, right.text);
}

std::vector<planneditem> itemsof(optxv_handle handle, const plannedoption& option) {
  std::vector<planneditem> items;
  for (std::int32_t i = 1; option.isenumerated() && i <= option.facts.items; i++) {
    optxv_item item = {};
    if (optxv_item_info(handle, option.number, i, &item) != optxv_ok) continue;
    planneditem next = {std::string(viewof(item.text)), item.integer,
                        std::string(viewof(item.help))};
    if (std::ranges::none_of(
            items, [&](const planneditem& each) { return sameitem(option.form, each, next); }))
      items.push_back(std::move(next));
  }
  return items;
}

std::size_t standardof(const plannedoption& option) {
  const planneditem standard = {std::string(viewof(option.facts.default_text)),
                                option.facts.default_integer, ""};
  const auto found = std::ranges::find_if(
      option.items, [&](const planneditem& each) { return sameitem(option.form, each, standard); });
  return found == option.items.end() ? 0 : static_cast<std::size_t>(found - option.items.begin());
}

std::vector<std::string> helpof(optxv_handle handle, const plannedoption& option) {
  std::vector<std::string> lines = {std::string(viewof(option.facts.help))};
  for (std::int32_t i = 1; i <= option.facts.helplines; i++) {
    optxv_text line = {};
    if (optxv_help_line(handle, option.number, i, &line) == optxv_ok)
      lines.emplace_back(viewof(line));
  }
  return lines;
}

plannedoption optionof(optxv_handle handle, std::int32_t number) {
  plannedoption option;
  option.number = number;
  optxv_option_info(handle, number, &option.facts);
  option.name = viewof(option.facts.name);
  option.form = option.name.starts_with('.') ? shape::none : formof(option.facts);
  option.pair = option.facts.takes == optxv_takes_two && option.form != shape::list;
  option.help = helpof(handle, option);
  option.items = itemsof(handle, option);
  option.standard = standardof(option);
  return option;
}

}  // namespace

bool plannedoption::hasreference() const {
  return facts.kind != optxv_kind_macro && facts.kind != optxv_kind_immediate;
}

std::vector<plannedoption> planof(optxv_handle handle) {
  std::vector<plannedoption> all;
  for (std::int32_t number = 1; number <= optxv_option_count(handle); number++)
    all.push_back(optionof(handle, number));
  return all;
}

}  // namespace command
