// The kinds that results and arguments of exported functions have, and the signatures of those
// functions, made from the table in api.def. What xcheck compares with, and what the bodies of the
// functions are made of.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace optxv {

/// What a result or an argument is: its code in a signature, and its type in the two forms of text.
/// The codes are part of the interface: callers hand them to xcheck.
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
                                bool hastwin) {  // unreached: the compiler runs it
  static_assert(sizeof...(Arguments) <= signature::maximumarguments);
  return {apiname,
          linkagename,
          sizeof...(Arguments),
          {Result::code, Arguments::code...},
          (Arguments::istext || ...),
          hastwin};
}

namespace detail {
constexpr auto makesignatures() {  // unreached: the compiler runs it
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

}  // namespace optxv
