// Between bounded strings and the zero-terminated texts of callers: pchartostr for every text that
// comes in, strpcopy for every text that goes out.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"

namespace optxv {

/// Bytes before the terminator; 0 for nil.
std::int64_t pcharlen(const char* p) noexcept;

namespace detail {
/// The text of p, or overflow if it has 255 bytes or more; empty for nil.
std::string_view boundedpchar(const char* p, std::string_view overflow) noexcept;
}  // namespace detail

/// The text of p where it stands; see pchartostr. BORROWS: p.
inline std::string_view pchartoview(const char* p) noexcept {
  return detail::boundedpchar(p, "PCharToStr Overflow");
}

/// The text of p, empty for nil, cut at Max. No more than 255 bytes of p are looked at.
///
/// KEEP: 254 bytes are the most: a text of 255 bytes or more is not cut but replaced by
/// "PCharToStr Overflow".
template <int Max = 255>
boundedstring<Max> pchartostr(const char* p) noexcept {
  return boundedstring<Max>(pchartoview(p));
}

/// The same, into s, with "ConvertPChar Overflow".
template <int Max>
void convertpchar(const char* p, boundedstring<Max>& s) noexcept {
  s.assign(detail::boundedpchar(p, "ConvertPChar Overflow"));
}

/// Copies s and a terminator. REQUIRES: room for length + 1 bytes; nothing is checked.
void strpcopy(char* dest, std::string_view s) noexcept;

/// Copies the first n bytes of s, none for an n below 1, and a terminator.
/// REQUIRES: room for n + 1 bytes.
void strpcopyn(char* dest, std::string_view s, std::int32_t n) noexcept;

/// A new zero-terminated copy of s, nil for the empty text.
/// OWNS: the caller, who gives length + 1 bytes back with freemem.
char* strtopchar(std::string_view s);

/// A new empty text that is not nil. OWNS: the caller, who gives 1 byte back with freemem.
char* emptytopchar();

/// Puts s and a terminator at index w of dest and moves w on by the length.
/// KEEP: an empty s does nothing, not even the terminator.
/// REQUIRES: room for w + length + 1 bytes.
void pcharconcatstr(char* dest, std::int32_t& w, std::string_view s) noexcept;

/// The same for a zero-terminated text. A nil src does nothing. KEEP: an empty one does store the
/// terminator.
void pcharconcatpchar(char* dest, std::int32_t& w, const char* src) noexcept;

}  // namespace optxv
