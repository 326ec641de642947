// Indicators: an equation of the caller's model paired with a variable, as in
// rowtype eqa(i,'a')$vara(i) = yes.
//
// The first word is the name of the definition's indicator record; without such a record there is
// no list, and parameter text has no indicators. What an entry means is left to the caller.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/lists.h"
#include "foundation/runtime.h"
#include "foundation/strutilx.h"
#include "foundation/textfile.h"
#include "language/miniparser.h"
#include "options/toption.h"
#include "options/zmaoptions.h"
#include "parameter/entries.h"

namespace optxv {

/// One entry. An index is an identifier or an element in its quotes, never a *.
class tindicatoritem : public tobject {
 public:
  heapstring equname;
  indexlist equindices;
  heapstring varname;
  indexlist varindices;
  bool indicatorvalue = false;
};

/// The entries of one object, in the order of the text.
///
/// The operations that build an entry report faults in the owner's queue, but store what they are
/// given all the same; the reader of the entry then deletes a bad one.
/// OWNS: the entries. BORROWS: owner, which outlives the list.
class tindicatorlist : public txlistobj {
 public:
  explicit tindicatorlist(tzmaoptions* options) : owner(options) {}
  ~tindicatorlist() override;

  /// Appends an entry for an equation and makes it curitem. A good name has at most 63 bytes.
  void addentry(std::string_view equation);
  /// Names the variable of curitem. A good name has at most 63 bytes.
  /// REQUIRES, of these three: curitem is not nil.
  void setvariable(std::string_view variable);
  /// Adds to the equation's index list: at most 20, of at most 63 bytes without the quotes.
  void addequdim(std::string_view index);
  /// Adds to the variable's index list, likewise. An identifier must be among the equation's
  /// indices, case ignored.
  void addvardim(std::string_view index);

  /// Writes the entries as parameter text, one per line: rowtype eqa(i,'a')$vara(i)=1. Raises
  /// einouterror if the file cannot be written.
  void writetoparams(textfile& file) const;

  /// REQUIRES: 0 <= i < count().
  const tindicatoritem& item(std::int32_t i) const { return *objectof<tindicatoritem>(get(i)); }

  tzmaoptions* owner;
  tindicatoritem* curitem = nullptr;  ///< the entry that is being read, nil between entries
};

/// The list of an object, nil without an indicator record. BORROWS: good until a definition is
/// read.
inline tindicatorlist* indicatorsof(const tzmaoptions& options) {
  return static_cast<tindicatorlist*>(options.indicatorlist.get());
}

/// Reads what follows the keyword of an entry, in either reading mode. A good entry ends with its
/// value. After a bad one the rest of the line is skipped, and the entry is dropped and counted in
/// indicatorerrors.
/// REQUIRES: options has an indicator list; in is the reader of options.
void readindicator(tzmaoptions& options, tminiparser& in);

}  // namespace optxv
