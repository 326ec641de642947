#include "stores/tablestore.h"

#include <algorithm>
#include <utility>

#include "foundation/lists.h"

namespace optxv {
namespace {

constexpr std::int32_t smallgrowth = 4;  // times
constexpr std::int32_t largelist = 1048576;
constexpr std::int32_t reportedslot = 4;  // bytes
constexpr std::int32_t probes = 4;        // places looked at one by one, on either side

std::int64_t slotbytes(std::int32_t n) {
  return std::int64_t{n} * static_cast<std::int64_t>(sizeof(std::byte*));
}

std::int32_t* keyof(std::byte* block) {
  return reinterpret_cast<std::int32_t*>(block);
}

/// Sorts the blocks of a list through the indices that the quicksort works on.
class recordsort : public tquicksortclass {
 public:
  recordsort(const tzemadatastore& store, treclist& list) : store_(store), list_(list) {}
  void exchange(std::int32_t i, std::int32_t j) override { list_.exchange(i, j); }
  int compare(std::int32_t i, std::int32_t j) override {
    const std::int64_t order = store_.comparekeys(keyof(list_.getitem(i)), keyof(list_.getitem(j)));
    return (order > 0) - (order < 0);
  }

 private:
  const tzemadatastore& store_;
  treclist& list_;
};

}  // namespace

// treclist

treclist::~treclist() {
  clear();
}

void treclist::grow() {
  const bool small = fcapacity > 0 && fcapacity < largelist;
  setcapacity(small ? smallgrowth * fcapacity : growncapacity(fcapacity));
}

std::byte* treclist::additem() {
  return insert(fcount);
}

std::byte* treclist::insert(std::int32_t i) {
  if (fcount == fcapacity) grow();
  auto* const block = static_cast<std::byte*>(xgetmem(frecsize));
  std::copy_backward(flist + i, flist + fcount, flist + fcount + 1);
  flist[i] = block;
  ++fcount;
  return block;
}

void treclist::exchange(std::int32_t i, std::int32_t j) noexcept {
  std::swap(flist[i], flist[j]);
}

void treclist::remove(std::int32_t i) {
  freeitem(i);
  flist[i] = nullptr;
}

void treclist::cleanup() noexcept {
  fcount = static_cast<std::int32_t>(std::remove(flist, flist + fcount, nullptr) - flist);
}

void treclist::freeitem(std::int32_t i) {
  if (flist[i] != nullptr) xfreemem(flist[i], frecsize);
}

void treclist::setcapacity(std::int32_t n) {
  if (n == fcapacity) return;
  n = std::max(n, fcount);
  std::byte** const old = std::exchange(flist, nullptr);
  flist = static_cast<std::byte**>(xreallocmem(old, slotbytes(fcapacity), slotbytes(n)));
  fcapacity = n;
}

void treclist::clear() {
  if (flist != nullptr)
    for (std::int32_t i = 0; i < fcount; ++i) freeitem(i);
  fcount = 0;
  setcapacity(0);
}

// tzemadatatable

void tzemadatatable::insertrecord(tzemadatasearcher* searcher, const std::int32_t* key,
                                  const void* data) {
  std::byte* const block =
      freclist.insert(static_cast<tzemadatatablesearcher*>(searcher)->position());
  copydata(block, key, fkeysize);
  copydata(block + fkeysize, data, fdatasize);
}

void tzemadatatable::loadrecord(const std::int32_t* key, const void* data) {
  std::byte* const block = freclist.additem();
  copydata(block, key, fkeysize);
  copydata(block + fkeysize, data, fdatasize);
}

void* tzemadatatable::getnextkey(std::int32_t* key) {
  if (freadindex >= freclist.count()) return nullptr;
  std::byte* const block = freclist.getitem(freadindex++);
  copydata(key, block, fkeysize);
  return block + fkeysize;
}

void tzemadatatable::endassign() {
  tzemadatastore::endassign();
  if (!std::exchange(fdefaulted, false)) return;
  for (std::int32_t i = 0; i < freclist.count(); ++i)
    if (isdefaultdata(freclist.getitem(i) + fkeysize)) {
      freclist.remove(i);
      fdefaulted = true;
    }
  if (fdefaulted) freclist.cleanup();
}

std::int64_t tzemadatatable::memoryused() const {
  return std::int64_t{freclist.count()} * freclist.recsize() +
         std::int64_t{reportedslot} * freclist.capacity();
}

tzemadatasearcher* tzemadatatable::createsearcher() {
  return new tzemadatatablesearcher(*this);
}

void tzemadatatable::sort() {
  recordsort(*this, freclist).sortn(freclist.count());
}

// tzemadatatablesearcher

const treclist& tzemadatatablesearcher::records() const noexcept {
  return static_cast<const tzemadatatable*>(fstore)->records();
}

/// Above 0 if the key is above that of record i.
std::int64_t tzemadatatablesearcher::compareat(std::int32_t i,
                                               const std::int32_t* key) const noexcept {
  return fstore->comparekeys(key, keyof(records().getitem(i)));
}

bool tzemadatatablesearcher::search(const std::int32_t* key, void*& data) {
  data = nullptr;
  const std::int32_t count = records().count();
  fposition = std::clamp(fposition, 0, std::max(count - 1, 0));
  if (count == 0) return false;
  const std::int64_t order = compareat(fposition, key);
  if (order != 0 && !nearby(key, order > 0 ? 1 : -1)) return false;
  data = records().getitem(fposition) + fstore->keysize();
  return true;
}

/// Walks from the finger in a direction, 1 or -1, for the few places that a run of searches in
/// order needs, and leaves what is farther away to the binary search.
bool tzemadatatablesearcher::nearby(const std::int32_t* key, std::int32_t direction) {
  const bool upward = direction > 0;
  const std::int32_t last = records().count() - 1;
  std::int32_t place = fposition;
  for (std::int32_t i = 0; i < probes; ++i) {
    place += direction;
    const bool inside = place >= 0 && place <= last;
    const std::int64_t order = inside ? compareat(place, key) : -direction;
    fposition = order == 0 || upward ? place : place + 1;
    if (order == 0) return true;
    if ((order > 0) != upward) return false;
  }
  return upward ? between(key, place, last) : between(key, 0, place);
}

/// Binary search; the finger ends on the record, or on the place for it.
bool tzemadatatablesearcher::between(const std::int32_t* key, std::int32_t low, std::int32_t high) {
  while (low <= high) {
    fposition = static_cast<std::int32_t>((std::int64_t{low} + high) >> 1);
    const std::int64_t order = compareat(fposition, key);
    if (order == 0) return true;
    if (order > 0) {
      low = fposition + 1;
    } else {
      high = fposition - 1;
    }
  }
  fposition = low;
  return false;
}

}  // namespace optxv
