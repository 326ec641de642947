#include "output/paragraph.h"

#include <algorithm>

#include "text/printable.h"

namespace command {
namespace {

/// How much of a text goes into a line of so many columns: up to the last blank that fits, or to
/// the first one where none does. Leading blanks belong to the word that follows.
std::size_t linelength(std::string_view text, std::size_t room) {
  std::size_t best = 0, used = 0;
  for (std::size_t at = text.find_first_not_of(' '); at < text.size();) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    used += columns(text.substr(best, end - best));
    if (used > room && best > 0) return best;
    best = end;
    if (used > room) return best;
    at = text.find_first_not_of(' ', end);
  }
  return best;
}

std::string_view withoutblanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

}  // namespace

std::string paragraph(std::string_view label, std::string_view text, std::size_t indent,
                      std::size_t width) {
  const std::size_t room = std::max(width, indent + narrowesttext) - indent;
  const std::string margin(indent, ' ');
  const std::size_t used = columns(label);
  std::string result(label);
  if (text.empty()) return result + '\n';
  result += used < indent || indent == 0 ? std::string(indent - used, ' ') : '\n' + margin;
  while (true) {
    const std::size_t length = width == 0 ? text.size() : linelength(text, room);
    result += std::string(text.substr(0, length)) + '\n';
    text = withoutblanks(text.substr(length));
    if (text.empty()) return result;
    result += margin;
  }
}

}  // namespace command
