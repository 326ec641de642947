#include "text/names.h"

#include <algorithm>

namespace command {

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
