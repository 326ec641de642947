#include "text/printable.h"

#include <algorithm>

#include "text/characters.h"

namespace command {
namespace {

constexpr std::string_view hexdigits = "0123456789ABCDEF";

void addescaped(std::string& result, std::string_view bytes) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    result += {'\\', 'x', hexdigits[byte >> 4], hexdigits[byte & 15]};
  }
}

/// How many characters at the beginning of a text are plain ones of ASCII, from the blank on.
std::size_t plainlength(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::find_if(text, [](char c) { return c < ' ' || c > '~'; }) - text.begin());
}

void addunit(std::string& result, std::uint32_t unit) {
  result += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) result += hexdigits[unit >> shift & 15];
}

/// A character as JSON escapes it: in one unit of UTF-16, or in two.
void addunits(std::string& result, std::uint32_t code) {
  constexpr std::uint32_t onlyone = 0x10000;
  if (code < onlyone) return addunit(result, code);
  addunit(result, 0xD800 + ((code - onlyone) >> 10));
  addunit(result, 0xDC00 + ((code - onlyone) & 0x3FF));
}

}  // namespace

std::string printable(std::string_view text) {
  std::string result;
  while (true) {
    const std::size_t plain = plainlength(text);
    result += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) return result;
    const character next = firstcharacter(text);
    const std::string_view bytes = text.substr(0, std::max<std::size_t>(next.bytes, 1));
    if (next.bytes > 0 && isshown(next.code))
      result += bytes;
    else
      addescaped(result, bytes);
    text.remove_prefix(bytes.size());
  }
}

std::string printableline(std::string_view line) {
  std::string blanks(line);
  std::ranges::replace(blanks, '\t', ' ');
  return printable(blanks);
}

std::string printablelines(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    result += printableline(text.substr(0, end));
    if (end < text.size()) result += '\n';
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return result;
}

std::string printablejson(std::string_view json) {
  std::string result;
  result.reserve(json.size());
  while (true) {
    const std::size_t plain = plainlength(json);
    result += json.substr(0, plain);
    json.remove_prefix(plain);
    if (json.empty()) return result;
    const character next = firstcharacter(json);
    const std::size_t size = std::max<std::size_t>(next.bytes, 1);
    if (json.front() == '\n' || next.bytes == 0 || isshown(next.code))
      result += json.substr(0, size);
    else
      addunits(result, next.code);
    json.remove_prefix(size);
  }
}

std::size_t columns(std::string_view text) {
  const auto plain = [](char c) { return c >= ' ' && c <= '~'; };
  const auto start = static_cast<std::size_t>(std::ranges::find_if_not(text, plain) - text.begin());
  std::size_t sum = start;
  text.remove_prefix(start);
  while (!text.empty()) {
    const character next = firstcharacter(text);
    sum += next.bytes > 0 ? widthof(next.code) : 1;
    text.remove_prefix(std::max<std::size_t>(next.bytes, 1));
  }
  return sum;
}

std::string inquotes(std::string_view text) {
  return '"' + printable(text) + '"';
}

std::string externalform(std::string_view value) {
  const bool quoted = value.empty() || value.find_first_of(" \t,") != value.npos;
  return quoted ? inquotes(value) : printable(value);
}

std::string counted(std::size_t count, std::string_view noun) {
  return grouped(count) + ' ' + std::string(noun) + (count == 1 ? "" : "s");
}

std::string grouped(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t i = digits.size(); i > 3; i -= 3) digits.insert(i - 3, ",");
  return digits;
}

}  // namespace command
