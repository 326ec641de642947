#include "analysis/nearest.h"

#include <algorithm>
#include <array>
#include <bit>
#include <set>

#include "text/names.h"

namespace command {
namespace {

constexpr std::size_t longestname = 255;

std::string normalized(std::string_view text) {
  std::string result = folded(text);
  std::ranges::replace(result, ' ', '_');
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

/// Whether letters and lengths alone rule out that so few slips lie between two texts: a slip adds
/// or removes one byte at most, and brings in or takes out one letter at most.
template <class Letters>
bool tooapart(std::size_t a, Letters lettersa, std::size_t b, Letters lettersb, std::size_t limit) {
  return difference(a, b) > limit ||
         static_cast<std::size_t>(std::popcount(lettersa & ~lettersb)) > limit ||
         static_cast<std::size_t>(std::popcount(lettersb & ~lettersa)) > limit;
}

using row = std::array<std::size_t, longestname + 2>;

/// The cost of turning the first i bytes of left into the first j bytes of right, from the rows
/// for fewer bytes.
std::size_t cost(std::string_view left, std::string_view right, std::size_t i, std::size_t j,
                 const row& now, const row& before, const row& earlier) {
  const std::size_t changed = before[j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1);
  std::size_t best = std::min({changed, before[j] + 1, now[j - 1] + 1});
  if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
    best = std::min(best, earlier[j - 2] + 1);
  return best;
}

}  // namespace

std::size_t slips(std::string_view left, std::string_view right, std::size_t limit) {
  const std::size_t never = limit + 1;
  if (difference(left.size(), right.size()) > limit) return never;
  row now, before, earlier;
  for (row* each : {&now, &before, &earlier}) std::fill_n(each->begin(), right.size() + 2, never);
  for (std::size_t j = 0; j <= right.size(); j++) now[j] = j;
  for (std::size_t i = 1; i <= left.size(); i++) {
    earlier = before;
    before = now;
    std::fill_n(now.begin(), right.size() + 2, never);
    now[0] = i;
    // Cells further from the diagonal than the limit cannot lead to a result within it.
    const std::size_t first = i > limit ? i - limit : 1;
    const std::size_t last = std::min(right.size(), i + limit);
    for (std::size_t j = first; j <= last; j++)
      now[j] = cost(left, right, i, j, now, before, earlier);
  }
  return std::min(now[right.size()], never);
}

nearestnames::letterset nearestnames::lettersof(std::string_view text) {
  letterset letters = 0;
  for (const char c : text) letters |= letterset{1} << (static_cast<unsigned char>(c) & 63);
  return letters;
}

std::size_t nearestnames::addword(std::string_view text,
                                  std::map<std::string, std::size_t>& places) {
  const auto [place, isnew] = places.try_emplace(std::string(text), words_.size());
  if (isnew) words_.push_back({place->first, lettersof(text)});
  return place->second;
}

nearestnames::nearestnames(const std::vector<knownname>& names) {
  std::map<std::string, std::size_t> places;
  for (const knownname& known : names) {
    if (known.name.empty() || known.name.size() > longestname) continue;
    entry next{known.name, normalized(known.name), known.owner, 0, {}};
    next.letters = lettersof(next.folded);
    for (const std::string_view text : wordsof(next.folded))
      next.words.push_back(addword(text, places));
    entries_.push_back(std::move(next));
  }
}

nearestnames::candidates nearestnames::byslips(std::string_view wrong) const {
  const std::size_t limit = allowedslips(wrong.size());
  const letterset letters = lettersof(wrong);
  candidates found;
  for (const entry& name : entries_) {
    if (tooapart(wrong.size(), letters, name.folded.size(), name.letters, limit)) continue;
    const std::size_t distance = slips(wrong, name.folded, limit);
    if (distance <= limit && distance < name.folded.size()) found.push_back({distance, &name});
  }
  const auto best = std::ranges::min_element(found, {}, &candidate::rank);
  if (best != found.end())
    std::erase_if(found, [far = best->rank + 1](const candidate& c) { return c.rank > far; });
  return found;
}

nearestnames::candidates nearestnames::bybeginning(std::string_view wrong) const {
  candidates found;
  if (wrong.size() < 3) return found;
  for (const entry& name : entries_)
    if (name.folded.starts_with(wrong)) found.push_back({name.folded.size(), &name});
  return found;
}

/// 4 for the same word, 3 for one that is cut short or has a slip in it, else 0.
std::size_t nearestnames::agreement(std::string_view wrong, letterset letters, const word& known) {
  if (wrong == known.text) return 4;
  const std::size_t shorter = std::min(wrong.size(), known.text.size());
  if (shorter < 3) return 0;
  if (wrong.substr(0, shorter) == std::string_view(known.text).substr(0, shorter)) return 3;
  const std::size_t limit = shorter < 4 ? 0 : 1;
  if (tooapart(wrong.size(), letters, known.text.size(), known.letters, limit)) return 0;
  return slips(wrong, known.text, limit) <= limit ? 3 : 0;
}

nearestnames::candidates nearestnames::bywords(std::string_view wrong) const {
  const std::vector<std::string_view> words = wordsof(wrong);
  if (words.size() < 2) return {};
  // Each word is compared once with each word that the names are made of, not with each name.
  std::vector<std::vector<std::size_t>> agreements;
  for (const std::string_view text : words) {
    std::vector<std::size_t>& each = agreements.emplace_back();
    for (const word& known : words_) each.push_back(agreement(text, lettersof(text), known));
  }
  candidates found;
  for (const entry& name : entries_) {
    std::size_t total = 0;
    for (const std::vector<std::size_t>& each : agreements) {
      std::size_t best = 0;
      for (const std::size_t place : name.words) best = std::max(best, each[place]);
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
  std::ranges::stable_sort(found, {}, &candidate::rank);
  std::vector<std::string> result;
  std::set<std::int32_t> owners;
  for (const candidate& each : found)
    if (result.size() < maximum && owners.insert(each.name->owner).second)
      result.push_back(each.name->shown);
  return result;
}

}  // namespace command
