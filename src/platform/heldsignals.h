// Signals that end a process, delayed for a short while.
#pragma once

#include <csignal>

namespace optxv {

/// While this lives, SIGHUP, SIGINT, SIGQUIT and SIGTERM wait, and so do the signals for the limits
/// of time and of the size of files. They take effect afterwards, except the one for the size of
/// files: the write that went over the limit has failed with EFBIG, which is reported in words. For
/// one thread.
class heldsignals {
 public:
  heldsignals();
  ~heldsignals();
  heldsignals(const heldsignals&) = delete;
  heldsignals& operator=(const heldsignals&) = delete;

 private:
  sigset_t before_{};
};

}  // namespace optxv
