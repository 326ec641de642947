// The text type of the whole library: a length byte, then at most 255 bytes.
//
// All text inside the library is held in bounded strings and travels between functions as
// std::string_view. A text that does not fit is cut at the destination's maximum, silently, and
// that cut happens here and nowhere else: where a bounded string is assigned or appended to.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace optxv {

/// A text that a message puts between two double quotes; see concat.
struct quoted {
  std::string_view text;
};

/// A text of at most Max bytes (1 to 255), with its length in the first byte.
///
/// The bytes carry no encoding and any value may occur, zero included; nothing is terminated.
/// Positions count from 1 to length(). Only the bytes in use are ever read or copied; those after
/// them are never initialised, so a temporary text costs no more than what it holds.
///
/// INVARIANT: length() <= Max.
/// KEEP: the layout (length byte, then Max bytes, no padding) is the calling convention of the
/// exported functions: a caller's buffer of 256 bytes is taken for a boundedstring<255>.
template <int Max = 255>
class boundedstring {
  static_assert(Max >= 1 && Max <= 255);

 public:
  static constexpr int maximum = Max;

  boundedstring() noexcept : length_(0) {}
  boundedstring(std::string_view text) noexcept { assign(text); }  // NOLINT: texts convert freely
  boundedstring(const char* text) noexcept { assign(text); }       // NOLINT: so do literals
  boundedstring(const boundedstring& other) noexcept { assign(other.view()); }
  boundedstring& operator=(const boundedstring& other) noexcept { return assign(other.view()); }
  boundedstring& operator=(std::string_view text) noexcept { return assign(text); }
  boundedstring& operator=(const char* text) noexcept { return assign(text); }
  ~boundedstring() = default;

  int length() const noexcept { return length_; }
  bool empty() const noexcept { return length_ == 0; }
  std::string_view view() const noexcept { return {data_, length_}; }
  operator std::string_view() const noexcept { return view(); }  // NOLINT: a text reads as a view

  /// The byte at a position. REQUIRES: 1 <= position <= length().
  char operator[](int position) const noexcept { return data_[position - 1]; }
  char& operator[](int position) noexcept { return data_[position - 1]; }
  char last() const noexcept { return data_[length_ - 1]; }

  /// Takes the first Max bytes of text, which may overlap this string.
  boundedstring& assign(std::string_view text) noexcept {
    const std::size_t count = std::min<std::size_t>(text.size(), Max);
    if (count != 0) std::memmove(data_, text.data(), count);
    length_ = static_cast<unsigned char>(count);
    return *this;
  }

  /// Appends as much of text as fits; text may be this string itself.
  boundedstring& append(std::string_view text) noexcept {
    const std::size_t count = std::min<std::size_t>(text.size(), Max - length_);
    if (count != 0) std::memmove(data_ + length_, text.data(), count);
    length_ = static_cast<unsigned char>(length_ + count);
    return *this;
  }
  boundedstring& append(char c) noexcept { return append(std::string_view(&c, 1)); }
  boundedstring& append(quoted part) noexcept { return append('"').append(part.text).append('"'); }

  /// Sets the length to min(count, Max), a negative count to 0, without touching the bytes.
  void setlength(int count) noexcept {
    length_ = static_cast<unsigned char>(std::clamp(count, 0, Max));
  }
  void clear() noexcept { length_ = 0; }

  /// The bytes after the length byte; Max of them may be written before a setlength.
  char* data() noexcept { return data_; }
  const char* data() const noexcept { return data_; }

  friend bool operator==(const boundedstring& a, std::string_view b) noexcept {
    return a.view() == b;
  }
  friend bool operator==(const boundedstring& a, const boundedstring& b) noexcept {
    return a.view() == b.view();
  }
  friend bool operator==(const boundedstring& a, const char* b) noexcept { return a.view() == b; }

 private:
  unsigned char length_;
  char data_[Max];
};

/// The bounded string with no stated maximum: 255 bytes.
using shortstring = boundedstring<>;
static_assert(sizeof(shortstring) == 256 && std::is_standard_layout_v<shortstring>);

/// The parts one after the other, cut at 255 bytes. A part is a text, a char or a quoted.
template <class... Parts>
shortstring concat(const Parts&... parts) noexcept {
  shortstring result;
  (result.append(parts), ...);
  return result;
}

/// A set of byte values. Empty at first; usable in constant expressions. A byte for each value
/// makes the question for one a single look, since readers ask for every character.
class charset {
 public:
  constexpr charset() = default;
  /// The set of the bytes of a text.
  constexpr explicit charset(std::string_view members) {
    for (const char member : members) add(member);
  }
  constexpr void add(char member) { members_[static_cast<unsigned char>(member)] = true; }
  /// Adds all bytes from first to last, both included, as unsigned values.
  constexpr void addrange(char first, char last) {  // unreached: the compiler runs it
    for (int c = static_cast<unsigned char>(first); c <= static_cast<unsigned char>(last); ++c)
      add(static_cast<char>(c));
  }
  constexpr bool has(char member) const { return members_[static_cast<unsigned char>(member)]; }
  constexpr void clear() { members_ = {}; }
  friend constexpr bool operator==(const charset&, const charset&) = default;

 private:
  std::array<bool, 256> members_{};
};

}  // namespace optxv
