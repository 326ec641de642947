// The language server, over texts in memory: messages that open, edit and ask, and bytes that are
// no messages, in pieces of any size. Whatever the pieces are, the server answers every request
// once and in the same way, and in the end tells the same findings.
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "grammar.h"
#include "picker.h"
#include "richdefinition.h"
#include "server/frames.h"
#include "server/server.h"
#include "support.h"

namespace optxv::fuzz {
namespace {

using command::framed;
using command::server;
using nlohmann::json;

/// A folder that is there and holds no file of a fuzzer.
const std::string root = "file:///proc/self/task";

constexpr std::array<std::string_view, 3> documents = {"a.def", "a.opt", "b.opt"};

std::string uriof(std::size_t document) {
  return root + '/' + std::string(documents[document]);
}

// --- What the client says

class client {
 public:
  explicit client(picker& from) : from_(from) {
    const bool lint = from_.coin(), tokens = from_.coin(), abilities = from_.coin();
    const json settings = {
        {"definitions", {{{"definition", "a.def"}, {"files", {"*.opt"}}, {"tokens", tokens}}}},
        {"lint", lint},
        {"inlayHints", !lint}};
    json can = {{"general", {{"positionEncodings", {from_.coin() ? "utf-8" : "utf-16"}}}}};
    if (abilities)
      can["textDocument"] = {{"completion", {{"completionItem", {{"snippetSupport", true}}}}},
                             {"documentSymbol", {{"hierarchicalDocumentSymbolSupport", true}}},
                             {"publishDiagnostics", {{"relatedInformation", true}}},
                             {"hover", {{"contentFormat", {"markdown"}}}}};
    request("initialize",
            {{"rootUri", root}, {"capabilities", can}, {"initializationOptions", settings}});
    notify("initialized", json::object());
    constexpr std::array<const char*, 3> rules = {"Normal", "Path", "Minos"};
    open(0, richdefinition(rules[from_.below(3)]));
    open(1, "step_limit 5\nmethod primal_simplex\nx.scale('a',*) 2\n");
  }

  /// All that is said, until the choices end.
  std::string said() {
    for (int steps = 0; steps < 30 && !from_.done(); steps++) step();
    for (std::size_t i = 0; i < documents.size(); i++)
      request("textDocument/semanticTokens/full", about(i));
    return std::move(said_);
  }
  /// Requests that were sent; and whether all of them arrive as they are.
  std::int64_t requests() const { return id_; }
  bool intact() const { return intact_; }

 private:
  void step() {
    const std::size_t document = from_.below(documents.size());
    switch (from_.below(10)) {
      case 0:
        return toggle(document);
      case 1:
        return broken();
      case 2:
        return change(document, json());
      case 3:
      case 4:
      case 5:
        return change(document, range());
      default:
        return ask(document);
    }
  }

  void ask(std::size_t document) {
    static constexpr std::array<const char*, 13> asked = {
        "completion",        "hover",         "definition", "references",
        "documentHighlight", "prepareRename", "rename",     "documentSymbol",
        "formatting",        "foldingRange",  "inlayHint",  "semanticTokens/range",
        "codeAction"};
    json params = about(document);
    params["position"] = position();
    params["range"] = range();
    params["newName"] = text();
    params["context"] = {{"includeDeclaration", from_.coin()}, {"diagnostics", json::array()}};
    params["options"] = {{"tabSize", 2}, {"insertSpaces", true}};
    request(std::string("textDocument/") + asked[from_.below(asked.size())], params);
  }
  void toggle(std::size_t document) {
    if (from_.coin()) return notify("textDocument/didClose", about(document));
    open(document, text());
  }
  void open(std::size_t document, const std::string& content) {
    const char* language = document == 0 ? "optxv-definition" : "optxv-parameters";
    notify("textDocument/didOpen", {{"textDocument",
                                     {{"uri", uriof(document)},
                                      {"languageId", language},
                                      {"version", ++version_},
                                      {"text", content}}}});
  }
  void change(std::size_t document, const json& range) {
    json params = about(document), each = {{"text", text()}};
    params["textDocument"]["version"] = ++version_;
    if (!range.is_null()) each["range"] = range;
    params["contentChanges"] = {each};
    notify("textDocument/didChange", params);
  }
  /// Bytes that are no message, or a message that says nothing.
  void broken() {
    const std::string_view bytes = from_.text(80);
    intact_ = false;
    switch (from_.below(4)) {
      case 0:
        said_ += bytes;
        break;
      case 1:
        said_ += framed(bytes);
        break;
      case 2:
        said_ += framed(R"({"jsonrpc":"2.0","id":1,"method":"textDocument/hover","params":)" +
                        std::string(bytes) + '}');
        break;
      default:
        said_ += "Content-Length: " + std::string(bytes) + "\r\n\r\n";
    }
  }

  static json about(std::size_t document) { return {{"textDocument", {{"uri", uriof(document)}}}}; }
  json position() {
    const std::int32_t line = from_.byte(), character = from_.byte();
    return {{"line", line % 60}, {"character", character == 255 ? INT32_MAX : character % 70}};
  }
  json range() {
    const json start = position(), end = from_.coin() ? start : position();
    return {{"start", start}, {"end", end}};
  }
  /// Words and lines of both languages, and bytes; as JSON has them, in UTF-8.
  std::string text() {
    std::string all;
    for (unsigned count = from_.below(6); count > 0; count--) {
      const unsigned which = from_.byte();
      if (which < 100)
        all += parameterwords[which % parameterwords.size()];
      else if (which < 200)
        all += definitionwords[which % definitionwords.size()];
      else if (which < 230)
        all += edgenumbers[which % edgenumbers.size()];
      else
        all += from_.text(40);
      all += from_.coin() ? ' ' : '\n';
    }
    return all;
  }

  void request(const std::string& method, const json& params) {
    send({{"jsonrpc", "2.0"}, {"id", ++id_}, {"method", method}, {"params", params}});
  }
  void notify(const std::string& method, const json& params) {
    send({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
  }
  void send(const json& content) {
    said_ += framed(content.dump(-1, ' ', false, json::error_handler_t::replace));
  }

  picker& from_;
  std::string said_;
  std::int64_t id_ = 0, version_ = 0;
  bool intact_ = true;
};

// --- What the server says

/// A server, and what it said last.
class hearing {
 public:
  hearing() : to_([this](const std::string& message) { hear(message); }) {}

  void take(std::string_view bytes) { to_.take(bytes); }

  std::map<std::string, std::string> answers, findings;
  std::int64_t answered = 0;

 private:
  void hear(const std::string& message) {
    const json content = json::parse(message, nullptr, false);
    demand(content.is_object() && content.value("jsonrpc", "") == "2.0", "a message is one");
    if (content.contains("method")) {
      if (content["method"] != "textDocument/publishDiagnostics") return;
      findings[content["params"]["uri"]] = content["params"]["diagnostics"].dump();
      return;
    }
    demand(content.contains("id") && (content.contains("result") != content.contains("error")),
           "an answer has a result or an error");
    if (content.contains("error"))
      demand(content["error"]["code"] != command::internalerror, "nothing fails inside");
    answered++;
    answers[content["id"].dump()] += message;
  }

  server to_;
};

void run(picker& from) {
  const std::size_t chosen = 1 + from.byte() * from.below(40);
  client talks(from);
  const std::string all = talks.said();
  // After each piece the server looks whether anything has changed, so they are not too many.
  const std::size_t piece = std::max(chosen, all.size() / 40);
  hearing whole, pieces;
  whole.take(all);
  for (std::string_view rest = all; !rest.empty(); rest.remove_prefix(std::min(piece, rest.size())))
    pieces.take(rest.substr(0, piece));
  demand(whole.answers == pieces.answers, "answers do not depend on the pieces");
  demand(whole.findings == pieces.findings, "findings do not depend on the pieces");
  if (talks.intact()) demand(whole.answered == talks.requests(), "every request is answered once");
}

}  // namespace
}  // namespace optxv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  optxv::fuzz::picker from(data, std::min<std::size_t>(size, 600));
  optxv::fuzz::run(from);
  return 0;
}
