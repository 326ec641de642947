#include "stores/sparsestore.h"

#include <algorithm>
#include <cstddef>
#include <new>

namespace optxv {
namespace {

// The bytes that memoryused reckons with.
constexpr std::int32_t reportedinner = 12;
constexpr std::int32_t reportedleaf = 8;  // and the data

/// Data of a leaf begins right after its key, in what would be padding.
constexpr std::int32_t dataoffset = offsetof(sparsecell, fkey) + sizeof(std::int32_t);

/// The link to the first child. REQUIRES: a cell above the last level.
sparsecell*& down(sparsecell* cell) noexcept {
  return static_cast<sparseinner*>(cell)->fdown;
}

}  // namespace

// Cells

std::int32_t tzemadatasparse::cellbytes(std::int32_t level) const {
  if (level < fdimension) return sizeof(sparseinner);
  return heapsize(std::max(std::int64_t{dataoffset} + fdatasize, std::int64_t{sizeof(sparsecell)}));
}

/// The data after the key of a leaf.
void* tzemadatasparse::leafdata(sparsecell* leaf) const noexcept {
  return reinterpret_cast<std::byte*>(leaf) + dataoffset;
}

sparsecell* tzemadatasparse::getcell(std::int32_t level) {
  void* const block = xgetmem(cellbytes(level));
  countup(level < fdimension ? finnercount : fleafcount);
  if (level < fdimension) return new (block) sparseinner{{nullptr, 0}, nullptr};
  return new (block) sparsecell{nullptr, 0};
}

void tzemadatasparse::freecell(sparsecell* cell, std::int32_t level) {
  --(level < fdimension ? finnercount : fleafcount);
  xfreemem(cell, cellbytes(level));
}

void tzemadatasparse::freechain(sparsecell* cell, std::int32_t level) {
  while (cell != nullptr) {
    if (level < fdimension) freechain(down(cell), level + 1);
    sparsecell* const next = cell->fnext;
    freecell(cell, level);
    cell = next;
  }
}

/// Frees the leaves with default data and the cells that have no leaf left; gives the first cell
/// that stays.
sparsecell* tzemadatasparse::prunechain(sparsecell* cell, std::int32_t level) {
  sparsecell* first = nullptr;
  sparsecell** end = &first;
  while (cell != nullptr) {
    sparsecell* const next = cell->fnext;
    const bool leaf = level == fdimension;
    if (!leaf) down(cell) = prunechain(down(cell), level + 1);
    if (leaf ? isdefaultdata(leafdata(cell)) : down(cell) == nullptr) {
      freecell(cell, level);
    } else {
      *end = cell;
      end = &cell->fnext;
    }
    cell = next;
  }
  *end = nullptr;
  return first;
}

// Paths

/// Makes the entries below a level the first children.
void tzemadatasparse::seat(const sparsepath& path, std::int32_t level) const noexcept {
  for (std::int32_t k = level; k < fdimension; ++k) path[k + 1] = down(path[k]);
}

/// Makes the path that of the last record. REQUIRES: there is one.
void tzemadatasparse::seatlast() noexcept {
  for (std::int32_t k = 0; k < fdimension; ++k) {
    sparsecell* cell = down(fpath[k]);
    while (cell->fnext != nullptr) cell = cell->fnext;
    fpath[k + 1] = cell;
  }
}

/// Cells for a key from a level down, the last one a leaf; gives the topmost one. Nothing is left
/// of them if there is no memory.
sparsecell* tzemadatasparse::newchain(std::int32_t level, const std::int32_t* key) {
  sparsecell* below = nullptr;
  std::int32_t k = fdimension;
  try {
    for (; k >= level; --k) {
      sparsecell* const cell = getcell(k);
      cell->fkey = key[k - 1];
      if (k < fdimension) down(cell) = below;
      below = cell;
    }
  } catch (...) {
    freechain(below, k + 1);
    throw;
  }
  return below;
}

/// Adds the cells of a key from a level down, after the path's entry there or as the first child
/// of the entry above. The path then follows them.
void tzemadatasparse::add(const sparsepath& path, std::int32_t level, bool behind,
                          const std::int32_t* key) {
  sparsecell* const cell = newchain(level, key);
  sparsecell*& link = behind ? path[level]->fnext : down(path[level - 1]);
  cell->fnext = link;
  link = cell;
  path[level] = cell;
  seat(path, level);
}

// tzemadatasparse

tzemadatasparse::tzemadatasparse(std::int32_t n, std::int32_t datasize, const void* defaultdata)
    : tzemadatastore(n, datasize, defaultdata), fpath(std::int64_t{n} + 1) {
  fpath[0] = getcell(0);
  finnercount = 0;
}

tzemadatasparse::~tzemadatasparse() {
  tzemadatasparse::clear();
  freecell(fpath[0], 0);
}

void tzemadatasparse::clear() {
  freechain(down(fpath[0]), 1);
  down(fpath[0]) = nullptr;
  fpath[1] = nullptr;
}

void tzemadatasparse::insertrecord(tzemadatasearcher* searcher, const std::int32_t* key,
                                   const void* data) {
  const auto& from = *static_cast<tzemadatasparsesearcher*>(searcher);
  const std::int32_t level = fleafcount == 0 ? 1 : from.fmatched + 1;
  const bool behind = fleafcount != 0 && key[level - 1] >= from.fpath[level]->fkey;
  add(from.fpath, level, behind, key);
  fatlast = false;
  copydata(leafdata(from.fpath[fdimension]), data, fdatasize);
}

void tzemadatasparse::loadrecord(const std::int32_t* key, const void* data) {
  std::int32_t level = 1;
  if (fleafcount == 0) {
    add(fpath, level, false, key);
  } else {
    if (!fatlast) seatlast();
    while (level <= fdimension && fpath[level]->fkey == key[level - 1]) ++level;
    if (level <= fdimension) add(fpath, level, true, key);
  }
  fatlast = true;
  copydata(leafdata(fpath[fdimension]), data, fdatasize);
}

bool tzemadatasparse::startread() {
  fatlast = false;
  if (fleafcount == 0) return false;
  seat(fpath, 0);
  return true;
}

void* tzemadatasparse::getnextkey(std::int32_t* key) {
  if (fpath[1] == nullptr) return nullptr;
  fatlast = false;
  for (std::int32_t k = 1; k <= fdimension; ++k) key[k - 1] = fpath[k]->fkey;
  sparsecell* const leaf = fpath[fdimension];
  std::int32_t level = fdimension;
  fpath[level] = leaf->fnext;
  while (fpath[level] == nullptr && --level > 0) fpath[level] = fpath[level]->fnext;
  if (level > 0) seat(fpath, level);
  return leafdata(leaf);
}

void tzemadatasparse::endassign() {
  tzemadatastore::endassign();
  if (!fdefaulted) return;
  down(fpath[0]) = prunechain(down(fpath[0]), 1);
  // The cells that the path led over may be gone.
  fpath[1] = nullptr;
  fatlast = false;
}

std::int64_t tzemadatasparse::memoryused() const {
  return (std::int64_t{fdatasize} + reportedleaf) * fleafcount +
         std::int64_t{reportedinner} * finnercount;
}

tzemadatasearcher* tzemadatasparse::createsearcher() {
  return new tzemadatasparsesearcher(*this);
}

// tzemadatasparsesearcher

tzemadatasparsesearcher::tzemadatasparsesearcher(tzemadatasparse& store)
    : tzemadatasearcher(store),
      fpath(std::int64_t{store.dimension()} + 1),
      fdimension(store.dimension()) {}

void tzemadatasparsesearcher::startsearch() {
  fpath[0] = trie().fpath[0];
  fpath[1] = nullptr;
  if (trie().getcount() > 0) trie().seat(fpath, 0);
}

/// Makes the path's entry at a level the last sibling whose key is not above the value, or the
/// first one if all are; whether it has that very key.
bool tzemadatasparsesearcher::seek(std::int32_t level, std::int32_t value) {
  sparsecell* cell = fpath[level];
  if (cell->fkey == value) return true;
  if (value < cell->fkey) cell = down(fpath[level - 1]);
  while (cell->fnext != nullptr && cell->fnext->fkey <= value) cell = cell->fnext;
  if (cell != fpath[level]) {
    fpath[level] = cell;
    trie().seat(fpath, level);
  }
  return cell->fkey == value;
}

bool tzemadatasparsesearcher::search(const std::int32_t* key, void*& data) {
  fmatched = 0;
  data = nullptr;
  if (fpath[1] == nullptr) return false;
  while (fmatched < fdimension && seek(fmatched + 1, key[fmatched])) ++fmatched;
  if (fmatched < fdimension) return false;
  data = trie().leafdata(fpath[fdimension]);
  return true;
}

}  // namespace optxv
