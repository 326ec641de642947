#include "layout/filelines.h"

#include <algorithm>

namespace command {
namespace {

constexpr std::string_view blanks = " \t";

}  // namespace

std::vector<fileline> filelines(std::string_view text) {
  std::vector<fileline> all;
  all.reserve(static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1);
  while (!text.empty()) {
    const std::size_t feed = text.find('\n');
    const std::size_t size = feed == text.npos ? text.size() : feed + 1;
    std::size_t body = std::min(feed, text.size());
    if (body > 0 && text[body - 1] == '\r') body--;
    all.push_back({text.substr(0, body), text.substr(body, size - body)});
    text.remove_prefix(size);
  }
  return all;
}

std::string_view innerending(std::string_view ending) {
  return ending.empty() ? "\n" : ending == "\r" ? "\r\n" : ending;
}

bool isblank(std::string_view text) {
  return text.find_first_not_of(blanks) == text.npos;
}

std::string_view trimmedleft(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(blanks), text.size()));
}

std::string_view trimmedright(std::string_view text) {
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

}  // namespace command
