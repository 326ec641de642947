#include "server/streams.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <span>

#include "output/failure.h"
#include "platform/descriptors.h"
#include "server/server.h"

namespace command {
namespace {

using optxv::descriptor;

constexpr int patience = 1000;  // milliseconds between looks at the client's process

/// A descriptor of our own for a standard stream, in whose place the null device comes; none, with
/// errno set, if that cannot be done.
class takenstream {
 public:
  takenstream(int stream, int flags)
      : own_(fcntl(stream, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)), good_(own_.number() >= 0) {
    const auto null = [&] { return open("/dev/null", flags | O_CLOEXEC); };
    if (good_) good_ = replaced(stream, descriptor(optxv::untilnotinterrupted(null)));
  }
  int number() const { return own_.number(); }
  bool good() const { return good_; }
  bool finish() { return own_.finish(); }

 private:
  static bool replaced(int stream, const descriptor& by) {
    const auto put = [&] { return dup2(by.number(), stream); };
    return by.number() >= 0 && optxv::untilnotinterrupted(put) >= 0;
  }
  descriptor own_;
  bool good_;
};

bool isgone(std::int64_t process) {
  return process > 0 && kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
}

/// The file that gets all that is received and sent, if there is one; nothing more after a failure.
class logfile {
 public:
  bool open(const std::string& name) {
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC;
    out_.emplace(optxv::untilnotinterrupted([&] { return ::open(name.c_str(), flags, 0666); }));
    return out_->number() >= 0;
  }
  void add(std::string_view what, std::string_view text) {
    if (!out_ || failure_ != 0) return;
    if (!optxv::writeall(out_->number(), std::string(what).append(text) + '\n')) failure_ = errno;
  }
  /// Gives the error number of the failure, or 0.
  int close() {
    if (out_ && !out_->finish() && failure_ == 0) failure_ = errno;
    return failure_;
  }

 private:
  std::optional<descriptor> out_;
  int failure_ = 0;
};

/// How a conversation came to its end: by the word of the client, by its going, or by a failure.
struct ending {
  bool said = false;
  failure told = {};  ///< with an error number if it is one
};

ending broken(const char* what, int error) {
  return {.told = {.what = what, .error = error}};
}

/// Takes what is there to read. Nothing if that is the end.
std::optional<std::size_t> taken(int from, std::span<char> block, ending& end) {
  const auto more = [&] { return read(from, block.data(), block.size()); };
  const ssize_t got = optxv::untilnotinterrupted(more);
  if (got < 0) end = broken("standard input: cannot be read", errno);
  return got > 0 ? std::optional(static_cast<std::size_t>(got)) : std::nullopt;
}

/// Hands on what comes until there is an end. lost: the error number of an answer that could not be
/// sent.
ending relay(server& to, int from, logfile& log, const int& lost) {
  std::array<char, std::size_t{64} << 10> block;
  ending end;
  while (!to.ended() && lost == 0) {
    pollfd waited{.fd = from, .events = POLLIN, .revents = 0};
    const int ready = poll(&waited, 1, patience);
    if (ready < 0 && errno != EINTR) return broken("standard input: cannot be read", errno);
    if (ready <= 0 && isgone(to.client())) return end;
    if (ready <= 0) continue;
    const auto got = taken(from, block, end);
    if (!got) return end;
    const std::string_view bytes(block.data(), *got);
    log.add("<-- ", bytes);
    to.take(bytes);
  }
  if (lost != 0 && lost != EPIPE) return broken("standard output: cannot be written", lost);
  end.said = to.ended();
  return end;
}

}  // namespace

int serve(const std::string& log) {
  logfile written;
  if (!log.empty() && !written.open(log))
    return tell({.what = log + ": cannot be written", .error = errno});
  signal(SIGPIPE, SIG_IGN);
  const takenstream in(STDIN_FILENO, O_RDONLY);
  if (!in.good()) return tell({.what = "standard input: cannot be served", .error = errno});
  takenstream out(STDOUT_FILENO, O_WRONLY);
  if (!out.good()) return tell({.what = "standard output: cannot be served", .error = errno});
  int lost = 0;
  server to([&](const std::string& message) {
    written.add("--> ", message);
    if (lost == 0 && !optxv::writeall(out.number(), framed(message))) lost = errno;
  });
  const ending end = relay(to, in.number(), written, lost);
  if (end.told.error != 0) return tell(end.told);
  if (!out.finish()) return tell({.what = "standard output: cannot be written", .error = errno});
  if (const int failed = written.close(); failed != 0)
    return tell({.what = log + ": cannot be written", .error = failed});
  return end.said ? to.status() : 1;
}

}  // namespace command
