#include "text/edited.h"

#include <algorithm>

namespace command {
namespace {

std::size_t linesin(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
}

/// Calls each with every line of a text in turn.
template <class Each>
void foreachline(std::string_view text, Each each) {
  for (;;) {
    const std::size_t end = text.find('\n');
    each(text.substr(0, end));
    if (end == text.npos) return;
    text.remove_prefix(end + 1);
  }
}

/// The range of a hunk: its first line and how many lines it has. Of no lines, the line before it.
std::string rangeof(std::size_t first, std::size_t count) {
  const std::string start = std::to_string(count == 0 ? first : first + 1);
  return count == 1 ? start : start + ',' + std::to_string(count);
}

void addline(std::string& to, char mark, std::string_view text, bool open) {
  to += mark;
  to += text;
  to += open ? "\n\\ No newline at end of file\n" : "\n";
}

}  // namespace

editedtext::editedtext(std::string_view text) {
  if (text.empty()) return;
  open_ = !text.ends_with('\n');
  if (!open_) text.remove_suffix(1);
  foreachline(text, [&](std::string_view line) { lines_.push_back(line); });
}

std::string_view editedtext::now(std::size_t line) const {
  const auto found = changed_.find(line);
  return found == changed_.end() ? lines_[line] : std::string_view(found->second);
}

std::vector<editedtext::location> editedtext::locations() const {
  std::vector<location> all;
  all.reserve(lines_.size());
  for (std::size_t line = 0; line < lines_.size(); line++) {
    const std::string_view text = now(line);
    foreachline(text, [&](std::string_view part) {
      all.push_back({line, static_cast<std::size_t>(part.data() - text.data()), part.size()});
    });
  }
  return all;
}

std::size_t editedtext::apply(const std::vector<textchange>& changes) {
  const std::vector<location> lines = locations();
  // By line of the start and place in it; an insertion stands before what begins at its place.
  std::map<std::pair<std::size_t, std::size_t>, placed> taken;
  const auto free = [&](std::size_t line, std::size_t from, std::size_t to) {
    auto next = taken.lower_bound({line, from});
    if (next != taken.end() && next->first.first == line &&
        (next->first.second < to || next->first.second == from))
      return false;
    if (next == taken.begin()) return true;
    --next;
    return next->first.first != line || next->first.second + next->second.length <= from;
  };
  std::size_t made = 0;
  for (const textchange& change : changes) {
    std::vector<placed> all;
    for (const textedit& each : change) {
      if (each.line < 1 || each.column < 1 || each.length < 0) break;
      const auto number = static_cast<std::size_t>(each.line - 1);
      const auto column = static_cast<std::size_t>(each.column - 1);
      const auto length = static_cast<std::size_t>(each.length);
      if (number >= lines.size() || column + length > lines[number].size) break;
      const std::size_t from = lines[number].offset + column;
      if (!free(lines[number].line, from, from + length)) break;
      all.push_back({lines[number], from, length, &each.text});
    }
    if (all.size() != change.size() || all.empty()) continue;
    for (const placed& each : all) taken.insert({{each.at.line, each.column}, each});
    made++;
  }
  for (auto each = taken.rbegin(); each != taken.rend(); ++each) {
    const std::size_t line = each->first.first;
    std::string& text = changed_.try_emplace(line, now(line)).first->second;
    text.replace(each->second.column, each->second.length, *each->second.text);
  }
  std::erase_if(changed_, [&](const auto& each) { return each.second == lines_[each.first]; });
  return made;
}

std::string editedtext::text() const {
  std::string all;
  for (std::size_t line = 0; line < lines_.size(); line++) {
    all += now(line);
    if (!endsopen(line)) all += '\n';
  }
  return all;
}

/// ahead: how many lines more than at the start stand before the first line of the hunk.
void editedtext::addhunk(std::string& to, std::size_t first, std::size_t last,
                         std::size_t ahead) const {
  std::string body, added;  // what is added comes after all that it takes the place of
  std::size_t count = 0;
  for (std::size_t line = first; line <= last; line++) {
    const auto found = changed_.find(line);
    std::size_t left = found == changed_.end() ? 1 : linesin(found->second);
    count += left;
    if (found == changed_.end()) {
      body += added;
      added.clear();
      addline(body, ' ', lines_[line], endsopen(line));
      continue;
    }
    addline(body, '-', lines_[line], endsopen(line));
    foreachline(found->second, [&](std::string_view each) {
      addline(added, '+', each, --left == 0 && endsopen(line));
    });
  }
  to += "@@ -" + rangeof(first, last - first + 1) + " +" + rangeof(first + ahead, count) + " @@\n";
  to += body + added;
}

std::string editedtext::difference(std::string_view name) const {
  constexpr std::size_t context = 3;
  if (changed_.empty()) return {};
  std::string all = "--- " + std::string(name) + "\n+++ " + std::string(name) + '\n';
  std::size_t ahead = 0;
  for (auto each = changed_.begin(); each != changed_.end();) {
    const std::size_t first = each->first - std::min(each->first, context);
    std::size_t last = each->first, more = 0;
    while (each != changed_.end() && each->first <= last + 2 * context + 1) {
      last = each->first;
      more += linesin(each->second) - 1;
      ++each;
    }
    addhunk(all, first, std::min(last + context, lines_.size() - 1), ahead);
    ahead += more;
  }
  return all;
}

}  // namespace command
