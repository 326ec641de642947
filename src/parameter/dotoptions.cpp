#include "parameter/dotoptions.h"

#include <memory>

#include "options/optionkinds.h"
#include "parameter/entries.h"
#include "parameter/values.h"

namespace optxv {

namespace {

/// A complaint that names the key or symbol at its end.
void complain(tzmaoptions& options, std::int32_t fault, const textplace& place,
              std::string_view words, std::string_view key, std::string_view seen = {}) {
  options.addmessagefrom(optMsgUserError,
                         {.fault = fault, .place = place, .about = key, .seen = seen},
                         [&] { return concat(words, quoted{key}); });
}

/// The value of an option of a kind with a number; 0 for any other kind.
double numericvalue(const toption& option) {
  return withkind(option, [](const auto& typed) -> double {
    using kind = std::remove_cvref_t<decltype(typed)>;
    if constexpr (integerkind<kind>)
      return typed.getasinteger();
    else if constexpr (doublekind<kind>)
      return typed.getasdouble();
    else
      return 0;
  });
}

/// Stores one index of the list after a key; false ends the list.
bool takeindex(tzmaoptions& options, std::string_view key, bool good, std::string_view index,
               const textplace& place) {
  if (!good) {
    complain(options, optxv_fault_index_expected, place, "Element expected for .option ", key);
    return false;
  }
  if (index != "*" && !isquoted(index)) {
    complain(options, optxv_fault_index_not_allowed, place, "Set name not allowed .option ", key,
             index);
    return false;
  }
  if (!dotoptionsof(options).addindex(index))
    complain(options, optxv_fault_too_many_indices, place, "Too many dimensions for .option ", key);
  return true;
}

void readdotvalue(tzmaoptions& options, tminiparser& in, std::string_view key,
                  const toption& attribute) {
  in.skipbecomes();
  readvalue value;
  readtoken(in, value);
  if (value.written.length > 0) beginvalue(options, value, &attribute);
  if (value.good)
    dotoptionsof(options).setvalue(value.text);
  else
    complain(options, optxv_fault_value_expected, value.written, "Value expected for .option ",
             key);
}

void readindicesandvalue(tzmaoptions& options, tminiparser& in, std::string_view key,
                         const toption& attribute) {
  const bool complete = readindexlist(
      in,
      [&](bool good, std::string_view index, const textplace& place) {
        return takeindex(options, key, good, index, place);
      },
      [&](char partner) {
        const messagefacts facts = {.fault = optxv_fault_bracket_expected,
                                    .place = in.restplace(),
                                    .about = key,
                                    .seen = in.ahead()};
        options.addmessagefrom(optMsgUserError, facts, [&] {
          return concat("Closing bracket ", quoted{{&partner, 1}}, " expected for .option ",
                        quoted{key});
        });
      });
  if (complete) readdotvalue(options, in, key, attribute);
}

}  // namespace

std::string_view unquoted(std::string_view index) {
  if (!isquoted(index)) return index;
  const char quote = index.front();
  index.remove_prefix(1);
  if (index.ends_with(quote)) index.remove_suffix(1);
  return index;
}

// The list --------------------------------------------------------------------------------------

std::unique_ptr<txstringlistobj> makedotoptionlist(tzmaoptions* owner) {
  return std::make_unique<tdotobjlist>(owner);
}

void tdotobjlist::addentry(std::string_view name, std::int32_t dotoptnr) {
  if (name.size() > maximumidentifier)
    complain(*owner, optxv_fault_name_too_long, {}, ".Option ID too long ", name);
  addowned(name, std::make_unique<tdotobj>(dotoptnr));
}

tdotobj& tdotobjlist::lastentry(std::string_view complaint) const {
  if (count() == 0) raiseassertion(complaint, "dotoptions", __LINE__);
  return entry(count() - 1);
}

bool tdotobjlist::addindex(std::string_view index) {
  return lastentry("Cannot AddIndex to DotObj").indices.add(index) < maximumindices;
}

void tdotobjlist::setvalue(std::string_view text) {
  tdotobj& last = lastentry("Cannot SetValue to DotObj");
  toption& option = *owner->getobjects(last.dotoptnr);
  owner->curoptname = option.optname;
  const replacement<valueorigin> origin(owner->assigning, owner->assigning);
  owner->assigning.road = roadDot;
  option.setasstring(text);
  last.dotvalue = numericvalue(option);
}

void tdotobjlist::writetoparams(textfile& file) const {
  for (std::int32_t i = 0; i < count(); ++i) {
    const tdotobj& written = entry(i);
    file.write(getname(i));
    writeindex(file, owner->getstrings(written.dotoptnr), written.indices);
    file.write(" = ");
    file.write(dbltostr(written.dotvalue));
    endline(file);
  }
}

// Reading ---------------------------------------------------------------------------------------

namespace {

void tellentry(const tzmaoptions& options, bool kept, std::string_view key,
               const textplace& keyplace, std::int32_t attribute, std::string_view suffix,
               const textplace& suffixplace) {
  const listener& told = *options.told;
  told.tell(&optxv_listener::dot_option, {.number = kept ? options.dotoptionlist->count() : 0,
                                          .option = attribute + 1,
                                          .name = textof(key),
                                          .place = told.placed(keyplace),
                                          .second = textof(suffix),
                                          .second_place = told.placed(suffixplace)});
}

}  // namespace

void readdotoption(tzmaoptions& options, tminiparser& in, std::string_view key,
                   const textplace& keyplace) {
  options.assigning.at = keyplace;
  const textplace rest = in.restplace();
  in.nextch();
  shortstring word;
  if (!in.nextident(word))
    return complain(options, optxv_fault_suffix_expected, in.restplace(),
                    ".suffix expected for key ", key, in.ahead());
  const textplace suffixplace = in.since(rest);
  const shortstring suffix = concat('.', word);
  if (options.told) {
    options.told->cutlong(optxv_cut_name, 0, key, keyplace);
    options.told->cutlong(optxv_cut_name, 0, suffix, suffixplace);
  }
  const std::int32_t position = options.optlookup(suffix);
  if (position < 0) {
    const messagefacts facts = {
        .fault = optxv_fault_unknown_suffix, .place = suffixplace, .about = suffix, .seen = key};
    options.addmessagefrom(optMsgUserError, facts, [&] {
      return concat("unknown .suffix ", quoted{suffix}, " for key ", quoted{key});
    });
    return;
  }
  tdotobjlist& list = dotoptionsof(options);
  const bool kept = keepwhole(options, list, options.dotoptionerrors, [&] {
    list.addentry(key, position);
    readindicesandvalue(options, in, key, *options.getobjects(position));
  });
  if (options.told) tellentry(options, kept, key, keyplace, position, suffix, suffixplace);
}

// Access by number ------------------------------------------------------------------------------

std::int32_t tzmaoptions::optgetdotoptnr(std::int32_t position, shortstring& name,
                                         std::int32_t& optnr, std::int32_t& dimension,
                                         double& value) const {
  const tdotobjlist& list = dotoptionsof(*this);
  const bool found = position >= 1 && position <= list.count();
  const tdotobj* entry = found ? &list.entry(position - 1) : nullptr;
  name = found ? list.getname(position - 1) : std::string_view();
  optnr = found ? entry->dotoptnr + 1 : 0;
  dimension = found ? entry->indices.count() : 0;
  value = found ? entry->dotvalue : 0;
  return found ? 1 : 0;
}

std::int32_t tzmaoptions::optgetdotoptuel(std::int32_t position, std::int32_t index,
                                          shortstring& label) const {
  label.clear();
  const tdotobjlist& list = dotoptionsof(*this);
  if (position < 1 || position > list.count()) return 0;
  const indexlist& indices = list.entry(position - 1).indices;
  if (index < 1 || index > indices.count()) return 0;
  label = unquoted(indices.get(index - 1));
  return 1;
}

}  // namespace optxv
