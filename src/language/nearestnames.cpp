#include "language/nearestnames.h"

#include <algorithm>
#include <map>
#include <set>
#include <span>

namespace optxv {
namespace {

constexpr std::size_t longestname = 255;

// What one question may cost: rows of the search for slips, and names that share a word.
constexpr std::size_t mostrows = 4000;
constexpr std::size_t mostnames = 1000;
constexpr std::size_t mostbeginnings = 256;

std::string normalized(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c == ' ')
      c = '_';
    else if (c >= 'A' && c <= 'Z')
      c = static_cast<char>(c + ('a' - 'A'));
  return result;
}

/// How many slips a name of that length may hold and still be recognised.
std::size_t allowedslips(std::size_t length) {
  return length < 3 ? 0 : std::min<std::size_t>(3, (length + 1) / 3);
}

std::vector<std::string_view> wordsof(std::string_view text) {
  std::vector<std::string_view> words;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('_'), text.size());
    if (end > 0) words.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

std::size_t difference(std::size_t a, std::size_t b) {
  return a > b ? a - b : b - a;
}

std::size_t commonlength(std::string_view left, std::string_view right) {
  const std::size_t most = std::min(left.size(), right.size());
  return static_cast<std::size_t>(
      std::mismatch(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(most), right.begin())
          .first -
      left.begin());
}

/// The table of distances between the beginnings of a wrong name and of a known one, a row for each
/// byte of the known name. Rows stay good for another name as far as it begins alike. Cells further
/// from the diagonal than the limit cannot lead to a result within it; they keep a number above it.
class distances {
 public:
  distances(std::string_view wrong, std::size_t limit)
      : wrong_(wrong),
        limit_(limit),
        width_(wrong.size() + 2),
        cells_((wrong.size() + limit + 2) * width_, static_cast<cell>(limit + 1)) {
    for (std::size_t j = 0; j <= std::min(limit, wrong.size()); j++)
      cells_[j] = static_cast<cell>(j);
  }

  /// Fills the row of the byte `depth`, from 1, of a name, and gives the least distance in it: all
  /// names with this beginning are at least so far. REQUIRES: the rows before are filled, and none
  /// of them gave more than the limit.
  std::size_t fill(std::string_view name, std::size_t depth) {
    const std::size_t first = depth > limit_ ? depth - limit_ : 0;
    const std::size_t last = std::min(wrong_.size(), depth + limit_);
    cell* now = &cells_[depth * width_];
    auto least = static_cast<cell>(limit_ + 1);
    for (std::size_t j = first; j <= last; j++)
      least = std::min(least, now[j] = cost(name, depth, j, now));
    return least;
  }

  /// The distance of a name whose rows are all filled; a number above the limit if it is further.
  std::size_t of(std::string_view name) const {
    const bool within = difference(name.size(), wrong_.size()) <= limit_;
    return within ? cells_[name.size() * width_ + wrong_.size()] : limit_ + 1;
  }

 private:
  using cell = std::uint8_t;

  cell cost(std::string_view name, std::size_t i, std::size_t j, const cell* now) const {
    const cell* before = now - width_;
    int best = before[j] + 1;
    if (j > 0) {
      best =
          std::min({best, now[j - 1] + 1, before[j - 1] + (name[i - 1] == wrong_[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && name[i - 1] == wrong_[j - 2] && name[i - 2] == wrong_[j - 1])
        best = std::min(best, (before - width_)[j - 2] + 1);
    }
    return static_cast<cell>(std::min(best, static_cast<int>(limit_) + 1));
  }

  std::string_view wrong_;
  std::size_t limit_;
  std::size_t width_;  ///< of a row: a cell more than it has, for what is beyond the limit
  std::vector<cell> cells_;
};

/// The first of sorted rows that does not begin so. REQUIRES: the first one does. Rows that begin
/// alike are few as a rule, so that the steps are small at first.
template <class Iterator, class Text>
Iterator pastbeginning(Iterator row, Iterator end, Text text, std::string_view beginning) {
  const auto begins = [&](const auto& each) { return text(each).starts_with(beginning); };
  std::ptrdiff_t step = 1;
  while (step < end - row && begins(row[step])) row += step, step *= 2;
  return std::partition_point(row + 1, row + std::min(step, end - row), begins);
}

/// Looks in sorted rows for those within few slips of a wrong name, for a fixed amount of work.
template <class Row, class Text, class Found>
class slipsearch {
 public:
  /// found(row, distance) is called for each row, whose text(row) is at most `limit` slips away.
  slipsearch(std::string_view wrong, std::size_t limit, Text text, Found found)
      : wrong_(wrong), limit_(limit), text_(text), found_(found), table_(wrong, limit) {}

  /// Slips are rare in the first letter, so that the rows that share it come first.
  void search(std::span<const Row> rows) {
    const auto letter = [&](const Row& each) { return text_(each).substr(0, 1); };
    const auto first = std::ranges::lower_bound(rows, wrong_.substr(0, 1), {}, letter);
    const auto last = std::ranges::upper_bound(first, rows.end(), wrong_.substr(0, 1), {}, letter);
    within({first, last});
    within({rows.begin(), first});
    within({last, rows.end()});
  }

 private:
  /// Rows that begin alike are compared once in what they share, and passed over together once that
  /// is too far away.
  void within(std::span<const Row> rows) {
    std::string_view before;
    std::size_t filled = 0;
    for (auto row = rows.begin(); row != rows.end() && work_ < mostrows; work_++) {
      const std::string_view name = text_(*row);
      filled = std::min(filled, commonlength(before, name));
      before = name;
      if (fill(name, filled)) {
        if (table_.of(name) <= limit_) found_(*row, table_.of(name));
        ++row;
      } else {
        row = pastbeginning(row, rows.end(), text_, name.substr(0, filled));
      }
    }
  }

  /// Fills the rows of a name that are not filled; false, and no further, if it is too far away.
  bool fill(std::string_view name, std::size_t& filled) {
    for (; filled < name.size(); work_++)
      if (table_.fill(name, ++filled) > limit_) return false;
    return true;
  }

  std::string_view wrong_;
  std::size_t limit_;
  Text text_;
  Found found_;
  distances table_;
  std::size_t work_ = 0;
};

}  // namespace

std::size_t slips(std::string_view left, std::string_view right, std::size_t limit) {
  distances table(left, limit);
  for (std::size_t i = 1; i <= right.size(); i++)
    if (table.fill(right, i) > limit) return limit + 1;
  return table.of(right);
}

nearestnames::nearestnames(const std::vector<knownname>& names) {
  for (const knownname& known : names)
    if (!known.name.empty() && known.name.size() <= longestname)
      entries_.push_back({known.name, normalized(known.name), known.owner, entries_.size()});
  std::ranges::stable_sort(entries_, {}, &entry::folded);
  addwords();
}

void nearestnames::addwords() {
  std::map<std::string_view, std::vector<std::size_t>> found;
  for (std::size_t i = 0; i < entries_.size(); i++)
    for (const std::string_view text : wordsof(entries_[i].folded)) found[text].push_back(i);
  for (auto& [text, entries] : found) {
    for (const std::size_t each : entries) entries_[each].words.push_back(words_.size());
    words_.push_back({std::string(text), std::move(entries)});
  }
}

nearestnames::candidates nearestnames::byslips(std::string_view wrong) const {
  const auto text = [](const entry& each) -> std::string_view { return each.folded; };
  candidates found;
  std::size_t best = longestname;
  // A wider search costs far more, so that it waits until a narrower one has too few names.
  const std::size_t most = allowedslips(wrong.size());
  for (std::size_t limit = 1; limit <= most && limit <= best + 1 && found.size() < maximum;
       limit++) {
    found.clear();
    const auto take = [&](const entry& each, std::size_t distance) {
      if (distance >= each.folded.size()) return;
      found.push_back({distance, &each});
      best = std::min(best, distance);
    };
    slipsearch<entry, decltype(text), decltype(take)>(wrong, limit, text, take).search(entries_);
  }
  return found;
}

nearestnames::candidates nearestnames::bybeginning(std::string_view wrong) const {
  candidates found;
  if (wrong.size() < 3) return found;
  for (auto name = std::ranges::lower_bound(entries_, wrong, {}, &entry::folded);
       name != entries_.end() && name->folded.starts_with(wrong) && found.size() < mostbeginnings;
       ++name)
    found.push_back({name->folded.size(), &*name});
  return found;
}

/// 4 for the same word, 3 for one that is cut short or has a slip in it.
nearestnames::agreements nearestnames::agreeing(std::string_view wrong) const {
  std::map<std::size_t, std::size_t> found;
  const auto positionof = [&](const word& each) {
    return static_cast<std::size_t>(&each - words_.data());
  };
  const auto from = [&](std::string_view text) {
    return std::ranges::lower_bound(words_, text, {}, &word::text);
  };
  constexpr std::size_t shortestpiece = 3, shortestslip = 4;
  for (std::size_t length = shortestpiece; length < wrong.size(); length++)
    if (const auto known = from(wrong.substr(0, length));
        known != words_.end() && known->text == wrong.substr(0, length))
      found[positionof(*known)] = 3;
  for (auto known = from(wrong);
       known != words_.end() && known->text.starts_with(wrong) && found.size() < mostbeginnings;
       ++known)
    if (known->text == wrong || wrong.size() >= shortestpiece)
      found[positionof(*known)] = known->text == wrong ? 4 : 3;
  const auto text = [](const word& each) -> std::string_view { return each.text; };
  const auto take = [&](const word& each, std::size_t) {
    if (each.text.size() >= shortestslip) found.try_emplace(positionof(each), 3);
  };
  if (wrong.size() >= shortestslip)
    slipsearch<word, decltype(text), decltype(take)>(wrong, 1, text, take).search(words_);
  return {found.begin(), found.end()};
}

/// The names that have an agreeing word; of too many, those with the rarest words.
std::vector<std::size_t> nearestnames::sharing(const std::vector<agreements>& all) const {
  std::vector<std::size_t> shared;
  for (const agreements& each : all)
    for (const auto& [position, rank] : each) shared.push_back(position);
  std::ranges::sort(shared, {}, [&](std::size_t at) { return words_[at].entries.size(); });
  std::set<std::size_t> names;
  for (const std::size_t each : shared)
    for (const std::size_t name : words_[each].entries)
      if (names.size() < mostnames)
        names.insert(name);
      else
        return {names.begin(), names.end()};
  return {names.begin(), names.end()};
}

nearestnames::candidates nearestnames::bywords(std::string_view wrong) const {
  const std::vector<std::string_view> words = wordsof(wrong);
  if (words.size() < 2) return {};
  std::vector<agreements> all;
  for (const std::string_view text : words) all.push_back(agreeing(text));
  const auto rankin = [](const agreements& known, std::size_t position) {
    const auto found =
        std::ranges::lower_bound(known, position, {}, &std::pair<std::size_t, std::size_t>::first);
    return found != known.end() && found->first == position ? found->second : 0;
  };
  candidates found;
  for (const std::size_t position : sharing(all)) {
    const entry& name = entries_[position];
    std::size_t total = 0;
    for (const agreements& each : all) {
      std::size_t best = 0;
      for (const std::size_t place : name.words) best = std::max(best, rankin(each, place));
      total += best;
    }
    const std::size_t full = 4 * std::max(words.size(), name.words.size());
    if (total * 20 >= full * 11) found.push_back({1000 - total * 1000 / full, &name});
  }
  return found;
}

std::vector<std::string> nearestnames::nearest(std::string_view wrong) const {
  if (wrong.empty() || wrong.size() > longestname) return {};
  const std::string text = normalized(wrong);
  candidates found = byslips(text);
  if (found.empty()) found = bybeginning(text);
  if (found.empty()) found = bywords(text);
  std::ranges::sort(
      found, {}, [](const candidate& each) { return std::pair(each.rank, each.name->position); });
  std::vector<std::string> result;
  std::set<std::int32_t> owners;
  for (const candidate& each : found)
    if (result.size() < maximum && owners.insert(each.name->owner).second)
      result.push_back(each.name->shown);
  return result;
}

}  // namespace optxv
