// Lookup and access by name. The operations are declared in zmaoptions.h.

#include "options/optionkinds.h"
#include "options/zmaoptions.h"

namespace optxv {

namespace {

/// The two failures of the list operations: no option has the name, or it is no list.
constexpr std::int32_t unknownname = -2;
constexpr std::int32_t notalist = -1;

}  // namespace

std::int32_t tzmaoptions::optlookup(std::string_view name) const {
  switch (lookupmode) {
    case lookupNormal:
      return optionindex.find(name);
    case lookupPath:
      return pathindex.find(name);
    case lookupMinos:
      return minosindex.find(name);
    default:
      return -1;
  }
}

toption* tzmaoptions::optionasobj(std::string_view name) {
  curoptname = name;
  const std::int32_t position = optlookup(name);
  if (position >= 0) return getobjects(position);
  const std::int32_t synonym = synonymindex.find(name);
  return synonym >= 0 ? synonymtarget(synonym) : nullptr;
}

void tzmaoptions::setasstring(std::string_view name, std::string_view text) {
  if (toption* option = optionasobj(name)) option->setasstring(text);
}

shortstring tzmaoptions::getasstring(std::string_view name) {
  const toption* option = optionasobj(name);
  return option != nullptr ? option->getasstring() : shortstring();
}

std::int32_t tzmaoptions::optfindstr(std::string_view name, std::int32_t& optnr,
                                     std::int32_t& refnr) {
  curoptname = name;
  std::int32_t position = optlookup(name);
  if (position < 0) {
    const std::int32_t synonym = synonymindex.find(name);
    if (synonym >= 0) position = synonymposition(synonym);
  }
  const toption* option = getobjects(position);
  optnr = option != nullptr ? position + 1 : -1;
  refnr = option != nullptr ? option->refnr : -1;
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgetvalstr(std::string_view name, shortstring& text) {
  const toption* option = optionasobj(name);
  text = option != nullptr ? option->getasstring() : shortstring();
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgetval2str(std::string_view name, shortstring& text) {
  const toption* option = optionasobj(name);
  const bool good = option != nullptr && option->subtype == optsub2Values;
  text = good ? option->getasstring2() : shortstring();
  return good ? 1 : 0;
}

std::int32_t tzmaoptions::optsetrefnrstr(std::string_view name, std::int32_t refnr) {
  toption* option = getobjects(optlookup(name));
  if (option == nullptr) return 0;
  option->refnr = refnr;
  return 1;
}

std::int32_t tzmaoptions::optgetsynonym(std::int32_t position, shortstring& synonym,
                                        shortstring& option) {
  synonym.clear();
  option.clear();
  if (position < 1 || position > synonymlist.count()) return 0;
  synonym = synonymlist.getname(position - 1);
  option = getstrings(synonymposition(position - 1));
  return 1;
}

// --- String lists ------------------------------------------------------------------------------

namespace {

/// Calls use with the string list of that name and gives its result, or the number of a failure.
template <class Use>
std::int32_t withstrlist(tzmaoptions& options, std::string_view name, Use use) {
  toption* option = options.optionasobj(name);
  if (option == nullptr) return unknownname;
  auto* list = askind<tstrlistoption>(option);
  return list != nullptr ? use(*list) : notalist;
}

}  // namespace

std::int32_t tzmaoptions::optlistcountstr(std::string_view name) {
  return withstrlist(*this, name, [](tstrlistoption& list) { return list.count(); });
}

std::int32_t tzmaoptions::optreadfromliststr(std::string_view name, std::int32_t position,
                                             shortstring& item) {
  item.clear();
  return withstrlist(*this, name, [&](tstrlistoption& list) {
    if (position < 1 || position > list.count()) return 0;
    item = list.item(position - 1);
    return 1;
  });
}

std::int32_t tzmaoptions::optgetfromliststr(std::string_view name, shortstring& item) {
  item.clear();
  return withstrlist(*this, name, [&](tstrlistoption& list) {
    if (list.count() == 0) return 0;
    item = list.takefirst();
    return 1;
  });
}

std::int32_t tzmaoptions::optgetfromanystrlist(std::int32_t selector, shortstring& option,
                                               shortstring& item) {
  const std::set<std::int32_t>& fitting = filledlists[selector != 0 ? 1 : 0];
  const std::set<std::int32_t>& other = filledlists[selector != 0 ? 0 : 1];
  if (fitting.empty()) {
    if (!other.empty()) option = getstrings(*other.rbegin());
    return 0;
  }
  const std::int32_t position = *fitting.begin();
  option = getstrings(position);
  item = askind<tstrlistoption>(getobjects(position))->takefirst();
  return 1;
}

}  // namespace optxv
