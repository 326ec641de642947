#include "lint/entryrules.h"

#include <algorithm>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

using std::string;
using std::string_view;

place valueplace(const entryfacts& entry) {
  return entry.entry.values.empty() ? entry.entry.where : entry.entry.values.front().where;
}

}  // namespace

// --- Values and their effect

void equalsdefault(const entryfacts& entry, const telling& tell) {
  const auto standard = [&](const storedvalue& each) {
    return each.standard && each.road == optxv_road_entry && each.option == entry.entry.option;
  };
  if (entry.entry.values.empty() || entry.stored.empty() ||
      !std::ranges::all_of(entry.stored, standard))
    return;
  tell(said(valueplace(entry), "this is the default of " + inquotes(entry.option().name)));
}

namespace {

/// Tells of the values that an entry took from earlier ones, in the same file or in others.
void telltaken(const entryfacts& entry, bool samefile, const telling& tell) {
  for (const takenvalue& each : entry.taken) {
    if (each.what.samefile != samefile) continue;
    finding found = said(
        each.what.first,
        "this has no effect: " + inquotes(entry.reader->names().option(each.what.option).name) +
            (samefile ? " is set again" : " is set again by another file"));
    found.source = each.line;
    found.notes.push_back({"it is set here", each.again});
    if (samefile && each.what.through == 0)
      found.hints.push_back(
          ascomment("make it a comment", each.what.first, entry.manyaline || !each.what.alone));
    tell(std::move(found));
  }
}

}  // namespace

void overridden(const entryfacts& entry, const telling& tell) {
  telltaken(entry, true, tell);
}

void overriddenelsewhere(const entryfacts& entry, const telling& tell) {
  telltaken(entry, false, tell);
}

void deprecatedname(const entryfacts& entry, const telling& tell) {
  if (entry.entry.mark != optxv_fault_deprecated) return;
  finding found = said(entry.entry.where, entry.marktext);
  if (const string& name = entry.option().name; entry.entry.synonym > 0 && !name.empty())
    found.hints.push_back({.write = name, .edits = {{entry.entry.where, name}}, .sure = true});
  tell(std::move(found));
}

void obsoletename(const entryfacts& entry, const telling& tell) {
  if (entry.entry.mark != optxv_fault_obsolete) return;
  finding found = said(entry.entry.where, entry.marktext);
  found.notes.push_back(
      {entry.stored.empty() ? "the entry has no effect" : "it is set all the same", {}});
  tell(std::move(found));
}

namespace {

/// What makes a text between double quotes of a value. None has quotes within; and a list of the
/// user's own would keep them.
void addquotes(finding& found, const readvalue& value, const entryfacts& entry) {
  constexpr std::size_t longest = 253;  // with its quotes a value has 255 bytes at most
  constexpr std::int32_t ownlist = 2;   // dashes before its name
  if (entry.entry.dashes >= ownlist || value.text.size() > longest ||
      value.text.find('"') != string::npos)
    return;
  const string quoted = '"' + value.text + '"';
  found.hints.push_back({.write = quoted, .edits = {{value.written, quoted}}, .sure = true});
}

}  // namespace

void modedependent(const entryfacts& entry, const telling& tell) {
  if (entry.crowded)
    return tell(said(entry.entry.where,
                     "with one entry a line this is read as part of the value "
                     "before it"));
  if (entry.tokens || entry.option().type == "immediate") return;
  for (const readvalue& each : entry.entry.values) {
    if (each.quotes != optxv_quotes_none || each.text.find_first_of(" \t,") == string::npos)
      continue;
    finding found = said(each.where,
                         "with many entries a line the value ends at the first blank or "
                         "comma");
    addquotes(found, each, entry);
    tell(std::move(found));
  }
}

void listedtwice(const entryfacts& entry, const telling& tell) {
  if (!entry.listedtwice) return;
  tell(said(valueplace(entry), "the list " + inquotes(entry.option().name) + " has this already"));
}

void boundsleftoff(const leavingfacts& left, const telling& tell) {
  if (left.boundsoff.line == 0) return;
  finding found = said(left.boundsoff, "values out of bounds are let in for the rest of the run");
  found.source = left.line;
  tell(std::move(found));
}

// --- Spelling

namespace {

/// The name that the entry has used, as the definition writes it, or as users write that.
string spelledname(const entryfacts& entry) {
  string name = entry.option().name;
  if (entry.entry.synonym > 0) {
    optxv_synonym synonym{};
    optxv_synonym_info(entry.reader->options().handle(), entry.entry.synonym, &synonym);
    name = viewof(synonym.name);
  }
  if (entry.blanksinnames) std::ranges::replace(name, '_', ' ');
  return name;
}

void tellspelling(const place& where, string_view declared, const telling& tell) {
  finding found = said(where, "the definition writes " + inquotes(declared));
  if (where.length == static_cast<std::int64_t>(declared.size()))
    found.hints.push_back(
        {.write = string(declared), .edits = {{where, string(declared)}}, .sure = true});
  tell(std::move(found));
}

}  // namespace

void namecase(const entryfacts& entry, const telling& tell) {
  constexpr std::int32_t ownlist = 2;
  if (entry.option().name.empty() || entry.entry.dashes >= ownlist) return;
  string written = entry.entry.key;
  if (entry.blanksinnames) std::ranges::replace(written, '_', ' ');
  const string declared = spelledname(entry);
  if (written != declared && samename(written, declared))
    tellspelling(entry.entry.where, declared, tell);
}

void itemcase(const entryfacts& entry, const telling& tell) {
  const std::vector<string>& items = entry.option().items;
  if (entry.option().type != "enumstr") return;
  for (const readvalue& each : entry.entry.values) {
    if (std::ranges::find(items, each.text) != items.end()) continue;
    const auto meant =
        std::ranges::find_if(items, [&](const string& item) { return samename(item, each.text); });
    if (meant != items.end()) tellspelling(each.where, *meant, tell);
  }
}

}  // namespace command
