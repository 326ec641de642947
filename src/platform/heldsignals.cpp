#include "platform/heldsignals.h"

#include <ctime>
#include <initializer_list>

namespace optxv {

heldsignals::heldsignals() {
  sigset_t held;
  sigemptyset(&held);
  for (const int each : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGXCPU, SIGXFSZ})
    sigaddset(&held, each);
  pthread_sigmask(SIG_BLOCK, &held, &before_);
}

heldsignals::~heldsignals() {
  sigset_t filesize;
  sigemptyset(&filesize);
  sigaddset(&filesize, SIGXFSZ);
  const std::timespec nothing = {};
  if (sigismember(&before_, SIGXFSZ) == 0) sigtimedwait(&filesize, nullptr, &nothing);
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace optxv
