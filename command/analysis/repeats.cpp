#include "analysis/repeats.h"

namespace command {

void repeats::entered(const optxv_source&) {
  sources_.push_back(++lastsource_);
}

void repeats::left(const optxv_source&, std::int32_t) {
  sources_.pop_back();
}

void repeats::key(const optxv_key&) {
  entry_++;
}

/// The entries of an option, the one that is being read counted among them.
repeats::setbefore& repeats::before(std::int32_t option) {
  const auto index = static_cast<std::size_t>(option);
  if (index >= before_.size()) before_.resize(index + 1);
  setbefore& last = before_[index];
  if (last.source != sources_.back())
    last = {.source = sources_.back(), .outer = last.mask, .elsewhere = last.where};
  if (last.entry != entry_) {
    if (last.mask != 0) last.first = last.where, last.firstalone = last.alone;
    last.earlier |= last.mask;
    last.entry = entry_, last.mask = 0, last.told = false;
  }
  return last;
}

std::optional<repetition> repeats::found(setbefore& last, std::int32_t bit) const {
  const std::int32_t now = last.mask | bit;
  if (last.earlier != 0 && (last.earlier & ~now) == 0 && !last.told) {
    last.told = true;
    return repetition{.first = last.first, .samefile = true, .alone = last.firstalone};
  }
  if (last.outer != 0 && (last.outer & ~(last.earlier | now)) == 0) {
    last.outer = 0;
    return repetition{.first = last.elsewhere};
  }
  return {};
}

/// Whether nothing stands in front of the entry in its line.
bool repeats::beginsline() const {
  const auto column = static_cast<std::size_t>(at_.source().entry.where.column);
  const std::string_view before = std::string_view(at_.source().text).substr(0, column - 1);
  return before.find_first_not_of(" \t-/") == before.npos;
}

void repeats::stored(const optxv_store& store) {
  now_.reset();
  const bool handedon = store.road == optxv_road_macro || store.road == optxv_road_list;
  const optionsymbol& option = names_.option(store.option);
  if (at_.idle() || (store.road != optxv_road_entry && !handedon) || option.type == "strlist" ||
      option.name.empty())
    return;
  setbefore& last = before(store.option);
  const std::int32_t bit = store.which == 2 ? 2 : 1;
  now_ = found(last, bit);
  if (now_) now_->option = store.option, now_->through = handedon ? store.through : 0;
  if (handedon) return;
  last.mask |= bit;
  last.where = store.place;
  last.alone = beginsline();
}

hint ascomment(std::string words, place entry, bool manyaline) {
  hint result = {.words = std::move(words)};
  if (manyaline) return result;
  entry.column = 1;
  entry.length = 0;
  result.edits = {{entry, "* "}};
  result.sure = true;
  return result;
}

}  // namespace command
