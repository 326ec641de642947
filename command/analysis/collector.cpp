#include "analysis/collector.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <new>

#include "optxv/optxv.h"

namespace command {
namespace {

/// The severity of each kind of message; no row for what is no finding.
struct kindrow {
  std::int32_t kind;
  severity level;
};
constexpr std::array<kindrow, 7> kindrows = {{{optMsgInputEcho, severity::plain},
                                              {optMsgHelp, severity::plain},
                                              {optMsgDefineError, severity::error},
                                              {optMsgValueError, severity::error},
                                              {optMsgValueWarning, severity::warning},
                                              {optMsgDeprecated, severity::warning},
                                              {optMsgUserError, severity::error}}};

const kindrow* kindof(const optxv_message& message) {
  const auto* row = std::ranges::find(kindrows, message.kind, &kindrow::kind);
  const bool marker = message.fault == optxv_fault_queue_full;
  return row == kindrows.end() || marker ? nullptr : row;
}

std::string trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return std::string(text);
}

/// Whether the reader that met a fault goes on in the middle of the entry, so that what is left of
/// it is read as the next key.
bool leavesrest(std::int32_t fault) {
  return fault == optxv_fault_unknown_option ||
         (fault >= optxv_fault_suffix_expected && fault <= optxv_fault_name_too_long);
}

bool sameline(const place& left, const place& right) {
  return left.line == right.line && left.file == right.file && left.line > 0;
}

/// Whether two places begin at the same text, with a quote in front or without.
bool sameplace(const place& left, const place& right) {
  const std::int64_t apart = left.column - right.column;
  return sameline(left, right) && apart >= -1 && apart <= 1;
}

std::string fieldname(std::int32_t field) {
  const char* name = optxv_field_name(field);
  return name == nullptr ? "" : name;
}

std::string typewords() {
  std::string words;
  for (const recordform& each : recordforms())
    words += (words.empty() ? "" : " ") + std::string(each.word);
  return words;
}

}  // namespace

void collector::hold(finding found, bool droppable) {
  flush();
  if (!found.source) found.source = at_.lineof(found.where);
  held_ = std::move(found);
  droppable_ = droppable;
}

void collector::add(finding found) {
  hold(std::move(found), false);
}

void collector::addunlesstold(finding found) {
  hold(std::move(found), true);
}

void collector::addnote(std::string text, const place& where) {
  if (held_) held_->notes.push_back({std::move(text), where});
}

void collector::flush() {
  if (!held_) return;
  if (held_->level == severity::error) total_.errors++;
  if (held_->level == severity::warning) total_.warnings++;
  take_(*held_);
  held_.reset();
}

void collector::left(const optxv_source&, std::int32_t) {
  if (at_.idle()) flush();
}

/// Whether a message only follows from the one before. A field that is missing misses all that
/// follow it; the rest of a line that is given up gives one message more; and what is left of a
/// faulty entry is no key.
bool collector::follows(const optxv_message& message) const {
  if (!held_ || !sameline(cause_.where, place(message.place))) return false;
  const bool nokey = cause_.keys == at_.source().keys;
  switch (cause_.fault) {
    case optxv_fault_remainder:
      return true;
    case optxv_fault_bad_field:
      return message.fault == optxv_fault_default_range ||
             (message.fault == optxv_fault_bad_field && cause_.where.length == 0 &&
              cause_.where == place(message.place));
    default:
      return leavesrest(cause_.fault) && nokey &&
             (message.fault == optxv_fault_key_expected || leavesrest(message.fault));
  }
}

void collector::message(const optxv_message& message) {
  const kindrow* row = kindof(message);
  if (row == nullptr || at_.idle()) return;  // what is called outside of a read is no finding
  if (message.detail != 0 && held_ && held_->kind == message.kind) {
    addnote(trimmed(viewof(message.text)));
  } else if (row->level != severity::plain && follows(message)) {
    addnote("it also leads to: " + std::string(viewof(message.text)));
    if (cause_.fault == optxv_fault_remainder) cause_ = {};  // it leads to one message
  } else {
    add(message);
  }
}

void collector::add(const optxv_message& message) {
  const place where(message.place);
  if (droppable_ && held_ && sameplace(held_->where, where)) held_.reset();
  finding found;
  // The reader looks for a usermap before it tells that it does not know the type of the record.
  if (message.fault == optxv_fault_unknown_type && cause_.fault == optxv_fault_bad_field && held_ &&
      sameline(cause_.where, where)) {
    found.notes.push_back({"it also leads to: " + held_->text, {}});
    held_.reset();
  }
  found.level = kindof(message)->level;
  found.kind = message.kind;
  const char* code = optxv_fault_name(message.fault);
  found.code = code == nullptr || message.fault == optxv_fault_none ? "" : code;
  found.where = where;
  found.text = viewof(message.text);
  cause_ = {message.fault, where, at_.source().keys};
  explain(found, message);
  hold(std::move(found), false);
}

void collector::explain(finding& found, const optxv_message& message) {
  if (message.fault == optxv_fault_none) return;
  if (message.kind == optMsgDefineError) explainrecord(found, message);
  addhints(found, message, hints_);
  const std::string_view file = viewof(message.about);
  if (message.fault != optxv_fault_cannot_open || file.starts_with('/')) return;
  std::error_code fault;
  const std::string here = std::filesystem::current_path(fault).string();
  if (fault == std::errc::not_enough_memory) throw std::bad_alloc();
  found.notes.push_back(
      {fault ? "the current folder cannot be found" : "looked for in \"" + here + '"', {}});
}

/// What the record should hold, and what it has.
void collector::explainrecord(finding& found, const optxv_message& message) const {
  const readrecord& record = at_.record();
  const auto note = [&](std::string text) { found.notes.push_back({std::move(text), {}}); };
  const recordform* form = recordformof(record.type);
  if (message.fault == optxv_fault_unknown_type) {
    found.nearest =
        symbols::nearesttype(viewof(message.seen).empty() ? record.type : viewof(message.seen));
    if (found.nearest.empty()) note("expected one of: " + typewords());
  }
  if (message.fault == optxv_fault_bad_field && form != nullptr) {
    note("expected: " + std::string(form->fields));
    const std::string name = fieldname(message.field);
    const std::string_view seen = viewof(message.seen);
    note(found.where.length == 0 ? "the line ends before " + name
                                 : "saw \"" + std::string(seen) + "\" as " + name);
  }
  if (message.fault == optxv_fault_default_range) {
    std::string values;
    for (const std::int32_t field : {optxv_field_default, optxv_field_low, optxv_field_high})
      if (const readfield* read = record.find(field))
        values += (values.empty() ? "" : ", ") + fieldname(field) + ' ' + read->text;
    note(values);
  }
}

}  // namespace command
