#include "parameter/dotoptions.h"

#include <memory>

#include "options/optionkinds.h"
#include "parameter/entries.h"

namespace optxv {

namespace {

/// A complaint that names the key or symbol at its end.
void complain(tzmaoptions& options, std::string_view words, std::string_view key) {
  options.addmessagefrom(optMsgUserError, [&] { return concat(words, quoted{key}); });
}

/// The value of an option of a kind with a number, 0 for any other.
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

/// An element without its quotes. The closing one is missing where the element was too long.
std::string_view unquoted(std::string_view index) {
  if (!isquoted(index)) return index;
  const char quote = index.front();
  index.remove_prefix(1);
  if (index.ends_with(quote)) index.remove_suffix(1);
  return index;
}

/// Stores one index of the list behind a key; false ends the list.
bool takeindex(tzmaoptions& options, std::string_view key, bool good, std::string_view index) {
  if (!good) {
    complain(options, "Element expected for .option ", key);
    return false;
  }
  if (index != "*" && !isquoted(index)) {
    complain(options, "Set name not allowed .option ", key);
    return false;
  }
  if (!dotoptionsof(options).addindex(index))
    complain(options, "Too many dimensions for .option ", key);
  return true;
}

void readvalue(tzmaoptions& options, tminiparser& in, std::string_view key) {
  shortstring value;
  in.skipbecomes();
  if (in.nexttoken(value))
    dotoptionsof(options).setvalue(value);
  else
    complain(options, "Value expected for .option ", key);
}

void readindicesandvalue(tzmaoptions& options, tminiparser& in, std::string_view key) {
  const bool complete = readindexlist(
      in, [&](bool good, std::string_view index) { return takeindex(options, key, good, index); },
      [&](char partner) {
        options.addmessagefrom(optMsgUserError, [&] {
          return concat("Closing bracket ", quoted{{&partner, 1}}, " expected for .option ",
                        quoted{key});
        });
      });
  if (complete) readvalue(options, in, key);
}

}  // namespace

// The list --------------------------------------------------------------------------------------

std::unique_ptr<txstringlistobj> makedotoptionlist(tzmaoptions* owner) {
  return std::make_unique<tdotobjlist>(owner);
}

void tdotobjlist::addentry(std::string_view name, std::int32_t dotoptnr) {
  if (name.size() > maximumidentifier) complain(*owner, ".Option ID too long ", name);
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

void readdotoption(tzmaoptions& options, tminiparser& in, std::string_view key) {
  in.nextch();
  shortstring word;
  if (!in.nextident(word)) return complain(options, ".suffix expected for key ", key);
  const shortstring suffix = concat('.', word);
  const std::int32_t position = options.optlookup(suffix);
  if (position < 0) {
    options.addmessagefrom(optMsgUserError, [&] {
      return concat("unknown .suffix ", quoted{suffix}, " for key ", quoted{key});
    });
    return;
  }
  tdotobjlist& list = dotoptionsof(options);
  keepwhole(options, list, options.dotoptionerrors, [&] {
    list.addentry(key, position);
    readindicesandvalue(options, in, key);
  });
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
