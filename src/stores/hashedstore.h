// The hashed store: records in a list, in the order they came, with a hash table over them; the
// list is sorted when it is read.
#pragma once

#include <cstdint>

#include "foundation/visibility.h"
#include "stores/datastorage.h"

namespace optxv {

/// The head of a record; the key and then the data follow in the same block.
struct linkedrecord {
  linkedrecord* fnext;      ///< the next record of the list
  linkedrecord* fhashnext;  ///< the next record of the hash chain
};

/// A record where a sort put it, with what it is sorted by.
struct sortedrecord {
  linkedrecord* record;
  std::uint64_t value;
};

/// A list of records in the order of their arrival, which sorts itself to be read.
///
/// OWNS: its records.
class OPTXV_EXPORT tlinkeddata : public tobject {
 public:
  /// Keys of n integers, data of datasize bytes.
  tlinkeddata(std::int32_t n, std::int32_t datasize);
  tlinkeddata(const tlinkeddata&) = delete;
  tlinkeddata& operator=(const tlinkeddata&) = delete;
  ~tlinkeddata() override;

  /// Appends a record, whether its key is there or not.
  /// KEEP: a sort that moved records leaves the list without a tail, and it then takes no more
  /// records until it is cleared (or removedefaults has found the tail again): raises
  /// eassertionfailed, and nothing has changed.
  linkedrecord* additem(const std::int32_t* key, const void* data);
  /// Frees all records.
  void clear();
  /// count() times recsize().
  std::int64_t memoryused() const noexcept { return std::int64_t{fcount} * frecsize; }

  /// Sorts, and sets the cursor to the first record; false, and a nil cursor, if there is none.
  /// The order says which integer of the key counts most, second and so on: n numbers from 1 to n;
  /// nil for the order of the key itself.
  bool startread(linkedrecord*& cursor, const std::int32_t* order);
  /// Writes the key at the cursor, moves the cursor, and gives the data; nil at the end.
  void* getnextkey(linkedrecord*& cursor, std::int32_t* key);
  /// The same, with the data copied out; false at the end.
  bool getnextrecord(linkedrecord*& cursor, std::int32_t* key, void* data);

  /// Reallocates an array to count() + 1 pointers and writes the keys of all records to it from
  /// index 1 on, in the order of the list; index 0 gets nil. size counts in pointers, not in bytes,
  /// before and after. REQUIRES: the array is nil and size 0, or they are what an earlier call
  /// left. OWNS: the caller, who frees it with xreallocmem from size times sizeof *array to 0
  /// bytes. BORROWS: the keys stay the list's.
  void createlist(const std::int32_t**& array, std::int64_t& size) const;

  /// Frees the records whose data equals that, byte by byte, and finds the tail again; returns
  /// whether there were any. Does nothing with a data size of 0.
  bool removedefaults(const void* defaultdata);

  /// Sorts by key, equal keys in the order they stood, and leaves the list without a tail. KEEP:
  /// does nothing if no key is below the one before it, whatever the order asked for.
  ///
  /// A radix sort on the bits that the integers from minkey() to maxkey() need, least significant
  /// first: time is linear in the records, and memory too, 32 bytes for each while it sorts and 16
  /// until the read that follows has ended. Raises eoutofmemory if there is not as much,
  /// and nothing has changed.
  void sort(const std::int32_t* order);

  /// A block for one key, and its return. OWNS: the caller.
  std::int32_t* allocindex() const;
  void freeindex(std::int32_t* key) const;

  static std::int32_t* keyof(linkedrecord* record) noexcept {
    return reinterpret_cast<std::int32_t*>(record + 1);
  }
  void* dataof(linkedrecord* record) const noexcept {
    return reinterpret_cast<unsigned char*>(record + 1) + fkeysize;
  }

  std::int32_t maxkey() const noexcept { return fmaxkey; }  ///< of all integers seen, and 0
  std::int32_t minkey() const noexcept { return fminkey; }  ///< of all seen, and 2147483647
  std::int32_t dimension() const noexcept { return fdimension; }
  std::int32_t keysize() const noexcept { return fkeysize; }
  std::int32_t recsize() const noexcept { return frecsize; }  ///< reckoned: 8 bytes, key and data
  std::int32_t datasize() const noexcept { return fdatasize; }
  linkedrecord* head() const noexcept { return fhead; }
  linkedrecord* tail() const noexcept { return ftail; }
  std::int32_t count() const noexcept { return fcount; }

 private:
  std::int32_t recordbytes() const;
  bool inorder() const noexcept;
  void note(const std::int32_t* key) noexcept;
  void fetchahead(const linkedrecord* record) noexcept;

  std::int32_t fmaxkey = 0;
  std::int32_t fminkey = 2147483647;
  std::int32_t fdimension;
  std::int32_t fkeysize;
  std::int32_t frecsize;
  std::int32_t fdatasize;
  linkedrecord* fhead = nullptr;
  linkedrecord* ftail = nullptr;
  std::int32_t fcount = 0;
  heaparray<sortedrecord> forder;  ///< left by a sort for the read that follows, or nothing
  std::int32_t freached = 0;       ///< the place of that read in it
};

/// A list of records with a hash table over it, of five sizes about tenfold apart. The table is
/// built when it is needed and dropped when the list changes under it.
class OPTXV_EXPORT tzemahashlist : public tobject {
 public:
  tzemahashlist(std::int32_t n, std::int32_t datasize);
  tzemahashlist(const tzemahashlist&) = delete;
  tzemahashlist& operator=(const tzemahashlist&) = delete;

  /// Adds a record, or gives the one of that key the new data; returns whether it was added.
  /// KEEP: the table is made larger by the first call that finds more records than rehashat(), so
  /// the table of 997 buckets serves up to the 1501st record.
  bool additem(const std::int32_t* key, const void* data);
  /// The data of the record of that key, of the one added last if there are more; nil if none.
  void* indexof(const std::int32_t* key);
  /// Adds a record without looking at those there, and drops the table. KEEP: a key that comes
  /// twice makes two records.
  void loadrecord(const std::int32_t* key, const void* data);

  /// Removes all records, and the table first.
  void clear();
  /// As that of the list; drops the table if records went.
  bool removedefaults(const void* defaultdata);

  std::int32_t getcount() const noexcept { return flinked.count(); }
  bool startread() { return flinked.startread(freadcursor, nullptr); }
  void* getnextkey(std::int32_t* key) { return flinked.getnextkey(freadcursor, key); }
  /// That of the list, and 4 bytes for each bucket.
  std::int64_t memoryused() const noexcept;

  /// Builds the table for the records there are.
  void hashall();
  /// Allocates an empty table for n records.
  void hashtablereset(std::int32_t n);
  /// Drops the table.
  void clearhashlist() noexcept;
  /// The bucket of a key. REQUIRES: hashcount() above 0.
  std::int32_t hash(const std::int32_t* key) const noexcept;
  bool equalkeys(const std::int32_t* a, const std::int32_t* b) const noexcept;

  std::int32_t hashcount() const noexcept { return fhashcount; }  ///< buckets, 0 without a table
  std::int32_t rehashat() const noexcept { return frehashat; }
  const tlinkeddata& linked() const noexcept { return flinked; }

 private:
  linkedrecord* find(const std::int32_t* key) const noexcept;
  void push(linkedrecord* record) noexcept;

  heaparray<linkedrecord*> fhashtable;
  tlinkeddata flinked;
  std::int32_t fhashcount = 0;
  std::int32_t frehashat = 0;
  std::int32_t fdimension;
  std::int32_t fkeysize;
  std::int32_t fdatasize;
  linkedrecord* freadcursor = nullptr;
};

/// The hashed store. A read is in ascending order of keys, in whatever order the records came.
///
/// REQUIRES: no new record after a read that had to sort, until the store is cleared (or a bracket
/// removed records): it is refused as tlinkeddata::additem says. Records that are there may be
/// assigned at any time. No insertion while a read goes on.
class OPTXV_EXPORT tzemadatahashed : public tzemadatastore {
 public:
  tzemadatahashed(std::int32_t n, std::int32_t datasize, const void* defaultdata)
      : tzemadatastore(n, datasize, defaultdata), fhashlist(n, datasize) {}

  std::int32_t getcount() const override { return fhashlist.getcount(); }
  void clear() override { fhashlist.clear(); }
  /// The searcher is not used, and may be nil. A key that is there gets the new data.
  void insertrecord(tzemadatasearcher* searcher, const std::int32_t* key,
                    const void* data) override;
  /// In any order of keys. KEEP: a key that comes twice makes two records.
  void loadrecord(const std::int32_t* key, const void* data) override;
  bool startread() override { return fhashlist.startread(); }
  void* getnextkey(std::int32_t* key) override { return fhashlist.getnextkey(key); }
  void endassign() override;
  std::int64_t memoryused() const override { return fhashlist.memoryused(); }
  tzemadatasearcher* createsearcher() override;

  tzemahashlist& hashlist() noexcept { return fhashlist; }

 private:
  tzemahashlist fhashlist;
};

/// The searcher of the hashed store; it keeps no place, and any change may come between searches.
class OPTXV_EXPORT tzemadatahashedsearcher : public tzemadatasearcher {
 public:
  explicit tzemadatahashedsearcher(tzemadatahashed& store) noexcept : tzemadatasearcher(store) {}
  bool search(const std::int32_t* key, void*& data) override;
};

}  // namespace optxv
