#include "server/frames.h"

#include <algorithm>
#include <charconv>

#include "text/names.h"

namespace command {
namespace {

constexpr std::string_view lengthfield = "content-length";

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r'))
    text.remove_suffix(1);
  return text;
}

/// Where the header ends, after its empty line; npos if it does not yet.
std::size_t endofheader(std::string_view text) {
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find('\n', start);
    if (end == text.npos) return end;
    if (trimmed(text.substr(start, end - start)).empty()) return end + 1;
    start = end + 1;
  }
}

/// The text of the length in a header; empty if there is none.
std::string_view lengthof(std::string_view header) {
  while (!header.empty()) {
    const std::size_t end = std::min(header.find('\n'), header.size());
    const std::string_view line = header.substr(0, end);
    const std::size_t colon = line.find(':');
    if (colon != line.npos && samename(trimmed(line.substr(0, colon)), lengthfield))
      return trimmed(line.substr(colon + 1));
    header.remove_prefix(std::min(end + 1, header.size()));
  }
  return {};
}

std::optional<std::size_t> numberof(std::string_view digits) {
  std::size_t number = 0;
  const auto [end, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  const bool good = fault == std::errc() && !digits.empty() && end == digits.data() + digits.size();
  return good ? std::optional(number) : std::nullopt;
}

}  // namespace

/// What is done with goes in large pieces, so that many small frames take no longer than a large
/// one.
void framereader::drop(std::size_t size) {
  taken_ += size;
  if (taken_ < held_.size() / 2) return;
  held_.erase(0, taken_);
  taken_ = 0;
}

/// Reads a header. Gives its fault, if it has one; the content of a good one comes next.
std::optional<frame> framereader::header() {
  const std::size_t end = endofheader(held());
  if (end == held_.npos) {
    if (held().size() <= longestheader) return std::nullopt;
    drop(held().size());
    return frame{.fault = "a header without an end"};
  }
  const auto length = numberof(lengthof(held().substr(0, end)));
  drop(end);
  if (!length) return frame{.fault = "a header without a good Content-Length"};
  if (*length > longest_) {
    skipped_ = *length;
    return frame{.fault = "a content that is too long"};
  }
  expected_ = length;
  return std::nullopt;
}

std::optional<frame> framereader::next() {
  if (skipped_ > 0) {
    const std::size_t gone = std::min(skipped_, held().size());
    drop(gone);
    skipped_ -= gone;
    if (skipped_ > 0) return std::nullopt;
  }
  if (!expected_)
    if (auto fault = header()) return fault;
  if (!expected_ || held().size() < *expected_) return std::nullopt;
  frame result{.content = std::string(held().substr(0, *expected_))};
  drop(*expected_);
  expected_.reset();
  return result;
}

std::string framed(std::string_view content) {
  return "Content-Length: " + std::to_string(content.size()) + "\r\n\r\n" + std::string(content);
}

}  // namespace command
