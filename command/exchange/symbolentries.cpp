#include "exchange/symbolentries.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>

#include "exchange/valuetext.h"
#include "text/entrytext.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

/// A member of an entry: its name and what it is.
struct entrymember {
  enum class part { symbol, attribute, labels, quotedlabels, value };
  std::string_view name;
  part is;
};

using part = entrymember::part;
constexpr std::array<entrymember, 4> dotmembers = {{{"symbol", part::symbol},
                                                    {"attribute", part::attribute},
                                                    {"labels", part::labels},
                                                    {"value", part::value}}};
constexpr std::array<entrymember, 5> indicatormembers = {{{"equation", part::symbol},
                                                          {"equationlabels", part::quotedlabels},
                                                          {"variable", part::symbol},
                                                          {"variablelabels", part::quotedlabels},
                                                          {"value", part::value}}};

bool isidentifier(std::string_view text) {
  return !text.empty() && text.size() <= longestidentifier && isletter(text.front()) &&
         std::ranges::all_of(text, isnamecharacter);
}

/// Whether a label is in quotes, which it has not itself.
bool isquoted(std::string_view label) {
  return label.size() >= 2 && (label.front() == '\'' || label.front() == '"') &&
         label.find(label.front(), 1) == label.size() - 1;
}

/// Whether a label can be written: with quotes of its own, or in some that it has not.
bool islabel(std::string_view label, bool quoted) {
  constexpr std::string_view linebreaks = "\n\x1A";
  if (label.find_first_of(linebreaks) != label.npos) return false;
  if (quoted) return isquoted(label) || isidentifier(label);
  return label.find('\'') == label.npos || label.find('"') == label.npos;
}

/// One list of entries of the same members.
class entrylist {
 public:
  entrylist(std::string_view name, std::span<const entrymember> members, madetext& to)
      : name_(name), members_(members), to_(to) {}

  /// The entries of the list that have all they need, and nothing else.
  std::vector<const jsonvalue*> good(const jsonvalue& list) const;
  void tell(ownfinding what, textspan where, const std::string& text) const {
    to_.tell(to_.fault(what, where, inquotes(name_) + ": " + text));
  }

 private:
  bool isgood(const jsonvalue& entry) const;
  bool isgood(const jsonmember& member) const;
  bool isgood(part is, const jsonvalue& value) const;
  bool labelsgood(const jsonvalue& value, bool quoted) const;
  bool wrong(textspan where, const std::string& text) const {
    tell(ownfinding::wrongvalue, where, text);
    return false;
  }

  std::string_view name_;
  std::span<const entrymember> members_;
  madetext& to_;
};

std::vector<const jsonvalue*> entrylist::good(const jsonvalue& list) const {
  std::vector<const jsonvalue*> result;
  if (list.is != jsonvalue::kind::list)
    wrong(list.where, "a list of objects is expected, not " + std::string(wordof(list.is)));
  for (const jsonvalue& each : list.items)
    if (isgood(each)) result.push_back(&each);
  return result;
}

bool entrylist::isgood(const jsonvalue& entry) const {
  if (entry.is != jsonvalue::kind::object)
    return wrong(entry.where, "an object is expected, not " + std::string(wordof(entry.is)));
  bool good = true;
  for (const entrymember& each : members_) {
    const bool needed = each.is != part::labels && each.is != part::quotedlabels;
    if (needed && entry.find(each.name) == nullptr)
      good = wrong(entry.where, "there is no " + inquotes(each.name) + " here");
  }
  for (const jsonmember& each : entry.members) good = isgood(each) && good;
  return good;
}

bool entrylist::isgood(const jsonmember& member) const {
  const auto* const known = std::ranges::find(members_, member.name, &entrymember::name).base();
  if (known != members_.data() + members_.size()) return isgood(known->is, member.value);
  std::string names;
  for (const entrymember& each : members_)
    names += (names.empty() ? "" : ", ") + std::string(each.name);
  finding found = to_.fault(ownfinding::nomember, member.where,
                            inquotes(name_) + ": no member is called " + inquotes(member.name));
  found.notes.push_back({"there are " + names, {}});
  to_.tell(found);
  return false;
}

bool entrylist::isgood(part is, const jsonvalue& value) const {
  if (is == part::value || is == part::attribute) return true;
  if (is != part::symbol) return labelsgood(value, is == part::quotedlabels);
  if (value.is == jsonvalue::kind::text && isidentifier(value.text)) return true;
  return wrong(value.where,
               "a name of at most " + std::to_string(longestidentifier) +
                   " letters, digits and underscores is expected, which begins with a letter");
}

bool entrylist::labelsgood(const jsonvalue& value, bool quoted) const {
  if (value.is != jsonvalue::kind::list)
    return wrong(value.where, "a list of labels is expected, not " + std::string(wordof(value.is)));
  for (const jsonvalue& each : value.items) {
    if (each.is != jsonvalue::kind::text)
      return wrong(each.where, "a label is a text, not " + std::string(wordof(each.is)));
    if (!islabel(each.text, quoted))
      return wrong(each.where,
                   quoted ? "a label is a name, or a text in single or double quotes of its own"
                          : "a label has no line feed, and no quotes of both kinds");
  }
  return true;
}

std::vector<std::string> textsof(const jsonvalue* list) {
  std::vector<std::string> texts;
  if (list != nullptr)
    for (const jsonvalue& each : list->items) texts.push_back(each.text);
  return texts;
}

// --- Dot options

/// The attribute of a name, as the definition writes it.
std::optional<optxv::option> attributeof(const optxv::options& options, const jsonvalue& name) {
  const std::optional<std::int32_t> number = options.find(name.text);
  if (!number) return std::nullopt;
  const optxv::option found = options.describe(*number);
  return isattribute(found) && found.name == name.text ? std::optional(found) : std::nullopt;
}

std::string attributesof(const optxv::options& options) {
  std::string names;
  for (const optxv::option& each : options.table())
    if (isattribute(each)) names += (names.empty() ? "" : ", ") + inquotes(each.name);
  return names.empty() ? "the definition has none" : "there are " + names;
}

/// Adds the line of an entry; gives the entry as it should come back, or null.
ordered_json adddotoption(const optxv::options& options, const jsonvalue& entry,
                          const entrylist& list, madetext& to) {
  const jsonvalue& name = *entry.find("attribute");
  const jsonvalue& value = *entry.find("value");
  const std::optional<optxv::option> attribute = attributeof(options, name);
  if (!attribute) {
    list.tell(ownfinding::wrongvalue, name.where,
              "an attribute is expected; " + attributesof(options));
    return nullptr;
  }
  const valuetext written = valuetextof(options, *attribute, value, "");
  if (written.fault) {
    list.tell(ownfinding::wrongvalue, value.where,
              inquotes(attribute->name) + ' ' + written.fault->text);
    return nullptr;
  }
  const std::string& symbol = entry.find("symbol")->text;
  ordered_json wanted = {{"symbol", symbol}, {"attribute", attribute->name}};
  const std::vector<std::string> labels = textsof(entry.find("labels"));
  std::vector<std::string> quoted;
  for (const std::string& each : labels) quoted.push_back(quotedlabel(each));
  if (!labels.empty()) wanted["labels"] = labels;
  wanted["value"] = written.wanted;
  to.addline(withlabels(symbol + std::string(attribute->name), quoted) + " = " + written.text,
             value.where);
  return wanted;
}

// --- Indicators

std::string sideof(const jsonvalue& entry, std::string_view name, std::string_view labels) {
  return withlabels(entry.find(name)->text, textsof(entry.find(labels)));
}

ordered_json addindicator(std::string_view word, const jsonvalue& entry, const entrylist& list,
                          madetext& to) {
  const jsonvalue& value = *entry.find("value");
  if (value.is != jsonvalue::kind::boolean) {
    list.tell(ownfinding::wrongvalue, value.where,
              "the value is true or false, not " + std::string(wordof(value.is)));
    return nullptr;
  }
  ordered_json wanted = ordered_json::object();
  for (const entrymember& each : indicatormembers) {
    const jsonvalue* const found = entry.find(each.name);
    if (each.is == part::symbol) wanted[each.name] = found->text;
    if (each.is == part::quotedlabels && found != nullptr && !found->items.empty())
      wanted[each.name] = textsof(found);
  }
  wanted["value"] = value.yes;
  to.addline(std::string(word) + ' ' + sideof(entry, "equation", "equationlabels") + '$' +
                 sideof(entry, "variable", "variablelabels") + " = " + (value.yes ? "1" : "0"),
             value.where);
  return wanted;
}

void addto(ordered_json& list, ordered_json entry) {
  if (!entry.is_null()) list.push_back(std::move(entry));
}

}  // namespace

ordered_json readdotoptions(const optxv::options& options, const jsonvalue& list, madetext& to) {
  const entrylist entries(dotmember, dotmembers, to);
  ordered_json wanted = ordered_json::array();
  for (const jsonvalue* each : entries.good(list))
    addto(wanted, adddotoption(options, *each, entries, to));
  return wanted;
}

ordered_json readindicators(std::string_view word, const jsonvalue& list, madetext& to) {
  const entrylist entries(indicatormember, indicatormembers, to);
  ordered_json wanted = ordered_json::array();
  for (const jsonvalue* each : entries.good(list))
    addto(wanted, addindicator(word, *each, entries, to));
  return wanted;
}

}  // namespace command
