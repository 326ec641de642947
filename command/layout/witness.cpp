#include "layout/witness.h"

#include <algorithm>

#include "layout/filelines.h"

namespace command {
namespace {

// The hash of Fowler, Noll and Vo, with 64 bits.
constexpr std::uint64_t hashstart = 14695981039346656037U, hashfactor = 1099511628211U;

std::uint64_t mixed(std::uint64_t hash, std::int64_t number) {
  return (hash ^ static_cast<std::uint64_t>(number)) * hashfactor;
}
std::uint64_t mixed(std::uint64_t hash, std::string_view text) {
  for (const char c : text) hash = mixed(hash, std::int64_t{static_cast<unsigned char>(c)});
  return mixed(hash, static_cast<std::int64_t>(text.size()));
}
std::uint64_t mixed(std::uint64_t hash, const optxv_text& text) {
  return mixed(hash, viewof(text));
}

/// So that facts of one kind are not taken for those of another.
enum factkind : std::int64_t {
  factdeclared,
  factfield,
  facthelp,
  factended,
  factkey,
  factvalue,
  factstored,
  factdot,
  factindicator,
  factmessage
};

}  // namespace

template <class... Facts>
void witness::note(const Facts&... facts) {
  std::uint64_t hash = ordered_ ? facts_ ^ hashstart : hashstart;
  ((hash = mixed(hash, facts)), ...);
  facts_ = ordered_ ? hash : facts_ + hash;
}

void witness::line(const optxv_place&, std::string_view text) {
  line_ = text;
}

/// Comments may move within the text when it is sorted, and the blanks at their ends go.
void witness::comment(const optxv_place& where) {
  const auto from = std::min(static_cast<std::size_t>(where.column) - 1, line_.size());
  comments_ += mixed(hashstart, trimmedright(std::string_view(line_).substr(from)));
}

void witness::declared(const optxv_declaration& declaration) {
  inhelp_ = false;
  note(factdeclared, declaration.what, declaration.number, declaration.option, declaration.target,
       declaration.name);
}

/// Each word of long help is a fact; an empty line in it is one, too.
void witness::field(const optxv_field& field) {
  const bool further = inhelp_;
  inhelp_ = field.field == optxv_field_longhelp;
  if (!inhelp_) return note(factfield, field.field, field.option, field.good, field.text);
  if (!further) note(facthelp, field.option);
  std::string_view rest = viewof(field.text);
  if (isblank(rest)) note(facthelp, std::string_view());
  while (!(rest = trimmedleft(rest)).empty()) {
    const std::string_view word = rest.substr(0, rest.find_first_of(" \t"));
    note(facthelp, word);
    rest.remove_prefix(word.size());
  }
}

void witness::ended(const optxv_place&) {
  note(factended, std::string_view(line_));
}

void witness::key(const optxv_key& key) {
  note(factkey, key.option, key.synonym, key.dashes, key.text);
}

void witness::value(const optxv_value& value) {
  note(factvalue, value.option, value.which, value.quotes, value.good, value.text);
}

void witness::stored(const optxv_store& store) {
  note(factstored, store.option, store.which, store.road, store.through);
}

void witness::dotoption(const optxv_entry& entry) {
  note(factdot, entry.number, entry.option, entry.name, entry.second);
}

void witness::indicator(const optxv_entry& entry) {
  note(factindicator, entry.number, entry.name, entry.second);
}

void witness::message(const optxv_message& message) {
  note(factmessage, message.kind, message.fault, message.detail, message.option, message.text);
}

}  // namespace command
