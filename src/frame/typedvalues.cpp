// The functions of the second public header that get and set values, by name and by number.

#include <type_traits>

#include "foundation/arithmetic.h"
#include "foundation/pchutil.h"
#include "foundation/strutilx.h"
#include "frame/status.h"
#include "options/optionkinds.h"

using namespace optxv;

namespace {

template <class Class>
concept textkind = requires(const Class& option) {
  option.value.view();
};
template <class Class>
concept numberkind = integerkind<Class> || doublekind<Class>;

// How values are read and stored: each takes the kinds that its parameter allows.

constexpr auto readinteger = [](const integerkind auto& option, bool second) {
  return second ? option.getasinteger2() : option.getasinteger();
};

constexpr auto readreal = [](const numberkind auto& option, bool second) -> double {
  if constexpr (doublekind<std::remove_cvref_t<decltype(option)>>)
    return second ? option.getasdouble2() : option.getasdouble();
  else
    return readinteger(option, second);
};

constexpr auto readtext = [](const textkind auto& option, bool second) {
  const bool set = (option.defined & (second ? 2 : 1)) != 0;
  return endedtext(set ? (second ? option.value2 : option.value) : option.defaultvalue);
};

auto integersetter(std::int32_t value) {
  return [value](numberkind auto& option, bool second) {
    if constexpr (doublekind<std::remove_cvref_t<decltype(option)>>)
      option.setasdouble12(second, value);
    else
      option.setasinteger12(second, value);
  };
}

void refusereal(const toption& option, double value) {
  tzmaoptions& owner = *option.owner;
  const shortstring seen = dbltostr(value);
  owner.addmessage(
      optMsgValueError,
      concat("Integer expected, for option ", quoted{owner.curoptname}, " saw ", quoted{seen}),
      {.fault = optxv_fault_integer_expected,
       .option = option.position + 1,
       .about = owner.curoptname,
       .seen = seen});
}

auto realsetter(double value) {
  return [value](numberkind auto& option, bool second) {
    if constexpr (doublekind<std::remove_cvref_t<decltype(option)>>)
      option.setasdouble12(second, value);
    else if (iswhole(value))
      option.setasinteger12(second, static_cast<std::int32_t>(value));
    else
      refusereal(option, value);
  };
}

auto textsetter(std::string_view text) {
  return [text](textkind auto& option, bool second) {
    second ? option.setasstring2(text) : option.setasstring(text);
  };
}

/// ok if the option has a value of that number, 1 or 2.
std::int32_t whichstatus(const toption& option, std::int32_t which) {
  if (which < 1 || which > 2) return optxv_bad_argument;
  return which == 2 && option.subtype != optsub2Values ? optxv_wrong_kind : optxv_ok;
}

/// Calls an operation with the option as its own class, if the operation takes that.
template <class Option, class Operation>
std::int32_t apply(Option& option, std::int32_t which, Operation operation) {
  if (const std::int32_t bad = whichstatus(option, which); bad != optxv_ok) return bad;
  return withkind(option, [&](auto& typed) -> std::int32_t {
    constexpr bool taken = std::is_invocable_v<Operation, decltype(typed), bool>;
    if constexpr (taken) operation(typed, which == 2);
    return taken ? optxv_ok : optxv_wrong_kind;
  });
}

/// Runs a change, and tells from the faults that were met whether the value was refused.
template <class Change>
std::int32_t checked(const tzmaoptions& options, Change change) {
  const std::int64_t before = options.faultsmet;
  const std::int32_t status = change();
  return status == optxv_ok && options.faultsmet != before ? optxv_refused : status;
}

template <class Value, class Read>
std::int32_t get(const toption* option, std::int32_t which, Value* value, Read read) {
  if (option == nullptr) return optxv_unknown;
  if (value == nullptr) return optxv_bad_argument;
  return apply(
      *option, which,
      [&](const auto& typed,
          bool second) requires std::is_invocable_v<Read, decltype(typed), bool> {
        *value = read(typed, second);
      });
}

template <class Value, class Read>
std::int32_t getnamed(optxv_handle handle, const char* name, Value* value, Read read) noexcept {
  return withobject(handle, [&](tzmaoptions& options) -> std::int32_t {
    return name == nullptr ? optxv_bad_argument : get(options.optionasobj(name), 1, value, read);
  });
}

template <class Value, class Read>
std::int32_t getnumbered(optxv_handle handle, std::int32_t number, std::int32_t which, Value* value,
                         Read read) noexcept {
  return withobject(handle, [&](const tzmaoptions& options) {
    return get(options.getobjects(positionin(number, options.getcount())), which, value, read);
  });
}

template <class Set>
std::int32_t setnamed(optxv_handle handle, const char* name, Set set) noexcept {
  return withobject(handle, [&](tzmaoptions& options) -> std::int32_t {
    if (name == nullptr) return optxv_bad_argument;
    toption* const option = options.optionasobj(name);
    if (option == nullptr) return optxv_unknown;
    return checked(options, [&] { return apply(*option, 1, set); });
  });
}

/// Runs a change of the option of a number, which messages then call by its display name.
template <class Change>
std::int32_t changenumbered(optxv_handle handle, std::int32_t number, Change change) noexcept {
  return withobject(handle, [&](tzmaoptions& options) -> std::int32_t {
    if (!options.checkoptnr(number)) return optxv_unknown;
    return checked(options, [&] { return change(*options.getobjects(number)); });
  });
}

template <class Set>
std::int32_t setnumbered(optxv_handle handle, std::int32_t number, std::int32_t which,
                         Set set) noexcept {
  return changenumbered(handle, number, [&](toption& option) { return apply(option, which, set); });
}

std::int32_t parse(toption& option, std::int32_t which, std::string_view text) {
  if (option.opttype == optTypeImmediate) return optxv_wrong_kind;
  const std::int32_t status = whichstatus(option, which);
  if (status == optxv_ok) which == 2 ? option.setasstring2(text) : option.setasstring(text);
  return status;
}

}  // namespace

int32_t optxv_find(optxv_handle handle, const char* name, size_t size, int32_t* number) {
  return withobject(handle, [&](tzmaoptions& options) {
    if (number == nullptr) return std::int32_t{optxv_bad_argument};
    const auto find = [&](std::string_view text) -> std::int32_t {
      const toption* const option = options.optionasobj(text);
      if (option == nullptr) return optxv_unknown;
      *number = option->position + 1;
      return optxv_ok;
    };
    return withtext(name, size, find, std::string_view::npos);
  });
}

int32_t optxv_get_integer(optxv_handle handle, const char* name, int32_t* value) {
  return getnamed(handle, name, value, readinteger);
}
int32_t optxv_get_real(optxv_handle handle, const char* name, double* value) {
  return getnamed(handle, name, value, readreal);
}
int32_t optxv_get_text(optxv_handle handle, const char* name, optxv_text* value) {
  return getnamed(handle, name, value, readtext);
}

int32_t optxv_set_integer(optxv_handle handle, const char* name, int32_t value) {
  return setnamed(handle, name, integersetter(value));
}
int32_t optxv_set_real(optxv_handle handle, const char* name, double value) {
  return setnamed(handle, name, realsetter(value));
}
int32_t optxv_set_text(optxv_handle handle, const char* name, const char* bytes, size_t size) {
  return withtext(bytes, size,
                  [&](std::string_view text) { return setnamed(handle, name, textsetter(text)); });
}

int32_t optxv_get_integer_nr(optxv_handle handle, int32_t number, int32_t which, int32_t* value) {
  return getnumbered(handle, number, which, value, readinteger);
}
int32_t optxv_get_real_nr(optxv_handle handle, int32_t number, int32_t which, double* value) {
  return getnumbered(handle, number, which, value, readreal);
}
int32_t optxv_get_text_nr(optxv_handle handle, int32_t number, int32_t which, optxv_text* value) {
  return getnumbered(handle, number, which, value, readtext);
}

int32_t optxv_set_integer_nr(optxv_handle handle, int32_t number, int32_t which, int32_t value) {
  return setnumbered(handle, number, which, integersetter(value));
}
int32_t optxv_set_real_nr(optxv_handle handle, int32_t number, int32_t which, double value) {
  return setnumbered(handle, number, which, realsetter(value));
}
int32_t optxv_set_text_nr(optxv_handle handle, int32_t number, int32_t which, const char* bytes,
                          size_t size) {
  return withtext(bytes, size, [&](std::string_view text) {
    return setnumbered(handle, number, which, textsetter(text));
  });
}

int32_t optxv_show_value(optxv_handle handle, int32_t number, int32_t which, char* text) {
  return withobject(handle, [&](const tzmaoptions& options) -> std::int32_t {
    const toption* const option = options.getobjects(positionin(number, options.getcount()));
    if (option == nullptr) return optxv_unknown;
    if (text == nullptr) return optxv_bad_argument;
    const std::int32_t status = whichstatus(*option, which);
    if (status == optxv_ok)
      strpcopy(text, which == 2 ? option->getasstring2() : option->getasstring());
    return status;
  });
}

int32_t optxv_parse_value(optxv_handle handle, int32_t number, int32_t which, const char* bytes,
                          size_t size) {
  return withtext(bytes, size, [&](std::string_view text) {
    return changenumbered(handle, number,
                          [&](toption& option) { return parse(option, which, text); });
  });
}

int32_t optxv_reset(optxv_handle handle, int32_t number) {
  return withobject(handle, [&](tzmaoptions& options) -> std::int32_t {
    return options.optresetnr(number) == 1 ? optxv_ok : optxv_unknown;
  });
}

int32_t optxv_reset_all(optxv_handle handle) {
  return withobject(handle, [](tzmaoptions& options) -> std::int32_t {
    options.optresetall();
    return optxv_ok;
  });
}
