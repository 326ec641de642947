// A document: a text with its name, in memory, which gives its lines.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "platform/descriptors.h"

namespace command {

using optxv::descriptor;
using optxv::identity;
using optxv::identityof;

/// Why a document cannot be read.
struct readfailure {
  int error = 0;          ///< the system's error number; EFBIG for a text over the limit
  std::size_t limit = 0;  ///< that limit, in bytes: textdocument::largest, or what is left of it

  /// As words: "No such file or directory", "larger than 1 GiB", by itself or with others.
  std::string words() const;
};

class textdocument;
using readresult = std::variant<textdocument, readfailure>;

/// A text with its name. It is a value whose copies share the text.
class textdocument {
 public:
  static constexpr std::size_t largest = std::size_t{1} << 30;  ///< bytes: 1 GiB

  /// A text that is in memory. REQUIRES: at most `largest` bytes.
  textdocument(std::string name, std::string text);

  /// All bytes of a file, up to its end; "-" is standard input. The file is opened once, whatever
  /// kind it is. Standard input is read only by the first call, and each call gives that text, or
  /// that failure. Every failed system call is a failure, never an end of the text; and so is a
  /// text of more than `limit` bytes, of which no more than that is held. A lack of memory is the
  /// failure ENOMEM. Calls that a signal interrupts are repeated. A name may have any length.
  static readresult read(const std::string& name, std::size_t limit = largest);

  const std::string& name() const { return name_; }
  std::string_view text() const { return content_->text; }
  /// Of the file, as it was when it was opened; no file for a text that was in memory.
  identity id() const { return content_->id; }
  /// The same text under another name.
  textdocument named(std::string name) const;

 private:
  struct content {
    std::string text;
    identity id;
  };
  textdocument(std::string name, std::shared_ptr<content> shared)
      : name_(std::move(name)), content_(std::move(shared)) {}
  static readresult readfile(const std::string& name, std::size_t limit);
  static readresult readdescriptor(const std::string& name, int file, std::size_t limit);

  std::string name_;
  std::shared_ptr<content> content_;
};

}  // namespace command
