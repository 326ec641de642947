#include "analysis/hints.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

using std::string_view;

constexpr string_view blanks = " \t";
constexpr string_view nobreakspace = "\xC2\xA0";

string_view trimmed(string_view text) {
  for (bool more = true; more;) {
    const std::size_t before = text.size();
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    if (text.starts_with(nobreakspace)) text.remove_prefix(nobreakspace.size());
    while (!text.empty() && blanks.find(text.back()) != text.npos) text.remove_suffix(1);
    if (text.ends_with(nobreakspace)) text.remove_suffix(nobreakspace.size());
    more = text.size() != before;
  }
  return text;
}

string_view firstword(string_view text) {
  return text.substr(0, text.find_first_of(blanks));
}

bool alldigits(string_view text) {
  return !text.empty() && std::ranges::all_of(text, isdigit);
}

bool startswithdigit(string_view text) {
  return !text.empty() && isdigit(text[0]);
}

std::string without(string_view text, char dropped) {
  std::string result(text);
  std::erase(result, dropped);
  return result;
}

// --- Values

// Each gives what a value is without one habit; empty if it does not have it.

std::string unquoted(string_view value, const optionsymbol&) {
  return withoutforeignquotes(value) ? std::string(trimmed(value)) : std::string();
}

std::string withoutdoublequotes(string_view value, const optionsymbol&) {
  return value.find('"') == value.npos ? std::string() : without(value, '"');
}

std::string withoutspaces(string_view value, const optionsymbol&) {
  const string_view text = trimmed(value);
  return text.size() == value.size() ? std::string() : std::string(text);
}

std::string withoutend(string_view value, const optionsymbol&) {
  return value.ends_with(';') || value.ends_with(',')
             ? std::string(trimmed(value.substr(0, value.size() - 1)))
             : std::string();
}

/// Text after a mark that begins a comment elsewhere, with a blank before it or not.
std::string withoutcomment(string_view value, const optionsymbol&) {
  constexpr std::array<string_view, 7> marks = {"//", "/*", "#", "!", ";", "%", "--"};
  std::size_t first = value.npos;
  for (const string_view mark : marks) first = std::min(first, value.find(mark));
  return first == value.npos || first == 0 ? std::string()
                                           : std::string(trimmed(value.substr(0, first)));
}

/// 10,000 or 1,234,567.
std::string withoutthousands(string_view value, const optionsymbol&) {
  const std::size_t first = value.find(',');
  if (first == value.npos || first == 0 || first > 4) return {};
  constexpr std::size_t group = 4;  // the comma and three digits
  for (string_view rest = value.substr(first); !rest.empty(); rest.remove_prefix(group))
    if (rest.size() < group || rest[0] != ',' || !alldigits(rest.substr(1, group - 1)) ||
        (rest.size() > group && rest[group] != ','))
      return {};
  return without(value, ',');
}

/// 1,5 with a point; not 1, 5, where the comma stands between two numbers.
std::string withpoint(string_view value, const optionsymbol& option) {
  const std::size_t comma = value.find(',');
  if (!option.isnumber() || comma == value.npos || comma != value.rfind(',')) return {};
  if (!startswithdigit(value.substr(comma + 1))) return {};
  std::string result(value);
  result[comma] = '.';
  return result;
}

/// A number, and words after it.
std::string withoutunit(string_view value, const optionsymbol& option) {
  if (!option.isnumber()) return {};
  const std::size_t end = value.find_first_not_of("+-.0123456789");
  if (end == value.npos || end == 0) return {};
  const bool word = isletter(value[end]) || blanks.find(value[end]) != blanks.npos;
  return word ? std::string(value.substr(0, end)) : std::string();
}

/// The bound of an option, by a word for no bound.
std::string limit(string_view value, const optionsymbol& option) {
  constexpr std::array<string_view, 7> words = {"inf",  "infinity", "infinite", "unlimited",
                                                "none", "max",      "maximum"};
  const bool negative = value.starts_with('-');
  if (negative || value.starts_with('+')) value.remove_prefix(1);
  const bool known =
      std::ranges::any_of(words, [&](string_view each) { return samename(each, value); });
  return known && option.isnumber() ? negative ? option.low : option.high : std::string();
}

std::string standard(string_view value, const optionsymbol& option) {
  constexpr std::array<string_view, 4> words = {"auto", "automatic", "default", "none"};
  const bool known =
      std::ranges::any_of(words, [&](string_view each) { return samename(each, value); });
  return known ? option.standard : std::string();
}

struct habit {
  std::string (*correct)(string_view value, const optionsymbol& option);
  bool sure;  ///< nothing else can be meant
  string_view words = {};
};

// What stands round a value, and then what is within. The first that helps is told.
constexpr std::array<habit, 10> habits = {{{withoutspaces, true},
                                           {unquoted, true},
                                           {withoutdoublequotes, false},
                                           {withoutend, true},
                                           {withoutcomment, true},
                                           {withoutthousands, true},
                                           {withpoint, true},
                                           {limit, false},
                                           {standard, false, "for the default"},
                                           {withoutunit, false}}};

/// A value without habits, and what there is to say of that.
struct correction {
  std::string value = {};
  bool sure = true;
  string_view words = {};
  std::string comment = {};  ///< the text after the value that others take for a comment
};

/// A comment of another language without its marks.
string_view unmarked(string_view comment) {
  comment = trimmed(comment);
  comment.remove_prefix(std::min(comment.find_first_not_of("/*#!;%-"), comment.size()));
  if (comment.ends_with("*/")) comment.remove_suffix(2);
  return trimmed(comment);
}

/// The value without one habit; an empty one if it does not have it.
correction without(const habit& habit, string_view value, const optionsymbol& option) {
  correction result = {habit.correct(value, option), habit.sure, habit.words};
  // 1,234 may have a decimal comma where fractions are taken.
  if (habit.correct == withoutthousands && option.type == "double")
    result.sure = std::ranges::count(value, ',') > 1;
  if (habit.correct == withoutcomment && !result.value.empty())
    result.comment = unmarked(trimmed(value).substr(result.value.size()));
  return result;
}

/// The value without all habits that it has, one in another.
correction withoutall(string_view value, const optionsymbol& option) {
  correction result = {std::string(value)};
  for (std::size_t round = 0; round < habits.size(); round++)
    for (const habit& each : habits) {
      correction next = without(each, result.value, option);
      if (next.value.empty()) continue;
      result.value = std::move(next.value);
      result.sure = result.sure && next.sure;
      if (result.comment.empty()) result.comment = std::move(next.comment);
      break;
    }
  return result;
}

/// The edit that makes a piece of a line that text, without what stays of it at both ends.
edit editof(const place& line, std::int64_t column, string_view old, string_view text) {
  const auto [from, ignored] = std::ranges::mismatch(old, text);
  const auto same = static_cast<std::size_t>(from - old.begin());
  old.remove_prefix(same);
  text.remove_prefix(same);
  while (!old.empty() && !text.empty() && old.back() == text.back())
    old.remove_suffix(1), text.remove_suffix(1);
  place where = line;
  where.column = column + static_cast<std::int64_t>(same);
  where.length = static_cast<std::int64_t>(old.size());
  return {where, std::string(text)};
}

// --- Forms

/// Gathers what is tried for one finding.
class hinting {
 public:
  hinting(finding& found, const optxv_message& said, const hintsource& from)
      : found_(found), said_(said), from_(from) {}

  void separator();
  void key();
  void name();
  void value();
  void boolean();
  void item();
  void similar();
  void reference();
  void index();
  void missing();
  void remainder();
  void deprecated();
  void file();

 private:
  bool told() const { return !found_.hints.empty(); }
  const readentry& entry() const { return from_.at.source().entry; }
  const optionsymbol& option() const { return from_.names.option(said_.option); }
  /// What stands in the line from the place of the finding on.
  string_view here() const { return from_.at.ahead(said_.place.column); }

  const place& line() const { return from_.at.source().line; }
  string_view text() const { return from_.at.source().text; }

  bool offer(std::string form, string_view words = {});
  bool offerfrom(std::int64_t column, std::string form, bool sure);
  bool offervalue(const correction& better);
  bool offerrest(std::int64_t column, string_view key, const correction& better);
  void offerrest(std::int64_t column, string_view value, string_view key,
                 const optionsymbol& option);
  void offername(const place& where, string_view name, bool samemeaning = false);
  void offerlikely();
  void keepcomment(hint& into, string_view comment, std::int64_t column) const;
  const readvalue* valueatfault() const;
  bool twonumbers();
  std::string with(string_view value) const;
  void comment();
  bool joined();
  bool spaced();

  finding& found_;
  const optxv_message& said_;
  const hintsource& from_;
};

/// Tells a form if the library takes it.
bool hinting::offer(std::string form, string_view words) {
  if (!from_.library.accepts(form)) return false;
  found_.hints.push_back({.write = std::move(form), .words = std::string(words)});
  return true;
}

/// Tells a form that stands for all of the line from a column on.
bool hinting::offerfrom(std::int64_t column, std::string form, bool sure) {
  if (!offer(std::move(form))) return false;
  hint& told = found_.hints.back();
  const string_view old = trimmed(from_.at.ahead(column));
  const std::string before(text().begin(), old.begin());
  const auto start = static_cast<std::int64_t>(before.size()) + 1;
  told.edits = {editof(line(), start, old, told.write)};
  told.sure = sure && !from_.names.modeswitched() && from_.library.accepts(before + told.write) &&
              !from_.library.instructs();
  return true;
}

/// The value that the finding is about; nil if none is.
const readvalue* hinting::valueatfault() const {
  const std::vector<readvalue>& all = entry().values;
  if (all.size() == 1) return all.data();
  const auto found = std::ranges::find(all, viewof(said_.seen), &readvalue::text);
  return found == all.end() ? nullptr : &*found;
}

/// The entry with another value in the place of the one at fault.
std::string hinting::with(string_view value) const {
  const readvalue* fault = valueatfault();
  std::string form = entry().key;
  for (const readvalue& each : entry().values)
    form += ' ' + (&each == fault ? std::string(value) : externalform(each.text));
  return fault != nullptr ? form : form + ' ' + std::string(value);
}

/// Adds what keeps a text that others take for a comment: at the end of the line where the
/// definition has a character for that, else in a line of its own.
void hinting::keepcomment(hint& into, string_view comment, std::int64_t column) const {
  if (comment.empty() || into.edits.empty()) return;
  const string_view marks = from_.names.commentcharacters();
  if (!marks.empty()) {
    into.edits.back().text += ' ' + std::string(1, marks[0]) + ' ' + std::string(comment);
    return;
  }
  place start = line();
  start.column = 1;
  start.length = 0;
  edit above = {start, "* " + std::string(comment) + '\n'};
  if (column == 1 && into.edits.front().where.column == 1)
    into.edits.front().text.insert(0, above.text);
  else
    into.edits.insert(into.edits.begin(), std::move(above));
}

/// Tells the entry with another value in the place of the one at fault.
bool hinting::offervalue(const correction& better) {
  if (!offer(with(better.value), better.words)) return false;
  const readvalue* fault = valueatfault();
  if (fault == nullptr || fault->written.line != line().line) return true;
  const string_view written = from_.at.ahead(fault->written.column);
  if (written.substr(0, static_cast<std::size_t>(fault->written.length)) == better.value)
    return true;  // nothing would change
  // What is at fault is one value of several.
  if (from_.names.option(entry().option).type == "multilist") return true;
  hint& told = found_.hints.back();
  told.edits = {{fault->written, better.value}};
  told.sure = better.sure;
  keepcomment(told, better.comment, fault->written.column);
  return true;
}

/// Tells a key with a value that stands for all of the line from a column on.
bool hinting::offerrest(std::int64_t column, string_view key, const correction& better) {
  if (!offerfrom(column, std::string(key) + ' ' + better.value, better.sure)) return false;
  found_.hints.back().words = better.words;
  keepcomment(found_.hints.back(), better.comment, column);
  return true;
}

/// The same with a value as it is, or without the habits in it.
void hinting::offerrest(std::int64_t column, string_view value, string_view key,
                        const optionsymbol& option) {
  if (value.empty() || offerrest(column, key, {std::string(value)})) return;
  for (const habit& each : habits)
    if (const correction better = without(each, value, option); !better.value.empty())
      if (offerrest(column, key, better)) return;
  if (offerrest(column, key, withoutall(value, option))) return;
  offer(std::string(key) + ' ' + std::string(firstword(value)));
}

/// Tells the line with another name at a place in it, if the library takes that. Nobody can be sure
/// of what brings out an instruction to the reader, except where the name meant the same before.
void hinting::offername(const place& where, string_view name, bool samemeaning) {
  if (where.line != line().line || where.column < 1) return;
  std::string form(text());
  const auto at = static_cast<std::size_t>(where.column - 1);
  if (at > form.size()) return;
  form.replace(at, static_cast<std::size_t>(where.length), name);
  if (!offer(std::string(trimmed(form)))) return;
  found_.hints.back().edits = {{where, std::string(name)}};
  found_.hints.back().sure = samemeaning || !from_.library.instructs();
}

/// Tells the line with the only name that can be meant, and if need be its value put right too.
void hinting::offerlikely() {
  if (found_.nearest.size() != 1) return;
  const std::string& name = found_.nearest[0];
  offername(place(said_.place), name);
  if (told() || name.starts_with('.')) return;
  string_view rest = trimmed(here().substr(std::min(viewof(said_.about).size(), here().size())));
  if (rest.starts_with('=')) rest = trimmed(rest.substr(1));
  offerrest(said_.place.column, rest, name, from_.names.option(from_.names.find(name)));
}

void hinting::similar() {
  found_.nearest = from_.names.nearest(viewof(said_.about));
  offerlikely();
}

/// A record of a definition names an option that is not there.
void hinting::reference() {
  found_.nearest = from_.names.nearest(viewof(said_.seen));
}

/// A line that begins as comments do elsewhere.
void hinting::comment() {
  constexpr std::array<string_view, 6> marks = {"#", "!", ";", "%", "//", "/*"};
  const string_view begin = trimmed(text());
  const auto mark =
      std::ranges::find_if(marks, [&](string_view each) { return begin.starts_with(each); });
  if (mark == marks.end()) return;
  const auto end = static_cast<std::size_t>(begin.data() - text().data()) + mark->size();
  place where = line();
  where.column = 1;
  where.length = static_cast<std::int64_t>(end);
  found_.hints.push_back({.words = "a comment has a line of its own, with a * in column 1",
                          .edits = {{where, "*"}},
                          .sure = true});
}

/// Something else than a blank or = touches the key. It may be a hyphen of the name.
void hinting::separator() {
  const string_view key = viewof(said_.about);
  const std::int64_t start = said_.place.column - static_cast<std::int64_t>(key.size());
  string_view rest = here();
  if (rest.starts_with('-')) {
    const auto end =
        std::ranges::find_if_not(rest, [](char c) { return isnamecharacter(c) || c == '-'; });
    std::string name = std::string(key) + std::string(rest.begin(), end);
    std::ranges::replace(name, '-', '_');
    rest.remove_prefix(static_cast<std::size_t>(end - rest.begin()));
    rest = trimmed(rest.substr(std::min(rest.find_first_not_of(" \t:="), rest.size())));
    const std::int32_t known = from_.names.find(name);
    found_.nearest = known > 0 ? std::vector<std::string>() : from_.names.nearest(name);
    if (known > 0) offerrest(start, rest, name, from_.names.option(known));
    return;
  }
  const std::int32_t known = from_.names.find(key);
  if (known == 0) found_.nearest = from_.names.nearest(key);
  for (rest = trimmed(rest);
       !rest.empty() && string_view(":=,;").find(rest[0]) != string_view::npos;)
    rest = trimmed(rest.substr(1));
  if (known > 0) offerrest(start, rest, key, from_.names.option(known));
}

/// What begins an entry is no key: a comment of another language, a quoted name, a value before
/// its key, or the second half of a decimal comma.
void hinting::key() {
  comment();
  string_view text = trimmed(here());
  const string_view before = from_.at.source().text;
  const auto column = static_cast<std::size_t>(said_.place.column);
  const bool aftercomma = column >= 2 && column - 2 < before.size() && before[column - 2] == ',';
  if (aftercomma && !entry().values.empty() && isdigit(text.empty() ? ' ' : text[0])) {
    offer(entry().key + ' ' + entry().values.back().text + '.' + std::string(firstword(text)));
    return;
  }
  const string_view first = firstword(text);
  const string_view second = trimmed(text.substr(first.size()));
  if (from_.names.find(second) > 0 && offer(std::string(second) + ' ' + std::string(first))) return;
  string_view name = first;
  if (first.starts_with('"'))
    name = first.substr(1, first.find('"', 1) - 1);
  else if (!withoutforeignquotes(name))
    name = first;
  if (const std::int32_t known = from_.names.find(name); known > 0)
    offerrest(said_.place.column, second, name, from_.names.option(known));
}

/// The name in several words, as "time limit 5".
bool hinting::joined() {
  string_view rest = here();
  std::string name(firstword(rest));
  for (int words = 1; words < 4; words++) {
    rest = trimmed(rest.substr(std::min(firstword(rest).size(), rest.size())));
    if (rest.empty()) return false;
    name += '_' + std::string(firstword(rest));
    if (const std::int32_t known = from_.names.find(name); known > 0) {
      offerrest(said_.place.column, trimmed(rest.substr(firstword(rest).size())), name,
                from_.names.option(known));
      return told();
    }
  }
  return false;
}

/// Where users write blanks in names, a key with underscores is not found as it stands.
bool hinting::spaced() {
  std::string key(viewof(said_.about));
  const std::int32_t known = from_.names.find(key);
  if (known == 0) return false;
  std::ranges::replace(key, '_', ' ');
  string_view rest = trimmed(here().substr(std::min(key.size(), here().size())));
  if (rest.starts_with('=')) rest = trimmed(rest.substr(1));
  offerrest(said_.place.column, rest, key, from_.names.option(known));
  return true;
}

void hinting::name() {
  if (spaced() || joined()) return;
  found_.nearest = from_.names.nearest(viewof(said_.about));
  offerlikely();
}

/// Two numbers with a comma between. It may stand for a blank or for a point: sure is only what the
/// library takes alone.
bool hinting::twonumbers() {
  const std::vector<readvalue>& all = entry().values;
  if (all.size() != 2 || &all[1] != valueatfault() || !all[1].text.starts_with(',')) return false;
  const place &before = all[0].written, &fault = all[1].written;
  if (before.line != fault.line || before.column + before.length != fault.column) return false;
  const auto offertail = [&](const std::string& tail) {
    if (offer(entry().key + ' ' + all[0].text + tail)) found_.hints.back().edits = {{fault, tail}};
  };
  const string_view rest = string_view(all[1].text).substr(1);
  offertail(trimmed(rest).empty() ? std::string() : ' ' + std::string(trimmed(rest)));
  if (startswithdigit(rest)) offertail('.' + std::string(rest));
  if (found_.hints.size() == 1) found_.hints.back().sure = true;
  return true;
}

void hinting::value() {
  if (twonumbers()) return;
  const string_view seen = viewof(said_.seen);
  for (const habit& each : habits)
    if (const correction better = without(each, seen, option()); !better.value.empty())
      if (offervalue(better)) return;
  offervalue(withoutall(seen, option()));
}

void hinting::item() {
  value();
  const string_view seen = viewof(said_.seen);
  if (told()) return;
  found_.nearest = from_.names.nearestitem(said_.option, seen);
  if (found_.nearest.size() == 1) offervalue({externalform(found_.nearest[0])});
}

void hinting::boolean() {
  constexpr std::array<string_view, 5> yes = {"enable", "enabled", "active", "always", "yess"};
  constexpr std::array<string_view, 6> no = {"disable", "disabled", "none",
                                             "never",   "inactive", "non"};
  const string_view seen = viewof(said_.seen);
  const auto among = [&](const auto& words) {
    return std::ranges::any_of(words, [&](string_view each) { return samename(each, seen); });
  };
  value();
  if (told()) return;
  if (!among(no)) offer(with("yes"));
  if (!among(yes)) offer(with("no"));
}

/// An index without its quotes.
void hinting::index() {
  const std::string line = from_.at.source().text;
  const std::size_t open = line.find_first_of("([{");
  const std::size_t close = line.find_first_of(")]}");
  if (open == line.npos || close == line.npos || close < open) return;
  std::string form = line.substr(0, open + 1);
  for (string_view rest = string_view(line).substr(open + 1, close - open - 1); !rest.empty();) {
    const string_view each = trimmed(rest.substr(0, rest.find(',')));
    rest.remove_prefix(std::min(rest.find(','), rest.size()));
    const bool bare = !each.empty() && string_view("'\"*").find(each[0]) == string_view::npos;
    form += bare ? "'" + std::string(each) + "'" : std::string(each);
    if (!rest.empty()) form += ',', rest.remove_prefix(1);
  }
  offer(form + std::string(trimmed(line.substr(close))));
}

void hinting::missing() {
  const std::string& usual = option().standard;
  if (!usual.empty()) offer(with(externalform(usual)), "for the default");
}

void hinting::remainder() {
  offer(entry().key);
}

/// A synonym that is deprecated stands for a name that is not.
void hinting::deprecated() {
  if (entry().synonym == 0) return;
  const optionsymbol& meant = from_.names.option(entry().option);
  if (!meant.name.empty()) offername(entry().where, meant.name, true);
}

/// The name of a nested file ends at a blank unless it is quoted.
void hinting::file() {
  if (entry().values.empty()) return;
  const readvalue& name = entry().values.back();
  const string_view whole = trimmed(from_.at.ahead(name.written.column));
  std::error_code ignored;
  if (whole.size() <= name.text.size() || whole.find('"') != whole.npos) return;
  if (std::filesystem::exists(std::string(whole), ignored))
    found_.hints.push_back({.write = entry().key + " \"" + std::string(whole) + '"'});
}

/// Which hints suit which fault.
struct row {
  std::int32_t fault;
  void (hinting::*add)();
};
constexpr std::array<row, 18> rows = {{{optxv_fault_bad_separator, &hinting::separator},
                                       {optxv_fault_key_expected, &hinting::key},
                                       {optxv_fault_unknown_option, &hinting::name},
                                       {optxv_fault_unknown_suffix, &hinting::similar},
                                       {optxv_fault_integer_expected, &hinting::value},
                                       {optxv_fault_real_expected, &hinting::value},
                                       {optxv_fault_quote, &hinting::value},
                                       {optxv_fault_boolean_expected, &hinting::boolean},
                                       {optxv_fault_unknown_value, &hinting::item},
                                       {optxv_fault_index_not_allowed, &hinting::index},
                                       {optxv_fault_index_expected, &hinting::index},
                                       {optxv_fault_value_expected, &hinting::missing},
                                       {optxv_fault_remainder, &hinting::remainder},
                                       {optxv_fault_deprecated, &hinting::deprecated},
                                       {optxv_fault_cannot_open, &hinting::file},
                                       {optxv_fault_unknown_target, &hinting::reference},
                                       {optxv_fault_unknown_member, &hinting::reference},
                                       {optxv_fault_unknown_marked, &hinting::reference}}};

}  // namespace

bool withoutforeignquotes(std::string_view& text) {
  // Single quotes and graves, and in UTF-8 those of print, single and double, either side.
  constexpr std::array<string_view, 10> marks = {"'",
                                                 "`",
                                                 "\xE2\x80\x98",
                                                 "\xE2\x80\x99",
                                                 "\xE2\x80\x9A",
                                                 "\xE2\x80\x9C",
                                                 "\xE2\x80\x9D",
                                                 "\xE2\x80\x9E",
                                                 "\xC2\xAB",
                                                 "\xC2\xBB"};
  const auto opens =
      std::ranges::find_if(marks, [&](string_view mark) { return text.starts_with(mark); });
  const auto closes =
      std::ranges::find_if(marks, [&](string_view mark) { return text.ends_with(mark); });
  if (opens == marks.end() || closes == marks.end() || text.size() < opens->size() + closes->size())
    return false;
  text = text.substr(opens->size(), text.size() - opens->size() - closes->size());
  return true;
}

void addhints(finding& found, const optxv_message& said, const hintsource& from) {
  if (from.at.idle()) return;
  hinting all(found, said, from);
  for (const row& each : rows)
    if (each.fault == said.fault) (all.*each.add)();
}

}  // namespace command
