// The operating system's loader of dynamic libraries (POSIX: dlopen and its kin).
#pragma once

#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/visibility.h"
#include "platform/arguments.h"

namespace optxv {

/// A loaded library; nil is none.
using tq9libhandle = void*;

OPTXV_EXPORT bool q9libhandleisnil(tq9libhandle handle) noexcept;
OPTXV_EXPORT tq9libhandle q9nillibhandle() noexcept;

/// How the file name of a library begins and ends on this platform: "lib", ".so".
OPTXV_EXPORT shortstring q9libraryprefix() noexcept;
OPTXV_EXPORT shortstring q9libraryext() noexcept;

/// The file name of the library base, which has neither prefix nor extension; with a path that is
/// not empty, below that directory, which may end in a slash.
OPTXV_EXPORT shortstring q9makelibname(std::string_view path, std::string_view base) noexcept;

/// Loads the library of that file name with all that it needs, at once (RTLD_NOW).
///
/// message becomes empty. On failure the result is nil, and message what the loader says, cut at
/// 255 bytes, or "No message available".
/// OWNS: the caller, who gives the handle to q9freelibrary.
OPTXV_EXPORT tq9libhandle q9loadlibrary(std::string_view name, shortstring& message) noexcept;

/// The address of a symbol; nil if there is none, and then no error of the loader is left pending.
/// KEEP: a symbol whose value is nil gives nil too.
OPTXV_EXPORT void* q9getprocaddress(tq9libhandle handle, std::string_view name) noexcept;

/// Releases the library; returns whether that worked. Nil gives false.
OPTXV_EXPORT bool q9freelibrary(tq9libhandle handle) noexcept;

}  // namespace optxv
