#include "text/descriptors.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>

namespace command {

bool descriptor::finish() {
  const int closing = number_;
  number_ = -1;
  return closing < 0 || close(closing) == 0;
}

memoryfile::memoryfile() : descriptor(memfd_create("optxv", MFD_CLOEXEC)) {}

std::string memoryfile::path() const {
  return "/proc/self/fd/" + std::to_string(number());
}

std::optional<std::string> readall(int file) {
  std::string text;
  std::string block(std::size_t{64} << 10, '\0');
  for (;;) {
    const ssize_t got = read(file, block.data(), block.size());
    if (got == 0) return text;
    if (got > 0) text.append(block, 0, static_cast<std::size_t>(got));
    if (got < 0 && errno != EINTR) return std::nullopt;
  }
}

bool writeall(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t put = write(file, text.data(), text.size());
    if (put < 0 && errno != EINTR) return false;
    text.remove_prefix(put < 0 ? 0 : static_cast<std::size_t>(put));
  }
  return true;
}

}  // namespace command
