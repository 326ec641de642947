#include "stores/datastorage.h"

#include <algorithm>
#include <cstdio>

namespace optxv {
namespace {

std::int64_t keybytes(std::int32_t n) {
  return std::int64_t{n} * static_cast<std::int64_t>(sizeof(std::int32_t));
}

std::int32_t pathbytes(std::int32_t n) {
  return heapsize((std::int64_t{n} + 1) * static_cast<std::int64_t>(sizeof(void*)));
}

}  // namespace

// tzemadatasearcher

void tzemadatasearcher::startsearch() {}
bool tzemadatasearcher::search(const std::int32_t*, void*&) {
  raiseabstract(this);
}

// tzemadatastore

tzemadatastore::tzemadatastore(std::int32_t n, std::int32_t datasize, const void* defaultdata)
    : fdimension(n),
      fkeysize(heapsize(keybytes(n))),
      frecordsize(heapsize(keybytes(n) + datasize)),
      fdatasize(datasize) {
  if (datasize == 0) return;
  fdefaultdata = xgetmem(datasize);
  copydata(fdefaultdata, defaultdata, datasize);
}

tzemadatastore::~tzemadatastore() {
  if (fdatasize > 0) xfreemem(fdefaultdata, fdatasize);
}

std::int32_t tzemadatastore::getcount() const {
  raiseabstract(this);
}
void tzemadatastore::clear() {
  raiseabstract(this);
}
void tzemadatastore::insertrecord(tzemadatasearcher*, const std::int32_t*, const void*) {
  raiseabstract(this);
}
void tzemadatastore::loadrecord(const std::int32_t*, const void*) {
  raiseabstract(this);
}
void* tzemadatastore::getnextkey(std::int32_t*) {
  raiseabstract(this);
}
std::int64_t tzemadatastore::memoryused() const {
  raiseabstract(this);
}
tzemadatasearcher* tzemadatastore::createsearcher() {
  raiseabstract(this);
}

bool tzemadatastore::startread() {
  freadindex = 0;
  return getcount() > 0;
}
void tzemadatastore::endread() {}

void tzemadatastore::startassign() {
  fassignsearcher.reset(createsearcher());
  fassignsearcher->startsearch();
  fdefaulted = false;
}
void tzemadatastore::endassign() {
  fassignsearcher.reset();
}

void tzemadatastore::assignrecord(const std::int32_t* key, const void* data) {
  void* kept = nullptr;
  if (fassignsearcher->search(key, kept)) {
    if (fdatasize > 0 && !fdefaulted) fdefaulted = isdefaultdata(data);
    copydata(kept, data, fdatasize);
  } else if (fdatasize == 0 || !isdefaultdata(data)) {
    insertrecord(fassignsearcher.get(), key, data);
  }
}

bool tzemadatastore::getnextrecord(std::int32_t* key, void* data) {
  const void* const kept = getnextkey(key);
  if (kept == nullptr) return false;
  copydata(data, kept, fdatasize);
  return true;
}

std::int32_t* tzemadatastore::allocindex() const {
  return static_cast<std::int32_t*>(xgetmem(fkeysize));
}
void tzemadatastore::freeindex(std::int32_t* key) const {
  xfreemem(key, fkeysize);
}
void** tzemadatastore::allocptrs() const {
  return static_cast<void**>(xgetmem(pathbytes(fdimension)));
}
void tzemadatastore::freeptrs(void** ptrs) const {
  xfreemem(ptrs, pathbytes(fdimension));
}

void tzemadatastore::printkey(const std::int32_t* key) const {
  for (std::int32_t i = 0; i < fdimension; ++i) std::printf("%6d", key[i]);
  std::putchar('\n');
}

void tzemadatastore::verify(bool printall) {
  const heaparray<std::int32_t> key(fdimension);
  const heaparray<std::int32_t> last(fdimension);
  std::fill_n(last.get(), fdimension, -1);
  if (!startread()) return;
  while (getnextkey(key.get()) != nullptr) {
    const bool disorder = comparekeys(key.get(), last.get()) <= 0;
    if (disorder && !printall) printkey(last.get());
    if (disorder || printall) printkey(key.get());
    if (disorder) std::puts("Keys out of order");
    copydata(last.get(), key.get(), fkeysize);
  }
  endread();
}

}  // namespace optxv
