// How the command's products get into their files: completely or not at all, and never over an
// input.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "output/failure.h"
#include "text/descriptors.h"

namespace command {

/// Which of some files a destination is, whatever links lead to it: a position in the list, or
/// nothing. An empty name is standard output. A product does no harm to what keeps no content, so
/// terminals, pipes and the like never count as one of the files.
std::optional<std::size_t> overlays(const std::string& destination,
                                    std::span<const identity> inputs);

/// Writes a product to a file; an empty name is standard output. Gives nothing, or what failed.
///
/// - One of the inputs is refused; a caller that should write all the same passes none.
/// - A regular file, or a free name: a new file is written beside it, under the name .optxv-XXXXXX
///   and readable only by its owner; it is synced to the disk and then renamed. Owner, group and
///   mode are those of the file that it replaces; access lists and other attributes are not copied.
///   After a failure the old file is as it was, and nothing is left beside it. Signals that end the
///   process wait until this is done; only SIGKILL, or a crash of the machine, can leave the new
///   file beside the old one.
/// - A symbolic link stays, and the file that it leads to is written, or created if it does not
///   exist yet.
/// - A regular file is written in place, from its start, if it has further names (hard links),
///   which so keep the same content; if no new file can be created in its folder, or it cannot be
///   replaced there; or if its owner and group cannot be given to a new file. This is not atomic:
///   after a failure the file holds less than it did, and the failure says that it was written in
///   place.
/// - A file without permission to write is refused, even if its folder would allow replacing it.
/// - A name of an open descriptor of this process (/dev/stdout, /dev/fd/N, /proc/self/fd/N) is
///   written directly, at the position of that descriptor: after what is there if it appends. So is
///   a descriptor of another process, at the end of its file.
/// - A device, a named pipe and the like are written directly.
std::optional<failure> deliver(const std::string& destination, std::string_view product,
                               std::span<const identity> inputs);

}  // namespace command
