// The documents of one run, each read once.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "text/document.h"

namespace command {

/// Keeps what has been read, and what could not be, by name. A file that has two names, through
/// links or in another spelling, is read and held once. All texts together have at most
/// textdocument::largest bytes: a file that goes over what is left is a failure as one that is too
/// large.
class shelf {
 public:
  /// The document of a name, as textdocument::read gives it. BORROWS: valid as long as the shelf.
  const readresult& input(const std::string& name);

  /// The document of a name that something read refers to, to show lines of it: what is on the
  /// shelf already, or else a regular file. Nothing else is opened for this, since to read a pipe
  /// is to take it from its reader. Nil where there is none. BORROWS: as input.
  const textdocument* shown(const std::string& name);

  /// The files of all documents that were read: what a product must not be laid over.
  std::vector<identity> identities() const;

 private:
  readresult read(const std::string& name) const;
  const textdocument* sameas(const std::string& name) const;

  std::map<std::string, readresult> readings_;
  std::map<identity, const textdocument*> files_;  ///< those of the readings that are documents
  std::size_t left_ = textdocument::largest;
};

}  // namespace command
