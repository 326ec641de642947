// Generated code in C++17: one header.

#include "code/languages.h"

namespace command {
namespace {

constexpr std::string_view skeleton = R"code(/* The options of $(source), made by: $(made)
 * Change the definition and make this anew: what is changed here is lost. */
#ifndef $(PREFIX)_OPTIONS_HPP
#define $(PREFIX)_OPTIONS_HPP

#include <optxv/embedding.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace $(prefix) {

/* The table of options that the numbers are of; see optxv_table_mark. */
inline constexpr std::uint64_t table_mark = 0x$(mark)U;

/* The numbers of the options. */
namespace number {
%each options
inline constexpr std::int32_t $(id) = $(number);
%end
}  // namespace number

/* The numbers that the definition gives them. */
namespace reference {
%each references
inline constexpr std::int32_t $(id) = $(reference);
%end
}  // namespace reference
%each enumerations

$(comment)
enum class $(id) : std::int32_t {
%each items
  $(comment)
  $(constant) = $(value)$(comma)
%end
};
/* Its items as the definition writes them. */
%if choice
inline const auto& items(::$(prefix)::$(id)) {
  static constexpr std::array<std::string_view, $(count)> all = {
%end
%if listed
inline const auto& items(::$(prefix)::$(id)) {
  static constexpr std::array<std::int32_t, $(count)> all = {
%end
%each items
      $(literal)$(comma)
%end
  };
  return all;
}
%end

/* The values of the options, with the defaults of the definition. */
struct options {
%each fields
  $(comment)
  $(declaration) = $(default);
%end
};

namespace detail {

/* Calls `each` with the number and the value of every option. */
template <class Each, class Values>
void visit([[maybe_unused]] Each& each, [[maybe_unused]] Values& values) {
%each fields
  each($(number), values.$(id));
%end
}

inline bool same(std::string_view item, const optxv_text& text) {
  const auto small = [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
  };
  std::size_t i = 0;
  while (i < item.size() && i < text.size && small(item[i]) == small(text.bytes[i])) i++;
  return i == item.size() && i == text.size;
}

/* What reads and what sets values have in common. The first failure is the status. */
class access {
 public:
  explicit access(optxv_handle handle) : handle_(handle) {}
  std::int32_t status() const { return status_; }

 protected:
  void note(std::int32_t next) {
    if (status_ == optxv_ok) status_ = next;
  }
  void get(std::int32_t number, std::int32_t which, std::int32_t& value) {
    note(optxv_get_integer_nr(handle_, number, which, &value));
  }
  void get(std::int32_t number, std::int32_t which, bool& value) {
    std::int32_t now = value ? 1 : 0;
    get(number, which, now);
    value = now != 0;
  }
  void get(std::int32_t number, std::int32_t which, double& value) {
    note(optxv_get_real_nr(handle_, number, which, &value));
  }
  void get(std::int32_t number, std::int32_t which, std::string& value) {
    optxv_text text = {};
    const std::int32_t got = optxv_get_text_nr(handle_, number, which, &text);
    note(got);
    if (got == optxv_ok) value = text.size > 0 ? std::string(text.bytes, text.size) : std::string();
  }
  template <class Item>
  std::enable_if_t<std::is_enum_v<Item>> get(std::int32_t number, std::int32_t which, Item& value) {
    note(find(number, which, items(value), value));
  }
  /* The item that an option is set to; optxv_refused, and no change, if it is none of them. */
  template <class Item, std::size_t count>
  std::int32_t find(std::int32_t number, std::int32_t which,
                    const std::array<std::string_view, count>& all, Item& value) {
    optxv_text text = {};
    const std::int32_t got = optxv_get_text_nr(handle_, number, which, &text);
    if (got != optxv_ok) return got;
    for (std::size_t i = 0; i < count; i++)
      if (same(all[i], text)) return value = static_cast<Item>(i), optxv_ok;
    return optxv_refused;
  }
  template <class Item, std::size_t count>
  std::int32_t find(std::int32_t number, std::int32_t which,
                    const std::array<std::int32_t, count>& all, Item& value) {
    std::int32_t now = 0;
    const std::int32_t got = optxv_get_integer_nr(handle_, number, which, &now);
    if (got != optxv_ok) return got;
    for (const std::int32_t each : all)
      if (each == now) return value = static_cast<Item>(now), optxv_ok;
    return optxv_refused;
  }
  std::vector<std::string> list(std::int32_t number) {
    std::vector<std::string> found;
    optxv_text item = {};
    for (std::int32_t i = 1; optxv_list_item(handle_, number, i, &item) == 1; i++)
      found.push_back(item.size > 0 ? std::string(item.bytes, item.size) : std::string());
    return found;
  }

  optxv_handle handle_;

 private:
  std::int32_t status_ = optxv_ok;
};

class reader : public access {
 public:
  using access::access;
  template <class Value>
  void operator()(std::int32_t number, Value& value) {
    get(number, 1, value);
  }
  template <class Value>
  void operator()(std::int32_t number, std::pair<Value, Value>& value) {
    get(number, 1, value.first);
    get(number, 2, value.second);
  }
  void operator()(std::int32_t number, std::vector<std::string>& value) { value = list(number); }
};

class writer : public access {
 public:
  using access::access;
  template <class Value>
  void operator()(std::int32_t number, const Value& value) {
    change(number, 1, value);
  }
  template <class Value>
  void operator()(std::int32_t number, const std::pair<Value, Value>& value) {
    change(number, 1, value.first);
    change(number, 2, value.second);
  }
  void operator()(std::int32_t number, const std::vector<std::string>& value) {
    if (list(number) == value) return;
    note(optxv_reset(handle_, number));
    for (const std::string& item : value)
      note(optxv_parse_value(handle_, number, 1, item.data(), item.size()));
  }

 private:
  template <class Value>
  void change(std::int32_t number, std::int32_t which, const Value& value) {
    Value now{};
    if constexpr (std::is_enum_v<Value>) {
      if (find(number, which, items(value), now) == optxv_ok && now == value) return;
      set(number, which, items(value), value);
    } else {
      get(number, which, now);
      if (!(now == value)) set(number, which, value);
    }
  }
  void set(std::int32_t number, std::int32_t which, std::int32_t value) {
    note(optxv_set_integer_nr(handle_, number, which, value));
  }
  void set(std::int32_t number, std::int32_t which, bool value) {
    note(optxv_set_integer_nr(handle_, number, which, value ? 1 : 0));
  }
  void set(std::int32_t number, std::int32_t which, double value) {
    note(optxv_set_real_nr(handle_, number, which, value));
  }
  void set(std::int32_t number, std::int32_t which, const std::string& value) {
    note(optxv_set_text_nr(handle_, number, which, value.data(), value.size()));
  }
  template <class Item, std::size_t count>
  void set(std::int32_t number, std::int32_t which,
           const std::array<std::string_view, count>& all, Item value) {
    const auto position = static_cast<std::size_t>(value);
    if (position >= count) return note(optxv_bad_argument);
    note(optxv_set_text_nr(handle_, number, which, all[position].data(), all[position].size()));
  }
  template <class Item, std::size_t count>
  void set(std::int32_t number, std::int32_t which, const std::array<std::int32_t, count>&,
           Item value) {
    set(number, which, static_cast<std::int32_t>(value));
  }
};

}  // namespace detail

/*
 * Fills the values from a handle. optxv_other_table for a handle of another definition: nothing is
 * filled then. optxv_refused where an option has a value that is none of its items, which is so
 * while bounds are off: that field has its default.
 */
[[nodiscard]] inline std::int32_t fill(options& values, optxv_handle handle) {
  if (optxv_table_mark(handle) != table_mark) return optxv_other_table;
  values = options();
  detail::reader each(handle);
  detail::visit(each, values);
  return each.status();
}

/*
 * Sets the options whose values differ from those of the handle. The first failure is the status;
 * the other options are set all the same. What was refused is in the queue of messages.
 */
[[nodiscard]] inline std::int32_t apply(const options& values, optxv_handle handle) {
  if (optxv_table_mark(handle) != table_mark) return optxv_other_table;
  detail::writer each(handle);
  detail::visit(each, values);
  return each.status();
}

/* Both for an object that has such a handle, as optxv::options. */
template <class Owner>
[[nodiscard]] auto fill(options& values, const Owner& owner) -> decltype(fill(values, owner.handle())) {
  return fill(values, owner.handle());
}
template <class Owner>
[[nodiscard]] auto apply(const options& values, const Owner& owner)
    -> decltype(apply(values, owner.handle())) {
  return apply(values, owner.handle());
}
%if embedded

/* Reads the definition that this was made from. Its text is here, so that no file is needed. */
[[nodiscard]] inline std::int32_t read_definition(optxv_handle handle) {
  static constexpr char text[] =
%each lines
      $(literal)
%end
      "";
  return optxv_read_definition_text(handle, $(file), text, sizeof(text) - 1);
}
%end

}  // namespace $(prefix)

#endif
)code";

}  // namespace

const language cpplanguage = {
    .name = "c++",
    .rules =
        {.keywords =
             " alignas alignof and and_eq asm auto bitand bitor bool break case catch char "
             "char8_t char16_t char32_t class compl concept const consteval constexpr constinit "
             "const_cast continue co_await co_return co_yield decltype default delete do double "
             "dynamic_cast else enum explicit export extern false float for friend goto if "
             "inline int long mutable namespace new noexcept not not_eq nullptr operator or "
             "or_eq private protected public register reinterpret_cast requires return short "
             "signed sizeof static static_assert static_cast struct switch template this "
             "thread_local throw true try typedef typeid typename union unsigned using virtual "
             "void volatile wchar_t while xor xor_eq errno stdin stdout stderr assert linux "
             "unix i386 major minor makedev offsetof NULL EOF "},
    .ownwords =
        "options number reference fill apply items table_mark read_definition detail optxv std",
    .scoped = true,
    .comment = {"/* ", "   ", " */", "*//*"},
    .textliteral = ctext,
    .realliteral = plainreal,
    .integerliteral = cinteger,
    .booleans = {"false", "true"},
    .declarations =
        {{{"std::int32_t $(id)", "std::pair<std::int32_t, std::int32_t> $(id)"},
          {"double $(id)", "std::pair<double, double> $(id)"},
          {"std::string $(id)", "std::pair<std::string, std::string> $(id)"},
          {"bool $(id)", "std::pair<bool, bool> $(id)"},
          {"::$(prefix)::$(id) $(id)", "std::pair<::$(prefix)::$(id), ::$(prefix)::$(id)> $(id)"},
          {"::$(prefix)::$(id) $(id)", "std::pair<::$(prefix)::$(id), ::$(prefix)::$(id)> $(id)"},
          {"std::vector<std::string> $(id)", ""}}},
    .constant = "$(item)",
    .itemvalue = "::$(prefix)::$(id)::$(constant)",
    .pairvalue = "{$(first), $(second)}",
    .parts = {".first", ".second"},
    .skeleton = skeleton};

}  // namespace command
