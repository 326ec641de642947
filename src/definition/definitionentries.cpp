#include "definition/definitionentries.h"

#include <algorithm>

#include "options/optionkinds.h"

namespace optxv {

namespace {

constexpr int maximumindicatorname = 63;

/// The position of a word in a table of words, case ignored, or -1.
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
  record.check(record.tokenfield(optxv_field_default, standard), optxv_fault_bad_field,
               "Bad default string");
  const fieldread at = record.lastfield();
  record.readhelp();
  auto option = record.options.make<tenumstroption>(record.name, standard, record.help());
  record.modify(*option);
  tenumstroption& entered = *option;
  record.enter(std::move(option));
  while (record.continuation()) {
    shortstring item;
    record.tokenfield(optxv_field_item, item);
    if (item.empty()) break;
    const textplace place = record.lastfield().place;
    record.integerfield(optxv_field_helpcontext, record.helpcontext, "Bad HC");
    record.restfield(optxv_field_text);
    entered.additem(item, record.helpcontext, record.text);
    record.declare({.what = optxv_declared_item,
                    .number = entered.enumitems.count(),
                    .option = record.number()},
                   item, place);
  }
  record.check(entered.enumitems.indexof(standard) >= 0, optxv_fault_default_unknown,
               "Default is undefined", at);
}

void readenumint(definitionreader& record) {
  record.integerfield(optxv_field_default, record.integervalue, "Bad default value");
  const fieldread at = record.lastfield();
  record.readhelp();
  auto option =
      record.options.make<tenumintoption>(record.name, record.integervalue, record.help());
  while (record.continuation()) {
    record.integerfield(optxv_field_item, record.integervalue, "Bad integer enum");
    const fieldread item = record.lastfield();
    record.integerfield(optxv_field_helpcontext, record.helpcontext, "Bad HC");
    record.restfield(optxv_field_text);
    option->additem(record.integervalue, record.helpcontext, record.text);
    record.declare({.what = optxv_declared_item,
                    .number = option->enumitems.count(),
                    .option = record.number()},
                   item.seen, item.place);
  }
  record.modify(*option);
  record.check(option->indexofvalue(option->defaultvalue) >= 0, optxv_fault_default_unknown,
               "Default is undefined", at);
  record.enter(std::move(option));
}

// --- Lists and macros --------------------------------------------------------------------------

namespace {

/// Reports that no option is called as the last field of a record says.
void reportunknown(definitionreader& record, std::int32_t fault, std::string_view words,
                   std::string_view called) {
  fieldread at = record.lastfield();
  at.seen = called;
  record.report(fault, words, record.name, at);
}

void addmember(definitionreader& record, tmultilistoption& list, std::string_view member) {
  const std::int32_t position = record.options.optlookup(member);
  if (position < 0)
    reportunknown(record, optxv_fault_unknown_member,
                  concat("MultiList option ", quoted{member}, " is undefined"), member);
  record.check(!list.hasmember(position), optxv_fault_duplicate_member, "Duplicate option used");
  list.additem(position);
  record.declare({.what = optxv_declared_member,
                  .number = list.members.count(),
                  .option = record.number(),
                  .target = position + 1},
                 member, record.lastfield().place);
}

/// A comma ends a token and is never passed, so reading on would give empty tokens for ever.
bool nocomma(definitionreader& record) {
  if (record.in.ch() != ',') return true;
  record.report(optxv_fault_comma, "Comma in member list", record.name,
                {optxv_field_member, record.in.restplace().part(0, 1), ","});
  return false;
}

}  // namespace

void readmultilist(definitionreader& record) {
  record.readhelp();
  auto option = record.options.make<tmultilistoption>(record.name, record.help());
  tmultilistoption& entered = *option;
  record.enter(std::move(option));
  while (record.continuation()) {
    shortstring member;
    while (record.in.skipbl() && nocomma(record) && record.tokenfield(optxv_field_member, member))
      addmember(record, entered, member);
  }
}

void readstrlist(definitionreader& record) {
  record.readhelp();
  record.enter(record.options.make<tstrlistoption>(record.name, record.help()));
}

void readmacro(definitionreader& record) {
  record.readhelp();
  auto option = record.options.make<tmacrooption>(record.name, record.help());
  while (record.continuation()) {
    shortstring member;
    if (!record.tokenfield(optxv_field_member, member)) break;
    const std::int32_t position = record.options.optionindex.find(member);
    if (position >= 0)
      option->additem(record.options.getobjects(position));
    else
      reportunknown(record, optxv_fault_unknown_member,
                    concat("Unknown option ", quoted{member}, " for macro ", quoted{record.name}),
                    member);
    record.declare({.what = optxv_declared_member,
                    .number = position >= 0 ? option->members.count() : 0,
                    .option = record.number(),
                    .target = position + 1},
                   member, record.lastfield().place);
  }
  record.enter(std::move(option));
}

// --- Immediate options, synonyms, groups -------------------------------------------------------

void readimmediate(definitionreader& record) {
  shortstring word;
  record.check(record.tokenfield(optxv_field_action, word), optxv_fault_bad_field,
               "immediate type expected");
  const fieldread at = record.lastfield();
  record.readhelp();
  const int kind = placeof(word, immediatetypenames);
  if (!record.check(kind >= 0, optxv_fault_unknown_action, "Unknown immediate option", at)) return;
  record.enter(record.options.make<timmediateoption>(
      record.name, static_cast<immediateaction>(kind), record.help()));
}

void readsynonym(definitionreader& record) {
  shortstring target;
  record.tokenfield(optxv_field_target, target);
  record.check(record.options.synonymindex.find(record.name) < 0, optxv_fault_duplicate_synonym,
               "Duplicate synonym", record.namefield);
  const std::int32_t position = record.options.optlookup(target);
  if (position < 0)
    reportunknown(record, optxv_fault_unknown_target, "Unknown option for synonym", target);
  record.options.addsynonym(record.name, position);
  record.declare({.what = optxv_declared_synonym,
                  .number = record.options.optsynonymcount(),
                  .option = position + 1},
                 record.name, record.namefield.place);
}

void readgroup(definitionreader& record) {
  record.check(record.options.groupindex.find(record.name) < 0, optxv_fault_duplicate_group,
               "Duplicate group", record.namefield);
  record.integerfield(optxv_field_groupnumber, record.groupnumber, "Bad group number");
  const fieldread at = record.lastfield();
  record.integerfield(optxv_field_helpcontext, record.helpcontext, "Bad HC");
  record.check(record.options.optgetgroupgrpnr(record.groupnumber) < 0,
               optxv_fault_duplicate_groupnumber, "Group number not unique", at);
  record.restfield(optxv_field_text);
  record.options.addgroup(record.name,
                          std::make_unique<tgroupobj>(record.groupnumber, record.helpcontext,
                                                      record.options.memory.keep(record.text)));
  record.declare({.what = optxv_declared_group, .number = record.options.getgroupcount()},
                 record.name, record.namefield.place);
}

// --- Marks -------------------------------------------------------------------------------------

namespace {

/// What a record marks with: an option, a synonym, and how the listener hears of either.
struct markset {
  deprecationmark option;
  deprecationmark synonym;
  std::int32_t declared;
};

/// Marks the option of that name, or of that synonym, with the rest of the line as its text.
void mark(definitionreader& record, std::string_view name, const markset& marks) {
  tzmaoptions& options = record.options;
  toption* option = options.getobjects(options.optionindex.find(name));
  const bool own = option != nullptr;
  const std::int32_t synonym = own ? -1 : options.synonymindex.find(name);
  if (synonym >= 0) option = options.synonymtarget(synonym);
  if (option == nullptr)
    return reportunknown(record, optxv_fault_unknown_marked,
                         concat("Deprecated option ", quoted{name}, " is undefined"), name);
  record.declare({.what = marks.declared,
                  .number = own ? 0 : options.synonymindex.find(name) + 1,
                  .option = option->position + 1},
                 name, record.lastfield().place);
  record.restfield(optxv_field_text);
  const kepttext text = options.memory.keep(record.text);
  option->addmark(own ? marks.option : marks.synonym, text);
  if (!own) options.marksynonym(synonym, marks.synonym, text);
}

void readmarks(definitionreader& record, const markset& marks) {
  record.restfield(optxv_field_heading);
  while (record.continuation()) {
    shortstring name;
    if (!record.tokenfield(optxv_field_marked, name)) return record.dropline();
    mark(record, name, marks);
  }
}

}  // namespace

void readdeprecated(definitionreader& record) {
  readmarks(record, {markDeprecatedOption, markDeprecatedSynonym, optxv_declared_deprecated});
}

void readobsolete(definitionreader& record) {
  readmarks(record, {markObsoleteOption, markObsoleteSynonym, optxv_declared_obsolete});
}

// --- Settings of the whole file ----------------------------------------------------------------

void readindicatorkey(definitionreader& record) {
  record.restfield(optxv_field_text);
  record.check(record.options.indicatorkey.isnil(), optxv_fault_duplicate_indicator,
               "Indicator redefined", record.namefield);
  if (record.name.length() > maximumindicatorname)
    record.report(optxv_fault_name_too_long,
                  concat("Indicator ", quoted{record.name}, " not a good identifier"), record.name,
                  record.namefield);
  record.options.indicatorkey = record.name;
  record.options.indicatorlist = makeindicatorlist(&record.options);
  record.declare({.what = optxv_declared_indicator}, record.name, record.namefield.place);
}

void readlookup(definitionreader& record) {
  record.restfield(optxv_field_text);
  const int code = placeof(record.name, lookupcodes);
  if (code < 0)
    return record.report(optxv_fault_unknown_lookup,
                         concat("Unknown lookup code ", quoted{record.name}), record.name,
                         record.namefield);
  record.declare({.what = optxv_declared_lookup, .number = code}, record.name,
                 record.namefield.place);
  record.options.lookupmode = static_cast<std::uint8_t>(code);
}

void readeolcomm(definitionreader& record) {
  record.restfield(optxv_field_characters);
  record.declare({.what = optxv_declared_comment}, record.text, record.lastfield().place);
  charset& members = record.options.eolcommset;
  members.clear();
  for (const char member : record.text.view()) {
    if (invalideolcommchar.has(member)) return;
    members.add(member);
  }
}

}  // namespace optxv
