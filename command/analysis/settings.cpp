#include "analysis/settings.h"

namespace command {
namespace {

std::size_t half(std::int32_t which) {
  return which == 2 ? 1 : 0;
}

void put(std::vector<spot>& spots, std::int32_t position, const spot& at) {
  if (position < 1) return;
  const auto size = static_cast<std::size_t>(position);
  if (spots.size() < size) spots.resize(size);
  spots[size - 1] = at;
}

}  // namespace

const settings::lastsetting* settings::find(std::int32_t optnr, std::int32_t which) const {
  const auto index = static_cast<std::size_t>(optnr);
  return optnr > 0 && index < settings_.size() ? &settings_[index][half(which)] : nullptr;
}

const setting& settings::of(std::int32_t optnr, std::int32_t which) const {
  static const setting none;
  const lastsetting* found = find(optnr, which);
  return found == nullptr ? none : *found;
}

std::optional<settingstep> settings::last(std::int32_t optnr, std::int32_t which) const {
  const lastsetting* found = find(optnr, which);
  if (found == nullptr || found->times == 0) return std::nullopt;
  return settingstep{valuenow(options_, optnr, which), found->road, found->through, found->at};
}

std::vector<settingstep> settings::history(std::int32_t optnr, std::int32_t which) const {
  const std::optional<settingstep> now = last(optnr, which);
  if (!now) return {};
  std::vector<settingstep> all = {*now};
  const auto before = [this](std::size_t number) {
    return number > dropped_ ? steps_[number - dropped_ - 1].before : 0;
  };
  for (std::size_t number = before(find(optnr, which)->step); number > dropped_;
       number = before(number))
    all.push_back(steps_[number - dropped_ - 1].step);
  return all;
}

void settings::entered(const optxv_source&) {
  sources_.push_back(entered_++);
}

void settings::left(const optxv_source&, std::int32_t) {
  sources_.pop_back();
}

void settings::stored(const optxv_store& store) {
  const auto index = static_cast<std::size_t>(store.option);
  if (index >= settings_.size()) settings_.resize(index + 1);
  lastsetting& now = settings_[index][half(store.which)];
  const spot at = spotof(store.place);
  const std::size_t step = keepall_ ? keep(store, at, now.step) : 0;
  now = {{store.road, store.through, store.place, now.where, now.times + 1}, at, step};
}

/// Gives the number of the step.
std::size_t settings::keep(const optxv_store& store, const spot& at, std::size_t before) {
  if (steps_.size() == mostkept) {
    steps_.pop_front();
    dropped_++;
  }
  steps_.push_back(
      {{valuenow(options_, store.option, store.which), store.road, store.through, at}, before});
  return dropped_ + steps_.size();
}

spot settings::spotof(const optxv_place& where) const {
  return {sources_.empty() ? 0 : sources_.back(), where.line, where.column, where.length};
}

void settings::dotoption(const optxv_entry& entry) {
  if (keepall_) put(dotoptions_, entry.number, spotof(entry.place));
}

void settings::indicator(const optxv_entry& entry) {
  if (keepall_) put(indicators_, entry.number, spotof(entry.place));
}

}  // namespace command
