#include "parameter/indicators.h"

#include <memory>

#include "language/words.h"
#include "parameter/entries.h"
#include "parameter/values.h"

namespace optxv {

namespace {

/// A complaint about a symbol or an index, at the place that the reader has reached.
template <class... Parts>
void complain(tzmaoptions& options, std::int32_t fault, std::string_view about,
              const Parts&... parts) {
  options.addmessagefrom(optMsgUserError, {.fault = fault, .about = about},
                         [&] { return concat(parts...); });
}

bool toolong(std::string_view index) {
  return index.size() > maximumidentifier + (isquoted(index) ? 2 : 0);
}

/// The two sides of an entry.
enum class side : bool { equation, variable };

/// Where the two names are.
struct symbolplaces {
  textplace equation, variable;
};

/// Stores one index of a symbol's list; false ends the list.
bool takeindex(tindicatorlist& list, side which, std::string_view name, bool good,
               std::string_view index) {
  if (!good) {
    complain(*list.owner, optxv_fault_index_expected, name,
             "Unique element expected for indicator id ", quoted{name});
    return false;
  }
  if (index == "*") {
    complain(*list.owner, optxv_fault_index_not_allowed, name,
             "Universe not allowed for indicator id ", quoted{name});
    return false;
  }
  if (which == side::variable)
    list.addvardim(index);
  else
    list.addequdim(index);
  return true;
}

/// Reads one side: a name and an optional index list. False if there is no name; after a fault in
/// the list the reader stays there, and the reading of the entry goes on.
bool doident(tindicatorlist& list, tminiparser& in, side which, symbolplaces& places) {
  shortstring name;
  in.skipbl();
  textplace& here = list.owner->assigning.at;
  here = in.restplace();
  if (!in.nextident(name)) {
    complain(*list.owner, optxv_fault_symbol_expected, {}, "Equation ID expected for indicator");
    return false;
  }
  here = in.since(here);
  (which == side::variable ? places.variable : places.equation) = here;
  if (list.owner->told) list.owner->told->cutlong(optxv_cut_name, 0, name, here);
  if (which == side::variable)
    list.setvariable(name);
  else
    list.addentry(name);
  readindexlist(
      in,
      [&](bool good, std::string_view index, const textplace& place) {
        here = place;
        return takeindex(list, which, name, good, index);
      },
      [&](char partner) {
        here = in.restplace();
        complain(*list.owner, optxv_fault_bracket_expected, name, "Closing bracket ",
                 quoted{{&partner, 1}}, " expected for id ", quoted{name});
      });
  return true;
}

/// Reads both symbols; false at a fault that ends the entry.
bool readsymbols(tindicatorlist& list, tminiparser& in, symbolplaces& places) {
  if (!doident(list, in, side::equation, places)) return false;
  if (in.skiptochar('$')) return doident(list, in, side::variable, places);
  list.owner->assigning.at = in.restplace();
  complain(*list.owner, optxv_fault_dollar_expected, list.curitem->equname,
           "$ expected after equation identifier ", quoted{list.curitem->equname});
  return false;
}

bool readmark(tindicatorlist& list, tminiparser& in) {
  constexpr std::string_view expected = "Boolean value expected for equation indicator ";
  tindicatoritem& item = *list.curitem;
  in.skipbecomes();
  readvalue value;
  readtoken(in, value);
  beginvalue(*list.owner, value, nullptr);
  if (!value.good) {
    complain(*list.owner, optxv_fault_value_expected, item.equname, expected, quoted{item.equname});
    return false;
  }
  const int word = checkboolean(value.text);
  item.indicatorvalue = word == 0;
  if (word <= 1) return true;
  const messagefacts facts = {
      .fault = optxv_fault_boolean_expected, .about = item.equname, .seen = value.text};
  list.owner->addmessagefrom(optMsgUserError, facts, [&] {
    return concat(expected, quoted{item.equname}, ", Saw ", quoted{value.text});
  });
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
    complain(*owner, optxv_fault_name_too_long, equation, "Not a good equation identifier ",
             quoted{equation});
}

void tindicatorlist::setvariable(std::string_view variable) {
  if (variable.size() > maximumidentifier)
    complain(*owner, optxv_fault_name_too_long, variable, "Variable ", quoted{variable},
             " is not a good identifier");
  curitem->varname = variable;
}

void tindicatorlist::addequdim(std::string_view index) {
  if (curitem->equindices.count() >= maximumindices)
    complain(*owner, optxv_fault_too_many_indices, curitem->equname,
             "Too many dimensions for equation ", quoted{curitem->equname});
  if (toolong(index))
    complain(*owner, optxv_fault_index_too_long, curitem->equname,
             "Bad Equation index = ", quoted{curitem->equname});
  curitem->equindices.add(index);
}

void tindicatorlist::addvardim(std::string_view index) {
  if (curitem->varindices.count() >= maximumindices)
    complain(*owner, optxv_fault_too_many_indices, curitem->varname,
             "Too many dimensions for variable ", quoted{curitem->varname});
  if (toolong(index))
    complain(*owner, optxv_fault_index_too_long, curitem->varname,
             "Bad variable index = ", quoted{curitem->varname});
  else if (!isquoted(index) && !curitem->equindices.has(index))
    complain(*owner, optxv_fault_index_not_controlled, index, "Index ", quoted{index},
             " not controled for variable ", quoted{curitem->varname});
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

namespace {

void tellentry(const tindicatorlist& list, bool kept, std::string_view equation,
               std::string_view variable, const symbolplaces& places) {
  const listener& told = *list.owner->told;
  told.tell(&optxv_listener::indicator, {.number = kept ? list.count() : 0,
                                         .option = 0,
                                         .name = textof(equation),
                                         .place = told.placed(places.equation),
                                         .second = textof(variable),
                                         .second_place = told.placed(places.variable)});
}

}  // namespace

void readindicator(tzmaoptions& options, tminiparser& in) {
  tindicatorlist& list = *indicatorsof(options);
  symbolplaces places;
  shortstring equation, variable;
  const bool kept = keepwhole(options, list, options.indicatorerrors, [&] {
    shortstring dropped;
    if (!readsymbols(list, in, places) || !readmark(list, in)) in.restofline(dropped);
    if (!options.told || list.curitem == nullptr) return;
    equation = list.curitem->equname.view();
    variable = list.curitem->varname.view();
  });
  list.curitem = nullptr;
  if (options.told) tellentry(list, kept, equation, variable, places);
}

// Access by number ------------------------------------------------------------------------------

namespace {

/// The entry of a number from 1, nil for a bad number.
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
