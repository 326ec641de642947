#include "options/messages.h"

#include <algorithm>

#include "foundation/numtext.h"
#include "foundation/runtime.h"
#include "foundation/strutilx.h"
#include "language/listener.h"
#include "language/miniparser.h"
#include "options/zmaoptions.h"

namespace optxv {

namespace {

void* kindword(messagekind kind) {
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(kind));
}

messagekind kindat(const txstringlist& queue, std::int32_t index) {
  return static_cast<messagekind>(reinterpret_cast<std::uintptr_t>(queue.getobject(index)));
}

}  // namespace

/// If the last message is the enter message to which this leave message belongs, deletes it and
/// gives true.
bool tzmaoptions::undoenter(messagekind kind, std::string_view text) {
  const std::int32_t last = messagelist.count() - 1;
  if (kind != optMsgFileLeave || last < 0 || kindat(messagelist, last) != optMsgFileEnter ||
      messagelist.getname(last) != text)
    return false;
  messagelist.delete_(last);
  messageplaces.truncate(last);
  messagedetails.truncate(last);
  return true;
}

/// Adds a text to the queue, after what tells its line, and gives its number.
std::int32_t tzmaoptions::enqueue(messagekind kind, std::string_view line, std::string_view text,
                                  const messagefacts& facts, const textplace& place) {
  const std::int32_t index = messagelist.addobject(
      line.empty() ? text : std::string_view(concat(line, text)), kindword(kind));
  if (place.known()) messageplaces.set(index, {place, assigning.source});
  if (facts.fault != optxv_fault_none || !line.empty())
    messagedetails.add(index, line.size(), facts);
  return index + 1;
}

/// Closes the queue with the marker that it is full.
void tzmaoptions::closequeue() {
  const shortstring text = concat("Maximum of ", inttostr(maximummessages), " messages reached");
  const messagefacts facts = {.fault = optxv_fault_queue_full};
  const std::int32_t number = enqueue(optMsgTooManyMsgs, {}, text, facts, {});
  if (told) tellmessage(number, optMsgTooManyMsgs, text, facts, {});
}

void tzmaoptions::addmessage(messagekind kind, std::string_view text, const messagefacts& facts) {
  notefault(kind);
  const textplace place = facts.place.known() ? facts.place : assigning.at;
  std::int32_t number = 0;
  if (undoenter(kind, text) || queueclosed()) {
    // Nothing is added.
  } else if (messagelist.count() == maximummessages) {
    closequeue();
  } else if (messagekinds[kind].located && parser != nullptr && parser->linenr() != 0) {
    number = enqueue(kind, concat("line ", inttostr(parser->linenr()), ": "), text, facts, place);
  } else if (messagekinds[kind].located && !outersource.empty()) {
    number = enqueue(kind, concat(outersource, ": "), text, facts, place);
  } else {
    number = enqueue(kind, {}, text, facts, place);
  }
  if (told) tellmessage(number, kind, text, facts, place);
}

void tzmaoptions::tellmessage(std::int32_t number, messagekind kind, std::string_view text,
                              const messagefacts& facts, const textplace& place) const {
  told->tell(&optxv_listener::message, {.number = number,
                                        .kind = kind,
                                        .fault = facts.fault,
                                        .detail = facts.detail ? 1 : 0,
                                        .option = facts.option,
                                        .field = facts.field,
                                        .text = textof(text),
                                        .about = textof(facts.about),
                                        .seen = textof(facts.seen),
                                        .place = told->placed(place)});
}

optxv_message tzmaoptions::messageinfo(std::int32_t number) const {
  const messagedetail& known = messagedetails.get(number - 1);
  std::string_view text = messagelist.getname(number - 1);
  text.remove_prefix(static_cast<std::size_t>(known.skipped));
  return {.number = number,
          .kind = kindat(messagelist, number - 1),
          .fault = known.fault,
          .detail = known.detail ? 1 : 0,
          .option = known.option,
          .field = known.field,
          .text = textof(text),
          .about = textof(known.about),
          .seen = textof(known.seen),
          .place = {}};
}

void tzmaoptions::optclearmessages() {
  messagelist.clear();
  messageplaces.truncate(0);
  messagedetails.truncate(0);
}

void tzmaoptions::addfilefailure(messagekind kind, std::int32_t fault, std::string_view words,
                                 std::string_view filename, int code, std::string_view indent) {
  addmessage(kind, concat(words, quoted{filename}), {.fault = fault, .about = filename});
  addmessage(kind, concat(indent, "Error code = ", inttostr(code), "; ", syserrormessage(code)),
             {.fault = optxv_fault_system, .about = filename, .detail = true});
}

int tzmaoptions::readfailure(messagekind kind, std::string_view words, std::string_view filename) {
  const int code = parser->failure();
  if (code == 0) return 0;
  ioresult();
  assigning.at = {parser->linenr(), 1, 0};
  addfilefailure(kind, optxv_fault_cannot_read, words, filename, code);
  return code;
}

// --- Facts for the listener --------------------------------------------------------------------

void tzmaoptions::stored(const toption& option, std::int32_t which) {
  if (option.position < 0) return;
  if (option.position >= origins.count()) origins.grow(getcount());
  origins.set(option.position, assigning);
  if (told && told->hears(&optxv_listener::stored))
    told->tell(&optxv_listener::stored, {.option = option.position + 1,
                                         .which = which,
                                         .road = assigning.road,
                                         .through = assigning.through,
                                         .place = told->placed(assigning.at)});
}

void tzmaoptions::beginsource(tminiparser& reader, std::int32_t kind, std::string_view name) {
  const textplace from = assigning.at;
  assigning = {.source = sources.number(name), .road = roadEntry};
  reader.reportto(told ? &*told : nullptr, &messageplaces, assigning.source);
  if (told) told->enter(kind, sources.name(assigning.source), from);
}

void tzmaoptions::endsource(std::int32_t error) {
  if (told) told->leave(error);
}

void tzmaoptions::abandonsources(std::int32_t error) {
  while (told && told->reading()) told->leave(error);
}

namespace {

constexpr std::array<const char*, optxv_faults> faultnames = {
    "none",
    "key-expected",
    "bad-separator",
    "unknown-option",
    "value-expected",
    "remainder",
    "deprecated",
    "obsolete",
    "quote",
    "integer-expected",
    "real-expected",
    "boolean-expected",
    "range",
    "unknown-value",
    "list-overflow",
    "nesting",
    "handed-on",
    "own",
    "allowed-range",
    "allowed-values",
    "system",
    "cannot-open",
    "cannot-read",
    "cannot-write",
    "file-nesting",
    "queue-full",
    "suffix-expected",
    "unknown-suffix",
    "symbol-expected",
    "index-expected",
    "index-not-allowed",
    "index-too-long",
    "index-not-controlled",
    "too-many-indices",
    "bracket-expected",
    "dollar-expected",
    "name-too-long",
    "bad-field",
    "default-range",
    "default-unknown",
    "duplicate-option",
    "duplicate-member",
    "duplicate-synonym",
    "duplicate-group",
    "duplicate-groupnumber",
    "duplicate-indicator",
    "unknown-type",
    "unknown-modifier",
    "modifier-not-allowed",
    "unknown-member",
    "unknown-target",
    "unknown-marked",
    "unknown-action",
    "unknown-lookup",
    "comma",
    "nearest",
};

constexpr std::array<const char*, optxv_fields> fieldnames = {
    "none",   "record", "type",   "usermap",  "default",    "low",    "high",
    "hc",     "group",  "text",   "longhelp", "item",       "member", "target",
    "action", "number", "marked", "heading",  "characters",
};

template <std::size_t Count>
const char* nameat(const std::array<const char*, Count>& names, std::int32_t number) {
  const auto index = static_cast<std::size_t>(number);
  return number >= 0 && index < Count ? names[index] : nullptr;
}

// If a name is left out, the last one is a null pointer.
static_assert(faultnames.back() != nullptr && fieldnames.back() != nullptr);

}  // namespace

const char* faultname(std::int32_t fault) {
  return nameat(faultnames, fault);
}

const char* fieldname(std::int32_t field) {
  return nameat(fieldnames, field);
}

void detaillist::add(std::int32_t index, std::size_t skipped, const messagefacts& facts) {
  details_.push_back({.index = index,
                      .fault = facts.fault,
                      .option = facts.option,
                      .field = facts.field,
                      .skipped = static_cast<std::int32_t>(skipped),
                      .detail = facts.detail,
                      .about = std::string(facts.about),
                      .seen = std::string(facts.seen)});
}

void detaillist::truncate(std::int32_t index) {
  while (!details_.empty() && details_.back().index >= index) details_.pop_back();
}

const messagedetail& detaillist::get(std::int32_t index) const {
  static const messagedetail none;
  const auto found = std::lower_bound(
      details_.begin(), details_.end(), index,
      [](const messagedetail& each, std::int32_t wanted) { return each.index < wanted; });
  return found != details_.end() && found->index == index ? *found : none;
}

// --- Counting ----------------------------------------------------------------------------------

std::int32_t tzmaoptions::errorssince(std::int32_t first) const {
  std::int32_t errors = 0;
  for (std::int32_t i = first; i < messagelist.count(); ++i)
    if (messagekinds[kindat(messagelist, i)].counted) ++errors;
  return errors;
}

void tzmaoptions::optgetmessage(std::int32_t number, shortstring& text, std::int32_t& kind) const {
  if (number < 1 || number > messagelist.count()) {
    text = concat("Bad message number = ", inttostr(std::int64_t{number} - 1));
    kind = optMsgUserError;
    return;
  }
  const messagekind found = kindat(messagelist, number - 1);
  const messagerow& row = messagekinds[found];
  const std::string_view stored = messagelist.getname(number - 1);
  text = row.quotes ? concat(row.prefix, quoted{stored}) : concat(row.prefix, stored);
  kind = found;
}

void tzmaoptions::opterrorcount(std::int32_t& errors, std::int32_t& warnings) const {
  errors = 0;
  warnings = 0;
  for (std::int32_t i = 0; i < messagelist.count(); ++i) {
    const severity reported = messagekinds[kindat(messagelist, i)].reported;
    if (reported == severity::error) ++errors;
    if (reported == severity::warning) ++warnings;
  }
}

void tzmaoptions::optechoset(std::int32_t flag) {
  echoflag = flag != 0;
  if (parser != nullptr) parser->echoset(echoflag);
}

}  // namespace optxv
