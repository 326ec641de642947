#include "definition/definitionreader.h"

#include <algorithm>
#include <array>

#include "definition/definitionentries.h"
#include "foundation/arithmetic.h"
#include "options/optionkinds.h"

namespace optxv {

/// One kind of record: what the loop does before the kind's own fields, and the function that reads
/// those.
struct recordrow {
  recordform form;
  std::string_view word;  ///< of the form
  bool usermap;
  bool option;    ///< enters the option table, so its name must be new there
  bool modifier;  ///< its type word may carry a modifier
  void (*read)(definitionreader&);

  /// The row of an option kind.
  static constexpr recordrow kind(optionkind kind, const char* fields, const char* lines,
                                  void (*read)(definitionreader&)) {
    const kindrow& row = optionkinds[kind];
    return {
        {row.keyword.data(), fields, lines}, row.keyword, row.usermap, true, row.modifier, read};
  }
  /// The row of a record that is no option.
  static constexpr recordrow other(const char* word, const char* fields, const char* lines,
                                   void (*read)(definitionreader&)) {
    return {{word, fields, lines}, word, false, false, false, read};
  }
  static const recordrow* find(std::string_view word);

  static void integer(definitionreader& reader) { reader.readinteger(); }
  static void real(definitionreader& reader) { reader.readdouble(); }
  static void string(definitionreader& reader) { reader.readstring(); }
  static void boolean(definitionreader& reader) { reader.readboolean(); }
};

namespace {

constexpr int maximumdotname = 63;
constexpr std::int32_t sparecapacity = 64;

// What follows the type word, by names of fields.
constexpr const char* bounded = "usermap default low high hc group text";
constexpr const char* scalar = "usermap default hc group text";
constexpr const char* list = "usermap hc group text";
constexpr const char* more = "longhelp";
constexpr const char* items = "item hc text";
constexpr const char* marks = "marked text";

constexpr std::array<recordrow, 17> records = {{
    recordrow::kind(optTypeInteger, bounded, more, recordrow::integer),
    recordrow::kind(optTypeDouble, bounded, more, recordrow::real),
    recordrow::kind(optTypeString, scalar, "", recordrow::string),
    recordrow::kind(optTypeBoolean, scalar, more, recordrow::boolean),
    recordrow::kind(optTypeEnumStr, scalar, items, readenumstr),
    recordrow::kind(optTypeEnumInt, scalar, items, readenumint),
    recordrow::kind(optTypeMultiList, list, "member", readmultilist),
    recordrow::kind(optTypeStrList, list, "", readstrlist),
    recordrow::kind(optTypeMacro, "hc group text", "member", readmacro),
    recordrow::kind(optTypeImmediate, "action hc group text", "", readimmediate),
    recordrow::other("synonym", "target", "", readsynonym),
    recordrow::other("group", "number hc text", "", readgroup),
    recordrow::other("deprecated", "heading", marks, readdeprecated),
    recordrow::other("obsolete", "heading", marks, readobsolete),
    recordrow::other("indicator", "text", "", readindicatorkey),
    recordrow::other("lookup", "text", "", readlookup),
    recordrow::other("eolcomm", "characters", "", readeolcomm),
}};

}  // namespace

const recordrow* recordrow::find(std::string_view word) {
  const auto* row = std::find_if(records.begin(), records.end(), [&](const recordrow& candidate) {
    return struequal(candidate.word, word);
  });
  return row != records.end() ? row : nullptr;
}

const recordform* formof(std::int32_t number) {
  const auto index = static_cast<std::size_t>(number) - 1;
  return number >= 1 && index < records.size() ? &records[index].form : nullptr;
}

void definitionreader::report(std::int32_t fault, std::string_view words, std::string_view subject,
                              const fieldread& at) {
  const bool plain = subject.empty() || words.find("synonym") != std::string_view::npos;
  options.addmessage(optMsgDefineError, concat(words, plain ? "" : " for option ", quoted{subject}),
                     {.fault = fault,
                      .place = at.place,
                      .option = number_,
                      .about = subject,
                      .seen = at.seen,
                      .field = at.field});
}

bool definitionreader::continuation() {
  standing_ = true;
  atend_ = !in.nextline();
  return !atend_ && in.ch() == ' ';
}

// --- Fields ------------------------------------------------------------------------------------

/// Reads the token of a field, which becomes the last field; but for its text, which took gives it.
bool definitionreader::nexttoken(std::int32_t field, std::string_view& token, shortstring& room) {
  in.skipbl();
  token = in.plaintoken();
  if (token.empty()) return raretoken(field, token, room);
  passplain(field, token);
  return true;
}

/// The same for a token that does not just stand in the line: it is put together in room.
bool definitionreader::raretoken(std::int32_t field, std::string_view& token, shortstring& room) {
  const textplace rest = in.restplace();
  const bool quote = in.ch() == '"';
  const bool good = in.nexttoken(room);
  token = room;
  field_.field = field;
  field_.seen.clear();
  field_.place = in.since(rest);
  field_.quotes = quote ? good ? 2 : 1 : 0;
  return good;
}

/// Keeps the text of the last field for who asks for it, and reports the field to the listener.
void definitionreader::keep(bool good, std::string_view token) {
  field_.seen = token;
  if (options.told) tellfield(good, field_);
}

void definitionreader::tellfield(bool good, const fieldread& at) const {
  options.told->cutlong(at.field == optxv_field_record ? optxv_cut_name : optxv_cut_value, number_,
                        at.seen, at.place, at.quotes);
  options.told->tell(&optxv_listener::field, {.field = at.field,
                                              .option = number_,
                                              .good = good ? 1 : 0,
                                              .text = textof(at.seen),
                                              .place = options.told->placed(at.place)});
}

void definitionreader::telldeclaration(const declaration& facts, std::string_view declared,
                                       const textplace& place) const {
  options.told->tell(&optxv_listener::declared, {.what = facts.what,
                                                 .number = facts.number,
                                                 .option = facts.option,
                                                 .target = facts.target,
                                                 .name = textof(declared),
                                                 .place = options.told->placed(place)});
}

/// Tells of a number that its type's limit stands in for.
void definitionreader::tellsaturated(std::string_view token) const {
  if (!saturatedinteger(token)) return;
  options.told->tell(&optxv_listener::cut, {.what = optxv_cut_number,
                                            .option = number_,
                                            .place = options.told->placed(field_.place),
                                            .kept = textof(token),
                                            .lost = 0});
}

bool definitionreader::tokenfield(std::int32_t field, shortstring& token) {
  std::string_view seen;
  shortstring room;
  const bool good = nexttoken(field, seen, room);
  token = seen;
  took(good, token);
  return good;
}

void definitionreader::integerfield(std::int32_t field, std::int32_t& value,
                                    std::string_view words) {
  in.skipbl();
  const std::string_view digits = in.plaindigits(value);
  if (digits.empty()) return rareinteger(field, value, words);
  passplain(field, digits);
  took(true, digits);
}

/// The same for a token that is not just digits.
void definitionreader::rareinteger(std::int32_t field, std::int32_t& value,
                                   std::string_view words) {
  std::string_view token;
  shortstring room;
  const bool good = nexttoken(field, token, room) && strasintex(token, value);
  took(good, token);
  if (options.told) tellsaturated(token);
  check(good, optxv_fault_bad_field, words);
}

void definitionreader::realfield(std::int32_t field, double& value, std::string_view words) {
  std::string_view token;
  shortstring room;
  const bool good = nexttoken(field, token, room) && strasdoubleex(token, value);
  took(good, token);
  check(good, optxv_fault_bad_field, words);
}

void definitionreader::restfield(std::int32_t field) {
  // No message is about such a field, so that it takes a listener to ask for it.
  if (!options.told) return in.restofline(text);
  in.skipbl();
  const textplace rest = in.restplace();
  const std::size_t size = trimright(in.ahead()).size();
  in.restofline(text);
  field_ = {field, rest.part(0, size), text, 0};
  tellfield(size > 0, field_);
}

void definitionreader::readhelp(std::string_view helpcontextfault) {
  integerfield(optxv_field_helpcontext, helpcontext, helpcontextfault);
  integerfield(optxv_field_group, group, "Bad Group value");
  restfield(optxv_field_text);
}

void definitionreader::readbigtext(toption& option) {
  while (continuation()) {
    restfield(optxv_field_longhelp);
    option.addbigtext(text);
  }
}

// --- The record loop ---------------------------------------------------------------------------

void definitionreader::read() {
  while (!atend_) {
    if (!standing_ && !in.nextline()) return;
    standing_ = false;
    if (!beginrecord()) return;
    readrecord();
  }
}

/// Reads the record's name; false if the line cannot begin a record.
bool definitionreader::beginrecord() {
  const textplace rest = in.restplace();
  const bool dotted = in.ch() == '.';
  if (dotted) in.nextch();
  number_ = 0;
  if (!in.nextident(name)) {
    if (options.told) options.told->tellplace(&optxv_listener::ended, rest);
    return false;
  }
  namefield.place = in.since(rest);
  namefield.seen.clear();
  if (dotted) {
    check(name.length() <= maximumdotname, optxv_fault_name_too_long, "Identifier too long",
          namefield);
    name = concat('.', name);
  }
  return true;
}

/// Takes the modifier off a type word. After an unknown one, that of the record before stays.
void definitionreader::takemodifier(std::string_view& word) {
  if (word.find('.') == std::string_view::npos) {
    modifier = optsubRequired;
    return;
  }
  const std::size_t dot = word.rfind('.');
  const shortstring suffix = uppercase(word.substr(dot + 1));
  word = word.substr(0, dot);
  for (std::size_t i = 1; i < strtypemodifier.size(); ++i) {
    if (suffix == strtypemodifier[i].modifier) {
      modifier = static_cast<optionsubtype>(i);
      return;
    }
  }
  report(optxv_fault_unknown_modifier, concat("Unknown type modifier = ", suffix));
}

/// Reports the two fields that begin a record, once it is known which option they belong to.
void definitionreader::tellbegin(const fieldread& type) {
  namefield.seen = name;
  tellfield(true, namefield);
  tellfield(!type.seen.empty(), type);
}

void definitionreader::readrecord() {
  std::string_view word;
  shortstring room;
  nexttoken(optxv_field_type, word, room);
  field_.seen = word;
  const fieldread type = field_;
  takemodifier(word);
  const recordrow* row = recordrow::find(word);
  number_ = row != nullptr && row->option ? options.getcount() + 1 : 0;
  if (options.told) tellbegin(type);
  check(row == nullptr || row->modifier || modifier == optsubRequired,
        optxv_fault_modifier_not_allowed, "Type modifier not allowed");
  if (row == nullptr || row->option)
    check(options.optionasobj(name) == nullptr, optxv_fault_duplicate_option, "Duplicate option",
          namefield);
  // Before an unknown word is reported a usermap is read, as if the word were that of an option.
  if (row == nullptr || row->usermap)
    integerfield(optxv_field_usermap, usermap, "Bad usermap value");
  else
    usermap = -1;
  if (row == nullptr)
    return report(optxv_fault_unknown_type, concat("Unknown option type ", quoted{word}), name,
                  type);
  row->read(*this);
}

// --- The scalar records ------------------------------------------------------------------------

template <class Option, class Value>
void definitionreader::readbounded(Value& low, Value& high, Value& standard,
                                   void (definitionreader::*next)(std::int32_t, Value&,
                                                                  std::string_view),
                                   std::string_view helpcontextfault) {
  (this->*next)(optxv_field_default, standard, "Bad default value");
  const fieldread at = field_;
  (this->*next)(optxv_field_low, low, "Bad low value");
  (this->*next)(optxv_field_high, high, "Bad high value");
  readhelp(helpcontextfault);
  check(atmost(low, standard) && atmost(standard, high), optxv_fault_default_range,
        "Default not in range", at);
  auto option = options.make<Option>(name, standard, low, high, help());
  modify(*option);
  toption& entered = *option;
  enter(std::move(option));
  readbigtext(entered);
}

void definitionreader::readinteger() {
  readbounded<tintoption>(lowinteger_, highinteger_, integervalue, &definitionreader::integerfield,
                          "Bad HC value");
}

void definitionreader::readdouble() {
  readbounded<tdbloption>(lowreal_, highreal_, realvalue_, &definitionreader::realfield, "Bad HC");
}

void definitionreader::readstring() {
  shortstring standard;
  tokenfield(optxv_field_default, standard);
  readhelp();
  auto option = options.make<tstringoption>(name, standard, help());
  modify(*option);
  enter(std::move(option));
}

void definitionreader::readboolean() {
  integerfield(optxv_field_default, integervalue, "Bad default value");
  readhelp();
  auto option = options.make<tbooleanoption>(name, integervalue, help());
  modify(*option);
  toption& entered = *option;
  enter(std::move(option));
  readbigtext(entered);
}

// --- The operation -----------------------------------------------------------------------------

std::int32_t tzmaoptions::optreaddefinition(std::string_view filename) {
  return readdefinition({filename});
}

std::int32_t tzmaoptions::readdefinitiontext(std::string_view name, std::string_view bytes) {
  return readdefinition({name, bytes});
}

std::int32_t tzmaoptions::readdefinition(const linesource& source) {
  deffilename = source.name;
  tminiparser reader(&messagelist, echoflag, charset());
  const replacement<tminiparser*> running(parser, &reader);
  if (const int code = reader.open(source); code != 0) {
    addfilefailure(optMsgDefineError, optxv_fault_cannot_open, "Cannot open option file ",
                   source.name, code);
    return code;
  }
  const replacement<valueorigin> origin(assigning, assigning);
  beginsource(reader, optxv_source_definition, source.name);
  auto help = make<timmediateoption>("Help", immediateHelp, optionhelp());
  help->subtype = optsubOptional;
  addoption("Help", std::move(help));
  definitionreader(*this, reader).read();
  const int failure = readfailure(optMsgDefineError, "Cannot read option file ", source.name);
  endsource(failure);
  // A list grows eightfold; from here on a table needs room only for a few options made at run
  // time.
  optionlist.setcapacity(optionlist.count() + sparecapacity);
  return failure;
}

}  // namespace optxv
