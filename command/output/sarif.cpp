#include "output/sarif.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

#include "output/json.h"
#include "output/textcolumns.h"
#include "text/printable.h"

namespace command {
namespace {

using nlohmann::ordered_json;

constexpr std::string_view schema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

/// The name of a file as a URI; every byte but letters, digits and these is escaped.
std::string uriof(std::string_view file) {
  constexpr std::string_view hexdigits = "0123456789ABCDEF";
  constexpr std::string_view plain =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string uri = file.starts_with('/') ? "file://" : "";
  for (const char c : file) {
    const auto byte = static_cast<unsigned char>(c);
    if (plain.find(c) != plain.npos)
      uri += c;
    else
      uri += {'%', hexdigits[byte >> 4], hexdigits[byte & 15]};
  }
  return uri;
}

/// A text as messages hold it. There braces stand for arguments unless they are doubled, and
/// `[text](target)` is a link unless the bracket is escaped.
std::string messagetext(std::string_view text) {
  std::string result;
  for (const char c : printable(text)) {
    if (c == '(' && result.ends_with(']')) result.insert(result.size() - 1, 1, '\\');
    result += c;
    if (c == '{' || c == '}') result += c;
  }
  return result;
}

ordered_json messageof(std::string_view text) {
  return {{"text", messagetext(text)}};
}

ordered_json rulerow(const coderow& row) {
  return {{"id", row.code},
          {"shortDescription", messageof(row.words)},
          {"defaultConfiguration", {{"level", severityword(row.level)}}}};
}

/// The files of the run in the order in which they came up.
class artifactlist {
 public:
  /// The location of a file within the log.
  ordered_json location(const std::string& file) {
    const auto [row, fresh] = known_.emplace(file, rows_.size());
    if (fresh) rows_.push_back(rowof(file));
    return {{"uri", uriof(file)}, {"index", row->second}};
  }
  const ordered_json& rows() const { return rows_; }

 private:
  static ordered_json rowof(const std::string& file) {
    ordered_json location = {{"uri", uriof(file)}};
    if (file == "-") location["description"] = messageof("standard input");
    return {{"location", location}, {"roles", ordered_json::array({"analysisTarget"})}};
  }

  std::map<std::string, std::size_t> known_;
  ordered_json rows_ = ordered_json::array();
};

class sarifreporter : public reporter, private textcolumns {
 public:
  sarifreporter(std::FILE* out, std::vector<coderow> codes, bool strict)
      : out_(out), codes_(std::move(codes)), strict_(strict) {
    for (std::size_t i = 0; i < codes_.size(); i++) indexes_.emplace(codes_[i].code, i);
  }

  listener* hears() override { return this; }
  void take(const finding& found) override;
  void summary(const tally& total) override;

 private:
  void entered(const optxv_source& source) override {
    if (source.kind != optxv_source_string) files_.location(source.name);
  }

  void begin();
  ordered_json region(const place& where) const;
  ordered_json location(const place& where);
  ordered_json fixof(const hint& each);
  bool canfix(const hint& each) const;
  void addadditions(ordered_json& result, const finding& found);
  ordered_json invocation(const tally& total) const;

  std::FILE* out_;
  std::vector<coderow> codes_;
  std::map<std::string_view, std::size_t> indexes_;  ///< of the codes
  bool strict_;
  artifactlist files_;
  bool begun_ = false;
  std::size_t results_ = 0;
};

/// The parts of the log before its results.
void sarifreporter::begin() {
  if (begun_) return;
  begun_ = true;
  ordered_json rules = ordered_json::array();
  for (const coderow& each : codes_) rules.push_back(rulerow(each));
  const ordered_json tool = {
      {"driver", {{"name", "optxv"}, {"version", OPTXV_COMMAND_VERSION}, {"rules", rules}}}};
  put(out_, "{\n  \"$schema\": \"" + std::string(schema) +
                "\",\n  \"version\": \"2.1.0\",\n  \"runs\": [\n    {\n      \"tool\": " +
                jsontext(tool, 6).substr(6) +
                ",\n      \"columnKind\": \"utf16CodeUnits\",\n      \"results\": [");
}

ordered_json sarifreporter::region(const place& where) const {
  if (where.column == 0) return {{"startLine", where.line}};
  const unitrange range = units(where);
  return {{"startLine", where.line}, {"startColumn", range.begin}, {"endColumn", range.end}};
}

ordered_json sarifreporter::location(const place& where) {
  ordered_json physical = {{"artifactLocation", files_.location(where.file)}};
  if (where.line > 0) physical["region"] = region(where);
  return {{"physicalLocation", physical}};
}

/// Whether the edits of a hint can be told: exactly, and so that something changes.
bool sarifreporter::canfix(const hint& each) const {
  return !each.edits.empty() && std::ranges::all_of(each.edits, [&](const edit& one) {
    const unitrange range = units(one.where);
    return isgood(one.where) && isutf8(one.text) && (range.begin < range.end || !one.text.empty());
  });
}

ordered_json sarifreporter::fixof(const hint& each) {
  ordered_json changes = ordered_json::array();
  std::map<std::string, std::size_t> known;
  for (const edit& one : each.edits) {
    const auto [row, fresh] = known.emplace(one.where.file, changes.size());
    if (fresh) changes.push_back({{"artifactLocation", files_.location(one.where.file)}});
    changes[row->second]["replacements"].push_back(
        {{"deletedRegion", region(one.where)}, {"insertedContent", {{"text", one.text}}}});
  }
  return {{"description", messageof(advice(each))}, {"artifactChanges", changes}};
}

/// What adds to a finding: at a place of its own, or as further lines of the message.
void sarifreporter::addadditions(ordered_json& result, const finding& found) {
  std::string text = messagetext(found.text);
  ordered_json related = ordered_json::array();
  for (const addition& each : additionsof(found)) {
    if (!each.elsewhere) {
      text += '\n' + messagetext(std::string(severityword(each.level)) + ": " + each.text);
      continue;
    }
    ordered_json row = {{"id", related.size()}};
    row.update(location(each.where));
    row["message"] = messageof(each.text);
    related.push_back(row);
  }
  result["message"]["text"] = text;
  result["locations"] = ordered_json::array({location(found.where)});
  if (!related.empty()) result["relatedLocations"] = related;
}

void sarifreporter::take(const finding& found) {
  if (found.level == severity::plain) return;
  begin();
  ordered_json result = ordered_json::object();
  const auto code = indexes_.find(found.code);
  if (!found.code.empty()) result["ruleId"] = found.code;
  if (code != indexes_.end()) result["ruleIndex"] = code->second;
  result["level"] = severityword(found.level);
  addadditions(result, found);
  for (const hint& each : found.hints)
    if (canfix(each)) result["fixes"].push_back(fixof(each));
  put(out_, (results_++ > 0 ? ",\n" : "\n") + jsontext(result, 8));
}

ordered_json sarifreporter::invocation(const tally& total) const {
  const int status = total.status(strict_);
  ordered_json row = {{"executionSuccessful", status != statusunusable}, {"exitCode", status}};
  if (total.omitted > 0) {
    const std::string text = counted(total.omitted, "more error") + " not shown";
    row["toolExecutionNotifications"].push_back({{"level", "note"}, {"message", messageof(text)}});
  }
  return row;
}

void sarifreporter::summary(const tally& total) {
  begin();
  const ordered_json invocations = ordered_json::array({invocation(total)});
  put(out_, std::string(results_ > 0 ? "\n      " : "") +
                "],\n      \"artifacts\": " + jsontext(files_.rows(), 6).substr(6) +
                ",\n      \"invocations\": " + jsontext(invocations, 6).substr(6) +
                "\n    }\n  ]\n}\n");
}

}  // namespace

std::unique_ptr<reporter> makesarif(std::FILE* out, std::vector<coderow> codes, bool strict) {
  return std::make_unique<sarifreporter>(out, std::move(codes), strict);
}

}  // namespace command
