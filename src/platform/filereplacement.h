// Writing a file so that a reader sees the old content or the whole new one.
#pragma once

#include <cerrno>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/visibility.h"

namespace optxv {

/// A step that failed: what cannot be done, and the system's error number.
struct replacefault {
  const char* what;
  int error = errno;
};

/// Writes a text to a file; an empty name is the descriptor of standard output. Gives nothing, or
/// what failed.
///
/// Calls that a signal interrupts are repeated.
///
/// - A regular file, or a free name: a new file is written beside it, under a name that
///   begins with .optxv-; it is synced to the disk and then renamed. Owner, group and
///   mode are those of the file that it replaces; access lists and other attributes are not copied.
///   After a failure the old file is as it was, and nothing is left beside it; but for the last
///   failure that there can be, when the new file is in place and its folder cannot be synced.
///   Signals that end the process wait until this is done; only SIGKILL, or a crash of the machine,
///   can leave the new file beside the old one.
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
OPTXV_EXPORT std::optional<replacefault> replacefile(const std::string& destination,
                                                     std::string_view product);

}  // namespace optxv
