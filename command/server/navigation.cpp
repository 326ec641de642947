#include "server/navigation.h"

#include <algorithm>
#include <functional>
#include <set>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

/// A name that a definition declares: of an option, or a synonym for one.
struct declaredthing {
  std::int32_t option = 0, synonym = 0;
  const mark* at = nullptr;  ///< where it is used or declared

  bool known() const { return option > 0; }
};

bool names(const mark& each) {
  switch (each.kind) {
    case markkind::key:
    case markkind::attribute:
    case markkind::reference:
      return each.option > 0;
    case markkind::declared:
      return each.option > 0 &&
             (each.number == optxv_declared_option || each.number == optxv_declared_synonym);
    default:
      return false;
  }
}

declaredthing thingat(const subject& of) {
  const auto [begin, end] = marksin(of.marks, of.line);
  const auto found = std::find_if(begin, end, [&](const mark& each) {
    return names(each) && each.touches(of.line, of.column);
  });
  if (found == end) return {};
  return {found->option, found->synonym, &*found};
}

const mark* declarationof(const kepttable& table, const declaredthing& thing) {
  const auto is = [&](const mark& each) {
    return each.kind == markkind::declared && each.option == thing.option &&
           each.synonym == thing.synonym &&
           each.number == (thing.synonym > 0 ? optxv_declared_synonym : optxv_declared_option);
  };
  const auto found = std::ranges::find_if(table.marks, is);
  return found == table.marks.end() ? nullptr : &*found;
}

/// A mark in a file, by path.
using markedplace = std::function<void(const std::string& path, const mark& at)>;

void eachof(const textmarks& marks, const std::string& path, const declaredthing& thing,
            const markedplace& take) {
  for (const mark& each : marks)
    if (names(each) && each.option == thing.option && each.synonym == thing.synonym &&
        each.length > 0)
      take(path, each);
}

/// All uses and the declaration; each place once, though a file may be read with several others.
void everywhere(session& in, const role& what, const declaredthing& thing,
                const markedplace& take) {
  std::set<std::tuple<std::string, std::int32_t, std::int32_t>> told;
  const auto once = [&](const std::string& path, const mark& at) {
    if (told.emplace(path, at.line, at.column).second) take(path, at);
  };
  const kepttable& table = in.work.definition(what);
  eachof(table.marks, what.definition, thing, once);
  for (const std::string& path : in.work.filesof(what)) {
    const kepttable& read = in.work.parameters(path, what);
    for (const auto& [name, marks] : read.parametersmarks.all())
      eachof(marks, project::pathof(read, name), thing, once);
  }
}

json locationrow(session& in, const std::string& path, const mark& at) {
  return {{"uri", clienturi(in, path)}, {"range", rangejson(in.work.linesof(path), at, in.counts)}};
}

std::string nameat(session& in, const role& what, const mark& declaration) {
  const linedtext& text = in.work.linesof(what.definition);
  const std::size_t from = text.offset(declaration.line, declaration.column);
  return text.text().substr(from, text.offset(declaration.line, declaration.end()) - from);
}

/// What may not be: a name that no record could have, or one that another has.
std::string unfit(const kepttable& table, const std::string& name, const std::string& old) {
  const bool dotted = old.starts_with('.');
  const std::string_view bare = std::string_view(name).substr(dotted && !name.empty() ? 1 : 0);
  constexpr std::size_t longestname = 63;
  const bool good = name.starts_with('.') == dotted && !bare.empty() && isletter(bare[0]) &&
                    std::ranges::all_of(bare, isnamecharacter) && bare.size() <= longestname;
  if (!good)
    return "a name is " + std::string(dotted ? "a dot, " : "") +
           "a letter, then letters, digits and underscores, 63 in all at most";
  for (const optxv::optionfacts& each : table.facts.options) {
    const auto taken = [&](const std::string& other) {
      return samename(other, name) && !samename(other, old);
    };
    const bool bysynonym = std::ranges::any_of(
        each.synonyms, [&](const optxv::synonymfacts& synonym) { return taken(synonym.name); });
    if (taken(each.tablename) || bysynonym) return "the name " + inquotes(name) + " is taken";
  }
  return {};
}

}  // namespace

json definitionof(session& in, const json& params) {
  const auto of = subjectof(in, params);
  const declaredthing thing = of ? thingat(*of) : declaredthing();
  const mark* found = thing.known() ? declarationof(of->table, thing) : nullptr;
  if (found == nullptr) return nullptr;
  return locationrow(in, of->what.definition, *found);
}

json referencesof(session& in, const json& params) {
  const auto of = subjectof(in, params);
  const declaredthing thing = of ? thingat(*of) : declaredthing();
  if (!thing.known()) return nullptr;
  const bool all = flagat(params, {"context", "includeDeclaration"});
  json rows = json::array();
  everywhere(in, of->what, thing, [&](const std::string& path, const mark& at) {
    if (all || at.kind != markkind::declared) rows.push_back(locationrow(in, path, at));
  });
  return rows;
}

json highlightsof(session& in, const json& params) {
  const auto of = subjectof(in, params);
  const declaredthing thing = of ? thingat(*of) : declaredthing();
  json rows = json::array();
  if (thing.known())
    eachof(of->marks, of->path, thing, [&](const std::string&, const mark& at) {
      rows.push_back({{"range", rangejson(of->text(), at, in.counts)}});
    });
  return rows;
}

json preparerename(session& in, const json& params) {
  const auto of = subjectof(in, params);
  const declaredthing thing = of ? thingat(*of) : declaredthing();
  const mark* declared = thing.known() ? declarationof(of->table, thing) : nullptr;
  if (declared == nullptr) return nullptr;
  return {{"range", rangejson(of->text(), *thing.at, in.counts)},
          {"placeholder", nameat(in, of->what, *declared)}};
}

json rename(session& in, const json& params) {
  const std::string name = textmember(params, "newName");
  const auto of = subjectof(in, params);
  const declaredthing thing = of ? thingat(*of) : declaredthing();
  const mark* declared = thing.known() ? declarationof(of->table, thing) : nullptr;
  if (declared == nullptr)
    throw requestfault{requestfailed, "no name that a definition declares is here"};
  if (const std::string why = unfit(of->table, name, nameat(in, of->what, *declared)); !why.empty())
    throw requestfault{requestfailed, why};
  std::map<std::string, json> rows;
  everywhere(in, of->what, thing, [&](const std::string& path, const mark& at) {
    rows.try_emplace(path, json::array())
        .first->second.push_back(
            {{"range", rangejson(in.work.linesof(path), at, in.counts)}, {"newText", name}});
  });
  return workspaceedit(in, rows);
}

}  // namespace command
