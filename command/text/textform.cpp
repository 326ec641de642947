#include "text/textform.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace command {
namespace {

struct character {
  std::uint32_t code = 0;
  std::size_t bytes = 0;  ///< 0 if there is no good character
};

struct leadrow {
  unsigned char mask, pattern;
  std::size_t bytes;
  std::uint32_t smallest;  ///< below it the form is longer than it may be
};

// The forms of UTF-8 (RFC 3629): what the first byte looks like, and the least code it may carry.
constexpr std::array<leadrow, 4> leads = {
    {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}}};

struct coderange {
  std::uint32_t first, last;
};

// Controls, marks without width or of direction, line separators, surrogates.
constexpr std::array<coderange, 7> hidden = {{{0x00, 0x1F},
                                              {0x7F, 0x9F},
                                              {0x200B, 0x200F},
                                              {0x2028, 0x202E},
                                              {0x2060, 0x206F},
                                              {0xD800, 0xDFFF},
                                              {0xFEFF, 0xFEFF}}};
constexpr std::uint32_t lastcode = 0x10FFFF;

bool istail(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

character decoded(std::string_view text, const leadrow& lead) {
  std::uint32_t code = static_cast<unsigned char>(text[0]) & static_cast<unsigned char>(~lead.mask);
  for (std::size_t i = 1; i < lead.bytes; i++) {
    if (i >= text.size() || !istail(text[i])) return {};
    code = code << 6 | (static_cast<unsigned char>(text[i]) & 0x3F);
  }
  if (code < lead.smallest || code > lastcode) return {};
  return {code, lead.bytes};
}

/// The character at the start of a text that is not empty.
character firstcharacter(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  const auto lead = std::ranges::find_if(
      leads, [&](const leadrow& row) { return (first & row.mask) == row.pattern; });
  return lead == leads.end() ? character{} : decoded(text, *lead);
}

bool isshown(const character& c) {
  return c.bytes > 0 && std::ranges::none_of(hidden, [&](const coderange& range) {
           return c.code >= range.first && c.code <= range.last;
         });
}

std::string escaped(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string result;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    result += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
  }
  return result;
}

}  // namespace

std::string printable(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const character next = firstcharacter(text);
    const std::string_view bytes = text.substr(0, std::max<std::size_t>(next.bytes, 1));
    result += isshown(next) ? std::string(bytes) : escaped(bytes);
    text.remove_prefix(bytes.size());
  }
  return result;
}

std::string withoutcontrols(std::string_view text) {
  std::string result;
  for (const char& c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool stays = (byte >= ' ' && byte != 0x7F) || c == '\t';
    result += stays ? std::string(1, c) : escaped({&c, 1});
  }
  return result;
}

std::size_t columns(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(text, [](char c) { return !istail(c); }));
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

char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

std::string folded(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = folded(c);
  return result;
}

bool samename(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, [](char a, char b) { return folded(a) == folded(b); });
}

bool isletter(char c) {
  return folded(c) >= 'a' && folded(c) <= 'z';
}

bool isdigit(char c) {
  return c >= '0' && c <= '9';
}

bool isnamecharacter(char c) {
  return isletter(c) || isdigit(c) || c == '_';
}

}  // namespace command
