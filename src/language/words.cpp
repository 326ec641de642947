#include "language/words.h"

#include <algorithm>
#include <cstdint>

#include "foundation/strutilx.h"

namespace optxv {

namespace {

constexpr std::size_t longestword = 5;

/// A short word in upper case as one number, so that words can be compared as numbers.
constexpr std::uint64_t fold(std::string_view word) {
  std::uint64_t folded = 0;
  for (const char c : word) folded = folded << 8 | static_cast<unsigned char>(upcase(c));
  return folded;
}

constexpr charset separators("\t ,");

}  // namespace

int checkboolean(std::string_view word) {
  if (word.size() > longestword || word.starts_with('\0')) return 2;
  switch (fold(word)) {
    case fold("1"):
    case fold("Y"):
    case fold("YES"):
    case fold("ON"):
    case fold("TRUE"):
    case fold("T"):
      return 0;
    case fold("0"):
    case fold("N"):
    case fold("NO"):
    case fold("OFF"):
    case fold("FALSE"):
    case fold("F"):
      return 1;
    default:
      return 2;
  }
}

bool needsquotes(std::string_view value) {
  return value.empty() ||
         std::any_of(value.begin(), value.end(), [](char c) { return separators.has(c); });
}

shortstring strexternal(std::string_view value) {
  return needsquotes(value) ? concat(quoted{value}) : shortstring(value);
}

}  // namespace optxv
