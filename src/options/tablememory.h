// Memory for what stays as long as a table does: its options and their texts, end to end in large
// blocks, which takes less room and time than a block of the heap for each.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/strutilx.h"

namespace optxv {

/// A text that a tablememory keeps. BORROWS: the text, which is good as long as that memory.
class kepttext {
 public:
  kepttext() noexcept = default;

  std::string_view view() const noexcept { return getstring(text_); }
  operator std::string_view() const noexcept { return view(); }  // NOLINT: a text reads as a view
  /// For lists, which keep their texts in this form; nil for an empty one.
  pstring asheapstring() const noexcept { return text_; }

 private:
  friend class tablememory;
  explicit kepttext(pstring text) noexcept : text_(text) {}

  pstring text_ = nullptr;
};

/// Gives out memory that is all given back at once, at the end of this object.
class tablememory {
 public:
  /// What take gives is aligned for objects of pointers and reals.
  static constexpr std::size_t alignment = std::max(alignof(void*), alignof(double));

  /// Room for an object. Raises std::bad_alloc if there is none.
  void* take(std::size_t size);
  /// Keeps the first 255 bytes of a text, with a zero byte after them. Raises std::bad_alloc if
  /// there is no room.
  kepttext keep(std::string_view text);

 private:
  static constexpr std::size_t blocksize = 4064;  ///< one page, less what the heap adds

  /// Cuts so many bytes off the last block, or off a new one if that has fewer left.
  unsigned char* cut(std::size_t size) {
    if (size > left_) addblock(size);
    left_ -= size;
    return std::exchange(next_, next_ + size);
  }
  void addblock(std::size_t size);

  std::vector<std::unique_ptr<unsigned char[]>> blocks_;
  unsigned char* next_ = nullptr;
  std::size_t left_ = 0;  ///< in the last block, from next_ on
};

}  // namespace optxv
