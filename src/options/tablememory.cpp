#include "options/tablememory.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "foundation/lists.h"

namespace optxv {

/// Cuts so many bytes off the last block, or off a new one if that has fewer left.
unsigned char* tablememory::cut(std::size_t size) {
  if (size > left_) {
    const std::size_t room = std::max(size, blocksize);
    blocks_.push_back(std::make_unique_for_overwrite<unsigned char[]>(room));
    next_ = blocks_.back().get();
    left_ = room;
  }
  left_ -= size;
  return std::exchange(next_, next_ + size);
}

void* tablememory::take(std::size_t size) {
  // A block begins aligned and has an aligned size, so what is left tells how far to skip.
  cut(left_ % alignment);
  return cut((size + alignment - 1) / alignment * alignment);
}

kepttext tablememory::keep(std::string_view text) {
  if (text.empty()) return {};
  const std::string_view kept = keptpart(text);
  unsigned char* const to = cut(kept.size() + 1);
  *to = static_cast<unsigned char>(kept.size());
  std::memcpy(to + 1, kept.data(), kept.size());
  return kepttext(to);
}

}  // namespace optxv
