#include <algorithm>

#include "foundation/strutilx.h"
#include "language/words.h"
#include "options/optionkinds.h"
#include "options/suggestions.h"
#include "options/zmaoptions.h"
#include "parameter/dotoptions.h"
#include "parameter/indicators.h"
#include "parameter/outersettings.h"
#include "parameter/values.h"

namespace optxv {

namespace {

constexpr std::int32_t maximumfiledepth = 9;
/// A file that reads itself a few times would be opened a few times to the ninth.
constexpr std::int32_t maximumfiles = 10'000;
constexpr int joinedwords = 3;  // words that may follow the first of a key under Minos
constexpr std::string_view runtimeprefix = "--";

/// What may come directly after a key: the end of the line, a dot, a blank or an equals sign.
constexpr charset keyends("\n. \t=");
/// What shows that no further word of a key follows.
constexpr charset valuestarts("=0123456789+-.");

/// Reads the entries of one text: one run of parse.
class entryreader {
 public:
  entryreader(tzmaoptions& options, tminiparser& in, bool toeol)
      : options_(options), in_(in), toeol_(toeol) {}
  /// For a setting from outside, whose key stands in front of what is left of the line.
  entryreader(tzmaoptions& options, tminiparser& in, std::string_view key,
              const outersetting& setting)
      : options_(options), in_(in), toeol_(true), outer_(true) {
    setkey(key);
    key_.place = setting.nameplace();
    key_.dashes = setting.dashes;
  }

  /// The steps of a setting from outside.
  bool beginouter(const toption& option, bool valuesfollow);
  void readouter(toption& option);
  void assignouter(toption& option, const readvalue& value, std::int32_t which, bool last);
  void unknownouter(messagekind kind);

  void read() {
    while (in_.nextline())
      while (readentry()) {
      }
  }

 private:
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
  bool usable(const toption& option) { return option.deprecation == 0 || usemarked(option); }
  bool usemarked(const toption& option);
  void checkremainder();

  bool runtime() const { return key_.dashes > 1 && !outer_; }
  /// Replaces what was read of the key.
  void setkey(const shortstring& text) { key_.text = key_.own = text; }

  void readtyped(readvalue& value) { toeol_ ? readrest(in_, value) : readtoken(in_, value); }
  void readplainrest(readvalue& value);
  void tellkey(const toption* option) const;
  /// Adds the message of a fault: the words, and the subject between double quotes.
  void fault(std::int32_t code, std::string_view words, std::string_view subject,
             const textplace& place, std::int32_t option = 0, messagekind kind = optMsgUserError) {
    const messagefacts facts = {.fault = code, .place = place, .option = option, .about = subject};
    options_.addmessagefrom(kind, facts, [&] { return concat(words, quoted{subject}); });
  }

  tzmaoptions& options_;
  tminiparser& in_;
  bool toeol_;  ///< end-of-line mode; an EolFlag option changes it for the rest of this text
  bool outer_ = false;  ///< the key was known beforehand
  parsedkey key_;
};

/// Reads one entry; false when the line is over.
bool entryreader::readentry() {
  if (!in_.skipbl()) return false;
  if (in_.ch() == ',') {
    in_.nextch();
    in_.skipbl();
  }
  if (!readkey()) return false;
  if (key_.dashes == 0 && in_.ch() == '.') {
    setkey(key_.text);  // the entry may go on in the next line
    readdotoption(options_, in_, key_.text, key_.place);
    return true;
  }
  if (key_.dashes == 0 && !options_.indicatorkey.isnil() &&
      struequal(key_.text, options_.indicatorkey)) {
    if (options_.told) tellkey(nullptr);
    readindicator(options_, in_);
    return true;
  }
  if (runtime()) setkey(concat(runtimeprefix, key_.text));
  toption* option = findoption();
  options_.assigning.at = key_.place;
  if (options_.told) tellkey(option);
  if (runtime())
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
  if (!in_.nextkey(key_)) {
    const char seen = in_.ch();
    const messagefacts facts = {.fault = optxv_fault_key_expected,
                                .place = in_.restplace().part(0, in_.atmark() ? 0 : 1),
                                .seen = {&seen, 1}};
    options_.addmessagefrom(optMsgUserError, facts, [&] {
      return concat("Option keyword expected, saw ", quoted{{&seen, 1}});
    });
    return false;
  }
  if (keyends.has(in_.ch())) return true;
  fault(optxv_fault_bad_separator, "Bad separator after key ", key_.text, in_.restplace());
  in_.skiptoeol();
  return false;
}

void entryreader::tellkey(const toption* option) const {
  // The place of joined words has blanks that the name has not, so that it may be the longer one.
  if (key_.text.size() == shortstring::maximum)
    options_.told->cutlong(optxv_cut_name, 0, key_.text, key_.place, runtime() ? -2 : 0);
  if (!options_.told->hears(&optxv_listener::key)) return;
  const bool own =
      option == nullptr || options_.getobjects(options_.optlookup(key_.text)) == option;
  options_.told->tell(&optxv_listener::key,
                      {.option = option != nullptr ? option->position + 1 : 0,
                       .synonym = own ? 0 : options_.synonymindex.find(key_.text) + 1,
                       .dashes = key_.dashes,
                       .text = textof(key_.text),
                       .place = options_.told->placed(key_.place)});
}

/// The option that the key names, or nil. Under Minos lookup, whose names hold '_' where the user
/// writes blanks, further words of the line join a key that is not known yet.
/// KEEP: a key typed with '_' is not known by itself, though it may be with the words that join it.
/// What was joined stays in the key for the messages, even an empty word.
toption* entryreader::findoption() {
  toption* option = options_.optionasobj(key_.text);
  if (options_.lookupmode != lookupMinos) return option;
  if (key_.text.find('_') != std::string_view::npos) option = nullptr;
  for (int round = 0; round < joinedwords && option == nullptr; ++round) {
    if (!in_.skipbl() || valuestarts.has(in_.ch())) return nullptr;
    shortstring word;
    if (in_.nextidentx(word)) key_.place = in_.since(key_.place);
    setkey(concat(key_.text, '_', word));
    option = options_.optionasobj(key_.text);
  }
  return option;
}

/// KEEP: in token mode the token that is dropped is the separator if there is one, so that the
/// value after it is read as a bad key.
void entryreader::unknownkey() {
  fault(optxv_fault_unknown_option, "Unknown option ", key_.text, key_.place);
  shortstring dropped;
  if (toeol_)
    in_.restofline(dropped);
  else
    in_.nexttoken(dropped);
}

/// Adds the value to the list option that the key stands for, which is made on its first use. In
/// end-of-line mode quotes have no special meaning.
void entryreader::runtimeoption(toption* option) {
  if (option == nullptr) {
    auto made = options_.make<tstrlistoption>(key_.text, optionhelp());
    option = made.get();
    options_.addoption(key_.text, std::move(made));
  }
  in_.skipbecomes();
  readvalue value;
  if (toeol_)
    readplainrest(value);
  else
    readtoken(in_, value);
  beginvalue(options_, value, option);
  if (toeol_ || value.good) option->setasstring(value.text);
}

/// Takes all that is left of the line, quotes and all.
void entryreader::readplainrest(readvalue& value) {
  value.good = in_.skipbl();
  const textplace rest = in_.restplace();
  const auto size = trimright(in_.ahead()).size();
  in_.restofline(value.own);
  value.text = value.own;
  value.place = value.written = rest.part(0, size);
}

// --- Immediate options -------------------------------------------------------------------------

void entryreader::immediate(const timmediateoption& option) {
  in_.skipbecomes();
  const textplace rest = in_.restplace();
  readvalue value;
  outer_ ? readrest(in_, value) : readtoken(in_, value);
  if (value.written.length > 0) beginvalue(options_, value, &option);
  if (value.good)
    immediatevalue(option.immediatekind, value.text);
  else if (option.immediatekind == immediateHelp)
    options_.optshowhelp({});
  else
    fault(optxv_fault_value_expected, "Value expected for immediate option ", key_.text, rest,
          option.position + 1);
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
      options_.optaddmessage(value);
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
    usable(option);  // KEEP: even an obsolete option is set to its default here
    option.usedefined();
  } else if (!in_.skipbecomes()) {
    fault(optxv_fault_value_expected, "Value expected for key ", option.getname(), in_.restplace(),
          option.position + 1);
  } else if (option.subtype == optsub2Values) {
    assigntwo(option);
  } else {
    assignone(option);
  }
  if (toeol_) checkremainder();
}

/// KEEP: in token mode a value with an unclosed quote is dropped without a message.
void entryreader::assignone(toption& option) {
  readvalue value;
  readtyped(value);
  beginvalue(options_, value, &option);
  const bool wanted = usable(option);
  if (wanted && value.good) option.setasstring(value.text);
}

void entryreader::assigntwo(toption& option) {
  readvalue first;
  readvalue second;
  readtoken(in_, first);
  if (in_.skipbl()) readtyped(second);
  assign2(option, first, second);
}

/// Stores two values. One that is '*' leaves its half as it is, and a first value without a second
/// goes to both. KEEP: in token mode a comma after the first is an empty second value.
void entryreader::assign2(toption& option, const readvalue& first, const readvalue& second) {
  beginvalue(options_, first, &option);
  const bool wanted = usable(option);
  if (wanted && first.good && first.text != "*") {
    option.setasstring(first.text);
    if (!second.good) option.setasstring2(first.text);
  }
  if (!second.good && second.written.length == 0) return;
  beginvalue(options_, second, &option, 2);
  if (wanted && second.good && second.text != "*") option.setasstring2(second.text);
}

/// Reports the use of a marked name; false if the name is obsolete, so that its value is dropped.
/// A key that is not the option's own name counts as a synonym of it.
bool entryreader::usemarked(const toption& option) {
  const bool own = struequal(key_.text, option.optname);
  const bool obsolete = option.marked(own ? markObsoleteOption : markObsoleteSynonym);
  if (!obsolete && !option.marked(own ? markDeprecatedOption : markDeprecatedSynonym)) return true;
  const bool deprecated =
      option.marked(markDeprecatedOption) || option.marked(markDeprecatedSynonym);
  const messagefacts facts = {.fault = obsolete ? optxv_fault_obsolete : optxv_fault_deprecated,
                              .place = key_.place,
                              .option = option.position + 1,
                              .about = key_.text};
  options_.addmessagefrom(optMsgDeprecated, facts, [&] {
    return concat(deprecated ? "deprecated" : "obsolete", own ? " option " : " synonym ",
                  quoted{key_.text}, "; ",
                  own ? option.deprecatedtext() : option.synonymdeprecatedtext());
  });
  return !obsolete;
}

/// KEEP: the rest of the line is skipped, but the character on which it began stays and is read as
/// a key, so that a second message follows this one.
void entryreader::checkremainder() {
  if (!in_.skipbl()) return;
  options_.addmessage(
      optMsgUserError, "Remainder of line ignored",
      {.fault = optxv_fault_remainder, .place = in_.restplace(), .seen = in_.ahead()});
  in_.skiptoeol();
}

// --- Settings from outside ---------------------------------------------------------------------

/// Takes up the key; gives whether the values that follow in texts of their own are to be stored.
bool entryreader::beginouter(const toption& option, bool valuesfollow) {
  options_.assigning.at = key_.place;
  if (options_.told) tellkey(&option);
  return !valuesfollow || usable(option);
}

void entryreader::readouter(toption& option) {
  const bool bare = option.subtype == optsubRequired && !in_.skipbl();
  if (const auto* acting = askind<timmediateoption>(&option)) {
    immediate(*acting);
  } else if (bare && option.opttype == optTypeBoolean) {
    if (usable(option)) option.setasstring("1");
  } else {
    plain(option);
  }
}

/// Stores a value of those that follow. A first one that is the last goes to both.
void entryreader::assignouter(toption& option, const readvalue& value, std::int32_t which,
                              bool last) {
  if (const auto* acting = askind<timmediateoption>(&option))
    return immediatevalue(acting->immediatekind, value.text);
  if (value.text == "*" && option.subtype == optsub2Values) return;
  which == 1 ? option.setasstring(value.text) : option.setasstring2(value.text);
  if (which == 1 && last && option.subtype == optsub2Values) option.setasstring2(value.text);
}

void entryreader::unknownouter(messagekind kind) {
  fault(optxv_fault_unknown_option, "Unknown option ", key_.text, key_.place, 0, kind);
  const std::vector<std::string> near = options_.nearnames().names(key_.text);
  if (near.empty()) return;
  shortstring text = "   Did you mean ";
  for (const std::string& name : near)
    text.append(&name == &near.front()  ? ""
                : &name == &near.back() ? " or "
                                        : ", ")
        .append(quoted{name});
  options_.addmessage(
      kind, text.append('?'),
      {.fault = optxv_fault_nearest, .place = key_.place, .about = key_.text, .detail = true});
}

/// One argument or variable that is being read: a text of one line, with a reader of its own.
class outerread {
 public:
  outerread(tzmaoptions& options, const outertext& from)
      : options_(options),
        in_(&options.messagelist, options.echoflag, charset()),
        running_(options.parser, &in_),
        origin_(options.assigning, options.assigning),
        source_(options.outersource, from.source) {
    options.beginsource(in_, from.kind, from.source);
    in_.readfrombytes(from.text);
    in_.nextline();
  }
  tminiparser& in() { return in_; }
  /// The reader, after so many bytes of the text.
  tminiparser& after(std::size_t bytes) {
    in_.pass(bytes);
    return in_;
  }
  void end() {
    options_.assigning.at = {};
    options_.endsource(0);
  }

 private:
  tzmaoptions& options_;
  tminiparser in_;
  replacement<tminiparser*> running_;
  replacement<valueorigin> origin_;
  replacement<std::string_view> source_;
};

/// Whether the outermost read may open one file more; at the first that it may not, a message says
/// so.
bool mayopen(tzmaoptions& options, std::string_view name) {
  if (options.filesopened > maximumfiles) return false;
  if (++options.filesopened <= maximumfiles) return true;
  options.addmessage(optMsgUserError,
                     concat("More than ", inttostr(maximumfiles), " files; the rest ignored"),
                     {.fault = optxv_fault_file_nesting, .about = name});
  return false;
}

/// What the readers of one line of text share: the messages before and after it, and a reader of
/// its own.
template <class Start>
void readtext(tzmaoptions& options, std::string_view source, Start start) {
  tminiparser reader(&options.messagelist, options.echoflag, options.eolcommset);
  if (options.parser == nullptr) options.filesopened = 0;
  const replacement<tminiparser*> running(options.parser, &reader);
  const replacement<valueorigin> origin(options.assigning, options.assigning);
  options.beginsource(reader, optxv_source_string, source);
  start(reader);
  options.addmessage(optMsgFileEnter, source);
  options.parse(options.eolonly);
  options.assigning.at = {};
  options.addmessage(optMsgFileLeave, source);
  options.endsource(0);
}

}  // namespace

foundoption findouter(tzmaoptions& options, std::string_view name) {
  toption* option = options.optionasobj(name);
  std::string underscored(name);
  if (option != nullptr || name.find('-') == std::string_view::npos) return {option, underscored};
  std::replace(underscored.begin(), underscored.end(), '-', '_');
  option = options.optionasobj(underscored);
  return {option, underscored};
}

void readouter(tzmaoptions& options, const outersetting& setting, const foundoption& found,
               std::span<const outertext> values) {
  options.filesopened = 0;
  outerread read(options, setting.from);
  entryreader entry(options, read.after(setting.before + setting.size), found.name, setting);
  const bool wanted = entry.beginouter(*found.option, !values.empty());
  if (values.empty()) entry.readouter(*found.option);
  read.end();
  for (std::size_t i = 0; i < values.size(); ++i) {
    outerread further(options, values[i]);
    const auto which = static_cast<std::int32_t>(i) + 1;
    readvalue value;
    readrest(further.in(), value);
    beginvalue(options, value, found.option, which);
    if (wanted) entry.assignouter(*found.option, value, which, i + 1 == values.size());
    further.end();
  }
}

void reportunknown(tzmaoptions& options, const outersetting& setting, messagekind kind) {
  outerread read(options, setting.from);
  entryreader(options, read.in(), setting.name(), setting).unknownouter(kind);
  read.end();
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

void tzmaoptions::readline(std::string_view bytes) {
  readtext(*this, "pchar", [bytes](tminiparser& reader) { reader.readfrombytes(bytes); });
}

std::int32_t tzmaoptions::optreadparameterfile(std::string_view filename) {
  linesource source = {.name = filename, .nodevices = parser != nullptr};
  if (told) source.bytes = told->textinplaceof(filename);
  return readparameters(source);
}

std::int32_t tzmaoptions::readparametertext(std::string_view name, std::string_view bytes) {
  return readparameters({name, bytes});
}

/// KEEP: a file that may not be opened any more is no failure, as one that is nested too deep is
/// none.
std::int32_t tzmaoptions::readparameters(const linesource& source) {
  if (parser == nullptr) filesopened = 0;
  if (!mayopen(*this, source.name)) return 0;
  tminiparser reader(&messagelist, echoflag, eolcommset);
  const replacement<tminiparser*> running(parser, &reader);
  if (const int code = reader.open(source); code != 0) {
    addfilefailure(optMsgUserError, optxv_fault_cannot_open, "Cannot open parameter file ",
                   source.name, code);
    return code;
  }
  addmessage(optMsgFileEnter, source.name);
  const replacement<std::int32_t> level(filedepth, filedepth + 1);
  int failure = 0;
  if (filedepth <= maximumfiledepth) {
    const replacement<valueorigin> origin(assigning, assigning);
    beginsource(reader, optxv_source_parameters, source.name);
    parse(eolonly);
    failure = readfailure(optMsgUserError, "Cannot read parameter file ", source.name);
    endsource(failure);
  } else {
    addmessage(optMsgUserError, "File nesting level too deep; file ignored",
               {.fault = optxv_fault_file_nesting, .about = source.name});
  }
  addmessage(optMsgFileLeave, source.name);
  return failure;
}

}  // namespace optxv
