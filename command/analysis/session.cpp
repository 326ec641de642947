#include "analysis/session.h"

#include <array>

namespace command {
namespace {

/// A message about a name that does not exist, by how it begins. The name follows in quotes.
constexpr std::string_view unknownoption = "Unknown option \"";
constexpr std::string_view unknownsuffix = "unknown .suffix \"";
constexpr std::string_view unknowntype = "Unknown option type \"";

// The words of the definition language that are no kinds of option.
constexpr std::array<const char*, 7> otherwords = {"synonym",   "group",  "deprecated", "obsolete",
                                                   "indicator", "lookup", "eolcomm"};

nearestnames typewords() {
  std::vector<knownname> words;
  for (std::int32_t type = optTypeInteger; type <= optTypeImmediate; type++)
    words.push_back({optionset::typeword(type), type});
  for (const char* word : otherwords)
    words.push_back({word, static_cast<std::int32_t>(words.size())});
  return nearestnames(words);
}

}  // namespace

std::vector<knownname> optionnames(const optionset& options, bool dotted) {
  std::vector<knownname> names;
  const auto add = [&](std::string name, std::int32_t owner) {
    if (name.starts_with('.') == dotted) names.push_back({std::move(name), owner});
  };
  for (std::int32_t optnr = 1; optnr <= options.count(); optnr++) add(options.name(optnr), optnr);
  for (std::string& synonym : options.synonyms()) {
    const std::int32_t owner = options.find(synonym);
    add(std::move(synonym), owner);
  }
  return names;
}

bool session::read(const readsettings& settings) {
  options_.setlinemode(!settings.tokens);
  options_.setnobounds(settings.nobounds);
  if (!readdefinition(settings.definition)) return false;
  for (const std::string& file : settings.parameters) readparameters(file);
  return true;
}

void session::summarize() {
  std::int32_t dropped = 0;
  total_.dotoptions = options_.dotoptions(dropped).size();
  total_.indicators = options_.indicators(dropped).size();
  report_.summary(total_);
}

bool session::readdefinition(const std::string& file) {
  const textdocument* text = opens(file);
  if (text == nullptr) return false;
  if (const std::int32_t error = options_.readdefinition(readablepath(*text)); error != 0) {
    unreadable(file, systemtext(error));
    return false;
  }
  takefindings(file, filerole::definition);
  if (options_.count() <= 1)  // there is always the option Help
    take({.level = severity::warning, .file = file, .text = "the definition declares no option"});
  return true;
}

void session::readparameters(const std::string& file) {
  const textdocument* text = opens(file);
  if (text == nullptr) return;
  if (const std::int32_t error = options_.readparameters(readablepath(*text)); error != 0) {
    unreadable(file, systemtext(error));
    options_.clearmessages();
    return;
  }
  takefindings(file, filerole::parameters);
}

/// The text of a file of the command line; nil, once that is told, if there is none.
const textdocument* session::opens(const std::string& file) {
  total_.files++;
  const readresult& result = sources_.input(file);
  if (const auto* failure = std::get_if<readfailure>(&result)) unreadable(file, failure->words());
  return std::get_if<textdocument>(&result);
}

/// The text that a finding is about; an empty one where that cannot be shown.
const textdocument& session::source(const std::string& file) {
  static const textdocument nothing(std::string{}, std::string{});
  const textdocument* text = sources_.shown(file);
  return text == nullptr ? nothing : *text;
}

void session::unreadable(const std::string& file, const std::string& why) {
  total_.unreadable++;
  take({.file = file, .text = "cannot be read: " + why});
}

void session::takefindings(const std::string& file, filerole role) {
  for (const diagnostic& each : observations(file, source(file), role)) take(each);
  for (diagnostic& each : findings(options_, file)) {
    locate(each, source(each.file));
    suggest(each);
    take(each);
  }
  options_.clearmessages();
}

void session::take(const diagnostic& found) {
  if (found.level == severity::error) total_.errors++;
  if (found.level == severity::warning) total_.warnings++;
  report_.take(found, source(found.file));
}

void session::suggest(diagnostic& found) {
  const std::string_view name = subjectof(found.text).name;
  if (found.kind == optMsgDefineError && found.text.starts_with(unknowntype))
    found.nearest = typewords().nearest(name);
  if (found.kind != optMsgUserError) return;
  if (found.text.starts_with(unknownoption)) found.nearest = names(false).nearest(name);
  if (found.text.starts_with(unknownsuffix)) found.nearest = names(true).nearest(name);
}

const nearestnames& session::names(bool dotted) {
  std::optional<nearestnames>& result = dotted ? dottednames_ : plainnames_;
  if (!result) result.emplace(optionnames(options_, dotted));
  return *result;
}

}  // namespace command
