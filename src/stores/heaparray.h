// Arrays of the pool allocator, and the few steps on sizes and bytes that all stores share.
#pragma once

#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>

#include "foundation/runtime.h"
#include "listing/zmaheap.h"

namespace optxv {

/// A number of bytes as the allocator takes it. Raises eoutofmemory above 2147483647.
inline std::int32_t heapsize(std::int64_t bytes) {
  if (bytes > std::numeric_limits<std::int32_t>::max()) raisecause(cause::allocation);
  return static_cast<std::int32_t>(bytes);
}

/// Adds 1 to a count. Raises eoutofmemory if it is at the end of its range.
inline void countup(std::int32_t& count) {
  if (count == std::numeric_limits<std::int32_t>::max()) raisecause(cause::allocation);
  ++count;
}

/// Copies size bytes, which may overlap; either side may be nil if there are none.
inline void copydata(void* to, const void* from, std::int32_t size) noexcept {
  if (size > 0) std::memmove(to, from, static_cast<std::size_t>(size));
}

/// An array of plain values, all zero at the start.
///
/// OWNS: one block of xgetmem (or nothing), which goes back with the array.
template <class T>
class heaparray {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

 public:
  heaparray() = default;
  /// Raises eoutofmemory, also for an array that the allocator cannot have: above 2147483647 bytes.
  /// REQUIRES: count >= 0.
  explicit heaparray(std::int64_t count)
      // NOLINTNEXTLINE(bugprone-sizeof-expression): an item may well be a pointer
      : bytes_(heapsize(count * static_cast<std::int64_t>(sizeof(T)))),
        items_(static_cast<T*>(xgetmem(bytes_))) {
    std::uninitialized_value_construct_n(items_, count);
  }
  heaparray(heaparray&& other) noexcept
      : bytes_(other.bytes_), items_(std::exchange(other.items_, nullptr)) {}
  heaparray& operator=(heaparray&& other) noexcept {
    std::swap(bytes_, other.bytes_);
    std::swap(items_, other.items_);
    return *this;
  }
  ~heaparray() {
    if (items_ != nullptr) xfreemem(items_, bytes_);
  }

  /// The first item, nil if there is no array.
  T* get() const noexcept { return items_; }
  T& operator[](std::int64_t i) const noexcept { return items_[i]; }

 private:
  std::int32_t bytes_ = 0;
  T* items_ = nullptr;
};

}  // namespace optxv
