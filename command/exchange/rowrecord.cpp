#include "exchange/rowrecord.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "foundation/numtext.h"
#include "text/entrytext.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr std::string_view helpcontext = "1";  // 0 would hide the option
constexpr std::size_t longestfield = 255;
constexpr std::size_t widesthelp = 100;
constexpr double largest = 1e299;  // the real that stands for no bound
constexpr double infinity = std::numeric_limits<double>::infinity();

// --- Types

/// The words of other programs for the types of a definition.
struct typeword {
  std::string_view word, type;
};
constexpr std::string_view anyenumeration = "enum";
constexpr auto typewords = std::to_array<typeword>({
    {"int", "integer"},         {"integer", "integer"},     {"long", "integer"},
    {"int32", "integer"},       {"int64", "integer"},       {"whole", "integer"},
    {"real", "double"},         {"double", "double"},       {"float", "double"},
    {"number", "double"},       {"numeric", "double"},      {"string", "string"},
    {"str", "string"},          {"text", "string"},         {"char", "string"},
    {"path", "string"},         {"file", "string"},         {"bool", "boolean"},
    {"boolean", "boolean"},     {"logical", "boolean"},     {"flag", "boolean"},
    {"switch", "boolean"},      {"enum", anyenumeration},   {"enumeration", anyenumeration},
    {"choice", anyenumeration}, {"select", anyenumeration}, {"enumstr", "enumstr"},
    {"enumint", "enumint"},     {"list", "strlist"},        {"strlist", "strlist"},
    {"macro", "macro"},         {"multilist", "multilist"}, {"immediate", "immediate"},
});

std::string_view typeof(std::string_view word) {
  const auto found = std::ranges::find_if(
      typewords, [&](const typeword& each) { return samename(each.word, word); });
  return found == typewords.end() ? std::string_view() : found->type;
}

bool isone(std::string_view word, std::initializer_list<std::string_view> words) {
  return std::ranges::any_of(words, [&](std::string_view each) { return samename(each, word); });
}
bool isyes(std::string_view word) {
  return isone(word, {"1", "yes", "y", "true", "t", "on", ".true."});
}
bool isno(std::string_view word) {
  return isone(word, {"0", "no", "n", "false", "f", "off", ".false."});
}

// --- Numbers

/// A real as other programs write it; nothing for what is none. Beyond the reals, an infinity.
std::optional<double> realof(std::string text) {
  if (text.starts_with('+')) text.erase(0, 1);
  if (isone(text, {"maxdouble", "mindouble"}))
    return isone(text, {"maxdouble"}) ? largest : -largest;
  if (isone(text, {"maxint", "minint"}))
    return isone(text, {"maxint"}) ? 2147483647.0 : -2147483648.0;
  if (isone(text, {"eps"})) return 1e-20;
  if (isone(text, {"inf", "infinity"})) return infinity;
  if (isone(text, {"-inf", "-infinity"})) return -infinity;
  for (char& c : text)
    if (folded(c) == 'd') c = 'e';
  return optxv::realfromtext(text);
}

/// A real as a definition has it: its largest one stands for all beyond it.
std::string realfield(double value) {
  if (value >= largest) return "maxdouble";
  return value <= -largest ? "mindouble" : realtext(value);
}

std::string wholefield(double value) {
  using limits = std::numeric_limits<std::int32_t>;
  if (value >= limits::max()) return "maxint";
  return value <= limits::min() ? "minint" : std::to_string(static_cast<std::int32_t>(value));
}

/// Whether a number is as its field says it, and not the limit instead.
bool isexact(double value, bool whole) {
  using limits = std::numeric_limits<std::int32_t>;
  return whole ? value >= limits::min() && value <= limits::max() : std::abs(value) <= largest;
}

// --- Texts

std::vector<std::string> linesof(std::string_view text) {
  std::vector<std::string> lines(1);
  for (const char c : text) {
    if (c == '\n')
      lines.emplace_back();
    else if (c != '\r' || lines.back().empty())
      lines.back() += c == '\t' || c == '\r' || c == '\x1A' || c == '\0' ? ' ' : c;
  }
  while (lines.size() > 1 && lines.back().empty()) lines.pop_back();
  return lines;
}

/// Takes as much off the start of a text as goes into a width, at a blank if there is one.
std::string takepiece(std::string& text, std::size_t width) {
  std::size_t size = text.size();
  if (size > width) {
    const std::size_t blank = text.rfind(' ', width);
    size = blank == text.npos || blank == 0 ? width : blank;
  }
  std::string piece = text.substr(0, size);
  text.erase(0, std::min(text.find_first_not_of(' ', size), text.size()));
  return piece;
}

std::string quotedfield(const std::string& text) {
  constexpr std::string_view separators = " \t,\"";
  const bool plain = !text.empty() && text.find_first_of(separators) == text.npos;
  return plain ? text : '"' + text + '"';
}

// --- The record

class recordmaker {
 public:
  recordmaker(const sheetrow& row, const sheetcolumns& columns, std::size_t group,
              std::size_t number, madetext& to)
      : row_(row), columns_(columns), group_(group), number_(number), to_(to) {}

  std::optional<rowrecord> record();

 private:
  sheetcell cell(column which) const { return columns_.of(row_, which); }
  void tell(ownfinding what, const sheetcell& where, const std::string& text) const {
    to_.tell(to_.fault(what, where.where, inquotes(made_.name) + ": " + text));
  }
  bool takename();
  bool taketype();
  std::string standardfield();
  std::string numberfields();
  std::string number(column which, std::string_view missing) const;
  std::string missingdefault() const;
  std::string booleanfield();
  std::string textfield();
  void takeitems();
  void checkbounds() const;
  std::string usermap() const;
  std::vector<std::string> helplines(bool continues) const;
  void addmembers();

  const sheetrow& row_;
  const sheetcolumns& columns_;
  std::size_t group_, number_;
  madetext& to_;
  rowrecord made_;
  std::string modifier_;
};

std::optional<rowrecord> recordmaker::record() {
  if (!takename() || !taketype()) return std::nullopt;
  const std::string& kind = made_.kind;
  const bool numeric = kind == "integer" || kind == "double";
  takeitems();
  const std::string standard = standardfield();
  if (!numeric) checkbounds();
  std::vector<std::string> help = helplines(numeric || kind == "boolean");
  const bool mapped = kind != "macro" && kind != "immediate";
  std::string head = made_.name + ' ' + kind + modifier_;
  for (const std::string& field : {mapped ? usermap() : "", standard, std::string(helpcontext),
                                   std::to_string(group_), help[0]})
    head += field.empty() ? "" : ' ' + field;
  made_.lines.push_back(std::move(head));
  for (std::size_t i = 1; i < help.size(); i++) made_.lines.push_back(' ' + help[i]);
  addmembers();
  return std::move(made_);
}

/// A name of another form than a definition's is changed, which is told.
bool recordmaker::takename() {
  const sheetcell name = cell(column::name);
  made_.where = name.where;
  made_.name = identifierof(name.text);
  if (made_.name.empty()) {
    to_.tell(to_.fault(ownfinding::badcell, name.where,
                       name.empty() ? "the row has no name"
                                    : inquotes(name.text) + " cannot be made a name: a name "
                                                            "begins with a letter"));
    return false;
  }
  if (made_.name != name.text)
    tell(ownfinding::notindefinition, name,
         "the name " + inquotes(name.text) +
             " is written so: a name has letters, digits and "
             "underscores");
  return true;
}

/// The type may have a modifier, as in integer.TWO.
bool recordmaker::taketype() {
  const sheetcell type = cell(column::type);
  std::string_view word = type.text;
  const std::size_t dot = word.find('.');
  if (dot != word.npos) modifier_ = word.substr(dot);
  made_.kind = typeof(word.substr(0, dot));
  if (!made_.kind.empty()) return true;
  std::string known;
  for (const typeword& each : typewords)
    known += (known.empty() ? "" : ", ") + std::string(each.word);
  finding found =
      to_.fault(ownfinding::badcell, type.where,
                inquotes(made_.name) + ": " +
                    (type.empty() ? "there is no type" : inquotes(type.text) + " is no type"));
  found.notes.push_back({"the types are " + known, {}});
  to_.tell(found);
  return false;
}

/// An enumeration whose values are all whole numbers is one of these.
void recordmaker::takeitems() {
  made_.items = cell(column::items).parts();
  if (made_.kind != anyenumeration) return;
  const bool whole = std::ranges::all_of(made_.items, [](const sheetpart& each) {
    const std::optional<double> value = realof(each.value);
    return value && isexact(*value, true) && std::trunc(*value) == *value;
  });
  made_.kind = whole && !made_.items.empty() ? "enumint" : "enumstr";
  if (made_.items.empty())
    tell(ownfinding::badcell, cell(column::items), "an enumeration needs the column \"items\"");
}

std::string recordmaker::standardfield() {
  const std::string& kind = made_.kind;
  if (kind == "integer" || kind == "double") return numberfields();
  if (kind == "boolean") return booleanfield();
  if (kind == "string" || kind == "enumstr" || kind == "enumint") return textfield();
  const sheetcell standard = cell(column::standard);
  if (kind == "immediate") return standard.text;
  if (!standard.empty())
    tell(ownfinding::notindefinition, standard, "the type " + kind + " has no default");
  return {};
}

// --- Fields

/// One field of a number; where the cell is empty, what is to be there.
std::string recordmaker::number(column which, std::string_view missing) const {
  const sheetcell from = cell(which);
  const bool whole = made_.kind == "integer";
  if (from.empty()) return std::string(missing);
  const std::optional<double> value = realof(from.text);
  if (!value || (whole && std::isfinite(*value) && std::trunc(*value) != *value)) {
    tell(ownfinding::badcell, from,
         inquotes(from.text) + " is no " + (whole ? "whole number" : "number"));
    return std::string(missing);
  }
  if (!isexact(*value, whole) && (which == column::standard || (whole && std::isfinite(*value))))
    tell(ownfinding::notindefinition, from,
         from.text + " is beyond the numbers of a definition: the limit is written instead");
  return whole ? wholefield(*value) : realfield(*value);
}

std::string recordmaker::missingdefault() const {
  tell(ownfinding::notindefinition, cell(column::name), "there is no default: 0 is written");
  return "0";
}

std::string recordmaker::numberfields() {
  const bool whole = made_.kind == "integer";
  made_.standard =
      cell(column::standard).empty() ? missingdefault() : number(column::standard, "0");
  const std::string low = number(column::low, whole ? "minint" : "mindouble");
  const std::string high = number(column::high, whole ? "maxint" : "maxdouble");
  return made_.standard + ' ' + low + ' ' + high;
}

std::string recordmaker::booleanfield() {
  const sheetcell from = cell(column::standard);
  if (from.empty()) return made_.standard = missingdefault();
  if (!isyes(from.text) && !isno(from.text))
    tell(ownfinding::badcell, from, inquotes(from.text) + " is neither yes nor no");
  return made_.standard = isyes(from.text) ? "1" : "0";
}

/// The default of a text, or of an enumeration, whose first value it is if there is none.
std::string recordmaker::textfield() {
  const sheetcell from = cell(column::standard);
  made_.standard = from.text;
  if (from.empty() && made_.kind != "string" && !made_.items.empty()) {
    made_.standard = made_.items.front().value;
    tell(ownfinding::notindefinition, cell(column::name),
         "there is no default: the first value is written");
  }
  if (made_.standard.find('\n') == made_.standard.npos) return quotedfield(made_.standard);
  tell(ownfinding::badcell, from, "a default has no line feed");
  return "\"\"";
}

void recordmaker::checkbounds() const {
  for (const column each : {column::low, column::high}) {
    const sheetcell bound = cell(each);
    const bool trivial = made_.kind == "boolean" && (isyes(bound.text) || isno(bound.text));
    if (!bound.empty() && !trivial)
      tell(ownfinding::notindefinition, bound, "the type " + made_.kind + " has no bounds");
  }
}

std::string recordmaker::usermap() const {
  const sheetcell from = cell(column::number);
  if (from.empty()) return std::to_string(number_);
  const std::optional<double> value = realof(from.text);
  if (value && isexact(*value, true) && std::trunc(*value) == *value) return wholefield(*value);
  tell(ownfinding::badcell, from, inquotes(from.text) + " is no whole number");
  return std::to_string(number_);
}

/// The text, and what there is no room for in its line, which only some records continue.
std::vector<std::string> recordmaker::helplines(bool continues) const {
  const sheetcell from = cell(column::text);
  std::vector<std::string> lines = linesof(from.text);
  for (std::size_t i = 1; !continues && i < lines.size(); i++) lines[0] += ' ' + lines[i];
  std::vector<std::string> result = {takepiece(lines[0], longestfield)};
  if (!continues && !lines[0].empty())
    tell(ownfinding::notindefinition, from,
         "the text has more than " + std::to_string(longestfield) + " bytes: the rest is left out");
  for (std::size_t i = 0; continues && i < lines.size(); i++) {
    if (i > 0 && lines[i].empty()) result.emplace_back();
    while (!lines[i].empty()) result.push_back(takepiece(lines[i], widesthelp));
  }
  return result;
}

/// The lines for the values of an enumeration, or the options that a list or macro sets.
void recordmaker::addmembers() {
  const std::string& kind = made_.kind;
  const bool enumeration = kind == "enumstr" || kind == "enumint";
  const bool members = kind == "macro" || kind == "multilist";
  if (!enumeration && !members && !made_.items.empty())
    tell(ownfinding::notindefinition, cell(column::items), "the type " + kind + " has no items");
  for (const sheetpart& each : made_.items) {
    if (members) made_.lines.push_back(' ' + each.value);
    if (enumeration)
      made_.lines.push_back(' ' + quotedfield(linesof(each.value)[0]) + ' ' +
                            std::string(helpcontext) +
                            (each.text.empty() ? "" : ' ' + linesof(each.text)[0]));
  }
  if (!enumeration) made_.items.clear();
}

}  // namespace

std::string identifierof(std::string_view text) {
  const bool dotted = text.starts_with('.');
  if (dotted) text.remove_prefix(1);
  std::string name;
  for (const char c : text) name += isnamecharacter(c) ? c : '_';
  if (name.empty() || !isletter(name.front())) return {};
  return (dotted ? "." : "") + name;
}

std::optional<rowrecord> recordof(const sheetrow& row, const sheetcolumns& columns,
                                  std::size_t group, std::size_t number, madetext& to) {
  return recordmaker(row, columns, group, number, to).record();
}

}  // namespace command
