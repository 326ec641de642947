#include "output/delivery.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "platform/filereplacement.h"

namespace command {
namespace {

/// Whether a product that is written there replaces what is there.
bool keepscontent(const struct stat& status) {
  return S_ISREG(status.st_mode) || S_ISBLK(status.st_mode);
}

}  // namespace

std::optional<std::size_t> overlays(const std::string& destination,
                                    std::span<const identity> inputs) {
  struct stat status = {};
  const int failed =
      destination.empty() ? fstat(STDOUT_FILENO, &status) : stat(destination.c_str(), &status);
  if (failed != 0 || !keepscontent(status)) return std::nullopt;
  const auto same = std::ranges::find(inputs, identityof(status));
  if (same == inputs.end()) return std::nullopt;
  return static_cast<std::size_t>(same - inputs.begin());
}

std::optional<failure> deliver(const std::string& destination, std::string_view product,
                               std::span<const identity> inputs) {
  const std::string subject = filewords(destination) + ": ";
  if (overlays(destination, inputs))
    return failure{.what = subject + "cannot be written",
                   .why = "it is one of the files that were read"};
  const auto failed = optxv::replacefile(destination, product);
  if (!failed) return std::nullopt;
  return failure{.what = subject + failed->what, .error = failed->error};
}

}  // namespace command
