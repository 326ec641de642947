#include "platform/q9utils.h"

#include <fcntl.h>
#include <stdlib.h>  // setenv and unsetenv are from POSIX
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <new>
#include <string>

#include "foundation/arithmetic.h"
#include "foundation/numtext.h"
#include "platform/arguments.h"
#include "platform/q9platform.h"
#include "platform/strbuf.h"

namespace optxv {

namespace {

static_assert(EBADF == 9 && EISDIR == 21 && EINVAL == 22);
static_assert(O_RDONLY == 0 && O_WRONLY == 1 && O_RDWR == 2, "a mode is its access mode");
static_assert(sizeof(off_t) == sizeof(std::int64_t));

constexpr char delimiter = '/';
constexpr char separator = ':';

int errorunless(bool good) noexcept {
  return good ? 0 : errno;
}

constexpr int openflags(int mode) noexcept {
  if (mode == 0) return O_RDONLY;
  return mode | O_CREAT | ((mode & 1) != 0 ? O_TRUNC : 0);
}

/// Moves a descriptor out of the place of a standard stream that is closed: 0 is no handle, and
/// nobody wants messages for the screen in a file.
int abovestandard(int descriptor) noexcept {
  if (descriptor < 0 || descriptor > STDERR_FILENO) return descriptor;
  const int moved = fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const int error = errno;
  close(descriptor);
  errno = error;
  return moved;
}

bool isdirectory(int descriptor) noexcept {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

/// Takes the count that a read or write gave.
int transferred(ssize_t count, std::uint32_t& done) noexcept {
  done = count < 0 ? 0 : static_cast<std::uint32_t>(count);
  return errorunless(count >= 0);
}

int seek(tq9filehandle handle, std::int64_t distance, int whence, std::int64_t& position) noexcept {
  const off_t reached = lseek(handle, distance, whence);
  if (reached < 0) return errno;
  position = reached;
  return 0;
}

bool prefixvariable(const char* variable, std::string_view directory) noexcept {
  if (directory.empty()) return true;
  try {
    std::string value(directory.substr(0, shortstring::maximum));
    const char* const old = getenv(variable);
    if (old != nullptr && *old != '\0') value.append(1, separator).append(old);
    return setenv(variable, value.c_str(), 1) == 0;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

/// The variable of the loader by platform, nil where there is none.
constexpr std::array<const char*, 16> loadpathvariables = [] {
  std::array<const char*, 16> names{};
  names[4] = "LIBPATH";
  names[5] = "SHLIB_PATH";
  for (const std::size_t i : {6U, 7U, 8U, 9U, 11U}) names[i] = "LD_LIBRARY_PATH";
  for (const std::size_t i : {10U, 14U}) names[i] = "DYLD_LIBRARY_PATH";
  return names;
}();

const char* loadpathvariable() noexcept {
  constexpr std::int32_t windows = 0;
  if (osfiletype == windows || osplatform < 0 || osplatform > missingplatform) return nullptr;
  return loadpathvariables[static_cast<std::size_t>(osplatform)];
}

shortstring programdirectory() noexcept {
  const shortstring path = paramstrzero();
  return path.view().substr(0, std::min(path.view().rfind(delimiter), path.view().size()));
}

/// Where the extension begins, or the length of the name.
std::size_t extensionstart(std::string_view name) noexcept {
  const std::size_t last = name.find_last_of("./");
  return last == std::string_view::npos || name[last] == delimiter ? name.size() : last;
}

bool belowzero(double x) noexcept {
  return std::signbit(x) && !iszero(x) && !isnotanumber(x);
}

constexpr int mostdecimals = 14;  // after the point of a real's default text

/// A magnitude rounded to that many decimals of its form with one digit before the point.
double roundedmagnitude(double magnitude, int decimals) noexcept {
  int exponent = 0;
  double digits = magnitude;
  for (; digits >= 10; ++exponent) digits /= 10;
  for (; digits < 1; --exponent) digits *= 10;
  const double scale = std::pow(10.0, decimals);
  digits = realround(digits * scale) / scale;
  // In two steps, since ten to the lowest exponent is no real.
  const int half = exponent / 2;
  const double result = digits * std::pow(10.0, half) * std::pow(10.0, exponent - half);
  return isfinitereal(result) ? result : magnitude;  // rounded up beyond the largest real
}

}  // namespace

int q9fileopen(std::string_view name, int mode, tq9filehandle& handle) noexcept {
  handle = 0;
  mode &= 3;
  const int descriptor = abovestandard(open(strbuf(name), openflags(mode) | O_CLOEXEC, 0666));
  if (descriptor < 0) return errno;
  if (mode == 0 && isdirectory(descriptor)) {
    close(descriptor);
    return EISDIR;
  }
  handle = descriptor;
  return 0;
}

int q9fileclose(tq9filehandle* handle) noexcept {
  if (handle == nullptr) return EBADF;  // KEEP: the address, not the value
  const int error = errorunless(close(*handle) == 0);
  *handle = 0;
  return error;
}

int q9fileread(tq9filehandle handle, void* buffer, std::uint32_t count,
               std::uint32_t& done) noexcept {
  done = 0;
  return handle <= 0 ? EBADF : transferred(read(handle, buffer, count), done);
}

int q9filewrite(tq9filehandle handle, const void* buffer, std::uint32_t count,
                std::uint32_t& done) noexcept {
  done = 0;
  return handle <= 0 ? EBADF : transferred(write(handle, buffer, count), done);
}

int q9filegetsize(tq9filehandle handle, std::int64_t& size) noexcept {
  size = -1;
  if (handle <= 0) return EBADF;
  struct stat status {};
  if (fstat(handle, &status) != 0) return errno;
  size = status.st_size;
  return 0;
}

int q9filegetpointer(tq9filehandle handle, std::int64_t& position) noexcept {
  return handle <= 0 ? EBADF : seek(handle, 0, SEEK_CUR, position);
}

int q9filesetpointer(tq9filehandle handle, std::int64_t distance, std::int64_t& position,
                     int method) noexcept {
  constexpr std::array<int, 3> origins = {SEEK_SET, SEEK_CUR, SEEK_END};
  if (handle <= 0) return EBADF;
  if (method < 0 || method >= std::ssize(origins)) return EINVAL;
  return seek(handle, distance, origins[static_cast<std::size_t>(method)], position);
}

int q9chmod(std::string_view name, int mode) noexcept {
  return errorunless(chmod(strbuf(name), static_cast<mode_t>(mode)) == 0);
}

bool q9issetenv(std::string_view name) noexcept {
  return getenv(strbuf(name)) != nullptr;
}

bool q9setenv(std::string_view name, std::string_view value) noexcept {
  return !name.empty() && setenv(strbuf(name), strbuf(value), 1) == 0;
}

void q9unsetenv(std::string_view name) noexcept {
  if (!name.empty()) unsetenv(strbuf(name));
}

bool prefixpath(std::string_view directory) noexcept {
  return prefixvariable("PATH", directory);
}

bool prefixloadpath(std::string_view directory) noexcept {
  const char* const variable = loadpathvariable();
  if (variable == nullptr) return false;
  return directory.empty() ? prefixvariable(variable, programdirectory())
                           : prefixvariable(variable, directory);
}

void q9setconsoletitle(std::string_view) noexcept {}
void q9nopopups() noexcept {}

shortstring paramstrzero() noexcept {
  return paramstr(0);
}

shortstring completefileext(std::string_view name, std::string_view ext) noexcept {
  return extensionstart(name) < name.size() ? shortstring(name) : concat(name, ext);
}

shortstring replacefileext(std::string_view name, std::string_view ext) noexcept {
  return concat(name.substr(0, extensionstart(name)), ext);
}

shortstring floattoe(double x, int decimals) noexcept {
  decimals = std::clamp(decimals, 0, mostdecimals);
  const plainarithmetic plain;
  const volatile double magnitude = std::fabs(x);
  const bool asis = iszero(magnitude) || !isfinitereal(magnitude);
  const volatile double shownvalue = asis ? magnitude : roundedmagnitude(magnitude, decimals);
  const shortstring shown = _Q9_Str_d0(shownvalue);
  const std::string_view text = shown.view().substr(shown.view().find_last_of(' ') + 1);
  const std::size_t exponent = text.find('E');
  const std::string_view sign = belowzero(x) ? " -" : "  ";
  if (exponent == std::string_view::npos) return concat(sign, text);
  return concat(sign, text.substr(0, static_cast<std::size_t>(decimals) + 2),
                text.substr(exponent));
}

double realround(double x) noexcept {
  const plainarithmetic plain;
  const volatile double half = belowzero(x) ? -0.5 : 0.5;
  const volatile double sum = x + half;
  return realtrunc(sum);
}
double realtrunc(double x) noexcept {
  // By its bits: a compiler may make std::trunc of operations that trap.
  const auto bits = std::bit_cast<std::uint64_t>(x);
  const int exponent = static_cast<int>(bits >> 52 & 0x7FF) - 1023;
  if (exponent >= 52) return x;
  const int fraction = exponent < 0 ? 63 : 52 - exponent;
  return std::bit_cast<double>(bits >> fraction << fraction);
}

}  // namespace optxv
