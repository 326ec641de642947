#include "server/marks.h"

#include <algorithm>
#include <utility>

namespace command {
namespace {

/// Lines and columns of texts that are too long for a mark stay at its limit.
std::int32_t held(std::int64_t number) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, 0, INT32_MAX / 2));
}

bool before(const mark& left, const mark& right) {
  return std::pair(left.line, left.column) < std::pair(right.line, right.column);
}

}  // namespace

std::pair<textmarks::const_iterator, textmarks::const_iterator> marksin(const textmarks& all,
                                                                        std::int64_t line) {
  const auto lineof = [](const mark& each) { return std::int64_t{each.line}; };
  return {std::ranges::lower_bound(all, line, {}, lineof),
          std::ranges::upper_bound(all, line, {}, lineof)};
}

const textmarks& marklist::of(const std::string& file) const {
  static const textmarks none;
  const auto found = files_.find(file);
  return found == files_.end() ? none : found->second;
}

void marklist::clear() {
  files_.clear();
  reading_.clear();
  wanted_.clear();
}

void marklist::sort() {
  for (auto& [name, marks] : files_)
    if (!std::ranges::is_sorted(marks, before)) std::ranges::stable_sort(marks, before);
}

mark& marklist::add(markkind kind, const optxv_place& where) {
  static mark nowhere;
  if (reading_.empty() || where.line == 0) return nowhere = {};
  reading_.back()->push_back({.kind = kind,
                              .line = held(where.line),
                              .column = held(where.column),
                              .length = held(where.length)});
  return reading_.back()->back();
}

void marklist::entered(const optxv_source& source) {
  reading_.push_back(&files_[source.name]);
}

void marklist::left(const optxv_source&, std::int32_t) {
  reading_.pop_back();
}

void marklist::comment(const optxv_place& where) {
  add(markkind::comment, where);
}

/// A member names an option, as a mark does and the target of a synonym.
void marklist::declared(const optxv_declaration& declaration) {
  const bool marks =
      declaration.what == optxv_declared_deprecated || declaration.what == optxv_declared_obsolete;
  const bool member = declaration.what == optxv_declared_member;
  mark& made = add(marks || member ? markkind::reference : markkind::declared, declaration.place);
  made.number = declaration.what;
  made.option = member ? declaration.target : declaration.option;
  if (declaration.what == optxv_declared_option) made.option = declaration.number;
  if (declaration.what == optxv_declared_synonym || marks) made.synonym = declaration.number;
  if (declaration.what != optxv_declared_synonym || target_.line == 0) return;
  target_.option = declaration.option;
  if (!reading_.empty()) reading_.back()->push_back(std::exchange(target_, {}));
}

void marklist::field(const optxv_field& field) {
  mark& made = add(markkind::field, field.place);
  made.number = field.field;
  made.option = field.option;
  made.good = field.good != 0;
  if (field.field == optxv_field_record) target_ = {};
  if (field.field != optxv_field_target) return;
  target_ = made;
  target_.kind = markkind::reference;
  target_.number = optxv_declared_synonym;
}

void marklist::key(const optxv_key& key) {
  mark& made = add(markkind::key, key.place);
  made.option = key.option;
  made.synonym = key.synonym;
  made.number = key.dashes;
  constexpr std::int32_t ownkey = 2;  // dashes that make a list of the user's own
  if (key.option == 0 && key.dashes < ownkey) made.kind = markkind::word;
}

void marklist::separator(const optxv_place& where) {
  add(markkind::separator, where);
}

void marklist::value(const optxv_value& value) {
  mark& made = add(markkind::value, value.written);
  made.option = value.option;
  made.number = value.which;
  made.good = value.good != 0;
}

void marklist::stored(const optxv_store& store) {
  if (store.through == 0) return;
  mark& made = add(markkind::handed, store.place);
  made.option = store.option;
  made.number = store.through;
}

void marklist::dotoption(const optxv_entry& entry) {
  add(markkind::symbol, entry.place);
  add(markkind::attribute, entry.second_place).option = entry.option;
}

void marklist::indicator(const optxv_entry& entry) {
  add(markkind::symbol, entry.place);
  add(markkind::symbol, entry.second_place);
}

/// What stands where an attribute is expected. Where none does, its dot is directly before that.
void marklist::addsuffix(const optxv_place& where, bool alone) {
  mark& made = add(markkind::attribute, where);
  made.good = false;
  if (!alone) return;
  made.column--;
  made.length = 1;
}

/// A key without an option begins an indicator, unless a message says that it is unknown.
void marklist::message(const optxv_message& message) {
  switch (message.fault) {
    case optxv_fault_unknown_option:
      if (!reading_.empty() && !reading_.back()->empty() &&
          reading_.back()->back().kind == markkind::word)
        reading_.back()->back().kind = markkind::wrongkey;
      return;
    case optxv_fault_bad_separator:
      add(markkind::separator, message.place).good = false;
      return;
    case optxv_fault_suffix_expected:
      addsuffix(message.place, true);
      return;
    case optxv_fault_unknown_suffix:
      addsuffix(message.place, false);
      return;
    default:
      return;
  }
}

std::optional<std::string_view> marklist::opening(const char* name) {
  wanted_.emplace_back(name);
  return std::nullopt;
}

}  // namespace command
