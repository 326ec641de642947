// What a server and its client have agreed on, and the documents between them; and the parts of the
// protocol that all requests share.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "server/buffers.h"
#include "server/positions.h"
#include "server/project.h"

namespace command {

using nlohmann::json;

/// A request that cannot be answered: the code and the words of the answer.
struct requestfault {
  int code = 0;
  std::string text = {};
};
inline constexpr int parseerror = -32700, invalidrequest = -32600, methodnotfound = -32601,
                     invalidparams = -32602, internalerror = -32603, notinitialized = -32002,
                     requestcancelled = -32800, requestfailed = -32803;

/// What the client can do, as far as it matters here.
struct abilities {
  bool snippets = false;
  bool markdown = false;
  bool symboltree = false;
  bool relatedplaces = false;
  bool versionededits = false;
  bool watching = false;       ///< registers watched files on request
  bool configuration = false;  ///< gives its settings on request
};

struct session {
  session() : work(open) {}
  session(const session&) = delete;
  session& operator=(const session&) = delete;

  buffers open;
  project work;
  encoding counts = encoding::utf16;
  abilities client;
};

// --- JSON in. A member that is missing or of another type throws requestfault.

const json& member(const json& of, const char* name);
std::string textmember(const json& of, const char* name);
std::int64_t numbermember(const json& of, const char* name);
/// A member that may be missing, or of another type: null then.
const json& optionalmember(const json& of, const char* name);
/// The same down a path of names, for switches: false if it is missing.
bool flagat(const json& of, std::initializer_list<const char*> names);
position positionfrom(const json& value);

/// The path of the document that a request is about: its URI if that is no file.
std::string documentpath(const json& params);

// --- JSON out

json positionjson(const position& at);
json rangejson(const linedtext& text, std::size_t from, std::size_t to, encoding counts);
json rangejson(const linedtext& text, const mark& of, encoding counts);
json rangejson(const linedtext& text, const place& of, encoding counts);
/// The URI of a path as the client knows it.
std::string clienturi(const session& in, const std::string& path);
/// A place in a file that a reader named.
json locationjson(session& in, const kepttable& table, const place& of);

/// Other text for pieces of files, as one change of the workspace. The rows are edits as the
/// protocol has them, by path.
json workspaceedit(const session& in, const std::map<std::string, json>& rows);

/// An open document that is known for what it is, with what a read of it as it is now has told, and
/// a place in it.
struct subject {
  std::string path;
  const buffer& document;
  role what;
  kepttable& table;
  const textmarks& marks;
  std::string name;        ///< of the document, as the reader had it
  std::size_t offset = 0;  ///< of the position that the request has, if any
  std::int64_t line = 0, column = 0;

  const linedtext& text() const { return document.text; }
  std::string_view textat(const mark& of) const;
  const std::vector<finding>& findings() const {
    return what.isdefinition ? table.findings : table.parametersfindings;
  }
  /// The facts of an option; nil for a number that the definition does not have.
  const optxv::optionfacts* option(std::int32_t number) const;
};

/// Reads what a request is about. Nothing for a document that is not open, belongs to no definition
/// or whose definition cannot be read.
std::optional<subject> subjectof(session& in, const json& params);
std::optional<subject> subjectof(session& in, const std::string& path);

}  // namespace command
