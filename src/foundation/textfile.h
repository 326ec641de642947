// Text files, read and written in blocks, and texts in memory, read and written in the same way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/visibility.h"

namespace optxv {

/// A text file that is read line by line or written from front to back.
///
/// A file has a name (assign) and is then opened with reset or rewrite. An empty name stands for
/// the standard input or output: the host's own stdio stream, which is used as it is, flushed but
/// never closed and never given another buffer. Every other file is a descriptor of this object,
/// close-on-exec, with a block of 64 KiB that lives while the file is open; memory use does not
/// depend on the length of a file or of its lines. A line that goes on for 1 GiB past what was read
/// of it is taken for one without an end: the read fails with EFBIG (27). System calls that a
/// signal interrupts are repeated.
///
/// resetmemory and rewritememory open a text in memory instead, whatever the name is. Reading it is
/// in every respect like reading a file of these bytes.
///
/// Nothing here raises, except where memory runs out (std::bad_alloc): for the block when a file is
/// opened, or for a text in memory that grows. Any other failure stores the system's error number,
/// which ioresult (runtime.h) gives, and the operation ends as if the file ended there; the caller
/// may check at any time. Text is held back until the block is full or the file is closed. So a
/// caller that wants to know of every failure must call close, and look at the error code after it.
///
/// INVARIANT: a closed file is at its end, reads as empty, and refuses a write with EBADF.
class OPTXV_EXPORT textfile {
 public:
  textfile() = default;
  textfile(const textfile&) = delete;
  textfile& operator=(const textfile&) = delete;
  /// Closes the file.
  ~textfile() { close(); }

  /// Sets the name for the next open. A zero byte ends it, as it does for the C library. A file
  /// that is open stays open.
  void assign(std::string_view name);

  /// Opens for reading from the start; an open file is closed first. The error code becomes 0 or
  /// the system's number. A directory is refused with EISDIR (21), and with nodevices a named
  /// character device too, other than a terminal or the null device, with ENOTSUP (95 on Linux).
  void reset(bool nodevices = false);

  /// The same for bytes in memory, any number of them; this cannot fail. BORROWS: the bytes, which
  /// must not change until the file is closed.
  void resetmemory(std::string_view bytes);

  /// Creates the file with mode 0666 less the umask, or empties it, and opens it for writing.
  /// Otherwise as reset.
  void rewrite();

  /// The same as rewrite for a text in memory, which is emptied and then grows with each write,
  /// until memory runs out (std::bad_alloc). BORROWS: the text, until the file is closed.
  void rewritememory(std::string& text);

  bool opened() const { return mode_ != mode::closed; }

  /// True if nothing is left to read. This looks one byte ahead, so the end of the file is seen
  /// before a read fails, not only after. Also true if the file is not open for reading.
  bool eof() { return next_ == end_ && atend(); }

  /// The system's error number of the read that failed, after which nothing more is read; 0 if none
  /// did. It stays until the next open; asking for it does not clear it.
  int failure() const { return failure_; }

  /// Reads into dest up to a line feed, the end of the file or maximum bytes, whichever comes
  /// first, and gives the number of bytes. If the last byte taken is a carriage return it is
  /// dropped, even if that byte is the one that reached the maximum. The line feed stays unread:
  /// another read there gives 0. REQUIRES: room for maximum bytes at dest; maximum >= 0.
  int readstring(char* dest, int maximum);

  /// Takes the next line, to which readstring and readln would come in one step: all of it is in
  /// the block, and it has at most maximum bytes before its line feed. The line comes without the
  /// carriage return that may be its last byte. False for any other line, of which nothing is
  /// taken. BORROWS: the line, good until the next read.
  bool takeline(std::size_t maximum, std::string_view& line);

  /// Skips everything up to and including the next line feed. Gives the number of bytes that the
  /// line lost: those before the line feed, without a carriage return that is the last of them.
  std::size_t readln();

  /// Writes the bytes as they are.
  void write(std::string_view text) {
    if (mode_ != mode::writing || text.size() >= blocksize - held_) return writethrough(text);
    held_ += text.copy(block_.get() + held_, text.size());
  }

  /// Writes one line feed.
  void writeln() { write("\n"); }

  /// Writes what was held back and closes. Does nothing if the file is not open. Standard input
  /// stays as it is; standard output is flushed.
  void close();

 private:
  enum class mode : unsigned char {
    closed,
    reading,
    writing,
    writingmemory,
    standardinput,
    standardoutput
  };

  static constexpr std::size_t blocksize = std::size_t{64} << 10;

  void begin();
  void open(int flags, bool nodevices, mode opened, mode standard);
  bool atend();
  bool fill();
  bool endless(std::size_t skipped);
  void failread(int number);
  int getstandard();
  int readstandard(char* dest, int maximum);
  std::size_t skipstandard();
  void writethrough(std::string_view text);
  void flush();
  void writeblock(const char* text, std::size_t size);

  char name_[256] = {};   // zero-terminated
  bool standard_ = true;  // the name is empty
  mode mode_ = mode::closed;
  bool ended_ = false;  // a read has met the end of the file or failed
  int descriptor_ = -1;
  std::unique_ptr<char[]> block_;
  int failure_ = 0;
  // Signals whose handlers interrupt a write to standard output, bit n - 1 for signal n.
  std::uint64_t interrupting_ = 0;
  // Reading: the bytes not yet taken, which are in the block or in the caller's memory; none in any
  // other mode.
  const char* next_ = nullptr;
  const char* end_ = nullptr;
  std::size_t held_ = 0;         // writing: bytes held back in the block
  std::string* text_ = nullptr;  // writing to memory: the text that grows
};

}  // namespace optxv
