#include "server/positions.h"

#include <algorithm>

#include "text/characters.h"

namespace command {
namespace {

constexpr std::uint32_t firstpair = 0x10000;  // from here on a character has two units in UTF-16

/// The bytes of the character in front of a text, and the units that a client counts for it.
struct step {
  std::size_t bytes, units;
};
step stepof(std::string_view text, encoding counts) {
  if (static_cast<unsigned char>(text.front()) < 0x80) return {1, 1};
  const character found = firstcharacter(text);
  if (found.bytes == 0) return {1, 1};
  if (counts == encoding::utf8) return {found.bytes, found.bytes};
  return {found.bytes, found.code >= firstpair ? 2U : 1U};
}

std::size_t containing(const std::vector<std::size_t>& starts, std::size_t offset) {
  return static_cast<std::size_t>(std::ranges::upper_bound(starts, offset) - starts.begin()) - 1;
}

}  // namespace

linedtext::linedtext(std::string text) : text_(std::move(text)) {
  index();
}

void linedtext::index() {
  starts_.assign(1, 0);
  feeds_.assign(1, 0);
  for (std::size_t at = text_.find_first_of("\r\n"); at != text_.npos;
       at = text_.find_first_of("\r\n", at + 1)) {
    const bool feed = text_[at] == '\n';
    if (feed) feeds_.push_back(at + 1);
    if (feed || at + 1 == text_.size() || text_[at + 1] != '\n') starts_.push_back(at + 1);
  }
}

/// Where a client's line ends, without what ends it.
std::size_t linedtext::endof(std::size_t line) const {
  if (line + 1 >= starts_.size()) return text_.size();
  std::size_t end = starts_[line + 1] - 1;
  if (text_[end] == '\n' && end > starts_[line] && text_[end - 1] == '\r') end--;
  return end;
}

std::size_t linedtext::offset(const position& at, encoding counts) const {
  if (at.line >= starts_.size()) return text_.size();
  std::size_t offset = starts_[at.line], left = at.character;
  const std::size_t end = endof(at.line);
  while (left > 0 && offset < end) {
    const step next = stepof(std::string_view(text_).substr(offset, end - offset), counts);
    if (next.units > left) break;
    left -= next.units;
    offset += next.bytes;
  }
  return offset;
}

position linedtext::at(std::size_t offset, encoding counts) const {
  offset = std::min(offset, text_.size());
  const std::size_t line = containing(starts_, offset);
  position result{line, 0};
  for (std::size_t from = starts_[line]; from < offset;) {
    const step next = stepof(std::string_view(text_).substr(from, offset - from), counts);
    from += next.bytes;
    result.character += next.units;
  }
  return result;
}

std::size_t linedtext::offset(std::int64_t line, std::int64_t column) const {
  if (line < 1) return 0;
  if (static_cast<std::size_t>(line) > feeds_.size()) return text_.size();
  const auto index = static_cast<std::size_t>(line) - 1;
  const std::size_t end = index + 1 < feeds_.size() ? feeds_[index + 1] - 1 : text_.size();
  return std::min(end,
                  feeds_[index] + static_cast<std::size_t>(std::max<std::int64_t>(column, 1)) - 1);
}

std::int64_t linedtext::lineof(std::size_t offset) const {
  return static_cast<std::int64_t>(containing(feeds_, offset)) + 1;
}

std::int64_t linedtext::columnof(std::size_t offset) const {
  return static_cast<std::int64_t>(offset - feeds_[containing(feeds_, offset)]) + 1;
}

void linedtext::replace(std::size_t from, std::size_t to, std::string_view with) {
  text_.replace(from, to - from, with);
  index();
}

}  // namespace command
