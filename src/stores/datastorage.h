// Data stores: records with a key of n integers and a block of data of fixed size.
//
// Four stores share one interface: tzemadatatable (a sorted array), tzemadatasparse (a trie),
// tzemadatahashed (a hash table over a list) and tzemadatafull (a dense array). A store is filled
// by loadrecord, in ascending order of keys and without a search, or in a bracket of startassign
// and endassign, where records are sought one by one, and where data equal to the default data of
// the store means no record.
//
// A key is an array of n signed 32-bit integers of the caller's; the first integer counts most.
// Data passed in is read as bytes. A pointer to data that a store gives out leads into the store,
// is aligned to 4 bytes and no more (so doubles are copied out), and is good until the record
// leaves; with a data size of 0 it leads to no bytes.
//
// What memoryused reports is reckoned with words of 4 bytes, so that figures compare across
// machines: 4 bytes for a slot of a table, 12 for an inner cell of a trie, 8 for the links of a
// record. What is really allocated is what the pointers of the machine need, about twice that.
//
// All records come from the pool allocator of listing/zmaheap.h: one thread, its limit, its
// failures (eoutofmemory where the system has no memory, or where a size passes 2147483647 bytes).
// No key or index is checked.
// REQUIRES, throughout: dimension >= 1 and datasize >= 0; stores are gone before zmaheaprelease.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>

#include "foundation/runtime.h"
#include "foundation/visibility.h"
#include "stores/heaparray.h"

namespace optxv {

class tzemadatastore;

/// Finds records of one store by key, each store in its own way; made by createsearcher.
///
/// BORROWS: the store, which has to outlive it.
/// REQUIRES: startsearch before the first search, and again after the store changed in any way
/// other than by insertrecord with this very searcher.
class OPTXV_EXPORT tzemadatasearcher : public tobject {
 public:
  explicit tzemadatasearcher(tzemadatastore& store) noexcept : fstore(&store) {}
  tzemadatasearcher(const tzemadatasearcher&) = delete;
  tzemadatasearcher& operator=(const tzemadatasearcher&) = delete;

  /// Goes to the front of the store. Nothing here.
  virtual void startsearch();
  /// Whether there is a record of that key; data then leads to its data. After false, data is nil
  /// unless a store says otherwise. Raises eabstracterror unless overridden.
  virtual bool search(const std::int32_t* key, void*& data);

  tzemadatastore& store() const noexcept { return *fstore; }

 protected:
  tzemadatastore* fstore;
};

/// The base of the stores. An operation that is called abstract here raises eabstracterror.
class OPTXV_EXPORT tzemadatastore : public tobject {
 public:
  /// Keys of n integers, data of datasize bytes. OWNS: a copy of the datasize bytes of default data
  /// (nil is accepted if there are none).
  tzemadatastore(std::int32_t n, std::int32_t datasize, const void* defaultdata);
  tzemadatastore(const tzemadatastore&) = delete;
  tzemadatastore& operator=(const tzemadatastore&) = delete;
  /// An open assign bracket ends without endassign.
  ~tzemadatastore() override;

  /// The number of records. Abstract here.
  virtual std::int32_t getcount() const;
  /// Removes all records. Abstract here.
  virtual void clear();
  /// Adds a record that the last search of that searcher did not find. Abstract here.
  /// REQUIRES: a searcher of this store, whose last search was for this key and gave false.
  virtual void insertrecord(tzemadatasearcher* searcher, const std::int32_t* key, const void* data);
  /// Adds a record without a search; keys are to come in ascending order. Abstract here.
  virtual void loadrecord(const std::int32_t* key, const void* data);
  /// Goes to the first record; false if there is none.
  virtual bool startread();
  /// Writes the next key and gives its data, in ascending order of keys; nil at the end. Abstract
  /// here. REQUIRES: startread before.
  virtual void* getnextkey(std::int32_t* key);
  /// Ends a read. Does nothing.
  virtual void endread();
  /// Opens an assign bracket, with a searcher of its own; a bracket that is open already is
  /// dropped.
  virtual void startassign();
  /// Closes the bracket. The stores then remove the records that became default.
  virtual void endassign();
  /// The bytes of memory in use, as the head of this file says. Abstract here.
  virtual std::int64_t memoryused() const;
  /// A new searcher of this store. OWNS: the caller. Abstract here.
  virtual tzemadatasearcher* createsearcher();

  /// As getnextkey, with the data copied out; false at the end.
  bool getnextrecord(std::int32_t* key, void* data);

  /// Within a bracket: gives the record of that key this data. A record that is there keeps its
  /// place even if the data is default, until endassign removes it; for a key without a record,
  /// default data is dropped. With a data size of 0 every new key is inserted.
  /// REQUIRES: a bracket is open.
  void assignrecord(const std::int32_t* key, const void* data);

  /// The difference a[i] - b[i] of the first integers that differ, 0 if none do.
  std::int64_t comparekeys(const std::int32_t* a, const std::int32_t* b) const noexcept {
    for (std::int32_t i = 0; i < fdimension; ++i)
      if (a[i] != b[i]) return std::int64_t{a[i]} - b[i];
    return 0;
  }
  /// Whether all bytes are those of the default data; always so with a data size of 0.
  bool isdefaultdata(const void* data) const noexcept {
    return fdatasize == 0 ||
           std::memcmp(data, fdefaultdata, static_cast<std::size_t>(fdatasize)) == 0;
  }

  /// A block for one key, and its return. OWNS: the caller.
  std::int32_t* allocindex() const;
  void freeindex(std::int32_t* key) const;
  /// A block of dimension + 1 pointers, and its return. OWNS: the caller.
  void** allocptrs() const;
  void freeptrs(void** ptrs) const;

  /// Reads the store and prints what is wrong with the order of its keys to standard output; with
  /// printall, prints every key. A key is a line of its integers, each in a width of 6. A key that
  /// is not above the one before is followed by the line "Keys out of order", and both keys stand
  /// before it. KEEP: the first key is compared with one of all -1.
  void verify(bool printall);

  std::int32_t dimension() const noexcept { return fdimension; }
  std::int32_t keysize() const noexcept { return fkeysize; }        ///< bytes
  std::int32_t recordsize() const noexcept { return frecordsize; }  ///< bytes of key and data
  std::int32_t datasize() const noexcept { return fdatasize; }      ///< bytes
  /// Nil if the data size is 0.
  const void* defaultdata() const noexcept { return fdefaultdata; }
  /// Whether a record may have become default in this bracket.
  bool defaulted() const noexcept { return fdefaulted; }

 protected:
  std::int32_t fdimension;
  std::int32_t fkeysize;
  std::int32_t frecordsize;
  std::int32_t fdatasize;
  std::int32_t freadindex = 0;  ///< what the table store reads next
  void* fdefaultdata = nullptr;
  std::unique_ptr<tzemadatasearcher> fassignsearcher;
  bool fdefaulted = false;

 private:
  void printkey(const std::int32_t* key) const;
};

}  // namespace optxv
