#include "parameter/indicators.h"

#include <memory>

#include "language/words.h"
#include "parameter/entries.h"

namespace optxv {

namespace {

template <class... Parts>
void complain(tzmaoptions& options, const Parts&... parts) {
  options.addmessagefrom(optMsgUserError, [&] { return concat(parts...); });
}

bool toolong(std::string_view index) {
  return index.size() > maximumidentifier + (isquoted(index) ? 2 : 0);
}

/// The two sides of an entry.
enum class side : bool { equation, variable };

/// Stores one index of a symbol's list; false ends the list.
bool takeindex(tindicatorlist& list, side which, std::string_view name, bool good,
               std::string_view index) {
  if (!good) {
    complain(*list.owner, "Unique element expected for indicator id ", quoted{name});
    return false;
  }
  if (index == "*") {
    complain(*list.owner, "Universe not allowed for indicator id ", quoted{name});
    return false;
  }
  if (which == side::variable)
    list.addvardim(index);
  else
    list.addequdim(index);
  return true;
}

/// Reads one side: a name and an optional index list. False where there is no name; a fault in the
/// list leaves the reader there, and the entry goes on.
bool doident(tindicatorlist& list, tminiparser& in, side which) {
  shortstring name;
  in.skipbl();
  if (!in.nextident(name)) {
    complain(*list.owner, "Equation ID expected for indicator");
    return false;
  }
  if (which == side::variable)
    list.setvariable(name);
  else
    list.addentry(name);
  readindexlist(
      in,
      [&](bool good, std::string_view index) { return takeindex(list, which, name, good, index); },
      [&](char partner) {
        complain(*list.owner, "Closing bracket ", quoted{{&partner, 1}}, " expected for id ",
                 quoted{name});
      });
  return true;
}

/// Reads both symbols; false at a fault that ends the entry.
bool readsymbols(tindicatorlist& list, tminiparser& in) {
  if (!doident(list, in, side::equation)) return false;
  if (in.skiptochar('$')) return doident(list, in, side::variable);
  complain(*list.owner, "$ expected after equation identifier ", quoted{list.curitem->equname});
  return false;
}

bool readvalue(tindicatorlist& list, tminiparser& in) {
  constexpr std::string_view expected = "Boolean value expected for equation indicator ";
  tindicatoritem& item = *list.curitem;
  shortstring token;
  in.skipbecomes();
  if (!in.nexttoken(token)) {
    complain(*list.owner, expected, quoted{item.equname});
    return false;
  }
  const int word = checkboolean(token);
  item.indicatorvalue = word == 0;
  if (word <= 1) return true;
  complain(*list.owner, expected, quoted{item.equname}, ", Saw ", quoted{token});
  return false;
}

}  // namespace

// The list --------------------------------------------------------------------------------------

std::unique_ptr<txlistobj> makeindicatorlist(tzmaoptions* owner) {
  return std::make_unique<tindicatorlist>(owner);
}

tindicatorlist::~tindicatorlist() = default;

void tindicatorlist::addentry(std::string_view equation) {
  addowned(std::make_unique<tindicatoritem>());
  curitem = objectof<tindicatoritem>(getlast());
  curitem->equname = equation;
  if (equation.size() > maximumidentifier)
    complain(*owner, "Not a good equation identifier ", quoted{equation});
}

void tindicatorlist::setvariable(std::string_view variable) {
  if (variable.size() > maximumidentifier)
    complain(*owner, "Variable ", quoted{variable}, " is not a good identifier");
  curitem->varname = variable;
}

void tindicatorlist::addequdim(std::string_view index) {
  if (curitem->equindices.count() >= maximumindices)
    complain(*owner, "Too many dimensions for equation ", quoted{curitem->equname});
  if (toolong(index)) complain(*owner, "Bad Equation index = ", quoted{curitem->equname});
  curitem->equindices.add(index);
}

void tindicatorlist::addvardim(std::string_view index) {
  if (curitem->varindices.count() >= maximumindices)
    complain(*owner, "Too many dimensions for variable ", quoted{curitem->varname});
  if (toolong(index))
    complain(*owner, "Bad variable index = ", quoted{curitem->varname});
  else if (!isquoted(index) && !curitem->equindices.has(index))
    complain(*owner, "Index ", quoted{index}, " not controled for variable ",
             quoted{curitem->varname});
  curitem->varindices.add(index);
}

void tindicatorlist::writetoparams(textfile& file) const {
  for (std::int32_t i = 0; i < count(); ++i) {
    const tindicatoritem& written = item(i);
    file.write(owner->indicatorkey);
    file.write(" ");
    writeindex(file, written.equname, written.equindices);
    file.write("$");
    writeindex(file, written.varname, written.varindices);
    file.write(written.indicatorvalue ? "=1" : "=0");
    endline(file);
  }
}

// Reading ---------------------------------------------------------------------------------------

void readindicator(tzmaoptions& options, tminiparser& in) {
  tindicatorlist& list = *indicatorsof(options);
  keepwhole(options, list, options.indicatorerrors, [&] {
    shortstring dropped;
    if (!readsymbols(list, in) || !readvalue(list, in)) in.restofline(dropped);
  });
  list.curitem = nullptr;
}

// Access by number ------------------------------------------------------------------------------

namespace {

/// The item of an entry number from 1, nil for a bad one.
const tindicatoritem* itemof(const tzmaoptions& options, std::int32_t position) {
  const tindicatorlist* list = indicatorsof(options);
  const bool found = list != nullptr && position >= 1 && position <= list->count();
  return found ? &list->item(position - 1) : nullptr;
}

/// An index as stored, by its position from 1 in one list of an entry; 0 and an empty text for a
/// bad position or no entry.
std::int32_t indexat(const tindicatoritem* item, const indexlist tindicatoritem::*list,
                     std::int32_t index, shortstring& label) {
  const bool found = item != nullptr && index >= 1 && index <= (item->*list).count();
  label = found ? (item->*list).get(index - 1) : std::string_view();
  return found ? 1 : 0;
}

}  // namespace

std::int32_t tzmaoptions::optgetindicatornr(std::int32_t position, shortstring& equation,
                                            shortstring& variable, std::int32_t& equationdimension,
                                            std::int32_t& variabledimension,
                                            std::int32_t& mark) const {
  const tindicatoritem* item = itemof(*this, position);
  const bool found = item != nullptr;
  equation = found ? item->equname.view() : std::string_view();
  variable = found ? item->varname.view() : std::string_view();
  equationdimension = found ? item->equindices.count() : 0;
  variabledimension = found ? item->varindices.count() : 0;
  mark = found && item->indicatorvalue ? 1 : 0;
  return found ? 1 : 0;
}

std::int32_t tzmaoptions::optgetequindicatornr(std::int32_t position, std::int32_t index,
                                               shortstring& label) const {
  return indexat(itemof(*this, position), &tindicatoritem::equindices, index, label);
}

std::int32_t tzmaoptions::optgetvarindicatornr(std::int32_t position, std::int32_t index,
                                               shortstring& label) const {
  return indexat(itemof(*this, position), &tindicatoritem::varindices, index, label);
}

}  // namespace optxv
