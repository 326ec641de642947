#include "listing/dynstr.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <utility>

#include "foundation/strutilx.h"
#include "foundation/textfile.h"

namespace optxv {

namespace {

constexpr std::int32_t allocstep = 256;
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

}  // namespace

tdynamicstr::tdynamicstr(std::int32_t size) {
  if (size != 0) resize(std::max(size, -1));
}

tdynamicstr::~tdynamicstr() {
  freemem(data_, allocated_);
}

std::int32_t tdynamicstr::getallocsize(std::int32_t n) noexcept {
  const std::int64_t size = std::int64_t{n} / allocstep * allocstep + allocstep;
  return static_cast<std::int32_t>(std::min<std::int64_t>(size, largest));
}

void tdynamicstr::resize(std::int32_t needed) {
  const std::int32_t size = getallocsize(needed);
  const std::int32_t length = std::exchange(length_, 0);
  const std::int32_t oldsize = std::exchange(allocated_, 0);
  data_ = static_cast<char*>(reallocmem(std::exchange(data_, nullptr), oldsize, size));
  allocated_ = size;
  length_ = length;
}

void tdynamicstr::grow(std::size_t added) {
  if (added <= static_cast<std::size_t>(allocated_ - length_)) return;
  if (added > static_cast<std::size_t>(largest - length_)) {
    clear();
    raisecause(cause::reallocation);
  }
  resize(length_ + static_cast<std::int32_t>(added));
}

void tdynamicstr::addbl(std::int32_t n) {
  if (n < 1) return;
  grow(static_cast<std::size_t>(n));
  std::memset(data_ + length_, ' ', static_cast<std::size_t>(n));
  length_ += n;
}

void tdynamicstr::addpchar(const char* p, std::int32_t n) {
  if (n > 0) addstr({p, static_cast<std::size_t>(n)});
}

void tdynamicstr::addstr(std::string_view s) {
  if (s.empty()) return;
  const std::less<const char*> before;
  const bool own =
      data_ != nullptr && !before(s.data(), data_) && before(s.data(), data_ + length_);
  const std::ptrdiff_t offset = own ? s.data() - data_ : 0;
  grow(s.size());
  std::copy_n(own ? data_ + offset : s.data(), s.size(), data_ + length_);
  length_ += static_cast<std::int32_t>(s.size());
}

void tdynamicstr::addint(std::int32_t n) {
  addstr(inttostr(n));
}

void tdynamicstr::assign(const tdynamicstr& other) {
  if (this == &other) return;
  clear();
  addstr(other.view());
}

shortstring tdynamicstr::getstr(std::int32_t start, std::int32_t count) const noexcept {
  if (start < 1 || count < 1) return {};
  shortstring result;
  if (start <= length_) result = view().substr(static_cast<std::size_t>(start - 1));
  result.setlength(std::min(count, result.length()));
  return padright(result, count);
}

void tdynamicstr::write() const {
  _Q9error_check();
  textfile output;
  output.rewrite();
  output.write(view());
  output.close();
  _Q9error_check();
}

}  // namespace optxv
