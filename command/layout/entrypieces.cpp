#include "layout/entrypieces.h"

#include <algorithm>

namespace command {
namespace {

piece pieceof(const optxv_place& where) {
  const auto from = static_cast<std::uint32_t>(std::max<std::int64_t>(where.column, 1) - 1);
  return {from, from + static_cast<std::uint32_t>(std::max<std::int64_t>(where.length, 0))};
}

std::string_view between(std::string_view body, std::size_t from, std::size_t to) {
  return body.substr(from, to - from);
}

bool isfault(const optxv_message& message) {
  return message.fault != optxv_fault_none && message.fault != optxv_fault_own &&
         (message.kind == optxv_said_definition_error || message.kind == optxv_said_value_error ||
          message.kind == optxv_said_error);
}

/// Only of a plain entry the value may be left out.
bool complete(const linedentry& entry) {
  return entry.form == entryform::plain || !entry.values[0].empty();
}

}  // namespace

entrypieces::entrypieces(const std::vector<fileline>& lines, const instructions& words, bool tokens)
    : file_(lines), words_(words), tokens_(tokens), lines_(lines.size()) {
  entries_.reserve(lines.size());
}

// --- What is told

void entrypieces::left(const optxv_source&, std::int32_t) {
  finish();
}

/// A carriage return may be the end of a line where others stand in front of it, and a zero byte
/// may be the end of a text for somebody: such lines are left alone.
void entrypieces::line(const optxv_place& where, std::string_view text) {
  finish();
  current_ = static_cast<std::size_t>(where.line);
  if (current_ > lines_.size()) return void(current_ = 0);
  linedtext& line = lines_[current_ - 1];
  line.tokens = tokens_;
  line.faulty = text != file_[current_ - 1].body || text.find('\r') != text.npos ||
                text.find('\0') != text.npos;
}

void entrypieces::comment(const optxv_place& where) {
  if (current_ == 0 || static_cast<std::size_t>(where.line) != current_) return keep(where.line);
  linedtext& line = lines_[current_ - 1];
  if (!line.comment.empty()) return keep(where.line);
  line.comment = pieceof(where);
}

void entrypieces::cut(const optxv_cut& cut) {
  if (cut.what != optxv_cut_number) keep(cut.place.line);
}

void entrypieces::key(const optxv_key& key) {
  lastkey_ = key.option;
  constexpr std::int32_t ownkey = 2;  // dashes in front of a key of the user's own
  const bool word = key.option == 0 && key.dashes < ownkey;
  if (!add(word ? told::word : told::key, key.place, key.option)) return;
  piece& where = parts_.back().where;
  where.from -= std::min(where.from, static_cast<std::uint32_t>(key.dashes));
  if (words_.modes.contains(key.option)) lines_[current_ - 1].switched = true;
}

void entrypieces::separator(const optxv_place& where) {
  add(told::separator, where);
}

void entrypieces::value(const optxv_value& value) {
  if (value.option != 0 && words_.modes.contains(value.option)) tokens_ = isno(viewof(value.text));
  if (value.written.length <= 0) return;
  add(told::value, value.written);
  if (value.good == 0 || value.quotes == optxv_quotes_open) keep(value.written.line);
}

/// The parts of an entry that ends here may be on earlier lines, which then stay with this one.
void entrypieces::dotoption(const optxv_entry& entry) {
  add(told::dot, entry.place);
}

void entrypieces::indicator(const optxv_entry& entry) {
  add(told::symbol, entry.place);
  add(told::symbol, entry.second_place);
}

void entrypieces::message(const optxv_message& message) {
  if (isfault(message)) keep(message.place.line);
}

/// Takes up a part of the line; false if it is on another one.
bool entrypieces::add(told what, const optxv_place& where, std::int32_t option) {
  if (current_ == 0) return false;
  if (static_cast<std::size_t>(where.line) != current_) {
    keep(where.line);
    return false;
  }
  parts_.push_back({what, option, pieceof(where)});
  return true;
}

/// Has the lines from that one to the one that is being read stay as they are.
void entrypieces::keep(std::int64_t from) {
  if (current_ == 0) return;
  const auto last = static_cast<std::int64_t>(current_);
  for (std::int64_t line = from < 1 || from > last ? last : from; line <= last; line++)
    lines_[static_cast<std::size_t>(line) - 1].faulty = true;
}

/// What a word means is asked of the library itself.
bool entrypieces::isno(std::string_view word) {
  if (!judge_) {
    judge_.emplace();
    judge_->read_definition_text("switch", "lines boolean 1 1 1 1\n");
  }
  std::int32_t value = 1;
  const std::int32_t number = 2;  // after Help
  optxv_reset(judge_->handle(), number);
  optxv_parse_value(judge_->handle(), number, 1, word.data(), word.size());
  optxv_get_integer_nr(judge_->handle(), number, 1, &value);
  optxv_clear_messages(judge_->handle());
  return value == 0;
}

// --- What a line is

void entrypieces::finish() {
  if (current_ == 0) return;
  linedtext& line = lines_[current_ - 1];
  const std::string_view body = file_[current_ - 1].body;
  line.first = entries_.size();
  if (assemble(body, line)) {
    line.count = entries_.size() - line.first;
    line.what = line.count > 0          ? linedtext::kind::entries
                : !line.comment.empty() ? linedtext::kind::comment
                                        : linedtext::kind::blank;
  } else {
    entries_.resize(line.first);
  }
  parts_.clear();
}

/// Makes entries of the parts; false if they do not account for every byte of the line.
bool entrypieces::assemble(std::string_view body, linedtext& line) {
  std::ranges::stable_sort(parts_, {}, [](const part& each) { return each.where.from; });
  std::size_t end = 0;
  bool first = true;
  for (const part& each : parts_) {
    if (each.where.to > body.size() || each.where.from < end) return false;
    const bool begins = each.what == told::key || each.what == told::word || each.what == told::dot;
    if (begins ? !begin(body, each, end, first) : first || !extend(body, each, end)) return false;
    first = false;
  }
  return endswell(body, line, end);
}

bool entrypieces::begin(std::string_view body, const part& next, std::size_t& end, bool first) {
  if (!first && !complete(entries_.back())) return false;
  std::string_view gap = trimmedleft(between(body, end, next.where.from));
  const bool comma = !first && gap.starts_with(',');
  if (comma) gap.remove_prefix(1);
  if (!isblank(gap)) return false;
  linedentry entry;
  entry.form = next.what == told::key   ? entryform::plain
               : next.what == told::dot ? entryform::dot
                                        : entryform::indicator;
  entry.option = next.option;
  entry.aftercomma = comma;
  entry.head = next.where;
  entries_.push_back(entry);
  end = next.where.to;
  return true;
}

bool entrypieces::extend(std::string_view body, const part& next, std::size_t& end) {
  linedentry& entry = entries_.back();
  const bool headonly = entry.separator.empty() && entry.values[0].empty();
  const std::string_view gap = between(body, end, next.where.from);
  end = next.where.to;
  if (next.what == told::symbol) return entry.form == entryform::indicator && headonly;
  if (entry.form != entryform::plain && headonly) {
    const std::string_view head = between(body, entry.head.from, next.where.from);
    entry.head.to = entry.head.from + static_cast<std::uint32_t>(trimmedright(head).size());
  } else if (!isblank(gap)) {
    return false;
  }
  if (next.what == told::separator) {
    entry.separator = next.where;
    return headonly;
  }
  if (!entry.values[1].empty()) return false;
  entry.oneblank = !gap.empty();
  entry.values[entry.values[0].empty() ? 0 : 1] = next.where;
  return true;
}

bool entrypieces::endswell(std::string_view body, linedtext& line, std::size_t end) const {
  if (!parts_.empty() && !complete(entries_.back())) return false;
  if (line.comment.empty()) return isblank(body.substr(end));
  return line.comment.from >= end && line.comment.to == body.size() &&
         isblank(between(body, end, line.comment.from));
}

}  // namespace command
