#include "server/diagnostics.h"

#include <algorithm>

#include "lint/rules.h"
#include "output/reporter.h"
#include "server/uris.h"
#include "text/printable.h"

namespace command {
namespace {

constexpr int hintnumber = 4;

int severitynumber(severity level) {
  switch (level) {
    case severity::error:
      return 1;
    case severity::warning:
      return 2;
    default:
      return 3;
  }
}

std::string wordsof(const hint& each) {
  if (each.write.empty()) return each.words;
  return "write " + inquotes(each.write) + (each.words.empty() ? "" : ' ' + each.words);
}

/// Everything that is said beside the finding itself.
std::vector<note> notesof(const finding& found) {
  std::vector<note> all = found.notes;
  if (!found.nearest.empty()) all.push_back({question(found.nearest), {}});
  for (const hint& each : found.hints) all.push_back({"help: " + wordsof(each), {}});
  return all;
}

json rowof(session& in, const kepttable& table, const finding& found, const json& location) {
  std::string text = printable(found.text);
  json related = json::array();
  for (const note& each : notesof(found)) {
    const std::string words = printable(each.text);
    const bool own = each.where.line > 0;
    if (in.client.relatedplaces)
      related.push_back(
          {{"location", own ? locationjson(in, table, each.where) : location}, {"message", words}});
    else
      text += '\n' + words;
  }
  json row = {{"range", location["range"]},
              {"severity", namesrules(found.code) ? hintnumber : severitynumber(found.level)},
              {"source", "optxv"},
              {"message", text}};
  if (!found.code.empty()) row["code"] = found.code;
  if (!related.empty()) row["relatedInformation"] = std::move(related);
  return row;
}

json plainrow(int severity, const char* code, const std::string& text) {
  const json start = positionjson({});
  return {{"range", {{"start", start}, {"end", start}}},
          {"severity", severity},
          {"source", "optxv"},
          {"code", code},
          {"message", text}};
}

void addrows(session& in, const kepttable& table, const std::vector<finding>& findings,
             std::map<std::string, json>& rows) {
  std::map<std::string, std::size_t> left;
  for (const finding& each : findings) {
    if (each.level == severity::plain) continue;
    const json location = locationjson(in, table, each.where);
    const std::string path = project::pathof(table, each.where.file);
    json& list = rows.try_emplace(path, json::array()).first->second;
    if (list.size() < mostshown)
      list.push_back(rowof(in, table, each, location));
    else
      left[path]++;
  }
  for (const auto& [path, count] : left)
    rows[path].push_back(plainrow(3, "omitted", counted(count, "more finding") + " not shown"));
}

// --- Actions

/// Edits of one finding as rows by path.
std::map<std::string, json> editrows(session& in, const kepttable& table,
                                     const std::vector<edit>& edits) {
  std::map<std::string, json> rows;
  for (const edit& each : edits) {
    const std::string path = project::pathof(table, each.where.file);
    rows.try_emplace(path, json::array())
        .first->second.push_back(
            {{"range", rangejson(in.work.linesof(path), each.where, in.counts)},
             {"newText", each.text}});
  }
  return rows;
}

/// The hints of a finding that can be made by a program, and the near names as such hints.
std::vector<hint> repairs(const finding& found) {
  std::vector<hint> all;
  for (const hint& each : found.hints)
    if (!each.edits.empty()) all.push_back(each);
  const bool replaceable =
      found.where.length > 0 && (found.code == "unknown-option" || found.code == "unknown-value");
  if (!replaceable) return all;
  for (const std::string& name : found.nearest) {
    const hint near{.write = name, .edits = {{found.where, name}}};
    const auto same = [&](const hint& each) { return each.edits == near.edits; };
    if (std::ranges::none_of(all, same)) all.push_back(near);
  }
  return all;
}

std::string titleof(const hint& each) {
  if (!each.write.empty()) return "Write " + inquotes(each.write);
  std::string words = printable(each.words);
  if (!words.empty() && words[0] >= 'a' && words[0] <= 'z') words[0] ^= ' ';
  return words;
}

bool overlap(const place& left, const place& right) {
  return left.file == right.file && left.line == right.line &&
         left.column < right.column + std::max<std::int64_t>(right.length, 1) &&
         right.column < left.column + std::max<std::int64_t>(left.length, 1);
}

/// The first sure repair of each finding, as long as they touch no other one. What the rules of
/// lint find is a matter of choice, one by one.
std::vector<edit> surerepairs(const subject& of) {
  std::vector<edit> all;
  for (const finding& each : of.findings()) {
    if (namesrules(each.code)) continue;
    const auto sure = std::ranges::find_if(
        each.hints, [](const hint& one) { return one.sure && !one.edits.empty(); });
    if (sure == each.hints.end()) continue;
    const auto foreign = [&](const edit& one) {
      return one.where.file != of.name || std::ranges::any_of(all, [&](const edit& other) {
               return overlap(one.where, other.where);
             });
    };
    if (std::ranges::none_of(sure->edits, foreign))
      all.insert(all.end(), sure->edits.begin(), sure->edits.end());
  }
  return all;
}

bool wanted(const json& context, std::string_view kind) {
  const json& only = optionalmember(context, "only");
  if (!only.is_array() || only.empty()) return true;
  return std::ranges::any_of(only, [&](const json& each) {
    if (!each.is_string()) return false;
    const auto& prefix = each.get_ref<const std::string&>();
    return kind == prefix || kind.starts_with(prefix + '.') || prefix.empty();
  });
}

constexpr const char* quickfix = "quickfix";
constexpr const char* fixall = "source.fixAll.optxv";

}  // namespace

std::map<std::string, json> diagnosticsof(session& in, const std::string& path) {
  std::map<std::string, json> rows = {{path, json::array()}};
  const buffer* document = in.open.find(path);
  const role what = in.work.roleof(path);
  if (const auto fault = in.work.bindingsfault(path)) {
    const json range = rangejson(in.work.linesof(fault->first), fault->second.where, in.counts);
    json row = plainrow(1, "bad-bindings", fault->second.text);
    row["range"] = range;
    rows[fault->first].push_back(std::move(row));
  }
  if (!what.known()) {
    if (document != nullptr && document->language == "optxv-parameters")
      rows[path].push_back(plainrow(3, "no-definition",
                                    "it is not known which definition this file belongs to; a file "
                                    "optxv.json says that, or the comment "
                                    "\"* optxv: definition NAME\" in the first lines"));
    return rows;
  }
  kepttable& table = what.isdefinition ? in.work.definition(what) : in.work.parameters(path, what);
  if (!what.isdefinition) addrows(in, table, table.parametersfindings, rows);
  addrows(in, table, table.findings, rows);
  return rows;
}

json codeactions(session& in, const json& params) {
  const auto of = subjectof(in, params);
  json actions = json::array();
  if (!of) return actions;
  const json& range = member(params, "range");
  const std::size_t from = of->text().offset(positionfrom(member(range, "start")), in.counts);
  const std::size_t to = of->text().offset(positionfrom(member(range, "end")), in.counts);
  const json& context = optionalmember(params, "context");
  for (const finding& each : of->findings()) {
    if (each.where.file != of->name || !wanted(context, quickfix)) continue;
    const std::size_t start = of->text().offset(each.where.line, each.where.column);
    const std::size_t end =
        of->text().offset(each.where.line, each.where.column + each.where.length);
    if (end < from || start > to) continue;
    const json location = locationjson(in, of->table, each.where);
    for (const hint& one : repairs(each))
      actions.push_back({{"title", titleof(one)},
                         {"kind", quickfix},
                         {"isPreferred", one.sure},
                         {"diagnostics", {rowof(in, of->table, each, location)}},
                         {"edit", workspaceedit(in, editrows(in, of->table, one.edits))}});
  }
  const std::vector<edit> sure = wanted(context, fixall) ? surerepairs(*of) : std::vector<edit>();
  if (!sure.empty())
    actions.push_back({{"title", "Make all sure repairs"},
                       {"kind", fixall},
                       {"edit", workspaceedit(in, editrows(in, of->table, sure))}});
  return actions;
}

}  // namespace command
