// The language server: JSON-RPC, the life cycle, and the table of what is answered.
#pragma once

#include <deque>
#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "server/frames.h"
#include "server/session.h"

namespace command {

/// Answers a client. It reads what a client sends in pieces of any size and gives what it has to
/// say, a message at a time and without its header, to a function. It waits for nothing: findings
/// of changed documents are sent as soon as what came is worked off, and before the answer to a
/// request that comes after the change.
class server {
 public:
  using sender = std::function<void(const std::string& message)>;
  explicit server(sender send) : send_(std::move(send)) {}

  void take(std::string_view bytes);

  /// Whether the client has told it to exit; and with which status: 0 after a request to shut down,
  /// else 1.
  bool ended() const { return ended_; }
  int status() const { return shutdown_ ? 0 : 1; }
  /// The process of the client; 0 if it did not say.
  std::int64_t client() const { return client_; }

 private:
  struct method {
    std::string_view name;
    json (server::*handle)(const json& params);
    bool request;
  };
  /// A message that waits, and whether its request was cancelled.
  struct waiting {
    json content;
    bool cancelled = false;
  };
  static const std::vector<method>& methods();

  void queue(const frame& came);
  void queue(json content);
  void cancel(const json& params);
  void work(const waiting& next);
  void answer(const json& id, const std::string& name, const json& params, bool cancelled);
  void notify(const std::string& name, const json& params);
  json handled(const method& row, const json& params);
  void fail(const json& id, const requestfault& fault);
  void send(const json& content);
  void request(const char* name, json params);
  void response(const json& content);

  json initialize(const json& params);
  json initialized(const json& params);
  json shutdown(const json& params);
  json exit(const json& params);
  json nothing(const json&) { return nullptr; }
  json didopen(const json& params);
  json didchange(const json& params);
  json didclose(const json& params);
  json didsave(const json& params);
  json filesdidchange(const json& params);
  json settingsdidchange(const json& params);
  template <json (*Feature)(session&, const json&)>
  json feature(const json& params) {
    return Feature(in_, params);
  }

  void readabilities(const json& params);
  void takesettings(const json& settings);
  void asksettings();
  void settle();
  void settle(const std::string& path);
  void publish(const std::string& owner, const std::map<std::string, json>& rows);
  void push(const std::string& path);

  sender send_;
  framereader frames_;
  std::deque<waiting> waiting_;
  session in_;
  bool initialized_ = false, shutdown_ = false, ended_ = false;
  std::int64_t client_ = 0, requests_ = 0;
  std::string folder_;                        ///< of the workspace; empty if the client has none
  std::set<std::int64_t> asked_;              ///< our requests for settings
  std::map<std::string, std::string> shown_;  ///< by path of a document, what its findings are of
  std::map<std::string, std::map<std::string, json>> pushed_;  ///< by file, then by document
};

}  // namespace command
