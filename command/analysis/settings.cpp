#include "analysis/settings.h"

namespace command {
namespace {

std::size_t half(std::int32_t which) {
  return which == 2 ? 1 : 0;
}

}  // namespace

const setting& settings::of(std::int32_t optnr, std::int32_t which) const {
  static const setting none;
  const auto index = static_cast<std::size_t>(optnr);
  return optnr > 0 && index < settings_.size() ? settings_[index][half(which)] : none;
}

void settings::stored(const optxv_store& store) {
  const auto index = static_cast<std::size_t>(store.option);
  if (index >= settings_.size()) settings_.resize(index + 1);
  setting& now = settings_[index][half(store.which)];
  now = {store.road, store.through, store.place, now.where, now.times + 1};
}

}  // namespace command
