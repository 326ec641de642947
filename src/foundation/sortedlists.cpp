#include "foundation/sortedlists.h"

#include <cstring>
#include <functional>

#include "foundation/arithmetic.h"
#include "foundation/numtext.h"

namespace optxv {
namespace {

/// pstrucmp of a text that is there and one that a list keeps, which is nil if empty.
int comparewithkept(std::string_view s, const unsigned char* kept) noexcept {
  return kept == nullptr ? 1 : strucmp(s, getstring(kept));
}

constexpr std::int32_t firststep = 256;
constexpr std::int32_t largearray = 8192;

/// Room for the bits of an array that has c bytes and needs more than that.
std::int32_t grownbytes(std::int32_t c, std::int32_t needed) noexcept {
  const std::int32_t step = c == 0 ? firststep : c < largearray ? c : c / 4;
  const std::int32_t steps =
      (needed - c) / step + 1;  // to above needed: an exact fit takes one more
  return c + steps * step;
}

}  // namespace

// txsortedstringlist

txsortedstringlist::~txsortedstringlist() = default;

void txsortedstringlist::countupdates(int step) noexcept {
  fupdatecount = static_cast<std::int32_t>(std::int64_t{fupdatecount} + step);
}

void txsortedstringlist::endupdate() {
  countupdates(-1);
  if (fupdatecount == 0) setsorted(true);
}

void txsortedstringlist::setsorted(bool b) {
  if (b == fsorted) return;
  if (b) sortn(fcount);
  fsorted = b;
}

bool txsortedstringlist::find(std::string_view s, std::int32_t& index) const noexcept {
  s = keptpart(s);
  std::int32_t l = 0;
  std::int32_t h = fcount - 1;
  while (l <= h) {
    const std::int32_t m = l + (h - l) / 2;
    const int c = comparewithkept(s, flist[m].fname);
    if (c == 0) {
      index = m;
      return true;
    }
    if (c > 0) {
      l = m + 1;
    } else {
      h = m - 1;
    }
  }
  index = l;
  return false;
}

std::int32_t txsortedstringlist::indexof(std::string_view s) const noexcept {
  if (!fsorted) return txcustomstringlist::indexof(keptpart(s));
  std::int32_t index = 0;
  return find(s, index) ? index : -1;
}

std::int32_t txsortedstringlist::addobject(std::string_view s, void* obj) {
  std::int32_t index = fcount;
  if (fupdatecount > 0 || fcount <= 0) {
    fsorted = false;
  } else {
    find(s, index);
  }
  insertitem(index, s, obj);
  return index;
}

// txstrstrlist

void txstrstrlist::freeobject(std::int32_t i) {
  disposestring(text(i));
}

std::int32_t txstrstrlist::addobject(std::string_view name, std::string_view value) {
  heapstring copy(value);  // first: value may be a text of this list
  const std::int32_t index = txsortedstringlist::addobject(name, nullptr);
  flist[index].fobject = copy.release();
  return index;
}

void txstrstrlist::putobject(std::int32_t i, std::string_view value) {
  heapstring copy(value);  // before the old text goes, which may be value
  freeobject(i);
  flist[i].fobject = copy.release();
}

std::string_view txstrstrlist::getasstring(std::string_view key) const noexcept {
  const std::int32_t i = indexof(key);
  if (i < 0) return {};
  const std::string_view value = getobject(i);
  return value == "=" ? std::string_view() : value;
}

std::int32_t txstrstrlist::getasinteger(std::string_view key) const noexcept {
  return strasint(getasstring(key));
}

double txstrstrlist::getasdouble(std::string_view key) const {
  int code = 0;
  const double result = _Q9_Val_d(getasstring(key), code);
  return code == 0 ? result : 0.0;
}

bool txstrstrlist::getasboolean(std::string_view key) const noexcept {
  constexpr charset yes("Yy1Tt");
  const std::string_view value = getasstring(key);
  return !value.empty() && yes.has(value.front());
}

void txstrstrlist::setasstring(std::string_view key, std::string_view value) {
  const std::int32_t i = indexof(key);
  if (value.empty()) {
    if (i >= 0) delete_(i);
  } else if (i < 0) {
    addobject(key, value);
  } else {
    putobject(i, value);
  }
}

void txstrstrlist::setasinteger(std::string_view key, std::int32_t n) {
  setasstring(key, n == 0 ? shortstring() : inttostr(n));
}

void txstrstrlist::setasdouble(std::string_view key, double x) {
  setasstring(key, iszero(x) ? shortstring() : _Q9_Str_d0(x));
}

// tbooleanbitarray

tbooleanbitarray::~tbooleanbitarray() {
  freemem(fbits, fallocated);
}

void tbooleanbitarray::getbitmask(std::int32_t p, std::int32_t& byteindex,
                                  std::uint8_t& mask) noexcept {
  byteindex = p >> 3;
  mask = static_cast<std::uint8_t>(1 << (p & 7));
}

bool tbooleanbitarray::getbit(std::int32_t i) const noexcept {
  if (i < 0 || i > fhighindex) return false;
  std::int32_t byteindex = 0;
  std::uint8_t mask = 0;
  getbitmask(i, byteindex, mask);
  return (fbits[byteindex] & mask) != 0;
}

void tbooleanbitarray::setbit(std::int32_t i, bool b) {
  if (i < 0) return;
  sethighindex(i);
  std::int32_t byteindex = 0;
  std::uint8_t mask = 0;
  getbitmask(i, byteindex, mask);
  std::uint8_t& byte = fbits[byteindex];
  byte = static_cast<std::uint8_t>(b ? byte | mask : byte & ~mask);
}

void tbooleanbitarray::sethighindex(std::int32_t v) {
  if (v <= fhighindex) return;
  const auto needed = static_cast<std::int32_t>((std::int64_t{v} + 8) / 8);
  if (needed > fallocated) {
    const std::int32_t room = grownbytes(fallocated, needed);
    auto* const bits = static_cast<std::uint8_t*>(getmem(room));
    std::memset(bits, 0, static_cast<std::size_t>(room));
    cmove(fbits, bits, fallocated);
    freemem(fbits, fallocated);
    fbits = bits;
    fallocated = room;
  }
  fhighindex = v;
}

// The byte mover

void cmove(const void* src, void* dst, std::int32_t n) noexcept {
  if (n <= 0) return;
  const auto* from = static_cast<const unsigned char*>(src);
  auto* to = static_cast<unsigned char*>(dst);
  const unsigned char* const end = from + n;
  const std::less<const unsigned char*> below;
  // Short ones go byte by byte; so do those that run over their own source, as the header says.
  if (n > 4 && (!below(from, to) || !below(to, end))) {
    std::memmove(to, from, static_cast<std::size_t>(n));
    return;
  }
  while (from != end) *to++ = *from++;
}

}  // namespace optxv
