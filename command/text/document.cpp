#include "text/document.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <new>
#include <utility>

namespace command {
namespace {

int opened(const std::string& name) {
  if (name.find('\0') != name.npos) {
    errno = ENOENT;  // no file has such a name, and the system would see only the start of it
    return -1;
  }
  for (;;) {
    const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    if (file >= 0 || errno != EINTR) return file;
  }
}

/// Adds everything up to the end. Gives 0, or a system error number: EFBIG at the first byte over
/// the limit.
int readall(int file, std::string& text, std::size_t limit) {
  std::array<char, std::size_t{64} << 10> block;
  for (;;) {
    const ssize_t got = ::read(file, block.data(), block.size());
    if (got == 0) return 0;
    if (got < 0 && errno != EINTR) return errno;
    if (got < 0) continue;
    const auto count = static_cast<std::size_t>(got);
    if (count > limit - text.size()) return EFBIG;
    text.append(block.data(), count);
  }
}

/// The same for a file of known kind and size, which saves time and memory.
int readsized(int file, const struct stat& status, std::string& text, std::size_t limit) {
  if (S_ISREG(status.st_mode)) {
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > limit) return EFBIG;
    text.reserve(size);
  }
  return readall(file, text, limit);
}

}  // namespace

std::string readfailure::words() const {
  if (error != EFBIG) return optxv::systemtext(error);
  if (limit == textdocument::largest) return "larger than 1 GiB";
  return "larger than 1 GiB together with the files before it";
}

textdocument::textdocument(std::string name, std::string text)
    : textdocument(std::move(name), std::make_shared<content>(content{std::move(text), {}})) {}

readresult textdocument::read(const std::string& name, std::size_t limit) {
  if (name != "-") return readfile(name, limit);
  static const readresult input = readdescriptor(name, STDIN_FILENO, largest);
  const auto* text = std::get_if<textdocument>(&input);
  if (text != nullptr && text->text().size() > limit) return readfailure{EFBIG, limit};
  return input;
}

readresult textdocument::readfile(const std::string& name, std::size_t limit) {
  const descriptor file(opened(name));
  if (file.number() < 0) return readfailure{errno, limit};
  return readdescriptor(name, file.number(), limit);
}

readresult textdocument::readdescriptor(const std::string& name, int file, std::size_t limit) try {
  struct stat status = {};
  if (fstat(file, &status) != 0) return readfailure{errno, limit};
  const auto shared = std::make_shared<content>(content{{}, identityof(status)});
  const int error = readsized(file, status, shared->text, limit);
  if (error != 0) return readfailure{error, limit};
  return textdocument(name, shared);
} catch (const std::bad_alloc&) {
  return readfailure{ENOMEM, limit};
}

textdocument textdocument::named(std::string name) const {
  return {std::move(name), content_};
}

}  // namespace command
