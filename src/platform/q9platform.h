// What operating system this is.
#pragma once

#include <array>
#include <string_view>

namespace optxv {

/// The file-system types by their numbers.
inline constexpr std::array<std::string_view, 7> osfiletypetext = {"WIN",  "CMS", "TSO", "VMS",
                                                                   "UNIX", "MAC", "XXXX"};

/// The file-system type of this build, an index into osfiletypetext: UNIX on every POSIX system.
inline constexpr int osfiletype = 4;

}  // namespace optxv
