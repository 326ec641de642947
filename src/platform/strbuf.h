// A text on its way to a call of the operating system.
#pragma once

#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/q9private.h"

namespace optxv {

/// The zero-terminated copy of a bounded string, for the length of one call. A longer text is cut
/// at 255 bytes as it would be in a bounded string; the system reads it up to the first zero byte.
class strbuf {
 public:
  explicit strbuf(std::string_view text) noexcept {
    q9private::strtostrbuf(text.substr(0, shortstring::maximum), text_);
  }
  operator const char*() const noexcept { return text_; }  // NOLINT: that is what it is for

 private:
  char text_[shortstring::maximum + 1];
};

}  // namespace optxv
