#include "exchange/lineplaces.h"

#include <algorithm>

namespace command {
namespace {

/// Of a line, as much goes with a finding. A text may be one long line.
constexpr std::size_t longestline = 1020;

}  // namespace

lineplaces::lineplaces(std::string file, std::string_view text)
    : file_(std::move(file)), text_(text), starts_{0} {
  for (std::size_t end = 0; (end = text.find('\n', end)) != text.npos;) starts_.push_back(++end);
}

/// The number of a line, from 0.
std::size_t lineplaces::lineof(std::size_t byte) const {
  return static_cast<std::size_t>(std::ranges::upper_bound(starts_, byte) - starts_.begin()) - 1;
}

std::string_view lineplaces::line(std::size_t number) const {
  const std::string_view rest = text_.substr(starts_[number]);
  const std::string_view all = rest.substr(0, std::min(rest.find('\n'), longestline));
  return all.ends_with('\r') ? all.substr(0, all.size() - 1) : all;
}

place lineplaces::at(const textspan& where) const {
  const std::size_t number = lineof(where.begin);
  const std::size_t next = number + 1 < starts_.size() ? starts_[number + 1] - 1 : text_.size();
  place result(file_);
  result.line = static_cast<std::int64_t>(number) + 1;
  result.column = static_cast<std::int64_t>(where.begin - starts_[number]) + 1;
  result.length = static_cast<std::int64_t>(
      std::clamp(where.end, where.begin, std::max(where.begin, next)) - where.begin);
  return result;
}

finding lineplaces::found(ownfinding what, const textspan& where, std::string words) const {
  finding result = own(what, at(where), std::move(words));
  result.source = std::make_shared<const std::string>(line(lineof(where.begin)));
  return result;
}

}  // namespace command
