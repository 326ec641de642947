#include "analysis/tablediff.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <tuple>
#include <unordered_map>

#include "text/names.h"
#include "text/printable.h"
#include "writers/facts.h"

namespace command {
namespace {

// In the order of tablechange.
constexpr std::array<changerule, 34> rules = {{
    {"option-gone", true, "is gone"},
    {"obsolete-gone", false, "is gone, and was obsolete"},
    {"option-new", false, "is new"},
    {"option-renamed", true, "is called NEW now"},
    {"option-renamed-kept", false, "is called NEW now, of which OLD is a synonym"},
    {"type-changed", true, "the type is NEW, was OLD"},
    {"takes-changed", true, "the modifier is NEW, was OLD"},
    {"takes-optional", false, "the value may be left out now"},
    {"bounds-tighter", true, "the range is NEW, was OLD"},
    {"bounds-wider", false, "the range is now NEW, was OLD"},
    {"default-changed", false, "the default is NEW, was OLD"},
    {"default-said", true, "the name alone sets NEW, and set OLD"},
    {"item-gone", true, "the item OLD is gone"},
    {"item-new", false, "the item NEW is new"},
    {"members-changed", true, "the members are NEW, were OLD"},
    {"action-changed", true, "the instruction is NEW, was OLD"},
    {"usermap-changed", true, "the usermap is NEW, was OLD"},
    {"synonym-gone", true, "is gone, a synonym for OLD"},
    {"synonym-new", false, "is new, a synonym for NEW"},
    {"synonym-changed", true, "stands for NEW, and stood for OLD"},
    {"deprecated", false, "is deprecated now"},
    {"obsolete", true, "is obsolete now"},
    {"mark-gone", false, "is no longer OLD"},
    {"hidden", false, "is no longer listed in the help"},
    {"listed", false, "is listed in the help now"},
    {"moved", false, "the group is NEW, was OLD"},
    {"help-changed", false, "the help text is another one"},
    {"group-gone", false, "is gone"},
    {"group-new", false, "is new"},
    {"group-changed", false, "the text is NEW, was OLD"},
    {"comment-changed", true, "the characters are NEW, were OLD"},
    {"lookup-changed", true, "the rule is NEW, was OLD"},
    {"indicator-changed", true, "the word is NEW, was OLD"},
    {"indicator-new", false, "the word NEW is new"},
}};
static_assert(rules[static_cast<std::size_t>(tablechange::indicatornew)].code == "indicator-new");

void replacefirst(std::string& text, std::string_view word, const std::string& by) {
  if (const std::size_t at = text.find(word); at != text.npos) text.replace(at, word.size(), by);
}

/// What there is to say where there is nothing.
std::string orelse(const std::string& text, std::string_view otherwise) {
  return text.empty() ? std::string(otherwise) : text;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& each : words) text += (text.empty() ? "" : " ") + each;
  return orelse(text, "none");
}

/// A name as it is compared: where the rule of lookup has blanks in names, the table has
/// underscores.
std::string keyof(std::string_view name) {
  std::string key = folded(name);
  std::ranges::replace(key, ' ', '_');
  return key;
}

/// A synonym, and the position of its option.
struct knownsynonym {
  optxv::synonymfacts facts;
  std::size_t option = 0;
};

/// One of the two tables: what it declares, and where.
class side {
 public:
  explicit side(const run& read)
      : read_(read),
        facts_(optxv::describe(*static_cast<const optxv::tzmaoptions*>(read.options().handle()))) {
    for (std::size_t i = 0; i < facts_.options.size(); i++) addoption(i);
    for (const declaredname& each : read.names().declarations()) adddeclaration(each);
  }

  const optxv::tablefacts& facts() const { return facts_; }
  const optxv::optionfacts& option(std::size_t position) const { return facts_.options[position]; }
  optxv::option numbers(std::size_t position) const {
    return read_.options().describe(nr(position));
  }
  const std::string& comments() const { return read_.names().commentcharacters(); }
  const std::string& lookup() const { return lookup_; }
  const std::vector<std::string>& synonyms() const { return synonymorder_; }

  /// The position of the option of that name; nothing if there is none.
  std::optional<std::size_t> find(const std::string& name) const {
    const auto found = positions_.find(keyof(name));
    return found == positions_.end() ? std::nullopt : std::optional(found->second);
  }
  /// Whether it is found by its name: of two of one name, the first.
  bool isfound(std::size_t position) const { return find(option(position).tablename) == position; }
  const knownsynonym* synonym(const std::string& name) const {
    const auto found = synonyms_.find(keyof(name));
    return found == synonyms_.end() ? nullptr : &found->second;
  }
  /// The position of the one option that has this number of the program's; none for 0.
  std::optional<std::size_t> withusermap(std::int32_t number) const {
    const auto found = usermaps_.find(number);
    if (number == 0 || found == usermaps_.end() || found->second.size() != 1) return std::nullopt;
    return found->second.front();
  }
  std::vector<optxv::item> items(std::size_t position) const {
    const auto all = read_.options().items(nr(position));
    return {all.begin(), all.end()};
  }

  place placeof(std::int32_t what, const std::string& name, std::size_t position = 0) const {
    const auto found =
        places_.find({what, what == optxv_declared_item ? nr(position) : 0, keyof(name)});
    return found == places_.end() ? place() : found->second;
  }

 private:
  static std::int32_t nr(std::size_t position) { return static_cast<std::int32_t>(position) + 1; }

  void addoption(std::size_t position) {
    const optxv::optionfacts& each = facts_.options[position];
    positions_.emplace(keyof(each.tablename), position);
    usermaps_[each.refnr].push_back(position);
    for (const optxv::synonymfacts& one : each.synonyms)
      if (synonyms_.emplace(keyof(one.name), knownsynonym{one, position}).second)
        synonymorder_.push_back(one.name);
  }
  void adddeclaration(const declaredname& each) {
    if (each.what == optxv_declared_lookup) lookup_ = each.name;
    const std::int32_t owner = each.what == optxv_declared_item ? each.option : 0;
    places_.emplace(std::tuple(each.what, owner, keyof(each.name)), each.where);
  }

  const run& read_;
  optxv::tablefacts facts_;
  std::unordered_map<std::string, std::size_t> positions_;
  std::unordered_map<std::string, knownsynonym> synonyms_;
  std::vector<std::string> synonymorder_;
  std::unordered_map<std::int32_t, std::vector<std::size_t>> usermaps_;
  std::map<std::tuple<std::int32_t, std::int32_t, std::string>, place> places_;
  std::string lookup_ = "Normal";
};

class comparison {
 public:
  comparison(const run& left, const run& right) : old_(left), new_(right) {}

  std::vector<change> all() {
    comparefile();
    pairoptions();
    for (std::size_t i = 0; i < pairs_.size(); i++)
      if (old_.isfound(i)) compareoption(i);
    comparesynonyms();
    addnew();
    comparegroups();
    std::stable_partition(found_.begin(), found_.end(), std::mem_fn(&change::breaking));
    return std::move(found_);
  }

 private:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  void add(tablechange what, const std::string& name, const place& where,
           const std::string& was = "", const std::string& is = "") {
    found_.push_back({what, name, was, is, where});
  }

  // --- The file as a whole

  void comparefile() {
    const auto compare = [this](tablechange what, std::int32_t declared, const std::string& name,
                                const std::string& was, const std::string& is) {
      if (folded(was) == folded(is)) return;
      const place there = new_.placeof(declared, is);
      add(what, name, there.line > 0 ? there : old_.placeof(declared, was), orelse(was, "none"),
          orelse(is, "none"));
    };
    compare(tablechange::lookupchanged, optxv_declared_lookup, "lookup", old_.lookup(),
            new_.lookup());
    compare(tablechange::commentchanged, optxv_declared_comment, "eolcomm", sorted(old_.comments()),
            sorted(new_.comments()));
    const std::string& word = old_.facts().indicatorkey;
    compare(word.empty() ? tablechange::indicatornew : tablechange::indicatorchanged,
            optxv_declared_indicator, "indicator", word, new_.facts().indicatorkey);
  }

  static std::string sorted(std::string characters) {
    std::ranges::sort(characters);
    return characters;
  }

  // --- Which option is which

  /// Finds for each old option the new one that it has become: by its name, by a synonym of that
  /// name, by the number that the program knows it by.
  void pairoptions() {
    taken_.assign(new_.facts().options.size(), false);
    pairs_.assign(old_.facts().options.size(), none);
    for (std::size_t i = 0; i < pairs_.size(); i++)
      if (const auto same = new_.find(old_.option(i).tablename)) pair(i, *same);
    for (std::size_t i = 0; i < pairs_.size(); i++)
      if (pairs_[i] == none) pairrenamed(i);
  }

  void pair(std::size_t old, std::size_t now) {
    pairs_[old] = now;
    taken_[now] = true;
  }

  void pairrenamed(std::size_t old) {
    const optxv::optionfacts& was = old_.option(old);
    if (const knownsynonym* kept = new_.synonym(was.name); kept != nullptr) {
      renamed_[old] = tablechange::optionrenamedkept;
      return pair(old, kept->option);
    }
    const auto now = new_.withusermap(was.refnr);
    if (!now || taken_[*now] || !old_.withusermap(was.refnr)) return;
    renamed_[old] = tablechange::optionrenamed;
    pair(old, *now);
  }

  static place placeof(const side& of, std::size_t position) {
    return of.placeof(optxv_declared_option, of.option(position).tablename);
  }

  // --- Options

  void compareoption(std::size_t position) {
    const optxv::optionfacts& was = old_.option(position);
    if (pairs_[position] == none)
      return add(was.obsolete ? tablechange::obsoletegone : tablechange::optiongone, was.name,
                 placeof(old_, position));
    const std::size_t now = pairs_[position];
    const optxv::optionfacts& is = new_.option(now);
    const place there = placeof(new_, now);
    if (const auto how = renamed_.find(position); how != renamed_.end())
      add(how->second, was.name, there, was.name, is.name);
    const auto differs = [&](tablechange what, const std::string& left, const std::string& right) {
      if (left != right) add(what, is.name, there, left, right);
      return left != right;
    };
    if (!differs(tablechange::typechanged, was.kind, is.kind)) comparevalues(position, now, there);
    differs(tablechange::usermapchanged, std::to_string(was.refnr), std::to_string(is.refnr));
    differs(tablechange::moved, std::to_string(was.group), std::to_string(is.group));
    comparemarks(is.name, {was.deprecated, was.obsolete}, {is.deprecated, is.obsolete}, there);
    comparehelp(position, now, there);
  }

  /// Of two options of one type.
  void comparevalues(std::size_t position, std::size_t now, const place& there) {
    const optxv::optionfacts &was = old_.option(position), &is = new_.option(now);
    comparemodifier(was, is, there);
    comparebounds(position, now, there);
    if (was.defaultvalue != is.defaultvalue)
      add(saysdefault(was) ? tablechange::defaultsaid : tablechange::defaultchanged, is.name, there,
          was.defaultvalue, is.defaultvalue);
    if (was.kind == "enumstr" || was.kind == "enumint") compareitems(position, now);
    const std::vector<std::string> members = membersnow(was);
    if (!std::ranges::equal(members, is.members, samename))
      add(tablechange::memberschanged, is.name, there, joined(was.members), joined(is.members));
    if (was.action != is.action)
      add(tablechange::actionchanged, is.name, there, was.action, is.action);
  }

  /// Whether a parameter file may name the option without a value, which then sets the default.
  static bool saysdefault(const optxv::optionfacts& option) {
    return option.modifier == "NV" || option.modifier == "OPT";
  }

  void comparemodifier(const optxv::optionfacts& was, const optxv::optionfacts& is,
                       const place& there) {
    if (was.modifier == is.modifier) return;
    const bool fewer = was.modifier.empty() && is.modifier == "OPT";
    add(fewer ? tablechange::takesoptional : tablechange::takeschanged, is.name, there,
        orelse(was.modifier, "none"), orelse(is.modifier, "none"));
  }

  void comparebounds(std::size_t position, std::size_t now, const place& there) {
    const optxv::option left = old_.numbers(position), right = new_.numbers(now);
    if (left.low == right.low && left.high == right.high) return;
    const bool tighter = right.low > left.low || right.high < left.high;
    const auto range = [](const optxv::optionfacts& of) { return of.low + " to " + of.high; };
    add(tighter ? tablechange::boundstighter : tablechange::boundswider, new_.option(now).name,
        there, range(old_.option(position)), range(new_.option(now)));
  }

  /// Items by their texts: of two of one text, the first.
  static std::map<std::string, const optxv::item*> firstof(const std::vector<optxv::item>& items) {
    std::map<std::string, const optxv::item*> all;
    for (const optxv::item& each : items) all.emplace(folded(each.text), &each);
    return all;
  }

  void compareitems(std::size_t position, std::size_t now) {
    const std::vector<optxv::item> was = old_.items(position), is = new_.items(now);
    const auto before = firstof(was), after = firstof(is);
    const std::string& name = new_.option(now).name;
    for (const optxv::item& each : was) {
      const std::string key = folded(each.text), text = externalform(each.text);
      const auto same = after.find(key);
      if (same == after.end())
        add(tablechange::itemgone, name, itemplace(old_, each, position), text);
      else if (before.at(key) == &each && same->second->help != each.help)
        add(tablechange::helpchanged, name + ' ' + text, itemplace(new_, each, now));
    }
    for (const optxv::item& each : is)
      if (!before.contains(folded(each.text)))
        add(tablechange::itemnew, name, itemplace(new_, each, now), "", externalform(each.text));
  }

  static place itemplace(const side& of, const optxv::item& item, std::size_t position) {
    return of.placeof(optxv_declared_item, std::string(item.text), position);
  }

  /// The members of an old option by the names that they have now.
  std::vector<std::string> membersnow(const optxv::optionfacts& was) const {
    std::vector<std::string> all;
    for (const std::string& each : was.members) {
      const auto old = old_.find(each);
      const bool known = old && pairs_[*old] != none;
      all.push_back(known ? new_.option(pairs_[*old]).tablename : each);
    }
    return all;
  }

  struct marks {
    bool deprecated = false, obsolete = false;
  };

  void comparemarks(const std::string& name, marks was, marks is, const place& there) {
    if (is.obsolete && !was.obsolete)
      add(tablechange::obsolete, name, markplace(name, there));
    else if (is.deprecated && !was.deprecated && !was.obsolete)
      add(tablechange::deprecated, name, markplace(name, there));
    else if (was.obsolete && !is.obsolete)
      add(tablechange::markgone, name, there, "obsolete");
    else if (was.deprecated && !is.deprecated && !is.obsolete)
      add(tablechange::markgone, name, there, "deprecated");
  }

  place markplace(const std::string& name, const place& otherwise) const {
    for (const std::int32_t what : {optxv_declared_obsolete, optxv_declared_deprecated})
      if (place found = new_.placeof(what, name); found.line > 0) return found;
    return otherwise;
  }

  static bool islisted(const optxv::optionfacts& option) {
    return option.helpcontext != 0 && option.group != 0;
  }

  void comparehelp(std::size_t position, std::size_t now, const place& there) {
    const optxv::optionfacts &was = old_.option(position), &is = new_.option(now);
    if (islisted(was) != islisted(is))
      add(islisted(is) ? tablechange::listed : tablechange::hidden, is.name, there);
    if (was.help != is.help || was.longhelp != is.longhelp)
      add(tablechange::helpchanged, is.name, there);
  }

  void addnew() {
    for (std::size_t i = 0; i < taken_.size(); i++)
      if (!taken_[i] && new_.isfound(i))
        add(tablechange::optionnew, new_.option(i).name, placeof(new_, i));
  }

  // --- Synonyms

  void comparesynonyms() {
    for (const std::string& name : old_.synonyms()) comparesynonym(name, *old_.synonym(name));
    for (const std::string& name : new_.synonyms())
      if (old_.synonym(name) == nullptr && !old_.find(name))
        add(tablechange::synonymnew, name, new_.placeof(optxv_declared_synonym, name), "",
            new_.option(new_.synonym(name)->option).name);
  }

  void comparesynonym(const std::string& name, const knownsynonym& was) {
    const std::string& target = old_.option(was.option).name;
    const knownsynonym* is = new_.synonym(name);
    const auto own = new_.find(name);  // which goes before a synonym
    if (!own && is == nullptr)
      return add(was.facts.obsolete ? tablechange::obsoletegone : tablechange::synonymgone, name,
                 old_.placeof(optxv_declared_synonym, name), target);
    const std::size_t now = own ? *own : is->option;
    const place there = new_.placeof(own ? optxv_declared_option : optxv_declared_synonym, name);
    if (now != pairs_[was.option])
      add(tablechange::synonymchanged, name, there, target, new_.option(now).name);
    if (!own)
      comparemarks(name, {was.facts.deprecated, was.facts.obsolete},
                   {is->facts.deprecated, is->facts.obsolete}, there);
  }

  // --- Groups

  static std::map<std::int32_t, const optxv::groupfacts*> groupsof(const side& of) {
    std::map<std::int32_t, const optxv::groupfacts*> all;
    for (const optxv::groupfacts& each : of.facts().groups) all.emplace(each.number, &each);
    return all;
  }

  void comparegroups() {
    const auto was = groupsof(old_), is = groupsof(new_);
    const auto name = [](std::int32_t number) { return "group " + std::to_string(number); };
    for (const auto& [number, group] : was) {
      const auto now = is.find(number);
      if (now == is.end())
        add(tablechange::groupgone, name(number), old_.placeof(optxv_declared_group, group->name));
      else if (now->second->title != group->title)
        add(tablechange::groupchanged, name(number),
            new_.placeof(optxv_declared_group, now->second->name), inquotes(group->title),
            inquotes(now->second->title));
    }
    for (const auto& [number, group] : is)
      if (!was.contains(number))
        add(tablechange::groupnew, name(number), new_.placeof(optxv_declared_group, group->name));
  }

  const side old_, new_;
  std::vector<std::size_t> pairs_;  ///< by the position of the old option, that of the new one
  std::map<std::size_t, tablechange> renamed_;  ///< how, by the position of the old option
  std::vector<bool> taken_;                     ///< the new options that are one of those
  std::vector<change> found_;
};

}  // namespace

std::span<const changerule> changerules() {
  return rules;
}

const changerule& ruleof(tablechange what) {
  return rules[static_cast<std::size_t>(what)];
}

std::string change::text() const {
  std::string text(ruleof(what).words);
  const bool oldfirst = text.find("OLD") < text.find("NEW");
  replacefirst(text, oldfirst ? "NEW" : "OLD", oldfirst ? is : was);  // the later one first
  replacefirst(text, oldfirst ? "OLD" : "NEW", oldfirst ? was : is);
  return text;
}

std::vector<change> tablechanges(const run& left, const run& right) {
  return comparison(left, right).all();
}

}  // namespace command
