// How the command's products get into their files: completely or not at all, and never over an
// input.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "output/failure.h"
#include "platform/descriptors.h"

namespace command {

using optxv::identity;
using optxv::identityof;

/// Writes a product to a file; an empty name is standard output. Gives nothing, or what failed.
///
/// - One of the inputs is refused, whatever links lead to it, and so is what may be one, where the
///   system does not tell; a caller that should write all the same, with --force, passes none. A
///   product does no harm to what keeps no content, so terminals, pipes and the like never count.
/// - All others are written as optxv::replacefile does it (src/platform/filereplacement.h).
std::optional<failure> deliver(const std::string& destination, std::string_view product,
                               std::span<const identity> inputs);

}  // namespace command
