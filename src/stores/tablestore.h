// The table store: records in an array, sorted by key.
#pragma once

#include <cstddef>
#include <cstdint>

#include "foundation/visibility.h"
#include "stores/datastorage.h"

namespace optxv {

/// A list of record blocks of one size. An index counts from 0 and is not checked.
///
/// OWNS: its blocks.
class OPTXV_EXPORT treclist : public tobject {
 public:
  /// Blocks of recsize bytes, their content undefined until the caller fills them.
  explicit treclist(std::int32_t recsize) noexcept : frecsize(recsize) {}
  treclist(const treclist&) = delete;
  treclist& operator=(const treclist&) = delete;
  ~treclist() override;

  /// Makes room, from nothing for 16 and then fourfold, by a quarter from 1048576 on; called only
  /// when count() equals capacity().
  virtual void grow();

  std::int32_t count() const noexcept { return fcount; }
  std::int32_t capacity() const noexcept { return fcapacity; }
  std::int32_t recsize() const noexcept { return frecsize; }  ///< bytes

  /// Appends a block.
  std::byte* additem();
  /// Puts a block before block i; i may be count().
  std::byte* insert(std::int32_t i);
  /// Nil for a block that was removed.
  std::byte* getitem(std::int32_t i) const noexcept { return flist[i]; }
  void exchange(std::int32_t i, std::int32_t j) noexcept;
  /// Frees block i and leaves its slot, nil, until cleanup.
  void remove(std::int32_t i);
  /// Closes up the slots that are nil; the order of the others stays.
  void cleanup() noexcept;
  /// Frees block i, which the caller is about to replace; the slot keeps a bad pointer. Does
  /// nothing for a slot that is nil.
  void freeitem(std::int32_t i);
  /// Reallocates to n slots, or to count() if that is more. Raises an `exception` if there is no
  /// memory; the list is lost then, and may only be cleared or freed.
  void setcapacity(std::int32_t n);
  /// Frees all blocks, the first one first, and the array.
  void clear();

 private:
  std::int32_t fcapacity = 0;
  std::int32_t frecsize;
  std::int32_t fcount = 0;
  std::byte** flist = nullptr;
};

/// The table store. A search is a binary search with a finger: it starts where the last one ended,
/// so searches in ascending order cost next to nothing. An insertion moves the slots after it.
/// memoryused is that of all records and 4 bytes for each slot of the array.
class OPTXV_EXPORT tzemadatatable : public tzemadatastore {
 public:
  tzemadatatable(std::int32_t n, std::int32_t datasize, const void* defaultdata)
      : tzemadatastore(n, datasize, defaultdata), freclist(frecordsize) {}

  std::int32_t getcount() const override { return freclist.count(); }
  void clear() override { freclist.clear(); }
  void insertrecord(tzemadatasearcher* searcher, const std::int32_t* key,
                    const void* data) override;
  /// Appends, whatever the key: after loads out of order, sort.
  void loadrecord(const std::int32_t* key, const void* data) override;
  void* getnextkey(std::int32_t* key) override;
  /// KEEP: defaulted() stays true after a bracket that removed records.
  void endassign() override;
  std::int64_t memoryused() const override;
  tzemadatasearcher* createsearcher() override;

  std::int32_t getcapacity() const noexcept { return freclist.capacity(); }
  void setcapacity(std::int32_t n) { freclist.setcapacity(n); }

  /// Sorts the records by key; the order of equal keys is not kept.
  void sort();

  /// The records: each block the key, then the data.
  const treclist& records() const noexcept { return freclist; }

 private:
  treclist freclist;
};

/// The searcher of the table store. After a search that found nothing, position() is where the
/// record belongs.
class OPTXV_EXPORT tzemadatatablesearcher : public tzemadatasearcher {
 public:
  explicit tzemadatatablesearcher(tzemadatatable& store) noexcept : tzemadatasearcher(store) {}

  void startsearch() override { fposition = 0; }
  /// Any change of the store is allowed between two searches: a position too large is brought back.
  bool search(const std::int32_t* key, void*& data) override;

  std::int32_t position() const noexcept { return fposition; }

 private:
  const treclist& records() const noexcept;
  std::int64_t compareat(std::int32_t i, const std::int32_t* key) const noexcept;
  bool nearby(const std::int32_t* key, std::int32_t direction);
  bool between(const std::int32_t* key, std::int32_t low, std::int32_t high);

  std::int32_t fposition = 0;  ///< the finger
};

}  // namespace optxv
