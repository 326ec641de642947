// Names and reals turned into small dense numbers: each new one gets the next number from 0 on, and
// one that is there already gets its own again.
//
// As in lists.h, -1 means not found, and no operation checks an index. A name longer than 255 bytes
// counts as its first 255, which is what is kept of it.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/lists.h"
#include "foundation/visibility.h"

namespace optxv {

/// A link of a chain: the number of an entry. New links go to the head of their chain.
struct thashnode {
  thashnode* fnext;     ///< nil at the end
  std::int32_t findex;  ///< the entry
  std::uint32_t fkey;   ///< the same for all equal names; 0 where it is not known what is equal
};

/// A list of names that finds them by a hash, case ignored; each has a word beside it.
///
/// The table of chains is built by the first add or indexof, and is released by sort and clear. It
/// has 9973 chains, or 99991 once there are many names; beyond that the chains only grow longer.
///
/// INVARIANT: while there is a table, the number of each entry stands in one chain, that of the
/// hash of its name.
/// REQUIRES: a call of delete_, setname, exchange, freeitem or insertitem, which know nothing of
/// the table, is followed by one of clearhashlist before the next add or indexof. KEEP: an empty
/// name is never found, so that each add of one is a new entry.
///
/// OWNS: the names. As in txcustomstringlist, a descendant that overrides freeobject calls clear()
/// in its own destructor.
class OPTXV_EXPORT txhashedstringlist : public txcustomstringlist {
 public:
  ~txhashedstringlist() override { clear(); }

  /// pstrucmp of two names: case ignored.
  int compare(std::int32_t i, std::int32_t j) override;
  /// Whether s is the name of entry i, case ignored. An override may tell more names apart than
  /// this, but one that takes names of different hashes for equal finds them only by chance.
  virtual bool equaltoentry(std::string_view s, std::int32_t i) const;
  /// The chain of a name: 0 for the empty name; otherwise, over its bytes as capitals, h * 211 + c
  /// in unsigned 32 bits, without the top bit, modulo the number of chains.
  /// REQUIRES: there is a table, unless s is empty; the result is below hashcount().
  virtual std::int32_t hashvalue(std::string_view s) const;

  /// Append a name and give its number, or only give the number of the equal name that is there.
  /// KEEP: obj is then dropped, neither stored nor released. s may be a name of this list.
  std::int32_t add(std::string_view s) { return addobject(s, nullptr); }
  std::int32_t addobject(std::string_view s, void* obj);
  /// The number of an equal name, or -1. Builds the table if there is none, so even a search
  /// changes the object.
  std::int32_t indexof(std::string_view s);

  /// Builds the table anew with 9973 chains for an n up to 9973, with 99991 above; does nothing if
  /// it has that many already.
  void sethashsize(std::int32_t n);
  /// Releases the table, if there is one; the entries stay.
  /// KEEP: takes 40,000,004 bytes off allocmemsize() for it, whatever its size.
  void clearhashlist() noexcept;
  /// Puts the names in the order of compare; they get new numbers.
  void sort();
  /// Releases the table and all entries.
  void clear();

  /// The shortest and the longest chain, and the average.
  /// KEEP: the average is taken over one chain more than there are, rounded, halves up.
  /// KEEP: without a table min is 2147483647, and max and avg are 0.
  void hashstats(std::int32_t& min, std::int32_t& max, std::int32_t& avg) const noexcept;
  /// The number of chains, 0 if there is no table.
  std::int32_t hashcount() const noexcept { return fhashcount; }

 protected:
  thashnode** fhashtable = nullptr;
  std::int32_t fhashcount = 0;

 private:
  struct place;
  place placeof(std::string_view s) const;
  std::int32_t findat(const place& at, std::string_view s) const;
};

/// The same, but the case of letters matters. KEEP: the hash still ignores it, so names that differ
/// only in case share a chain.
class OPTXV_EXPORT txstrpool : public txhashedstringlist {
 public:
  /// pstrcmp of two names.
  int compare(std::int32_t i, std::int32_t j) override;
  /// Whether s is the name of entry i, byte by byte.
  bool equaltoentry(std::string_view s, std::int32_t i) const override;
};

/// A pool of reals, no two of them equal. Its table has 2000 chains, always.
///
/// KEEP: a not-a-number is equal to nothing and is added each time; -0.0 and 0.0 are equal but have
/// different hashes, so they are two entries.
///
/// OWNS: its table and values.
class OPTXV_EXPORT txconstpool : public tobject {
 public:
  txconstpool();
  txconstpool(const txconstpool&) = delete;
  txconstpool& operator=(const txconstpool&) = delete;
  ~txconstpool() override;

  /// Makes room, by the rule of growncapacity; called only when count() equals capacity().
  virtual void grow();

  std::int32_t count() const noexcept { return fcount; }
  std::int32_t capacity() const noexcept { return fcapacity; }

  /// The number of x, which is added if it is not there.
  std::int32_t add(double x);
  double getdouble(std::int32_t i) const noexcept { return fvalues[i]; }
  /// The chain of a real: the sum of the four 16-bit words of its IEEE 754 image, modulo 2000.
  static std::int32_t hashvalue(double x) noexcept;
  /// Reallocates to n values; does nothing if n is below count(). When there is no memory it
  /// raises an `exception`, and the values are lost.
  void setcapacity(std::int32_t n);
  /// As txhashedstringlist::hashstats. KEEP: the last of the 2000 chains is left out, and the
  /// average is still that of 2000.
  void hashstats(std::int32_t& min, std::int32_t& max, std::int32_t& avg) const noexcept;

 protected:
  thashnode** fhashtable = nullptr;
  double* fvalues = nullptr;
  std::int32_t fcount = 0;
  std::int32_t fcapacity = 0;
};

}  // namespace optxv
