#include "text/printable.h"

#include <algorithm>

#include "text/characters.h"

namespace command {
namespace {

void addescaped(std::string& result, std::string_view bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    result += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
  }
}

}  // namespace

std::string printable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const character next = firstcharacter(text);
    const std::string_view bytes = text.substr(0, std::max<std::size_t>(next.bytes, 1));
    if (next.bytes > 0 && isshown(next.code))
      result += bytes;
    else
      addescaped(result, bytes);
    text.remove_prefix(bytes.size());
  }
  return result;
}

std::string printableline(std::string_view line) {
  std::string blanks(line);
  std::ranges::replace(blanks, '\t', ' ');
  return printable(blanks);
}

std::size_t columns(std::string_view text) {
  std::size_t sum = 0;
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
