#include "options/origins.h"

namespace optxv {

std::int32_t sourcenames::number(std::string_view name) {
  if (last_ != 0 && names_[static_cast<std::size_t>(last_) - 1] == name) return last_;
  const auto found = numbers_.find(name);
  if (found != numbers_.end()) return last_ = found->second;
  const auto next = static_cast<std::int32_t>(names_.size()) + 1;
  if (next > most) return 0;
  names_.emplace_back(name);
  numbers_.emplace(names_.back(), next);
  return last_ = next;
}

}  // namespace optxv
