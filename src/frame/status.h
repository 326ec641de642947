// What the functions of the second public header share: the handle as the object, texts and
// optional pointers as they come in, and the status as it goes out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"
#include "options/zmaoptions.h"
#include "optxv/embedding.h"

namespace optxv {

/// The status of the exception that is being handled: ENOMEM for memory that ran out, EIO for a
/// failed write. Any other is a fault of ours and goes to the standard exception handler.
/// REQUIRES: called inside a catch block.
std::int32_t failurestatus() noexcept;

/// Runs what a function with a status does, which gives that status itself. An exception becomes
/// one.
template <class Body>
std::int32_t atstatus(Body body) noexcept {
  try {
    return body();
  } catch (...) {
    return failurestatus();
  }
}

inline tzmaoptions& objectof(optxv_handle handle) {
  return *static_cast<tzmaoptions*>(handle);
}

/// The same for a function of a handle: body gets the object. A nil handle is a bad argument.
template <class Body>
std::int32_t withobject(optxv_handle handle, Body body) noexcept {
  if (handle == nullptr) return optxv_bad_argument;
  return atstatus([&] { return body(objectof(handle)); });
}

/// The same for a read: where it is cut short, the listener is told that its sources are left.
template <class Body>
std::int32_t withreader(optxv_handle handle, Body body) noexcept {
  return withobject(handle, [&](tzmaoptions& options) -> std::int32_t {
    try {
      return body(options);
    } catch (...) {
      const std::int32_t status = failurestatus();
      options.abandonsources(status);
      return status;
    }
  });
}

/// The longest text that goes in: so the zero-terminated functions can always give it back.
inline constexpr std::size_t longesttext = shortstring::maximum - 1;

/// Calls use with a text of the caller: bytes and a size, or OPTXV_ENDED. Gives its status, or that
/// of a text which is nil or, with a limit, has more bytes than that.
template <class Use>
std::int32_t withtext(const char* bytes, std::size_t size, Use use,
                      std::size_t limit = longesttext) {
  if (bytes == nullptr && size != 0) return optxv_bad_argument;
  const std::string_view text = size == OPTXV_ENDED ? std::string_view(bytes)
                                : size == 0         ? std::string_view()
                                                    : std::string_view(bytes, size);
  return text.size() > limit ? optxv_too_long : use(text);
}

/// A text of the table as it goes out, zero-terminated. REQUIRES: the text is a heap string, or
/// ends with a zero byte otherwise.
inline optxv_text endedtext(std::string_view text) {
  return {text.empty() ? "" : text.data(), text.size()};
}

inline constexpr optxv_place noplace = {"", 0, 0, 0};

/// A place as it goes out, with the name of its source.
inline optxv_place placeof(const tzmaoptions& options, const textplace& at, std::uint16_t source) {
  if (!at.known()) return noplace;
  return {options.sources.name(source), at.line, at.column, at.length};
}

/// A position from 1 as one from 0, if there are that many; else -1.
inline std::int32_t positionin(std::int32_t number, std::int32_t count) {
  return number >= 1 && number <= count ? number - 1 : -1;
}

}  // namespace optxv
