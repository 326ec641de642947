// Dot options: a number for a symbol of the caller's model, or for some of its elements, as in
// x.scale('a',*) = 2.
//
// The attribute after the dot is an ordinary option of the table whose name begins with a dot; it
// checks the value. What the symbol and its elements mean is left to the caller: entries are kept
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

/// One entry. The list holds the name of the symbol.
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
  /// than 63 bytes causes a message, but the entry is added all the same.
  void addentry(std::string_view name, std::int32_t dotoptnr);

  /// Appends an index to the last entry; false if that had 20 of them already. Raises
  /// eassertionfailed on an empty list.
  bool addindex(std::string_view index);

  /// Assigns the text to the attribute's option, with all its checks and messages, and copies the
  /// value that the option then has to the last entry. An option of a kind without a number leaves
  /// the entry at 0. Raises eassertionfailed on an empty list.
  /// KEEP: the option keeps the last value that was given to any symbol.
  void setvalue(std::string_view text);

  /// Writes the entries as parameter text, one per line: x.scale('a',*) = 2. Raises einouterror if
  /// the file cannot be written.
  void writetoparams(textfile& file) const;

  /// REQUIRES: 0 <= i < count().
  tdotobj& entry(std::int32_t i) const { return *objectof<tdotobj>(getobject(i)); }

  tzmaoptions* owner;

 private:
  tdotobj& lastentry(std::string_view complaint) const;
};

/// An element without its quotes. The closing one is missing if the element was too long.
std::string_view unquoted(std::string_view index);

/// The list of an object. BORROWS: good for the life of the object.
inline tdotobjlist& dotoptionsof(const tzmaoptions& options) {
  return static_cast<tdotobjlist&>(*options.dotoptionlist);
}

/// Reads what follows a key: .suffix, an optional index list, an optional = or :=, and one token as
/// the value, in either reading mode. An entry with any fault is dropped and counted in
/// dotoptionerrors. After a fault in the index list or an unknown suffix the reader stays where it
/// met the fault, so that what follows is read as another entry.
/// REQUIRES: in.ch() is the dot; in is the reader of options; keyplace is the place of the key.
void readdotoption(tzmaoptions& options, tminiparser& in, std::string_view key,
                   const textplace& keyplace);

}  // namespace optxv
