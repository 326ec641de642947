// Signals that end a process, held off for a short while.
#pragma once

#include <csignal>

namespace command {

/// While this lives, SIGHUP, SIGINT, SIGQUIT and SIGTERM wait, and so do those of the limits of
/// time and of the size of files. They do their work after it, but that of the size of files: the
/// write that was over the limit has failed with EFBIG, which is told in words. For one thread.
class heldsignals {
 public:
  heldsignals();
  ~heldsignals();
  heldsignals(const heldsignals&) = delete;
  heldsignals& operator=(const heldsignals&) = delete;

 private:
  sigset_t before_{};
};

}  // namespace command
