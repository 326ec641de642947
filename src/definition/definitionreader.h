// The reader of option definition files: the record loop, the fields that all records share, and
// the four scalar records. The other record kinds stand in definitionentries.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "foundation/boundedstring.h"
#include "language/miniparser.h"
#include "options/zmaoptions.h"

namespace optxv {

/// Reads the records of one definition file into an object.
///
/// A record begins on a line whose first character is a letter, or a dot and a letter: name, type
/// word, fields. The next lines continue it if they begin with a blank and its kind takes such
/// lines. KEEP: the first other line in record position ends the definition without a word.
///
/// No fault ends the reading: each is one message of kind optMsgDefineError, and the record is
/// completed as far as it can be and kept. KEEP: a field that is missing or bad keeps what the
/// record before left in it, or what the conversion made of it; so the fields below live as long as
/// the reader.
///
/// BORROWS: the object and the parser, which stands in front of the first line.
class definitionreader {
 public:
  definitionreader(tzmaoptions& object, tminiparser& parser) : options(object), in(parser) {}

  /// Reads to the end of the definition.
  void read();

  // --- For the record kinds --------------------------------------------------------------------

  /// Reports a fault unless the condition holds, and gives the condition. The message is the fault,
  /// " for option " unless the fault holds the word "synonym" or the subject is empty, and the
  /// subject between double quotes.
  bool check(bool condition, std::string_view fault, std::string_view subject) {
    if (!condition) report(fault, subject);
    return condition;
  }
  bool check(bool condition, std::string_view fault) { return check(condition, fault, name); }
  /// The report of a check that failed, for texts that are made for the occasion.
  void report(std::string_view fault, std::string_view subject);

  /// Moves to the next line; true if that line continues the record. Otherwise it begins the next
  /// record, or the file is at its end.
  bool continuation();
  /// Gives up the line that the reader stands on: the next record begins on a fresh one.
  void dropline() { standing_ = false; }

  /// Reads one integer field.
  void integerfield(std::int32_t& field, std::string_view fault) {
    check(in.nextinteger(field), fault);
  }
  /// Reads the three fields that end every option record: help context, group and text.
  /// KEEP: the wording for a bad help context differs by record.
  void readhelp(std::string_view helpcontextfault = "Bad HC");

  /// What the constructors take last, from the fields read.
  optionhelp help() const { return {usermap, helpcontext, group, text}; }
  /// Enters an option into the table under the record's name.
  void enter(std::unique_ptr<toption> option) { options.addoption(name, std::move(option)); }
  /// Gives a scalar option its modifier.
  void modify(toption& option) const { option.subtype = modifier; }
  /// Takes the lines that continue a record as the option's long help.
  void readbigtext(toption& option);

  tzmaoptions& options;
  tminiparser& in;
  shortstring name;  ///< of the record; with its dot for a dot option
  optionsubtype modifier = optsubRequired;
  std::int32_t usermap = 0;
  std::int32_t integervalue = 0;  ///< the default of the integer kinds, and the items of enumint
  std::int32_t helpcontext = 0;
  std::int32_t group = 0;
  std::int32_t groupnumber = 0;  ///< the field of a group record
  shortstring text;

 private:
  bool beginrecord();
  void readtypeword(shortstring& word);
  void readrecord();
  void readinteger();
  void readdouble();
  void readstring();
  void readboolean();
  template <class Option, class Value>
  void readbounded(Value& low, Value& high, Value& standard, bool (tminiparser::*next)(Value&),
                   std::string_view helpcontextfault);

  friend struct recordrow;  // whose table names the four scalar readers

  bool standing_ = false;  ///< the current line is the next record, not yet looked at
  bool atend_ = false;
  std::int32_t lowinteger_ = 0;
  std::int32_t highinteger_ = 0;
  double realvalue_ = 0;
  double lowreal_ = 0;
  double highreal_ = 0;
};

}  // namespace optxv
