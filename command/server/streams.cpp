#include "server/streams.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

#include "output/failure.h"
#include "platform/descriptors.h"
#include "server/server.h"

namespace command {
namespace {

using optxv::descriptor;

constexpr int patience = 1000;  // milliseconds between looks at the client's process

/// The number of a descriptor of our own for a standard stream, in whose place the null device
/// comes.
int taken(int stream, int flags) {
  const int own = fcntl(stream, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const descriptor null(open("/dev/null", flags | O_CLOEXEC));
  if (null.number() >= 0) dup2(null.number(), stream);
  return own;
}

bool isgone(std::int64_t process) {
  return process > 0 && kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH;
}

struct logclosing {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using logfile = std::unique_ptr<std::FILE, logclosing>;

void tolog(const logfile& log, std::string_view what, std::string_view text) {
  if (!log) return;
  std::fwrite(what.data(), 1, what.size(), log.get());
  std::fwrite(text.data(), 1, text.size(), log.get());
  std::fputc('\n', log.get());
  std::fflush(log.get());
}

/// Hands on what comes until there is an end; true if the client has said so.
bool relay(server& to, int from, const logfile& log, const bool& closed) {
  std::array<char, std::size_t{64} << 10> block;
  while (!to.ended() && !closed) {
    pollfd waited{.fd = from, .events = POLLIN, .revents = 0};
    const int ready = poll(&waited, 1, patience);
    if (ready < 0 && errno != EINTR) return false;
    if (ready <= 0 && isgone(to.client())) return false;
    if (ready <= 0) continue;
    const ssize_t got = read(from, block.data(), block.size());
    if (got == 0 || (got < 0 && errno != EINTR)) return false;
    if (got < 0) continue;
    const std::string_view bytes(block.data(), static_cast<std::size_t>(got));
    tolog(log, "<-- ", bytes);
    to.take(bytes);
  }
  return to.ended();
}

}  // namespace

int serve(const std::string& log) {
  logfile written;
  if (!log.empty()) {
    written.reset(std::fopen(log.c_str(), "we"));
    if (!written) return tell({.what = log + ": cannot be written", .error = errno});
  }
  signal(SIGPIPE, SIG_IGN);
  const descriptor in(taken(STDIN_FILENO, O_RDONLY)), out(taken(STDOUT_FILENO, O_WRONLY));
  bool closed = false;
  server to([&](const std::string& message) {
    tolog(written, "--> ", message);
    closed = closed || !optxv::writeall(out.number(), framed(message));
  });
  return relay(to, in.number(), written, closed) ? to.status() : 1;
}

}  // namespace command
