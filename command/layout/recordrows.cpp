#include "layout/recordrows.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "layout/prose.h"
#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr std::size_t gap = 2;     // between columns
constexpr std::size_t indent = 1;  // of a line that continues a record
constexpr std::size_t columncount = 9;

/// What a column holds, and the widest text that others are moved for. The columns of a line that
/// continues a record are the first of those that it needs.
struct columnrow {
  std::int32_t field;
  std::size_t column, widest;
};
constexpr auto columnrows = std::to_array<columnrow>({
    {optxv_field_record, 0, 36},
    {optxv_field_type, 1, 12},
    {optxv_field_usermap, 2, 12},
    {optxv_field_action, 2, 12},
    {optxv_field_groupnumber, 2, 12},
    {optxv_field_target, 2, 36},
    {optxv_field_default, 3, 18},
    {optxv_field_low, 4, 18},
    {optxv_field_high, 5, 18},
    {optxv_field_item, 0, 24},
    {optxv_field_marked, 0, 36},
    {optxv_field_helpcontext, 6, 12},
    {optxv_field_group, 7, 12},
    {optxv_field_text, 8, 0},
    {optxv_field_heading, 8, 0},
    {optxv_field_characters, 8, 0},
});

const columnrow* rowof(std::int32_t field) {
  const auto* row = std::ranges::find(columnrows, field, &columnrow::field);
  return row == columnrows.end() ? nullptr : row;
}

/// Records with the same fields stand below one another, and so do the lines that continue them.
enum class family : std::uint8_t { option, group, synonym, mark, file };

family familyof(std::string_view type) {
  const std::string word = folded(type);
  if (word == "group") return family::group;
  if (word == "synonym") return family::synonym;
  if (word == "deprecated" || word == "obsolete") return family::mark;
  if (word == "lookup" || word == "indicator" || word == "eolcomm") return family::file;
  return family::option;
}

/// The widths of the columns of lines below one another; 0 for a column that nobody has.
using widths = std::array<std::size_t, columncount>;

class writer {
 public:
  writer(const std::vector<fileline>& lines, const recordpieces& pieces, std::size_t width)
      : lines_(lines), pieces_(pieces), width_(width) {}

  std::string text();

 private:
  std::size_t sectionend(std::size_t from) const;
  std::size_t bodyend(std::size_t from) const;
  bool ishead(std::size_t line) const { return is(line, linedrecord::kind::head); }
  bool is(std::size_t line, linedrecord::kind what) const {
    return !pieces_.line(line).faulty && pieces_.line(line).what == what;
  }
  family familyat(std::size_t line) const;
  std::int32_t firstfield(std::size_t line) const {
    return pieces_.fields(pieces_.line(line))->field;
  }
  bool ishelp(std::size_t line) const {
    return is(line, linedrecord::kind::further) && firstfield(line) == optxv_field_longhelp;
  }
  widths measured(std::size_t from, std::size_t to, linedrecord::kind what) const;
  void widen(widths& to, std::size_t line) const;
  void section(std::size_t from, std::size_t to);
  void body(std::size_t from, std::size_t to);
  void help(std::size_t from, std::size_t to, std::size_t margin);
  std::size_t marginof(std::size_t from, std::size_t to) const;
  void columnsof(std::size_t line, const widths& columns, std::size_t from);
  void members(std::size_t line);
  void plain(std::size_t line);
  void put(std::size_t line, std::string_view text);

  const std::vector<fileline>& lines_;
  const recordpieces& pieces_;
  std::size_t width_;
  std::string text_;
};

std::string writer::text() {
  for (std::size_t from = 0; from < lines_.size();) {
    const std::size_t to = sectionend(from);
    section(from, to);
    from = to;
  }
  return std::move(text_);
}

family writer::familyat(std::size_t line) const {
  const linedrecord& told = pieces_.line(line);
  if (told.count < 2) return family::option;
  const std::string_view type = pieces_.fields(told)[1].where.of(lines_[line].body);
  return familyof(type.substr(0, type.rfind('.')));
}

/// A section goes on to a record of another family, or to one with an empty line in front of it.
std::size_t writer::sectionend(std::size_t from) const {
  bool begun = false, parted = false;
  family now = family::option;
  for (std::size_t line = from; line < lines_.size(); line++) {
    if (is(line, linedrecord::kind::blank)) parted = true;
    if (is(line, linedrecord::kind::further)) parted = false;
    if (!ishead(line)) continue;
    if (begun && (parted || familyat(line) != now)) return line;
    now = familyat(line);
    begun = true;
    parted = false;
  }
  return lines_.size();
}

/// The end of what comes up to the next record.
std::size_t writer::bodyend(std::size_t from) const {
  while (from < lines_.size() && !ishead(from)) from++;
  return from;
}

void writer::widen(widths& to, std::size_t line) const {
  const linedrecord& told = pieces_.line(line);
  for (std::size_t i = 0; i < told.count; i++) {
    const linedfield& field = pieces_.fields(told)[i];
    const columnrow* row = rowof(field.field);
    if (row == nullptr || field.where.empty()) continue;
    const std::size_t width = columns(field.where.of(lines_[line].body));
    if (width <= row->widest) to[row->column] = std::max(to[row->column], width);
  }
}

widths writer::measured(std::size_t from, std::size_t to, linedrecord::kind what) const {
  widths result = {};
  for (std::size_t line = from; line < to; line++)
    if (is(line, what)) widen(result, line);
  return result;
}

void writer::section(std::size_t from, std::size_t to) {
  const widths heads = measured(from, to, linedrecord::kind::head);
  while (from < to) {
    if (ishead(from)) columnsof(from++, heads, 0);
    const std::size_t end = std::min(bodyend(from), to);
    body(from, end);
    from = end;
  }
}

/// What comes after a record, up to the next one.
void writer::body(std::size_t from, std::size_t to) {
  const widths items = measured(from, to, linedrecord::kind::further);
  const std::size_t margin = marginof(from, to);
  for (std::size_t line = from; line < to; line++) {
    if (ishelp(line)) {
      std::size_t end = line;
      while (end < to && ishelp(end)) end++;
      help(line, end, margin);
      line = end - 1;
    } else if (!is(line, linedrecord::kind::further)) {
      plain(line);
    } else if (firstfield(line) == optxv_field_member) {
      members(line);
    } else {
      columnsof(line, items, indent);
    }
  }
}

/// Writes the fields of a line, each in its column, or as near to that as it can be.
void writer::columnsof(std::size_t line, const widths& columns, std::size_t from) {
  const linedrecord& told = pieces_.line(line);
  std::array<std::size_t, columncount> starts = {};
  for (std::size_t i = 0, at = from; i < columncount; i++) {
    starts[i] = at;
    if (columns[i] > 0) at += columns[i] + gap;
  }
  std::string text(from, ' ');
  std::size_t now = 0;
  const auto add = [&](std::string_view piece, std::size_t start) {
    if (now > 0) {
      const std::size_t blanks = std::max(start > now ? start - now : 0, gap);
      text.append(blanks, ' ');
      now += blanks;
    } else {
      now = from;
    }
    text += piece;
    now += command::columns(piece);
  };
  for (std::size_t i = 0; i < told.count; i++) {
    const linedfield& field = pieces_.fields(told)[i];
    const columnrow* row = rowof(field.field);
    if (field.where.empty()) continue;
    add(field.where.of(lines_[line].body), row == nullptr ? 0 : starts[row->column]);
  }
  if (!told.rest.empty()) add(told.rest.of(lines_[line].body), starts[columncount - 1]);
  put(line, text);
}

void writer::members(std::size_t line) {
  const linedrecord& told = pieces_.line(line);
  std::string text;
  for (std::size_t i = 0; i < told.count; i++)
    text.append(1, ' ').append(pieces_.fields(told)[i].where.of(lines_[line].body));
  if (!told.rest.empty()) text.append(gap, ' ').append(told.rest.of(lines_[line].body));
  put(line, text);
}

std::size_t writer::marginof(std::size_t from, std::size_t to) const {
  std::size_t margin = longestline;
  for (std::size_t line = from; line < to; line++)
    if (ishelp(line) && !isblank(lines_[line].body))
      margin = std::min(margin, indentation(lines_[line].body));
  return margin;
}

void writer::help(std::size_t from, std::size_t to, std::size_t margin) {
  prose all(width_, margin);
  for (std::size_t line = from; line < to; line++) all.add(lines_[line]);
  all.write(text_);
}

void writer::plain(std::size_t line) {
  const bool comment = is(line, linedrecord::kind::comment);
  put(line, comment ? trimmedright(lines_[line].body) : lines_[line].body);
}

/// Writes a line, or leaves it as it is if it would become too long for a reader.
void writer::put(std::size_t line, std::string_view text) {
  text_ += text.size() > longestline ? lines_[line].body : text;
  text_ += lines_[line].ending;
}

}  // namespace

std::string recordtext(const std::vector<fileline>& lines, const recordpieces& pieces,
                       std::size_t width) {
  return writer(lines, pieces, width).text();
}

}  // namespace command
