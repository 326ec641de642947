#include "platform/q9helpers.h"

#include <sys/stat.h>
#include <sys/utsname.h>
#include <time.h>  // clock_gettime is from POSIX
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <string_view>

#include "foundation/pchutil.h"
#include "platform/q9platform.h"

namespace optxv::q9helpers {

namespace {

constexpr std::int64_t nanosecondsofsecond = 1'000'000'000;

/// A time beyond what the result holds becomes its nearest limit.
std::int64_t nanosecondsof(const timespec& time) noexcept {
  using limits = std::numeric_limits<std::int64_t>;
  if (time.tv_sec >= limits::max() / nanosecondsofsecond) return limits::max();
  if (time.tv_sec < limits::min() / nanosecondsofsecond) return limits::min();
  return std::int64_t{time.tv_sec} * nanosecondsofsecond + time.tv_nsec;
}

int readclock(clockid_t clock, std::int64_t& nanoseconds) noexcept {
  timespec time{};
  if (clock_gettime(clock, &time) != 0) return errno;
  nanoseconds = nanosecondsof(time);
  return 0;
}

/// Gives error, with the text empty.
int notext(int error, char* text, std::size_t size) noexcept {
  if (size != 0) *text = '\0';
  return error;
}

int giveout(std::string_view from, char* text, std::size_t size) noexcept {
  if (from.size() >= size) return notext(ERANGE, text, size);
  strpcopy(text, from);
  return 0;
}

int tell(bool known, const struct stat& status, const filestat& out) noexcept {
  if (!known) return errno;
  out.size = status.st_size;
  out.modified = nanosecondsof(status.st_mtim);
  out.mode = static_cast<std::int32_t>(status.st_mode);
  return 0;
}

const char* notnil(const char* text) noexcept {
  return text == nullptr ? "" : text;
}

}  // namespace

int get_cpu_time(std::int64_t& nanoseconds) noexcept {
  return readclock(CLOCK_PROCESS_CPUTIME_ID, nanoseconds);
}
int get_time(std::int64_t& nanoseconds) noexcept {
  return readclock(CLOCK_REALTIME, nanoseconds);
}

std::int64_t gettickcount() noexcept {
  std::int64_t nanoseconds = 0;
  readclock(CLOCK_MONOTONIC, nanoseconds);
  return nanoseconds / 1'000'000;
}

int get_cwd(char* path, std::size_t size) noexcept {
  if (size == 0) return ERANGE;
  return getcwd(path, size) == nullptr ? notext(errno, path, size) : 0;
}

int get_env(const char* name, char* value, std::size_t size) noexcept {
  const char* const found = std::getenv(notnil(name));
  return found == nullptr ? notext(ENOENT, value, size) : giveout(found, value, size);
}

int get_file_stat(std::int32_t handle, const filestat& out) noexcept {
  struct stat status {};
  return tell(fstat(handle, &status) == 0, status, out);
}

int get_file_stat_by_name(const char* name, const filestat& out) noexcept {
  struct stat status {};
  return tell(stat(notnil(name), &status) == 0, status, out);
}

int get_uname(char* sysname, char* nodename, char* release, char* version, char* machine,
              std::size_t size) noexcept {
  utsname system{};
  int error = uname(&system) < 0 ? errno : 0;
  const struct {
    const char* from;
    char* to;
  } texts[] = {{system.sysname, sysname},
               {system.nodename, nodename},
               {system.release, release},
               {system.version, version},
               {system.machine, machine}};
  for (const auto& text : texts)
    if (error == 0) error = giveout(text.from, text.to, size);
  if (error != 0)
    for (const auto& text : texts) notext(error, text.to, size);
  return error;
}

std::int32_t getosfilesys() noexcept {
  return osfiletype;
}

}  // namespace optxv::q9helpers
