// What an input decides: the bytes of an input as a row of choices.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace optxv::fuzz {

/// Takes choices off the front of an input. At its end every choice is 0 and every text empty.
/// BORROWS: the bytes.
class picker {
 public:
  picker(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  bool done() const { return rest_.empty(); }
  std::string_view rest() const { return rest_; }

  unsigned byte() {
    if (rest_.empty()) return 0;
    const auto first = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return first;
  }
  /// 0 to count - 1.
  unsigned below(unsigned count) { return byte() % count; }
  bool coin() { return (byte() & 1) != 0; }

  /// Any integer: small ones, edges, or four bytes as they are.
  std::int32_t integer() {
    constexpr std::array<std::int32_t, 8> edges = {0,     -1,        255,       256,
                                                   65536, INT32_MAX, INT32_MIN, 2100000000};
    const unsigned first = byte();
    if (first < 200) return static_cast<std::int32_t>(first) - 20;
    if (first < 240) return edges[first % edges.size()];
    std::uint32_t whole = 0;
    for (int i = 0; i < 4; ++i) whole = whole << 8 | byte();
    return static_cast<std::int32_t>(whole);
  }

  /// A text of at most so many bytes, its length first.
  std::string_view text(std::size_t most) {
    const std::size_t size = std::min({static_cast<std::size_t>(byte()), most, rest_.size()});
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return taken;
  }

 private:
  std::string_view rest_;
};

}  // namespace optxv::fuzz
