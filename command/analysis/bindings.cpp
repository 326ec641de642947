#include "analysis/bindings.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "text/printable.h"

namespace command {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

// --- Patterns

std::vector<std::string_view> namesof(std::string_view path) {
  std::vector<std::string_view> names;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/'), path.size());
    if (end > 0 && path.substr(0, end) != ".") names.push_back(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return names;
}

/// Whether a name is one that a pattern without a slash means.
bool namemeant(std::string_view pattern, std::string_view name) {
  if (name.starts_with('.') && !pattern.starts_with('.')) return false;
  std::size_t p = 0, n = 0, star = pattern.npos, from = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++, from = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
      p++, n++;
    } else if (star != pattern.npos) {
      p = star + 1, n = ++from;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*', p) == pattern.npos;
}

bool ishidden(std::string_view name) {
  return name.starts_with('.');
}

constexpr std::string_view anyfolders = "**";

// --- JSON

struct badmember {
  std::string text;
};

const json& demand(const json& value, json::value_t type, const std::string& name,
                   const char* what) {
  if (value.type() != type) throw badmember{name + " is not " + what};
  return value;
}

std::string textof(const json& value, const std::string& name) {
  return demand(value, json::value_t::string, name, "a string").get<std::string>();
}

bool flagof(const json& value, const std::string& name) {
  return demand(value, json::value_t::boolean, name, "true or false").get<bool>();
}

binding bindingfrom(const json& row, const std::string& name) {
  binding result;
  for (const auto& [member, value] :
       demand(row, json::value_t::object, name, "an object").items()) {
    const std::string inner = name + '.' + member;
    if (member == "definition") {
      result.definition = textof(value, inner);
    } else if (member == "files") {
      for (const json& each : demand(value, json::value_t::array, inner, "a list"))
        result.files.push_back(textof(each, inner));
    } else if (member == "tokens") {
      result.tokens = flagof(value, inner);
    } else {
      throw badmember{"no member is called " + inquotes(inner)};
    }
  }
  if (result.definition.empty()) throw badmember{name + " has no definition"};
  return result;
}

bindings bindingsfrom(const json& all) {
  bindings result;
  for (const auto& [member, value] :
       demand(all, json::value_t::object, "all of it", "an object").items()) {
    if (member == "definitions") {
      for (const json& each : demand(value, json::value_t::array, member, "a list"))
        result.all.push_back(
            bindingfrom(each, "definitions[" + std::to_string(result.all.size()) + ']'));
    } else if (member == "lint") {
      result.lint = flagof(value, member);
    } else if (member == "inlayHints") {
      result.inlayhints = flagof(value, member);
    } else if (member != "$schema") {
      throw badmember{"no member is called " + inquotes(member)};
    }
  }
  return result;
}

finding wrong(std::string text, const place& where = {}) {
  finding result;
  result.code = "bad-bindings";
  result.where = where;
  result.text = std::move(text);
  return result;
}

/// The place of a byte, which counts from 1, in a text.
place placeof(std::string_view text, std::size_t byte) {
  place result;
  const std::string_view before = text.substr(0, byte > 0 ? byte - 1 : 0);
  result.line = std::ranges::count(before, '\n') + 1;
  result.column = static_cast<std::int64_t>(before.size() - (before.rfind('\n') + 1)) + 1;
  return result;
}

}  // namespace

/// By the names of both, which of the first of the pattern mean the first of the path.
bool meant(std::string_view pattern, std::string_view path) {
  const std::vector<std::string_view> wanted = namesof(pattern), names = namesof(path);
  std::vector<char> good(names.size() + 1, 0);
  good[0] = 1;
  for (const std::string_view each : wanted) {
    std::vector<char> next(good.size(), 0);
    if (each == anyfolders) {
      next[0] = good[0];
      for (std::size_t i = 1; i < good.size(); i++)
        next[i] = static_cast<char>(good[i] != 0 || (next[i - 1] != 0 && !ishidden(names[i - 1])));
    } else {
      for (std::size_t i = 1; i < good.size(); i++)
        next[i] = static_cast<char>(good[i - 1] != 0 && namemeant(each, names[i - 1]));
    }
    good = std::move(next);
  }
  return good.back() != 0 && !names.empty();
}

const binding* bindings::offile(std::string_view path) const {
  const std::string name = fs::path(path).lexically_relative(folder).string();
  for (const binding& each : all)
    for (const std::string& pattern : each.files)
      if (!name.starts_with("..") && meant(pattern, name)) return &each;
  return nullptr;
}

const binding* bindings::ofdefinition(std::string_view path) const {
  const auto is = [&](const binding& each) {
    return (fs::path(folder) / each.definition).lexically_normal() == fs::path(path);
  };
  const auto found = std::ranges::find_if(all, is);
  return found == all.end() ? nullptr : &*found;
}

namespace {

/// The entries of a folder and, if that is wanted, of those below, as far as they may be listed.
/// Hidden folders are passed over.
std::vector<fs::directory_entry> entriesof(const std::string& folder, bool deep,
                                           std::error_code& fault) {
  std::vector<fs::directory_entry> all;
  std::vector<fs::path> waiting = {folder};
  fault.clear();
  while (!waiting.empty() && !fault) {
    const fs::path from = waiting.back();
    waiting.pop_back();
    fs::directory_iterator at(from, fault);
    if (fault == std::errc::permission_denied && from != folder) fault.clear();
    for (; !fault && at != fs::end(at); at.increment(fault)) {
      all.push_back(*at);
      std::error_code none;
      if (deep && !at->is_symlink(none) && at->is_directory(none) &&
          !ishidden(at->path().filename().string()))
        waiting.push_back(at->path());
    }
  }
  return all;
}

/// Whether an entry may be a file to read. What the system does not tell is found by reading it.
bool mayberead(const fs::directory_entry& entry) {
  std::error_code ignored;
  const fs::file_status status = entry.status(ignored);
  return fs::is_regular_file(status) || !fs::status_known(status);
}

}  // namespace

/// Only patterns that name folders make it look into them.
std::vector<std::string> bindings::filesof(const binding& of, std::error_code& fault) const {
  const bool deep = std::ranges::any_of(of.files, [](const std::string& pattern) {
    return pattern.find('/') != pattern.npos || pattern == anyfolders;
  });
  std::vector<fs::directory_entry> entries;
  do entries = entriesof(folder, deep, fault);
  while (fault == std::errc::interrupted);
  std::vector<std::string> found;
  for (const fs::directory_entry& each : entries) {
    const std::string path = each.path().string();
    if (offile(path) == &of && ofdefinition(path) == nullptr && mayberead(each))
      found.push_back(each.path().lexically_relative(folder).string());
  }
  std::ranges::sort(found);
  return found;
}

finding unreadablebindings(const std::string& why) {
  return wrong("cannot be read: " + why);
}

std::variant<bindings, finding> parsebindings(std::string_view text, const std::string& folder) {
  try {
    bindings result = bindingsfrom(json::parse(text));
    result.folder = folder;
    return result;
  } catch (const json::parse_error& fault) {
    return wrong("this is no JSON", placeof(text, fault.byte));
  } catch (const badmember& fault) {
    return wrong(fault.text);
  }
}

std::optional<std::string> nearestbindings(const std::string& folder) {
  for (fs::path at = fs::path(folder);; at = at.parent_path()) {
    const fs::path file = at / bindingsname;
    std::error_code fault;
    if (fs::exists(file, fault) || fault) return file.string();
    if (at == at.parent_path()) return std::nullopt;
  }
}

}  // namespace command
