#include "analysis/textchecks.h"

#include <algorithm>
#include <array>

#include "analysis/symbols.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

struct bytemark {
  std::string_view bytes, name;
};
constexpr std::array<bytemark, 3> bytemarks = {
    {{"\xEF\xBB\xBF", "UTF-8"}, {"\xFF\xFE", "UTF-16"}, {"\xFE\xFF", "UTF-16"}}};

/// A kind of cut: the finding, and its words round the number of bytes that are lost.
struct cutrow {
  std::int32_t what;
  ownfinding finding;
  std::string_view before, after;
};
constexpr std::array<cutrow, 5> cutrows = {
    {{optxv_cut_line, ownfinding::linecut, "the first 1,020 bytes of the line are read; ", " lost"},
     {optxv_cut_rest, ownfinding::restunread, "byte 26 ends the line here; ", " not read"},
     {optxv_cut_name, ownfinding::namecut, "a name has 255 bytes at most; ", " lost"},
     {optxv_cut_value, ownfinding::valuecut, "a value has 255 bytes at most; ", " lost"},
     {optxv_cut_number, ownfinding::saturated,
      "the number is beyond the limit of its type, which is taken instead", ""}}};

std::string textof(const cutrow& row, const optxv_cut& cut) {
  std::string text(row.before);
  if (row.after.empty()) return text;
  const auto lost = static_cast<std::size_t>(cut.lost);
  return text + counted(lost, "byte") + (lost == 1 ? " is" : " are") + std::string(row.after);
}

/// The text from a line on.
std::string_view fromline(std::string_view text, std::int64_t line) {
  for (; line > 1 && !text.empty(); line--)
    text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
  return text;
}

/// Whether a line looks like a record: a name in column 1 and a type word.
bool beginsrecord(std::string_view line) {
  std::string_view rest = line;
  std::string_view name = nextword(rest);
  if (name.starts_with('.')) name.remove_prefix(1);
  const std::string_view word = nextword(rest);
  return !name.empty() && line[0] != ' ' && isletter(name[0]) &&
         recordformof(folded(word.substr(0, word.find('.')))) != nullptr;
}

std::size_t countrecords(std::string_view text) {
  std::size_t count = 0;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (beginsrecord(text.substr(0, end))) count++;
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return count;
}

/// What to do about a line that ends a definition.
std::string_view advice(std::string_view line) {
  if (line.starts_with('\t'))
    return "a line that continues a record begins with a blank, not a tab";
  if (line.starts_with(' '))
    return "a record begins in column 1, and the one above takes no line more";
  if (line.starts_with('#') || line.starts_with("//") || line.starts_with(';'))
    return "a comment has a * in column 1";
  return "a record begins with a letter in column 1";
}

}  // namespace

void textchecks::entered(const optxv_source&) {
  zerotold_ = false;
}

void textchecks::checkmark(const optxv_place& where, std::string_view text) {
  for (const bytemark& mark : bytemarks) {
    if (!text.starts_with(mark.bytes)) continue;
    place at = where;
    at.length = static_cast<std::int64_t>(mark.bytes.size());
    finding found = own(ownfinding::bytemark, at,
                        "the file begins with a byte-order mark (" + std::string(mark.name) +
                            "), which the language does not know");
    hint plain = {.words = "save the file as plain text without the mark"};
    if (mark.name == "UTF-8") plain.edits = {{at, ""}}, plain.sure = true;
    found.hints.push_back(std::move(plain));
    findings_.add(std::move(found));
  }
}

void textchecks::line(const optxv_place& where, std::string_view text) {
  if (where.line == 1) checkmark(where, text);
  const std::size_t zero = text.find('\0');
  if (zero == text.npos || zerotold_ || text.starts_with('*')) return;
  zerotold_ = true;
  place at = where;
  at.column = static_cast<std::int64_t>(zero) + 1;
  at.length = 1;
  findings_.add(
      own(ownfinding::zerobyte, at, "the line has a zero byte in it; is this a text file?"));
}

void textchecks::cut(const optxv_cut& cut) {
  if (at_.idle() || at_.source().text.starts_with('*')) return;
  for (const cutrow& row : cutrows) {
    if (row.what != cut.what) continue;
    finding found = own(row.finding, cut.place, textof(row, cut));
    if (cut.what == optxv_cut_number)
      findings_.addunlesstold(std::move(found));
    else
      findings_.add(std::move(found));
  }
}

/// Text of blanks alone is no loss.
void textchecks::ended(const optxv_place& where) {
  const std::string_view tail = fromline(definition_, where.line);
  if (tail.find_first_not_of(" \t\r\n") == tail.npos) return;
  finding found = own(ownfinding::definitionended, where,
                      "the definition ends here, since the line neither begins a record nor "
                      "continues one");
  const std::size_t lost = countrecords(tail);
  if (lost > 0)
    found.notes.push_back(
        {counted(lost, "record") + " further down " + (lost == 1 ? "is" : "are") + " not read",
         {}});
  found.hints.push_back({"", std::string(advice(tail))});
  findings_.add(std::move(found));
}

}  // namespace command
