#include "stores/densestore.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace optxv {
namespace {

constexpr std::int64_t mappingbytes = 40000000;  // for each dimension
constexpr std::int32_t unmapped = -1;
constexpr std::int32_t marked = 0;

constexpr std::int32_t firststep = 1024;
constexpr std::int32_t doubledupto = 32768;

std::int64_t mapbytes(std::int32_t capacity) {
  return std::int64_t{capacity} * static_cast<std::int64_t>(sizeof(std::int32_t));
}

/// The arrays of mappings that stores have left behind. They are never used again; the chain keeps
/// them known, so that no tool reports them as lost.
struct leftarray {
  leftarray* next;
};
leftarray* leftarrays = nullptr;

}  // namespace

// tintegermapping

tintegermapping::~tintegermapping() {
  if (fmap != nullptr) xreallocmem(fmap, mapbytes(fcapacity), 0);
}

/// Makes room for index i.
void tintegermapping::reserve(std::int32_t i) {
  constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
  if (i == most) raisecause(cause::reallocation);
  const std::int64_t step = fcapacity == 0             ? firststep
                            : fcapacity <= doubledupto ? fcapacity
                                                       : fcapacity / 4;
  const std::int64_t steps = (std::int64_t{i} - fcapacity) / step + 1;
  const std::int32_t old = std::exchange(fcapacity, 0);
  const auto wanted = static_cast<std::int32_t>(std::min(old + steps * step, most));
  fmap = static_cast<std::int32_t*>(
      xreallocmem(std::exchange(fmap, nullptr), mapbytes(old), mapbytes(wanted)));
  fcapacity = wanted;
  std::fill(fmap + old, fmap + fcapacity, unmapped);
}

void tintegermapping::setmapping(std::int32_t i, std::int32_t v) {
  if (i < 0) return;
  if (i >= fcapacity) reserve(i);
  fmap[i] = v;
  fhighest = std::max(fhighest, i);
}

std::int64_t tintegermapping::memoryused() const noexcept {
  return mapbytes(fcapacity);
}

// mappingarray

mappingarray::mappingarray(std::int32_t n)
    : fcount(0), fmappings(static_cast<tintegermapping**>(xgetmem(heapsize(n * mappingbytes)))) {
  while (fcount < n) fmappings[fcount++] = new tintegermapping;
}

mappingarray::~mappingarray() {
  for (std::int32_t i = 0; i < fcount; ++i) delete fmappings[i];
  leftarrays = new (fmappings) leftarray{leftarrays};
}

// tzemadatafull

tzemadatafull::tzemadatafull(tzemadatastore& source)
    : tzemadatastore(source.dimension(), source.datasize(), source.defaultdata()),
      fstrides(fdimension),
      ffirstkey(fdimension),
      fsizes(fdimension),
      fmappings(fdimension) {
  markkeys(source);
  for (std::int32_t i = 0; i < fdimension; ++i) numberkeys(i);
  layout();
}

/// Marks every integer of every key in the mapping of its dimension.
void tzemadatafull::markkeys(tzemadatastore& source) {
  const heaparray<std::int32_t> key(fdimension);
  if (!source.startread()) return;
  while (source.getnextkey(key.get()) != nullptr)
    for (std::int32_t i = 0; i < fdimension; ++i) fmappings[i].setmapping(key[i], marked);
  source.endread();
}

/// Numbers the integers of a dimension from 0 on, in ascending order.
void tzemadatafull::numberkeys(std::int32_t i) {
  tintegermapping& mapping = fmappings[i];
  std::int32_t count = 0;
  for (std::int32_t key = 0; key <= mapping.highest(); ++key) {
    if (mapping.getmapping(key) != marked) continue;
    if (count == 0) ffirstkey[i] = key;
    mapping.setmapping(key, count++);
  }
  fsizes[i] = count == 1 ? 0 : count;
}

/// Works out the strides and the total, the last dimension being the closest packed.
void tzemadatafull::layout() {
  std::int32_t total = fdatasize;
  for (std::int32_t i = fdimension; i-- > 0;) {
    fstrides[i] = total;
    if (fsizes[i] != 0) total = heapsize(std::int64_t{total} * fsizes[i]);
  }
  ftotalsize = total;
}

void tzemadatafull::allocatememory(tzemadatastore& source) {
  if (fdata.get() != nullptr) return;
  fdata = heaparray<std::byte>(ftotalsize);
  clear();
  const heaparray<std::int32_t> key(fdimension);
  const heaparray<std::byte> data(fdatasize);
  if (!source.startread()) return;
  while (source.getnextrecord(key.get(), data.get())) loadrecord(key.get(), data.get());
  source.endread();
}

void tzemadatafull::clear() {
  if (fdata.get() == nullptr || fdatasize == 0) return;
  for (std::int32_t place = 0; place < ftotalsize; place += fdatasize)
    copydata(fdata.get() + place, fdefaultdata, fdatasize);
}

void* tzemadatafull::getoffset(const std::int32_t* key) const noexcept {
  if (fdata.get() == nullptr) return nullptr;
  std::int64_t offset = 0;
  for (std::int32_t i = 0; i < fdimension; ++i) {
    const std::int32_t number = fmappings[i].getmapping(key[i]);
    if (number < 0) return nullptr;
    offset += std::int64_t{number} * fstrides[i];
  }
  return fdata.get() + offset;
}

void tzemadatafull::loadrecord(const std::int32_t* key, const void* data) {
  void* const place = getoffset(key);
  if (place == nullptr) return;
  countup(fcount);
  copydata(place, data, fdatasize);
}

std::int64_t tzemadatafull::memoryused() const {
  std::int64_t bytes = ftotalsize;
  for (std::int32_t i = 0; i < fdimension; ++i) bytes += fmappings[i].memoryused();
  return bytes;
}

tzemadatasearcher* tzemadatafull::createsearcher() {
  return new tzemadatafullsearcher(*this);
}

bool tzemadatafullsearcher::search(const std::int32_t* key, void*& data) {
  data = static_cast<tzemadatafull*>(fstore)->getoffset(key);
  return data != nullptr && !fstore->isdefaultdata(data);
}

}  // namespace optxv
