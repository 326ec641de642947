// The platform modules' own conversions between bounded strings and zero-terminated texts.
//
// KEEP: they have the names of those in pchutil and differ on purpose: a long text is cut and not
// replaced, nil is not accepted, and an empty text is a block of its own.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/pchutil.h"

namespace optxv::q9private {

/// The text of p, cut at 255 bytes. REQUIRES: p is not nil.
shortstring pchartostr(const char* p) noexcept;
shortstring strbuftostr(const char* p) noexcept;

/// Copies s and a terminator into buf, and gives buf. REQUIRES: room for length + 1 bytes.
char* strtostrbuf(std::string_view s, char* buf) noexcept;

/// A new zero-terminated copy of s; one byte for the empty text.
/// OWNS: the caller, who gives length + 1 bytes back with freemem.
char* strtopchar(std::string_view s);

using optxv::pcharconcatstr;

/// Appends src to the text that begins at index w of dest, and moves w on by the length of src. A
/// nil src does nothing. REQUIRES: dest[w] is the terminator, and there is room after it.
void pcharconcatpchar(char* dest, std::int32_t& w, const char* src) noexcept;

}  // namespace optxv::q9private
