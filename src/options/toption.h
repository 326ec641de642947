// The options of one table: the base class, the ten kinds, and the two lists that own them.
//
// Operations are plain methods; those that differ by kind go through withkind (optionkinds.h), the
// only switch on opttype. Only the destructor and reset are virtual. Fields are public: the readers
// and writers fill and show them, and tzmaoptions is the only owner of every object here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/lists.h"
#include "foundation/runtime.h"
#include "foundation/strutilx.h"
#include "options/nameindex.h"
#include "options/tablememory.h"

namespace optxv {

class tzmaoptions;

/// The kind of an option; the numbers are part of the exported interface.
enum optionkind : std::uint8_t {
  optTypeInteger,
  optTypeDouble,
  optTypeString,
  optTypeBoolean,
  optTypeEnumStr,
  optTypeEnumInt,
  optTypeMultiList,
  optTypeStrList,
  optTypeMacro,
  optTypeImmediate,
};

/// How an option takes its value in parameter text; the numbers are part of the interface.
enum optionsubtype : std::uint8_t {
  optsubRequired,  ///< one value
  optsubNoValue,   ///< none: being mentioned is the value
  optsubOptional,  ///< one value, which may be left out
  optsub2Values,   ///< two values
};

/// What an immediate option does in the parameter reader.
enum immediateaction : std::uint8_t {
  immediateEolFlag,
  immediateReadFile,
  immediateMessage,
  immediateNoBounds,
  immediateHelp,
};

/// Members of toption::deprecation.
enum deprecationmark : std::uint8_t {
  markDeprecatedOption,
  markDeprecatedSynonym,
  markObsoleteOption,
  markObsoleteSynonym,
};

/// A list of names that frees the tobject of each entry with the entry.
/// OWNS: the names and the objects. Objects are stored as tobject* (see ownedobject).
class txstringlistobj : public txstringlist {
 public:
  ~txstringlistobj() override;
  /// Appends an object under a copy of the name, and gives its 0-based position. If memory runs
  /// out, the list stays as it was and the object is freed.
  std::int32_t addowned(std::string_view name, std::unique_ptr<tobject> object);
  void freeobject(std::int32_t index) override;
};

/// A list that frees its items, each a tobject*. OWNS: the items.
class txlistobj : public txlist {
 public:
  ~txlistobj() override;
  /// Appends an item, and gives its 0-based position. If memory runs out, the list stays as it was
  /// and the item is freed.
  std::int32_t addowned(std::unique_ptr<tobject> item);
  void freeitem(std::int32_t index) override;
};

/// The word as which an owning list stores an object, and the way back.
inline void* ownedobject(tobject* object) {
  return object;
}
template <class Object>
Object* objectof(void* word) {
  return static_cast<Object*>(static_cast<tobject*>(word));
}

/// An item with help. The list that holds the item holds its name too.
class toptionx : public tobject {
 public:
  toptionx(std::int32_t helpcontext, kepttext helptext);
  ~toptionx() override;

  /// Appends a line to the long help; the first call creates bigtext.
  void addbigtext(std::string_view line);

  kepttext helptext;
  std::unique_ptr<txstrings> bigtext;  ///< nil until the first line
  std::int32_t helpcontext;
};

/// A group of options: its number as the definition gives it. Its title is helptext.
class tgroupobj : public toptionx {
 public:
  tgroupobj(std::int32_t groupnr, std::int32_t helpcontext, kepttext helptext);
  std::int32_t groupnr;
};

/// One allowed value of a tenumintoption.
class tlistoptionx : public toptionx {
 public:
  tlistoptionx(std::int32_t itemvalue, std::int32_t helpcontext, kepttext helptext);
  std::int32_t itemvalue;
};

/// The names and options of one table. Entries never leave it.
/// OWNS: the options. BORROWS: the names, which the table's memory keeps for longer than the list.
class toptionlist : public txstringlistobj {
 public:
  ~toptionlist() override;
  std::int32_t enter(kepttext name, std::unique_ptr<tobject> option);
};

/// The last four arguments of every option's constructor, in their order.
struct optionhelp {
  std::int32_t refnr = 0;
  std::int32_t helpcontext = 0;
  std::int32_t group = 0;
  std::string_view helptext = {};
};

/// The base of all options.
///
/// An option is created by a reader in the memory of its owner's table (tzmaoptions::make), belongs
/// to that table from then on and lives as long as it does. BORROWS: owner, which outlives it.
/// INVARIANT: opttype is the class of the object. Bit 1 of `defined` says that the first value is
/// set, bit 2 the second; a clear bit makes the getters give the default.
class toption : public toptionx {
 public:
  ~toption() override;

  static void* operator new(std::size_t size, tablememory& memory) { return memory.take(size); }
  /// The memory is given back with the table.
  static void operator delete(void*, tablememory&) noexcept {}
  static void operator delete(void*) noexcept {}

  /// Marks values as set: 0 clears `defined` and `recent`; another mask (1, 2 or 3) is added to
  /// `defined`, and to `recent` while the owner tracks recent changes.
  void setdefined(std::int32_t mask);

  /// Sets a scalar option to its default, as if that had been assigned; the other kinds have no
  /// default and stay as they are.
  void usedefined();

  /// Undoes what was assigned: clears `defined`, `recent` and `outofbounds`. The value fields keep
  /// their old content, which the clear masks hide.
  virtual void reset();

  /// The name as users see it: optname, with blanks for underscores under Minos lookup.
  shortstring getname() const;

  /// Assigns a text as parameter reading does. An option that takes no value is only marked as set;
  /// a text with a double quote is refused; an immediate option ignores the text. A refusal leaves
  /// a message in the owner's queue, and the option as it was.
  void setasstring(std::string_view text);
  /// Whether setasstring goes on to the value; what it does before that is done.
  bool takestext(std::string_view text);

  /// Assigns the second value of a scalar option; the other kinds ignore it.
  /// KEEP: unlike setasstring there is no test for an option that takes no value.
  void setasstring2(std::string_view text);

  /// The value as text, empty for the kinds without a scalar value; the 2 form gives the second.
  shortstring getasstring() const;
  shortstring getasstring2() const;

  bool marked(deprecationmark mark) const { return (deprecation >> mark & 1) != 0; }
  /// Adds a mark, and its text for the message when the name that has the mark is used: the
  /// option's own name, or a synonym. The text of a later mark on the same kind of name replaces
  /// it.
  void addmark(deprecationmark mark, kepttext text);
  std::string_view deprecatedtext() const { return marktexts ? marktexts->own.view() : ""; }
  std::string_view synonymdeprecatedtext() const {
    return marktexts ? marktexts->synonym.view() : "";
  }

  struct textsofmarks {
    kepttext own;
    kepttext synonym;
  };

  // In this order, after the last field of the base, the fields leave no gaps.
  std::int32_t group;  ///< as the definition gives it; need not exist
  tzmaoptions* owner;
  kepttext optname;                   ///< as the definition writes it
  textsofmarks* marktexts = nullptr;  ///< in the table's memory; nil without a mark
  std::int32_t refnr;                 ///< the caller's number, stored for it and never looked up
  std::int32_t position = -1;         ///< 0-based, in the owner's table; -1 before it enters it
  optionkind opttype;
  optionsubtype subtype = optsubRequired;
  std::uint8_t deprecation = 0;  ///< a set of deprecationmark, one bit each
  std::uint8_t defined = 0;
  std::uint8_t recent = 0;
  std::uint8_t outofbounds = 0;  ///< bits as in defined: stored out of bounds under nobounds

 protected:
  toption(optionkind kind, std::string_view name, tzmaoptions* owner, const optionhelp& help);
};

/// The short forms that the three kinds with an integer value share. Option has the fields
/// defaultvalue, value and value2, and the functions setasinteger12 and setasstring12, whose first
/// argument is true for the second value.
template <class Option>
class integervalued : public toption {
 public:
  void setasinteger(std::int32_t v) { self().setasinteger12(false, v); }
  void setasinteger2(std::int32_t v) { self().setasinteger12(true, v); }
  void setasstring(std::string_view text) { self().setasstring12(false, text); }
  void setasstring2(std::string_view text) { self().setasstring12(true, text); }
  std::int32_t getasinteger() const { return (defined & 1) != 0 ? self().value : fallback(); }
  std::int32_t getasinteger2() const { return (defined & 2) != 0 ? self().value2 : fallback(); }
  shortstring getasstring() const { return inttostr(getasinteger()); }
  shortstring getasstring2() const { return inttostr(getasinteger2()); }

 protected:
  using toption::toption;

 private:
  Option& self() { return static_cast<Option&>(*this); }
  const Option& self() const { return static_cast<const Option&>(*this); }
  std::int32_t fallback() const { return self().defaultvalue; }
};

/// The getters that the two kinds with a text value share.
template <class Option>
class textvalued : public toption {
 public:
  shortstring getasstring() const { return (defined & 1) != 0 ? self().value.view() : fallback(); }
  shortstring getasstring2() const {
    return (defined & 2) != 0 ? self().value2.view() : fallback();
  }

 protected:
  using toption::toption;

 private:
  const Option& self() const { return static_cast<const Option&>(*this); }
  std::string_view fallback() const { return self().defaultvalue.view(); }
};

/// An integer within bounds, both ends included.
class tintoption : public integervalued<tintoption> {
 public:
  tintoption(std::string_view name, tzmaoptions* owner, std::int32_t defaultvalue,
             std::int32_t lowbound, std::int32_t highbound, const optionhelp& help);
  void setasinteger12(bool second, std::int32_t v);
  /// Takes integer text, maxint and minint, and real text with an integral value (1e3).
  void setasstring12(bool second, std::string_view text);

  std::int32_t defaultvalue;
  std::int32_t lowbound;
  std::int32_t highbound;
  std::int32_t value = 0;
  std::int32_t value2 = 0;
};

/// A real within bounds, both ends included; a NaN is always out of bounds.
class tdbloption : public toption {
 public:
  tdbloption(std::string_view name, tzmaoptions* owner, double defaultvalue, double lowbound,
             double highbound, const optionhelp& help);
  void setasdouble(double v) { setasdouble12(false, v); }
  void setasdouble2(double v) { setasdouble12(true, v); }
  void setasdouble12(bool second, double v);
  void setasstring(std::string_view text) { setasstring12(false, text); }
  void setasstring2(std::string_view text) { setasstring12(true, text); }
  void setasstring12(bool second, std::string_view text);
  double getasdouble() const { return (defined & 1) != 0 ? value : defaultvalue; }
  double getasdouble2() const { return (defined & 2) != 0 ? value2 : defaultvalue; }
  shortstring getasstring() const { return dbltostr(getasdouble()); }
  shortstring getasstring2() const { return dbltostr(getasdouble2()); }

  double defaultvalue;
  double lowbound;
  double highbound;
  double value = 0;
  double value2 = 0;
};

/// A text of any content; nothing is checked.
class tstringoption : public textvalued<tstringoption> {
 public:
  tstringoption(std::string_view name, tzmaoptions* owner, std::string_view defaultvalue,
                const optionhelp& help);
  ~tstringoption() override;
  void setasstring(std::string_view text);
  void setasstring2(std::string_view text);

  heapstring defaultvalue;
  heapstring value;
  heapstring value2;
};

/// 0 or 1; under nobounds any integer.
class tbooleanoption : public integervalued<tbooleanoption> {
 public:
  tbooleanoption(std::string_view name, tzmaoptions* owner, std::int32_t defaultvalue,
                 const optionhelp& help);
  void setasinteger12(bool second, std::int32_t v);
  /// Takes the words of checkboolean.
  void setasstring12(bool second, std::string_view text);

  std::int32_t defaultvalue;
  std::int32_t value = 0;
  std::int32_t value2 = 0;
};

/// One of a list of texts, compared without regard to case, kept as the definition spells it.
class tenumstroption : public textvalued<tenumstroption> {
 public:
  tenumstroption(std::string_view name, tzmaoptions* owner, std::string_view defaultvalue,
                 const optionhelp& help);
  ~tenumstroption() override;
  void additem(std::string_view text, std::int32_t helpcontext, std::string_view helptext);
  void setasstring(std::string_view text) { setasstring12(false, text); }
  void setasstring2(std::string_view text) { setasstring12(true, text); }
  /// Under nobounds an unlisted text stores the empty text: no entry was meant.
  void setasstring12(bool second, std::string_view text);
  /// The 0-based index of the first entry with that text, case ignored, or -1.
  std::int32_t indexoftext(std::string_view text) const;

  heapstring defaultvalue;
  heapstring value;
  heapstring value2;
  txstringlistobj enumitems;  ///< the allowed texts, each with a toptionx for its help

 private:
  mutable std::unique_ptr<nameindex> texts_;  ///< of enumitems; nil while they are few
};

/// One of a list of integers.
class tenumintoption : public integervalued<tenumintoption> {
 public:
  tenumintoption(std::string_view name, tzmaoptions* owner, std::int32_t defaultvalue,
                 const optionhelp& help);
  ~tenumintoption() override;
  void additem(std::int32_t itemvalue, std::int32_t helpcontext, std::string_view helptext);
  /// The entry at a 0-based index. REQUIRES: the index is in enumitems.
  const tlistoptionx& item(std::int32_t index) const;
  /// The 0-based index of the first entry with that value, or -1.
  std::int32_t indexofvalue(std::int32_t itemvalue) const;
  void setasinteger12(bool second, std::int32_t v);
  /// KEEP: only integer text; the real form that a tintoption takes (1e0) is refused here.
  void setasstring12(bool second, std::string_view text);

  std::int32_t defaultvalue;
  std::int32_t value = 0;
  std::int32_t value2 = 0;
  txlistobj enumitems;  ///< tlistoptionx objects

 private:
  mutable numberindex values_;  ///< of enumitems
};

/// Spreads one text over other options by position. It stores nothing and is never set.
class tmultilistoption : public toption {
 public:
  tmultilistoption(std::string_view name, tzmaoptions* owner, const optionhelp& help);
  ~tmultilistoption() override;
  /// Appends a member: a 0-based position in the owner's table, or -1 for one that was not found.
  void additem(std::int32_t index);
  std::int32_t member(std::int32_t index) const;
  bool hasmember(std::int32_t index) const;
  /// Cuts the text at charpath() and hands token i to member i. An empty token at the very end does
  /// not count; tokens past the last member cause one message and are lost; a token for member -1
  /// is dropped. A multi-list may be a member of itself: that token goes on to its first member,
  /// or, if that is the list again, ends in a value error.
  void setasstring(std::string_view text);
  /// KEEP: this empties `members`, which nothing fills again, so every later value has too many
  /// items.
  void reset() override;

  txlist members;  ///< positions as integers in the item words

 private:
  mutable numberindex places_;  ///< of members
};

/// Collects the texts assigned to it.
class tstrlistoption : public toption {
 public:
  tstrlistoption(std::string_view name, tzmaoptions* owner, const optionhelp& help);
  ~tstrlistoption() override;
  void setasstring(std::string_view text);
  std::int32_t count() const { return items_.count() - taken_; }
  /// REQUIRES: 0 <= i < count(). BORROWS: good until the next item is taken.
  std::string_view item(std::int32_t i) const { return items_.get(taken_ + i); }
  /// Removes the first item and gives it. REQUIRES: count() > 0.
  shortstring takefirst();
  void reset() override;
  /// Exchanges the items with those of a list. Does not tell the owner (see noteitems).
  void swapitems(txstrings& items) noexcept {
    items_.swapitems(items);
    taken_ = 0;
  }

 private:
  void closegap();

  txstrings items_;
  /// How many texts in front of the list are gone: they leave it together, at the latest when they
  /// are half of it, so that taking all of them one by one moves each a few times only.
  std::int32_t taken_ = 0;
};

/// Hands one text to each of its members. It stores nothing and is never set.
///
/// Lists and macros may be nested at most 500 deep, and one entry hands on at most 100,000
/// values: past that an assignment causes a message and ends, so that no table can keep it busy
/// for ever. The values given before stay.
class tmacrooption : public toption {
 public:
  tmacrooption(std::string_view name, tzmaoptions* owner, const optionhelp& help);
  ~tmacrooption() override;
  /// Appends a member. BORROWS: the option, which the table owns.
  void additem(toption* option);
  toption* member(std::int32_t index) const;
  void setasstring(std::string_view text);
  /// Resets the macro and every member, members of members included.
  void reset() override;

  txlist members;  ///< toption objects, not owned
};

/// Acts at once when the parameter reader meets it; holds no value.
class timmediateoption : public toption {
 public:
  timmediateoption(std::string_view name, tzmaoptions* owner, immediateaction immediatekind,
                   const optionhelp& help);
  void setasstring(std::string_view) {}

  immediateaction immediatekind;
};

}  // namespace optxv
