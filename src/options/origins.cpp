#include "options/origins.h"

namespace optxv {

std::uint16_t sourcenames::number(std::string_view name) {
  if (last_ != 0 && names_[static_cast<std::size_t>(last_) - 1] == name) return last_;
  const auto found = numbers_.find(name);
  if (found != numbers_.end()) return last_ = found->second;
  if (names_.size() == most) return 0;
  const auto next = static_cast<std::uint16_t>(names_.size() + 1);
  names_.emplace_back(name);
  numbers_.emplace(names_.back(), next);
  return last_ = next;
}

}  // namespace optxv
