// What the library offers to C programs about the system: the public header declares these under
// the same names and describes them; the frame passes the calls on.
//
// Results are 0 or an error number of the system. A text that does not fit its room of size bytes,
// zero byte included, gives ERANGE; on any failure an out text is empty (if there is any room) and
// out numbers are untouched.
// REQUIRES: room for what is given out.
#pragma once

#include <cstddef>
#include <cstdint>

namespace optxv::q9helpers {

/// Processor time of the process, user and system together, in nanoseconds.
int get_cpu_time(std::int64_t& nanoseconds) noexcept;
/// Time since 1 January 1970 UTC in nanoseconds.
int get_time(std::int64_t& nanoseconds) noexcept;
/// Milliseconds on a clock that is never set, from an unspecified start.
std::int64_t gettickcount() noexcept;

int get_cwd(char* path, std::size_t size) noexcept;
/// ENOENT for a variable that is not set; a nil name is an empty one.
int get_env(const char* name, char* value, std::size_t size) noexcept;

/// Where to store what is reported of a file.
struct filestat {
  std::int64_t& size;  ///< bytes
  /// Nanoseconds since 1 January 1970 UTC; a time before 1677 or after 2262 is the lowest or the
  /// highest number.
  std::int64_t& modified;
  std::int32_t& mode;  ///< st_mode of POSIX: the kind and the permissions
};
int get_file_stat(std::int32_t handle, const filestat& out) noexcept;
/// Follows symbolic links; a nil name is an empty one.
int get_file_stat_by_name(const char* name, const filestat& out) noexcept;

/// The five texts of POSIX uname, each with room for size bytes.
int get_uname(char* sysname, char* nodename, char* release, char* version, char* machine,
              std::size_t size) noexcept;

/// osfiletype.
std::int32_t getosfilesys() noexcept;

}  // namespace optxv::q9helpers
