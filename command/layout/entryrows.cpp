#include "layout/entryrows.h"

#include <algorithm>
#include <array>

#include "text/printable.h"

namespace command {
namespace {

/// What is wider than this stands for itself: the rest of its paragraph is not moved for its sake.
constexpr std::size_t widesthead = 40, widestentry = 60;
/// A line of more bytes is not split, so that its parts fit into lines whatever blanks they get.
constexpr std::size_t longestsplit = 800;
/// Blanks in front of a comment.
constexpr std::size_t commentgap = 2;
constexpr std::size_t entryforms = 3;

// --- Pieces in one form

/// With one blank for any number of them.
std::string oneblanked(std::string_view text) {
  std::string result;
  for (std::string_view rest = trimmedleft(text); !rest.empty(); rest = trimmedleft(rest)) {
    const std::size_t end = std::min(rest.find_first_of(" \t"), rest.size());
    result.append(result.empty() ? "" : " ").append(rest.substr(0, end));
    rest.remove_prefix(end);
  }
  return result;
}

/// Whether a character is one of those.
bool among(char c, std::string_view all) {
  return all.find(c) != all.npos;
}

/// A symbol with its indices: no blanks but one after a comma that had some. What is between quotes
/// stays.
std::string tidysymbol(std::string_view text) {
  std::string result;
  char quote = '\0';
  bool blank = false;
  for (const char c : text) {
    if (quote == '\0' && (c == ' ' || c == '\t')) {
      blank = true;
      continue;
    }
    if (blank && among(result.back(), ",") && !among(c, ")]}")) result += ' ';
    blank = false;
    if (quote != '\0')
      quote = c == quote ? '\0' : quote;
    else if (c == '\'' || c == '"')
      quote = c;
    result += c;
  }
  return result;
}

// --- Columns

/// The columns of a paragraph.
struct alignment {
  struct columns {
    std::size_t head = 0, separator = 0;
  };
  std::array<columns, entryforms> forms = {};
  std::size_t comment = 0;
};

bool incolumns(const entryrow& row) {
  return row.what == entryrow::kind::one || row.what == entryrow::kind::many;
}

void widen(std::size_t& column, std::size_t width, std::size_t limit) {
  if (width <= limit) column = std::max(column, width);
}

/// An entry, without its comment, in its columns.
std::string entrytext(const entryrow& row, const alignment::columns& columns) {
  std::string line(row.head);
  if (row.value.empty()) return line;
  const std::size_t width = command::columns(row.head);
  if (width > widesthead) {
    line.append(row.separator.empty() ? "" : " ").append(row.separator);
  } else {
    const std::size_t separators = columns.separator > 0 ? columns.separator + 1 : 0;
    line.append(columns.head + separators - row.separator.size() - width, ' ');
    line += row.separator;
  }
  return line.append(" ").append(row.value);
}

alignment aligned(const entryrow* first, const entryrow* last) {
  alignment result;
  for (const entryrow* row = first; row != last; ++row) {
    if (row->what != entryrow::kind::one || row->value.empty()) continue;
    auto& columns = result.forms[static_cast<std::size_t>(row->form)];
    widen(columns.head, command::columns(row->head), widesthead);
    if (command::columns(row->head) <= widesthead)
      columns.separator = std::max(columns.separator, row->separator.size());
  }
  for (const entryrow* row = first; row != last; ++row)
    if (incolumns(*row) && !row->comment.empty())
      widen(result.comment,
            command::columns(entrytext(*row, result.forms[static_cast<std::size_t>(row->form)])),
            widestentry);
  return result;
}

/// Appends a row. A line that would become too long for a reader stays as it was.
void append(std::string& to, const entryrow& row, const alignment& columns) {
  std::string line;
  if (row.what == entryrow::kind::further) {
    line.assign(columns.comment + commentgap, ' ').append(row.comment);
  } else if (incolumns(row)) {
    line = entrytext(row, columns.forms[static_cast<std::size_t>(row.form)]);
    if (!row.comment.empty()) {
      const std::size_t width = command::columns(line);
      line.append(columns.comment > width ? columns.comment - width : 0, ' ');
      line.append(commentgap, ' ').append(row.comment);
    }
  } else {
    line = row.what == entryrow::kind::remark ? row.comment : row.text;
  }
  to += line.size() > longestline && !row.text.empty() ? row.text : std::string_view(line);
  to += row.ending;
}

}  // namespace

entryrows::entryrows(const std::vector<fileline>& lines, const entrypieces& pieces,
                     const instructions& words)
    : words_(words) {
  rows_.reserve(lines.size());
  for (std::size_t i = 0; i < lines.size(); i++)
    add(lines[i], pieces.line(i), pieces.entries(pieces.line(i)));
}

void entryrows::add(const fileline& line, const linedtext& told, const linedentry* entries) {
  entryrow row;
  row.text = line.body;
  row.ending = line.ending;
  switch (told.faulty ? linedtext::kind::kept : told.what) {
    case linedtext::kind::kept:
      rows_.push_back(row);
      return;
    case linedtext::kind::blank:
      row.what = entryrow::kind::blank;
      row.text = {};
      rows_.push_back(row);
      return;
    case linedtext::kind::comment:
      row.comment = trimmedright(told.comment.of(line.body));
      row.what = further(line.body) ? entryrow::kind::further : entryrow::kind::remark;
      rows_.push_back(row);
      return;
    case linedtext::kind::entries:
      if (told.count == 1 || (!told.tokens && !told.switched && line.body.size() <= longestsplit))
        addsplit(line, told, entries);
      else
        addjoined(line, told, entries);
  }
}

/// A comment goes on if it is indented and the line above ends with one.
bool entryrows::further(std::string_view body) const {
  if (rows_.empty() || (!body.starts_with(' ') && !body.starts_with('\t'))) return false;
  const entryrow& above = rows_.back();
  return above.what == entryrow::kind::further || (incolumns(above) && !above.comment.empty());
}

void entryrows::addsplit(const fileline& line, const linedtext& told, const linedentry* entries) {
  for (std::size_t i = 0; i < told.count; i++) {
    entryrow row = one(line, entries[i]);
    const bool last = i + 1 == told.count;
    if (told.count == 1) row.text = line.body;
    if (last) row.comment = trimmedright(told.comment.of(line.body));
    if (!last) row.ending = innerending(line.ending);
    rows_.push_back(row);
  }
}

entryrow entryrows::one(const fileline& line, const linedentry& entry) {
  entryrow row;
  row.what = entryrow::kind::one;
  row.form = entry.form;
  row.option = words_.others.contains(entry.option) ? 0 : entry.option;
  row.head = headof(line.body, entry);
  row.separator = entry.separator.of(line.body);
  row.value = valueof(line.body, entry);
  row.ending = line.ending;
  return row;
}

/// Entries that share a line keep their separators as they are, with blanks around them or without.
void entryrows::addjoined(const fileline& line, const linedtext& told, const linedentry* entries) {
  entryrow row;
  row.what = entryrow::kind::many;
  row.text = line.body;
  row.ending = line.ending;
  std::string text;
  for (std::size_t i = 0; i < told.count; i++) {
    const linedentry& entry = entries[i];
    const std::string_view value = valueof(line.body, entry);
    const bool close = entry.separator.from == entry.head.to && !entry.separator.empty();
    text.append(i == 0 ? "" : entry.aftercomma ? ", " : "  ").append(headof(line.body, entry));
    if (!entry.separator.empty())
      text.append(close ? "" : " ").append(entry.separator.of(line.body));
    if (!value.empty())
      text.append(close && entry.values[0].from == entry.separator.to ? "" : " ").append(value);
  }
  row.head = keep(std::move(text));
  row.comment = trimmedright(told.comment.of(line.body));
  rows_.push_back(row);
}

std::string_view entryrows::headof(std::string_view body, const linedentry& entry) {
  const std::string_view head = entry.head.of(body);
  if (head.find_first_of(" \t") == head.npos) return head;
  if (entry.form == entryform::plain) return keep(oneblanked(head));
  if (entry.form == entryform::dot) return keep(tidysymbol(head));
  const std::size_t word = head.find_first_of(" \t");
  return keep(std::string(head.substr(0, word)) + ' ' + tidysymbol(trimmedleft(head.substr(word))));
}

std::string_view entryrows::valueof(std::string_view body, const linedentry& entry) {
  const std::string_view value = entry.values[0].of(body);
  if (entry.values[1].empty()) return value;
  return keep(std::string(value) + (entry.oneblank ? " " : "") +
              std::string(entry.values[1].of(body)));
}

std::string entryrows::written() const {
  std::string text;
  const entryrow* const end = rows_.data() + rows_.size();
  for (const entryrow* row = rows_.data(); row != end;) {
    const auto* next = std::find_if(
        row, end, [](const entryrow& each) { return each.what == entryrow::kind::blank; });
    if (next != end) ++next;  // an empty line is the last of its paragraph
    const alignment columns = aligned(row, next);
    for (; row != next; ++row) append(text, *row, columns);
  }
  return text;
}

}  // namespace command
