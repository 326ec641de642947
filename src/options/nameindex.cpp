#include "options/nameindex.h"

#include <algorithm>

namespace optxv {

namespace {

constexpr std::size_t pathletters = 3;   // what each word of a path key must give
constexpr std::size_t minosfirst = 3;    // letters that count of a first word under Minos
constexpr std::size_t minosletters = 4;  // and of each later word

std::uint64_t mix(std::uint64_t hash, std::uint64_t bytes) {
  hash = (hash ^ upcaseeight(bytes)) * 0x9E3779B97F4A7C15U;  // 2^64 over the golden ratio (Knuth)
  return hash ^ hash >> 32;
}

/// Takes the first word off a text, and the '_' after it; false if it was the last.
bool takeword(std::string_view& text, std::string_view& word) {
  word = text.substr(0, text.find('_'));
  const bool more = word.size() < text.size();
  text.remove_prefix(word.size() + (more ? 1 : 0));
  return more;
}

}  // namespace

std::uint32_t foldedhash(std::string_view text) {
  constexpr std::size_t step = sizeof(std::uint64_t);
  std::uint64_t hash = text.size();
  for (std::size_t i = 0; i + step < text.size(); i += step)
    hash = mix(hash, bytesat<std::uint64_t>(text.data() + i));
  return static_cast<std::uint32_t>(mix(hash, lasteight(text.data(), text.size())));
}

void positiontable::grow() {
  std::vector<slot> old(slots_.empty() ? 16 : slots_.size() * 2, slot{0, -1});
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const slot& entry : old) {
    if (entry.position < 0) continue;
    std::size_t at = entry.hash & mask;  // the keys in the table differ, so the first hole will do
    while (slots_[at].position >= 0) at = (at + 1) & mask;
    slots_[at] = entry;
  }
}

bool pathname::reduce(std::string_view name, std::string& reduced) {
  std::string_view word;
  for (bool more = true; more;) {
    more = takeword(name, word);
    if (word.size() < pathletters) return false;
    reduced.append(word, 0, pathletters);
  }
  return true;
}

bool minosname::reduce(std::string_view name, std::string& reduced) {
  std::string_view word;
  bool more = takeword(name, word);
  reduced.append(word, 0, minosfirst);
  while (more) {
    more = takeword(name, word);
    reduced.append(1, '_').append(word, 0, minosletters);
  }
  return true;
}

template <class Rule>
bool ruleindex<Rule>::matches(std::int32_t position, const typename Rule::key& reduced) const {
  typename Rule::key other;
  return Rule::reduce(names_.getname(position), other) && struequal(other, reduced);
}

template <class Rule>
void ruleindex<Rule>::add(std::int32_t position) {
  typename Rule::key reduced;
  if (!Rule::reduce(names_.getname(position), reduced)) return;
  positions_.add(foldedhash(reduced), position,
                 [&](std::int32_t other) { return matches(other, reduced); });
}

template <class Rule>
std::int32_t ruleindex<Rule>::find(std::string_view name) const {
  typename Rule::key reduced;
  if (!Rule::reduce(name, reduced)) return -1;
  return positions_.find(foldedhash(reduced),
                         [&](std::int32_t other) { return matches(other, reduced); });
}

template class ruleindex<wholename>;
template class ruleindex<pathname>;
template class ruleindex<minosname>;

}  // namespace optxv
