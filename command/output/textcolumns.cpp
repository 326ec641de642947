#include "output/textcolumns.h"

#include <algorithm>

#include "text/characters.h"

namespace command {
namespace {

constexpr std::string_view bytemark = "\xEF\xBB\xBF";

bool isplain(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// The code units of the characters that begin in the first `end` bytes and, unless `cut`, also end
/// there.
std::int64_t unitsbefore(std::string_view line, std::size_t end, bool cut) {
  constexpr std::uint32_t onlyone = 0x10000;
  std::int64_t units = 0;
  std::size_t at = 0;
  while (at < std::min(end, line.size())) {
    const character next = firstcharacter(line.substr(at));
    at += std::max<std::size_t>(next.bytes, 1);
    if (at <= end || cut) units += next.code < onlyone ? 1 : 2;
  }
  return units + static_cast<std::int64_t>(end - std::min(end, line.size()));
}

}  // namespace

void textcolumns::line(const optxv_place& where, std::string_view text) {
  if (!isplain(text)) lines_[where.file][where.line] = text;
}

const std::string* textcolumns::lineof(const place& where) const {
  const auto file = lines_.find(where.file);
  if (file == lines_.end()) return nullptr;
  const auto line = file->second.find(where.line);
  return line == file->second.end() ? nullptr : &line->second;
}

unitrange textcolumns::units(const place& where) const {
  const std::string* known = lineof(where);
  if (known == nullptr) return {where.column, where.column + where.length};
  std::string_view line = *known;
  auto begin = static_cast<std::size_t>(where.column - 1);
  std::size_t end = begin + static_cast<std::size_t>(where.length);
  if (where.line == 1 && line.starts_with(bytemark)) {
    line.remove_prefix(bytemark.size());
    begin -= std::min(begin, bytemark.size());
    end -= std::min(end, bytemark.size());
  }
  return {1 + unitsbefore(line, begin, false), 1 + unitsbefore(line, end, begin < end)};
}

bool textcolumns::isgood(const place& where) const {
  const std::string* known = lineof(where);
  return known == nullptr || isutf8(*known);
}

bool isutf8(std::string_view text) {
  while (!text.empty()) {
    const character next = firstcharacter(text);
    if (next.bytes == 0) return false;
    text.remove_prefix(next.bytes);
  }
  return true;
}

}  // namespace command
