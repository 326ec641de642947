// optxv for programs in C++17: one set of options as an object that frees itself, values by type,
// and the table, the messages and the entries as ranges of plain structs. It is thin: everything
// goes through the functions of optxv/embedding.h, whose header says what each of them does.
//
//   #include <optxv/optxv.hpp>
//   #include <iostream>
//
//   int main(int argc, char** argv) try {
//     optxv::options options = optxv::options::from_file("solver.def");
//     options.read("solver.opt");
//     options.read_arguments(argc, argv);  // --time_limit=5
//     for (const optxv::message& each : options.messages()) std::cerr << each.shown << '\n';
//     if (options.faults().errors > 0) return 2;
//
//     solve(options.get<double>("time_limit"), options.get<std::string>("method"));
//   } catch (const optxv::error& failure) {  // the program and its definition do not fit
//     std::cerr << failure.what() << '\n';
//     return 2;
//   }
//
// Faults of the program throw optxv::error: a name that no option has, a value of another type, a
// definition with errors. Faults in what a user wrote throw nothing: they are messages, and a
// read_result says how many. std::bad_alloc is thrown where memory ran out; a read that it cut
// short has kept what it read.
//
// Options, messages and all other positions that the library counts are numbered from 1; so are the
// lines and columns of a place. A sequence of this header counts from 0, as C++ does.
//
// Text: a std::string is the caller's own. A std::string_view is not zero-terminated and belongs to
// the options: those of the table (names, help, items, groups) and the file names of places are
// good as long as the options are, values as long as each function says. Text is bytes, which the
// library takes to be in no encoding.
//
// Different objects are free of each other; one object, and what it gave, is for one thread at a
// time.
#ifndef OPTXV_OPTXV_HPP
#define OPTXV_OPTXV_HPP

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "optxv/embedding.h"

namespace optxv {

/// What is wrong with a program's call. what() is for the author of the program: it names the
/// option, or holds the messages of the library, one per line.
class error : public std::runtime_error {
 public:
  error(std::int32_t status, const std::string& text) : std::runtime_error(text), status_(status) {}
  /// A status of optxv/embedding.h: optxv_unknown, ..., or an error number of the system.
  std::int32_t status() const noexcept { return status_; }

 private:
  std::int32_t status_;
};

/// What came of a read of something that a user wrote, or of all the messages so far.
struct read_result {
  std::int32_t status = 0;    ///< 0, or why a file could not be read, as in optxv/embedding.h
  std::int32_t errors = 0;    ///< messages of errors, without those that add detail to one
  std::int32_t warnings = 0;  ///< likewise of warnings
  /// True if all of it could be read, without an error; there may be warnings.
  explicit operator bool() const noexcept { return status == 0 && errors == 0; }
};

/// A place in a text: see PLACES in optxv/embedding.h. False if there is none.
struct place {
  std::string_view file;
  std::int64_t line = 0, column = 0, length = 0;
  explicit operator bool() const noexcept { return line > 0; }
};

/// A message. Its texts are its own.
struct message {
  std::int32_t number = 0;
  std::int32_t kind = 0;    ///< optxv_said_...
  std::int32_t fault = 0;   ///< optxv_fault_...
  std::int32_t option = 0;  ///< the number of the option that it is about, or 0
  std::int32_t field = 0;   ///< in a definition: optxv_field_...
  bool detail = false;      ///< it adds to the message before it
  std::string shown;        ///< as a user sees it
  std::string text;         ///< without the words for its kind and the number of its line
  std::string about, seen;  ///< the name it is about, and what was found; may be empty
  optxv::place place;
};

/// An option of the table. Bounds are those of a number; an integer and a Boolean have their
/// default as a real does, in `default_value`, and a text in `default_text`.
struct option {
  std::int32_t number = 0;
  std::int32_t kind = 0;          ///< optxv_kind_...
  std::int32_t takes = 0;         ///< optxv_takes_...
  std::int32_t data = 0;          ///< optxv_data_...
  std::int32_t reference = 0;     ///< the program's own number
  std::int32_t group = 0;         ///< as the definition numbers it
  std::int32_t help_context = 0;  ///< below 0 for an option that help does not list
  std::int32_t marks = 0;         ///< optxv_mark_...
  std::int32_t defined = 0;       ///< which values are set: 1 the first, 2 the second, 3 both
  std::int32_t recent = 0;        ///< likewise, which were set recently
  std::int32_t items = 0, help_lines = 0;  ///< how many there are
  bool runtime = false;                    ///< a list that parameter text has made
  double low = 0, high = 0, default_value = 0;
  std::string_view default_text, name, help, marked_text;
};

/// An allowed value of an enumeration, an item of a list, a member of a macro or a multi-list.
struct item {
  std::int32_t integer = 0;  ///< the value of an enumerated integer
  std::int32_t option = 0;   ///< the option of a member; 0 if the table does not have it
  std::int32_t help_context = 0;
  std::string_view text;  ///< the value as text, or the name of a member's option
  std::string_view help;
};

/// A group of the table. Two may have the same number.
struct group {
  std::int32_t number = 0;
  std::int32_t help_context = 0;
  std::string_view name, help;
};

/// Another name of an option; `option` is 0 if the table does not have it.
struct synonym {
  std::int32_t option = 0;
  std::int32_t marks = 0;  ///< optxv_mark_...
  std::string_view name, marked_text;
};

/// A dot option, x.scale('a',*) = 2.5: the symbol, the option of its attribute, labels and value.
struct dot_option {
  std::int32_t option = 0;
  double value = 0;
  std::string symbol;
  std::vector<std::string> labels;  ///< without quotes, or `*`
};

/// An indicator, indic eq('a')$x('a') = 1.
struct indicator {
  std::int32_t mark = 0;
  std::string equation, variable;
  std::vector<std::string> equation_labels, variable_labels;  ///< quoted ones keep their quotes
};

/// Where an option has its value from.
struct origin {
  optxv::place place;        ///< none for a value that the program set
  std::int32_t road = 0;     ///< optxv_road_...; optxv_road_none if the option is not set
  std::int32_t through = 0;  ///< the macro or multi-list that handed the value on, or 0
};

/// An option by its number or by its name; synonyms count. To be written as an argument: 7 or
/// "time_limit". BORROWS: the name.
class key {
 public:
  constexpr key(std::int32_t number) noexcept : number_(number) {}
  constexpr key(std::string_view name) noexcept : name_(name), named_(true) {}
  constexpr key(const char* name) noexcept : key(std::string_view(name)) {}
  key(const std::string& name) noexcept : key(std::string_view(name)) {}

  constexpr bool named() const noexcept { return named_; }
  constexpr std::int32_t number() const noexcept { return number_; }
  constexpr std::string_view name() const noexcept { return name_; }

 private:
  std::string_view name_;
  std::int32_t number_ = 0;
  bool named_ = false;
};

/// What the library counts, as a range: begin() to end(), or by index from 0. An element is made
/// when it is asked for, and is the caller's. It is as long as it was when it was given: to ask for
/// one that has gone meanwhile throws error. BORROWS: the options, which may be moved meanwhile.
template <class Element>
class sequence {
 public:
  using maker = Element (*)(optxv_handle handle, std::int32_t of, std::int32_t position);

  class iterator {
   public:
    using iterator_concept = std::forward_iterator_tag;
    using iterator_category = std::input_iterator_tag;  // of C++17, which wants a reference
    using value_type = Element;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = Element;

    iterator() = default;
    iterator(const sequence& all, std::size_t index) : all_(all), index_(index) {}
    Element operator*() const { return all_[index_]; }
    iterator& operator++() {
      ++index_;
      return *this;
    }
    iterator operator++(int) { return iterator(all_, index_++); }
    friend bool operator==(const iterator& left, const iterator& right) noexcept {
      return left.index_ == right.index_;
    }
    friend bool operator!=(const iterator& left, const iterator& right) noexcept {
      return left.index_ != right.index_;
    }

   private:
    sequence all_;
    std::size_t index_ = 0;
  };
  using const_iterator = iterator;
  using value_type = Element;

  sequence() = default;
  /// `of` is handed to the maker: the option whose items these are.
  sequence(optxv_handle handle, maker make, std::int32_t size, std::int32_t of = 0) noexcept
      : handle_(handle), make_(make), size_(size), of_(of) {}

  std::size_t size() const noexcept { return static_cast<std::size_t>(size_); }
  bool empty() const noexcept { return size_ == 0; }
  iterator begin() const { return iterator(*this, 0); }
  iterator end() const { return iterator(*this, size()); }
  /// REQUIRES: an index below size().
  Element operator[](std::size_t index) const {
    return make_(handle_, of_, static_cast<std::int32_t>(index) + 1);
  }

 private:
  optxv_handle handle_ = nullptr;
  maker make_ = nullptr;
  std::int32_t size_ = 0, of_ = 0;
};

/// What is inside; not for programs.
namespace detail {

inline std::string_view view(const optxv_text& text) noexcept {
  return text.size == 0 ? std::string_view() : std::string_view(text.bytes, text.size);
}
inline std::string owned(const optxv_text& text) {
  return std::string(view(text));
}
inline optxv::place placed(const optxv_place& at) {
  return {at.file == nullptr ? std::string_view() : at.file, at.line, at.column, at.length};
}

[[noreturn]] inline void fail(std::int32_t status, const std::string& about) {
  if (status == ENOMEM) throw std::bad_alloc();
  throw error(status, about + ": " + optxv_status_text(status));
}
inline void demand(std::int32_t status, const char* about) {
  if (status != 0) fail(status, about);
}

// --- Elements of sequences

inline bool iserror(std::int32_t kind) noexcept {
  return kind == optxv_said_definition_error || kind == optxv_said_value_error ||
         kind == optxv_said_queue_full || kind == optxv_said_error;
}
inline bool iswarning(std::int32_t kind) noexcept {
  return kind == optxv_said_value_warning || kind == optxv_said_deprecated;
}

inline optxv_message messageinfo(optxv_handle handle, std::int32_t number) {
  optxv_message info;
  demand(optxv_message_info(handle, number, &info), "message");
  return info;
}
inline std::string shownmessage(optxv_handle handle, std::int32_t number) {
  char text[256];
  demand(optxv_show_message(handle, number, text), "message");
  return text;
}
inline message makemessage(optxv_handle handle, std::int32_t, std::int32_t number) {
  const optxv_message info = messageinfo(handle, number);
  message made;
  made.number = number;
  made.kind = info.kind;
  made.fault = info.fault;
  made.option = info.option;
  made.field = info.field;
  made.detail = info.detail != 0;
  made.text = owned(info.text);
  made.about = owned(info.about);
  made.seen = owned(info.seen);
  made.place = placed(info.place);
  made.shown = shownmessage(handle, number);
  return made;
}

inline option makeoption(optxv_handle handle, std::int32_t, std::int32_t number) {
  optxv_option info;
  demand(optxv_option_info(handle, number, &info), "option");
  option made;
  made.number = number;
  made.kind = info.kind;
  made.takes = info.takes;
  made.data = info.data;
  made.reference = info.reference;
  made.group = info.group;
  made.help_context = info.helpcontext;
  made.marks = info.marks;
  made.defined = info.defined;
  made.recent = info.recent;
  made.items = info.items;
  made.help_lines = info.helplines;
  made.runtime = info.runtime != 0;
  const bool real = info.data == optxv_data_real;
  made.low = real ? info.low_real : info.low_integer;
  made.high = real ? info.high_real : info.high_integer;
  made.default_value = real ? info.default_real : info.default_integer;
  made.default_text = view(info.default_text);
  made.name = view(info.name);
  made.help = view(info.help);
  made.marked_text = view(info.markedtext);
  return made;
}

inline item makeitem(optxv_handle handle, std::int32_t number, std::int32_t position) {
  optxv_item info;
  demand(optxv_item_info(handle, number, position, &info), "item");
  return {info.integer, info.option, info.helpcontext, view(info.text), view(info.help)};
}
inline std::string_view makehelpline(optxv_handle handle, std::int32_t number,
                                     std::int32_t position) {
  optxv_text line;
  demand(optxv_help_line(handle, number, position, &line), "line of help");
  return view(line);
}
inline std::string_view makelistitem(optxv_handle handle, std::int32_t number,
                                     std::int32_t position) {
  optxv_text text;
  if (optxv_list_item(handle, number, position, &text) != 1) fail(optxv_unknown, "item");
  return view(text);
}

inline group makegroup(optxv_handle handle, std::int32_t, std::int32_t position) {
  optxv_group info;
  demand(optxv_group_info(handle, position, &info), "group");
  return {info.number, info.helpcontext, view(info.name), view(info.help)};
}
inline synonym makesynonym(optxv_handle handle, std::int32_t, std::int32_t position) {
  optxv_synonym info;
  demand(optxv_synonym_info(handle, position, &info), "synonym");
  return {info.option, info.marks, view(info.name), view(info.markedtext)};
}

inline dot_option makedotoption(optxv_handle handle, std::int32_t, std::int32_t position) {
  optxv_dot_option info;
  demand(optxv_dot_option_info(handle, position, &info), "dot option");
  dot_option made = {info.option, info.value, owned(info.symbol), {}};
  for (std::int32_t i = 1; i <= info.labels; i++) {
    optxv_text label;
    demand(optxv_dot_option_label(handle, position, i, &label), "label");
    made.labels.push_back(owned(label));
  }
  return made;
}

inline std::vector<std::string> indicatorlabels(optxv_handle handle, std::int32_t position,
                                                std::int32_t side, std::int32_t count) {
  std::vector<std::string> labels;
  for (std::int32_t i = 1; i <= count; i++) {
    optxv_text label;
    demand(optxv_indicator_label(handle, position, side, i, &label), "label");
    labels.push_back(owned(label));
  }
  return labels;
}
inline indicator makeindicator(optxv_handle handle, std::int32_t, std::int32_t position) {
  optxv_indicator info;
  demand(optxv_indicator_info(handle, position, &info), "indicator");
  indicator made = {info.mark, owned(info.equation), owned(info.variable), {}, {}};
  made.equation_labels = indicatorlabels(handle, position, 1, info.equation_labels);
  made.variable_labels = indicatorlabels(handle, position, 2, info.variable_labels);
  return made;
}

// --- Values: for each type of C++ how it is got and set. The results are statuses.

/// The types that one value has. `which` is 1 or 2.
template <class Type, class = void>
struct scalar {
  static constexpr bool known = false;
};

template <>
struct scalar<std::int32_t> {
  static constexpr bool known = true;
  static std::int32_t get(optxv_handle handle, std::int32_t number, std::int32_t which,
                          std::int32_t& value) noexcept {
    return optxv_get_integer_nr(handle, number, which, &value);
  }
  static std::int32_t set(optxv_handle handle, std::int32_t number, std::int32_t which,
                          std::int32_t value) noexcept {
    return optxv_set_integer_nr(handle, number, which, value);
  }
};

template <>
struct scalar<double> {
  static constexpr bool known = true;
  static std::int32_t get(optxv_handle handle, std::int32_t number, std::int32_t which,
                          double& value) noexcept {
    return optxv_get_real_nr(handle, number, which, &value);
  }
  static std::int32_t set(optxv_handle handle, std::int32_t number, std::int32_t which,
                          double value) noexcept {
    return optxv_set_real_nr(handle, number, which, value);
  }
};

/// bool and enumerations.
template <class Type>
struct scalar<Type, std::enable_if_t<std::is_enum_v<Type> || std::is_same_v<Type, bool>>> {
  static constexpr bool known = true;
  static std::int32_t get(optxv_handle handle, std::int32_t number, std::int32_t which,
                          Type& value) noexcept {
    std::int32_t integer = 0;
    const std::int32_t status = optxv_get_integer_nr(handle, number, which, &integer);
    if (status == 0) value = static_cast<Type>(integer);
    return status;
  }
  static std::int32_t set(optxv_handle handle, std::int32_t number, std::int32_t which,
                          Type value) noexcept {
    return optxv_set_integer_nr(handle, number, which, static_cast<std::int32_t>(value));
  }
};

/// std::string and std::string_view.
template <class Type>
struct scalar<Type, std::enable_if_t<std::is_same_v<Type, std::string> ||
                                     std::is_same_v<Type, std::string_view>>> {
  static constexpr bool known = true;
  static std::int32_t get(optxv_handle handle, std::int32_t number, std::int32_t which,
                          Type& value) {
    optxv_text text;
    const std::int32_t status = optxv_get_text_nr(handle, number, which, &text);
    if (status == 0) value = view(text);
    return status;
  }
  static std::int32_t set(optxv_handle handle, std::int32_t number, std::int32_t which,
                          std::string_view value) noexcept {
    return optxv_set_text_nr(handle, number, which, value.data(), value.size());
  }
};

/// What an option has: one value.
template <class Type>
struct content {
  static constexpr bool known = scalar<Type>::known;
  static std::int32_t get(optxv_handle handle, std::int32_t number, Type& value) {
    return scalar<Type>::get(handle, number, 1, value);
  }
  static std::int32_t set(optxv_handle handle, std::int32_t number, const Type& value) {
    return scalar<Type>::set(handle, number, 1, value);
  }
};

/// Two values. The second is set first: that fails, with nothing set, if the option has only one.
template <class First, class Second>
struct content<std::pair<First, Second>> {
  static constexpr bool known = scalar<First>::known && scalar<Second>::known;
  static std::int32_t get(optxv_handle handle, std::int32_t number,
                          std::pair<First, Second>& value) {
    const std::int32_t status = scalar<First>::get(handle, number, 1, value.first);
    return status != 0 ? status : scalar<Second>::get(handle, number, 2, value.second);
  }
  static std::int32_t set(optxv_handle handle, std::int32_t number,
                          const std::pair<First, Second>& value) {
    const std::int32_t status = scalar<Second>::set(handle, number, 2, value.second);
    return status != 0 ? status : scalar<First>::set(handle, number, 1, value.first);
  }
};

/// The status that a list has for who asks for its items, and their number.
inline std::int32_t listsize(optxv_handle handle, std::int32_t number,
                             std::int32_t& size) noexcept {
  size = optxv_list_count(handle, number);
  if (size >= 0) return 0;
  return number < 1 || number > optxv_option_count(handle) ? optxv_unknown : optxv_wrong_kind;
}

/// A list of texts.
template <class Text>
struct content<std::vector<Text>> {
  static constexpr bool known =
      std::is_same_v<Text, std::string> || std::is_same_v<Text, std::string_view>;
  static std::int32_t get(optxv_handle handle, std::int32_t number, std::vector<Text>& value) {
    std::int32_t size = 0;
    const std::int32_t status = listsize(handle, number, size);
    for (std::int32_t i = 1; i <= size; i++) value.emplace_back(makelistitem(handle, number, i));
    return status;
  }
  static std::int32_t set(optxv_handle handle, std::int32_t number,
                          const std::vector<Text>& value) {
    std::vector<std::string> before;
    std::int32_t status = content<std::vector<std::string>>::get(handle, number, before);
    if (status != 0) return status;
    status = replace(handle, number, value);
    if (status != 0) replace(handle, number, before);
    return status;
  }

 private:
  template <class Texts>
  static std::int32_t replace(optxv_handle handle, std::int32_t number, const Texts& by) {
    std::int32_t status = optxv_reset(handle, number);
    for (const std::string_view each : by)
      if (status == 0) status = optxv_parse_value(handle, number, 1, each.data(), each.size());
    return status;
  }
};

/// Any of these, or nothing where the option is not set.
template <class Type>
struct content<std::optional<Type>> {
  static constexpr bool known = content<Type>::known;
  static std::int32_t get(optxv_handle handle, std::int32_t number, std::optional<Type>& value) {
    Type found{};
    optxv_place place;
    const std::int32_t status = content<Type>::get(handle, number, found);
    if (status == 0 && optxv_value_place(handle, number, &place, nullptr, nullptr) == 1)
      value = std::move(found);
    return status;
  }
  static std::int32_t set(optxv_handle handle, std::int32_t number,
                          const std::optional<Type>& value) {
    return value ? content<Type>::set(handle, number, *value) : optxv_reset(handle, number);
  }
};

/// The type by which a value of this type is set: smaller numbers and what is a text go by the
/// types above.
template <class Type>
struct settable {
  static constexpr bool text = std::is_convertible_v<const Type&, std::string_view>;
  static constexpr bool integer = std::is_integral_v<Type> && !std::is_same_v<Type, bool> &&
                                  !std::is_same_v<Type, char> &&
                                  sizeof(Type) < sizeof(std::int32_t);
  using number = std::conditional_t<integer, std::int32_t, Type>;
  using real = std::conditional_t<std::is_same_v<Type, float>, double, number>;
  using type = std::conditional_t<text, std::string_view, real>;
};

/// Keeps a written text. Memory that runs out becomes a status: nothing may be thrown through C.
inline std::int32_t taketext(void* into, const char* bytes, std::size_t size) noexcept {
  try {
    static_cast<std::string*>(into)->assign(bytes, size);
    return 0;
  } catch (...) {
    return ENOMEM;
  }
}

}  // namespace detail

/// All values of an options object as they were; see options::take_snapshot. Move-only. OWNS: its
/// memory, which may outlive the options.
class snapshot {
 public:
  explicit snapshot(optxv_snapshot* taken) noexcept : taken_(taken) {}
  ~snapshot() { optxv_free_snapshot(&taken_); }
  snapshot(snapshot&& from) noexcept : taken_(std::exchange(from.taken_, nullptr)) {}
  snapshot& operator=(snapshot&& from) noexcept {
    std::swap(taken_, from.taken_);
    return *this;
  }
  const optxv_snapshot* get() const noexcept { return taken_; }

 private:
  optxv_snapshot* taken_;
};

/// One set of options: a table, which a definition makes, its values and its messages. Move-only;
/// one that was moved from may be destroyed or assigned to. OWNS: the handle.
class options {
 public:
  /// An empty one, for read_definition or read_definition_text.
  options() { detail::demand(optxv_create(&handle_), "options"); }
  ~options() { optxv_free(&handle_); }
  options(options&& from) noexcept : handle_(from.release()) {}
  options& operator=(options&& from) noexcept {
    std::swap(handle_, from.handle_);
    return *this;
  }

  /// With the table of a definition. Throws error with the messages if there is an error in it, or
  /// it cannot be read. Warnings are left in the queue.
  static options from_file(const std::string& definition) {
    options made;
    made.demand_good(made.read_definition(definition), definition);
    return made;
  }
  /// From the definition itself; messages name it `name`.
  static options from_text(std::string_view definition, const std::string& name = "definition") {
    options made;
    made.demand_good(made.read_definition_text(name, definition), name);
    return made;
  }

  /// The handle, for the functions of optxv/embedding.h and for generated ones. BORROWS: this
  /// object's.
  optxv_handle handle() const noexcept { return handle_; }
  /// Gives the handle up: the caller frees it.
  optxv_handle release() noexcept { return std::exchange(handle_, nullptr); }
  /// Takes over a handle, of optxv_create or xcreate. OWNS: the result.
  static options adopt(optxv_handle handle) noexcept { return options(handle); }

  // --- Reading. Every result says what was found in this read alone; the messages stay in the
  // queue. The name of a file is 255 bytes at most; the empty name stands for standard input.

  /// A definition, of which the program itself wants to tell the faults.
  read_result read_definition(const std::string& file) {
    return counted([&] { return optxv_read_definition(handle_, file.c_str()); });
  }
  read_result read_definition_text(const std::string& name, std::string_view text) {
    return counted([&] {
      return optxv_read_definition_text(handle_, name.c_str(), text.data(), text.size());
    });
  }
  /// A file of parameter text.
  read_result read(const std::string& file) {
    return counted([&] { return optxv_read_parameters(handle_, file.c_str()); });
  }
  /// The same from memory, as a file of that name.
  read_result read_text(const std::string& name, std::string_view text) {
    return counted(
        [&] { return optxv_read_parameter_text(handle_, name.c_str(), text.data(), text.size()); });
  }
  /// One line of parameter text.
  read_result read_line(std::string_view line) {
    return counted([&] { return optxv_read_line(handle_, line.data(), line.size()); });
  }
  /// The options among the arguments of main, --name=value or --name value, which leave `argv`.
  /// With `keep_unknown`, arguments whose name no option has stay there without a message.
  read_result read_arguments(int& argc, char** argv, bool keep_unknown = false) {
    const std::uint32_t flags = keep_unknown ? std::uint32_t{optxv_arguments_keep_unknown} : 0;
    return counted([&] { return optxv_read_arguments(handle_, &argc, argv, flags); });
  }
  /// The variables of the environment that begin with `prefix`, such as SOLVER_.
  read_result read_environment(const std::string& prefix) {
    return counted([&] { return optxv_read_environment(handle_, prefix.c_str()); });
  }
  /// Sets a switch, optxv_switch_..., and gives what it was.
  bool set_switch(std::int32_t which, bool on) {
    const std::int32_t was = optxv_switch(handle_, which, on ? 1 : 0);
    if (was < 0) detail::fail(was, "switch");
    return was == 1;
  }

  // --- Values

  /// The value of an option, its default if it is not set. The type is
  ///
  ///   std::int32_t, bool, an enumeration   of an integer, a Boolean, an enumerated integer
  ///   double                               of a real and of all of these
  ///   std::string, std::string_view        of a text or an enumerated text; the view is good until
  ///                                        something is set, read or reset
  ///   std::pair<T, T> of these             of an option with two values
  ///   std::vector<std::string>, also of    of a list of texts; see list() for one without a copy
  ///   std::string_view
  ///   std::optional<T> of all of these     nothing if the option is not set; of an option with two
  ///                                        values, if neither is
  ///
  /// Throws error: optxv_unknown, which names the nearest, or optxv_wrong_kind.
  template <class Type>
  Type get(key which) const {
    static_assert(detail::content<Type>::known, "options::get has no value of this type");
    const std::int32_t number = number_of(which);
    Type value{};
    const std::int32_t status = detail::content<Type>::get(handle_, number, value);
    if (status != 0) fail(status, which);
    return value;
  }

  /// The first or the second value alone, `position` 1 or 2; the type is one of those of one value.
  /// Throws error as above; optxv_wrong_kind for the second value of an option that has one.
  template <class Type>
  Type get(key which, std::int32_t position) const {
    static_assert(detail::scalar<Type>::known, "options::get has no single value of this type");
    const std::int32_t number = number_of(which);
    Type value{};
    const std::int32_t status = detail::scalar<Type>::get(handle_, number, position, value);
    if (status != 0) fail(status, which);
    return value;
  }

  /// Sets an option, by a value of a type that get() has, or an integer or text that fits one. A
  /// real takes an integer, and an integer a real that is whole. A text is taken as it is, quotes
  /// included, but an item of a list must have no double quote. A list is replaced. An empty
  /// std::optional unsets the option. A value that is taken with a warning throws nothing. For a
  /// value that a user wrote see parse().
  ///
  /// Throws error: optxv_unknown, optxv_wrong_kind, optxv_too_long for a text of 255 bytes or more,
  /// or optxv_refused with the messages, which stay in the queue, for a value that the option does
  /// not take. The option is then as it was, but of two values the second may be set.
  template <class Type>
  void set(key which, const Type& value) {
    using kept = typename detail::settable<Type>::type;
    static_assert(detail::content<kept>::known, "options::set takes no value of this type");
    const std::int32_t number = number_of(which);
    const std::int32_t before = optxv_message_count(handle_);
    const std::int32_t status =
        detail::content<kept>::set(handle_, number, static_cast<kept>(value));
    if (status == optxv_refused) refuse(which, before);
    if (status != 0) fail(status, which);
  }

  /// Sets any option from a text, as the value in parameter text would: "yes", 1e-3, an item to add
  /// to a list. `position` is 1 or 2, for the first or the second value. What is wrong with the
  /// text is told by the result and by messages. Throws error: optxv_unknown, optxv_wrong_kind.
  read_result parse(key which, std::string_view text, std::int32_t position = 1) {
    const std::int32_t number = number_of(which);
    read_result result = counted(
        [&] { return optxv_parse_value(handle_, number, position, text.data(), text.size()); });
    if (result.status == optxv_unknown || result.status == optxv_wrong_kind)
      fail(result.status, which);
    return result;
  }
  /// The value of any option as text; empty for a kind without a value of its own. `position` is 1
  /// or
  /// 2. Throws error as get() does.
  std::string shown(key which, std::int32_t position = 1) const {
    char text[256];
    const std::int32_t status = optxv_show_value(handle_, number_of(which), position, text);
    if (status != 0) fail(status, which);
    return text;
  }
  /// The items of a list of texts, good until the list changes. Throws error: optxv_unknown,
  /// optxv_wrong_kind.
  sequence<std::string_view> list(key which) const {
    const std::int32_t number = number_of(which);
    std::int32_t size = 0;
    const std::int32_t status = detail::listsize(handle_, number, size);
    if (status != 0) fail(status, which);
    return {handle_, detail::makelistitem, size, number};
  }

  /// Whether it has a value that is not its default's; a list, whether it has an item. Throws
  /// error: optxv_unknown.
  bool is_set(key which) const { return where(which).road != optxv_road_none; }
  /// Where its value is from. Throws error: optxv_unknown.
  origin where(key which) const {
    origin found;
    optxv_place at = {};
    optxv_value_place(handle_, checked(which), &at, &found.road, &found.through);
    found.place = detail::placed(at);
    return found;
  }

  /// Unsets an option. Throws error: optxv_unknown.
  void reset(key which) {
    const std::int32_t status = optxv_reset(handle_, number_of(which));
    if (status != 0) fail(status, which);
  }
  /// Unsets all, and empties the queue, the dot options and the indicators.
  void reset_all() { detail::demand(optxv_reset_all(handle_), "reset"); }

  /// All values as they are now, with what is set and where from; for restore().
  snapshot take_snapshot() const {
    optxv_snapshot* taken = nullptr;
    detail::demand(optxv_take_snapshot(handle_, &taken), "snapshot");
    return snapshot(taken);
  }
  /// Goes back to a snapshot, any number of times, without a read and without a message. Throws
  /// error: optxv_other_table if it was taken of other options.
  void restore(const snapshot& to) {
    detail::demand(optxv_restore_snapshot(handle_, to.get()), "snapshot");
  }

  // --- Writing what is set, as parameter text

  /// To a file, of which a reader sees the old content or the new one. The empty name stands for
  /// standard output. Throws error with the system's number; a regular file is then as it was.
  void write(const std::string& file) const {
    detail::demand(optxv_write_parameters(handle_, file.c_str()), file.c_str());
  }
  std::string to_text() const {
    std::string text;
    detail::demand(optxv_write_parameter_text(handle_, detail::taketext, &text), "text");
    return text;
  }

  // --- The table

  /// The number of the option of that name or synonym, if there is one.
  std::optional<std::int32_t> find(std::string_view name) const {
    std::int32_t number = 0;
    if (optxv_find(handle_, name.data(), name.size(), &number) != 0) return std::nullopt;
    return number;
  }
  /// The names, at most three, that are nearest to one that no option has, the nearest first; none
  /// where memory ran out.
  std::vector<std::string_view> nearest(std::string_view name) const {
    optxv_text names[3];
    const std::int32_t count = optxv_nearest_names(handle_, name.data(), name.size(), names);
    return views(names, count);
  }

  /// All options, in the order of the table; the first is Help.
  sequence<option> table() const {
    return {handle_, detail::makeoption, optxv_option_count(handle_)};
  }
  /// One of them. Throws error: optxv_unknown.
  option describe(key which) const { return detail::makeoption(handle_, 0, checked(which)); }
  /// The allowed values of an enumeration, the items of a list, the members of a macro or a
  /// multi-list; none of another option. Throws error: optxv_unknown.
  sequence<item> items(key which) const {
    const option found = describe(which);
    return {handle_, detail::makeitem, found.items, found.number};
  }
  /// The lines of its long help. Throws error: optxv_unknown.
  sequence<std::string_view> help_lines(key which) const {
    const option found = describe(which);
    return {handle_, detail::makehelpline, found.help_lines, found.number};
  }
  sequence<group> groups() const {
    return {handle_, detail::makegroup, optxv_group_count(handle_)};
  }
  sequence<synonym> synonyms() const {
    return {handle_, detail::makesynonym, optxv_synonym_count(handle_)};
  }
  /// A number that stands for the table: see optxv_table_mark.
  std::uint64_t table_mark() const { return optxv_table_mark(handle_); }

  /// The dot options and the indicators that were read, and how many were dropped for faults.
  sequence<dot_option> dot_options() const {
    return {handle_, detail::makedotoption, optxv_dot_option_count(handle_, nullptr)};
  }
  sequence<indicator> indicators() const {
    return {handle_, detail::makeindicator, optxv_indicator_count(handle_, nullptr)};
  }
  std::int32_t dropped_dot_options() const {
    std::int32_t dropped = 0;
    optxv_dot_option_count(handle_, &dropped);
    return dropped;
  }
  std::int32_t dropped_indicators() const {
    std::int32_t dropped = 0;
    optxv_indicator_count(handle_, &dropped);
    return dropped;
  }

  // --- Messages

  /// The queue, in its order. It takes 5,000 messages, and then one that says that it is full.
  sequence<message> messages() const {
    return {handle_, detail::makemessage, optxv_message_count(handle_)};
  }
  /// The errors and warnings in the queue. The status is 0.
  read_result faults() const { return faults_after(0); }
  /// Names or values that may have been meant by who got the message: at most three, the nearest
  /// first; none for a message that is of no such kind.
  std::vector<std::string_view> nearest(const message& about) const {
    optxv_text names[3];
    const std::int32_t count = optxv_message_nearest(handle_, about.number, names);
    return views(names, count);
  }
  /// Adds a message, an error of the program's own.
  void add_message(std::string_view text) {
    detail::demand(optxv_add_message(handle_, text.data(), text.size()), "message");
  }
  void clear_messages() noexcept { optxv_clear_messages(handle_); }
  /// Adds the lines of help that a request names, such as an option's name, to the messages.
  void show_help(const std::string& request) {
    detail::demand(optxv_show_help(handle_, request.c_str()), "help");
  }

 private:
  explicit options(optxv_handle handle) noexcept : handle_(handle) {}

  static std::vector<std::string_view> views(const optxv_text* texts, std::int32_t count) {
    std::vector<std::string_view> all;
    for (std::int32_t i = 0; i < count; i++) all.push_back(detail::view(texts[i]));
    return all;
  }

  std::int32_t number_of(const key& which) const {
    if (!which.named()) return which.number();
    std::int32_t number = 0;
    const std::int32_t status =
        optxv_find(handle_, which.name().data(), which.name().size(), &number);
    if (status != 0) fail(status, which);
    return number;
  }
  /// As number_of, but a number is looked at, too.
  std::int32_t checked(const key& which) const {
    const std::int32_t number = number_of(which);
    if (number < 1 || number > optxv_option_count(handle_)) fail(optxv_unknown, which);
    return number;
  }

  /// REQUIRES: a status that is not 0.
  [[noreturn]] void fail(std::int32_t status, const key& which) const {
    std::string about = "option ";
    if (which.named())
      about.append("\"").append(which.name()).append("\"");
    else
      about += std::to_string(which.number());
    if (status != optxv_unknown) detail::fail(status, about);
    throw error(status, "there is no " + about + (which.named() ? near(which.name()) : ""));
  }
  std::string near(std::string_view name) const {
    std::string text;
    for (const std::string_view each : nearest(name))
      text.append(text.empty() ? "; near is \"" : ", \"").append(each).append("\"");
    return text;
  }

  /// What is in the queue after the first `before` messages. If it is full, there is at least one
  /// error: it cannot be known that there is none.
  read_result faults_after(std::int32_t before) const {
    read_result found;
    const std::int32_t count = optxv_message_count(handle_);
    for (std::int32_t i = before + 1; i <= count; i++) {
      const optxv_message info = detail::messageinfo(handle_, i);
      if (info.detail == 0 && detail::iserror(info.kind)) found.errors++;
      if (info.detail == 0 && detail::iswarning(info.kind)) found.warnings++;
    }
    if (found.errors == 0 && count > 0 && count == before &&
        detail::messageinfo(handle_, count).kind == optxv_said_queue_full)
      found.errors = 1;
    return found;
  }
  template <class Call>
  read_result counted(Call call) {
    const std::int32_t before = optxv_message_count(handle_);
    const std::int32_t status = call();
    if (status == ENOMEM) throw std::bad_alloc();
    read_result found = faults_after(before);
    found.status = status;
    return found;
  }

  /// The errors after the first `before` messages, as a user sees them, one per line.
  std::string errors_after(std::int32_t before) const {
    std::string text;
    for (std::int32_t i = before + 1; i <= optxv_message_count(handle_); i++)
      if (detail::iserror(detail::messageinfo(handle_, i).kind))
        text.append(text.empty() ? "" : "\n").append(detail::shownmessage(handle_, i));
    return text;
  }
  [[noreturn]] void refuse(const key& which, std::int32_t before) const {
    const std::string text = errors_after(before);
    if (text.empty()) fail(optxv_refused, which);  // the queue is full
    throw error(optxv_refused, text);
  }
  void demand_good(const read_result& result, const std::string& definition) const {
    if (result) return;
    const std::int32_t status = result.status != 0 ? result.status : std::int32_t{optxv_refused};
    const std::string text = errors_after(0);
    if (text.empty()) detail::fail(status, definition);
    throw error(status, definition + ":\n" + text);
  }

  optxv_handle handle_ = nullptr;
};

}  // namespace optxv

#endif
