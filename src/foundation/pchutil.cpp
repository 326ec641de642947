#include "foundation/pchutil.h"

#include <string.h>  // strnlen is from POSIX

#include <cstring>

#include "foundation/runtime.h"

namespace optxv {
namespace {

/// The first length at which a text counts as too long.
constexpr std::size_t toolong = 255;

char* newpchar(std::string_view s) {
  char* const result = static_cast<char*>(getmem(static_cast<std::int64_t>(s.size()) + 1));
  strpcopy(result, s);
  return result;
}

}  // namespace

std::int64_t pcharlen(const char* p) noexcept {
  return p == nullptr ? 0 : static_cast<std::int64_t>(std::strlen(p));
}

std::string_view detail::boundedpchar(const char* p, std::string_view overflow) noexcept {
  if (p == nullptr) return {};
  const std::size_t length = strnlen(p, toolong);
  return length == toolong ? overflow : std::string_view(p, length);
}

void strpcopy(char* dest, std::string_view s) noexcept {
  s.copy(dest, s.size());
  dest[s.size()] = '\0';
}

void strpcopyn(char* dest, std::string_view s, std::int32_t n) noexcept {
  strpcopy(dest, s.substr(0, n > 0 ? static_cast<std::size_t>(n) : 0));
}

char* strtopchar(std::string_view s) {
  return s.empty() ? nullptr : newpchar(s);
}

char* emptytopchar() {
  return newpchar({});
}

void pcharconcatstr(char* dest, std::int32_t& w, std::string_view s) noexcept {
  if (s.empty()) return;
  strpcopy(dest + w, s);
  w += static_cast<std::int32_t>(s.size());
}

void pcharconcatpchar(char* dest, std::int32_t& w, const char* src) noexcept {
  if (src == nullptr) return;
  const std::string_view text(src);
  strpcopy(dest + w, text);
  w += static_cast<std::int32_t>(text.size());
}

}  // namespace optxv
