#include "foundation/q9private.h"

#include <string.h>  // strnlen is from POSIX

#include <cstring>

namespace optxv::q9private {

shortstring pchartostr(const char* p) noexcept {
  return std::string_view(p, strnlen(p, shortstring::maximum));
}

shortstring strbuftostr(const char* p) noexcept {
  return pchartostr(p);
}

char* strtostrbuf(std::string_view s, char* buf) noexcept {
  strpcopy(buf, s);
  return buf;
}

char* strtopchar(std::string_view s) {
  return s.empty() ? emptytopchar() : optxv::strtopchar(s);
}

void pcharconcatpchar(char* dest, std::int32_t& w, const char* src) noexcept {
  if (src == nullptr) return;
  const std::string_view text(src);
  strpcopy(dest + w + std::strlen(dest + w), text);
  w += static_cast<std::int32_t>(text.size());
}

}  // namespace optxv::q9private
