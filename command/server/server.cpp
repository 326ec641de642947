#include "server/server.h"

#include <algorithm>

#include "server/completion.h"
#include "server/diagnostics.h"
#include "server/formatting.h"
#include "server/hover.h"
#include "server/navigation.h"
#include "server/outline.h"
#include "server/semantics.h"
#include "server/uris.h"
#include "text/wording.h"

namespace command {
namespace {

bool isid(const json& id) {
  return id.is_number_integer() || id.is_string();
}

/// What the server can do, in the words of the protocol.
json capabilities(encoding counts) {
  return {{"positionEncoding", counts == encoding::utf8 ? "utf-8" : "utf-16"},
          {"textDocumentSync",
           {{"openClose", true}, {"change", 2}, {"save", {{"includeText", false}}}}},
          {"completionProvider", {{"triggerCharacters", {".", "=", " "}}}},
          {"hoverProvider", true},
          {"definitionProvider", true},
          {"referencesProvider", true},
          {"documentHighlightProvider", true},
          {"documentSymbolProvider", true},
          {"codeActionProvider", {{"codeActionKinds", {"quickfix", "source.fixAll"}}}},
          {"renameProvider", {{"prepareProvider", true}}},
          {"documentFormattingProvider", true},
          {"foldingRangeProvider", true},
          {"inlayHintProvider", true},
          {"semanticTokensProvider", {{"legend", tokenlegend()}, {"full", true}, {"range", true}}}};
}

}  // namespace

const std::vector<server::method>& server::methods() {
  static const std::vector<method> all = {
      {"initialize", &server::initialize, true},
      {"initialized", &server::initialized, false},
      {"shutdown", &server::shutdown, true},
      {"exit", &server::exit, false},
      {"textDocument/didOpen", &server::didopen, false},
      {"textDocument/didChange", &server::didchange, false},
      {"textDocument/didClose", &server::didclose, false},
      {"textDocument/didSave", &server::didsave, false},
      {"workspace/didChangeWatchedFiles", &server::filesdidchange, false},
      {"workspace/didChangeConfiguration", &server::settingsdidchange, false},
      {"textDocument/completion", &server::feature<completion>, true},
      {"textDocument/hover", &server::feature<hover>, true},
      {"textDocument/definition", &server::feature<definitionof>, true},
      {"textDocument/references", &server::feature<referencesof>, true},
      {"textDocument/documentHighlight", &server::feature<highlightsof>, true},
      {"textDocument/prepareRename", &server::feature<preparerename>, true},
      {"textDocument/rename", &server::feature<rename>, true},
      {"textDocument/documentSymbol", &server::feature<documentsymbols>, true},
      {"textDocument/formatting", &server::feature<formatting>, true},
      {"textDocument/foldingRange", &server::feature<foldingranges>, true},
      {"textDocument/inlayHint", &server::feature<inlayhints>, true},
      {"textDocument/semanticTokens/full", &server::feature<semantictokens>, true},
      {"textDocument/semanticTokens/range", &server::feature<semantictokens>, true},
      {"textDocument/codeAction", &server::feature<codeactions>, true},
      {"$/cancelRequest", &server::nothing, false},
      {"$/setTrace", &server::nothing, false},
  };
  return all;
}

// --- Messages

void server::take(std::string_view bytes) {
  frames_.add(bytes);
  while (const auto came = frames_.next()) queue(*came);
  while (!waiting_.empty() && !ended_) {
    const waiting next = std::move(waiting_.front());
    waiting_.pop_front();
    work(next);
  }
  if (!ended_) settle();
}

void server::queue(const frame& came) {
  if (!came.fault.empty()) return fail(nullptr, {parseerror, came.fault});
  json content = json::parse(came.content, nullptr, false);
  if (content.is_discarded()) return fail(nullptr, {parseerror, "the content is no JSON"});
  queue(std::move(content));
}

/// A message is an object with a method, or the answer to a request of ours.
void server::queue(json content) {
  const json& id = optionalmember(content, "id");
  const json& name = optionalmember(content, "method");
  const bool answers = content.is_object() && !content.contains("method") && isid(id) &&
                       (content.contains("result") || content.contains("error"));
  const bool good = name.is_string() && (!content.contains("id") || isid(id));
  if (!answers && !good)
    return fail(isid(id) ? id : json(), {invalidrequest, "this is no request"});
  if (good && name == "$/cancelRequest") return cancel(optionalmember(content, "params"));
  waiting_.push_back({std::move(content)});
}

void server::cancel(const json& params) {
  const json& id = optionalmember(params, "id");
  if (!isid(id)) return;
  for (waiting& each : waiting_)
    if (optionalmember(each.content, "id") == id && each.content.contains("method"))
      each.cancelled = true;
}

void server::work(const waiting& next) {
  const json& name = optionalmember(next.content, "method");
  if (!name.is_string()) return response(next.content);
  const json& params = optionalmember(next.content, "params");
  const json& id = optionalmember(next.content, "id");
  if (id.is_null()) return notify(name.get<std::string>(), params);
  answer(id, name.get<std::string>(), params, next.cancelled);
}

json server::handled(const method& row, const json& params) {
  try {
    return (this->*row.handle)(params);
  } catch (const std::exception& why) {
    throw requestfault{internalerror, why.what()};
  }
}

void server::answer(const json& id, const std::string& name, const json& params, bool cancelled) {
  try {
    if (shutdown_) throw requestfault{invalidrequest, "the server was shut down"};
    if (!initialized_ && name != "initialize")
      throw requestfault{notinitialized, "the server is not initialized"};
    if (cancelled) throw requestfault{requestcancelled, "cancelled"};
    const auto row = std::ranges::find(methods(), name, &method::name);
    if (row == methods().end() || !row->request)
      throw requestfault{methodnotfound, "no request is called \"" + name + '"'};
    settle();
    send({{"jsonrpc", "2.0"}, {"id", id}, {"result", handled(*row, params)}});
  } catch (const requestfault& fault) {
    fail(id, fault);
  }
}

/// A notification has no answer, whatever is wrong with it.
void server::notify(const std::string& name, const json& params) {
  const auto row = std::ranges::find(methods(), name, &method::name);
  if (row == methods().end() || row->request) return;
  const bool early = !initialized_ || shutdown_;
  if (early && name != "exit") return;
  try {
    handled(*row, params);
  } catch (const requestfault& fault) {
    send({{"jsonrpc", "2.0"},
          {"method", "window/logMessage"},
          {"params", {{"type", 2}, {"message", name + ": " + fault.text}}}});
  }
}

void server::fail(const json& id, const requestfault& fault) {
  send(
      {{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", fault.code}, {"message", fault.text}}}});
}

/// Bytes that are no UTF-8, as a file may have them, become the character for that.
void server::send(const json& content) {
  send_(content.dump(-1, ' ', false, json::error_handler_t::replace));
}

void server::request(const char* name, json params) {
  send({{"jsonrpc", "2.0"}, {"id", ++requests_}, {"method", name}, {"params", std::move(params)}});
}

void server::response(const json& content) {
  const json& id = optionalmember(content, "id");
  if (!id.is_number_integer() || asked_.erase(id.get<std::int64_t>()) == 0) return;
  const json& result = optionalmember(content, "result");
  if (result.is_array() && !result.empty()) takesettings(result.front());
}

// --- The life of a session

void server::readabilities(const json& params) {
  const json& can = optionalmember(params, "capabilities");
  abilities& client = in_.client;
  client.snippets = flagat(can, {"textDocument", "completion", "completionItem", "snippetSupport"});
  client.symboltree =
      flagat(can, {"textDocument", "documentSymbol", "hierarchicalDocumentSymbolSupport"});
  client.relatedplaces = flagat(can, {"textDocument", "publishDiagnostics", "relatedInformation"});
  client.versionededits = flagat(can, {"workspace", "workspaceEdit", "documentChanges"});
  client.watching = flagat(can, {"workspace", "didChangeWatchedFiles", "dynamicRegistration"});
  client.configuration = flagat(can, {"workspace", "configuration"});
  const auto has = [](const json& list, const char* word) {
    return list.is_array() && std::ranges::find(list, json(word)) != list.end();
  };
  client.markdown = has(
      optionalmember(optionalmember(optionalmember(can, "textDocument"), "hover"), "contentFormat"),
      "markdown");
  const json& encodings = optionalmember(optionalmember(can, "general"), "positionEncodings");
  in_.counts = has(encodings, "utf-8") ? encoding::utf8 : encoding::utf16;
}

json server::initialize(const json& params) {
  if (initialized_) throw requestfault{invalidrequest, "the server is initialized already"};
  const json& process = optionalmember(params, "processId");
  if (process.is_number_integer()) client_ = process.get<std::int64_t>();
  readabilities(params);
  const json& folders = optionalmember(params, "workspaceFolders");
  const json& root = folders.is_array() && !folders.empty() ? optionalmember(folders.front(), "uri")
                                                            : optionalmember(params, "rootUri");
  if (root.is_string()) folder_ = pathof(root.get<std::string>());
  takesettings(optionalmember(params, "initializationOptions"));
  initialized_ = true;
  return {{"capabilities", capabilities(in_.counts)},
          {"serverInfo", {{"name", "optxv"}, {"version", auditline()}}}};
}

json server::initialized(const json&) {
  if (in_.client.watching) {
    json watchers = json::array();
    for (const char* each : {"**/*.def", "**/*.opt", "**/optxv.json"})
      watchers.push_back({{"globPattern", each}});
    request("client/registerCapability", {{"registrations",
                                           {{{"id", "files"},
                                             {"method", "workspace/didChangeWatchedFiles"},
                                             {"registerOptions", {{"watchers", watchers}}}}}}});
  }
  asksettings();
  return nullptr;
}

json server::shutdown(const json&) {
  shutdown_ = true;
  return nullptr;
}

json server::exit(const json&) {
  ended_ = true;
  return nullptr;
}

// --- Settings

void server::asksettings() {
  if (!in_.client.configuration) return;
  request("workspace/configuration", {{"items", {{{"section", "optxv"}}}}});
  asked_.insert(requests_);
}

/// Settings come as the object itself, or under its name.
void server::takesettings(const json& settings) {
  if (!settings.is_object()) return;
  const json& own = settings.contains("optxv") ? settings["optxv"] : settings;
  if (!own.is_object()) return;
  auto said = parsebindings(own.dump(-1, ' ', false, json::error_handler_t::replace), folder_);
  if (auto* good = std::get_if<bindings>(&said))
    in_.work.setsettings(std::move(*good));
  else
    send({{"jsonrpc", "2.0"},
          {"method", "window/showMessage"},
          {"params",
           {{"type", 2}, {"message", "optxv: the settings: " + std::get<finding>(said).text}}}});
  shown_.clear();
}

json server::settingsdidchange(const json& params) {
  const json& settings = optionalmember(params, "settings");
  if (settings.is_object() && settings.contains("optxv"))
    takesettings(settings);
  else
    asksettings();
  return nullptr;
}

// --- Documents

json server::didopen(const json& params) {
  const json& document = member(params, "textDocument");
  const std::string path = documentpath(params);
  buffer opened{.uri = textmember(document, "uri"),
                .language = textmember(document, "languageId"),
                .version = numbermember(document, "version"),
                .text = linedtext(textmember(document, "text"))};
  in_.open.open(path, std::move(opened));
  in_.work.forget();
  shown_.erase(path);
  return nullptr;
}

json server::didchange(const json& params) {
  const std::string path = documentpath(params);
  if (in_.open.find(path) == nullptr) throw requestfault{invalidparams, "it is not open"};
  const std::int64_t version = numbermember(member(params, "textDocument"), "version");
  const json& changes = member(params, "contentChanges");
  if (!changes.is_array()) throw requestfault{invalidparams, "contentChanges is no list"};
  for (const json& each : changes) {
    std::optional<std::pair<position, position>> range;
    if (const json& given = optionalmember(each, "range"); !given.is_null())
      range = {positionfrom(member(given, "start")), positionfrom(member(given, "end"))};
    in_.open.change(path, range, textmember(each, "text"), in_.counts);
  }
  in_.open.setversion(path, version);
  return nullptr;
}

json server::didclose(const json& params) {
  const std::string path = documentpath(params);
  if (in_.open.find(path) == nullptr) return nullptr;
  publish(path, {{path, json::array()}});
  in_.open.close(path);
  in_.work.closed(path);
  shown_.erase(path);
  return nullptr;
}

json server::didsave(const json&) {
  in_.work.forget();
  return nullptr;
}

json server::filesdidchange(const json&) {
  in_.work.forget();
  return nullptr;
}

// --- Findings

/// Tells the findings of the documents that have changed, or of which a file has changed that they
/// depend on.
void server::settle() {
  for (const auto& [path, document] : in_.open.all()) settle(path);
}

void server::settle(const std::string& path) {
  const std::string stamp = in_.work.stampofall(path);
  std::string& shown = shown_[path];
  if (shown == stamp) return;
  const auto rows = diagnosticsof(in_, path);
  shown = in_.work.stampofall(path);
  publish(path, rows);
}

/// Puts the findings that are told on behalf of a document in place of those before.
void server::publish(const std::string& owner, const std::map<std::string, json>& rows) {
  for (auto& [path, owners] : pushed_)
    if (owners.erase(owner) > 0 && !rows.contains(path)) push(path);
  for (const auto& [path, list] : rows) {
    if (!list.empty()) pushed_[path][owner] = list;
    push(path);
  }
  std::erase_if(pushed_, [](const auto& each) { return each.second.empty(); });
}

/// Sends the findings of a file, each once, whoever it is told on behalf of.
void server::push(const std::string& path) {
  json all = json::array();
  if (const auto found = pushed_.find(path); found != pushed_.end()) {
    const auto& owners = found->second;
    for (const auto& [owner, list] : owners)
      for (const json& each : list)
        if (owners.size() == 1 || std::ranges::find(all, each) == all.end()) all.push_back(each);
  }
  json params = {{"uri", clienturi(in_, path)}, {"diagnostics", std::move(all)}};
  if (const buffer* document = in_.open.find(path)) params["version"] = document->version;
  send({{"jsonrpc", "2.0"},
        {"method", "textDocument/publishDiagnostics"},
        {"params", std::move(params)}});
}

}  // namespace command
