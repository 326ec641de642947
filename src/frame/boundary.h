// The boundary: the two ways in which a call from outside becomes a call of a method.
//
// `opt` functions carry bounded strings, `copt` functions zero-terminated ones; both end in the
// same method, one hop away. Nothing here holds state or checks a handle.
#pragma once

#include <cstdint>
#include <string_view>
#include <type_traits>

#include "foundation/boundedstring.h"
#include "foundation/pchutil.h"
#include "foundation/runtime.h"
#include "options/zmaoptions.h"

namespace optxv {

/// Runs what an exported function does. An exception that nobody caught goes to the standard
/// exception handler, which prints its line and aborts: no exception crosses into a caller, who may
/// be written in C.
template <class Body>
auto atboundary(Body body) noexcept -> decltype(body()) {
  try {
    return body();
  } catch (...) {
    standardexceptionhandler();
  }
}

/// An argument as a method takes it: what is passed by value passes through, an out variable
/// becomes a reference, a bounded string a view (empty for nil), and an out buffer of 256 bytes a
/// shortstring in place: its layout is that of the buffer.
inline std::int32_t given(std::int32_t value) noexcept {
  return value;
}
inline double given(double value) noexcept {
  return value;
}
inline const char* given(const char* text) noexcept {
  return text;
}
inline const std::int32_t* given(const std::int32_t* numbers) noexcept {
  return numbers;
}
inline std::int32_t& given(std::int32_t* out) noexcept {
  return *out;
}
inline double& given(double* out) noexcept {
  return *out;
}
inline std::string_view given(const unsigned char* text) noexcept {
  if (text == nullptr) return {};
  return {reinterpret_cast<const char*>(text + 1), *text};
}
inline shortstring& given(unsigned char* buffer) noexcept {
  return *reinterpret_cast<shortstring*>(buffer);
}

/// An argument of a `copt` call while the method runs. Text in is read where the caller has it;
/// text out is received in a buffer of its own, empty at first, and copied out afterwards, so that
/// the caller may give one buffer for both.
template <class Type>
struct argument {
  explicit argument(Type passed) noexcept : value(passed) {}
  decltype(auto) get() const noexcept { return given(value); }
  void giveback() const noexcept {}
  Type value;
};
template <>
struct argument<const char*> {
  explicit argument(const char* passed) noexcept : value(pchartoview(passed)) {}
  std::string_view get() const noexcept { return value; }
  void giveback() const noexcept {}
  std::string_view value;
};
template <>
struct argument<char*> {
  explicit argument(char* passed) noexcept : destination(passed) {}
  shortstring& get() noexcept { return value; }
  void giveback() const noexcept { strpcopy(destination, value); }
  shortstring value;
  char* destination;
};

/// Calls a method of the object behind the handle, or a function that needs none.
template <auto Method, class... Arguments>
decltype(auto) callmethod(void* handle, Arguments&&... arguments) {
  if constexpr (std::is_member_function_pointer_v<decltype(Method)>) {
    return (static_cast<tzmaoptions*>(handle)->*Method)(arguments...);
  } else {
    return Method(arguments...);
  }
}

/// A call in the `opt` form.
template <auto Method, class... Passed>
auto optcall(void* handle, Passed... passed) noexcept {
  return atboundary([&] { return callmethod<Method>(handle, given(passed)...); });
}

namespace detail {
template <auto Method, class... Arguments>
auto converted(void* handle, Arguments&&... arguments) {
  if constexpr (std::is_void_v<decltype(callmethod<Method>(handle, arguments.get()...))>) {
    callmethod<Method>(handle, arguments.get()...);
    (arguments.giveback(), ...);
  } else {
    const auto result = callmethod<Method>(handle, arguments.get()...);
    (arguments.giveback(), ...);
    return result;
  }
}
}  // namespace detail

/// A call in the `copt` form. Texts are copied out in the order of the arguments.
template <auto Method, class... Passed>
auto coptcall(void* handle, Passed... passed) noexcept {
  return atboundary([&] { return detail::converted<Method>(handle, argument<Passed>(passed)...); });
}

}  // namespace optxv
