#include "server/session.h"

#include <algorithm>

#include "server/uris.h"

namespace command {

const json& optionalmember(const json& of, const char* name) {
  static const json none;
  if (!of.is_object()) return none;
  const auto found = of.find(name);
  return found == of.end() ? none : *found;
}

const json& member(const json& of, const char* name) {
  const json& found = optionalmember(of, name);
  if (found.is_null()) throw requestfault{invalidparams, std::string(name) + " is missing"};
  return found;
}

std::string textmember(const json& of, const char* name) {
  const json& found = member(of, name);
  if (!found.is_string()) throw requestfault{invalidparams, std::string(name) + " is no string"};
  return found.get<std::string>();
}

std::int64_t numbermember(const json& of, const char* name) {
  const json& found = member(of, name);
  if (!found.is_number_integer())
    throw requestfault{invalidparams, std::string(name) + " is no integer"};
  return found.get<std::int64_t>();
}

bool flagat(const json& of, std::initializer_list<const char*> names) {
  const json* at = &of;
  for (const char* name : names) at = &optionalmember(*at, name);
  return at->is_boolean() && at->get<bool>();
}

position positionfrom(const json& value) {
  const std::int64_t line = numbermember(value, "line"),
                     character = numbermember(value, "character");
  if (line < 0 || character < 0) throw requestfault{invalidparams, "a position is less than 0"};
  return {static_cast<std::size_t>(line), static_cast<std::size_t>(character)};
}

std::string documentpath(const json& params) {
  const std::string uri = textmember(member(params, "textDocument"), "uri");
  const std::string path = pathof(uri);
  return path.empty() ? uri : path;
}

json positionjson(const position& at) {
  return {{"line", at.line}, {"character", at.character}};
}

json rangejson(const linedtext& text, std::size_t from, std::size_t to, encoding counts) {
  return {{"start", positionjson(text.at(from, counts))},
          {"end", positionjson(text.at(to, counts))}};
}

json rangejson(const linedtext& text, const mark& of, encoding counts) {
  return rangejson(text, text.offset(of.line, of.column), text.offset(of.line, of.end()), counts);
}

json rangejson(const linedtext& text, const place& of, encoding counts) {
  return rangejson(text, text.offset(of.line, of.column),
                   text.offset(of.line, of.column + of.length), counts);
}

std::string clienturi(const session& in, const std::string& path) {
  const buffer* document = in.open.find(path);
  return document != nullptr ? document->uri : uriof(path);
}

json locationjson(session& in, const kepttable& table, const place& of) {
  const std::string path = project::pathof(table, of.file);
  return {{"uri", clienturi(in, path)}, {"range", rangejson(in.work.linesof(path), of, in.counts)}};
}

json workspaceedit(const session& in, const std::map<std::string, json>& rows) {
  json changes = json::object(), versioned = json::array();
  for (const auto& [path, edits] : rows) {
    const buffer* document = in.open.find(path);
    const json version = document != nullptr ? json(document->version) : json();
    versioned.push_back(
        {{"textDocument", {{"uri", clienturi(in, path)}, {"version", version}}}, {"edits", edits}});
    changes[clienturi(in, path)] = edits;
  }
  if (in.client.versionededits) return {{"documentChanges", versioned}};
  return {{"changes", changes}};
}

std::string_view subject::textat(const mark& of) const {
  const std::size_t from = text().offset(of.line, of.column);
  return std::string_view(text().text()).substr(from, text().offset(of.line, of.end()) - from);
}

const optxv::optionfacts* subject::option(std::int32_t number) const {
  const auto& all = table.facts.options;
  return number < 1 || static_cast<std::size_t>(number) > all.size()
             ? nullptr
             : &all[static_cast<std::size_t>(number) - 1];
}

std::optional<subject> subjectof(session& in, const std::string& path) {
  const buffer* document = in.open.find(path);
  if (document == nullptr) return std::nullopt;
  const role what = in.work.roleof(path);
  if (!what.known()) return std::nullopt;
  kepttable& table = what.isdefinition ? in.work.definition(what) : in.work.parameters(path, what);
  if (!table.kept) return std::nullopt;
  const std::string name = namein(table.folder, path);
  return subject{path,
                 *document,
                 what,
                 table,
                 what.isdefinition ? table.marks : table.parametersmarks.of(name),
                 name};
}

std::optional<subject> subjectof(session& in, const json& params) {
  auto found = subjectof(in, documentpath(params));
  const json& at = optionalmember(params, "position");
  if (!found || at.is_null()) return found;
  found->offset = found->text().offset(positionfrom(at), in.counts);
  found->line = found->text().lineof(found->offset);
  found->column = found->text().columnof(found->offset);
  return found;
}

}  // namespace command
