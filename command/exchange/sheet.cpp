#include "exchange/sheet.h"

#include <algorithm>

#include "text/names.h"

namespace command {
namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
  text.remove_prefix(begin);
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

// --- CSV

class csvreader {
 public:
  explicit csvreader(std::string_view text) : text_(text), delimiter_(delimiterof(text)) {
    if (text.starts_with("\xEF\xBB\xBF")) at_ = 3;
  }

  sheet read();

 private:
  static char delimiterof(std::string_view text);
  bool ended() const { return at_ >= text_.size(); }
  bool endscell() const { return ended() || text_[at_] == delimiter_ || text_[at_] == '\n'; }
  sheetrow row();
  sheetcell cell();
  sheetcell quotedcell(std::size_t begin);
  void addrow(sheetrow row);

  std::string_view text_;
  char delimiter_;
  std::size_t at_ = 0;
  sheet result_;
};

char csvreader::delimiterof(std::string_view text) {
  constexpr std::string_view known = ",;\t";
  const std::string_view first = text.substr(0, text.find('\n'));
  return *std::ranges::max_element(known, {}, [&](char c) { return std::ranges::count(first, c); });
}

sheet csvreader::read() {
  while (!ended()) {
    sheetrow next = row();
    const bool blank = std::ranges::all_of(next.cells, &sheetcell::empty);
    if (blank) continue;
    if (result_.header.empty())
      result_.header = std::move(next.cells);
    else
      addrow(std::move(next));
  }
  return std::move(result_);
}

/// A row may have fewer cells than there are columns: the others are empty.
void csvreader::addrow(sheetrow row) {
  const std::size_t columns = result_.header.size();
  if (row.cells.size() > columns)
    result_.faults.push_back({row.cells[columns].where,
                              "the row has " + std::to_string(row.cells.size()) +
                                  " cells, and the first line has " + std::to_string(columns)});
  const std::size_t end = row.where.end;
  row.cells.resize(columns, {.where = {end, end}});
  result_.rows.push_back(std::move(row));
}

sheetrow csvreader::row() {
  sheetrow result;
  result.where.begin = at_;
  for (bool more = true; more;) {
    result.cells.push_back(cell());
    more = !ended() && text_[at_] == delimiter_;
    if (more) at_++;
  }
  result.where.end = at_;
  if (!ended()) at_++;
  return result;
}

sheetcell csvreader::cell() {
  while (!endscell() && text_[at_] == ' ') at_++;
  const std::size_t begin = at_;
  if (!ended() && text_[at_] == '"') return quotedcell(begin);
  while (!endscell()) at_++;
  const std::string_view text = trimmed(text_.substr(begin, at_ - begin));
  return {.text = std::string(text), .where = {begin, begin + text.size()}};
}

/// A quote within the cell is there twice.
sheetcell csvreader::quotedcell(std::size_t begin) {
  sheetcell result;
  for (at_++; !ended(); at_++) {
    if (text_[at_] == '"' && (at_ + 1 == text_.size() || text_[at_ + 1] != '"')) break;
    if (text_[at_] == '"') at_++;
    result.text += text_[at_];
  }
  if (ended()) result_.faults.push_back({{begin, at_}, "the cell has no closing quote"});
  at_ = std::min(at_ + 1, text_.size());
  result.where = {begin, at_};
  const std::size_t after = at_;
  while (!endscell()) at_++;
  if (!trimmed(text_.substr(after, at_ - after)).empty())
    result_.faults.push_back({{after, at_}, "there is text behind the closing quote of the cell"});
  return result;
}

// --- JSON

std::string scalarof(const jsonvalue& value) {
  if (value.is == jsonvalue::kind::boolean) return value.yes ? "true" : "false";
  return value.text;
}

/// "a", or {"value": "a", "text": "An a"}.
sheetpart partof(const jsonvalue& value) {
  const jsonvalue* const inner = value.find("value");
  const jsonvalue* const text = value.find("text");
  return {scalarof(inner != nullptr ? *inner : value), text != nullptr ? text->text : ""};
}

/// A list of values, or an object with a text for each.
sheetcell cellof(const jsonvalue& value) {
  sheetcell result = {.text = scalarof(value), .where = value.where};
  for (const jsonvalue& each : value.items) result.listed.push_back(partof(each));
  for (const jsonmember& each : value.members)
    result.listed.push_back({each.name, scalarof(each.value)});
  return result;
}

class jsonrows {
 public:
  explicit jsonrows(std::string_view text) : tree_(readjson(text)) {
    result_.faults = std::move(tree_.faults);
  }

  sheet read();

 private:
  void addrow(const jsonvalue& object);
  std::size_t columnof(const jsonmember& member);

  jsontree tree_;
  sheet result_;
};

sheet jsonrows::read() {
  if (!tree_.whole) return std::move(result_);
  const jsonvalue* const inner = tree_.root.find("options");
  const jsonvalue& list = inner != nullptr ? *inner : tree_.root;
  if (list.is != jsonvalue::kind::list)
    result_.faults.push_back({list.where, "a list of objects is expected, one for each option"});
  for (const jsonvalue& each : list.items) addrow(each);
  for (sheetrow& each : result_.rows)
    each.cells.resize(result_.header.size(), {.where = each.where});
  return std::move(result_);
}

void jsonrows::addrow(const jsonvalue& object) {
  if (object.is != jsonvalue::kind::object) {
    result_.faults.push_back(
        {object.where, "an object is expected, not " + std::string(wordof(object.is))});
    return;
  }
  sheetrow row = {.cells = {}, .where = object.where};
  for (const jsonmember& each : object.members) {
    const std::size_t column = columnof(each);
    if (row.cells.size() <= column) row.cells.resize(column + 1, {.where = object.where});
    row.cells[column] = cellof(each.value);
  }
  result_.rows.push_back(std::move(row));
}

/// The column of a name, which is a new one the first time.
std::size_t jsonrows::columnof(const jsonmember& member) {
  const auto found = std::ranges::find(result_.header, member.name, &sheetcell::text);
  const auto column = static_cast<std::size_t>(found - result_.header.begin());
  if (found == result_.header.end())
    result_.header.push_back({.text = member.name, .where = member.where});
  return column;
}

}  // namespace

std::vector<sheetpart> sheetcell::parts() const {
  if (!listed.empty() || text.empty()) return listed;
  std::vector<sheetpart> all;
  for (std::string_view rest = text;;) {
    const std::string_view part = rest.substr(0, rest.find('|'));
    const std::size_t equals = std::min(part.find('='), part.size());
    const std::string_view about = part.substr(std::min(equals + 1, part.size()));
    all.push_back({std::string(trimmed(part.substr(0, equals))), std::string(trimmed(about))});
    if (part.size() == rest.size()) return all;
    rest.remove_prefix(part.size() + 1);
  }
}

sheet readsheet(std::string_view text) {
  constexpr std::string_view brackets = "[{";
  const std::size_t first = text.find_first_not_of(" \t\r\n\xEF\xBB\xBF");
  const bool isjson = first != text.npos && brackets.find(text[first]) != brackets.npos;
  return isjson ? jsonrows(text).read() : csvreader(text).read();
}

}  // namespace command
