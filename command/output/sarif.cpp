#include "output/sarif.h"

#include <algorithm>
#include <map>

#include "output/json.h"
#include "output/textcolumns.h"
#include "text/printable.h"

namespace command {
namespace {

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
  const std::string clean = printable(text);
  if (clean.find_first_of("{}(") == clean.npos) return clean;
  std::string result;
  for (const char c : clean) {
    if (c == '(' && result.ends_with(']')) result.insert(result.size() - 1, 1, '\\');
    result += c;
    if (c == '{' || c == '}') result += c;
  }
  return result;
}

std::string messageof(std::string_view text) {
  return jsonobject({{"text", jsonstring(messagetext(text))}});
}

std::string wordof(severity level) {
  return '"' + std::string(severityword(level)) + '"';
}

std::string ruleof(const coderow& row) {
  return jsonobject({{"id", jsonstring(row.code)},
                     {"shortDescription", messageof(row.words)},
                     {"defaultConfiguration", jsonobject({{"level", wordof(row.level)}})}});
}

/// A list with a line for each value, so many blanks from the margin, and two less for its end.
std::string longlist(const std::vector<std::string>& values, std::size_t blanks) {
  std::string text;
  for (const std::string& each : values)
    text += (text.empty() ? "[\n" : ",\n") + std::string(blanks, ' ') + each;
  return text.empty() ? "[]" : text + '\n' + std::string(blanks - 2, ' ') + ']';
}

/// The files of the run in the order in which they came up.
class artifactlist {
 public:
  /// The location of a file within the log.
  const std::string& location(const std::string& file) {
    const auto known = locations_.find(file);
    if (known != locations_.end()) return known->second;
    const std::string uri = jsonstring(uriof(file));
    const std::string words = file == "-" ? messageof("standard input") : "";
    const std::string index = std::to_string(rows_.size());
    rows_.push_back(jsonobject({{"location", jsonobject({{"uri", uri}, {"description", words}})},
                                {"roles", "[\"analysisTarget\"]"}}));
    return locations_[file] = jsonobject({{"uri", uri}, {"index", index}});
  }
  const std::vector<std::string>& rows() const { return rows_; }

 private:
  std::map<std::string, std::string> locations_;
  std::vector<std::string> rows_;
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
  std::string resultof(const finding& found);
  std::string region(const place& where) const;
  std::string physical(const place& where);
  std::string fixof(const hint& each);
  bool canfix(const hint& each) const;
  std::string indexof(std::string_view code) const;
  std::string invocation(const tally& total) const;

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
  std::vector<std::string> rules;
  for (const coderow& each : codes_) rules.push_back(ruleof(each));
  put(out_, "{\n  \"$schema\": \"" + std::string(schema) + R"(",
  "version": "2.1.0",
  "runs": [
    {
      "tool": {
        "driver": {
          "name": "optxv",
          "version": ")" OPTXV_COMMAND_VERSION R"(",
          "rules": )" +
                longlist(rules, 12) + R"(
        }
      },
      "columnKind": "utf16CodeUnits",
      "results": [)");
}

std::string sarifreporter::region(const place& where) const {
  const std::string line = std::to_string(where.line);
  if (where.column == 0) return jsonobject({{"startLine", line}});
  const unitrange range = units(where);
  return jsonobject({{"startLine", line},
                     {"startColumn", std::to_string(range.begin)},
                     {"endColumn", std::to_string(range.end)}});
}

std::string sarifreporter::physical(const place& where) {
  return jsonobject({{"artifactLocation", files_.location(where.file)},
                     {"region", where.line > 0 ? region(where) : ""}});
}

/// Whether the edits of a hint can be told: exactly, and so that something changes.
bool sarifreporter::canfix(const hint& each) const {
  return !each.edits.empty() && std::ranges::all_of(each.edits, [&](const edit& one) {
    const unitrange range = units(one.where);
    return isgood(one.where) && isutf8(one.text) && (range.begin < range.end || !one.text.empty());
  });
}

std::string sarifreporter::fixof(const hint& each) {
  std::map<std::string, std::vector<std::string>> replacements;  // by file
  for (const edit& one : each.edits)
    replacements[one.where.file].push_back(
        jsonobject({{"deletedRegion", region(one.where)},
                    {"insertedContent", jsonobject({{"text", jsonstring(one.text)}})}}));
  std::vector<std::string> changes;
  for (const auto& [file, rows] : replacements)
    changes.push_back(jsonobject(
        {{"artifactLocation", files_.location(file)}, {"replacements", jsonlist(rows)}}));
  return jsonobject(
      {{"description", messageof(advice(each))}, {"artifactChanges", jsonlist(changes)}});
}

std::string sarifreporter::indexof(std::string_view code) const {
  const auto row = indexes_.find(code);
  return row == indexes_.end() ? "" : std::to_string(row->second);
}

std::string sarifreporter::resultof(const finding& found) {
  std::string text = messagetext(found.text);
  std::vector<std::string> related, fixes;
  for (const addition& each : additionsof(found)) {
    if (each.elsewhere)
      related.push_back(jsonobject({{"id", std::to_string(related.size())},
                                    {"physicalLocation", physical(each.where)},
                                    {"message", messageof(each.text)}}));
    else
      text += '\n' + std::string(severityword(each.level)) + ": " + messagetext(each.text);
  }
  for (const hint& each : found.hints)
    if (canfix(each)) fixes.push_back(fixof(each));
  const std::string location = jsonobject({{"physicalLocation", physical(found.where)}});
  return jsonobject({{"ruleId", found.code.empty() ? "" : jsonstring(found.code)},
                     {"ruleIndex", indexof(found.code)},
                     {"level", wordof(found.level)},
                     {"message", jsonobject({{"text", jsonstring(text)}})},
                     {"locations", jsonlist({location})},
                     {"relatedLocations", related.empty() ? "" : jsonlist(related)},
                     {"fixes", fixes.empty() ? "" : jsonlist(fixes)}});
}

void sarifreporter::take(const finding& found) {
  if (found.level == severity::plain) return;
  begin();
  put(out_, (results_++ > 0 ? ",\n        " : "\n        ") + resultof(found));
}

std::string sarifreporter::invocation(const tally& total) const {
  const int status = total.status(strict_);
  const std::string omitted = counted(total.omitted, "more error") + " not shown";
  const std::string notification =
      jsonobject({{"level", wordof(severity::note)}, {"message", messageof(omitted)}});
  return jsonobject(
      {{"executionSuccessful", status == statusunusable ? "false" : "true"},
       {"exitCode", std::to_string(status)},
       {"toolExecutionNotifications", total.omitted > 0 ? jsonlist({notification}) : ""}});
}

void sarifreporter::summary(const tally& total) {
  begin();
  put(out_, std::string(results_ > 0 ? "\n      " : "") +
                "],\n      \"artifacts\": " + longlist(files_.rows(), 8) +
                ",\n      \"invocations\": " + longlist({invocation(total)}, 8) +
                "\n    }\n  ]\n}\n");
}

}  // namespace

std::unique_ptr<reporter> makesarif(std::FILE* out, std::vector<coderow> codes, bool strict) {
  return std::make_unique<sarifreporter>(out, std::move(codes), strict);
}

}  // namespace command
