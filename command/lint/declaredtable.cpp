#include "lint/declaredtable.h"

namespace command {
namespace {

place placeat(const std::vector<place>& places, std::int32_t position) {
  const auto index = static_cast<std::size_t>(std::max(position, 0));
  return index < places.size() ? places[index] : place();
}

}  // namespace

std::vector<const declaredoption*> declaredtable::sound() const {
  std::vector<const declaredoption*> all;
  for (const declaredoption& each : options_)
    if (each.where.line > 0 && !faulty_.contains(each.where.line)) all.push_back(&each);
  return all;
}

std::vector<const declaredoption*> declaredtable::listed() const {
  std::vector<const declaredoption*> all = sound();
  std::erase_if(all, [&](const declaredoption* each) {
    const optxv_option option = info(*each);
    return option.helpcontext <= 0 || option.group <= 0;
  });
  return all;
}

optxv_option declaredtable::info(const declaredoption& option) const {
  optxv_option result{};
  optxv_option_info(handle(), option.number, &result);
  return result;
}

const declaredoption& declaredtable::option(std::int32_t number) const {
  static const declaredoption none;
  const auto index = static_cast<std::size_t>(std::max(number, 0));
  return index < options_.size() ? options_[index] : none;
}

place declaredtable::group(std::int32_t position) const {
  return placeat(groups_, position);
}

place declaredtable::synonym(std::int32_t position) const {
  return placeat(synonyms_, position);
}

declaredoption& declaredtable::at(std::int32_t number) {
  declaredoption& option = grown(options_, number);
  option.number = number;
  return option;
}

/// Whether it is the definition that is being read, not what parameter text declares.
bool declaredtable::reading() const {
  return !of_.at().idle() && of_.at().source().kind == optxv_source_definition;
}

void declaredtable::declared(const optxv_declaration& declaration) {
  if (!reading()) return;
  const place where(declaration.place);
  switch (declaration.what) {
    case optxv_declared_option:
      at(declaration.number).where = where;
      break;
    case optxv_declared_item:
      at(declaration.option).items.push_back(where);
      break;
    case optxv_declared_group:
      grown(groups_, declaration.number) = where;
      break;
    case optxv_declared_synonym:
      grown(synonyms_, declaration.number) = where;
      break;
    case optxv_declared_deprecated:
    case optxv_declared_obsolete:
      marks_.push_back({declaration.option, declaration.number, where});
      break;
    case optxv_declared_lookup:
      lookup_ = declaration.number;
      break;
    default:
      break;
  }
}

void declaredtable::field(const optxv_field& field) {
  if (field.option == 0 || field.good == 0) return;
  if (field.field == optxv_field_default) at(field.option).standard = field.place;
  if (field.field == optxv_field_low) at(field.option).low = field.place;
}

void declaredtable::ended(const optxv_place&) {
  ended_ = true;
}

void declaredtable::message(const optxv_message& message) {
  if (!reading() || message.kind != optxv_said_definition_error) return;
  const std::vector<readfield>& fields = of_.at().record().fields;
  faulty_.insert(fields.empty() ? message.place.line : fields.front().where.line);
}

}  // namespace command
