// How the command's products reach their files: whole, or not at all, and never over an input.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "output/failure.h"
#include "text/descriptors.h"

namespace command {

/// Which of some files a destination is, as a position in the list, whatever links lead to it; none
/// if it is none of them. An empty name is standard output. A product does no harm to what keeps
/// nothing, so terminals, pipes and the like are never one of them.
std::optional<std::size_t> overlays(const std::string& destination,
                                    std::span<const identity> inputs);

/// Writes a product to a file; an empty name is standard output. Gives nothing, or what failed.
///
/// - One of the inputs is refused; a caller who was told to write all the same hands in none.
/// - A regular file, or a name that is free: a new file is written beside it, under the name
///   .optxv-XXXXXX and readable to its owner alone, brought to the disk, and renamed. Owner, group
///   and mode are those of the file that it replaces; access lists and other attributes are not
///   carried over. On failure the old file is what it was, and nothing is left beside it. Signals
///   that end the process wait for the end of this; only SIGKILL, or the machine's own end, can
///   leave the file beside.
/// - A symbolic link stays, and what it leads to is written, or made where it does not exist yet.
/// - A regular file is written in place, from its start, if it has further names (hard links),
/// which
///   so keep the same content; if its folder takes no new file, or does not let it be replaced; or
///   if its owner and group cannot be given to a new file. This is not atomic: after a failure the
///   file holds less than it did, and the failure says that it was written in place.
/// - A file that does not permit to be written is refused, though its folder would let it go.
/// - A name of an open descriptor of this process (/dev/stdout, /dev/fd/N, /proc/self/fd/N) is
///   written through, where that descriptor stands: behind what is there if it appends. So is a
///   descriptor of another process, at the end of its file.
/// - A device, a named pipe and the like are written through.
std::optional<failure> deliver(const std::string& destination, std::string_view product,
                               std::span<const identity> inputs);

}  // namespace command
