// What operating system this is: numbers, and the names that go with them.
//
// The tables know more systems than this build runs on, since their indices are public: programs
// keep and compare the numbers.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "foundation/visibility.h"

namespace optxv {

// The tables -------------------------------------------------------------------------------------

/// The file-system types by their numbers.
inline constexpr std::array<std::string_view, 7> osfiletypetext = {"WIN",  "CMS", "TSO", "VMS",
                                                                   "UNIX", "MAC", "XXXX"};

/// The platforms by their numbers, and how the name of a dynamic library ends and begins on each.
inline constexpr std::array<std::string_view, 16> osplatformtext = {
    "DOS",         "Win95",         "WinNT",         "Win64EMT", "AIX",        "HP-UX",
    "IRIX64",      "Linux",         "SunOS-sparc32", "OSF1",     "Darwin-ppc", "Linux86_64",
    "SunOS-i86pc", "SunOS-sparc64", "Darwin-i386",   "Missing"};
inline constexpr std::array<std::string_view, 16> osdllextension = {
    ".dll", ".dll", ".dll",   ".dll", ".so", ".sl", ".so",    ".so",
    ".so",  ".so",  ".dylib", ".so",  ".so", ".so", ".dylib", ".XXX"};
inline constexpr std::array<std::string_view, 16> osdllprefix = {
    "",    "",    "",    "",    "lib", "lib", "lib", "lib",
    "lib", "lib", "lib", "lib", "lib", "lib", "lib", "lib"};

/// The last platform of the tables: a system that they do not know.
inline constexpr std::int32_t missingplatform = 15;

/// The languages that the parts of the system are taken to be written in.
inline constexpr std::string_view oslanguagepascal = "Q9PC";
inline constexpr std::string_view oslanguagec = "Unknown";

// This machine -----------------------------------------------------------------------------------
// Set when the library loads and only read by it afterwards.

/// An index into osfiletypetext: 4, UNIX, in this build.
extern OPTXV_EXPORT std::int32_t osfiletype;

/// An index into the tables of platforms; missingplatform until the library is loaded.
extern OPTXV_EXPORT std::int32_t osplatform;

/// Whether the first byte of an integer in memory is its lowest.
extern OPTXV_EXPORT bool nativeislittleendian;

/// The files that stand for the terminal and for nothing at all; empty where there are none.
extern OPTXV_EXPORT std::string_view osconsolename;
extern OPTXV_EXPORT std::string_view osnullfilename;

/// The platform that goes with what uname says of a system (POSIX: sysname, release, machine).
///
/// KEEP: no answer leads to SunOS-sparc64, whose name does not tell it from SunOS-sparc32.
OPTXV_EXPORT std::int32_t platformof(std::string_view sysname, std::string_view release,
                                     std::string_view machine) noexcept;

/// Finds osplatform, nativeislittleendian and, by osfiletype, the two names. The frame calls it
/// when the library loads.
void initq9platform();

}  // namespace optxv
