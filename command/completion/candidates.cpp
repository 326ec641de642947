#include "completion/candidates.h"

#include <algorithm>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

std::string bare(std::string_view text, likeness like) {
  std::string result = folded(text);
  if (like == likeness::arguments) std::ranges::replace(result, '-', '_');
  return result;
}

bool isshown(const std::string& word) {
  return !word.empty() && printable(word) == word;
}

/// The word with what was typed in place of its beginning; empty if that is not like it. A name
/// with hyphens of its own is found by no other spelling.
std::string respelled(const std::string& word, std::string_view typed, likeness like) {
  if (!bare(word, like).starts_with(bare(typed, like))) return "";
  const std::string result = std::string(typed) + word.substr(typed.size());
  return samename(bare(result, like), word) || samename(result, word) ? result : "";
}

}  // namespace

std::vector<candidate> beginning(std::span<const candidate> words, std::string_view typed,
                                 likeness like) {
  std::vector<candidate> found;
  for (const candidate& each : words)
    if (each.word.starts_with(typed) && isshown(each.word)) found.push_back(each);
  if (!found.empty()) return found;
  for (const candidate& each : words)
    if (const std::string word = respelled(each.word, typed, like); isshown(word))
      found.push_back({word, each.text});
  return found;
}

std::vector<candidate> after(std::string_view before, std::vector<candidate> words) {
  for (candidate& each : words) each.word.insert(0, before);
  return words;
}

}  // namespace command
