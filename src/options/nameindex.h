// An index of the names in a list, case folded, so that finding a name costs the same in a table of
// ten options as in one of ten thousand.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "foundation/lists.h"

namespace optxv {

/// Finds the first entry of a list whose name equals a text, ASCII case ignored. The result is that
/// of the list's own linear indexof; it is found by an open-addressing hash table of (hash,
/// position) with linear probing, at most three quarters full.
///
/// BORROWS: the list, which must outlive the index; names are not copied.
/// INVARIANT: of several entries with equal names the index holds the one that was entered first.
/// REQUIRES: an entry that was entered keeps its position and name.
class nameindex {
 public:
  explicit nameindex(const txcustomstringlist& names) : names_(names) {}

  /// Enters the entry at a 0-based position, unless one of the same name is held already. An empty
  /// name is never entered: no text equals it, as in the lists themselves.
  void add(std::int32_t position);

  /// The position of the first entry of that name, or -1.
  std::int32_t find(std::string_view name) const;

 private:
  struct slot {
    std::uint32_t hash;
    std::int32_t position;  ///< -1 in an empty slot
  };

  /// The slot that holds the name, or the empty one where it belongs.
  std::size_t seek(std::uint32_t hash, std::string_view name) const;
  void grow();

  const txcustomstringlist& names_;
  std::vector<slot> slots_;
  std::size_t used_ = 0;
};

}  // namespace optxv
