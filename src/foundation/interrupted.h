// System calls that a signal interrupts.
#pragma once

#include <cerrno>

namespace optxv {

/// Makes a system call, and again as long as a signal interrupts it. Gives its result: below 0,
/// with errno set, for a failure. Not for close, which has let go of the descriptor by then.
template <class Call>
auto untilnotinterrupted(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) result = call();
  return result;
}

}  // namespace optxv
