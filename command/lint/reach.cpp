#include "lint/reach.h"

#include <algorithm>

namespace command {

reach::reach(const declaredtable& table) : blanks_(table.blanksinnames()) {
  table.reader().readdefinition(options_);
  hearing_.emplace(options_.handle(), std::vector<listener*>{this});
}

/// The instruction to the reader that a name reaches, or its first words; 0 if none. It would act
/// when it is read, on the words that follow.
std::int32_t reach::instruction(std::string_view name) const {
  for (std::size_t end = blanks_ ? name.find('_') : name.npos;; end = name.find('_', end + 1)) {
    std::int32_t number = 0;
    optxv_option option{};
    const std::size_t size = std::min(end, name.size());
    if (optxv_find(options_.handle(), name.data(), size, &number) == optxv_ok &&
        optxv_option_info(options_.handle(), number, &option) == optxv_ok &&
        option.kind == optxv_kind_immediate)
      return number;
    if (end == name.npos) return 0;
  }
}

std::int32_t reach::option(std::string_view name) {
  option_ = instruction(name);
  synonym_ = option_ != 0;
  if (option_ != 0) return option_;
  std::string words(name);
  if (blanks_) std::ranges::replace(words, '_', ' ');
  options_.read_line(words);
  options_.clear_messages();
  return option_;
}

/// The first key is the name; what follows it is read as another if the name is shorter.
void reach::key(const optxv_key& key) {
  if (option_ != 0) return;
  option_ = key.option;
  synonym_ = key.synonym != 0;
}

}  // namespace command
