// Where a piece of text is, and lists of such places.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace optxv {

/// A piece of text in its source. Lines and columns count from 1; columns and lengths are in bytes.
/// A line of 0 is no place. Columns and lengths that do not fit in 31 bits stay at the limit.
struct textplace {
  std::int64_t line = 0;
  std::int32_t column = 0;
  std::int32_t length = 0;

  bool known() const { return line != 0; }
  /// The place without its first bytes, and without its last ones. REQUIRES: it has as many.
  textplace after(std::size_t bytes) const {
    const auto count = static_cast<std::int32_t>(bytes);
    return {line, column + count, length - count};
  }
  textplace shorter(std::size_t bytes) const {
    return {line, column, length - static_cast<std::int32_t>(bytes)};
  }
  /// The place of a part of this text: how many bytes after its first byte, and how long.
  textplace part(std::size_t from, std::size_t size) const {
    return {line, column + static_cast<std::int32_t>(from), static_cast<std::int32_t>(size)};
  }
};

/// A place, and the number of its source (see sourcenames; 0 for none).
struct sourceplace {
  textplace at;
  std::uint16_t source = 0;
};

/// The places of the entries of another list, for those entries that have one.
class placelist {
 public:
  /// Sets the place of the entry at a 0-based position. Entries before it that have none stay so.
  void set(std::int32_t position, const sourceplace& place) {
    places_.resize(static_cast<std::size_t>(position));
    places_.push_back(place);
  }
  /// Forgets the entries from a 0-based position on.
  void truncate(std::int32_t position) {
    if (static_cast<std::size_t>(position) < places_.size())
      places_.resize(static_cast<std::size_t>(position));
  }
  /// The place of an entry; no place if it has none.
  sourceplace get(std::int32_t position) const {
    const auto index = static_cast<std::size_t>(position);
    return index < places_.size() ? places_[index] : sourceplace();
  }

 private:
  std::vector<sourceplace> places_;
};

}  // namespace optxv
