#include "options/tablememory.h"

#include <algorithm>
#include <cstring>

#include "foundation/lists.h"

namespace optxv {

/// Adds a block with room for so many bytes.
void tablememory::addblock(std::size_t size) {
  const std::size_t room = std::max(size, blocksize);
  blocks_.push_back(std::make_unique_for_overwrite<unsigned char[]>(room));
  next_ = blocks_.back().get();
  left_ = room;
}

void* tablememory::take(std::size_t size) {
  // A block begins aligned and has an aligned size, so what is left tells how far to skip.
  cut(left_ % alignment);
  return cut((size + alignment - 1) / alignment * alignment);
}

kepttext tablememory::keep(std::string_view text) {
  if (text.empty()) return {};
  const std::string_view kept = keptpart(text);
  unsigned char* const to = cut(kept.size() + 2);
  *to = static_cast<unsigned char>(kept.size());
  std::memcpy(to + 1, kept.data(), kept.size());
  to[kept.size() + 1] = 0;
  return kepttext(to);
}

}  // namespace optxv
