#include "exchange/settingstext.h"

#include <algorithm>
#include <unordered_map>

#include "exchange/settingsjson.h"
#include "exchange/symbolentries.h"
#include "text/entrytext.h"
#include "text/names.h"
#include "text/printable.h"
#include "text/wording.h"

namespace command {
namespace {

bool isownlist(std::string_view name) {
  if (!name.starts_with(ownlist)) return false;
  name.remove_prefix(ownlist.size());
  return !name.empty() && isletter(name.front()) && std::ranges::all_of(name, isnamecharacter);
}

/// Why an option is no member.
std::string whynomember(const optxv::option& option) {
  if (option.name.starts_with('.')) return "is an attribute of the entries in \"dot-options\"";
  if ((option.marks & optxv_mark_obsolete) != 0) return "is obsolete, so that it has no effect";
  if (option.kind == optxv_kind_immediate) return "is an instruction to the reader of a file";
  return "has no value of its own: set the options that it sets";
}

std::string wordsof(const jsonvalue& value) {
  const std::string word(wordof(value.is));
  return value.is == jsonvalue::kind::list ? word + " of " + grouped(value.items.size()) : word;
}

/// As it would be in the JSON.
std::string shown(const ordered_json& value) {
  return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

}  // namespace

settingstext::settingstext(const optxv::options& options, symbols& names, const settings& form,
                           madetext& to)
    : options_(options), names_(names), to_(to), tokens_(form.tokens) {
  for (const optxv::option& each : options.table()) {
    const std::string& action = names.option(each.number).action;
    if (form.nobounds && nobounds_.empty() && action == "nobounds") nobounds_ = keyof(each);
    if (wholelines_.empty() && action == "eolflag") wholelines_ = keyof(each);
  }
}

/// The name as a user writes it: some tables have blanks in it.
std::string settingstext::keyof(const optxv::option& option) const {
  return shownname(options_.handle(), option.number);
}

// --- Members

void settingstext::read(std::string_view json) {
  const jsontree tree = readjson(json);
  if (!tree.whole && tree.faults.empty()) return;
  if (tree.whole && tree.root.is != jsonvalue::kind::object) {
    finding found = to_.fault(ownfinding::badjson, tree.root.where,
                              "settings are an object, not " + std::string(wordof(tree.root.is)));
    return to_.tell(found);
  }
  for (const jsonmember& each : tree.root.members)
    if (each.value.where.end > 0) readmember(each);  // a fault may be in place of a value
  for (const jsonfault& each : tree.faults) told(each);
}

void settingstext::told(const jsonfault& fault) const {
  if (!fault.twice) return to_.tell(to_.fault(ownfinding::badjson, fault.where, fault.text));
  finding found = to_.fault(ownfinding::membertwice, fault.where,
                            "a member of this name is there already; the first one counts");
  found.notes.push_back({"the first one is here", to_.at(fault.first)});
  to_.tell(found);
}

void settingstext::readmember(const jsonmember& member) {
  const std::size_t first = to_.count();
  ordered_json wanted;
  if (member.name == schemamember) {
    iswrong(member, member.value.is == jsonvalue::kind::text, "a text");
    return;
  }
  if (member.name == dotmember)
    wanted = readdotoptions(options_, member.value, to_);
  else if (member.name == indicatormember && !names_.indicatorword().empty())
    wanted = readindicators(names_.indicatorword(), member.value, to_);
  else if (isownlist(member.name))
    wanted = readlist(member.name, member);
  else if (const std::int32_t number = names_.find(member.name); number > 0)
    return readoption(options_.describe(number), member);
  else
    return unknownmember(member);
  made_.push_back({member.name, member.where, first, to_.count(), std::move(wanted)});
}

void settingstext::readoption(const optxv::option& option, const jsonmember& member) {
  if (option.name != member.name) return unknownmember(member);
  if (formof(option) == memberform::none) return unusable(option, member);
  const std::size_t first = to_.count();
  ordered_json wanted = readvalue(option, member);
  made_.push_back({member.name, member.where, first, to_.count(), std::move(wanted)});
}

ordered_json settingstext::readvalue(const optxv::option& option, const jsonmember& member) {
  switch (formof(option)) {
    case memberform::flag:
      return readflag(option, member);
    case memberform::pair:
      return readpair(option, member);
    case memberform::list:
      return readlist(keyof(option), member);
    default:
      return readone(option, member);
  }
}

/// A name that differs from that of an option in its case alone, and a synonym, stand for one name
/// that is sure; others are guessed.
void settingstext::unknownmember(const jsonmember& member) const {
  finding found =
      to_.fault(ownfinding::nomember, member.where, "no option is called " + inquotes(member.name));
  if (const std::int32_t number = names_.find(member.name); number > 0)
    found.hints.push_back(
        {.write = std::string(options_.describe(number).name),
         .words = "as the definition does; other names of an option are no members"});
  else
    found.nearest = names_.nearest(member.name);
  to_.tell(found);
}

void settingstext::unusable(const optxv::option& option, const jsonmember& member) const {
  to_.tell(to_.fault(ownfinding::nomember, member.where,
                     inquotes(member.name) + ' ' + whynomember(option)));
}

// --- Values

/// Whether a value of another kind than an option takes is there, which is told.
bool settingstext::iswrong(const jsonmember& member, bool good, const std::string& taken) const {
  if (!good)
    to_.tell(
        to_.fault(ownfinding::wrongvalue, member.value.where,
                  inquotes(member.name) + " takes " + taken + ", not " + wordsof(member.value)));
  return !good;
}

/// Whether a value can be written; if not, that is told.
bool settingstext::isgood(const jsonmember& member, const valuetext& value, textspan where) const {
  const bool kept = !value.blankends || tokens_ || !wholelines_.empty();
  if (!value.fault && kept) return true;
  valuefault fault = {"has a text with a blank at one of its ends", "", true};
  if (value.fault) fault = *value.fault;
  finding found = to_.fault(fault.nowriting ? ownfinding::notexpressible : ownfinding::wrongvalue,
                            where, inquotes(member.name) + ' ' + fault.text);
  if (!fault.write.empty()) found.hints.push_back({.write = fault.write});
  if (!kept) found.hints.push_back({.words = "token mode keeps it: --tokens writes for that"});
  to_.tell(found);
  return false;
}

/// Adds an entry, between others that let in a value out of bounds, or the blanks of a text.
void settingstext::addentry(const std::string& entry, textspan where, bool outside,
                            bool blankends) {
  const bool opened = outside && !nobounds_.empty(), switched = blankends && !tokens_;
  if (opened) to_.addline(nobounds_ + " 1", where);
  if (switched) to_.addline(wholelines_ + " 0", where);
  to_.addline(entry, where);
  if (switched) to_.addline(wholelines_ + " 1", where);
  if (opened) to_.addline(nobounds_ + " 0", where);
}

ordered_json settingstext::readflag(const optxv::option& option, const jsonmember& member) {
  const jsonvalue& value = member.value;
  if (iswrong(member, value.is == jsonvalue::kind::boolean, takenby(options_, option)))
    return nullptr;
  if (value.yes) to_.addline(keyof(option), value.where);
  return value.yes ? ordered_json(true) : ordered_json();
}

ordered_json settingstext::readone(const optxv::option& option, const jsonmember& member) {
  const jsonvalue& value = member.value;
  if (value.is == jsonvalue::kind::null && formof(option) == memberform::optional) {
    to_.addline(keyof(option), value.where);
    return nullptr;
  }
  valuetext written = valuetextof(options_, option, value, names_.commentcharacters());
  if (!isgood(member, written, value.where)) return nullptr;
  addentry(keyof(option) + '=' + written.text, value.where, written.outside, written.blankends);
  return std::move(written.wanted);
}

ordered_json settingstext::readpair(const optxv::option& option, const jsonmember& member) {
  const std::vector<jsonvalue>& items = member.value.items;
  constexpr auto isnull = [](const jsonvalue& each) { return each.is == jsonvalue::kind::null; };
  const bool two = items.size() == 2 && !std::ranges::all_of(items, isnull);
  if (iswrong(member, two, takenby(options_, option))) return nullptr;
  std::string entry = keyof(option) + '=';
  ordered_json wanted = ordered_json::array();
  bool outside = false, blankends = false, good = true;
  for (const jsonvalue& each : items) {
    valuetext written = {.text = "*", .wanted = nullptr};
    if (!isnull(each)) written = valuetextof(options_, option, each, names_.commentcharacters());
    if (wanted.empty()) written.blankends = false;  // the first value is a word in both modes
    blankends = written.blankends;
    good = isgood(member, written, each.where) && good;
    outside = outside || written.outside;
    entry += (wanted.empty() ? "" : " ") + written.text;
    wanted.push_back(std::move(written.wanted));
  }
  if (!good) return nullptr;
  addentry(entry, member.value.where, outside, blankends);
  return wanted;
}

/// A line for each item. In end-of-line mode quotes would be part of an item of a list that
/// parameter text makes itself.
ordered_json settingstext::readlist(const std::string& key, const jsonmember& member) {
  if (iswrong(member, member.value.is == jsonvalue::kind::list, "a list of texts")) return nullptr;
  const bool own = isownlist(key);
  ordered_json wanted = ordered_json::array();
  for (const jsonvalue& each : member.value.items) {
    const valuetext item = itemof(each);
    if (!isgood(member, item, each.where)) continue;
    const bool bare = own && !tokens_ && !item.blankends;
    addentry(key + '=' + (bare ? each.text : item.text), each.where, false, item.blankends);
    wanted.push_back(each.text);
  }
  return wanted;
}

valuetext settingstext::itemof(const jsonvalue& item) const {
  if (item.is == jsonvalue::kind::text) return valuetextof(item.text, names_.commentcharacters());
  return {.fault = valuefault{"is a list of texts, not of " + std::string(wordof(item.is)), ""}};
}

// --- What came of it

void settingstext::compare() const {
  const ordered_json read =
      settingsjson(options_, false, [](std::int32_t, std::int32_t, const std::string&) {});
  std::unordered_map<std::string_view, const ordered_json*> all;
  for (const auto& [name, value] : read.items()) all.emplace(name, &value);
  for (const madename& each : made_) {
    if (each.wanted.is_null() || !to_.good(each.first, each.last)) continue;
    if (each.wanted.is_array() && each.wanted.empty()) continue;
    const auto found = all.find(each.name);
    if (found != all.end() && *found->second == each.wanted) continue;
    to_.tell(to_.fault(ownfinding::notexpressible, each.where,
                       inquotes(each.name) + " does not come back from parameter text as it is" +
                           (found == all.end() ? "" : ", but as " + shown(*found->second))));
  }
}

}  // namespace command
