#include "layout/recordpieces.h"

namespace command {

recordpieces::recordpieces(const std::vector<fileline>& lines)
    : file_(lines), lines_(lines.size()) {
  constexpr std::size_t fieldsofline = 6;
  fields_.reserve(lines.size() * fieldsofline);
}

void recordpieces::left(const optxv_source&, std::int32_t) {
  finish();
}

void recordpieces::line(const optxv_place& where, std::string_view text) {
  finish();
  current_ = static_cast<std::size_t>(where.line);
  if (current_ > lines_.size()) return void(current_ = 0);
  linedrecord& line = lines_[current_ - 1];
  line.first = fields_.size();
  line.faulty = text != file_[current_ - 1].body || text.find('\r') != text.npos ||
                text.find('\0') != text.npos;
  if (text.empty()) line.what = linedrecord::kind::blank;
}

void recordpieces::comment(const optxv_place&) {
  if (current_ > 0) lines_[current_ - 1].what = linedrecord::kind::comment;
}

void recordpieces::cut(const optxv_cut& cut) {
  if (cut.what != optxv_cut_number) keep(cut.place.line);
}

void recordpieces::field(const optxv_field& field) {
  if (current_ == 0 || static_cast<std::size_t>(field.place.line) != current_)
    return keep(field.place.line);
  const auto from = static_cast<std::uint32_t>(field.place.column - 1);
  const auto size = static_cast<std::uint32_t>(field.place.length);
  linedrecord& line = lines_[current_ - 1];
  line.what = field.field == optxv_field_record ? linedrecord::kind::head
              : line.count == 0                 ? linedrecord::kind::further
                                                : line.what;
  fields_.push_back({field.field, {from, from + size}});
  line.count++;
}

void recordpieces::ended(const optxv_place& where) {
  keep(where.line);
}

void recordpieces::message(const optxv_message& message) {
  if (message.kind == optxv_said_definition_error) keep(message.place.line);
}

/// Has that line, or the one that is being read, stay as it is.
void recordpieces::keep(std::int64_t line) {
  const std::size_t number = line < 1 ? current_ : static_cast<std::size_t>(line);
  if (number >= 1 && number <= lines_.size()) lines_[number - 1].faulty = true;
}

void recordpieces::finish() {
  if (current_ == 0) return;
  linedrecord& line = lines_[current_ - 1];
  if (!assemble(file_[current_ - 1].body, line)) line.faulty = true;
}

/// Whether the fields account for the line; what comes after a blank after the last of them is
/// theirs who wrote it.
bool recordpieces::assemble(std::string_view body, linedrecord& line) const {
  if (line.what != linedrecord::kind::head && line.what != linedrecord::kind::further) return true;
  std::size_t end = 0;
  for (std::size_t i = 0; i < line.count; i++) {
    const piece& where = fields_[line.first + i].where;
    if (where.to > body.size() || where.from < end || !isblank(body.substr(end, where.from - end)))
      return false;
    end = where.to;
  }
  const std::string_view rest = trimmedleft(trimmedright(body.substr(end)));
  if (rest.empty()) return true;
  const auto from = static_cast<std::size_t>(rest.data() - body.data());
  line.rest = {static_cast<std::uint32_t>(from), static_cast<std::uint32_t>(from + rest.size())};
  return from > end;
}

}  // namespace command
