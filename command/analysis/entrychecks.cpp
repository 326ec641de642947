#include "analysis/entrychecks.h"

#include <algorithm>

#include "analysis/hints.h"
#include "text/printable.h"

namespace command {

void entrychecks::key(const optxv_key& key) {
  constexpr std::int32_t ownkey = 2;  // dashes that make a key of the user's own
  if (key.dashes >= ownkey) checklist(key);
}

/// A key of the user's own that may well be meant for something else.
void entrychecks::checklist(const optxv_key& key) {
  std::string_view name = viewof(key.text);
  name.remove_prefix(std::min(name.find_first_not_of('-'), name.size()));
  const std::string_view line = at_.source().text;
  const auto before = static_cast<std::size_t>(key.place.column - 1);
  if (line.substr(0, before).ends_with('/')) {
    finding found = own(
        ownfinding::slashes, key.place,
        "this is no comment but an entry for a list called " + inquotes("--" + std::string(name)));
    hint own = {.words = "a comment has a line of its own, with a * in column 1"};
    if (const std::size_t from = before - 2; line.find_first_not_of(" \t") == from) {
      place marks = key.place;
      marks.column = 1;
      marks.length = static_cast<std::int64_t>(before);
      own.edits = {{marks, "*"}};
      own.sure = true;
    }
    found.hints.push_back(std::move(own));
    findings_.add(std::move(found));
  } else if (const std::int32_t option = names_.find(name); option > 0) {
    finding found = own(ownfinding::newlist, key.place,
                        "two dashes make a list called " + inquotes("--" + std::string(name)) +
                            "; the option " + inquotes(names_.option(option).name) + " is not set");
    std::string form(line.substr(std::min(before, line.size())));
    if (library_.accepts(form)) found.hints.push_back({.write = std::move(form)});
    findings_.add(std::move(found));
  }
}

void entrychecks::value(const optxv_value& value) {
  if (at_.source().kind == optxv_source_definition) return;
  if (value.good == 0 && value.quotes == optxv_quotes_open)
    findings_.addunlesstold(own(ownfinding::valuedropped, value.written,
                                "the quote is not closed; the value is dropped"));
  else
    checkquotes(value);
}

void entrychecks::checkquotes(const optxv_value& value) {
  const std::string_view written = viewof(value.text);
  std::string_view text = written;
  const std::string& type = names_.option(value.option).type;
  if (value.quotes != optxv_quotes_none || (type != "string" && type != "strlist")) return;
  if (!withoutforeignquotes(text)) return;
  finding found = own(ownfinding::foreignquotes, value.place,
                      "the text keeps its quotes: only double quotes enclose a value");
  const std::string better = externalform(text);
  std::string form = at_.source().entry.key + ' ' + better;
  if (library_.accepts(form))
    found.hints.push_back(
        {.write = std::move(form), .edits = {{value.written, better}}, .sure = true});
  findings_.add(std::move(found));
}

void entrychecks::stored(const optxv_store& store) {
  if (at_.idle() || store.road == optxv_road_call) return;
  checkobsolete(store);
  checkagain(store);
}

/// An obsolete name keeps a value away, but not everywhere: named alone, an option goes to its
/// default, and macros and multi-lists do not look at marks.
void entrychecks::checkobsolete(const optxv_store& store) {
  const bool told = at_.source().entry.mark == optxv_fault_obsolete;
  const bool marked = names_.option(store.option).obsolete;
  if (!told && !(marked && store.through > 0)) return;
  findings_.add(own(ownfinding::obsoleteset, store.place,
                    "the obsolete option " + inquotes(names_.option(store.option).name) +
                        " is set all the same"));
}

void entrychecks::checkagain(const optxv_store& store) {
  const std::optional<repetition>& again = again_.now();
  if (!again || !again->samefile) return;
  const std::string by =
      again->through > 0 ? " by " + inquotes(names_.option(again->through).name) : "";
  finding found =
      own(ownfinding::settwice, store.place,
          "the option " + inquotes(names_.option(store.option).name) + " is set again" + by);
  found.notes.push_back({"it was set here before", again->first});
  if (again->through == 0)
    found.hints.push_back(ascomment("make the first a comment: it has no effect", again->first,
                                    tokens_ || names_.modeswitched() || !again->alone));
  findings_.add(std::move(found));
}

}  // namespace command
