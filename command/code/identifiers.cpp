#include "code/identifiers.h"

#include "text/names.h"

namespace command {
namespace {

bool isdigitat(std::string_view text, std::size_t position) {
  return position < text.size() && isdigit(text[position]);
}

/// The letters and digits of a name, with an underscore for each run of what lies between them.
std::string joined(std::string_view name) {
  std::string words;
  bool gap = false;
  for (const char c : name) {
    const bool stays = isletter(c) || isdigit(c);
    if (stays && gap && !words.empty()) words += '_';
    if (stays) words += c;
    gap = !stays;
  }
  return words;
}

}  // namespace

std::string wordsof(std::string_view name, std::string_view word) {
  const bool minus = name.starts_with('-') && isdigitat(name, 1);
  const std::string words = (minus ? "minus_" : "") + joined(name);
  if (words.empty()) return std::string(word);
  return isdigitat(words, 0) && !word.empty() ? std::string(word) + '_' + words : words;
}

void identifiers::reserve(std::string_view name) {
  taken_.emplace(folded(name), own);
}

std::string identifiers::legal(std::string_view name) const {
  std::string result(rules_.longest == 0 ? name : name.substr(0, rules_.longest));
  const std::string word = ' ' + (rules_.cased ? result : folded(result)) + ' ';
  if (rules_.keywords.find(word) != std::string_view::npos) result += '_';
  return result;
}

std::string identifiers::unused(std::string_view name) const {
  for (std::size_t count = 2;; count++) {
    const std::string suffix = '_' + std::to_string(count);
    std::string result(rules_.longest == 0 ? name : name.substr(0, rules_.longest - suffix.size()));
    result += suffix;
    if (!taken_.contains(folded(result))) return result;
  }
}

std::vector<std::string> identifiers::give(const std::vector<wantedname>& names,
                                           const std::function<void(const meeting&)>& report) {
  std::vector<std::string> given(names.size());
  for (const bool asitis : {true, false})
    for (std::size_t i = 0; i < names.size(); i++) {
      if (names[i].asitis != asitis) continue;
      given[i] = legal(names[i].text);
      const auto [holder, isfree] = taken_.emplace(folded(given[i]), i);
      if (isfree) continue;
      meeting told = {holder->second, i, given[i], unused(given[i])};
      given[i] = told.given;
      taken_.emplace(folded(given[i]), i);
      report(told);
    }
  return given;
}

}  // namespace command
