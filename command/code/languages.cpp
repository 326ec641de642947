#include "code/languages.h"

#include <algorithm>
#include <vector>

namespace command {

std::span<const language* const> languages() {
  static constexpr std::array<const language*, 5> all = {&clanguage, &cpplanguage, &pythonlanguage,
                                                         &fortranlanguage, &pascallanguage};
  return all;
}

std::span<const std::string_view> languagenames() {
  static const std::vector<std::string_view> names = [] {
    std::vector<std::string_view> all;
    for (const language* each : languages()) all.push_back(each->name);
    return all;
  }();
  return names;
}

const language* languageof(std::string_view name) {
  const auto found = std::ranges::find(languages(), name, &language::name);
  return found == languages().end() ? nullptr : *found;
}

}  // namespace command
