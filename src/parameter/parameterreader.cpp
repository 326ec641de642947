#include "parameter/parameterreader.h"

#include <algorithm>

#include "foundation/strutilx.h"
#include "options/optionkinds.h"
#include "options/zmaoptions.h"
#include "parameter/dotoptions.h"
#include "parameter/indicators.h"
#include "language/words.h"

namespace optxv {

namespace {

constexpr std::int32_t maximumfiledepth = 9;
constexpr int joinedwords = 3;  // words that may follow the first of a key under Minos
constexpr std::size_t longestvalue = shortstring::maximum;
constexpr std::string_view runtimeprefix = "--";

/// What may touch a key: the end of the line, a dot, a blank or an equals sign.
constexpr charset keyends("\n. \t=");
/// What says that no further word of a key follows.
constexpr charset valuestarts("=0123456789+-.");

/// The end of an unquoted value: the first comment character.
std::size_t plainend(std::string_view line, const charset& comment) {
  if (comment.empty()) return line.size();
  const auto stops = [&](char c) { return comment.has(c); };
  return static_cast<std::size_t>(std::find_if(line.begin(), line.end(), stops) - line.begin());
}

/// The end of a quoted value, whose opening quote is gone: the first comment character that stands
/// outside of quotes.
std::size_t quotedend(std::string_view line, const charset& comment) {
  bool inside = true;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '"') inside = !inside;
    if (!inside && comment.has(line[i])) return i;
  }
  return line.size();
}

shortstring quotedvalue(std::string_view line, const charset& comment) {
  shortstring value = line.substr(0, quotedend(line, comment));
  value = trim(value);
  if (value.empty()) return value;
  if (value.last() == '"')
    value.setlength(value.length() - 1);
  else
    value.append('"');
  return trim(value);
}

/// Reads the entries of one text: one run of parse.
class entryreader {
 public:
  entryreader(tzmaoptions& options, tminiparser& in, bool toeol)
      : options_(options), in_(in), toeol_(toeol) {}

  void read() {
    while (in_.nextline())
      while (readentry()) {
      }
  }

 private:
  /// A value as it was read, and whether there was a good one.
  struct readvalue {
    shortstring text;
    bool good = false;
  };

  bool readentry();
  bool readkey();
  toption* findoption();
  void unknownkey();
  void runtimeoption(toption* option);
  void immediate(const timmediateoption& option);
  void immediatevalue(immediateaction action, std::string_view value);
  void plain(toption& option);
  void assignone(toption& option);
  void assigntwo(toption& option);
  void assign2(toption& option, const readvalue& first, const readvalue& second);
  bool assign0(const toption& option);
  void checkremainder();

  bool typedvalue(shortstring& value) {
    return toeol_ ? getrestofline(in_, value) : in_.nexttoken(value);
  }
  /// Adds a fault: the words, and the subject between double quotes.
  void fault(std::string_view words, std::string_view subject) {
    options_.addmessagefrom(optMsgUserError, [&] { return concat(words, quoted{subject}); });
  }

  tzmaoptions& options_;
  tminiparser& in_;
  bool toeol_;  ///< end-of-line mode; an EolFlag option changes it for the rest of this text
  shortstring key_;
  std::int32_t dashes_ = 0;
};

/// Reads one entry; false when the line is over.
bool entryreader::readentry() {
  if (!in_.skipbl()) return false;
  if (in_.ch() == ',') {
    in_.nextch();
    in_.skipbl();
  }
  if (!readkey()) return false;
  if (dashes_ == 0 && in_.ch() == '.') {
    readdotoption(options_, in_, key_);
    return true;
  }
  if (dashes_ == 0 && !options_.indicatorkey.isnil() && struequal(key_, options_.indicatorkey)) {
    readindicator(options_, in_);
    return true;
  }
  if (dashes_ > 1) key_ = concat(runtimeprefix, key_);
  toption* option = findoption();
  if (key_.view().starts_with(runtimeprefix))
    runtimeoption(option);
  else if (option == nullptr)
    unknownkey();
  else if (const auto* acting = askind<timmediateoption>(option))
    immediate(*acting);
  else
    plain(*option);
  return true;
}

bool entryreader::readkey() {
  if (!in_.nextkey(key_, dashes_)) {
    const char seen = in_.ch();
    fault("Option keyword expected, saw ", {&seen, 1});
    return false;
  }
  if (keyends.has(in_.ch())) return true;
  fault("Bad separator after key ", key_);
  in_.skiptoeol();
  return false;
}

/// The option that the key names, or nil. Under Minos lookup, whose names hold '_' where the user
/// writes blanks, further words of the line join a key that is not known yet.
/// KEEP: a key typed with '_' is not known, though the words that join it may make it so, and what
/// was joined stays in the key for the messages, an empty word too.
toption* entryreader::findoption() {
  toption* option = options_.optionasobj(key_);
  if (options_.lookupmode != lookupMinos) return option;
  if (key_.view().find('_') != std::string_view::npos) option = nullptr;
  for (int round = 0; round < joinedwords && option == nullptr; ++round) {
    if (!in_.skipbl() || valuestarts.has(in_.ch())) return nullptr;
    shortstring word;
    in_.nextidentx(word);
    key_ = concat(key_, '_', word);
    option = options_.optionasobj(key_);
  }
  return option;
}

/// KEEP: in token mode the token that is dropped is the separator where there is one, so that the
/// value behind it reads as a bad key.
void entryreader::unknownkey() {
  fault("Unknown option ", key_);
  shortstring dropped;
  if (toeol_)
    in_.restofline(dropped);
  else
    in_.nexttoken(dropped);
}

/// Adds the value to the list option that the key stands for, which is made on its first use.
/// Quotes are not looked at in end-of-line mode.
void entryreader::runtimeoption(toption* option) {
  if (option == nullptr) {
    auto made = std::make_unique<tstrlistoption>(key_, &options_, optionhelp());
    option = made.get();
    options_.addoption(key_, std::move(made));
  }
  in_.skipbecomes();
  shortstring value;
  if (toeol_)
    in_.restofline(value);
  else if (!in_.nexttoken(value))
    return;
  option->setasstring(value);
}

// --- Immediate options -------------------------------------------------------------------------

void entryreader::immediate(const timmediateoption& option) {
  in_.skipbecomes();
  shortstring value;
  if (in_.nexttoken(value))
    immediatevalue(option.immediatekind, value);
  else if (option.immediatekind == immediateHelp)
    options_.optshowhelp({});
  else
    fault("Value expected for immediate option ", key_);
}

void entryreader::immediatevalue(immediateaction action, std::string_view value) {
  switch (action) {
    case immediateEolFlag:
      toeol_ = checkboolean(value) != 1;
      break;
    case immediateReadFile:
      options_.optreadparameterfile(value);
      break;
    case immediateMessage:
      options_.addmessage(optMsgUserError, value);
      break;
    case immediateNoBounds:
      options_.nobounds = checkboolean(value) != 1;
      break;
    case immediateHelp:
      options_.optshowhelp(value);
      break;
  }
}

// --- Plain options -----------------------------------------------------------------------------

void entryreader::plain(toption& option) {
  if (option.subtype == optsubNoValue || (option.subtype == optsubOptional && !in_.skipbl())) {
    assign0(option);  // KEEP: even an obsolete option goes to its default here
    option.usedefined();
  } else if (!in_.skipbecomes()) {
    fault("Value expected for key ", option.getname());
  } else if (option.subtype == optsub2Values) {
    assigntwo(option);
  } else {
    assignone(option);
  }
  if (toeol_) checkremainder();
}

/// KEEP: an unclosed quote in token mode is dropped without a word.
void entryreader::assignone(toption& option) {
  shortstring value;
  const bool good = typedvalue(value);
  if (assign0(option) && good) option.setasstring(value);
}

void entryreader::assigntwo(toption& option) {
  readvalue first;
  readvalue second;
  first.good = in_.nexttoken(first.text);
  second.good = in_.skipbl() && typedvalue(second.text);
  assign2(option, first, second);
}

/// Stores two values; one that is '*' leaves its half as it is, and a first value that stands alone
/// goes to both.
void entryreader::assign2(toption& option, const readvalue& first, const readvalue& second) {
  if (!assign0(option)) return;
  if (first.good && first.text != "*") {
    option.setasstring(first.text);
    if (!second.good) return option.setasstring2(first.text);
  }
  if (second.good && second.text != "*") option.setasstring2(second.text);
}

/// Tells of the use of a marked name; false if the name is obsolete, so that its value is dropped.
/// A key that is not the option's own name counts as a synonym of it.
bool entryreader::assign0(const toption& option) {
  if (option.deprecation == 0) return true;
  const bool own = struequal(key_, option.optname);
  const bool obsolete = option.marked(own ? markObsoleteOption : markObsoleteSynonym);
  if (!obsolete && !option.marked(own ? markDeprecatedOption : markDeprecatedSynonym)) return true;
  const bool deprecated =
      option.marked(markDeprecatedOption) || option.marked(markDeprecatedSynonym);
  options_.addmessagefrom(optMsgDeprecated, [&] {
    return concat(deprecated ? "deprecated" : "obsolete", own ? " option " : " synonym ",
                  quoted{key_}, "; ",
                  (own ? option.deprecatedtext : option.synonymdeprecatedtext).view());
  });
  return !obsolete;
}

/// KEEP: giving up the line leaves the character on which the remainder began to be read as a key,
/// so that a second message follows this one.
void entryreader::checkremainder() {
  if (!in_.skipbl()) return;
  options_.addmessage(optMsgUserError, "Remainder of line ignored");
  in_.skiptoeol();
}

/// What the readers of one line of text share: the messages round it, and a reader of its own.
template <class Start>
void readtext(tzmaoptions& options, std::string_view source, Start start) {
  tminiparser reader(&options.messagelist, options.echoflag, options.eolcommset);
  const replacement<tminiparser*> running(options.parser, &reader);
  start(reader);
  options.addmessage(optMsgFileEnter, source);
  options.parse(options.eolonly);
  options.addmessage(optMsgFileLeave, source);
}

}  // namespace

bool getrestofline(tminiparser& in, shortstring& value) {
  value.clear();
  if (!in.skipbl()) return false;
  const std::string_view line = in.ahead();
  if (line.front() == '"')
    value = quotedvalue(line.substr(1), in.eolcommset());
  else
    value = trim(line.substr(0, std::min(plainend(line, in.eolcommset()), longestvalue)));
  in.pass(line.size());
  return true;
}

void tzmaoptions::parse(bool toeol) {
  entryreader(*this, *parser, toeol).read();
}

void tzmaoptions::optreadfromstr(std::string_view text) {
  readtext(*this, "string", [text](tminiparser& reader) { reader.readfromstr(text); });
}

void tzmaoptions::optreadfrompchar(const char* text) {
  readtext(*this, "pchar", [text](tminiparser& reader) { reader.readfrompchar(text); });
}

std::int32_t tzmaoptions::optreadparameterfile(std::string_view filename) {
  return readparameters({filename});
}

std::int32_t tzmaoptions::readparametertext(std::string_view name, std::string_view bytes) {
  return readparameters({name, bytes});
}

std::int32_t tzmaoptions::readparameters(const linesource& source) {
  tminiparser reader(&messagelist, echoflag, eolcommset);
  const replacement<tminiparser*> running(parser, &reader);
  if (const int code = reader.open(source); code != 0) {
    addfilefailure(optMsgUserError, "Cannot open parameter file ", source.name, code);
    return code;
  }
  addmessage(optMsgFileEnter, source.name);
  int failure = 0;
  {
    const replacement<std::int32_t> level(filedepth, filedepth + 1);
    if (filedepth <= maximumfiledepth)
      parse(eolonly);
    else
      addmessage(optMsgUserError, "File nesting level too deep; file ignored");
    failure = readfailure(optMsgUserError, "Cannot read parameter file ", source.name);
    addmessage(optMsgFileLeave, source.name);
  }
  return failure;
}

}  // namespace optxv
