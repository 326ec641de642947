// The boundary: the kinds that arguments of exported functions have, the signatures of those
// functions, and the two ways in which a call from outside becomes a call of a method.
//
// `opt` functions carry bounded strings, `copt` functions zero-terminated ones; both end in the
// same method, one hop away. Nothing here holds state or checks a handle.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "foundation/boundedstring.h"
#include "foundation/pchutil.h"
#include "foundation/runtime.h"
#include "options/zmaoptions.h"

namespace optxv {

// --- Kinds and signatures ------------------------------------------------------------------------

/// What a result or an argument is: its code in a signature, and its type in the two forms of text.
/// The codes are part of the interface: callers pass them to xcheck.
namespace kinds {

template <std::int32_t Code, class Opt, class Copt = Opt>
struct kind {
  static constexpr std::int32_t code = Code;
  static constexpr bool istext = !std::is_same_v<Opt, Copt>;
  using opt = Opt;
  using copt = Copt;
};

using none = kind<0, void>;
using integer = kind<3, std::int32_t>;
using outinteger = kind<4, std::int32_t*>;
using pchar = kind<10, const char*>;
using text = kind<11, const unsigned char*, const char*>;
using outtext = kind<12, unsigned char*, char*>;
using real = kind<13, double>;
using outreal = kind<14, double*>;

}  // namespace kinds

/// One function as xcheck knows it. The handle is no argument here.
struct signature {
  static constexpr int maximumarguments = 7;

  std::string_view apiname;
  std::string_view linkagename;
  int arguments;
  std::array<std::int32_t, maximumarguments + 1> codes;  ///< the result's, then the arguments'
  bool hastext;
  bool hastwin;
};

template <class Result, class... Arguments>
constexpr signature signatureof(std::string_view apiname, std::string_view linkagename,
                                bool hastwin) {
  static_assert(sizeof...(Arguments) <= signature::maximumarguments);
  return {apiname,
          linkagename,
          sizeof...(Arguments),
          {Result::code, Arguments::code...},
          (Arguments::istext || ...),
          hastwin};
}

namespace detail {
constexpr auto makesignatures() {
  using namespace kinds;
#define OPTXV_TWIN(api, linkage, ...) signatureof<__VA_ARGS__>(#api, #linkage, true),
#define OPTXV_PLAIN(api, linkage, ...) signatureof<__VA_ARGS__>(#api, #linkage, false),
  return std::array{
#include "frame/api.def"
  };
}
}  // namespace detail

/// Every function that takes a handle, in the order of the table.
inline constexpr auto signatures = detail::makesignatures();

static_assert(signatures.size() == 75);
static_assert(std::ranges::count_if(signatures, &signature::hastext) == 41);
static_assert(std::ranges::all_of(signatures,
                                  [](const signature& row) { return row.hastwin == row.hastext; }));
static_assert(std::ranges::all_of(signatures, [](const signature& row) {
  return std::ranges::equal(row.apiname, row.linkagename, {}, [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
  });
}));

// --- Calls ---------------------------------------------------------------------------------------

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

/// An argument of a `copt` call while the method runs. Text in is converted into a buffer of its
/// own; text out is received in one, empty at first, and copied out afterwards.
template <class Type>
struct argument {
  explicit argument(Type passed) noexcept : value(passed) {}
  decltype(auto) get() const noexcept { return given(value); }
  void giveback() const noexcept {}
  Type value;
};
template <>
struct argument<const char*> {
  explicit argument(const char* passed) noexcept : value(pchartostr<>(passed)) {}
  std::string_view get() const noexcept { return value; }
  void giveback() const noexcept {}
  shortstring value;
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
