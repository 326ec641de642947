// A JSON object of lists, for products of any length.
#pragma once

#include <cstddef>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string_view>

namespace command {

/// Writes an object whose members are lists of rows, or single values, each as it comes, so that
/// memory does not grow with them. BORROWS: the stream.
class jsonlists {
 public:
  explicit jsonlists(std::FILE* out) : out_(out) {}

  /// Begins the next list.
  void list(std::string_view name);
  /// Adds a row to it. REQUIRES: a list has begun.
  void row(const nlohmann::ordered_json& value);
  /// Adds a member that is no list.
  void member(std::string_view name, const nlohmann::ordered_json& value);
  /// Ends the object. REQUIRES: there is a member.
  void end();

 private:
  void begin(std::string_view name);
  void endlist();

  std::FILE* out_;
  std::size_t members_ = 0, rows_ = 0;
  bool open_ = false;  ///< a list
};

}  // namespace command
