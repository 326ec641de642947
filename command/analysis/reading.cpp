#include "analysis/reading.h"

#include <algorithm>

#include "text/names.h"

namespace command {
namespace {

bool sameline(const place& left, const place& right) {
  return left.line == right.line && left.file == right.file;
}

}  // namespace

const readfield* readrecord::find(std::int32_t field) const {
  const auto found = std::ranges::find(fields, field, &readfield::field);
  return found == fields.end() ? nullptr : &*found;
}

std::shared_ptr<const std::string> reading::lineof(const place& where) {
  if (where.line == 0) return nullptr;
  if (recent_.shared && sameline(where, recent_.where)) return recent_.shared;
  if (!idle() && sameline(where, source().line))
    recent_ = {source().line, {}, std::make_shared<const std::string>(source().text)};
  else if (sameline(where, head_.where))
    recent_ = {head_.where, {}, std::make_shared<const std::string>(head_.text)};
  else
    return nullptr;
  return recent_.shared;
}

std::string_view reading::ahead(std::int64_t column) const {
  const std::string_view text = source().text;
  return text.substr(
      std::min(text.size(), static_cast<std::size_t>(std::max<std::int64_t>(column, 1) - 1)));
}

void reading::entered(const optxv_source& source) {
  sources_.push_back({.kind = source.kind, .name = source.name});
}

void reading::left(const optxv_source&, std::int32_t) {
  sources_.pop_back();
}

void reading::line(const optxv_place& where, std::string_view text) {
  readsource& now = sources_.back();
  now.line = where;
  now.text = text;
}

void reading::field(const optxv_field& field) {
  if (field.field == optxv_field_record) {
    record_.fields.clear();
    record_.type.clear();
    head_ = {source().line, source().text, nullptr};
  }
  if (field.field == optxv_field_type) {
    const std::string_view word = viewof(field.text);
    record_.type = folded(word.substr(0, word.rfind('.')));
  }
  if (field.place.line != head_.where.line) return;  // an item, a member and the like
  record_.fields.push_back(
      {field.field, field.option, field.good != 0, std::string(viewof(field.text)), field.place});
}

void reading::key(const optxv_key& key) {
  readsource& now = sources_.back();
  now.keys++;
  now.entry = {.key = std::string(viewof(key.text)),
               .where = key.place,
               .option = key.option,
               .synonym = key.synonym,
               .dashes = key.dashes};
}

void reading::value(const optxv_value& value) {
  sources_.back().entry.values.push_back(
      {std::string(viewof(value.text)), value.place, value.written, value.quotes, value.good != 0});
}

void reading::message(const optxv_message& message) {
  if (idle()) return;
  if (message.fault == optxv_fault_deprecated || message.fault == optxv_fault_obsolete)
    sources_.back().entry.mark = message.fault;
}

}  // namespace command
