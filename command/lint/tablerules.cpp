#include "lint/tablerules.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <optional>
#include <unordered_map>

#include "analysis/hints.h"
#include "lint/reach.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

using std::string;
using std::string_view;

bool blank(const optxv_text& text) {
  return viewof(text).find_first_not_of(" \t") == string_view::npos;
}

string quotedname(const optxv_option& option) {
  return inquotes(viewof(option.name));
}

optxv_item itemof(const declaredtable& table, const declaredoption& option, std::size_t index) {
  optxv_item item{};
  optxv_item_info(table.handle(), option.number, static_cast<std::int32_t>(index) + 1, &item);
  return item;
}

bool isenumeration(const optxv_option& option) {
  return option.kind == optxv_kind_enumerated_text || option.kind == optxv_kind_enumerated_integer;
}

}  // namespace

// --- Texts

void optionswithouttext(const declaredtable& table, const telling& tell) {
  for (const declaredoption* each : table.listed())
    if (const optxv_option option = table.info(*each); blank(option.help))
      tell(said(each->where, "the option " + quotedname(option) + " has no help text"));
}

void itemswithouttext(const declaredtable& table, const telling& tell) {
  for (const declaredoption* each : table.listed()) {
    const optxv_option option = table.info(*each);
    if (!isenumeration(option)) continue;
    std::vector<std::size_t> bare;
    for (std::size_t i = 0; i < each->items.size(); i++)
      if (blank(itemof(table, *each, i).help)) bare.push_back(i);
    if (bare.empty()) continue;
    finding found =
        said(each->where, quotedname(option) + " has " + std::to_string(bare.size()) + " of " +
                              counted(each->items.size(), "item") + " without a text");
    found.notes.push_back({"the first is here", each->items[bare.front()]});
    tell(std::move(found));
  }
}

void unusedgroups(const declaredtable& table, const telling& tell) {
  if (!table.whole()) return;
  std::set<std::int32_t> used;
  for (const declaredoption* each : table.sound()) used.insert(table.info(*each).group);
  for (std::int32_t i = 1; i <= optxv_group_count(table.handle()); i++) {
    optxv_group group{};
    optxv_group_info(table.handle(), i, &group);
    if (used.contains(group.number)) continue;
    tell(said(table.group(i), "no option is in the group " + std::to_string(group.number) + ", " +
                                  inquotes(viewof(group.name))));
  }
}

void groupswithouttext(const declaredtable& table, const telling& tell) {
  for (std::int32_t i = 1; i <= optxv_group_count(table.handle()); i++) {
    optxv_group group{};
    optxv_group_info(table.handle(), i, &group);
    if (table.whole() && blank(group.help))
      tell(said(table.group(i), "the group " + inquotes(viewof(group.name)) + " has no heading"));
  }
}

// --- Names

namespace {

/// What is reached by the names of the options. Names of attributes have a dot, and a road of their
/// own.
template <class Each>
void eachreached(const declaredtable& table, Each each) {
  if (table.wholenames()) return;
  reach library(table);
  for (const declaredoption* option : table.sound()) {
    const optxv_option info = table.info(*option);
    if (viewof(info.name).starts_with('.')) continue;
    const std::int32_t reached = library.option(viewof(info.name));
    if (reached != option->number) each(*option, info, reached);
  }
}

}  // namespace

void namesbehindothers(const declaredtable& table, const telling& tell) {
  eachreached(table, [&](const declaredoption& option, const optxv_option& info,
                         std::int32_t reached) {
    if (reached == 0) return;
    const declaredoption& other = table.option(reached);
    finding found = said(option.where, "the name " + quotedname(info) + " is read as " +
                                           inquotes(table.reader().names().option(reached).name) +
                                           ", since the words of that come first");
    if (other.where.line > 0) found.notes.push_back({"that is declared here", other.where});
    tell(std::move(found));
  });
}

void namesoutofreach(const declaredtable& table, const telling& tell) {
  eachreached(table,
              [&](const declaredoption& option, const optxv_option& info, std::int32_t reached) {
                if (reached != 0) return;
                finding found = said(option.where, "nobody can reach the name " + quotedname(info));
                found.notes.push_back(
                    {"the lookup takes no word of fewer than three characters, "
                     "and no name of more than four words",
                     {}});
                tell(std::move(found));
              });
}

void hiddensynonyms(const declaredtable& table, const telling& tell) {
  const std::int32_t count = optxv_synonym_count(table.handle());
  std::optional<reach> library;
  for (std::int32_t i = 1; i <= count; i++) {
    optxv_synonym synonym{};
    optxv_synonym_info(table.handle(), i, &synonym);
    const place where = table.synonym(i);
    if (synonym.option == 0 || where.line == 0) continue;
    if (!library) library.emplace(table);
    const std::int32_t reached = library->option(viewof(synonym.name));
    if (library->bysynonym() || reached == 0) continue;
    finding found = said(
        where, "the synonym " + inquotes(viewof(synonym.name)) + " is never used: it reads as " +
                   inquotes(table.reader().names().option(reached).name) + " all the same");
    if (const place other = table.option(reached).where; other.line > 0)
      found.notes.push_back({"the option is declared here", other});
    tell(std::move(found));
  }
}

namespace {

/// A style of names, and whether a name may be one of it: a name of one word may be of several.
struct namestyle {
  string_view word;
  bool (*fits)(string_view name);
};

bool hasany(string_view name, bool (*is)(char)) {
  return std::ranges::any_of(name, is);
}
bool isupper(char c) {
  return c >= 'A' && c <= 'Z';
}
bool islower(char c) {
  return c >= 'a' && c <= 'z';
}
bool isjoined(string_view name) {
  return name.find('_') == string_view::npos;
}

constexpr std::array<namestyle, 4> styles = {
    {{"snake_case", [](string_view name) { return !hasany(name, isupper); }},
     {"camelCase", [](string_view name) { return islower(name[0]) && isjoined(name); }},
     {"PascalCase",
      [](string_view name) { return isupper(name[0]) && isjoined(name) && hasany(name, islower); }},
     {"UPPER_CASE", [](string_view name) { return !hasany(name, islower); }}}};

/// So many names per one of another style make a style, and so few names make none.
constexpr std::size_t stylemajority = 4, stylenames = 5;

}  // namespace

void namesofotherstyle(const declaredtable& table, const telling& tell) {
  std::vector<std::pair<const declaredoption*, string_view>> names;
  for (const declaredoption* each : table.sound())
    if (const string_view name = viewof(table.info(*each).name); !name.starts_with('.'))
      names.emplace_back(each, name);
  if (names.size() < stylenames) return;
  const auto count = [&](const namestyle& style) {
    return std::ranges::count_if(names, [&](const auto& each) { return style.fits(each.second); });
  };
  const namestyle& usual = *std::ranges::max_element(styles, {}, count);
  const auto fitting = static_cast<std::size_t>(count(usual));
  if (fitting < (names.size() - fitting) * stylemajority) return;
  for (const auto& [option, name] : names)
    if (!usual.fits(name))
      tell(said(option->where, "the name " + inquotes(name) + " is not in " + string(usual.word) +
                                   ", as " + std::to_string(fitting) + " of " +
                                   std::to_string(names.size()) + " names are"));
}

void namesalike(const declaredtable& table, const telling& tell) {
  std::unordered_map<string, const declaredoption*> known;
  for (const declaredoption* each : table.sound()) {
    string bare = folded(viewof(table.info(*each).name));
    std::erase(bare, '_');
    const auto [first, isnew] = known.try_emplace(std::move(bare), each);
    if (isnew) continue;
    finding found =
        said(each->where, "only underscores tell the name " + quotedname(table.info(*each)) +
                              " from " + quotedname(table.info(*first->second)));
    found.notes.push_back({"that is declared here", first->second->where});
    tell(std::move(found));
  }
}

// --- Values

void choicesofone(const declaredtable& table, const telling& tell) {
  for (const declaredoption* each : table.sound()) {
    const optxv_option option = table.info(*each);
    const bool bounds = option.kind == optxv_kind_integer
                            ? option.low_integer == option.high_integer
                        : option.kind == optxv_kind_real ? option.low_real == option.high_real
                                                         : false;
    if (bounds)
      tell(said(each->low, "the bounds of " + quotedname(option) + " leave one value"));
    else if (isenumeration(option) && each->items.size() == 1)
      tell(said(each->items[0], "this is the only item of " + quotedname(option)));
  }
}

void defaultsthatnobodycanwrite(const declaredtable& table, const telling& tell) {
  for (const declaredoption* each : table.sound()) {
    const optxv_option option = table.info(*each);
    const string_view text = viewof(option.default_text);
    if (option.kind != optxv_kind_text || text.empty()) continue;
    const bool atends =
        text.find_first_of(" \t") == 0 || text.find_last_of(" \t") + 1 == text.size();
    if (!atends && text.find('"') == string_view::npos) continue;
    tell(said(each->standard, "parameter text cannot give " + quotedname(option) +
                                  " its default, which has " +
                                  (atends ? "blanks at an end" : "a double quote in it")));
  }
}

namespace {

/// Whether a number stands in the help of an option.
bool inhelp(const declaredtable& table, const declaredoption& option, const string& number) {
  const optxv_option info = table.info(option);
  if (viewof(info.help).find(number) != string_view::npos) return true;
  for (std::int32_t i = 1; i <= info.helplines; i++) {
    optxv_text line{};
    optxv_help_line(table.handle(), option.number, i, &line);
    if (viewof(line).find(number) != string_view::npos) return true;
  }
  return false;
}

/// Whether the default is the negative edge of a range that is otherwise for positive numbers, and
/// not a limit of the type.
bool atnegativeedge(const optxv_option& option) {
  constexpr double nolimit = -1e20;
  if (option.kind == optxv_kind_integer)
    return option.default_integer == option.low_integer && option.low_integer < 0 &&
           option.low_integer > std::numeric_limits<std::int32_t>::min() &&
           option.high_integer > -option.low_integer;
  return option.kind == optxv_kind_real && option.default_real == option.low_real &&
         option.low_real < 0 && option.low_real > nolimit && option.high_real > -option.low_real;
}

}  // namespace

void unexplaineddefaults(const declaredtable& table, const telling& tell) {
  for (const declaredoption* each : table.listed()) {
    const optxv_option option = table.info(*each);
    if (!atnegativeedge(option)) continue;
    const string& number = table.reader().names().option(each->number).standard;
    if (inhelp(table, *each, number)) continue;
    tell(said(each->standard, "the default " + number + " of " + quotedname(option) +
                                  " stands for something that the help does not tell"));
  }
}

namespace {

/// Whether a text has marks round it or after it that other languages need.
bool hasforeignmarks(string_view text) {
  return withoutforeignquotes(text) || text.ends_with(',') || text.ends_with(';');
}

}  // namespace

void foreignmarks(const declaredtable& table, const telling& tell) {
  const auto check = [&](const place& where, const optxv_text& text, const optxv_option& option) {
    if (hasforeignmarks(viewof(text)))
      tell(said(where, inquotes(viewof(text)) + " of " + quotedname(option) +
                           " keeps its marks: only double quotes enclose a text"));
  };
  for (const declaredoption* each : table.sound()) {
    const optxv_option option = table.info(*each);
    if (option.kind == optxv_kind_text) check(each->standard, option.default_text, option);
    if (option.kind != optxv_kind_enumerated_text) continue;
    for (std::size_t i = 0; i < each->items.size(); i++)
      check(each->items[i], itemof(table, *each, i).text, option);
  }
}

// --- Marks

namespace {

/// What a definition says of a marked name.
struct marktext {
  string_view name, text;
};

marktext textof(const declaredtable& table, const declaredmark& mark) {
  if (mark.synonym > 0) {
    optxv_synonym synonym{};
    optxv_synonym_info(table.handle(), mark.synonym, &synonym);
    return {viewof(synonym.name), viewof(synonym.markedtext)};
  }
  const optxv_option option = table.info(table.option(mark.option));
  return {viewof(option.name), viewof(option.markedtext)};
}

/// The options that a text names, but not that one.
std::vector<std::int32_t> namedin(const declaredtable& table, string_view text, std::int32_t but) {
  std::vector<std::int32_t> all;
  const auto letter = [](char c) { return isnamecharacter(c); };
  for (auto from = std::ranges::find_if(text, letter); from != text.end();) {
    const auto end = std::find_if_not(from, text.end(), letter);
    const std::int32_t option = table.reader().names().find(string_view(from, end));
    if (option > 0 && option != but) all.push_back(option);
    from = std::find_if(end, text.end(), letter);
  }
  return all;
}

}  // namespace

void markswithouttext(const declaredtable& table, const telling& tell) {
  for (const declaredmark& mark : table.marks())
    if (const marktext told = textof(table, mark); mark.option > 0 && told.text.empty())
      tell(said(mark.where, "who uses " + inquotes(told.name) + " is not told what to do instead"));
}

/// A synonym stands for its option, which takes its place. Where names are written with blanks they
/// cannot be found in a sentence.
void markswithoutreplacement(const declaredtable& table, const telling& tell) {
  if (table.blanksinnames() || !table.whole()) return;
  for (const declaredmark& mark : table.marks()) {
    const marktext told = textof(table, mark);
    if (mark.option == 0 || mark.synonym > 0 || told.text.empty()) continue;
    if (namedin(table, told.text, mark.option).empty())
      tell(said(mark.where, "no option is named that takes the place of " + inquotes(told.name)));
  }
}

void markedreplacements(const declaredtable& table, const telling& tell) {
  for (const declaredmark& mark : table.marks()) {
    const marktext told = textof(table, mark);
    const std::vector<std::int32_t> named = namedin(table, told.text, mark.option);
    const auto marked = [&](std::int32_t option) {
      return table.info(table.option(option)).marks != 0;
    };
    if (mark.option == 0 || named.empty() || !std::ranges::all_of(named, marked)) continue;
    tell(said(mark.where, "what takes the place of " + inquotes(told.name) +
                              " is no longer to be used itself: " +
                              inquotes(table.reader().names().option(named.front()).name)));
  }
}

}  // namespace command
