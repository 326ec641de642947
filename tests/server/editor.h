// A client of the language server in the same process, as an editor is one: documents with a cursor
// in their text, and answers in short words.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "server/frames.h"
#include "server/server.h"
#include "server/uris.h"
#include "support/scratchfolder.h"

namespace command {

using std::string;

/// A text in which a bar stands for the cursor.
struct cursortext {
  explicit cursortext(const string& marked) : text(marked), at(marked.find('|')) {
    if (at != text.npos) text.erase(at, 1);
  }
  string text;
  std::size_t at;
};

class editor : public testing::Test {
 protected:
  editor() : back_(std::filesystem::current_path()) { start(); }
  ~editor() override { std::filesystem::current_path(back_); }

  /// Another server, which knows nothing.
  void start() {
    to_ = std::make_unique<server>([this](const string& message) { hear(json::parse(message)); });
  }
  string path(const string& name) const { return folder_.path() + '/' + name; }
  string uri(const string& name) const { return uriof(path(name)); }
  void save(const string& name, const string& text) const { folder_.put(name, text); }

  /// Sends a message, in pieces of some size, and takes up what comes back.
  void send(const json& message, std::size_t piece = string::npos) {
    sendbytes(framed(message.dump()), piece);
  }
  void sendbytes(const string& bytes, std::size_t piece = string::npos) {
    for (std::size_t at = 0; at < bytes.size(); at += std::min(piece, bytes.size() - at))
      to_->take(std::string_view(bytes).substr(at, piece));
  }
  void notify(const string& method, const json& params) {
    send({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
  }
  /// The result of a request, or the error.
  json ask(const string& method, const json& params) {
    send({{"jsonrpc", "2.0"}, {"id", ++id_}, {"method", method}, {"params", params}});
    if (!answers_.contains(id_)) return "no answer";
    const json& answer = answers_[id_];
    return answer.contains("error") ? answer["error"] : answer["result"];
  }

  void begin(const json& capabilities = json::object(), const json& options = nullptr) {
    hello_ = ask("initialize", {{"processId", nullptr},
                                {"rootUri", uriof(folder_.path())},
                                {"capabilities", capabilities},
                                {"initializationOptions", options}});
    notify("initialized", json::object());
  }
  void open(const string& name, const string& text, const string& language = "optxv-parameters") {
    notify("textDocument/didOpen", {{"textDocument",
                                     {{"uri", uri(name)},
                                      {"languageId", language},
                                      {"version", ++version_},
                                      {"text", text}}}});
  }
  void edit(const string& name, const json& changes) {
    notify("textDocument/didChange",
           {{"textDocument", {{"uri", uri(name)}, {"version", ++version_}}},
            {"contentChanges", changes}});
  }
  void change(const string& name, const string& text) { edit(name, {{{"text", text}}}); }

  json document(const string& name) const { return {{"textDocument", {{"uri", uri(name)}}}}; }
  /// The place of the cursor, as a request has it.
  json at(const string& name, const cursortext& in) const {
    json params = document(name);
    params["position"] = positionjson(linedtext(in.text).at(in.at, encoding::utf16));
    return params;
  }

  /// The findings of a document, "1:0-4 unknown-option" each: line from 0, and characters.
  std::vector<string> findings(const string& name) const {
    std::vector<string> rows;
    const auto found = findings_.find(uri(name));
    if (found == findings_.end()) return {"none were sent"};
    for (const json& each : found->second)
      rows.push_back(shown(each["range"]) + ' ' + each.value("code", ""));
    return rows;
  }
  static string shown(const json& range) {
    const json &from = range["start"], &to = range["end"];
    return from["line"].dump() + ':' + from["character"].dump() + '-' +
           (from["line"] == to["line"] ? "" : to["line"].dump() + ':') + to["character"].dump();
  }

  /// What becomes of a text by edits, as the protocol has them.
  static string edited(const string& text, const json& edits) {
    linedtext lines(text);
    std::map<std::size_t, json> last;
    for (const json& each : edits)
      last[lines.offset(positionfrom(each["range"]["start"]), encoding::utf16)] = each;
    for (auto each = last.rbegin(); each != last.rend(); ++each)
      lines.replace(each->first,
                    lines.offset(positionfrom(each->second["range"]["end"]), encoding::utf16),
                    each->second["newText"].get<string>());
    return lines.text();
  }

  const optxv::test::scratchfolder folder_;
  const std::filesystem::path back_;
  std::vector<json> heard_;               ///< everything, in order
  std::map<std::int64_t, json> answers_;  ///< by id
  std::map<string, json> findings_;       ///< by URI
  json hello_;
  std::int64_t id_ = 0, version_ = 0;
  std::unique_ptr<server> to_;

 private:
  void hear(const json& message) {
    heard_.push_back(message);
    const bool named = message.contains("method");
    if (named && message["method"] == "textDocument/publishDiagnostics")
      findings_[message["params"]["uri"]] = message["params"]["diagnostics"];
    if (!named && message["id"].is_number_integer()) answers_[message["id"]] = message;
  }
};

}  // namespace command
