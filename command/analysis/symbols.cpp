#include "analysis/symbols.h"

#include <algorithm>

#include "text/names.h"

namespace command {
namespace {

std::string textof(const readrecord& record, std::int32_t field) {
  const readfield* found = record.find(field);
  return found == nullptr ? std::string() : found->text;
}

}  // namespace

const optionsymbol& symbols::option(std::int32_t optnr) const {
  static const optionsymbol none;
  const auto index = static_cast<std::size_t>(optnr);
  return optnr > 0 && index < options_.size() ? options_[index] : none;
}

std::int32_t symbols::find(std::string_view name) const {
  const auto found = numbers_.find(folded(name));
  return found == numbers_.end() ? 0 : found->second;
}

optionsymbol& symbols::at(std::int32_t optnr) {
  const auto index = static_cast<std::size_t>(optnr);
  if (index >= options_.size()) options_.resize(index + 1);
  return options_[index];
}

void symbols::addname(std::string_view name, std::int32_t owner) {
  const bool dotted = name.starts_with('.');
  numbers_.try_emplace(folded(name), owner);
  names_[dotted].add({std::string(name), owner});
}

void symbols::addoption(const optxv_declaration& declaration) {
  const readrecord& record = at_.record();
  optionsymbol& option = at(declaration.number);
  option.name = viewof(declaration.name);
  option.where = declaration.place;
  option.type = record.type;
  option.standard = textof(record, optxv_field_default);
  option.low = textof(record, optxv_field_low);
  option.high = textof(record, optxv_field_high);
  option.action = folded(textof(record, optxv_field_action));
  count_++;
  addname(option.name, declaration.number);
}

void symbols::declared(const optxv_declaration& declaration) {
  const std::string_view name = viewof(declaration.name);
  if (declaration.what == optxv_declared_option && declaration.place.line > 0)
    addoption(declaration);
  if (declaration.what == optxv_declared_synonym) addname(name, declaration.option);
  if (declaration.what == optxv_declared_comment) commentcharacters_ = name;
  if (declaration.what == optxv_declared_indicator) indicatorword_ = name;
  if (declaration.what == optxv_declared_item) at(declaration.option).items.emplace_back(name);
  if (declaration.what == optxv_declared_obsolete && declaration.number == 0 &&
      declaration.option > 0)
    at(declaration.option).obsolete = true;
  if (keepall_)
    declarations_.push_back({declaration.what, declaration.number, declaration.option,
                             std::string(name), declaration.place});
}

void symbols::key(const optxv_key& key) {
  if (option(key.option).action == "eolflag") switched_.insert(at_.source().name);
  if (keepall_ && key.option > 0) mentions_.push_back({key.option, key.synonym, key.place});
}

void symbols::forgetuses() {
  switched_.clear();
  mentions_.clear();
  for (growingnames& each : names_) each.startcount();
}

void symbols::growingnames::add(knownname name) {
  names_.push_back(std::move(name));
}

/// A definition can name what is not there in each of its records. Past a few of them the index
/// waits until the table has grown by a fourth, so that the work stays in proportion.
std::vector<std::string> symbols::growingnames::nearest(std::string_view wrong) {
  if (questions_++ >= mostquestions) return {};
  constexpr std::size_t promptly = 32;
  const bool stale =
      times_ < promptly ? names_.size() > indexed_ : names_.size() > indexed_ * 5 / 4;
  if (stale) {
    index_.emplace(names_);
    indexed_ = names_.size();
    times_++;
    answers_.clear();
  }
  if (!index_) return {};
  if (answers_.size() >= mostquestions) answers_.clear();
  const auto [answer, isnew] = answers_.try_emplace(std::string(wrong));
  if (isnew) answer->second = index_->nearest(wrong);
  return answer->second;
}

std::vector<std::string> symbols::nearest(std::string_view wrong) {
  return names_[wrong.starts_with('.')].nearest(wrong);
}

std::vector<std::string> symbols::nearestitem(std::int32_t optnr, std::string_view wrong) {
  auto found = nearitems_.find(optnr);
  if (found == nearitems_.end()) {
    std::vector<knownname> names;
    for (const std::string& item : option(optnr).items)
      names.push_back({item, static_cast<std::int32_t>(names.size())});
    found = nearitems_.emplace(optnr, nearestnames(names)).first;
  }
  return found->second.nearest(wrong);
}

std::vector<std::string> symbols::nearesttype(std::string_view wrong) {
  std::vector<knownname> words;
  for (const recordform& each : recordforms())
    words.push_back({std::string(each.word), static_cast<std::int32_t>(words.size())});
  return nearestnames(words).nearest(wrong.substr(0, wrong.rfind('.')));
}

const std::vector<recordform>& recordforms() {
  static const std::vector<recordform> forms = [] {
    std::vector<recordform> all;
    const char *word = nullptr, *fields = nullptr, *lines = nullptr;
    for (std::int32_t number = 1; optxv_record_form(number, &word, &fields, &lines) == 1; number++)
      all.push_back({word, fields, lines});
    return all;
  }();
  return forms;
}

const recordform* recordformof(std::string_view word) {
  const auto& forms = recordforms();
  const auto found = std::ranges::find(forms, word, &recordform::word);
  return found == forms.end() ? nullptr : &*found;
}

}  // namespace command
