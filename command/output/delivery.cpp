#include "output/delivery.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "platform/filereplacement.h"

namespace command {
namespace {

/// Whether a product that is written there replaces what is there.
bool keepscontent(const struct stat& status) {
  return S_ISREG(status.st_mode) || S_ISBLK(status.st_mode);
}

int statusof(const std::string& destination, struct stat& status) {
  return destination.empty() ? fstat(STDOUT_FILENO, &status) : stat(destination.c_str(), &status);
}

bool among(std::span<const identity> inputs, const struct stat& status) {
  return keepscontent(status) && std::ranges::find(inputs, identityof(status)) != inputs.end();
}

/// Why a product may not be written, if it is laid over an input, or may be.
std::optional<failure> refused(const std::string& destination, const std::string& subject,
                               std::span<const identity> inputs) {
  struct stat status = {};
  if (statusof(destination, status) != 0) {
    if (inputs.empty() || errno == ENOENT) return std::nullopt;
    return failure{.what = subject + "cannot be opened", .error = errno};
  }
  if (!among(inputs, status)) return std::nullopt;
  return failure{.what = subject + "cannot be written",
                 .why = "it is one of the files that were read",
                 .notes = {"--force writes over it"}};
}

}  // namespace

std::optional<failure> deliver(const std::string& destination, std::string_view product,
                               std::span<const identity> inputs) {
  const std::string subject = filewords(destination) + ": ";
  if (auto no = refused(destination, subject, inputs)) return no;
  const auto failed = optxv::replacefile(destination, product);
  if (!failed) return std::nullopt;
  return failure{.what = subject + failed->what, .error = failed->error};
}

}  // namespace command
