// The dense store: an array over the integers that occur in the keys of another store.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/visibility.h"
#include "stores/datastorage.h"

namespace optxv {

/// Maps indices from 0 up to numbers; its memory grows with the highest index.
class OPTXV_EXPORT tintegermapping : public tobject {
 public:
  tintegermapping() = default;
  tintegermapping(const tintegermapping&) = delete;
  tintegermapping& operator=(const tintegermapping&) = delete;
  ~tintegermapping() override;

  /// The number at i; -1 for an index that has none, of whatever value.
  std::int32_t getmapping(std::int32_t i) const noexcept {
    return i < 0 || i >= fcapacity ? -1 : fmap[i];
  }
  /// Stores v at i; does nothing for an index below 0. Room grows by 1024 from nothing, twofold up
  /// to 65536, and by quarters from there. Raises an `exception` if there is no memory (the mapping
  /// is empty then), and for the index 2147483647, which is beyond any capacity.
  void setmapping(std::int32_t i, std::int32_t v);

  /// 4 bytes for each number there is room for.
  std::int64_t memoryused() const noexcept;

  std::int32_t highest() const noexcept { return fhighest; }  ///< index ever set, -1 for none
  std::int32_t capacity() const noexcept { return fcapacity; }

 private:
  void reserve(std::int32_t i);

  std::int32_t fhighest = -1;
  std::int32_t fcapacity = 0;
  std::int32_t* fmap = nullptr;
};

/// One mapping for each dimension.
///
/// OWNS: the mappings. KEEP: the array takes 40,000,000 bytes per dimension, of which few are ever
/// touched, and is not given back: the allocator counts it to the end of the process.
class OPTXV_EXPORT mappingarray {
 public:
  explicit mappingarray(std::int32_t n);
  mappingarray(const mappingarray&) = delete;
  mappingarray& operator=(const mappingarray&) = delete;
  ~mappingarray();

  tintegermapping& operator[](std::int32_t i) const noexcept { return *fmappings[i]; }

 private:
  std::int32_t fcount;
  tintegermapping** fmappings;
};

/// The dense store. Made from another store, it has a place for every combination of the integers
/// that the source's keys have in each dimension; searching is arithmetic. It cannot grow nor be
/// read in order: insertrecord and getnextkey stay abstract. A record is there if its data is not
/// default. memoryused is the array, allocated or not, and the mappings.
///
/// Integers below 0 have no place, so a record with one is not found and not loaded. Memory
/// grows with the largest integer, and with the product of the numbers of different ones.
class OPTXV_EXPORT tzemadatafull : public tzemadatastore {
 public:
  /// An array for the keys of source, with its dimension, data size and default data; reads the
  /// source once. Raises eoutofmemory for an array above 2147483647 bytes and for more than 53
  /// dimensions, as the mappings alone are too much then; otherwise as the mappings do.
  explicit tzemadatafull(tzemadatastore& source);

  /// Allocates the array and loads all records of source; does nothing if that was done. Until
  /// then no key is found. REQUIRES: source has the dimension and data size of this store.
  void allocatememory(tzemadatastore& source);

  /// The number of records loaded. KEEP: a key that is loaded again counts again.
  std::int32_t getcount() const override { return fcount; }
  /// Makes all data default. KEEP: getcount stays.
  void clear() override;
  /// Ignores a key without a place.
  void loadrecord(const std::int32_t* key, const void* data) override;
  std::int64_t memoryused() const override;
  tzemadatasearcher* createsearcher() override;

  /// The data of a key, default or not; nil if the key has no place.
  void* getoffset(const std::int32_t* key) const noexcept;

  // Of each dimension, i from 0.
  std::int32_t stride(std::int32_t i) const noexcept { return fstrides[i]; }     ///< bytes
  std::int32_t firstkey(std::int32_t i) const noexcept { return ffirstkey[i]; }  ///< the lowest
  /// The number of different integers. KEEP: 0 if there is only one.
  std::int32_t size(std::int32_t i) const noexcept { return fsizes[i]; }
  const tintegermapping& mapping(std::int32_t i) const noexcept { return fmappings[i]; }
  std::int32_t totalsize() const noexcept { return ftotalsize; }  ///< bytes of the array

 private:
  void markkeys(tzemadatastore& source);
  void numberkeys(std::int32_t i);
  void layout();

  heaparray<std::byte> fdata;
  std::int32_t fcount = 0;
  heaparray<std::int32_t> fstrides;
  heaparray<std::int32_t> ffirstkey;
  heaparray<std::int32_t> fsizes;
  std::int32_t ftotalsize = 0;
  mappingarray fmappings;
};

/// The searcher of the dense store; it keeps no place. KEEP: a key that has a place and default
/// data is not found, yet data leads to its data; with a data size of 0 nothing is ever found.
class OPTXV_EXPORT tzemadatafullsearcher : public tzemadatasearcher {
 public:
  explicit tzemadatafullsearcher(tzemadatafull& store) noexcept : tzemadatasearcher(store) {}
  bool search(const std::int32_t* key, void*& data) override;
};

}  // namespace optxv
