#include "foundation/textfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "foundation/interrupted.h"
#include "foundation/runtime.h"

namespace optxv {

namespace {

constexpr std::size_t longestline = std::size_t{1} << 30;

void fail(int number) {
  errno = number;
  setioresult(number);
}

/// Whether a device may give bytes without an end: neither a terminal nor the null device.
bool mayneverend(int descriptor, const struct stat& device) {
  struct stat null;
  return ::isatty(descriptor) == 0 &&
         (::stat("/dev/null", &null) != 0 || null.st_rdev != device.st_rdev);
}

/// The system's number for what is refused although it can be opened, else 0. Directories are;
/// the system itself refuses them only for writing.
int refusal(int descriptor, bool nodevices) {
  struct stat status;
  if (::fstat(descriptor, &status) != 0) return 0;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  return nodevices && S_ISCHR(status.st_mode) && mayneverend(descriptor, status) ? ENOTSUP : 0;
}

/// A descriptor, or -1 with errno.
int openfile(const char* name, int flags, bool nodevices) {
  const int descriptor = untilnotinterrupted([&] { return ::open(name, flags | O_CLOEXEC, 0666); });
  const int refused = descriptor < 0 ? 0 : refusal(descriptor, nodevices);
  if (refused == 0) return descriptor;
  ::close(descriptor);
  errno = refused;
  return -1;
}

constexpr int signalcount = 64;

constexpr std::uint64_t bitof(int signal) {
  return std::uint64_t{1} << (signal - 1);
}

/// The signals that have a handler and do not restart what they interrupt.
std::uint64_t interruptingsignals() {
  std::uint64_t all = 0;
  for (int signal = 1; signal <= signalcount; ++signal) {
    struct sigaction action;
    if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler != SIG_DFL &&
        action.sa_handler != SIG_IGN && (action.sa_flags & SA_RESTART) == 0)
      all |= bitof(signal);
  }
  return all;
}

/// Blocks signals as long as it lives. A C library whose write is interrupted throws away what it
/// had buffered, so that calling it again would lose text.
class heldback {
 public:
  explicit heldback(std::uint64_t signals) : any_(signals != 0) {
    if (!any_) return;
    sigset_t set;
    ::sigemptyset(&set);
    for (int signal = 1; signal <= signalcount; ++signal)
      if ((signals & bitof(signal)) != 0) ::sigaddset(&set, signal);
    ::pthread_sigmask(SIG_BLOCK, &set, &before_);
  }
  heldback(const heldback&) = delete;
  heldback& operator=(const heldback&) = delete;
  ~heldback() {
    if (any_) ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

 private:
  bool any_;
  sigset_t before_;
};

/// The length of a skipped text without the carriage return that may be its last byte.
std::size_t withoutreturn(std::size_t length, char last) {
  return last == '\r' ? length - 1 : length;
}

}  // namespace

// Standard input ---------------------------------------------------------------------------------

/// One byte of the standard input, or EOF. Nothing is tried again after a failure.
int textfile::getstandard() {
  while (!ended_) {
    errno = 0;
    const int c = std::getc(stdin);
    if (c != EOF || std::ferror(stdin) == 0 || errno == 0) return c;
    if (errno != EINTR)
      failread(errno);
    else
      std::clearerr(stdin);
  }
  return EOF;
}

int textfile::readstandard(char* dest, int maximum) {
  int count = 0;
  while (count < maximum) {
    const int c = getstandard();
    if (c == '\n') std::ungetc(c, stdin);
    if (c == '\n' || c == EOF) break;
    dest[count++] = static_cast<char>(c);
  }
  return count;
}

std::size_t textfile::skipstandard() {
  std::size_t skipped = 0;
  char last = '\0';
  for (int c = getstandard(); c != EOF && !endless(skipped); c = getstandard(), ++skipped) {
    if (c == '\n') return withoutreturn(skipped, last);
    last = static_cast<char>(c);
  }
  return skipped;
}

// Opening ----------------------------------------------------------------------------------------

void textfile::assign(std::string_view name) {
  const shortstring kept(name);
  standard_ = kept.empty();
  std::memcpy(name_, kept.data(), static_cast<std::size_t>(kept.length()));
  name_[kept.length()] = '\0';
}

/// Closes what is open; what comes next begins without a failure.
void textfile::begin() {
  close();
  setioresult(0);
  ended_ = false;
  failure_ = 0;
}

void textfile::open(int flags, bool nodevices, mode opened, mode standard) {
  begin();
  if (standard_) {
    mode_ = standard;
    return;
  }
  descriptor_ = openfile(name_, flags, nodevices);
  if (descriptor_ < 0) return fail(errno);
  block_ = std::make_unique_for_overwrite<char[]>(blocksize);
  mode_ = opened;
}

void textfile::reset(bool nodevices) {
  open(O_RDONLY, nodevices, mode::reading, mode::standardinput);
}

/// The bytes are a block that is full from the start, with the end of the file after it.
void textfile::resetmemory(std::string_view bytes) {
  begin();
  next_ = bytes.data();
  end_ = next_ + bytes.size();
  ended_ = true;
  mode_ = mode::reading;
}

void textfile::rewrite() {
  open(O_WRONLY | O_CREAT | O_TRUNC, false, mode::writing, mode::standardoutput);
  if (mode_ == mode::standardoutput) interrupting_ = interruptingsignals();
}

void textfile::rewritememory(std::string& text) {
  begin();
  text.clear();
  text_ = &text;
  mode_ = mode::writingmemory;
}

// Reading and writing ----------------------------------------------------------------------------

void textfile::failread(int number) {
  fail(number);
  failure_ = number;
  ended_ = true;
}

/// Whether a line from which so much was skipped is taken for one without an end; then nothing more
/// is read.
bool textfile::endless(std::size_t skipped) {
  if (skipped < longestline) return false;
  failread(EFBIG);
  next_ = end_;
  return true;
}

/// Makes sure that there is an unread byte; false if the file ends or a read fails.
bool textfile::fill() {
  if (next_ < end_) return true;
  if (mode_ != mode::reading || ended_) return false;
  const ssize_t got =
      untilnotinterrupted([&] { return ::read(descriptor_, block_.get(), blocksize); });
  if (got < 0) failread(errno);
  if (got == 0) ended_ = true;
  if (ended_) return false;
  next_ = block_.get();
  end_ = next_ + got;
  return true;
}

bool textfile::atend() {
  if (mode_ == mode::standardinput) return std::ungetc(getstandard(), stdin) == EOF;
  return !fill();
}

int textfile::readstring(char* dest, int maximum) {
  int count = 0;
  if (mode_ == mode::standardinput) count = readstandard(dest, maximum);
  while (count < maximum && fill()) {
    const std::size_t limit =
        std::min(static_cast<std::size_t>(end_ - next_), static_cast<std::size_t>(maximum - count));
    const void* linefeed = std::memchr(next_, '\n', limit);
    const std::size_t size =
        linefeed == nullptr ? limit
                            : static_cast<std::size_t>(static_cast<const char*>(linefeed) - next_);
    std::memcpy(dest + count, next_, size);
    count += static_cast<int>(size);
    next_ += size;
    if (linefeed != nullptr) break;
  }
  return count > 0 && dest[count - 1] == '\r' ? count - 1 : count;
}

bool textfile::takeline(std::size_t maximum, std::string_view& line) {
  if (next_ == end_) return false;
  const auto limit = std::min(static_cast<std::size_t>(end_ - next_), maximum + 1);
  const auto* const linefeed = static_cast<const char*>(std::memchr(next_, '\n', limit));
  if (linefeed == nullptr) return false;
  line = {next_, static_cast<std::size_t>(linefeed - next_)};
  if (line.ends_with('\r')) line.remove_suffix(1);
  next_ = linefeed + 1;
  return true;
}

std::size_t textfile::readln() {
  if (next_ < end_ && *next_ == '\n') {
    ++next_;
    return 0;
  }
  if (mode_ == mode::standardinput) return skipstandard();
  std::size_t skipped = 0;
  char last = '\0';
  while (!endless(skipped) && fill()) {
    const auto left = std::min(static_cast<std::size_t>(end_ - next_), longestline - skipped);
    const void* linefeed = *next_ == '\n' ? next_ : std::memchr(next_, '\n', left);
    const char* const stop =
        linefeed == nullptr ? next_ + left : static_cast<const char*>(linefeed);
    if (stop != next_) last = stop[-1];
    skipped += static_cast<std::size_t>(stop - next_);
    next_ = stop;
    if (linefeed == nullptr) continue;
    ++next_;
    return withoutreturn(skipped, last);
  }
  return skipped;
}

void textfile::writeblock(const char* text, std::size_t size) {
  while (size > 0) {
    const ssize_t done = untilnotinterrupted([&] { return ::write(descriptor_, text, size); });
    if (done < 0) return fail(errno);
    text += done;
    size -= static_cast<std::size_t>(done);
  }
}

void textfile::flush() {
  writeblock(block_.get(), held_);
  held_ = 0;  // what could not be written is gone, so that the error is met once
}

/// Writes what does not just go into the block.
void textfile::writethrough(std::string_view text) {
  if (mode_ == mode::standardoutput) {
    const heldback signals(interrupting_);
    if (!text.empty() && std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
      fail(errno);
    return;
  }
  if (mode_ == mode::writingmemory) {
    text_->append(text);
    return;
  }
  if (mode_ != mode::writing) return fail(EBADF);
  while (!text.empty()) {
    const std::size_t size = text.copy(block_.get() + held_, blocksize - held_);
    held_ += size;
    text.remove_prefix(size);
    if (held_ == blocksize) flush();
  }
}

void textfile::close() {
  if (mode_ == mode::writing) flush();
  if (mode_ == mode::standardoutput) {
    const heldback signals(interrupting_);
    if (std::fflush(stdout) != 0) fail(errno);
  }
  if (descriptor_ >= 0 && ::close(descriptor_) != 0 && errno != EINTR) fail(errno);
  descriptor_ = -1;
  block_.reset();
  next_ = end_ = nullptr;
  text_ = nullptr;
  mode_ = mode::closed;
}

}  // namespace optxv
