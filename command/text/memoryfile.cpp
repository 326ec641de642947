#include "text/memoryfile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>

#include "text/document.h"

namespace command {
namespace {

/// Where a standard stream is closed, a new file would take its number.
int abovestreams(const descriptor& file) {
  return fcntl(file.number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

}  // namespace

memoryfile::memoryfile()
    : descriptor(abovestreams(descriptor(memfd_create("optxv", MFD_CLOEXEC)))) {}

std::string memoryfile::path() const {
  return "/proc/self/fd/" + std::to_string(number());
}

std::optional<std::string> captured(const std::function<int(const std::string&)>& write) {
  const memoryfile product;
  if (product.number() < 0) return std::nullopt;
  errno = write(product.path());
  if (errno != 0) return std::nullopt;
  const readresult result = textdocument::read(product.path());
  if (const auto* text = std::get_if<textdocument>(&result)) return std::string(text->text());
  errno = std::get<readfailure>(result).error;
  return std::nullopt;
}

}  // namespace command
