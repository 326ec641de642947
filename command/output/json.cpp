#include "output/json.h"

#include <algorithm>

#include "text/printable.h"
#include "text/wording.h"

namespace command {
namespace {

using nlohmann::ordered_json;

/// The text with so many blanks more at the beginning of each line. JSON has no line feed inside of
/// a string.
std::string indented(const std::string& text, std::size_t blanks) {
  std::string result(blanks, ' ');
  for (const char c : text) {
    result += c;
    if (c == '\n') result.append(blanks, ' ');
  }
  return result;
}

/// Whether a text has only characters of ASCII that can be shown, and line feeds.
bool isplain(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return (c >= ' ' && c <= '~') || c == '\n'; });
}

/// Such a text as a JSON string: what most texts are, and a fraction of the work.
std::string plainstring(std::string_view text) {
  std::string result;
  result.reserve(text.size() + 8);
  result += '"';
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    if (c == '\n')
      result += "\\n";
    else
      result += c;
  }
  return result + '"';
}

/// A value as text, each line after so many blanks.
std::string jsontext(const ordered_json& value, std::size_t blanks) {
  const std::string text = value.dump(2, ' ', false, ordered_json::error_handler_t::replace);
  return indented(printablejson(text), blanks);
}

/// The constant of the library's message, null for the command's own findings.
ordered_json kindname(std::int32_t kind) {
  constexpr std::int32_t messagekinds = 4;
  if (kind == finding::ownkind) return nullptr;
  const std::string name = constantname(messagekinds, kind);
  return name.empty() ? "optMsgUserError" : name;  // the one whose name is not given out
}

void addplace(ordered_json& row, const place& where) {
  if (where.line == 0) return;
  row["line"] = where.line;
  if (where.column == 0) return;
  row["column"] = where.column;
  row["length"] = where.length;
}

ordered_json noterow(const note& each) {
  ordered_json row = {{"text", each.text}};
  if (each.where.line > 0) row["file"] = each.where.file;
  addplace(row, each.where);
  return row;
}

ordered_json editrow(const edit& each) {
  ordered_json row = {{"file", each.where.file}};
  addplace(row, each.where);
  row["text"] = each.text;
  return row;
}

ordered_json hintrow(const hint& each) {
  ordered_json row = ordered_json::object();
  if (!each.write.empty()) row["write"] = each.write;
  if (!each.words.empty()) row["text"] = each.words;
  for (const edit& change : each.edits) row["edits"].push_back(editrow(change));
  if (!each.edits.empty()) row["sure"] = each.sure;
  return row;
}

class jsonreporter : public reporter {
 public:
  explicit jsonreporter(std::FILE* out) : out_(out) {}

  void take(const finding& found) override {
    ordered_json row = {{"file", found.where.file}, {"severity", severityword(found.level)}};
    addplace(row, found.where);
    row["kind"] = kindname(found.kind);
    row["code"] = found.code.empty() ? ordered_json() : ordered_json(found.code);
    row["text"] = found.text;
    for (const note& each : found.notes) row["notes"].push_back(noterow(each));
    for (const hint& each : found.hints) row["hints"].push_back(hintrow(each));
    if (!found.nearest.empty()) row["nearest"] = found.nearest;
    if (found.source && found.source != source_) row["source"] = *found.source;
    source_ = found.source;
    begin();
    put(out_, (rows_++ > 0 ? ",\n" : "\n") + jsontext(row, 4));
  }

  void summary(const tally& total) override {
    begin();
    const ordered_json counts = {{"errors", total.errors},         {"warnings", total.warnings},
                                 {"files", total.files},           {"unreadable", total.unreadable},
                                 {"dotoptions", total.dotoptions}, {"indicators", total.indicators},
                                 {"omitted", total.omitted}};
    put(out_, std::string(rows_ > 0 ? "\n  " : "") +
                  "],\n  \"summary\": " + jsontext(counts, 2).substr(2) + "\n}\n");
  }

 private:
  void begin() {
    if (!begun_) put(out_, "{\n  \"diagnostics\": [");
    begun_ = true;
  }

  std::FILE* out_;
  bool begun_ = false;
  std::size_t rows_ = 0;
  std::shared_ptr<const std::string> source_;  ///< of the row before
};

}  // namespace

std::string jsonstring(std::string_view text) {
  if (isplain(text)) return plainstring(text);
  const ordered_json value = text;
  return printablejson(value.dump(-1, ' ', false, ordered_json::error_handler_t::replace));
}

std::string jsonobject(std::initializer_list<jsonmember> members) {
  std::string text;
  std::size_t size = 2;
  for (const auto& [name, value] : members) size += name.size() + value.size() + 6;
  text.reserve(size);
  for (const auto& [name, value] : members) {
    if (value.empty()) continue;
    text += text.empty() ? "{\"" : ", \"";
    text += name;
    text += "\": ";
    text += value;
  }
  return text.empty() ? "{}" : std::move(text) + '}';
}

std::string jsonlist(const std::vector<std::string>& values) {
  std::string text;
  for (const std::string& each : values) {
    text += text.empty() ? "[" : ", ";
    text += each;
  }
  return text.empty() ? "[]" : std::move(text) + ']';
}

std::string jsontext(const ordered_json& value, std::size_t blanks) {
  const std::string text = value.dump(2, ' ', false, ordered_json::error_handler_t::replace);
  return indented(printablejson(text), blanks);
}

std::unique_ptr<reporter> makejson(std::FILE* out) {
  return std::make_unique<jsonreporter>(out);
}

}  // namespace command
