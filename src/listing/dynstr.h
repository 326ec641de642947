// A text that grows without the bound of the bounded string.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/runtime.h"
#include "foundation/visibility.h"

namespace optxv {

/// A growable text of plain bytes, without a terminator.
///
/// Room is taken for what is needed, rounded up to the next 256 bytes, so a long run of small
/// additions asks the system once per 256 bytes; it is never given back before the end, and a
/// cleared text reuses it. Where memory runs out, or a text would pass 2147483647 bytes, an
/// `exception` is raised and the text is empty. Nothing else fails.
///
/// INVARIANT: 0 <= length() <= allocated().
class OPTXV_EXPORT tdynamicstr : public tobject {
 public:
  /// An empty text with room for getallocsize(size) bytes, none for a size of 0; a negative size
  /// counts as 1.
  explicit tdynamicstr(std::int32_t size = 0);
  tdynamicstr(const tdynamicstr&) = delete;
  tdynamicstr& operator=(const tdynamicstr&) = delete;
  ~tdynamicstr() override;

  std::int32_t length() const noexcept { return length_; }
  std::int32_t allocated() const noexcept { return allocated_; }
  /// BORROWS: the text, until the next change.
  std::string_view view() const noexcept { return {data_, static_cast<std::size_t>(length_)}; }

  /// Empties the text and keeps the room.
  void clear() noexcept { length_ = 0; }

  /// The room that a text of n bytes gets: the next multiple of 256 above n, at most 2147483647.
  /// KEEP: a multiple of 256 gets a further 256.
  static std::int32_t getallocsize(std::int32_t n) noexcept;

  /// The byte at index i, counted from 0; a blank outside the text.
  char getch(std::int32_t i) const noexcept { return i >= 0 && i < length_ ? data_[i] : ' '; }
  /// The byte at position i, counted from 1; a blank outside the text.
  char getchar(std::int32_t i) const noexcept {
    return i >= 1 && i <= length_ ? data_[i - 1] : ' ';
  }
  /// Replaces the byte at index i, counted from 0; does nothing outside the text.
  void setch(std::int32_t i, char c) noexcept {
    if (i >= 0 && i < length_) data_[i] = c;
  }
  /// The bytes, without a terminator; nil before there is any room. BORROWS: as view().
  char* getcharp() noexcept { return data_; }

  /// Append n blanks, the n bytes at p, a text, a number in decimal. An n below 1 does nothing.
  /// What is appended may lie in this text. REQUIRES: n bytes at p.
  void addbl(std::int32_t n);
  void addpchar(const char* p, std::int32_t n);
  void addstr(std::string_view s);
  void addint(std::int32_t n);

  /// Makes this a copy of the other text; the room grows if it has to.
  void assign(const tdynamicstr& other);

  /// count bytes from position start on, with blanks for positions past the text, so that the
  /// result has the length asked for: at most 255, and 0 if start or count is below 1.
  shortstring getstr(std::int32_t start, std::int32_t count) const noexcept;

  /// Prints the text to standard output. Raises einouterror if a write, or an I/O operation before
  /// it that has not been asked about, failed.
  void write() const;

 private:
  /// Room for added more bytes. A failure loses the text.
  void grow(std::size_t added);
  void resize(std::int32_t needed);

  char* data_ = nullptr;
  std::int32_t allocated_ = 0;
  std::int32_t length_ = 0;
};

}  // namespace optxv
