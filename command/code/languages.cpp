#include "code/languages.h"

#include <algorithm>

namespace command {

std::span<const language* const> languages() {
  static constexpr std::array<const language*, 5> all = {&clanguage, &cpplanguage, &pythonlanguage,
                                                         &fortranlanguage, &pascallanguage};
  return all;
}

const language* languageof(std::string_view name) {
  const auto found = std::ranges::find(languages(), name, &language::name);
  return found == languages().end() ? nullptr : *found;
}

}  // namespace command
