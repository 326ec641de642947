#include "analysis/recordchecks.h"

#include <algorithm>
#include <optional>

#include "foundation/strutilx.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

/// The number that a reader takes a text for; nothing if it is none.
std::optional<std::int32_t> wholenumber(std::string_view text) {
  std::int32_t number = 0;
  return optxv::strasintex(text, number) ? std::optional(number) : std::nullopt;
}

std::string nameof(const readrecord& record) {
  const readfield* name = record.find(optxv_field_record);
  return name == nullptr ? std::string() : name->text;
}

}  // namespace

void recordchecks::field(const optxv_field& field) {
  if (field.good == 0) return;
  if (field.field == optxv_field_usermap) checkusermap(field);
  if (field.field == optxv_field_group) takegroup(field);
  if (field.field == optxv_field_groupnumber)
    if (const auto number = wholenumber(viewof(field.text))) declaredgroups_.insert(*number);
  if (at_.record().type == "boolean") checkboolean(field);
}

void recordchecks::checkusermap(const optxv_field& field) {
  const auto number = wholenumber(viewof(field.text));
  const bool option = recordformof(at_.record().type) != nullptr;
  if (!number || *number == 0 || !option) return;
  const auto [first, isnew] =
      usermaps_.try_emplace(*number, nameof(at_.record()), place(field.place));
  if (isnew) return;
  finding found = own(ownfinding::usermaptwice, field.place,
                      "the usermap " + std::to_string(*number) + " is taken");
  found.notes.push_back({"by the option " + inquotes(first->second.first), first->second.second});
  findings_.add(std::move(found));
}

void recordchecks::checkboolean(const optxv_field& field) {
  const std::string_view text = viewof(field.text);
  if (field.field == optxv_field_default) {
    const auto number = wholenumber(text);
    if (!number || *number == 0 || *number == 1) return;
    findings_.add(own(ownfinding::booleandefault, field.place,
                      "the default of a boolean is 0 or 1, not " + std::to_string(*number)));
  }
  if (field.field == optxv_field_text) {
    std::string_view rest = text;
    if (!wholenumber(nextword(rest)) || !wholenumber(nextword(rest))) return;
    finding found = own(ownfinding::booleanbounds, field.place,
                        "the text begins with numbers; a boolean has no bounds");
    if (const recordform* form = recordformof("boolean"))
      found.notes.push_back({"expected: " + std::string(form->fields), {}});
    findings_.add(std::move(found));
  }
}

void recordchecks::takegroup(const optxv_field& field) {
  const auto number = wholenumber(viewof(field.text));
  if (!number || *number == 0) return;
  groupuse& use = groups_[*number];
  if (use.options++ > 0) return;
  use.where = field.place;
  if (!declaredgroups_.contains(*number)) use.line = at_.lineof(use.where);
}

/// A definition without any group does not care for them.
void recordchecks::checkgroups() {
  if (declaredgroups_.empty()) return;
  for (const auto& [number, use] : groups_) {
    if (declaredgroups_.contains(number)) continue;
    finding found = own(ownfinding::nogroup, use.where,
                        "no record declares the group " + std::to_string(number));
    if (use.options > 1)
      found.notes.push_back({counted(use.options - 1, "more option") + " stand" +
                                 (use.options == 2 ? "s" : "") + " in it",
                             {}});
    found.source = use.line;
    findings_.add(std::move(found));
  }
}

void recordchecks::declared(const optxv_declaration& declaration) {
  if (declaration.what != optxv_declared_item) return;
  if (declaration.option != itemsof_ || declaration.number == 1) items_.clear();
  itemsof_ = declaration.option;
  const std::string_view text = viewof(declaration.name);
  const auto number = at_.record().type == "enumint" ? wholenumber(text) : std::nullopt;
  const auto [first, isnew] =
      items_.try_emplace(number ? std::to_string(*number) : folded(text), place(declaration.place));
  if (isnew) return;
  finding found =
      own(ownfinding::itemtwice, declaration.place, "the item " + inquotes(text) + " stands twice");
  found.notes.push_back({"it stands here first", first->second});
  findings_.add(std::move(found));
}

void recordchecks::left(const optxv_source& source, std::int32_t) {
  if (source.kind != optxv_source_definition) return;
  checkgroups();
  usermaps_.clear();
  groups_.clear();
  items_.clear();
}

}  // namespace command
