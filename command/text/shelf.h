// The documents of one run, each read once.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "text/document.h"

namespace command {

/// Keeps what has been read, and the failures, by name. A file that has two names, through links or
/// another spelling, is read and held only once. All texts together have at most
/// textdocument::largest bytes: a file that has more than what is left of that is the same failure
/// as one that is too large.
class shelf {
 public:
  /// The document of a name, as textdocument::read gives it. BORROWS: valid as long as the shelf.
  const readresult& input(const std::string& name);

 private:
  readresult read(const std::string& name) const;
  const textdocument* sameas(const std::string& name) const;

  std::map<std::string, readresult> readings_;
  std::map<identity, const textdocument*> files_;  ///< those of the readings that are documents
  std::size_t left_ = textdocument::largest;
};

}  // namespace command
