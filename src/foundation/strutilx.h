// Work on texts: heap strings, comparison, search, case, padding, tokens, and the text form of
// numbers in both directions.
//
// Texts are 8-bit bytes without an encoding. Letters are a to z and A to Z only; bytes above 127
// are never folded, and nothing depends on the locale. Positions count from 1; 0 means not found. A
// result that is a text is cut silently at 255 bytes. Nothing here raises, except what allocates a
// heap string (eoutofmemory).
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "foundation/boundedstring.h"
#include "foundation/visibility.h"

namespace optxv {

// Case of one byte -------------------------------------------------------------------------------

/// The capital of a to z; any other byte as it is.
constexpr char upcase(char c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}
/// The small letter of A to Z; any other byte as it is.
constexpr char locase(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}
constexpr char lowcase(char c) noexcept {
  return locase(c);
}
/// The bytes of one number of that type. REQUIRES: that many bytes at p.
template <class Number>
Number bytesat(const char* p) noexcept {
  Number bytes;
  std::memcpy(&bytes, p, sizeof bytes);
  return bytes;
}
/// The last eight bytes of a text as one number. A shorter text gives a number that no other text
/// of its length gives, with some of its bytes in it twice.
inline std::uint64_t lasteight(const char* p, std::size_t n) noexcept {
  if (n >= 8) return bytesat<std::uint64_t>(p + n - 8);
  if (n >= 4)
    return bytesat<std::uint32_t>(p) | std::uint64_t{bytesat<std::uint32_t>(p + n - 4)} << 32;
  if (n == 0) return 0;
  return static_cast<std::uint64_t>(static_cast<unsigned char>(p[0])) |
         static_cast<std::uint64_t>(static_cast<unsigned char>(p[n / 2])) << 8 |
         static_cast<std::uint64_t>(static_cast<unsigned char>(p[n - 1])) << 16;
}
/// upcase of eight bytes at once, for hashes and comparisons of whole names. The top bit of each
/// byte of `small` says whether that byte is a to z, found by adding to its low seven bits what
/// carries into the top one.
constexpr std::uint64_t upcaseeight(std::uint64_t bytes) noexcept {
  constexpr std::uint64_t ones = 0x0101010101010101;
  constexpr std::uint64_t tops = 0x80 * ones;
  const std::uint64_t low = bytes & ~tops;
  const std::uint64_t froma = low + (0x80 - 'a') * ones;
  const std::uint64_t behindz = low + (0x80 - 'z' - 1) * ones;
  const std::uint64_t small = froma & ~behindz & ~bytes & tops;
  return bytes ^ (small >> 2);  // 0x80 becomes 0x20, the distance of a letter to its capital
}

// Parts of a text --------------------------------------------------------------------------------

/// At most count bytes of s from position start on; empty if start is past the end or count is
/// below 1. A start below 1 breaks the rule for positions and gives the empty text.
/// BORROWS: the result lies in s.
std::string_view copy(std::string_view s, int start, int count) noexcept;

/// Position of the first occurrence of sub in s, 0 if none. KEEP: an empty sub gives 1, while
/// lstrpos gives 0 for it.
int pos(std::string_view sub, std::string_view s) noexcept;

/// Removes count bytes, forced into 0 to 255 and cut at the end, from position start on. Does
/// nothing if there is no such position.
template <int Max>
void delete_(boundedstring<Max>& s, int start, int count) noexcept {
  if (start < 1 || start > s.length()) return;
  const std::string_view tail = s.view().substr(static_cast<std::size_t>(start - 1));
  const std::string_view rest =
      tail.substr(std::min(static_cast<std::size_t>(std::clamp(count, 0, 255)), tail.size()));
  s.setlength(start - 1);
  s.append(rest);
}

/// Puts source before the byte at position, which is forced into 1 to length + 1. What is
/// pushed beyond the maximum of s is lost. source may lie in s.
template <int Max>
void insert(std::string_view source, boundedstring<Max>& s, int position) noexcept {
  const auto start = static_cast<std::size_t>(std::clamp(position, 1, s.length() + 1) - 1);
  boundedstring<Max> result(s.view().substr(0, start));
  result.append(source).append(s.view().substr(start));
  s = result;
}

// Comparison -------------------------------------------------------------------------------------

/// The first difference a[i] - b[i] of bytes as unsigned values over the common length; if there is
/// none, the length of a minus that of b. Unlike the C function of this name, so that one is
/// barred.
int strcmp(std::string_view a, std::string_view b) noexcept;
int strcmp(const char*, const char*) = delete;
/// The same on capitals.
int strucmp(std::string_view a, std::string_view b) noexcept;

inline bool strequal(std::string_view a, std::string_view b) noexcept {
  return a == b;
}

namespace detail {
/// Whether n bytes are the same letters, case ignored. REQUIRES: n > 0.
OPTXV_EXPORT bool foldedequal(const char* a, const char* b, std::size_t n) noexcept;
}  // namespace detail

/// Equal length and the same bytes, case of letters ignored. The quick tests at the start refuse
/// nearly every name of a table that is searched.
inline bool struequal(std::string_view a, std::string_view b) noexcept {
  if (a.size() != b.size()) return false;
  if (a.empty()) return true;
  if (upcase(a.back()) != upcase(b.back())) return false;
  return detail::foldedequal(a.data(), b.data(), a.size());
}

inline bool _Q9streq_ic(std::string_view a, std::string_view b) noexcept {
  return struequal(a, b);
}
inline int _Q9strcmp(std::string_view a, std::string_view b) noexcept {
  return strcmp(a, b);
}

/// A text compared with a character: -1 for the empty text; the difference of the first bytes; if
/// that is 0, 1 for a text of more than one byte.
int _Q9stccmp(std::string_view s, char c) noexcept;

/// Puts names with numbers at their end in the order of the numbers: case ignored before the
/// digits, then the digits as numbers of equal width.
///
/// KEEP: only as many bytes before the digits as both have are compared, so ab1 and abc1 are
/// equal here.
int strucmpnum(std::string_view a, std::string_view b) noexcept;

// Heap strings -----------------------------------------------------------------------------------

/// A heap copy of a text at its exact size: a length byte, then the text. Nil is the empty text.
using pstring = unsigned char*;

/// A heap copy of the first 255 bytes of s, nil for the empty text. A zero byte follows the copy,
/// so that it can be shown to C as it is. OWNS: the caller; disposestring gives it back.
OPTXV_EXPORT pstring newstring(std::string_view s);

/// Gives back a heap string; nil does nothing.
OPTXV_EXPORT void disposestring(pstring p) noexcept;

/// The text of a heap string, empty for nil. BORROWS: good until the string is disposed of.
inline std::string_view getstring(const unsigned char* p) noexcept {
  return p == nullptr ? std::string_view()
                      : std::string_view(reinterpret_cast<const char*>(p) + 1, *p);
}

/// Replaces the string in p by a copy of s; s may be the text of p itself.
OPTXV_EXPORT void strassign(pstring& p, std::string_view s);

/// Comparison as strcmp and strucmp. KEEP: nil is below every string, a real empty one included.
int pstrcmp(const unsigned char* p, const unsigned char* q) noexcept;
int pstrucmp(const unsigned char* p, const unsigned char* q) noexcept;

/// Equality as strequal and struequal. KEEP: nil is equal to nil only, not to a real empty string.
bool pstrequal(const unsigned char* p, const unsigned char* q) noexcept;
bool pstruequal(const unsigned char* p, const unsigned char* q) noexcept;

/// A heap string that a class holds as a field; the size of a pointer. Not copied.
class heapstring {
 public:
  heapstring() noexcept = default;
  explicit heapstring(std::string_view s) : text_(newstring(s)) {}
  heapstring& operator=(std::string_view s) {
    assign(s);
    return *this;
  }
  heapstring(heapstring&& other) noexcept : text_(other.release()) {}
  heapstring(const heapstring&) = delete;
  heapstring& operator=(const heapstring&) = delete;
  ~heapstring() { disposestring(text_); }

  void assign(std::string_view s) { strassign(text_, s); }
  std::string_view view() const noexcept { return getstring(text_); }
  operator std::string_view() const noexcept { return view(); }  // NOLINT: a text reads as a view
  bool isnil() const noexcept { return text_ == nullptr; }
  void swap(heapstring& other) noexcept { std::swap(text_, other.text_); }
  /// Lets go of the string. OWNS: the caller.
  pstring release() noexcept { return std::exchange(text_, nullptr); }

 private:
  pstring text_ = nullptr;
};

// Search -----------------------------------------------------------------------------------------
// `l` finds the first, `r` the last position; `u` ignores case; `sp` begins at a position.

int lchpos(char ch, std::string_view s) noexcept;
/// A start below 1 counts as 1; one past the end gives 0.
int lchpossp(char ch, std::string_view s, int sp) noexcept;
int rchpos(char ch, std::string_view s) noexcept;
/// Looks from sp, or from the end if sp is past it, down to 1.
int rchpossp(char ch, std::string_view s, int sp) noexcept;
int lchupos(char ch, std::string_view s) noexcept;
int lchupossp(char ch, std::string_view s, int sp) noexcept;
int rchupos(char ch, std::string_view s) noexcept;
int rchupossp(char ch, std::string_view s, int sp) noexcept;
int lchsetpos(const charset& chset, std::string_view s) noexcept;
int rchsetpos(const charset& chset, std::string_view s) noexcept;
int lstrpos(std::string_view pat, std::string_view s) noexcept;
/// First position from sp on at which pat stands. 0 if pat or s is empty or sp is below 1.
int lstrpossp(std::string_view pat, std::string_view s, int sp) noexcept;

// Case, removal, replacement ---------------------------------------------------------------------

shortstring lowercase(std::string_view s) noexcept;
shortstring uppercase(std::string_view s) noexcept;
/// s without the bytes of the set.
shortstring deletechar(const charset& chset, std::string_view s) noexcept;
/// s with each byte of the set replaced by ch.
shortstring replacechar(const charset& chset, char ch, std::string_view s) noexcept;
/// s with each oldtext, found from the left, replaced by newtext; what was put in is not searched
/// again. s itself if oldtext is empty or equal to newtext.
shortstring replacestr(std::string_view oldtext, std::string_view newtext,
                       std::string_view s) noexcept;

// Trimming --------------------------------------------------------------------------------------

/// Blank or tab, the white space of all texts here.
constexpr bool isblank(char c) noexcept {
  return c == ' ' || c == '\t';
}

/// A view without the blanks and tabs after the text; trim leaves out those before it as well.
/// BORROWS: the result lies in text.
std::string_view trimright(std::string_view text) noexcept;
std::string_view trim(std::string_view text) noexcept;

// Fill and padding -------------------------------------------------------------------------------

namespace detail {
inline constexpr auto blanks = [] {
  std::array<char, 255> result{};
  for (char& c : result) c = ' ';
  return result;
}();
}  // namespace detail

/// 255 blanks.
inline constexpr std::string_view blanks255{detail::blanks.data(), detail::blanks.size()};

/// n copies, n forced into 0 to 255.
shortstring fillstr(char ch, int n) noexcept;
shortstring blankstr(int n) noexcept;
/// Blanks before s, or after it, up to a length of n; s itself if it is that long already.
shortstring padleft(std::string_view s, int n) noexcept;
shortstring padright(std::string_view s, int n) noexcept;
/// The length of s raised to a multiple of m, as it is for an m below 1.
int padmodlength(std::string_view s, int m) noexcept;
/// s with blanks after it up to that length. An empty text stays empty.
shortstring padrightmod(std::string_view s, int m) noexcept;

// Tokens -----------------------------------------------------------------------------------------

/// The token of s at position p; p moves past it and past the blank or quote that ended it.
///
/// Leading blanks are skipped. A token that begins with ' or " runs to the next such quote, any
/// other to the next blank; a missing quote is no error and the token runs to the end. There is no
/// escape for a quote. A p outside s gives the empty text and stays; when only blanks are left, p
/// becomes length + 1.
shortstring extracttoken(std::string_view s, int& p) noexcept;

// Integers to text -------------------------------------------------------------------------------

/// Characters of n in decimal with its sign.
int integerwidth(std::int32_t n) noexcept;
shortstring inttostr(std::int64_t n) noexcept;
/// With leading blanks up to width w, at most 255; a wider number is never cut.
shortstring inttostrw(std::int64_t n, int w) noexcept;
/// As inttostr, but "maxint" and "minint" for the largest and smallest 32-bit number.
shortstring inttostrex(std::int32_t n) noexcept;
/// With a comma between groups of three digits.
///
/// KEEP: the most negative number has no positive twin, and its digits come out as the characters
/// that lie as far below '0' as digits lie above it: "-.,/,),,(-,*,(" in 32 bits.
shortstring inttonicestr(std::int32_t n) noexcept;
shortstring inttonicestrw(std::int32_t n, int w) noexcept;
shortstring int64tonicestr(std::int64_t n) noexcept;
shortstring int64tonicestrw(std::int64_t n, int w) noexcept;

// Reals to text ----------------------------------------------------------------------------------

/// The largest real that has a name. KEEP: far from the true limit of the type, on purpose.
inline constexpr double maxdouble = 1e299;

/// x with at most 15 significant digits and nothing superfluous: plain from 0.0001 to below 1e15,
/// else with an exponent (1E-5, 1.5E-300). INF, -INF, NAN for what is not finite; 0 for both zeros.
shortstring dbltostr(double x) noexcept;
/// As dbltostr, but "maxdouble" for 1e299 and "mindouble" for -1e299, and for these only.
shortstring dbltostrex(double x) noexcept;

// Text to numbers --------------------------------------------------------------------------------

/// The number, 0 for any fault. No named numbers.
std::int32_t strasint(std::string_view s) noexcept;

/// Reads an integer, or "maxint" or "minint" with case ignored; gives whether s is one.
///
/// KEEP: a number beyond 32 bits is no fault, n is the nearest limit. After a fault n is what was
/// read before it, or 0.
OPTXV_EXPORT bool strasintex(std::string_view s, std::int32_t& n) noexcept;

/// Whether that limit stands in for the number that s gives.
bool saturatedinteger(std::string_view s) noexcept;

/// As strasintex, but takes an integer that is written as a real too (1e3, 2.5e1). After a fault n
/// is 0.
bool strasintex2(std::string_view s, std::int32_t& n) noexcept;

/// Reads a real, with E or D before the exponent, or one of "maxdouble", "mindouble" and "eps"
/// (1e-20), case ignored; gives whether s is one. A number too large for the type is none; x is
/// then the infinity.
bool strasdoubleex(std::string_view s, double& x) noexcept;

}  // namespace optxv
