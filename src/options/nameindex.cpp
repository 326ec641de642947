#include "options/nameindex.h"

#include "foundation/strutilx.h"

namespace optxv {

namespace {

std::uint64_t mix(std::uint64_t hash, std::uint64_t bytes) {
  hash = (hash ^ upcaseeight(bytes)) * 0x9E3779B97F4A7C15U;  // 2^64 over the golden ratio (Knuth)
  return hash ^ hash >> 32;
}

/// A hash of the text that ignores the case of letters. The last eight bytes go in together, even
/// if some of them have gone in before.
std::uint32_t foldedhash(std::string_view text) {
  constexpr std::size_t step = sizeof(std::uint64_t);
  std::uint64_t hash = text.size();
  for (std::size_t i = 0; i + step < text.size(); i += step)
    hash = mix(hash, bytesat<std::uint64_t>(text.data() + i));
  return static_cast<std::uint32_t>(mix(hash, lasteight(text.data(), text.size())));
}

}  // namespace

std::size_t nameindex::seek(std::uint32_t hash, std::string_view name) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  for (; slots_[at].position >= 0; at = (at + 1) & mask)
    if (slots_[at].hash == hash && struequal(names_.getname(slots_[at].position), name)) break;
  return at;
}

void nameindex::grow() {
  std::vector<slot> old(slots_.empty() ? 16 : slots_.size() * 2, slot{0, -1});
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const slot& entry : old) {
    if (entry.position < 0) continue;
    std::size_t at = entry.hash & mask;  // names in the index differ, so the first hole will do
    while (slots_[at].position >= 0) at = (at + 1) & mask;
    slots_[at] = entry;
  }
}

void nameindex::add(std::int32_t position) {
  const std::string_view name = names_.getname(position);
  if (name.empty()) return;
  if (used_ * 4 >= slots_.size() * 3) grow();
  const std::uint32_t hash = foldedhash(name);
  slot& place = slots_[seek(hash, name)];
  if (place.position >= 0) return;
  place = {hash, position};
  ++used_;
}

std::int32_t nameindex::find(std::string_view name) const {
  if (used_ == 0 || name.empty()) return -1;
  return slots_[seek(foldedhash(name), name)].position;
}

}  // namespace optxv
