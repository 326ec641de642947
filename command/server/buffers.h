// The documents that a client has open.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "server/positions.h"

namespace command {

/// An open document.
struct buffer {
  std::string uri, language;
  std::int64_t version = 0;  ///< as the client counts
  std::size_t edition = 0;   ///< no two texts of a server have the same
  linedtext text;
};

/// Those of a server, by path; a document that is no file has its URI for that.
class buffers {
 public:
  void open(const std::string& path, buffer opened);
  void close(const std::string& path) { all_.erase(path); }
  /// Nil for one that is not open.
  const buffer* find(const std::string& path) const;
  const std::map<std::string, buffer>& all() const { return all_; }

  /// Replaces what is between two positions; all of the text if there is none.
  /// REQUIRES: the document is open.
  void change(const std::string& path, const std::optional<std::pair<position, position>>& range,
              const std::string& text, encoding counts);
  void setversion(const std::string& path, std::int64_t version) {
    all_.at(path).version = version;
  }

 private:
  std::map<std::string, buffer> all_;
  std::size_t editions_ = 0;
};

}  // namespace command
