#include "stores/hashedstore.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iterator>
#include <limits>
#include <new>
#include <numeric>
#include <utility>

namespace optxv {
namespace {

constexpr std::int32_t reportedlinks = 8;   // bytes for the two links of a record
constexpr std::int32_t reportedbucket = 4;  // bytes
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
constexpr std::uint32_t hashfactor = 1234593;

/// A size of table: for fewer records than the limit, which is also the count to rebuild at.
struct tablesize {
  std::int32_t limit, buckets;
};
constexpr tablesize tablesizes[] = {
    {1500, 997}, {15000, 9973}, {150000, 99991}, {1500000, 999979}, {highest, 9999991},
};

std::int32_t keybytes(std::int32_t n) {
  return heapsize(std::int64_t{n} * static_cast<std::int64_t>(sizeof(std::int32_t)));
}

constexpr std::int32_t ahead = 16;  // records that are fetched before they are needed

/// The radix sort of a list, least significant digit first. It works on an array next to the list,
/// as records that were visited through links in sorted order would miss the cache at every step,
/// and takes as many integers of the key at once as fit into one value.
class radixsort {
 public:
  /// REQUIRES: all integers of the keys are from minkey to maxkey, and there are two that differ.
  radixsort(linkedrecord* head, std::int32_t count, std::int32_t minkey, std::int32_t maxkey)
      : count_(count),
        minkey_(static_cast<std::uint32_t>(minkey)),
        bits_(static_cast<int>(std::bit_width(static_cast<std::uint32_t>(maxkey) - minkey_))) {
    for (std::int32_t i = 0; i < count; ++i, head = head->fnext) entries_[i].record = head;
  }

  /// Takes one more integer of the keys into account, one that counts more than those before.
  void add(std::int32_t place) {
    if ((taken_ + 1) * bits_ > valuebits) sort();
    places_[static_cast<std::size_t>(taken_++)] = place;
  }

  /// Sorts by what was added, links the records in their order, and gives the first.
  linkedrecord* list() {
    sort();
    linkedrecord* first = nullptr;
    for (std::int32_t i = count_; i-- > 0;) {
      prefetch(std::max(i - ahead, 0));
      entries_[i].record->fnext = first;
      first = entries_[i].record;
    }
    return first;
  }

  /// The records in their order.
  heaparray<sortedrecord> order() && { return std::move(entries_); }

 private:
  static constexpr int valuebits = 64, digitbits = 11;
  static constexpr std::size_t digits = 1U << digitbits;

  void prefetch(std::int32_t i) const { __builtin_prefetch(entries_[i].record); }

  std::uint64_t valueof(linkedrecord* record) const {
    std::uint64_t value = 0;
    for (int i = taken_; i-- > 0;) {
      const std::int32_t key = tlinkeddata::keyof(record)[places_[static_cast<std::size_t>(i)]];
      value = value << bits_ | (static_cast<std::uint32_t>(key) - minkey_);
    }
    return value;
  }

  /// Sorts by the integers taken, and forgets them.
  void sort() {
    for (std::int32_t i = 0; i < count_; ++i) {
      prefetch(std::min(i + ahead, count_ - 1));
      entries_[i].value = valueof(entries_[i].record);
    }
    for (int shift = 0; shift < taken_ * bits_; shift += digitbits) pass(shift);
    taken_ = 0;
  }

  void pass(int shift) {
    const auto digit = [shift](const sortedrecord& of) {
      return static_cast<std::size_t>(of.value >> shift & (digits - 1));
    };
    std::array<std::int32_t, digits> starts{};
    for (std::int32_t i = 0; i < count_; ++i) ++starts[digit(entries_[i])];
    std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), 0);
    for (std::int32_t i = 0; i < count_; ++i) sorted_[starts[digit(entries_[i])]++] = entries_[i];
    std::swap(entries_, sorted_);
  }

  std::int32_t count_;
  std::uint32_t minkey_;
  int bits_;
  int taken_ = 0;
  std::array<std::int32_t, valuebits> places_{};
  heaparray<sortedrecord> entries_{count_}, sorted_{count_};
};

}  // namespace

// tlinkeddata

tlinkeddata::tlinkeddata(std::int32_t n, std::int32_t datasize)
    : fdimension(n),
      fkeysize(keybytes(n)),
      frecsize(heapsize(std::int64_t{fkeysize} + datasize + reportedlinks)),
      fdatasize(datasize) {}

tlinkeddata::~tlinkeddata() {
  clear();
}

/// What a record really takes.
std::int32_t tlinkeddata::recordbytes() const {
  constexpr std::int64_t links = sizeof(linkedrecord);
  return heapsize(links + fkeysize + fdatasize);
}

/// Widens the range of integers by those of a key.
void tlinkeddata::note(const std::int32_t* key) noexcept {
  for (std::int32_t i = 0; i < fdimension; ++i) {
    fminkey = std::min(fminkey, key[i]);
    fmaxkey = std::max(fmaxkey, key[i]);
  }
}

linkedrecord* tlinkeddata::additem(const std::int32_t* key, const void* data) {
  if (fhead != nullptr && ftail == nullptr)
    raiseassertion(" Record added to a sorted list", "hashedstore", __LINE__);
  void* const block = xgetmem(recordbytes());
  countup(fcount);
  auto* const record = new (block) linkedrecord{nullptr, nullptr};
  (ftail == nullptr ? fhead : ftail->fnext) = record;
  ftail = record;
  copydata(keyof(record), key, fkeysize);
  copydata(dataof(record), data, fdatasize);
  note(key);
  return record;
}

void tlinkeddata::clear() {
  forder = {};
  while (fhead != nullptr) xfreemem(std::exchange(fhead, fhead->fnext), recordbytes());
  ftail = nullptr;
  fcount = 0;
  fmaxkey = 0;
  fminkey = highest;
}

bool tlinkeddata::startread(linkedrecord*& cursor, const std::int32_t* order) {
  sort(order);
  cursor = fhead;
  return cursor != nullptr;
}

/// Fetches records of a read that goes on in the order of the last sort.
void tlinkeddata::fetchahead(const linkedrecord* record) noexcept {
  if (forder.get() == nullptr || forder[freached].record != record) return;
  if (++freached == fcount) {
    forder = {};
  } else {
    __builtin_prefetch(forder[std::min(freached + ahead, fcount - 1)].record);
  }
}

void* tlinkeddata::getnextkey(linkedrecord*& cursor, std::int32_t* key) {
  if (cursor == nullptr) return nullptr;
  fetchahead(cursor);
  linkedrecord* const record = std::exchange(cursor, cursor->fnext);
  copydata(key, keyof(record), fkeysize);
  return dataof(record);
}

bool tlinkeddata::getnextrecord(linkedrecord*& cursor, std::int32_t* key, void* data) {
  const void* const kept = getnextkey(cursor, key);
  if (kept == nullptr) return false;
  copydata(data, kept, fdatasize);
  return true;
}

void tlinkeddata::createlist(const std::int32_t**& array, std::int64_t& size) const {
  constexpr std::int64_t bytes = sizeof(const std::int32_t*);
  const std::int64_t oldsize = std::exchange(size, std::int64_t{fcount} + 1);
  array = static_cast<const std::int32_t**>(
      xreallocmem(std::exchange(array, nullptr), oldsize * bytes, size * bytes));
  const std::int32_t** slot = array;
  *slot = nullptr;
  for (linkedrecord* record = fhead; record != nullptr; record = record->fnext)
    *++slot = keyof(record);
}

bool tlinkeddata::removedefaults(const void* defaultdata) {
  if (fdatasize == 0) return false;
  forder = {};
  const std::int32_t before = fcount;
  linkedrecord** link = &fhead;
  ftail = nullptr;
  while (linkedrecord* const record = *link) {
    if (std::memcmp(dataof(record), defaultdata, static_cast<std::size_t>(fdatasize)) == 0) {
      *link = record->fnext;
      xfreemem(record, recordbytes());
      --fcount;
    } else {
      ftail = record;
      link = &record->fnext;
    }
  }
  return fcount < before;
}

bool tlinkeddata::inorder() const noexcept {
  const auto below = [this](linkedrecord* a, linkedrecord* b) {
    return std::lexicographical_compare(keyof(a), keyof(a) + fdimension, keyof(b),
                                        keyof(b) + fdimension);
  };
  for (linkedrecord* record = fhead; record->fnext != nullptr; record = record->fnext)
    if (below(record->fnext, record)) return false;
  return true;
}

void tlinkeddata::sort(const std::int32_t* order) {
  forder = {};
  if (fcount < 2 || inorder()) return;
  radixsort sorting(fhead, fcount, fminkey, fmaxkey);
  for (std::int32_t i = fdimension; i-- > 0;) sorting.add(order == nullptr ? i : order[i] - 1);
  fhead = sorting.list();
  forder = std::move(sorting).order();
  freached = 0;
  ftail = nullptr;
}

std::int32_t* tlinkeddata::allocindex() const {
  return static_cast<std::int32_t*>(xgetmem(fkeysize));
}
void tlinkeddata::freeindex(std::int32_t* key) const {
  xfreemem(key, fkeysize);
}

// tzemahashlist

tzemahashlist::tzemahashlist(std::int32_t n, std::int32_t datasize)
    : flinked(n, datasize), fdimension(n), fkeysize(keybytes(n)), fdatasize(datasize) {}

std::int32_t tzemahashlist::hash(const std::int32_t* key) const noexcept {
  auto h = static_cast<std::uint32_t>(key[0]);
  for (std::int32_t i = 1; i < fdimension; ++i)
    h = h * hashfactor + static_cast<std::uint32_t>(key[i]);
  return static_cast<std::int32_t>(h & static_cast<std::uint32_t>(highest)) % fhashcount;
}

bool tzemahashlist::equalkeys(const std::int32_t* a, const std::int32_t* b) const noexcept {
  return std::equal(a, a + fdimension, b);
}

void tzemahashlist::hashtablereset(std::int32_t n) {
  const auto* const size = std::find_if(std::begin(tablesizes), std::end(tablesizes) - 1,
                                        [n](const tablesize& row) { return n < row.limit; });
  fhashtable = heaparray<linkedrecord*>(size->buckets);
  fhashcount = size->buckets;
  frehashat = size->limit;
}

void tzemahashlist::clearhashlist() noexcept {
  fhashtable = {};
  fhashcount = 0;
}

void tzemahashlist::hashall() {
  clearhashlist();
  hashtablereset(flinked.count());
  for (linkedrecord* record = flinked.head(); record != nullptr; record = record->fnext)
    push(record);
}

/// Puts a record at the front of its chain.
void tzemahashlist::push(linkedrecord* record) noexcept {
  linkedrecord*& chain = fhashtable[hash(tlinkeddata::keyof(record))];
  record->fhashnext = chain;
  chain = record;
}

linkedrecord* tzemahashlist::find(const std::int32_t* key) const noexcept {
  linkedrecord* record = fhashtable[hash(key)];
  while (record != nullptr && !equalkeys(tlinkeddata::keyof(record), key))
    record = record->fhashnext;
  return record;
}

bool tzemahashlist::additem(const std::int32_t* key, const void* data) {
  if (fhashcount == 0 || flinked.count() > frehashat) hashall();
  if (linkedrecord* const record = find(key)) {
    copydata(flinked.dataof(record), data, fdatasize);
    return false;
  }
  push(flinked.additem(key, data));
  return true;
}

void* tzemahashlist::indexof(const std::int32_t* key) {
  if (fhashcount == 0) hashall();
  linkedrecord* const record = find(key);
  return record == nullptr ? nullptr : flinked.dataof(record);
}

void tzemahashlist::loadrecord(const std::int32_t* key, const void* data) {
  clearhashlist();
  flinked.additem(key, data);
}

void tzemahashlist::clear() {
  clearhashlist();
  flinked.clear();
  freadcursor = nullptr;
}

bool tzemahashlist::removedefaults(const void* defaultdata) {
  if (!flinked.removedefaults(defaultdata)) return false;
  clearhashlist();
  freadcursor = nullptr;
  return true;
}

std::int64_t tzemahashlist::memoryused() const noexcept {
  return flinked.memoryused() + std::int64_t{reportedbucket} * fhashcount;
}

// tzemadatahashed

void tzemadatahashed::insertrecord(tzemadatasearcher*, const std::int32_t* key, const void* data) {
  fhashlist.additem(key, data);
}

void tzemadatahashed::loadrecord(const std::int32_t* key, const void* data) {
  fhashlist.loadrecord(key, data);
}

void tzemadatahashed::endassign() {
  tzemadatastore::endassign();
  if (!fdefaulted) return;
  fhashlist.removedefaults(fdefaultdata);
  fdefaulted = false;
}

tzemadatasearcher* tzemadatahashed::createsearcher() {
  return new tzemadatahashedsearcher(*this);
}

bool tzemadatahashedsearcher::search(const std::int32_t* key, void*& data) {
  data = static_cast<tzemadatahashed*>(fstore)->hashlist().indexof(key);
  return data != nullptr;
}

}  // namespace optxv
