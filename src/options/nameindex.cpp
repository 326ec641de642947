#include "options/nameindex.h"

#include <algorithm>
#include <cstring>

namespace optxv {

namespace {

constexpr std::size_t pathletters = 3;   // what each word of a path key must give
constexpr std::size_t minosfirst = 3;    // letters that count of a first word under Minos
constexpr std::size_t minosletters = 4;  // and of each later word

/// Bit 5 is what the two cases of a letter differ by. Without it some other bytes are equal too,
/// of which names have none.
std::uint64_t mix(std::uint64_t hash, std::uint64_t bytes) {
  constexpr std::uint64_t casebits = 0x2020202020202020;
  hash = (hash ^ (bytes | casebits)) * 0x9E3779B97F4A7C15U;  // 2^64 over the golden ratio (Knuth)
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

void nameindex::add(std::int32_t position) {
  const std::string_view name = names_.getname(position);
  if (name.empty()) return;
  positions_.add(foldedhash(name), position,
                 [&](std::int32_t other) { return struequal(names_.getname(other), name); });
}

std::int32_t nameindex::find(std::string_view name) const {
  if (name.empty() || positions_.empty()) return -1;
  return positions_.find(
      foldedhash(name), [&](std::int32_t other) { return struequal(names_.getname(other), name); });
}

// --- Rules -------------------------------------------------------------------------------------

bool pathkey(std::string_view name, std::string& key) {
  std::string_view word;
  for (bool more = true; more;) {
    more = takeword(name, word);
    if (word.size() < pathletters) return false;
    key.append(word, 0, pathletters);
  }
  return true;
}

bool minoskey(std::string_view name, std::string& key) {
  std::string_view word;
  bool more = takeword(name, word);
  key.append(word, 0, minosfirst);
  while (more) {
    more = takeword(name, word);
    key.append(1, '_').append(word, 0, minosletters);
  }
  return true;
}

namespace {

constexpr std::size_t keystep = 8;
constexpr std::size_t keystart = sizeof(std::int32_t) + 1;  // after the position and the length

}  // namespace

std::int32_t ruleindex::positionat(std::int32_t place) const {
  return bytesat<std::int32_t>(keys_.data() + static_cast<std::size_t>(place) * keystep);
}

std::string_view ruleindex::keyat(std::int32_t place) const {
  const char* const text = keys_.data() + static_cast<std::size_t>(place) * keystep + keystart;
  return {text, static_cast<unsigned char>(text[-1])};
}

void ruleindex::add(std::int32_t position) {
  std::string key;
  if (!reduce_(names_.getname(position), key)) return;
  const std::size_t start = keys_.size();
  keys_.resize(start + (keystart + key.size() + keystep - 1) / keystep * keystep);
  char* const to = keys_.data() + start;
  std::memcpy(to, &position, sizeof position);
  to[sizeof position] = static_cast<char>(key.size());
  std::copy(key.begin(), key.end(), to + keystart);
  const auto place = static_cast<std::int32_t>(start / keystep);
  if (places_.add(foldedhash(key), place,
                  [&](std::int32_t other) { return struequal(keyat(other), key); }))
    return;
  keys_.resize(start);
}

std::int32_t ruleindex::find(std::string_view name) {
  for (; entered_ < names_.count(); ++entered_) add(entered_);
  std::string key;
  if (!reduce_(name, key)) return -1;
  const std::int32_t place = places_.find(
      foldedhash(key), [&](std::int32_t other) { return struequal(keyat(other), key); });
  return place >= 0 ? positionat(place) : -1;
}

}  // namespace optxv
