#include "analysis/textchecks.h"

#include <array>

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
    found.hints.push_back({"", "save the file as plain text without the mark"});
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

}  // namespace command
