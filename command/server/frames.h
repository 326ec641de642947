// The frames of the protocol: a header with the length of the content, an empty line, the content.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace command {

/// A content, or what was wrong with the header of one that is passed over.
struct frame {
  std::string content = {};
  std::string fault = {};  ///< in words; empty if there is none
};

/// Takes bytes in pieces of any size and gives the frames in them. A bad header is one fault, and
/// the next frame begins after it; so nothing that a client sends stops the reader.
class framereader {
 public:
  static constexpr std::size_t longest = std::size_t{256} << 20;
  static constexpr std::size_t longestheader = std::size_t{8} << 10;

  /// longestcontent: in bytes; what is longer is passed over.
  explicit framereader(std::size_t longestcontent = longest) : longest_(longestcontent) {}

  void add(std::string_view bytes) { held_ += bytes; }
  /// The next frame; nothing if it is not there yet.
  std::optional<frame> next();

 private:
  std::optional<frame> header();
  std::string_view held() const { return std::string_view(held_).substr(taken_); }
  void drop(std::size_t size);

  std::size_t longest_;
  std::string held_;
  std::size_t taken_ = 0;                ///< bytes of it that are done with
  std::optional<std::size_t> expected_;  ///< bytes of the content, once its header is read
  std::size_t skipped_ = 0;              ///< bytes still to come of a content that is too long
};

/// The content with its header.
std::string framed(std::string_view content);

}  // namespace command
