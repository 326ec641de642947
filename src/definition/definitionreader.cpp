#include "definition/definitionreader.h"

#include <algorithm>
#include <array>

#include "definition/definitionentries.h"
#include "options/optionkinds.h"

namespace optxv {

/// One kind of record: what the loop does before the kind's own fields, and who reads those.
struct recordrow {
  std::string_view word;
  bool usermap;
  bool option;    ///< enters the option table, so its name must be new there
  bool modifier;  ///< its type word may carry a modifier
  void (*read)(definitionreader&);

  /// The row of an option kind.
  static constexpr recordrow kind(optionkind kind, void (*read)(definitionreader&)) {
    const kindrow& row = optionkinds[kind];
    return {row.keyword, row.usermap, true, row.modifier, read};
  }
  /// The row of a record that is no option.
  static constexpr recordrow other(std::string_view word, void (*read)(definitionreader&)) {
    return {word, false, false, false, read};
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

constexpr std::array<recordrow, 17> records = {{
    recordrow::kind(optTypeInteger, recordrow::integer),
    recordrow::kind(optTypeDouble, recordrow::real),
    recordrow::kind(optTypeString, recordrow::string),
    recordrow::kind(optTypeBoolean, recordrow::boolean),
    recordrow::kind(optTypeEnumStr, readenumstr),
    recordrow::kind(optTypeEnumInt, readenumint),
    recordrow::kind(optTypeMultiList, readmultilist),
    recordrow::kind(optTypeStrList, readstrlist),
    recordrow::kind(optTypeMacro, readmacro),
    recordrow::kind(optTypeImmediate, readimmediate),
    recordrow::other("synonym", readsynonym),
    recordrow::other("group", readgroup),
    recordrow::other("deprecated", readdeprecated),
    recordrow::other("obsolete", readobsolete),
    recordrow::other("indicator", readindicatorkey),
    recordrow::other("lookup", readlookup),
    recordrow::other("eolcomm", readeolcomm),
}};

}  // namespace

const recordrow* recordrow::find(std::string_view word) {
  const auto* row = std::find_if(records.begin(), records.end(), [&](const recordrow& candidate) {
    return struequal(candidate.word, word);
  });
  return row != records.end() ? row : nullptr;
}

void definitionreader::report(std::string_view fault, std::string_view subject) {
  const bool plain = subject.empty() || fault.find("synonym") != std::string_view::npos;
  options.addmessage(optMsgDefineError,
                     concat(fault, plain ? "" : " for option ", quoted{subject}));
}

bool definitionreader::continuation() {
  standing_ = true;
  atend_ = !in.nextline();
  return !atend_ && in.ch() == ' ';
}

void definitionreader::readhelp(std::string_view helpcontextfault) {
  integerfield(helpcontext, helpcontextfault);
  integerfield(group, "Bad Group value");
  in.restofline(text);
}

void definitionreader::readbigtext(toption& option) {
  while (continuation()) {
    in.restofline(text);
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
  const bool dotted = in.ch() == '.';
  if (dotted) in.nextch();
  if (!in.nextident(name)) return false;
  if (dotted) {
    check(name.length() <= maximumdotname, "Identifier too long");
    name = concat('.', name);
  }
  return true;
}

/// Reads the type word and takes its modifier off. An unknown modifier leaves the one of the record
/// before in force.
void definitionreader::readtypeword(shortstring& word) {
  in.nexttoken(word);
  const std::size_t dot = word.view().rfind('.');
  if (dot == std::string_view::npos) {
    modifier = optsubRequired;
    return;
  }
  const shortstring suffix = uppercase(word.view().substr(dot + 1));
  word.setlength(static_cast<int>(dot));
  for (std::size_t i = 1; i < strtypemodifier.size(); ++i) {
    if (suffix == strtypemodifier[i].modifier) {
      modifier = static_cast<optionsubtype>(i);
      return;
    }
  }
  report(concat("Unknown type modifier = ", suffix), name);
}

void definitionreader::readrecord() {
  shortstring word;
  readtypeword(word);
  const recordrow* row = recordrow::find(word);
  check(row == nullptr || row->modifier || modifier == optsubRequired, "Type modifier not allowed");
  if (row == nullptr || row->option)
    check(options.optionasobj(name) == nullptr, "Duplicate option");
  // An unknown word costs a usermap before it is reported: it might have been any option's.
  if (row == nullptr || row->usermap)
    integerfield(usermap, "Bad usermap value");
  else
    usermap = -1;
  if (row == nullptr) return report(concat("Unknown option type ", quoted{word}), name);
  row->read(*this);
}

// --- The scalar records ------------------------------------------------------------------------

template <class Option, class Value>
void definitionreader::readbounded(Value& low, Value& high, Value& standard,
                                   bool (tminiparser::*next)(Value&),
                                   std::string_view helpcontextfault) {
  check((in.*next)(standard), "Bad default value");
  check((in.*next)(low), "Bad low value");
  check((in.*next)(high), "Bad high value");
  readhelp(helpcontextfault);
  check(low <= standard && standard <= high, "Default not in range");
  auto option = std::make_unique<Option>(name, &options, standard, low, high, help());
  modify(*option);
  toption& entered = *option;
  enter(std::move(option));
  readbigtext(entered);
}

void definitionreader::readinteger() {
  readbounded<tintoption>(lowinteger_, highinteger_, integervalue, &tminiparser::nextinteger,
                          "Bad HC value");
}

void definitionreader::readdouble() {
  readbounded<tdbloption>(lowreal_, highreal_, realvalue_, &tminiparser::nextdouble, "Bad HC");
}

void definitionreader::readstring() {
  shortstring standard;
  in.nexttoken(standard);
  readhelp();
  auto option = std::make_unique<tstringoption>(name, &options, standard, help());
  modify(*option);
  enter(std::move(option));
}

void definitionreader::readboolean() {
  integerfield(integervalue, "Bad default value");
  readhelp();
  auto option = std::make_unique<tbooleanoption>(name, &options, integervalue, help());
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
    addfilefailure(optMsgDefineError, "Cannot open option file ", source.name, code);
    return code;
  }
  auto help = std::make_unique<timmediateoption>("Help", this, immediateHelp, optionhelp());
  help->subtype = optsubOptional;
  addoption("Help", std::move(help));
  definitionreader(*this, reader).read();
  // A list grows eightfold; what a table needs from here on are a few options made at run time.
  optionlist.setcapacity(optionlist.count() + sparecapacity);
  return readfailure(optMsgDefineError, "Cannot read option file ", source.name);
}

}  // namespace optxv
