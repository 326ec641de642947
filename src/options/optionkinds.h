// The ten kinds of option: what each is called, what its definition record holds, and the only way
// from an option to its class.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

#include "options/toption.h"

namespace optxv {

/// The type by which the getters give a value; the numbers are part of the interface.
enum datatype : std::uint8_t {
  optDataNone,
  optDataInteger,
  optDataDouble,
  optDataString,
  optDataStrList,
};

/// What the library knows about a kind, as data.
struct kindrow {
  std::string_view keyword;       ///< the type word of the definition language
  std::string_view constantname;  ///< the name of the number in the interface
  datatype data;
  bool usermap;   ///< its record carries the caller's number
  bool modifier;  ///< its type word may have a modifier: the kinds with scalar values
};

inline constexpr std::array<kindrow, 10> optionkinds = {{
    {"integer", "optTypeInteger", optDataInteger, true, true},
    {"double", "optTypeDouble", optDataDouble, true, true},
    {"string", "optTypeString", optDataString, true, true},
    {"boolean", "optTypeBoolean", optDataInteger, true, true},
    {"enumstr", "optTypeEnumStr", optDataString, true, true},
    {"enumint", "optTypeEnumInt", optDataInteger, true, true},
    {"multilist", "optTypeMultiList", optDataNone, true, false},
    {"strlist", "optTypeStrList", optDataStrList, true, false},
    {"macro", "optTypeMacro", optDataNone, false, false},
    {"immediate", "optTypeImmediate", optDataNone, false, false},
}};

inline constexpr std::array<std::string_view, 5> datatypenames = {
    "optDataNone", "optDataInteger", "optDataDouble", "optDataString", "optDataStrList"};

/// A sub-type: the modifier that stands for it in a definition, and its name in the interface.
struct subtyperow {
  std::string_view modifier;
  std::string_view constantname;
};

inline constexpr std::array<subtyperow, 4> strtypemodifier = {{
    {"", "optsubRequired"},
    {"NV", "optsubNoValue"},
    {"OPT", "optsubOptional"},
    {"TWO", "optsub2Values"},
}};

inline constexpr std::array<std::string_view, 5> immediatetypenames = {
    "EolFlag", "ReadFile", "Message", "NoBounds", "Help"};

/// The row of a kind.
inline const kindrow& kindof(const toption& option) {
  return optionkinds[option.opttype];
}

/// Calls handler with the option as its own class and gives the handler's result; a const option
/// stays const. This is the only switch on opttype and the only downcast; it has no default, so
/// that the compiler names a kind that is missing.
template <class Option, class Handler>
decltype(auto) withkind(Option& option, Handler&& handler) {
  static_assert(std::is_same_v<std::remove_const_t<Option>, toption>);
  const auto as = [&]<class Class>(std::type_identity<Class>) -> auto& {
    using target = std::conditional_t<std::is_const_v<Option>, const Class, Class>;
    return static_cast<target&>(option);
  };
  switch (option.opttype) {
    case optTypeInteger:
      return handler(as(std::type_identity<tintoption>{}));
    case optTypeDouble:
      return handler(as(std::type_identity<tdbloption>{}));
    case optTypeString:
      return handler(as(std::type_identity<tstringoption>{}));
    case optTypeBoolean:
      return handler(as(std::type_identity<tbooleanoption>{}));
    case optTypeEnumStr:
      return handler(as(std::type_identity<tenumstroption>{}));
    case optTypeEnumInt:
      return handler(as(std::type_identity<tenumintoption>{}));
    case optTypeMultiList:
      return handler(as(std::type_identity<tmultilistoption>{}));
    case optTypeStrList:
      return handler(as(std::type_identity<tstrlistoption>{}));
    case optTypeMacro:
      return handler(as(std::type_identity<tmacrooption>{}));
    case optTypeImmediate:
      return handler(as(std::type_identity<timmediateoption>{}));
  }
  __builtin_unreachable();
}

/// The option as the given class, or nil if it is of another kind.
template <class Class, class Option>
auto* askind(Option* option) {
  using target = std::conditional_t<std::is_const_v<Option>, const Class, Class>;
  if (option == nullptr) return static_cast<target*>(nullptr);
  return withkind(*option, [](auto& typed) -> target* {
    if constexpr (std::is_same_v<std::remove_cvref_t<decltype(typed)>, Class>)
      return &typed;
    else
      return nullptr;
  });
}

/// The kinds with an integer value: their class has getasinteger.
template <class Class>
concept integerkind = requires(const Class& option) {
  option.getasinteger();
};
/// The kind with a real value.
template <class Class>
concept doublekind = requires(const Class& option) {
  option.getasdouble();
};
/// The kinds with a scalar value of any type: their record has a default.
template <class Class>
concept scalarkind = requires(Class& option) {
  option.defaultvalue;
};
/// The kinds with a list of allowed values.
template <class Class>
concept enumerationkind = requires(Class& option) {
  option.enumitems;
};

}  // namespace optxv
