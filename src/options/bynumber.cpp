// Access by number. The operations are declared in zmaoptions.h.

#include <functional>

#include "options/optionkinds.h"
#include "options/zmaoptions.h"

namespace optxv {

namespace {

/// Runs an operation on an option as its own class. Gives 1, or 0 if there is no option or the
/// operation does not take its kind: the type of its parameter says which kinds it takes.
template <class Option, class Operation>
std::int32_t apply(Option* option, Operation operation) {
  if (option == nullptr) return 0;
  return withkind(*option, [&](auto& typed) -> std::int32_t {
    constexpr bool taken = std::is_invocable_v<Operation, decltype(typed)>;
    if constexpr (taken) operation(typed);
    return taken ? 1 : 0;
  });
}

/// The option, if it has two values; else nil.
const toption* ifpair(const toption* option) {
  return option != nullptr && option->subtype == optsub2Values ? option : nullptr;
}

/// The name of a constant in a table of names or of rows.
template <class Rows, class Name>
std::int32_t constantname(const Rows& rows, std::int32_t index, Name name, shortstring& text) {
  const bool good = index >= 0 && static_cast<std::size_t>(index) < rows.size();
  text = good ? name(rows[static_cast<std::size_t>(index)]) : std::string_view();
  return good ? 1 : 0;
}

constexpr auto ofrow = [](const auto& row) { return row.constantname; };

}  // namespace

// --- What an option is -------------------------------------------------------------------------

std::int32_t tzmaoptions::optgetinfonr(std::int32_t optnr, std::int32_t& defined,
                                       std::int32_t& recent, std::int32_t& refnr,
                                       std::int32_t& data, std::int32_t& type,
                                       std::int32_t& sub) const {
  const toption* option = optionat(optnr);
  defined = option != nullptr ? option->defined : 0;
  recent = option != nullptr ? option->recent : 0;
  refnr = option != nullptr ? option->refnr : 0;
  data = option != nullptr ? kindof(*option).data : -1;
  type = option != nullptr ? option->opttype : -1;
  sub = option != nullptr ? option->subtype : -1;
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgetdefinednr(std::int32_t optnr, std::int32_t& defined) const {
  const toption* option = optionat(optnr);
  defined = option != nullptr ? option->defined : 0;
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgetnamenr(std::int32_t optnr, shortstring& name) const {
  const toption* option = optionat(optnr);
  name = option != nullptr ? nounderscore(getstrings(optnr - 1)) : shortstring();
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgethelpnr(std::int32_t optnr, shortstring& name,
                                       shortstring& help) const {
  const toption* option = optionat(optnr);
  name = option != nullptr ? getstrings(optnr - 1) : std::string_view();
  help = option != nullptr ? option->helptext.view() : std::string_view();
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgetopthelpnr(std::int32_t optnr, shortstring& name,
                                          std::int32_t& context, std::int32_t& group) const {
  const toption* option = optionat(optnr);
  name = option != nullptr ? option->getname() : shortstring();
  context = option != nullptr ? option->helpcontext : -1;
  group = option != nullptr ? option->group : -1;
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgetoptgroupnr(std::int32_t optnr) const {
  const toption* option = optionat(optnr);
  return option != nullptr ? option->group : -1;
}

std::int32_t tzmaoptions::optgetboundsint(std::int32_t optnr, std::int32_t& low, std::int32_t& high,
                                          std::int32_t& defaultvalue) const {
  return apply(optionat(optnr), [&](const tintoption& option) {
    low = option.lowbound;
    high = option.highbound;
    defaultvalue = option.defaultvalue;
  });
}

std::int32_t tzmaoptions::optgetboundsdbl(std::int32_t optnr, double& low, double& high,
                                          double& defaultvalue) const {
  return apply(optionat(optnr), [&](const tdbloption& option) {
    low = option.lowbound;
    high = option.highbound;
    defaultvalue = option.defaultvalue;
  });
}

std::int32_t tzmaoptions::optgetdefaultstr(std::int32_t optnr, shortstring& text) const {
  text.clear();
  return apply(optionat(optnr),
               [&](const tstringoption& option) { text = option.defaultvalue.view(); });
}

// --- Values ------------------------------------------------------------------------------------

std::int32_t tzmaoptions::optgetvaluesnr(std::int32_t optnr, shortstring& name,
                                         std::int32_t& integer, double& real,
                                         shortstring& text) const {
  integer = 0;
  real = 0;
  const toption* option = optionat(optnr);
  name = option != nullptr ? option->getname() : shortstring();
  text = option != nullptr ? option->getasstring() : shortstring();
  return apply(option, [&](const scalarkind auto& scalar) {
    if constexpr (integerkind<std::remove_cvref_t<decltype(scalar)>>)
      integer = scalar.getasinteger();
    if constexpr (doublekind<std::remove_cvref_t<decltype(scalar)>>) real = scalar.getasdouble();
  });
}

std::int32_t tzmaoptions::optgetintnr(std::int32_t optnr, std::int32_t& value) const noexcept {
  return apply(optionat(optnr),
               [&](const integerkind auto& option) { value = option.getasinteger(); });
}

std::int32_t tzmaoptions::optgetint2nr(std::int32_t optnr, std::int32_t& value) const {
  return apply(ifpair(optionat(optnr)),
               [&](const integerkind auto& option) { value = option.getasinteger2(); });
}

std::int32_t tzmaoptions::optgetdblnr(std::int32_t optnr, double& value) const noexcept {
  return apply(optionat(optnr),
               [&](const doublekind auto& option) { value = option.getasdouble(); });
}

std::int32_t tzmaoptions::optgetdbl2nr(std::int32_t optnr, double& value) const {
  return apply(ifpair(optionat(optnr)),
               [&](const doublekind auto& option) { value = option.getasdouble2(); });
}

std::int32_t tzmaoptions::optgetstrnr(std::int32_t optnr, shortstring& text) const {
  const toption* option = optionat(optnr);
  text = option != nullptr ? option->getasstring() : shortstring();
  return option != nullptr ? 1 : 0;
}

std::int32_t tzmaoptions::optgetstr2nr(std::int32_t optnr, shortstring& text) const {
  const toption* option = ifpair(optionat(optnr));
  text = option != nullptr ? option->getasstring2() : shortstring();
  return option != nullptr ? 1 : 0;
}

bool tzmaoptions::checkoptnr(std::int32_t& optnr) {
  const toption* option = optionat(optnr);
  // Unsigned, so that the smallest number wraps around and does not overflow; it is bad either way.
  optnr = static_cast<std::int32_t>(static_cast<std::uint32_t>(optnr) - 1U);
  curoptname = option != nullptr ? option->getname() : shortstring("?");
  return option != nullptr;
}

/// What all setters share: the number, the sub-type and the kind are checked, and new errors in the
/// queue show that the value was not taken.
template <class Setter>
std::int32_t tzmaoptions::setbynumber(std::int32_t optnr, bool second, Setter setter) {
  if (!checkoptnr(optnr)) return 0;
  toption* option = getobjects(optnr);
  if (second && option->subtype != optsub2Values) return 0;
  const std::int32_t before = messagelist.count();
  return apply(option, setter) == 1 && errorssince(before) == 0 ? 1 : 0;
}

std::int32_t tzmaoptions::optsetintnr(std::int32_t optnr, std::int32_t value) {
  return setbynumber(optnr, false, [&](integerkind auto& option) { option.setasinteger(value); });
}

std::int32_t tzmaoptions::optsetint2nr(std::int32_t optnr, std::int32_t value) {
  return setbynumber(optnr, true, [&](integerkind auto& option) { option.setasinteger2(value); });
}

std::int32_t tzmaoptions::optsetdblnr(std::int32_t optnr, double value) {
  return setbynumber(optnr, false, [&](doublekind auto& option) { option.setasdouble(value); });
}

std::int32_t tzmaoptions::optsetdbl2nr(std::int32_t optnr, double value) {
  return setbynumber(optnr, true, [&](doublekind auto& option) { option.setasdouble2(value); });
}

std::int32_t tzmaoptions::optsetstrnr(std::int32_t optnr, std::string_view text) {
  return setbynumber(optnr, false, [&](toption& option) { option.setasstring(text); });
}

std::int32_t tzmaoptions::optsetstr2nr(std::int32_t optnr, std::string_view text) {
  return setbynumber(optnr, true, [&](toption& option) { option.setasstring2(text); });
}

namespace {

/// Assigns to an option of a scalar kind the one of three values that fits.
auto fittingvalue(bool second, std::int32_t integer, double real, std::string_view text) {
  return [=](scalarkind auto& option) {
    using Option = std::remove_cvref_t<decltype(option)>;
    if constexpr (integerkind<Option>)
      option.setasinteger12(second, integer);
    else if constexpr (doublekind<Option>)
      option.setasdouble12(second, real);
    else
      second ? option.setasstring2(text) : option.setasstring(text);
  };
}

}  // namespace

std::int32_t tzmaoptions::optsetvaluesnr(std::int32_t optnr, std::int32_t integer, double real,
                                         std::string_view text) {
  return setbynumber(optnr, false, fittingvalue(false, integer, real, text));
}

std::int32_t tzmaoptions::optsetvalues2nr(std::int32_t optnr, std::int32_t integer, double real,
                                          std::string_view text) {
  return setbynumber(optnr, true, fittingvalue(true, integer, real, text));
}

std::int32_t tzmaoptions::optsetrefnr(std::int32_t optnr, std::int32_t refnr) {
  return setbynumber(optnr, false, [&](toption& option) { option.refnr = refnr; });
}

// --- Reset -------------------------------------------------------------------------------------

std::int32_t tzmaoptions::optresetnr(std::int32_t optnr) {
  toption* option = optionat(optnr);
  if (option == nullptr) return 0;
  option->reset();
  return 1;
}

void tzmaoptions::clearentries() {
  dotoptionlist->clear();
  if (indicatorlist) indicatorlist->clear();
}

void tzmaoptions::optresetall() {
  for (std::int32_t i = 0; i < getcount(); ++i) {
    toption& option = *getobjects(i);
    // What a macro would reset with itself has its own turn.
    option.opttype == optTypeMacro ? option.toption::reset() : option.reset();
  }
  clearentries();
  optclearmessages();
  indicatorerrors = 0;
  dotoptionerrors = 0;
}

void tzmaoptions::optresetallrecent() {
  for (std::int32_t i = 0; i < getcount(); ++i) getobjects(i)->recent = 0;
  clearentries();
}

void tzmaoptions::optresetrecentchanges() {
  for (std::int32_t i = 0; i < getcount(); ++i)
    if (toption* option = getobjects(i); option->recent != 0) option->reset();
  clearentries();
}

// --- Enumerations ------------------------------------------------------------------------------

std::int32_t tzmaoptions::optgetenumcount(std::int32_t optnr, std::int32_t& count) const {
  count = -1;
  return apply(optionat(optnr),
               [&](const enumerationkind auto& option) { count = option.enumitems.count(); });
}

namespace {

/// The option, if it is an enumeration that has an entry of that number (from 1); else nil.
const toption* ifentry(const toption* option, std::int32_t entry) {
  const bool good = option != nullptr && withkind(*option, [&](const auto& typed) {
                      if constexpr (enumerationkind<std::remove_cvref_t<decltype(typed)>>)
                        return entry >= 1 && entry <= typed.enumitems.count();
                      else
                        return false;
                    });
  return good ? option : nullptr;
}

const toptionx& helpof(const tenumstroption& option, std::int32_t index) {
  return *objectof<toptionx>(option.enumitems.getobject(index));
}

const toptionx& helpof(const tenumintoption& option, std::int32_t index) {
  return option.item(index);
}

}  // namespace

std::int32_t tzmaoptions::optgetenumvalue(std::int32_t optnr, std::int32_t entry,
                                          std::int32_t& value, shortstring& text) const {
  value = -1;
  text.clear();
  return apply(ifentry(optionat(optnr), entry), [&](const enumerationkind auto& option) {
    if constexpr (integerkind<std::remove_cvref_t<decltype(option)>>) {
      value = option.item(entry - 1).itemvalue;
      text = inttostr(value);
    } else {
      value = 0;
      text = option.enumitems.getname(entry - 1);
    }
  });
}

std::int32_t tzmaoptions::optgetenumhelp(std::int32_t optnr, std::int32_t entry,
                                         std::int32_t& context, shortstring& help) const {
  context = -1;
  help.clear();
  return apply(ifentry(optionat(optnr), entry), [&](const enumerationkind auto& option) {
    const toptionx& item = helpof(option, entry - 1);
    context = item.helpcontext;
    help = item.helptext.view();
  });
}

std::int32_t tzmaoptions::optgetenumstrnr(std::int32_t optnr, shortstring& text,
                                          std::int32_t& entry) const {
  text.clear();
  entry = -1;
  return apply(optionat(optnr), [&](const tenumstroption& option) {
    text = option.getasstring();
    entry = option.indexoftext(text) + 1;
  });
}

// --- Groups and constants ----------------------------------------------------------------------

std::int32_t tzmaoptions::optgetgroupnr(std::int32_t position, shortstring& name,
                                        std::int32_t& groupnr, std::int32_t& context,
                                        shortstring& help) const {
  const bool good = position >= 1 && position <= getgroupcount();
  const tgroupobj* group = good ? groupat(position - 1) : nullptr;
  name = good ? grouplist.getname(position - 1) : std::string_view();
  groupnr = good ? group->groupnr : 0;
  context = good ? group->helpcontext : 0;
  help = good ? group->helptext.view() : std::string_view();
  return good ? 1 : 0;
}

std::int32_t tzmaoptions::optgetgroupgrpnr(std::int32_t groupnr) const {
  const std::int32_t position = groupnumbers.find(
      groupnr, getgroupcount(), [&](std::int32_t i) { return groupat(i)->groupnr; });
  return position >= 0 ? position + 1 : -1;
}

std::int32_t tzmaoptions::optgettypename(std::int32_t type, shortstring& name) {
  return constantname(
      optionkinds, type, [](const kindrow& row) { return row.keyword; }, name);
}

std::int32_t tzmaoptions::optgetconstname(std::int32_t group, std::int32_t index,
                                          shortstring& name) {
  switch (group) {
    case 1:
      return constantname(datatypenames, index, std::identity(), name);
    case 2:
      return constantname(optionkinds, index, ofrow, name);
    case 3:
      return constantname(strtypemodifier, index, ofrow, name);
    case 4:
      return constantname(messagekinds, index == optMsgUserError ? -1 : index, ofrow, name);
    default:
      name.clear();
      return 0;
  }
}

}  // namespace optxv
