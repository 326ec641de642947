#include "exchange/madetext.h"

#include <algorithm>
#include <utility>

namespace command {

void madetext::addline(const std::string& line, textspan from) {
  lines_.push_back({text_.size(), from});
  text_ += line + '\n';
}

bool madetext::good(std::size_t first, std::size_t last) const {
  for (std::size_t i = first; i < last; i++)
    if (lines_[i].bad) return false;
  return true;
}

std::string madetext::product() const {
  if (good(0, lines_.size())) return text_;
  std::string result;
  for (std::size_t i = 0; i < lines_.size(); i++) {
    const std::size_t end = i + 1 < lines_.size() ? lines_[i + 1].begin : text_.size();
    if (!lines_[i].bad) result += text_.substr(lines_[i].begin, end - lines_[i].begin);
  }
  return result;
}

/// What could be written instead would be parameter text, and so is left out.
finding madetext::origin(finding found) {
  const std::int64_t line = found.where.line;
  if (line < 1 || line > static_cast<std::int64_t>(lines_.size())) return found;
  madeline& from = lines_[static_cast<std::size_t>(line) - 1];
  if (found.level == severity::error) from.bad = true;
  finding placed = places_.found(ownfinding::wrongvalue, from.from, "");
  found.where = placed.where;
  found.source = placed.source;
  found.hints.clear();
  for (note& each : found.notes) each.where = {};
  return found;
}

void orderedfindings::report(const findingtaker& to) {
  std::ranges::stable_sort(
      all_, {}, [](const finding& each) { return std::pair(each.where.line, each.where.column); });
  for (const finding& each : all_) to(each);
}

}  // namespace command
