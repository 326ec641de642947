// Numbers as the C library converts them in its default locale, after the library's own rules for
// where a number begins: what the conversions of foundation/numtext are held against.
#pragma once

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace optxv::cnumbers {

inline bool digit(char c) {
  return c >= '0' && c <= '9';
}

/// A text with its blanks and sign passed.
struct scan {
  explicit scan(const std::string& from) : text(from) {
    while (text[at] == ' ') ++at;
    negative = text[at] == '-';
    sign = at;
    if (negative || text[at] == '+') ++at;
  }
  int position(const char* stop) const {
    const auto behind = static_cast<std::size_t>(stop - text.c_str());
    return behind == text.size() ? 0 : static_cast<int>(behind) + 1;
  }
  const std::string& text;  // c_str() ends in a zero byte, so that [size()] may be looked at
  std::size_t at = 0, sign = 0;
  bool negative = false;
};

inline std::int32_t saturated(long value) {
  return static_cast<std::int32_t>(std::clamp<long>(value, INT32_MIN, INT32_MAX));
}

/// strtol.
inline std::int32_t integerby(const std::string& text, int& code) {
  scan in(text);
  const char first = text[in.at], second = first == '\0' ? '\0' : text[in.at + 1];
  int base = 10;
  code = static_cast<int>(in.at) + 1;
  if (first == '$') {
    if (std::isxdigit(static_cast<unsigned char>(second)) == 0) return ++code, 0;
    ++in.at;
    base = 16;
  } else if (first == '0' && (second == 'x' || second == 'X')) {
    base = 16;
  } else if (!digit(first) || (first == '0' && in.at + 1 != text.size() && !digit(second))) {
    return 0;
  }
  char* stop = nullptr;
  const long value = std::strtol(text.c_str() + in.at, &stop, base);
  code = in.position(stop);
  return saturated(in.negative ? -value : value);
}

/// strtod likewise.
inline double realby(const std::string& text, int& code) {
  scan in(text);
  code = static_cast<int>(in.at) + 1;
  std::string copy = text;
  if (digit(text[in.at])) {
    if (text[in.at + 1] == 'x' || text[in.at + 1] == 'X') return ++code, 0;
  } else if (text[in.at] != '.') {
    return 0;
  } else if (in.at + 1 == text.size()) {
    return code = 0, 0;
  } else if (text[in.at + 1] == 'e' || text[in.at + 1] == 'E') {
    copy[in.at] = '0';
  }
  const char* start = copy.c_str() + in.at;
  char* stop = nullptr;
  const double value = std::strtod(start, &stop);
  code = in.position(text.c_str() + (stop - copy.c_str()));
  return in.negative ? -value : value;
}

}  // namespace optxv::cnumbers
