// Names in order, names with texts, bits, and the byte mover of the stores.
//
// As in lists.h, indices count from 0, -1 means not found, and no operation checks an index. A name
// or text longer than 255 bytes counts as its first 255, which is what is kept of it.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/lists.h"
#include "foundation/visibility.h"

namespace optxv {

/// A list of names in order, each with a word beside it. Equal names may stand in it.
///
/// It knows whether it may rely on the order, and looks from first to last when it may not. Between
/// beginupdate and endupdate, which nest, names are appended as they come; the outermost endupdate
/// sorts. What else disturbs the order (exchange, setname) is the caller's business, and clear
/// changes nothing of what the list knows.
///
/// KEEP: the first name added to an empty list clears the mark of being sorted, and it stays
/// cleared until setsorted or an endupdate; in the meantime names still go to their places.
///
/// OWNS: the names. As in txcustomstringlist, a descendant that overrides freeobject calls clear()
/// in its own destructor.
class OPTXV_EXPORT txsortedstringlist : public txcustomstringlist {
 public:
  ~txsortedstringlist() override;

  void beginupdate() noexcept { countupdates(1); }
  /// Sorts if this closes the outermost bracket and the list is not marked as sorted.
  void endupdate();
  /// Sorts, case ignored, if b is true and the list is not marked as sorted; then marks it as b
  /// says.
  void setsorted(bool b);
  bool sorted() const noexcept { return fsorted; }

  /// Looks a name up by binary search, case ignored, whether or not the list is sorted. True with
  /// the index of an equal name (of several, the one met first, which need not be the lowest);
  /// otherwise false with the index at which s is to be inserted.
  /// KEEP: an empty name is never found, and belongs after those that are there.
  bool find(std::string_view s, std::int32_t& index) const noexcept;
  /// The index of an equal name, case ignored: that of find if the list is marked as sorted,
  /// otherwise the lowest. -1 if there is none.
  std::int32_t indexof(std::string_view s) const noexcept;

  /// Add a name at its place, before the equal name that find meets, or at the end within a
  /// bracket; give its index. s may be a name of this list.
  std::int32_t add(std::string_view s) { return addobject(s, nullptr); }
  std::int32_t addobject(std::string_view s, void* obj);

 protected:
  std::int32_t fupdatecount = 0;  ///< depth of the bracket
  bool fsorted = true;            ///< indexof may use a binary search

 private:
  void countupdates(int step) noexcept;
};

/// Texts under names, case of names ignored, with readers and writers by kind of value.
///
/// A name whose value is empty, 0 or false is not there: setting such a value takes the name out,
/// and a name that is not there reads as that value.
///
/// OWNS: the names and the texts.
class OPTXV_EXPORT txstrstrlist : public txsortedstringlist {
 public:
  ~txstrstrlist() override { clear(); }

  /// Releases the text of entry i.
  void freeobject(std::int32_t i) override;

  /// As txsortedstringlist::addobject, with a copy of value. name and value may be texts of this
  /// list.
  std::int32_t addobject(std::string_view name, std::string_view value);
  /// BORROWS: good until the text is replaced or leaves.
  std::string_view getobject(std::int32_t i) const noexcept { return getstring(text(i)); }
  /// Releases the text of entry i, then stores a copy of value, which may be that very text.
  void putobject(std::int32_t i, std::string_view value);

  /// The text under key. KEEP: a text that is one '=' reads as empty. BORROWS: as getobject.
  std::string_view getasstring(std::string_view key) const noexcept;
  /// The text as strasint reads it, 0 for a text that is no integer.
  std::int32_t getasinteger(std::string_view key) const noexcept;
  /// The text as _Q9_Val_d reads it, 0 for a text that is no real.
  double getasdouble(std::string_view key) const;
  /// Whether the text begins with one of Y, y, 1, T and t.
  bool getasboolean(std::string_view key) const noexcept;

  /// Replaces, adds or, for an empty value, deletes. key and value may be texts of this list.
  void setasstring(std::string_view key, std::string_view value);
  /// Stores "T" for true.
  void setasboolean(std::string_view key, bool b) { setasstring(key, b ? "T" : ""); }
  void setasinteger(std::string_view key, std::int32_t n);
  /// KEEP: stores the form of _Q9_Str_d0, 23 columns with leading blanks, not that of
  /// dbltostr.
  void setasdouble(std::string_view key, double x);

 private:
  pstring text(std::int32_t i) const noexcept { return static_cast<pstring>(flist[i].fobject); }
};

/// Bits by index, as many as were ever asked for; it never shrinks.
///
/// OWNS: its bytes.
class OPTXV_EXPORT tbooleanbitarray : public tobject {
 public:
  tbooleanbitarray() = default;
  tbooleanbitarray(const tbooleanbitarray&) = delete;
  tbooleanbitarray& operator=(const tbooleanbitarray&) = delete;
  ~tbooleanbitarray() override;

  /// False for an index below 0 or above highindex().
  bool getbit(std::int32_t i) const noexcept;
  /// Does nothing for an index below 0. KEEP: clearing a bit above highindex() makes room for it
  /// too.
  void setbit(std::int32_t i, bool b);
  /// Makes v the highest index in use; the new bits are clear. Does nothing if it is
  /// not above the present one.
  ///
  /// Room grows in steps until there is more than is needed: at first 256 bytes, then as much as
  /// there is already, from 8192 bytes on a quarter of that. Raises eoutofmemory and changes
  /// nothing if there is no memory.
  void sethighindex(std::int32_t v);
  /// The highest index in use, -1 if there is none.
  std::int32_t highindex() const noexcept { return fhighindex; }
  /// Bytes of room.
  std::int32_t allocated() const noexcept { return fallocated; }

 protected:
  std::uint8_t* fbits = nullptr;
  std::int32_t fallocated = 0;
  std::int32_t fhighindex = -1;

 private:
  static void getbitmask(std::int32_t p, std::int32_t& byteindex, std::uint8_t& mask) noexcept;
};

/// Copies n bytes from src to dst, none for an n below 1, in ascending order.
/// KEEP: it does not guard against overlap: a dst within the n bytes at src gets the bytes before
/// it over and over.
OPTXV_EXPORT void cmove(const void* src, void* dst, std::int32_t n) noexcept;

}  // namespace optxv
