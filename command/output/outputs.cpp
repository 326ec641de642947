#include "output/outputs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "output/reporter.h"
#include "text/descriptors.h"
#include "text/source.h"
#include "text/textform.h"

namespace command {
namespace {

bool writeinplace(const std::string& file, std::string_view text) {
  descriptor out(open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
  return out.number() >= 0 && writeall(out.number(), text) && out.finish();
}

/// The permissions of a file that is created in the ordinary way.
mode_t usualmode() {
  const mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

/// The file that a name stands for, links followed; the name itself where there is none yet.
std::string resolved(const std::string& file) {
  const std::unique_ptr<char, decltype(&std::free)> path(realpath(file.c_str(), nullptr),
                                                         &std::free);
  return path ? path.get() : file;
}

/// Writes a new file and puts it in the place of the old one. The new one is gone if that fails.
bool replace(const std::string& file, std::string_view text, mode_t mode) {
  const std::string place = resolved(file);
  std::string beside = place.substr(0, place.rfind('/') + 1) + ".optxv-XXXXXX";
  descriptor out(mkostemp(beside.data(), O_CLOEXEC));
  if (out.number() < 0) return false;
  const bool written = writeall(out.number(), text) && fchmod(out.number(), mode) == 0 &&
                       out.finish() && std::rename(beside.c_str(), place.c_str()) == 0;
  const int error = errno;
  if (!written) unlink(beside.c_str());
  errno = error;
  return written;
}

bool writefile(const std::string& file, std::string_view text) {
  struct stat status = {};
  if (stat(file.c_str(), &status) != 0) return errno == ENOENT && replace(file, text, usualmode());
  if (!S_ISREG(status.st_mode)) return writeinplace(file, text);
  return access(file.c_str(), W_OK) == 0 && replace(file, text, status.st_mode & 07777);
}

}  // namespace

int deliver(const std::string& file, std::string_view text) {
  const bool done = file.empty() ? writeall(STDOUT_FILENO, text) : writefile(file, text);
  return done ? 0 : errno;
}

int unusable(const std::string& file, int error) {
  const std::string where = file.empty() ? "standard output" : printable(file);
  put(stderr, "optxv: " + where + ": " + systemtext(error) + '\n');
  return statusunusable;
}

}  // namespace command
