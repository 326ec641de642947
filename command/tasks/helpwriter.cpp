#include "tasks/helpwriter.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>
#include <tuple>

#include "output/paragraph.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

using optxv::optionfacts, optxv::synonymfacts, optxv::valuefacts;

constexpr std::size_t blockindent = 4, itemindent = 6;
constexpr std::size_t widestname = 24;  // longer names of a listing have a line of their own

/// What a word of the definition language means to the user.
struct meaning {
  std::string_view word, text;
};
constexpr std::array<meaning, 3> modifiers = {
    {{"NV", "It takes no value: its name alone sets it."},
     {"OPT", "The value may be left out; that sets the default."},
     {"TWO", "It takes two values. One alone sets both, and a * keeps the one in its place."}}};
constexpr std::array<meaning, 3> kinds = {
    {{"strlist", "It is a list of texts: each use adds one."},
     {"macro", "It hands its value to each of these:"},
     {"multilist", "It takes a value for each of these, in this order:"}}};

template <std::size_t count>
std::string_view meaningof(const std::array<meaning, count>& meanings, std::string_view word) {
  const auto row = std::ranges::find(meanings, word, &meaning::word);
  return row == meanings.end() ? std::string_view() : row->text;
}

/// Names that end in a number go by that number: x9 before x10.
using sortkey = std::tuple<std::string, std::size_t, std::string>;
sortkey sortkeyof(const std::string& name) {
  const std::string key = folded(name);
  std::size_t digits = key.find_last_not_of("0123456789") + 1;
  const std::string text = key.substr(0, digits);
  digits = std::min(key.find_first_not_of('0', digits), key.size());
  return {text, key.size() - digits, key.substr(digits)};
}

std::string marktext(const std::string& mark, const std::string& text) {
  return text.empty() ? mark : mark + ": " + printableline(text);
}

std::string marksof(bool deprecated, bool obsolete) {
  if (obsolete) return " (obsolete)";
  return deprecated ? " (deprecated)" : "";
}

// --- Search

/// A name without what people leave out or mistake in it.
std::string bare(std::string_view name) {
  std::string result = folded(name);
  std::erase_if(result, [](char c) { return c == '_' || c == '-' || c == ' '; });
  return result;
}

/// What a search looks through; the pieces do not run into one another.
struct searchtext {
  std::string names, all;

  void addname(std::string_view name) {
    names += bare(name) + '\n';
    addtext(name);
  }
  void addtext(std::string_view text) { all += folded(text) + '\n'; }
};

searchtext searchtextof(const optionfacts& option) {
  searchtext result;
  result.addname(option.tablename);
  for (const synonymfacts& each : option.synonyms) result.addname(each.name);
  result.addtext(option.help);
  for (const std::string& each : option.longhelp) result.addtext(each);
  for (const valuefacts& each : option.values) {
    result.addtext(each.value);
    result.addtext(each.help);
  }
  return result;
}

/// How well an option answers: 0 for all words in its names, 1 for all words anywhere, else 2.
int rankof(const optionfacts& option, const std::vector<std::string>& words) {
  const searchtext text = searchtextof(option);
  const auto innames = [&](const std::string& word) {
    const std::string key = bare(word);
    return !key.empty() && text.names.find(key) != std::string::npos;
  };
  const auto anywhere = [&](const std::string& word) {
    return innames(word) || text.all.find(folded(word)) != std::string::npos;
  };
  if (std::ranges::all_of(words, innames)) return 0;
  return std::ranges::all_of(words, anywhere) ? 1 : 2;
}

}  // namespace

helpwriter::helpwriter(const optxv::tablefacts& table, std::size_t width)
    : table_(table), width_(width) {
  for (const optionfacts& each : table.options) named_.emplace(each.tablename, &each);
}

// --- Listings

std::vector<helpwriter::entry> helpwriter::entries() const {
  std::vector<entry> all;
  for (const optionfacts& option : table_.options) {
    if (!option.listed()) continue;
    all.push_back({option.name, &option, nullptr});
    for (const synonymfacts& each : option.synonyms) all.push_back({each.name, &option, &each});
  }
  std::ranges::stable_sort(all, {}, [](const entry& each) { return sortkeyof(each.name); });
  return all;
}

std::string helpwriter::listing(const std::vector<const entry*>& entries,
                                std::size_t indent) const {
  std::string text;
  for (const entry* each : entries) {
    const optionfacts& option = *each->option;
    const std::string help =
        each->synonym == nullptr
            ? printableline(option.help) + marksof(option.deprecated, option.obsolete)
            : "synonym for " + printable(option.name) +
                  marksof(each->synonym->deprecated, each->synonym->obsolete);
    text += paragraph("  " + printable(each->name), help, indent, width_);
  }
  return text;
}

std::string helpwriter::bygroup() const {
  const std::vector<entry> all = entries();
  std::map<std::int32_t, std::vector<const entry*>> groups;
  std::size_t indent = 0;
  for (const entry& each : all) {
    groups[each.option->group].push_back(&each);
    indent = std::max(indent, columns(printable(each.name)));
  }
  indent = std::min(indent, widestname) + 4;
  std::string text;
  const auto add = [&](std::string_view title, const std::vector<const entry*>& entries) {
    text += (text.empty() ? "" : "\n") + paragraph("", title, 0, width_) + listing(entries, indent);
  };
  for (const optxv::groupfacts& group : table_.groups) {
    const auto found = groups.extract(group.number);
    if (!found.empty() && group.helpcontext > 0)
      add(printableline(group.title.empty() ? group.name : group.title), found.mapped());
  }
  if (text.empty()) return text;
  std::vector<const entry*> rest;
  for (const auto& [number, entries] : groups)
    rest.insert(rest.end(), entries.begin(), entries.end());
  if (!rest.empty()) add("Options without a group", rest);
  return text;
}

std::string helpwriter::byname() const {
  std::string text;
  for (const entry& each : entries())
    if (each.synonym == nullptr)
      text += block(static_cast<std::int32_t>(each.option - table_.options.data()) + 1);
  return text;
}

std::string helpwriter::debuglist() const {
  std::string text = "\n";
  for (const entry& each : entries())
    text += printable(each.synonym == nullptr ? each.option->tablename : each.name) +
            (each.synonym == nullptr ? " \n" : " *****Nil = Syn\n");
  return text;
}

std::vector<std::int32_t> helpwriter::search(const std::vector<std::string>& words) const {
  std::array<std::vector<std::int32_t>, 3> ranks;
  for (const entry& each : entries())
    if (each.synonym == nullptr)
      ranks[static_cast<std::size_t>(rankof(*each.option, words))].push_back(
          static_cast<std::int32_t>(each.option - table_.options.data()) + 1);
  ranks[0].insert(ranks[0].end(), ranks[1].begin(), ranks[1].end());
  return ranks[0];
}

// --- The block of an option

std::string helpwriter::line(const std::string& text) const {
  return paragraph("", text, blockindent, width_);
}

std::string helpwriter::kindlines(const optionfacts& option) const {
  std::string text = option.kind;
  if (!option.low.empty()) text += ", range " + option.low + " to " + option.high;
  if (option.hasdefault) text += ", default " + printable(option.defaultvalue);
  if (!option.action.empty()) text += ", acts at once: " + option.action;
  text = line(text);
  for (const std::string_view each :
       {meaningof(modifiers, option.modifier), meaningof(kinds, option.kind)})
    if (!each.empty()) text += line(std::string(each));
  if (option.tablename.starts_with('.'))
    text += line("It belongs to a symbol of the model, as in x" + printable(option.tablename) +
                 "('label') = value.");
  return text;
}

std::string helpwriter::valuelines(const optionfacts& option) const {
  std::size_t indent = 0;
  for (const valuefacts& each : option.values)
    indent = std::max(indent, columns(printable(each.value)));
  indent = std::min(indent, widestname) + itemindent + 2;
  std::string text;
  for (const valuefacts& each : option.values)
    text += paragraph(std::string(itemindent, ' ') + printable(each.value),
                      printableline(each.help), indent, width_);
  return text;
}

std::string helpwriter::memberlines(const optionfacts& option) const {
  std::vector<valuefacts> rows;
  for (const std::string& each : option.members) {
    const auto found = named_.find(each);
    if (found != named_.end()) rows.push_back({found->second->name, 0, found->second->help});
  }
  optionfacts members;
  members.values = std::move(rows);
  return valuelines(members);
}

std::string helpwriter::namelines(const optionfacts& option) const {
  std::string names, text;
  for (const synonymfacts& each : option.synonyms)
    names += (names.empty() ? "" : ", ") + printable(each.name) +
             marksof(each.deprecated, each.obsolete);
  if (!names.empty()) text += line("Synonyms: " + names);
  if (option.deprecated) text += line(marktext("Deprecated", option.deprecatedtext));
  if (option.obsolete) text += line(marktext("Obsolete", option.deprecatedtext));
  return text;
}

std::string helpwriter::block(std::int32_t optnr) const {
  const optionfacts& option = table_.options[static_cast<std::size_t>(optnr) - 1];
  std::string text =
      paragraph("", printable(option.name) + ": " + printableline(option.help), 0, width_) +
      kindlines(option) + valuelines(option) + memberlines(option);
  for (const std::string& each : option.longhelp) text += line(printableline(each));
  return text + namelines(option);
}

}  // namespace command
