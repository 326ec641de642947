// Dot options: a number for a symbol of the caller's model, or for some of its elements, as in
// x.scale('a',*) = 2.
//
// The attribute behind the dot is an ordinary option of the table whose name begins with a dot; it
// checks the value. What the symbol and its elements are is the caller's affair: entries are kept
// as written and in the order of the text, never merged and never sorted.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/lists.h"
#include "foundation/runtime.h"
#include "foundation/textfile.h"
#include "language/miniparser.h"
#include "options/toption.h"
#include "options/zmaoptions.h"
#include "parameter/entries.h"

namespace optxv {

/// One entry. The name of the symbol lives in the list.
class tdotobj : public tobject {
 public:
  explicit tdotobj(std::int32_t optionposition) : dotoptnr(optionposition) {}

  std::int32_t dotoptnr;  ///< 0-based position of the attribute in optionlist
  double dotvalue = 0;
  indexlist indices;  ///< each * or an element in its quotes
};

/// The entries of one object, in the order of the text.
/// OWNS: the entries. BORROWS: owner, which outlives the list.
class tdotobjlist : public txstringlistobj {
 public:
  explicit tdotobjlist(tzmaoptions* options) : owner(options) {}

  /// Appends an entry for the attribute at a 0-based position in the owner's table. A name of more
  /// than 63 bytes draws a message, and the entry is added all the same.
  void addentry(std::string_view name, std::int32_t dotoptnr);

  /// Appends an index to the last entry; false if that had 20 of them already. Raises
  /// eassertionfailed on an empty list.
  bool addindex(std::string_view index);

  /// Has the attribute's option take the text, with all its checks and messages, and copies what
  /// the option then holds to the last entry. Only the kinds with a number give one; any other
  /// leaves the entry at 0. Raises eassertionfailed on an empty list.
  /// KEEP: the option goes on holding the last value that was given to any symbol.
  void setvalue(std::string_view text);

  /// Writes a line an entry, good as parameter text: x.scale('a',*) = 2. Raises einouterror if the
  /// file cannot be written.
  void writetoparams(textfile& file) const;

  /// REQUIRES: 0 <= i < count().
  tdotobj& entry(std::int32_t i) const { return *objectof<tdotobj>(getobject(i)); }

  tzmaoptions* owner;

 private:
  tdotobj& lastentry(std::string_view complaint) const;
};

/// The list of an object. BORROWS: good for the life of the object.
inline tdotobjlist& dotoptionsof(const tzmaoptions& options) {
  return static_cast<tdotobjlist&>(*options.dotoptionlist);
}

/// Reads what follows a key up to the value: .suffix, an optional index list, an optional = or :=,
/// and one token as the value, in either reading mode. An entry with any fault is dropped and
/// counted in dotoptionerrors. After a fault in the index list or an unknown suffix the reader
/// stands where it met the fault, so that what follows is read as a further entry.
/// REQUIRES: in.ch() is the dot; in is the reader of options; keyplace is the place of the key.
void readdotoption(tzmaoptions& options, tminiparser& in, std::string_view key,
                   const textplace& keyplace);

}  // namespace optxv
