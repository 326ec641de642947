#include "language/listener.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace optxv {

listener::listener(const optxv_listener& calls) {
  // Copied as bytes, since the struct of an older program ends earlier than ours.
  std::memcpy(&calls_, &calls, std::min(calls.size, sizeof calls_));
}

optxv_place listener::placed(const textplace& place) const {
  if (!place.known() || reading_.empty()) return {"", 0, 0, 0};
  return {reading_.back().name, place.line, place.column, place.length};
}

void listener::enter(std::int32_t kind, const char* name, const textplace& from) {
  const auto level = static_cast<std::int32_t>(reading_.size()) + 1;
  reading_.push_back({kind, level, name, placed(from)});
  tell(&optxv_listener::entered, reading_.back());
}

void listener::leave(std::int32_t error) {
  if (calls_.left != nullptr) calls_.left(calls_.context, &reading_.back(), error);
  reading_.pop_back();
}

void listener::line(const textplace& place, std::string_view text) const {
  if (calls_.line == nullptr) return;
  const optxv_place where = placed(place);
  const optxv_text bytes = textof(text);
  calls_.line(calls_.context, &where, &bytes);
}

std::optional<std::string_view> listener::textinplaceof(std::string_view filename) const {
  if (calls_.opening == nullptr) return std::nullopt;
  const std::string name(filename);  // for its zero byte
  optxv_text text = {};
  if (calls_.opening(calls_.context, name.c_str(), &text) == 0) return std::nullopt;
  return std::string_view(text.bytes, text.size);
}

void listener::cutlong(std::int32_t what, std::int32_t option, std::string_view kept,
                       const textplace& place, int besides) const {
  const std::int64_t lost =
      std::int64_t{place.length} - besides - static_cast<std::int64_t>(kept.size());
  if (lost <= 0) return;
  tell(
      &optxv_listener::cut,
      {.what = what, .option = option, .place = placed(place), .kept = textof(kept), .lost = lost});
}

}  // namespace optxv
