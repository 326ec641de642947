#include "completion/optioncandidates.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstdlib>

#include "text/document.h"
#include "text/names.h"

namespace command {
namespace {

using optxv::optionfacts, optxv::synonymfacts;

constexpr std::string_view dashes = "--";

// --- The definition

std::string withhome(const std::string& file) {
  const char* home = std::getenv("HOME");
  return file.starts_with("~/") && home != nullptr ? home + file.substr(1) : file;
}

/// The text of a definition; empty if there is none that can be read at once.
std::string textof(const std::string& file) {
  constexpr std::size_t largest = std::size_t{32} << 20;
  struct stat status = {};
  if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return "";
  const readresult result = textdocument::read(file, largest);
  const auto* text = std::get_if<textdocument>(&result);
  return text == nullptr ? "" : std::string(text->text());
}

// --- Values

candidate value(std::string_view word, std::string_view text, bool standard) {
  const std::string help(text);
  return {std::string(word), standard ? (help.empty() ? "default" : help + " (default)") : help};
}

bool isboolean(const optionfacts& option) {
  return option.kind == "boolean" || option.action == "EolFlag" || option.action == "NoBounds";
}

/// A text is often the name of a file.
bool mayname(const optionfacts& option) {
  return option.kind == "string" || option.kind == "strlist" || option.action == "ReadFile";
}

/// Whether an argument can hold the value: blanks at its ends and quotes around it would be lost.
bool isheld(std::string_view value) {
  const auto stays = [](char c) { return c != ' ' && c != '"'; };
  return !value.empty() && stays(value.front()) && stays(value.back());
}

// --- Names

/// Blanks in names are for reading only.
std::string withunderscores(std::string name) {
  std::ranges::replace(name, ' ', '_');
  return name;
}

/// What an argument takes as a name.
bool isargumentname(std::string_view name) {
  const auto fits = [](char c) { return isnamecharacter(c) || c == '.' || c == '-'; };
  return !name.empty() && (isletter(name.front()) || name.front() == '_') &&
         std::ranges::all_of(name, fits);
}

}  // namespace

/// Names, and those that count only where none of the first does.
struct optioncandidates::rankednames {
  std::array<std::vector<candidate>, 2> ranks;

  void add(bool first, candidate name) { ranks[first ? 0 : 1].push_back(std::move(name)); }
  std::vector<candidate> beginning(std::string_view typed, likeness like) const {
    std::vector<candidate> found = command::beginning(ranks[0], typed, like);
    return found.empty() ? command::beginning(ranks[1], typed, like) : found;
  }
};

optioncandidates::optioncandidates(const std::string& file) {
  const std::string name = withhome(file);
  options_.read_definition_text(name, textof(name));
  table_ = optxv::describe(*static_cast<const optxv::tzmaoptions*>(options_.handle()));
}

std::vector<candidate> optioncandidates::names(std::string_view typed) const {
  rankednames all;
  for (const optionfacts& option : table_.options) {
    all.add(option.listed() && !option.deprecated && !option.obsolete,
            {option.tablename, option.help});
    for (const synonymfacts& each : option.synonyms)
      all.add(option.listed() && !each.deprecated && !each.obsolete,
              {withunderscores(each.name), "synonym for " + option.tablename});
  }
  return all.beginning(typed, likeness::values);
}

/// The names as settings, as far as an argument takes them. One that takes no value needs dashes in
/// front to be known as one.
optioncandidates::rankednames optioncandidates::settings(bool dashed) const {
  rankednames all;
  for (const optionfacts& option : table_.options) {
    const bool alone = option.modifier == "NV";
    if (alone && !dashed) continue;
    const auto add = [&](bool first, const std::string& name, const std::string& text) {
      if (isargumentname(name))
        all.add(first && option.listed(), {name + (alone ? "" : "="), text});
    };
    add(!option.deprecated && !option.obsolete, option.tablename, option.help);
    for (const synonymfacts& each : option.synonyms)
      add(!each.deprecated && !each.obsolete, withunderscores(each.name),
          "synonym for " + option.tablename);
  }
  return all;
}

const optionfacts* optioncandidates::find(std::string_view name) const {
  std::string spelled(name);
  std::optional<std::int32_t> number = options_.find(spelled);
  std::ranges::replace(spelled, '-', '_');
  if (!number) number = options_.find(spelled);
  return number ? &table_.options[static_cast<std::size_t>(*number) - 1] : nullptr;
}

/// All values that can be named: of an option with any number of them, the default.
std::vector<candidate> optioncandidates::values(const optionfacts& option) const {
  const auto number = static_cast<std::int32_t>(&option - table_.options.data()) + 1;
  const std::string standard = option.hasdefault ? options_.shown(number) : "";
  if (isboolean(option))
    return {value("yes", "", standard == "1"), value("no", "", standard == "0")};
  std::vector<candidate> all;
  if (!option.values.empty()) {
    for (const optxv::item& each : options_.items(number))
      all.push_back(
          value(each.text, each.help, option.hasdefault && samename(each.text, standard)));
    return all;
  }
  const bool bounded = !option.low.empty() && !option.high.empty();
  return {{standard, "default" + (bounded ? ", from " + option.low + " to " + option.high : "")}};
}

offer optioncandidates::values(const optionfacts& option, std::string_view before,
                               std::string_view typed) const {
  std::vector<candidate> all = values(option);
  std::erase_if(all, [](const candidate& each) { return !isheld(each.word); });
  return {.candidates = after(before, beginning(all, typed)),
          .otherwise = mayname(option) ? offer::kind::files : offer::kind::words,
          .before = std::string(before)};
}

/// The option whose value comes after these words, --name; nil if none does.
const optionfacts* optioncandidates::valued(std::span<const std::string> before) const {
  for (std::size_t back = 1; back <= 2 && back < before.size(); back++) {
    const std::string& word = before[before.size() - back];
    if (!word.starts_with(dashes)) continue;
    if (word.find('=') != word.npos) return nullptr;
    const optionfacts* option = find(std::string_view(word).substr(dashes.size()));
    if (option == nullptr || option->modifier == "NV" || option->modifier == "OPT") return nullptr;
    return back == 1 || option->modifier == "TWO" ? option : nullptr;
  }
  return nullptr;
}

offer optioncandidates::argument(std::span<const std::string> words) const {
  const std::string& typed = words.back();
  const auto before = words.first(words.size() - 1);
  const offer files = {.otherwise = offer::kind::files};
  if (std::ranges::find(before, dashes) != before.end()) return files;
  if (const optionfacts* option = valued(before); option != nullptr && !typed.starts_with(dashes)) {
    offer found = values(*option, "", typed);
    if (!isboolean(*option) || !found.candidates.empty()) return found;
  }
  const bool dashed = typed.starts_with('-');
  if (dashed && typed.size() > 1 && !typed.starts_with(dashes)) return files;
  const std::string_view front = dashed ? dashes : "";
  const std::string name = typed.substr(std::min(front.size(), typed.size()));
  if (const std::size_t equals = name.find('='); equals != name.npos) {
    const optionfacts* option = find(name.substr(0, equals));
    const std::size_t size = front.size() + equals + 1;
    return option == nullptr ? files : values(*option, typed.substr(0, size), typed.substr(size));
  }
  return {.candidates = after(front, settings(dashed).beginning(name, likeness::arguments)),
          .otherwise = dashed ? offer::kind::words : offer::kind::files};
}

}  // namespace command
