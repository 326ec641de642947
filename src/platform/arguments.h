// The arguments of the program that loaded the library, and where that program lies.
//
// The language does not pass a library the arguments of its host, but the system knows them. Where
// the C library is glibc, it passes them to the constructors of every shared object, whether the
// object was there at the start of the program or came with a later dlopen; so the library sees
// them in a program that links it, in one that loads it, and in an interpreter, whose own
// arguments they then are ("python3", "script.py", ...). Elsewhere, or if a host was started with
// nothing at all, they are read from /proc/self/cmdline; where there is no such file they stay
// unknown. A host that knows better calls setarguments (foundation/runtime.h) after the load.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/visibility.h"

namespace optxv {

/// Remembers what the loader passed to a constructor, for initarguments; a count below 1 or a nil
/// vector stands for nothing.
/// BORROWS: the vector, for as long as the library is loaded.
void keephostarguments(int count, char** vector) noexcept;

/// Sets the arguments (foundation/runtime.h) to the remembered ones, or to those that file holds,
/// each followed by a zero byte. Leaves them as they are if there is neither. The frame calls it
/// when the library loads.
void initarguments();
void initarguments(const char* file);

/// How many arguments the program has, its name not counted; 0 while nothing is known.
OPTXV_EXPORT std::int32_t paramcount() noexcept;

/// Argument i in full, for 0 the word that the program was called by; empty if there is no such
/// argument.
/// BORROWS: the text is the host's.
std::string_view argumenttext(std::int32_t i) noexcept;

/// Argument i for an i from 1 to paramcount(), cut at 255 bytes; for 0 the path of the program, or
/// the empty text where unixgetmodulefilename fails for a room of 255; empty for any other i.
OPTXV_EXPORT shortstring paramstr(std::int32_t i) noexcept;

/// Finds the absolute path of the program from its first word, argv[0], and stores it, followed by
/// a zero byte.
///
/// A word without a slash is looked for along PATH, where a point or nothing at all stands for the
/// current directory; any other is taken from the current directory. One symbolic link is followed,
/// and one only; the path is not normalised otherwise.
///
/// Result 0; or 22 (EINVAL), with an empty text and 22 as the I/O error code, if the program is not
/// found or the path has size bytes or more. REQUIRES: room for size bytes.
int unixgetmodulefilename(char* path, std::size_t size) noexcept;

}  // namespace optxv
