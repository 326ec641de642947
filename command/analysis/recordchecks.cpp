#include "analysis/recordchecks.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

std::optional<std::int64_t> wholenumber(std::string_view text) {
  std::int64_t number = 0;
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || fault != std::errc() || end != text.data() + text.size()) return {};
  return number;
}

/// Takes the first word off a text.
std::string_view nextword(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(" \t"));
  text.remove_prefix(word.size());
  return word;
}

std::string nameof(const readrecord& record) {
  const readfield* name = record.find(optxv_field_record);
  return name == nullptr ? std::string() : name->text;
}

/// The text from a line on.
std::string_view fromline(std::string_view text, std::int64_t line) {
  for (; line > 1 && !text.empty(); line--)
    text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
  return text;
}

/// Whether a line looks like a record: a name in column 1 and a type word.
bool beginsrecord(std::string_view line) {
  std::string_view rest = line;
  std::string_view name = nextword(rest);
  if (name.starts_with('.')) name.remove_prefix(1);
  const std::string_view word = nextword(rest);
  return !name.empty() && line[0] != ' ' && isletter(name[0]) &&
         recordformof(folded(word.substr(0, word.find('.')))) != nullptr;
}

std::size_t countrecords(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (beginsrecord(text.substr(0, end))) count++;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return count;
}

/// What to do about a line that ends a definition.
std::string_view advice(std::string_view line) {
  if (line.starts_with('\t'))
    return "a line that continues a record begins with a blank, not a tab";
  if (line.starts_with(' '))
    return "a record begins in column 1, and the one above takes no line more";
  if (line.starts_with('#') || line.starts_with("//") || line.starts_with(';'))
    return "a comment has a * in column 1";
  return "a record begins with a letter in column 1";
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
  if (!number || *number == 0) return;
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
      own(ownfinding::itemtwice, declaration.place, "the value " + inquotes(text) + " is there");
  found.notes.push_back({"it stands here first", first->second});
  findings_.add(std::move(found));
}

/// Text of blanks alone is no loss.
void recordchecks::ended(const optxv_place& where) {
  const std::string_view tail = fromline(definition_, where.line);
  if (tail.find_first_not_of(" \t\r\n") == tail.npos) return;
  finding found = own(ownfinding::definitionended, where,
                      "the definition ends here, since the line neither begins a record nor "
                      "continues one");
  const std::size_t lost = countrecords(tail);
  if (lost > 0)
    found.notes.push_back(
        {counted(lost, "record") + " further down " + (lost == 1 ? "is" : "are") + " not read",
         {}});
  if (const std::string_view words = advice(tail); !words.empty())
    found.hints.push_back({"", std::string(words)});
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
