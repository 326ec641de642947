#include "foundation/lists.h"

#include <cstddef>
#include <cstring>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

namespace optxv {
namespace {

// What the two array families have in common, on slots that may be moved as bytes.

template <class Slot>
void resizearray(Slot*& list, std::int32_t& capacity, std::int32_t count, std::int32_t n) {
  if (n == capacity) return;
  n = std::max(n, count);
  if (n > capacity) {
    list = static_cast<Slot*>(growmem(list, arraysize<Slot>(capacity), arraysize<Slot>(n)));
  } else {
    Slot* const old = std::exchange(list, nullptr);
    list = static_cast<Slot*>(reallocmem(old, arraysize<Slot>(capacity), arraysize<Slot>(n)));
  }
  capacity = n;
}

/// Moves the slots from i on up by one. REQUIRES: there is a slot after the last.
template <class Slot>
void openslot(Slot* list, std::int32_t i, std::int32_t count) {
  if (i < count)
    std::memmove(list + i + 1, list + i, static_cast<std::size_t>(arraysize<Slot>(count - i)));
}

/// Moves the slots after i down by one; count is that of those left.
template <class Slot>
void closeslot(Slot* list, std::int32_t i, std::int32_t count) {
  if (i < count)
    std::memmove(list + i, list + i + 1, static_cast<std::size_t>(arraysize<Slot>(count - i)));
}

/// The first index from 0 to count - 1 that the test accepts, or -1.
template <class Test>
std::int32_t firstindex(std::int32_t count, Test test) {
  for (std::int32_t i = 0; i < count; ++i)
    if (test(i)) return i;
  return -1;
}

constexpr std::int32_t firstcapacity = 16;
constexpr std::int32_t smallgrowth = 7;  // times the capacity, on top of it
constexpr std::int32_t largelist = 1048576;

}  // namespace

// tquicksortclass

void tquicksortclass::exchange(std::int32_t, std::int32_t) {
  raiseabstract(this);
}
int tquicksortclass::compare(std::int32_t, std::int32_t) {
  raiseabstract(this);
}

void tquicksortclass::sortn(std::int32_t n) {
  if (n > 1) quicksort(0, n - 1);
}

/// Parts the entries l to r around their middle one; i and j become the bounds of the two parts, l
/// to j and i to r.
void tquicksortclass::part(std::int32_t l, std::int32_t r, std::int32_t& i, std::int32_t& j) {
  i = l;
  j = r;
  auto p = static_cast<std::int32_t>(
      (static_cast<std::uint32_t>(l) + static_cast<std::uint32_t>(r)) >> 1);
  do {
    while (compare(i, p) < 0) ++i;
    while (compare(j, p) > 0) --j;
    if (i > j) return;
    exchange(i, j);
    if (p == i) {
      p = j;
    } else if (p == j) {
      p = i;
    }
    ++i;
    --j;
  } while (i <= j);
}

void tquicksortclass::quicksort(std::int32_t l, std::int32_t r) {
  // The right parts wait here while the left ones are sorted, so that no order of entries, however
  // hostile, exhausts the stack.
  std::vector<std::pair<std::int32_t, std::int32_t>> waiting = {{l, r}};
  while (!waiting.empty()) {
    std::tie(l, r) = waiting.back();
    waiting.pop_back();
    std::int32_t i = 0;
    std::int32_t j = 0;
    part(l, r, i, j);
    if (r > i) waiting.emplace_back(i, r);
    if (l < j) waiting.emplace_back(l, j);
  }
}

std::int32_t growncapacity(std::int32_t c) {
  constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
  if (c == most) raisecause(cause::reallocation);
  if (c == 0) return firstcapacity;
  const std::int32_t increment = c >= largelist ? c / 4 : smallgrowth * c;
  return increment > most - c ? most : c + increment;
}

// txlist

void txlist::exchange(std::int32_t i, std::int32_t j) {
  std::swap(flist[i], flist[j]);
}
void txlist::grow() {
  setcapacity(growncapacity(fcapacity));
}
void txlist::freeitem(std::int32_t) {}

std::int32_t txlist::add(void* item) {
  txlist::insert(fcount, item);
  return fcount - 1;
}

void txlist::insert(std::int32_t i, void* item) {
  if (fcount == fcapacity) grow();
  openslot(flist, i, fcount);
  flist[i] = item;
  ++fcount;
}

void txlist::put(std::int32_t i, void* item) {
  freeitem(i);
  flist[i] = item;
}

void* txlist::getlast() const noexcept {
  return fcount < 1 ? nullptr : flist[fcount - 1];
}

std::int32_t txlist::indexof(const void* item) const noexcept {
  return firstindex(fcount, [&](std::int32_t i) { return flist[i] == item; });
}

void txlist::delete_(std::int32_t i) {
  freeitem(i);
  closeslot(flist, i, --fcount);
}

std::int32_t txlist::remove(const void* item) {
  const std::int32_t i = txlist::indexof(item);
  if (i >= 0) delete_(i);
  return i;
}

void* txlist::extract(const void* item) {
  const std::int32_t i = txlist::indexof(item);
  if (i < 0) return nullptr;
  void* const found = flist[i];
  closeslot(flist, i, --fcount);
  return found;
}

void txlist::clear() {
  for (std::int32_t i = fcount - 1; i >= 0; --i) freeitem(i);
  fcount = 0;
  setcapacity(0);
}

void txlist::setcapacity(std::int32_t n) {
  resizearray(flist, fcapacity, fcount, n);
}

// txstrings

int txstrings::compare(std::int32_t i, std::int32_t j) {
  return pstrucmp(item(i), item(j));
}
void txstrings::freeitem(std::int32_t i) {
  disposestring(item(i));
}

std::int32_t txstrings::add(std::string_view s) {
  txstrings::insert(fcount, s);
  return fcount - 1;
}
void txstrings::insert(std::int32_t i, std::string_view s) {
  heapstring text(s);
  if (fcount == fcapacity) grow();  // here, where the text has an owner if that fails
  txlist::insert(i, text.release());
}

void txstrings::put(std::int32_t i, std::string_view s) {
  const pstring text = newstring(s);  // before the old text goes, which may be s
  txlist::put(i, text);
}

std::int32_t txstrings::indexof(std::string_view s) const noexcept {
  return firstindex(fcount, [&](std::int32_t i) { return ukepttextequals(item(i), s); });
}

shortstring txstrings::extract(std::string_view s) {
  const std::int32_t i = indexof(s);
  if (i < 0) return {};
  const shortstring result = s;  // before the text goes, which may be s
  delete_(i);
  return result;
}

// txcustomstringlist

void txcustomstringlist::exchange(std::int32_t i, std::int32_t j) {
  std::swap(flist[i], flist[j]);
}

int txcustomstringlist::compare(std::int32_t i, std::int32_t j) {
  return pstrucmp(flist[i].fname, flist[j].fname);
}

void txcustomstringlist::grow() {
  setcapacity(growncapacity(fcapacity));
}
void txcustomstringlist::freeobject(std::int32_t) {}

std::int32_t txcustomstringlist::addobject(std::string_view s, void* obj) {
  insertitem(fcount, s, obj);
  return fcount - 1;
}

void txcustomstringlist::insertitem(std::int32_t i, std::string_view s, void* obj) {
  heapstring name(s);  // first: if there is no memory for it, the list is as it was
  if (fcount == fcapacity) grow();
  openslot(flist, i, fcount);
  flist[i] = {name.release(), obj};
  ++fcount;
}

std::int32_t txcustomstringlist::indexof(std::string_view s) const noexcept {
  return firstindex(fcount, [&](std::int32_t i) { return ukepttextequals(flist[i].fname, s); });
}

std::int32_t txcustomstringlist::indexofobject(const void* obj) const noexcept {
  return firstindex(fcount, [&](std::int32_t i) { return flist[i].fobject == obj; });
}

void txcustomstringlist::freeitem(std::int32_t i) {
  disposestring(flist[i].fname);
  // A descendant with words of its own has cleared itself before.
  // NOLINTNEXTLINE(clang-analyzer-optin.cplusplus.VirtualCall)
  freeobject(i);
}

void txcustomstringlist::delete_(std::int32_t i) {
  freeitem(i);
  closeslot(flist, i, --fcount);
}

void txcustomstringlist::clear() {
  for (std::int32_t i = fcount - 1; i >= 0; --i) freeitem(i);
  fcount = 0;
  setcapacity(0);
}

void txcustomstringlist::setcapacity(std::int32_t n) {
  resizearray(flist, fcapacity, fcount, n);
}

// txstringlist

txstringlist::~txstringlist() = default;

}  // namespace optxv
