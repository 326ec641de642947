#include "listing/zmaheap.h"

#include <new>
#include <utility>

#include "foundation/runtime.h"

namespace optxv {

void (*memoryreportproc)(double) = nullptr;

namespace {

heapstate heap;

static_assert(heapblockunits * heapunitbytes == heapblockbytes);
static_assert(heapslotcount * heapunitbytes == heaplargestpiece);
static_assert(sizeof(heapfreepiece) <= heapunitbytes, "the smallest piece holds the link");

[[noreturn]] void overlimit() noexcept {
  try {
    throw eoutofmemory("Requested memory exceeds assigned HeapLimit");
  } catch (...) {
    standardexceptionhandler();
  }
}

void reportmemory() {
  if (memoryreportproc != nullptr) memoryreportproc(zmamemoryused());
}

void* systemget(std::int32_t size) {
  ++heap.otherget;
  heap.othermemory += size;
  if (heap.othermemory > heap.memorylimit) overlimit();
  if (heap.othermemory > heap.highmark) heap.highmark = heap.othermemory;
  void* const result = getmem(size);
  reportmemory();
  return result;
}

void systemfree(void* p, std::int32_t size) {
  --heap.otherget;
  heap.othermemory -= size;
  freemem(p, size);
  reportmemory();
}

void pushfree(heapslot& slot, void* p) noexcept {
  slot.freelist = new (p) heapfreepiece{slot.freelist};
  ++slot.freelistcount;
}

heapslot& slotof(int n) noexcept {
  return heap.slots[static_cast<std::size_t>(n - 1)];
}

std::byte* takeunits(heapblock& block, int n) noexcept {
  block.unitsleft -= n;
  return std::exchange(block.next, block.next + std::ptrdiff_t{n} * heapunitbytes);
}

std::int64_t tablebytes(std::int32_t highestindex) noexcept {
  return (std::int64_t{highestindex} + 1) * static_cast<std::int64_t>(sizeof(heapblock));
}

/// A failure loses the table and with it the way to the blocks, so in the meantime the heap has
/// none.
void growblocktable() {
  const std::int32_t size = std::exchange(heap.basebufsize, -1);
  const std::int32_t used = std::exchange(heap.basebufused, -1);
  const std::int32_t newsize = size + heapblocktablegrowth;
  heap.pbufbase = static_cast<heapblock*>(
      xreallocmem(std::exchange(heap.pbufbase, nullptr), tablebytes(size), tablebytes(newsize)));
  heap.basebufsize = newsize;
  heap.basebufused = used;
}

/// The record of a block that has nothing yet, so that a failure to get its bytes leaves it usable.
heapblock& newblockrecord() {
  if (heap.basebufsize <= heap.basebufused + 1) growblocktable();
  ++heap.basebufused;
  return *new (heap.pbufbase + heap.basebufused) heapblock{0, nullptr, nullptr};
}

void keepleftover(heapblock& block) noexcept {
  const int left = block.unitsleft;
  if (left > 0) pushfree(slotof(left), takeunits(block, left));
}

[[gnu::noinline]] void* fromblock(int n) {
  if (heap.basebufused >= 0) {
    heapblock& current = heap.pbufbase[heap.basebufused];
    if (current.unitsleft >= n) return takeunits(current, n);
    keepleftover(current);
  }
  heapblock& block = newblockrecord();
  block.base = static_cast<std::byte*>(systemget(heapblockbytes));
  block.next = block.base;
  block.unitsleft = heapblockunits;
  return takeunits(block, n);
}

[[noreturn, gnu::noinline]] void badrelease(int line) {
  raiseassertion(" Bad memory released", "zmaheap", line);
}

std::uint16_t slotnumber(std::int32_t size) noexcept {
  return static_cast<std::uint16_t>(size < 1 ? 1 : (size - 1) / heapunitbytes + 1);
}

}  // namespace

const heapstate& zmaheapstate() noexcept {
  return heap;
}

void initzmaheap() noexcept {
  memoryreportproc = nullptr;
  zmaheapinitial();
}

void zmaheapinitial() noexcept {
  heap = heapstate();
}

void* zmagetmem(std::uint16_t n) {
  heapslot& slot = slotof(n);
  ++slot.getcount;
  heapfreepiece* const piece = slot.freelist;
  if (piece == nullptr) return fromblock(n);
  slot.freelist = piece->next;
  --slot.freelistcount;
  return piece;
}

void zmafreemem(void* p, std::uint16_t n) {
  heapslot& slot = slotof(n);
  if (++slot.freecount > slot.getcount) badrelease(__LINE__);
  pushfree(slot, p);
}

void* xgetmem(std::int32_t size) {
  return size <= heaplargestpiece ? zmagetmem(slotnumber(size)) : systemget(size);
}

void xfreemem(void* p, std::int32_t size) {
  if (size <= heaplargestpiece)
    zmafreemem(p, slotnumber(size));
  else
    systemfree(p, size);
}

void* xreallocmem(void* p, std::int64_t oldsize, std::int64_t newsize) {
  ++heap.realloccnt;
  heap.reallocfree += oldsize;
  heap.reallocget += newsize;
  return reallocmem(p, oldsize, newsize);
}

void zmaheaprelease() {
  for (; heap.basebufused >= 0; --heap.basebufused)
    systemfree(heap.pbufbase[heap.basebufused].base, heapblockbytes);
  xreallocmem(std::exchange(heap.pbufbase, nullptr), tablebytes(heap.basebufsize), 0);
  zmaheapinitial();
}

double zmamemoryused() noexcept {
  return heap.othermemory / 1e6;
}

double zmamemoryfree() noexcept {
  double bytes = 0;
  for (int n = 1; n <= heapslotcount; ++n)
    bytes += static_cast<double>(slotof(n).freelistcount) * (heapunitbytes * n);
  return bytes / 1e6;
}

double getmemorylimit() noexcept {
  return heap.memorylimit / 1e6;
}

bool setmemorylimit(double limit) noexcept {
  heap.memorylimit = limit;
  return limit >= heap.othermemory;
}

}  // namespace optxv
