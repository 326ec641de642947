#include "lint/entryfacts.h"

#include <algorithm>
#include <array>

#include "text/names.h"

namespace command {
namespace {

bool saysno(std::string_view word) {
  constexpr std::array<std::string_view, 6> words = {"0", "n", "no", "off", "false", "f"};
  return std::ranges::any_of(words, [&](std::string_view each) { return samename(each, word); });
}

bool iserror(const optxv_message& message) {
  return message.kind == optxv_said_value_error || message.kind == optxv_said_error;
}

}  // namespace

void entrygathering::entered(const optxv_source& source) {
  if (!readers_.empty()) finish();
  reader& now = readers_.emplace_back();
  now.tokens = of_.tokens();
  if (source.level == 1) leaving_ = {.reader = &of_};
}

void entrygathering::left(const optxv_source& source, std::int32_t) {
  finish();
  readers_.pop_back();
  if (readers_.empty() && source.kind != optxv_source_definition) takeleaving_(leaving_);
}

void entrygathering::line(const optxv_place&, std::string_view text) {
  finish();
  reader& now = readers_.back();
  now.text = text;
  now.line.reset();
  now.plain = 0;
}

const sharedline& entrygathering::lineof(reader& now) {
  if (!now.line) now.line = std::make_shared<const std::string>(now.text);
  return now.line;
}

/// Hands the entry on that is being read, if there is one.
void entrygathering::finish() {
  reader& now = readers_.back();
  if (!now.open) return;
  now.open = false;
  if (now.facts.option().type != "immediate") now.plain++;
  if (!now.faulty) takeentry_(now.facts, lineof(now));
  for (const storedvalue& each : now.facts.stored)
    if (each.road == optxv_road_entry) grown(lines_, each.option) = lineof(now);
}

void entrygathering::key(const optxv_key&) {
  finish();
  reader& now = readers_.back();
  now.open = true;
  now.faulty = false;
  now.facts = {.reader = &of_,
               .entry = of_.at().source().entry,
               .tokens = now.tokens,
               .manyaline = now.tokens || now.switched,
               .crowded = now.tokens && now.plain == 1,
               .blanksinnames = table_.blanksinnames()};
}

void entrygathering::value(const optxv_value& value) {
  if (readers_.empty() || of_.at().source().kind == optxv_source_definition) return;
  reader& now = readers_.back();
  if (!now.open) return;
  now.facts.entry.values = of_.at().source().entry.values;
  if (now.facts.option().type == "immediate") instruct(value);
}

/// What an instruction to the reader changes.
void entrygathering::instruct(const optxv_value& value) {
  reader& now = readers_.back();
  const std::string& action = now.facts.option().action;
  const bool no = saysno(viewof(value.text));
  if (action == "eolflag") now.tokens = no, now.switched = true;
  if (action == "nobounds") {
    leaving_.boundsoff = no ? place() : place(value.place);
    leaving_.line = lineof(now);
  }
}

void entrygathering::stored(const optxv_store& store) {
  if (readers_.empty() || of_.at().source().kind == optxv_source_definition) return;
  reader& now = readers_.back();
  const bool standard = isstandard(store.option, store.which);
  char& changed = grown(changed_, store.option);
  const auto bit = static_cast<char>(store.which == 2 ? 2 : 1);
  const bool before = (changed & bit) == 0;
  changed = static_cast<char>(standard ? changed & ~bit : changed | bit);
  if (!now.open) return;
  now.facts.stored.push_back({store.option, store.road, standard && before});
  if (const auto& again = of_.again().now(); again)
    now.facts.taken.push_back({*again, place(store.place), grown(lines_, store.option)});
  if (now.facts.option().type == "strlist" && !now.facts.entry.values.empty())
    now.facts.listedtwice =
        !listed_.emplace(store.option, now.facts.entry.values.back().text).second;
}

bool entrygathering::isstandard(std::int32_t option, std::int32_t which) const {
  const optxv_handle handle = of_.options().handle();
  optxv_option info{};
  optxv_option_info(handle, option, &info);
  std::int32_t integer = 0;
  double real = 0;
  optxv_text text{};
  switch (info.data) {
    case optxv_data_integer:
      return optxv_get_integer_nr(handle, option, which, &integer) == optxv_ok &&
             integer == info.default_integer;
    case optxv_data_real:
      return optxv_get_real_nr(handle, option, which, &real) == optxv_ok &&
             real == info.default_real;
    case optxv_data_text:
      return optxv_get_text_nr(handle, option, which, &text) == optxv_ok &&
             viewof(text) == viewof(info.default_text);
    default:
      return false;
  }
}

void entrygathering::message(const optxv_message& message) {
  if (readers_.empty()) return;
  reader& now = readers_.back();
  if (iserror(message)) now.faulty = true;
  if (message.fault != optxv_fault_deprecated && message.fault != optxv_fault_obsolete) return;
  now.facts.entry.mark = message.fault;
  const std::string_view text = viewof(message.text);
  now.facts.marktext = text.substr(0, text.find_last_not_of("; ") + 1);
}

}  // namespace command
