#include "definition/definitionentries.h"

#include <algorithm>

#include "options/optionkinds.h"

namespace optxv {

namespace {

constexpr int maximumindicatorname = 63;

/// The place of a word in a table of words, case ignored, or -1.
template <class Words>
int placeof(std::string_view word, const Words& words) {
  const auto* found = std::find_if(words.begin(), words.end(),
                                   [&](std::string_view other) { return struequal(other, word); });
  return found != words.end() ? static_cast<int>(found - words.begin()) : -1;
}

}  // namespace

// --- Enumerations ------------------------------------------------------------------------------

void readenumstr(definitionreader& record) {
  shortstring standard;
  record.check(record.in.nexttoken(standard), "Bad default string");
  record.readhelp();
  auto option =
      std::make_unique<tenumstroption>(record.name, &record.options, standard, record.help());
  record.modify(*option);
  tenumstroption& entered = *option;
  record.enter(std::move(option));
  while (record.continuation()) {
    shortstring item;
    record.in.nexttoken(item);
    if (item.empty()) break;
    record.integerfield(record.helpcontext, "Bad HC");
    record.in.restofline(record.text);
    entered.additem(item, record.helpcontext, record.text);
  }
  record.check(entered.enumitems.indexof(standard) >= 0, "Default is undefined");
}

void readenumint(definitionreader& record) {
  record.integerfield(record.integervalue, "Bad default value");
  record.readhelp();
  auto option = std::make_unique<tenumintoption>(record.name, &record.options, record.integervalue,
                                                 record.help());
  while (record.continuation()) {
    record.integerfield(record.integervalue, "Bad integer enum");
    record.integerfield(record.helpcontext, "Bad HC");
    record.in.restofline(record.text);
    option->additem(record.integervalue, record.helpcontext, record.text);
  }
  record.modify(*option);
  record.check(option->indexofvalue(option->defaultvalue) >= 0, "Default is undefined");
  record.enter(std::move(option));
}

// --- Lists and macros --------------------------------------------------------------------------

namespace {

void addmember(definitionreader& record, tmultilistoption& list, std::string_view member) {
  const std::int32_t position = record.options.optlookup(member);
  if (position < 0)
    record.report(concat("MultiList option ", quoted{member}, " is undefined"), record.name);
  record.check(!list.hasmember(position), "Duplicate option used");
  list.additem(position);
}

}  // namespace

void readmultilist(definitionreader& record) {
  record.readhelp();
  auto option = std::make_unique<tmultilistoption>(record.name, &record.options, record.help());
  tmultilistoption& entered = *option;
  record.enter(std::move(option));
  while (record.continuation()) {
    shortstring member;
    // A comma ends a token and is never passed: read on, it would give empty tokens for ever.
    while (record.in.skipbl() && record.check(record.in.ch() != ',', "Comma in member list") &&
           record.in.nexttoken(member))
      addmember(record, entered, member);
  }
}

void readstrlist(definitionreader& record) {
  record.readhelp();
  record.enter(std::make_unique<tstrlistoption>(record.name, &record.options, record.help()));
}

void readmacro(definitionreader& record) {
  record.readhelp();
  auto option = std::make_unique<tmacrooption>(record.name, &record.options, record.help());
  while (record.continuation()) {
    shortstring member;
    if (!record.in.nexttoken(member)) break;
    const std::int32_t position = record.options.optionindex.find(member);
    if (position >= 0)
      option->additem(record.options.getobjects(position));
    else
      record.report(concat("Unknown option ", quoted{member}, " for macro ", quoted{record.name}),
                    record.name);
  }
  record.enter(std::move(option));
}

// --- Immediate options, synonyms, groups -------------------------------------------------------

void readimmediate(definitionreader& record) {
  shortstring word;
  record.check(record.in.nexttoken(word), "immediate type expected");
  record.readhelp();
  const int kind = placeof(word, immediatetypenames);
  if (!record.check(kind >= 0, "Unknown immediate option")) return;
  record.enter(std::make_unique<timmediateoption>(
      record.name, &record.options, static_cast<immediateaction>(kind), record.help()));
}

void readsynonym(definitionreader& record) {
  shortstring target;
  record.in.nexttoken(target);
  record.check(record.options.synonymindex.find(record.name) < 0, "Duplicate synonym");
  const std::int32_t position = record.options.optlookup(target);
  record.check(position >= 0, "Unknown option for synonym");
  record.options.addsynonym(record.name, position);
}

void readgroup(definitionreader& record) {
  record.check(record.options.groupindex.find(record.name) < 0, "Duplicate group");
  record.integerfield(record.groupnumber, "Bad group number");
  record.integerfield(record.helpcontext, "Bad HC");
  record.check(record.options.optgetgroupgrpnr(record.groupnumber) < 0, "Group number not unique");
  record.in.restofline(record.text);
  record.options.addgroup(record.name, std::make_unique<tgroupobj>(
                                           record.groupnumber, record.helpcontext, record.text));
}

// --- Marks -------------------------------------------------------------------------------------

namespace {

/// The marks and the place of the text, by what the line names.
struct markset {
  deprecationmark option;
  deprecationmark synonym;
};

/// Marks the option of that name, or of that synonym, with the rest of the line as its text.
void mark(definitionreader& record, std::string_view name, const markset& marks) {
  tzmaoptions& options = record.options;
  toption* option = options.getobjects(options.optionindex.find(name));
  const bool own = option != nullptr;
  const std::int32_t synonym = own ? -1 : options.synonymindex.find(name);
  if (synonym >= 0) option = options.synonymtarget(synonym);
  if (option == nullptr)
    return record.report(concat("Deprecated option ", quoted{name}, " is undefined"), record.name);
  record.in.restofline(record.text);
  option->addmark(own ? marks.option : marks.synonym);
  if (!own) options.synonymmarks.push_back({synonym, marks.synonym, heapstring(record.text)});
  (own ? option->deprecatedtext : option->synonymdeprecatedtext) = record.text;
}

void readmarks(definitionreader& record, const markset& marks) {
  record.in.restofline(record.text);
  while (record.continuation()) {
    shortstring name;
    if (!record.in.nexttoken(name)) return record.dropline();
    mark(record, name, marks);
  }
}

}  // namespace

void readdeprecated(definitionreader& record) {
  readmarks(record, {markDeprecatedOption, markDeprecatedSynonym});
}

void readobsolete(definitionreader& record) {
  readmarks(record, {markObsoleteOption, markObsoleteSynonym});
}

// --- Settings of the whole file ----------------------------------------------------------------

void readindicatorkey(definitionreader& record) {
  record.in.restofline(record.text);
  record.check(record.options.indicatorkey.isnil(), "Indicator redefined");
  if (record.name.length() > maximumindicatorname)
    record.report(concat("Indicator ", quoted{record.name}, " not a good identifier"), record.name);
  record.options.indicatorkey = record.name;
  record.options.indicatorlist = makeindicatorlist(&record.options);
}

void readlookup(definitionreader& record) {
  record.in.restofline(record.text);
  const int code = placeof(record.name, lookupcodes);
  if (code < 0)
    return record.report(concat("Unknown lookup code ", quoted{record.name}), record.name);
  record.options.lookupmode = static_cast<std::uint8_t>(code);
}

void readeolcomm(definitionreader& record) {
  record.in.restofline(record.text);
  charset& members = record.options.eolcommset;
  members.clear();
  for (const char member : record.text.view()) {
    if (invalideolcommchar.has(member)) return;
    members.add(member);
  }
}

}  // namespace optxv
