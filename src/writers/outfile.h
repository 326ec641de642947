// A text file that is written from start to end and reports its failures.
#pragma once

#include <string>
#include <string_view>

#include "foundation/runtime.h"
#include "foundation/textfile.h"

namespace optxv {

/// A text in memory that takes the place of a file. BORROWS: the text, until the writer is closed.
struct inmemory {
  std::string& text;
};

/// A file that a writer fills. Every step raises einouterror if it, or any before it, failed; what
/// was written until then stays in the file.
///
/// Text is held back in blocks, so a full disk may be noticed only in close: call it to know. The
/// destructor abandons the file.
class outfile {
 public:
  /// Creates or empties the file; an empty name is standard output. A name ends at a zero byte or
  /// after 255 bytes.
  explicit outfile(std::string_view name) {
    file_.assign(name);
    file_.rewrite();
    _Q9error_check();
  }
  /// Empties the text and writes to it, which fails for want of memory alone (std::bad_alloc).
  explicit outfile(inmemory target) { file_.rewritememory(target.text); }
  outfile(const outfile&) = delete;
  outfile& operator=(const outfile&) = delete;
  ~outfile() { abandon(); }

  bool opened() const { return file_.opened(); }

  /// Writes the texts one after the other.
  template <class... Pieces>
  void put(const Pieces&... pieces) {
    (file_.write(pieces), ...);
    _Q9error_check();
  }

  void close() {
    file_.close();
    _Q9error_check();
  }

  /// Closes the file if it is open; a failure is lost, and leaves no I/O error code.
  void abandon() noexcept {
    if (!file_.opened()) return;
    file_.close();
    ioresult();
  }

 private:
  textfile file_;
};

}  // namespace optxv
