#include "server/outline.h"

#include <algorithm>

#include "text/names.h"
#include "text/printable.h"

namespace command {
namespace {

enum symbolkind { namespacesymbol = 3, propertysymbol = 7, enummember = 22, variablesymbol = 13 };

/// A symbol with what belongs to it, as bytes of the text.
struct symbolrow {
  std::string name, detail;
  int kind = propertysymbol;
  std::size_t from = 0, to = 0;          ///< all of it
  std::size_t namefrom = 0, nameto = 0;  ///< what is shown when it is chosen
  std::vector<symbolrow> children = {};
};

json jsonof(const session& in, const subject& of, const symbolrow& row) {
  json result = {{"name", row.name.empty() ? "-" : printable(row.name)},
                 {"kind", row.kind},
                 {"detail", printable(row.detail)},
                 {"range", rangejson(of.text(), row.from, row.to, in.counts)},
                 {"selectionRange", rangejson(of.text(), row.namefrom, row.nameto, in.counts)}};
  for (const symbolrow& each : row.children) result["children"].push_back(jsonof(in, of, each));
  return result;
}

void addflat(const session& in, const subject& of, const symbolrow& row, const std::string& within,
             json& rows) {
  json result = {
      {"name", row.name.empty() ? "-" : printable(row.name)},
      {"kind", row.kind},
      {"containerName", within},
      {"location",
       {{"uri", of.document.uri}, {"range", rangejson(of.text(), row.from, row.to, in.counts)}}}};
  rows.push_back(std::move(result));
  for (const symbolrow& each : row.children) addflat(in, of, each, printable(row.name), rows);
}

std::size_t startof(const subject& of, const mark& at) {
  return of.text().offset(at.line, at.column);
}
std::size_t endof(const subject& of, const mark& at) {
  return of.text().offset(at.line, at.end());
}

/// The symbol that begins with a mark; what follows may make it longer.
symbolrow rowat(const subject& of, const mark& at, int kind) {
  symbolrow row{.name = std::string(of.textat(at)), .detail = {}, .kind = kind};
  row.from = row.namefrom = startof(of, at);
  row.to = row.nameto = endof(of, at);
  return row;
}

void addtext(symbolrow& row, std::string_view text) {
  row.detail += (row.detail.empty() ? "" : " ") + std::string(text);
}

/// The entries of a parameter file, each with the group of its option.
std::vector<std::pair<std::int32_t, symbolrow>> entriesof(const subject& of) {
  std::vector<std::pair<std::int32_t, symbolrow>> all;
  for (const mark& each : of.marks) {
    const optxv::optionfacts* option = of.option(each.option);
    const std::int32_t group = option == nullptr ? 0 : option->group;
    const bool begins = each.kind == markkind::key || each.kind == markkind::attribute ||
                        each.kind == markkind::word;
    if (begins)
      all.emplace_back(
          group, rowat(of, each, each.kind == markkind::key ? propertysymbol : variablesymbol));
    if (each.kind == markkind::value && !all.empty()) {
      symbolrow& entry = all.back().second;
      addtext(entry, of.textat(each));
      entry.to = std::max(entry.to, endof(of, each));
    }
  }
  return all;
}

std::string titleof(const subject& of, std::int32_t group) {
  for (const optxv::groupfacts& each : of.table.facts.groups)
    if (each.number == group) return each.title.empty() ? each.name : each.title;
  return "group " + std::to_string(group);
}

/// The groups in the order in which the file comes to them.
std::vector<symbolrow> inparameters(const subject& of) {
  std::vector<symbolrow> groups;
  std::map<std::int32_t, std::size_t> known;
  for (auto& [group, entry] : entriesof(of)) {
    const auto [at, fresh] = known.try_emplace(group, groups.size());
    if (fresh) {
      groups.push_back(entry);
      groups.back().name = titleof(of, group);
      groups.back().kind = namespacesymbol;
      groups.back().detail.clear();
    }
    symbolrow& row = groups[at->second];
    row.to = std::max(row.to, entry.to);
    row.children.push_back(std::move(entry));
  }
  return groups;
}

std::vector<symbolrow> indefinition(const subject& of) {
  std::vector<symbolrow> records;
  for (const mark& each : of.marks) {
    if (each.kind != markkind::field || each.length == 0) continue;
    if (each.number == optxv_field_record) {
      records.push_back(rowat(of, each, propertysymbol));
      continue;
    }
    if (records.empty()) continue;
    symbolrow& record = records.back();
    record.to = std::max(record.to, endof(of, each));
    if (each.number == optxv_field_type) record.detail = of.textat(each);
    if (each.number == optxv_field_type && samename(record.detail, "group"))
      record.kind = namespacesymbol;
    if (each.number == optxv_field_item || each.number == optxv_field_member)
      record.children.push_back(rowat(of, each, enummember));
  }
  return records;
}

// --- Folding

/// A block of lines, from 0 as clients count.
struct block {
  std::size_t first, last;
  bool comment;
};

/// Adds a line to the last block if it continues that, else begins another one.
void addline(std::vector<block>& blocks, std::size_t line, bool comment) {
  const bool continues =
      !blocks.empty() && blocks.back().comment == comment && blocks.back().last + 1 >= line;
  if (continues)
    blocks.back().last = std::max(blocks.back().last, line);
  else
    blocks.push_back({line, line, comment});
}

std::vector<block> commentblocks(const subject& of) {
  std::vector<block> blocks;
  for (const mark& each : of.marks)
    if (each.kind == markkind::comment && each.column == 1)
      addline(blocks, static_cast<std::size_t>(each.line) - 1, true);
  return blocks;
}

std::vector<block> recordblocks(const subject& of) {
  std::vector<block> blocks;
  for (const mark& each : of.marks) {
    if (each.kind != markkind::field) continue;
    const auto line = static_cast<std::size_t>(each.line) - 1;
    if (each.number == optxv_field_record) blocks.push_back({line, line, false});
    if (!blocks.empty()) blocks.back().last = std::max(blocks.back().last, line);
  }
  return blocks;
}

}  // namespace

json documentsymbols(session& in, const json& params) {
  const auto of = subjectof(in, params);
  json rows = json::array();
  if (!of) return rows;
  for (const symbolrow& each : of->what.isdefinition ? indefinition(*of) : inparameters(*of))
    if (in.client.symboltree)
      rows.push_back(jsonof(in, *of, each));
    else
      addflat(in, *of, each, "", rows);
  return rows;
}

json foldingranges(session& in, const json& params) {
  const auto of = subjectof(in, params);
  json rows = json::array();
  if (!of) return rows;
  std::vector<block> blocks = commentblocks(*of);
  if (of->what.isdefinition) std::ranges::copy(recordblocks(*of), std::back_inserter(blocks));
  for (const block& each : blocks) {
    if (each.first == each.last) continue;
    json row = {{"startLine", each.first}, {"endLine", each.last}};
    if (each.comment) row["kind"] = "comment";
    rows.push_back(std::move(row));
  }
  return rows;
}

json inlayhints(session& in, const json& params) {
  const json& range = member(params, "range");
  const position first = positionfrom(member(range, "start"));
  const position last = positionfrom(member(range, "end"));
  const auto of = subjectof(in, params);
  json rows = json::array();
  if (!of || !of->what.inlayhints) return rows;
  std::map<position, std::string> told;
  for (const mark& each : of->marks) {
    const optxv::optionfacts* option = of->option(each.option);
    if (each.kind != markkind::handed || option == nullptr) continue;
    const position at = of->text().at(endof(*of, each), in.counts);
    if (at < first || last < at) continue;
    std::string& text = told[at];
    text +=
        (text.empty() ? "" : ", ") + printable(option->name) + ' ' + printable(of->textat(each));
  }
  for (const auto& [at, text] : told)
    rows.push_back({{"position", positionjson(at)}, {"label", text}, {"paddingLeft", true}});
  return rows;
}

}  // namespace command
