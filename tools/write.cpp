// write: what is set, as a parameter file.

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "reporter.h"
#include "subcommands.h"
#include "textform.h"

namespace command {
namespace {

/// OWNS: an open file descriptor, or none (-1).
class descriptor {
 public:
  explicit descriptor(int number) : number_(number) {}
  ~descriptor() { finish(); }
  descriptor(const descriptor&) = delete;
  descriptor& operator=(const descriptor&) = delete;
  int number() const { return number_; }
  /// Closes it; false with errno set if the system reports a failed write only now.
  bool finish() {
    const int closing = number_;
    number_ = -1;
    return closing < 0 || close(closing) == 0;
  }

 private:
  int number_;
};

std::optional<std::string> contents(int file) {
  std::string text;
  std::string block(std::size_t{64} << 10, '\0');
  for (;;) {
    const ssize_t got = pread(file, block.data(), block.size(), static_cast<off_t>(text.size()));
    if (got == 0) return text;
    if (got > 0) text.append(block, 0, static_cast<std::size_t>(got));
    if (got < 0 && errno != EINTR) return std::nullopt;
  }
}

/// The state as text, by way of a file in memory: the library ends the process if a write fails,
/// and a full disk is no reason for that. Nothing with errno set if the system has no such file.
std::optional<std::string> statetext(optionset& options) {
  const descriptor memory(memfd_create("parameters", MFD_CLOEXEC));
  if (memory.number() < 0) return std::nullopt;
  errno = options.writeparameters("/proc/self/fd/" + std::to_string(memory.number()));
  if (errno != 0) return std::nullopt;
  return contents(memory.number());
}

bool writeall(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t put = ::write(file, text.data(), text.size());
    if (put < 0 && errno != EINTR) return false;
    text.remove_prefix(put < 0 ? 0 : static_cast<std::size_t>(put));
  }
  return true;
}

bool writefile(const std::string& file, std::string_view text) {
  descriptor out(open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
  return out.number() >= 0 && writeall(out.number(), text) && out.finish();
}

}  // namespace

int write(const readsettings& settings, const std::string& file) {
  optionset options;
  const std::unique_ptr<reporter> report = makelines(stderr);
  session run(options, *report);
  if (!run.read(settings)) return run.total().status();
  const std::optional<std::string> text = statetext(options);
  const bool written =
      text && (file.empty() ? writeall(STDOUT_FILENO, *text) : writefile(file, *text));
  if (written) return run.total().status();
  const std::string where = file.empty() ? "standard output" : printable(file);
  put(stderr, where + ": error: cannot be written: " + systemtext(errno) + '\n');
  return statusunusable;
}

}  // namespace command
