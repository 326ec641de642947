// File descriptors, owned; and what the system says about them.
#pragma once

#include <sys/stat.h>

#include <compare>
#include <string>
#include <string_view>

#include "foundation/interrupted.h"
#include "foundation/visibility.h"

namespace optxv {

/// OWNS: an open file descriptor, or none (-1).
class OPTXV_EXPORT descriptor {
 public:
  explicit descriptor(int number) : number_(number) {}
  ~descriptor() { finish(); }
  descriptor(const descriptor&) = delete;
  descriptor& operator=(const descriptor&) = delete;
  int number() const { return number_; }
  /// Closes it; false, with errno set, if the system reports a failed write only now. A signal that
  /// interrupts it is no failure.
  bool finish();

 private:
  int number_;
};

/// What distinguishes one file from every other while both exist, whatever their names are.
struct identity {
  dev_t device = 0;
  ino_t inode = 0;  ///< 0 with device 0: no file
  auto operator<=>(const identity&) const = default;
};
inline identity identityof(const struct stat& status) {
  return {status.st_dev, status.st_ino};
}

/// Writes all of the text, also where signals interrupt it; false, with errno set, on a failure.
OPTXV_EXPORT bool writeall(int file, std::string_view text);

/// The system's words for an error number.
OPTXV_EXPORT std::string systemtext(int error);

}  // namespace optxv
