// Raw files, environment variables, search paths, file extensions, and a few helpers for reals.
//
// Nothing here raises: a call reports by its result. Names and values are bounded strings, so what
// is beyond 255 bytes is cut. The calls that change the environment change it for the whole
// process, and POSIX allows no other thread to look at it in the meantime.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/visibility.h"

namespace optxv {

// Files ------------------------------------------------------------------------------------------
// The result is 0 or an error number of the system; a handle of 0 or less gives 9 (EBADF).

/// A file that the operating system has open (a descriptor of POSIX); 0 is none.
using tq9filehandle = std::int32_t;

/// Opens a file by the low two bits of mode: 0 reads, 1 writes from the start (the file is
/// emptied), 2 reads and writes what is there, 3 empties the file. All but 0 make a missing file,
/// with the permissions 666 (octal) less the umask. Nothing that is opened reaches a program
/// started later.
///
/// On failure handle is 0. A directory is refused in mode 0 with 21 (EISDIR), as the system does in
/// the others.
/// KEEP: mode 3 passes both bits to the system, which gives a handle that neither reads nor writes.
/// OWNS: the caller, who closes it.
OPTXV_EXPORT int q9fileopen(std::string_view name, int mode, tq9filehandle& handle) noexcept;

/// Closes the file and sets the variable to 0, whether or not that succeeds.
/// KEEP: 9 is for a variable at no address (nil). Its value is not looked at: a 0 in it closes the
/// standard input.
OPTXV_EXPORT int q9fileclose(tq9filehandle* handle) noexcept;

/// One read, or one write, of up to count bytes; done is how many there were, 0 on failure and at
/// the end of the file. REQUIRES: count bytes at buffer.
OPTXV_EXPORT int q9fileread(tq9filehandle handle, void* buffer, std::uint32_t count,
                            std::uint32_t& done) noexcept;
OPTXV_EXPORT int q9filewrite(tq9filehandle handle, const void* buffer, std::uint32_t count,
                             std::uint32_t& done) noexcept;

/// The size in bytes; -1 on failure.
OPTXV_EXPORT int q9filegetsize(tq9filehandle handle, std::int64_t& size) noexcept;

/// Where the next read or write begins, in bytes from the start. On failure position is untouched.
OPTXV_EXPORT int q9filegetpointer(tq9filehandle handle, std::int64_t& position) noexcept;

/// Moves by distance from the start (method 0), from where it stands (1) or from the end (2), and
/// gives the new position. Any other method gives 22 (EINVAL). On failure position is untouched.
OPTXV_EXPORT int q9filesetpointer(tq9filehandle handle, std::int64_t distance,
                                  std::int64_t& position, int method) noexcept;

/// Sets the permission bits of a file (POSIX chmod).
OPTXV_EXPORT int q9chmod(std::string_view name, int mode) noexcept;

// Environment ------------------------------------------------------------------------------------

/// Whether the variable exists, even if it is empty.
OPTXV_EXPORT bool q9issetenv(std::string_view name) noexcept;
/// Sets it, whatever it was; false for an empty name, or one that the system refuses.
OPTXV_EXPORT bool q9setenv(std::string_view name, std::string_view value) noexcept;
/// Removes it. Does nothing for an empty name.
OPTXV_EXPORT void q9unsetenv(std::string_view name) noexcept;

/// Puts directory at the front of PATH: directory, a colon and the old value, of any length; just
/// directory if there was none. An empty directory is a success with nothing done. Returns whether
/// it worked.
OPTXV_EXPORT bool prefixpath(std::string_view directory) noexcept;

/// The same for the variable that the loader of dynamic libraries searches along, whose name
/// depends on osplatform; false where there is none, and on file type 0. An empty directory stands
/// for that of the program. A loader may have read the variable when the process started: the
/// change is for programs that are started later.
OPTXV_EXPORT bool prefixloadpath(std::string_view directory) noexcept;

/// Nothing happens on this platform.
OPTXV_EXPORT void q9setconsoletitle(std::string_view title) noexcept;
OPTXV_EXPORT void q9nopopups() noexcept;

// File names -------------------------------------------------------------------------------------
// An extension begins at the last point after the last slash, and has the point in it.

/// The path of the program: paramstr(0) of platform/arguments.h.
OPTXV_EXPORT shortstring paramstrzero() noexcept;
/// name, followed by ext if it has no extension.
OPTXV_EXPORT shortstring completefileext(std::string_view name, std::string_view ext) noexcept;
/// name without its extension, and ext.
OPTXV_EXPORT shortstring replacefileext(std::string_view name, std::string_view ext) noexcept;

// Reals ------------------------------------------------------------------------------------------

/// A text of fixed layout: a blank, a blank or minus sign, one digit, a point, decimals digits, E,
/// the sign of the exponent, and two or three digits of exponent: "  1.50E+00". No more than 14
/// decimals come out, none for a negative number. What is not finite has INF or NAN for all that
/// follows the sign.
OPTXV_EXPORT shortstring floattoe(double x, int decimals) noexcept;

/// x with a half added to its magnitude, cut to its whole part. KEEP: the sum is rounded as any
/// other, so that the largest real below 0.5 gives 1.
OPTXV_EXPORT double realround(double x) noexcept;
/// x cut to its whole part.
OPTXV_EXPORT double realtrunc(double x) noexcept;

}  // namespace optxv
