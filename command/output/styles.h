// The escape sequences for parts of what is printed (ECMA-48, select graphic rendition).
#pragma once

#include <string>
#include <string_view>

namespace command {

inline constexpr std::string_view plainstyle = "\x1B[0m";
inline constexpr std::string_view placestyle = "\x1B[1m";
inline constexpr std::string_view errorstyle = "\x1B[1;31m";
inline constexpr std::string_view notestyle = "\x1B[1;36m";
inline constexpr std::string_view redstyle = "\x1B[31m";
inline constexpr std::string_view greenstyle = "\x1B[32m";

/// The text in a style, if colours are wanted.
inline std::string styled(bool colours, std::string_view style, std::string_view text) {
  if (!colours) return std::string(text);
  return std::string(style) + std::string(text) + std::string(plainstyle);
}

}  // namespace command
