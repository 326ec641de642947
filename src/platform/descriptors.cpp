#include "platform/descriptors.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace optxv {

bool descriptor::finish() {
  const int closing = number_;
  number_ = -1;
  return closing < 0 || close(closing) == 0 || errno == EINTR;  // closed all the same
}

bool writeall(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t put = untilnotinterrupted([&] { return write(file, text.data(), text.size()); });
    if (put < 0) return false;
    text.remove_prefix(static_cast<std::size_t>(put));
  }
  return true;
}

std::string systemtext(int error) {
  return std::generic_category().message(error);
}

}  // namespace optxv
