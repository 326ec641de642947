// The array lists that everything is kept in, and the sort they share.
//
// Indices count from 0; -1 means not found. No operation checks an index.
// REQUIRES, throughout: 0 <= index < count(), or <= count() for an insertion.
//
// A list grows by itself, from nothing to 16 and then eightfold, and by a quarter once it is large.
// Failures of memory are the only exceptions; a list that cannot grow stays as it was.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "foundation/boundedstring.h"
#include "foundation/runtime.h"
#include "foundation/strutilx.h"
#include "foundation/visibility.h"

namespace optxv {

/// The sort, on indices only: a descendant says how two indices compare and how they change
/// places, and so can sort any parallel data.
class OPTXV_EXPORT tquicksortclass : public tobject {
 public:
  tquicksortclass() = default;
  tquicksortclass(const tquicksortclass&) = delete;
  tquicksortclass& operator=(const tquicksortclass&) = delete;

  /// Lets two entries change places. Raises eabstracterror unless overridden.
  virtual void exchange(std::int32_t i, std::int32_t j);
  /// Below 0, 0 or above 0 as entry i belongs before, with or after entry j. Raises eabstracterror
  /// unless overridden.
  virtual int compare(std::int32_t i, std::int32_t j);

  /// Sorts the entries 0 to n-1; makes no call for an n below 2.
  void sortn(std::int32_t n);

  /// Sorts the entries l to r. KEEP: C. A. R. Hoare's quicksort with the middle entry as the pivot,
  /// followed by index through every exchange, and exchanges of an entry with itself; the sort is
  /// not stable, and the order of equal entries is the one that these very steps give.
  void quicksort(std::int32_t l, std::int32_t r);

 private:
  void part(std::int32_t l, std::int32_t r, std::int32_t& i, std::int32_t& j);
};

/// The capacity after c when a list is full: 16, 128, 1024 and so on eightfold, by a quarter from
/// 1048576 on, at most 2147483647. Raises an `exception` (memory) if c is that already.
OPTXV_EXPORT std::int32_t growncapacity(std::int32_t c);

/// The bytes of an array of n slots.
template <class Slot>
constexpr std::int64_t arraysize(std::int32_t n) noexcept {
  // NOLINTNEXTLINE(bugprone-sizeof-expression): a slot may well be a pointer
  return std::int64_t{n} * static_cast<std::int64_t>(sizeof(Slot));
}

/// What a list keeps of a text: its first 255 bytes.
constexpr std::string_view keptpart(std::string_view s) noexcept {
  return s.substr(0, shortstring::maximum);
}

/// Whether a text is equal to one that a list keeps, case ignored (u) or not.
/// KEEP: an empty text is kept as nil, and nil is equal to no text: it is never found.
inline bool ukepttextequals(const unsigned char* kept, std::string_view s) noexcept {
  return kept != nullptr && struequal(getstring(kept), s);
}
inline bool kepttextequals(const unsigned char* kept, std::string_view s) noexcept {
  return kept != nullptr && strequal(getstring(kept), s);
}

/// A list of pointers.
///
/// OWNS: nothing. A descendant whose items are its own overrides freeitem to release one.
/// REQUIRES: such a descendant calls clear() in its own destructor, as that of the base no longer
/// reaches the override.
class OPTXV_EXPORT txlist : public tquicksortclass {
 public:
  ~txlist() override { clear(); }

  void exchange(std::int32_t i, std::int32_t j) override;
  // compare stays abstract: pointers have no order.
  /// Makes room; called only when count() equals capacity().
  virtual void grow();
  /// Releases item i, which is about to leave the list. Does nothing here.
  virtual void freeitem(std::int32_t i);

  std::int32_t count() const noexcept { return fcount; }
  std::int32_t capacity() const noexcept { return fcapacity; }

  /// Appends, and gives the index.
  std::int32_t add(void* item);
  void insert(std::int32_t i, void* item);
  void* get(std::int32_t i) const noexcept { return flist[i]; }
  /// Releases item i through freeitem, then stores.
  void put(std::int32_t i, void* item);
  /// The last item, nil if there is none.
  void* getlast() const noexcept;
  std::int32_t indexof(const void* item) const noexcept;
  /// Releases item i through freeitem and closes the gap.
  void delete_(std::int32_t i);
  /// Deletes the first such item; gives the index it had, or -1.
  std::int32_t remove(const void* item);
  /// Takes the first such item out without freeitem and gives it back, or nil.
  void* extract(const void* item);
  /// Releases all items, the last one first, and the array.
  void clear();
  /// Reallocates to n slots, or to count() if that is more.
  void setcapacity(std::int32_t n);
  /// Exchanges all items with those of a list of the same class.
  void swapitems(txlist& other) noexcept {
    std::swap(fcapacity, other.fcapacity);
    std::swap(fcount, other.fcount);
    std::swap(flist, other.flist);
  }

 protected:
  // KEEP: in this order; txcustomstringlist has another.
  std::int32_t fcapacity = 0;
  std::int32_t fcount = 0;
  void** flist = nullptr;
};

/// A list of texts. An empty text is kept as nil.
///
/// OWNS: its heap strings.
class OPTXV_EXPORT txstrings : public txlist {
 public:
  ~txstrings() override { clear(); }

  /// pstrucmp of two items: case ignored, as it is in indexof.
  int compare(std::int32_t i, std::int32_t j) override;
  /// Releases the text of item i. KEEP: the item still points at it, so that nothing may be done
  /// with it but to store over it in flist or to close the gap: get, put, indexof, a second
  /// freeitem and clear would all reach for what is gone.
  void freeitem(std::int32_t i) override;

  std::int32_t add(std::string_view s);
  void insert(std::int32_t i, std::string_view s);
  /// BORROWS: good until the entry is replaced or leaves.
  std::string_view get(std::int32_t i) const noexcept { return getstring(item(i)); }
  /// s may be the text that is replaced.
  void put(std::int32_t i, std::string_view s);
  /// The first equal text, case ignored. KEEP: an empty text is never found.
  std::int32_t indexof(std::string_view s) const noexcept;
  /// Deletes the first equal text, case ignored. KEEP: gives back s, not the text as it was kept;
  /// the empty text if there was none.
  shortstring extract(std::string_view s);
  void sort() { sortn(fcount); }

 private:
  pstring item(std::int32_t i) const noexcept { return static_cast<pstring>(flist[i]); }
};

/// One entry of a string list.
struct txstringentry {
  pstring fname;  ///< nil for the empty name
  void* fobject;  ///< a word that the list itself never looks at
};

/// A list of names, each with a word beside it. Insertion is for descendants to offer.
///
/// OWNS: the names. A descendant whose words are its own overrides freeobject to release one.
/// REQUIRES: such a descendant calls clear() in its own destructor, as that of the base no longer
/// reaches the override.
class OPTXV_EXPORT txcustomstringlist : public tquicksortclass {
 public:
  ~txcustomstringlist() override { clear(); }

  void exchange(std::int32_t i, std::int32_t j) override;
  /// pstrucmp of two names: case ignored, as it is in indexof.
  int compare(std::int32_t i, std::int32_t j) override;
  /// Makes room; called only when count() equals capacity().
  virtual void grow();
  /// Releases the word of entry i, which is about to leave the list. Does nothing here.
  virtual void freeobject(std::int32_t i);

  std::int32_t count() const noexcept { return fcount; }
  std::int32_t capacity() const noexcept { return fcapacity; }

  /// Append, and give the index. s may be a name of this list.
  std::int32_t add(std::string_view s) { return addobject(s, nullptr); }
  std::int32_t addobject(std::string_view s, void* obj);
  /// BORROWS: good until the entry is renamed or leaves.
  std::string_view getname(std::int32_t i) const noexcept { return getstring(flist[i].fname); }
  /// Does not sort again.
  void setname(std::int32_t i, std::string_view s) { strassign(flist[i].fname, s); }
  void* getobject(std::int32_t i) const noexcept { return flist[i].fobject; }
  /// KEEP: unlike txlist::put it releases nothing.
  void putobject(std::int32_t i, void* obj) noexcept { flist[i].fobject = obj; }
  /// The first equal name, case ignored. KEEP: an empty name is never found.
  std::int32_t indexof(std::string_view s) const noexcept;
  std::int32_t indexofobject(const void* obj) const noexcept;
  /// Releases the name of entry i, and its word through freeobject; the entry itself stays. KEEP:
  /// it still points at both, so that a caller may only store over them in flist: every operation
  /// that looks at the entry, clear too, would reach for what is gone.
  void freeitem(std::int32_t i);
  void delete_(std::int32_t i);
  /// Releases all entries, the last one first, and the array.
  void clear();
  /// Reallocates to n entries, or to count() if that is more.
  void setcapacity(std::int32_t n);

 protected:
  void insertitem(std::int32_t i, std::string_view s, void* obj);

  // KEEP: in this order; txlist has another.
  std::int32_t fcount = 0;
  txstringentry* flist = nullptr;
  std::int32_t fcapacity = 0;
};

/// A list of names that anybody may insert into.
class OPTXV_EXPORT txstringlist : public txcustomstringlist {
 public:
  ~txstringlist() override;  // in the library, and with it the class's table of virtual functions

  void insert(std::int32_t i, std::string_view s) { insertitem(i, s, nullptr); }
  void insertobject(std::int32_t i, std::string_view s, void* obj) { insertitem(i, s, obj); }
};

}  // namespace optxv
