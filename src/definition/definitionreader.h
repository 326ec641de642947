// The reader of option definition files: the record loop, the fields that all records share, and
// the four plain scalar records. The other kinds of record are in definitionentries.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "foundation/boundedstring.h"
#include "language/miniparser.h"
#include "options/zmaoptions.h"

namespace optxv {

/// A field of a record as it was read.
struct fieldread {
  std::int32_t field = optxv_field_none;  ///< optxv_field_...
  textplace place = {};                   ///< as written; empty where it was expected
  shortstring seen = {};                  ///< the token that is there
  int quotes = 0;                         ///< how many of its bytes as written are its quotes
};

/// What a definition declares: the numbers of optxv_declaration in the public header, which says
/// what each means. 0 where there is none.
struct declaration {
  std::int32_t what = 0;    ///< optxv_declared_...
  std::int32_t number = 0;  ///< in its own list, from 1
  std::int32_t option = 0;  ///< the option it belongs to
  std::int32_t target = 0;  ///< the option of a member
};

/// The form of a record: its type word, the fields after that, and the fields of each line that
/// continues it, by their names.
struct recordform {
  const char* word;
  const char* fields;
  const char* lines;
};
/// The form of record `number` (from 1), nil for a bad number.
const recordform* formof(std::int32_t number);

/// Reads the records of one definition file into an object.
///
/// A record begins on a line whose first character is a letter, or a dot and a letter: name, type
/// word, fields. The next lines continue it if they begin with a space (not a tab) and its kind
/// takes such lines. KEEP: where a record is expected, the first other line ends the definition
/// silently.
///
/// No fault ends the reading: each is one message of kind optMsgDefineError, and the record is
/// completed as far as it can be and kept. KEEP: a field that is missing or bad keeps the value
/// that the record before left in it, or what the conversion made of it; so the fields below live
/// as long as the reader.
///
/// BORROWS: the object and the parser. REQUIRES: the parser is before the first line.
class definitionreader {
 public:
  definitionreader(tzmaoptions& object, tminiparser& parser) : options(object), in(parser) {}

  /// Reads to the end of the definition.
  void read();

  // --- For the record kinds --------------------------------------------------------------------

  /// Reports a fault unless the condition holds, and gives the condition. The message is the words,
  /// " for option " unless the words contain "synonym" or the subject is empty, and the subject
  /// between double quotes. Its place is the field that was read last, or the one given.
  bool check(bool condition, std::int32_t fault, std::string_view words) {
    if (!condition) report(fault, words, name, field_);
    return condition;
  }
  bool check(bool condition, std::int32_t fault, std::string_view words, const fieldread& at) {
    if (!condition) report(fault, words, name, at);
    return condition;
  }
  /// Reports a fault as a check that failed does, for words that are put together first.
  void report(std::int32_t fault, std::string_view words, std::string_view subject,
              const fieldread& at);
  void report(std::int32_t fault, std::string_view words) { report(fault, words, name, field_); }

  /// Moves to the next line; true if that line continues the record. Otherwise it begins the next
  /// record, or the text has ended.
  bool continuation();
  /// Drops the line that the reader is on: the next record begins on the next line.
  void dropline() { standing_ = false; }

  // These read one field each (field: optxv_field_...), report it to the listener and make it the
  // last field, so that a fault stands at its place.

  /// Reads a token; false if there is none, with an empty text, or one with an open quote.
  bool tokenfield(std::int32_t field, shortstring& token);
  /// Reads a token as a number (strasintex). If it is missing or bad, the message has these words,
  /// and value is what was before or what the conversion made of it.
  void integerfield(std::int32_t field, std::int32_t& value, std::string_view words);
  /// The same for a real number (strasdoubleex).
  void realfield(std::int32_t field, double& value, std::string_view words);
  /// Reads what is left of the line into `text`. No message is about such a field: without a
  /// listener it does not become the last one.
  void restfield(std::int32_t field);
  /// Reads the three fields that end every option record: help context, group and text.
  /// KEEP: the words for a bad help context differ by record.
  void readhelp(std::string_view helpcontextfault = "Bad HC");

  /// The last argument of the constructors, from the fields read.
  optionhelp help() const { return {usermap, helpcontext, group, text}; }
  /// Enters an option into the table under the record's name.
  void enter(std::unique_ptr<toption> option) {
    options.addoption(name, std::move(option));
    declare({.what = optxv_declared_option, .number = options.getcount()}, name, namefield.place);
  }
  /// Reports to the listener what the definition declares, with its name and the place of that.
  void declare(const declaration& facts, std::string_view declared, const textplace& place) {
    if (options.told) telldeclaration(facts, declared, place);
  }
  /// The number of the option that the record declares or is about to declare; 0 for other records.
  std::int32_t number() const { return number_; }
  /// The field that was read last.
  const fieldread& lastfield() const { return field_; }
  /// Gives a scalar option its modifier.
  void modify(toption& option) const { option.subtype = modifier; }
  /// Takes the lines that continue a record as the option's long help.
  void readbigtext(toption& option);

  tzmaoptions& options;
  tminiparser& in;
  shortstring name;                         ///< of the record; with its dot for a dot option
  fieldread namefield{optxv_field_record};  ///< where that is
  optionsubtype modifier = optsubRequired;
  std::int32_t usermap = 0;
  std::int32_t integervalue = 0;  ///< the default of the integer kinds, and the items of enumint
  std::int32_t helpcontext = 0;
  std::int32_t group = 0;
  std::int32_t groupnumber = 0;  ///< the field of a group record
  shortstring text;

 private:
  bool beginrecord();
  void takemodifier(std::string_view& word);
  void tellbegin(const fieldread& type);
  void readrecord();
  void readinteger();
  void readdouble();
  void readstring();
  void readboolean();
  template <class Option, class Value>
  void readbounded(Value& low, Value& high, Value& standard,
                   void (definitionreader::*next)(std::int32_t, Value&, std::string_view),
                   std::string_view helpcontextfault);
  bool nexttoken(std::int32_t field, std::string_view& token, shortstring& room);
  void rareinteger(std::int32_t field, std::int32_t& value, std::string_view words);
  bool raretoken(std::int32_t field, std::string_view& token, shortstring& room);
  /// Passes a token that stands in the line. It becomes the last field, but for its text.
  void passplain(std::int32_t field, std::string_view token) {
    field_.field = field;
    field_.seen.clear();
    field_.place = in.placeof(token);
    field_.quotes = 0;
    in.pass(token.size());
  }
  /// The field that nexttoken read is good or not: its text is kept where somebody may ask for it.
  void took(bool good, std::string_view token) {
    if (!good || options.told) keep(good, token);
  }
  void keep(bool good, std::string_view token);
  void tellsaturated(std::string_view token) const;
  void tellfield(bool good, const fieldread& at) const;
  void telldeclaration(const declaration& facts, std::string_view declared,
                       const textplace& place) const;

  friend struct recordrow;  // whose table names the four scalar readers

  fieldread field_;
  std::int32_t number_ = 0;  ///< of the option that the record declares; 0 for other records
  bool standing_ = false;    ///< the current line is the next record, not yet looked at
  bool atend_ = false;
  std::int32_t lowinteger_ = 0;
  std::int32_t highinteger_ = 0;
  double realvalue_ = 0;
  double lowreal_ = 0;
  double highreal_ = 0;
};

}  // namespace optxv
