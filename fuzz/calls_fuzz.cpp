// Sequences of calls of the exported functions, on three handles. Every call of the first handle is
// made with bounded strings, the same one of the second with zero-terminated strings, and both must
// give the same; the third gets calls of its own in between, which the others must not notice. A
// listener of each handle looks at the places that it is told, and serves the files that parameter
// text names. The first byte chooses the definition.
//
// The rows hold the mixed-case names, which are not to be replaced.
#define OPTXV_NO_MIXED_CASE_NAMES
#include <array>
#include <cstring>
#include <memory>
#include <tuple>
#include <vector>

#include "frame/signatures.h"
#include "optxv/embedding.h"
#include "optxv/optxv.h"
#include "picker.h"
#include "richdefinition.h"
#include "support.h"

namespace optxv::fuzz {
namespace {

// --- What is handed to a call

constexpr std::size_t outsize = 256;
/// A longer zero-terminated text is replaced by words that say so.
constexpr std::size_t longesttext = 254;

/// The files of a run, which outlive it.
struct filesofall {
  std::array<memoryfile, 4> definitions{
      {memoryfile(richdefinition("Normal") + "take immediate ReadFile 1 1 File\n"),
       memoryfile(richdefinition("Path")),
       memoryfile(richdefinition("Minos") + "take immediate ReadFile 1 1 File\n"),
       memoryfile("g group 1 1 G\na strlist 1 1 1 A\nb multilist 1 1 1 B\n a\n c\nc macro 1 1 C\n"
                  " b\nd immediate ReadFile 1 1 D\n")}};
  memoryfile parameters{"step_limit 5\nsay hello\nx.scale('a',*) 2\nindic e(i)$v(i) 1\n--pair a b"};
  memoryfile written;
};
const filesofall& files() {
  static const filesofall all;
  return all;
}

/// What the present call is about, beside its choices.
struct callstate {
  const std::string* path = nullptr;  ///< the file that its text names
  std::size_t lastsize = 0;           ///< of the text before
};
callstate state;

/// A name, a line of parameter text, a value, or bytes as they come.
std::string wordof(picker& from) {
  static constexpr std::array<std::string_view, 48> words = {
      "step_limit", "steps",       "span",      "tolerance",  "range", "logname",   "pair",
      "flag",       "verbose",     "method",    "level",      "paths", "both",      "fast",
      "no_bounds",  "whole",       "say",       "stplim",     "old",   "gone",      "dead",
      "indic",      ".scale",      ".kind",     "Help",       "take",  "a",         "b",
      "c",          "d",           "no such",   "step-limit", "1",     "-5",        "2.5",
      "1e300",      "maxint",      "mindouble", "yes",        "auto",  "two words", "\"two words\"",
      "a.scale(1)", "step_limit=", "0x10",      "2147483648", "",      "--"};
  static constexpr std::array<std::string_view, 12> lines = {"step_limit = 7",
                                                             "pair 'a b' c",
                                                             "x.scale('a',*) := 2.5",
                                                             "x.prior 3 y.on yes",
                                                             "indic eq(i,'j')$v(i) 1",
                                                             "take more.opt",
                                                             "paths one two",
                                                             "both 5:0.1",
                                                             "fast 1",
                                                             "x.kind(1) 7",
                                                             "help 15",
                                                             "no_bounds 1 step_limit 1000"};
  const unsigned kind = from.byte();
  if (kind < 120) return std::string(words[kind % words.size()]);
  if (kind < 180) return std::string(lines[kind % lines.size()]);
  if (kind < 200)
    return (std::string(words[kind % words.size()]) + " " + wordof(from)).substr(0, longesttext);
  if (kind < 210) return std::string(longesttext - from.below(3), 'x');
  std::string text(from.text(longesttext));
  std::erase(text, '\0');
  return text;
}

/// One argument of a type: made of choices, handed over, and what is in it afterwards.
template <class Type>
struct argument;

struct nothingback {
  std::string after() const { return {}; }
};

template <>
struct argument<std::int32_t> : nothingback {
  explicit argument(picker& from) : value(from.integer()) {}
  std::int32_t get() const { return value; }
  std::int32_t value;
};
template <>
struct argument<double> : nothingback {
  explicit argument(picker& from) {
    constexpr std::array<double, 10> all = {0, -0.5, 1, 1e-7, 1e37, 1e300, -1e300, 2.5, 7, 1e9};
    value = all[from.byte() % all.size()];
  }
  double get() const { return value; }
  double value;
};
/// Zero-terminated text, in memory of just its size.
template <>
struct argument<const char*> : nothingback {
  explicit argument(picker& from) {
    const std::string text = state.path != nullptr ? *state.path : wordof(from);
    state.lastsize = text.size();
    bytes.reset(new char[text.size() + 1]);
    std::memcpy(bytes.get(), text.c_str(), text.size() + 1);
  }
  const char* get() const { return bytes.get(); }
  std::unique_ptr<char[]> bytes;
};
/// Bounded text likewise.
template <>
struct argument<const unsigned char*> : nothingback {
  explicit argument(picker& from) {
    const std::string text = state.path != nullptr ? *state.path : wordof(from);
    demand(text.size() <= longesttext, "a text of the fuzzer is bounded");
    bytes.reset(new unsigned char[text.size() + 1]);
    bytes[0] = static_cast<unsigned char>(text.size());
    std::memcpy(bytes.get() + 1, text.data(), text.size());
  }
  const unsigned char* get() const { return bytes.get(); }
  std::unique_ptr<unsigned char[]> bytes;
};
template <>
struct argument<std::size_t> : nothingback {
  explicit argument(picker& from) : value(from.coin() ? state.lastsize : OPTXV_ENDED) {}
  std::size_t get() const { return value; }
  std::size_t value;
};
template <>
struct argument<char*> {
  explicit argument(picker&) : bytes(new char[outsize]()) {}
  char* get() const { return bytes.get(); }
  std::string after() const { return bytes.get(); }
  std::unique_ptr<char[]> bytes;
};
template <>
struct argument<unsigned char*> {
  explicit argument(picker&) : bytes(new unsigned char[outsize]()) {}
  unsigned char* get() const { return bytes.get(); }
  std::string after() const {
    const std::string all(reinterpret_cast<const char*>(bytes.get()) + 1, bytes[0]);
    return all.c_str();  // as far as the other form can tell it
  }
  std::unique_ptr<unsigned char[]> bytes;
};

// What comes back, as text.
std::string shown(std::int32_t value) {
  return std::to_string(value);
}
std::string shown(double value) {
  return std::to_string(value);
}
std::string shown(const optxv_text& text) {
  return {text.bytes == nullptr ? "" : text.bytes, text.size};
}
std::string shown(const optxv_place& place) {
  return std::string(place.file == nullptr ? "" : place.file) + ':' + std::to_string(place.line) +
         ':' + std::to_string(place.column) + '+' + std::to_string(place.length);
}
std::string shown(const optxv_option& o) {
  return shown(o.name) + shown(o.help) + shown(o.markedtext) + shown(o.default_text) +
         std::to_string(o.kind + o.defined + o.items + o.low_integer) + shown(o.high_real);
}
std::string shown(const optxv_item& item) {
  return shown(item.integer) + shown(item.option) + shown(item.text) + shown(item.help);
}
std::string shown(const optxv_group& group) {
  return shown(group.number) + shown(group.name) + shown(group.help);
}
std::string shown(const optxv_synonym& synonym) {
  return shown(synonym.option) + shown(synonym.name) + shown(synonym.markedtext);
}
std::string shown(const optxv_message& m) {
  demand(m.kind >= 0 && m.kind <= optxv_said_error && m.fault >= 0 && m.fault < optxv_faults,
         "a message has a kind and a fault");
  return shown(m.text) + shown(m.about) + shown(m.seen) + shown(m.place) + shown(m.fault);
}
std::string shown(const optxv_dot_option& dot) {
  return shown(dot.symbol) + shown(dot.value) + shown(dot.labels) + shown(dot.option);
}
std::string shown(const optxv_indicator& each) {
  return shown(each.equation) + shown(each.variable) + shown(each.mark);
}

/// Anything else that is filled; three of it, as some functions give so many texts.
template <class Type>
struct argument<Type*> {
  explicit argument(picker&) : all(new Type[3]()) {}
  Type* get() const { return all.get(); }
  std::string after() const { return shown(all[0]) + shown(all[1]) + shown(all[2]); }
  std::unique_ptr<Type[]> all;
};

/// Calls a function with arguments of its types, made of the choices; gives all that came of it.
template <class Result, class... Types>
std::string calledwith(Result (*function)(void*, Types...), void* handle, picker& from) {
  std::tuple<argument<Types>...> made{argument<Types>(from)...};
  return std::apply(
      [&](auto&... each) {
        std::string all;
        if constexpr (std::is_void_v<Result>)
          function(handle, each.get()...);
        else
          all = std::to_string(function(handle, each.get()...)) + '|';
        ((all += each.after() + '|'), ...);
        return all;
      },
      made);
}

// --- The listener

void checkplace(const optxv_place& at) {
  demand(at.file != nullptr && at.length >= 0, "a place has a file");
  demand(at.line == 0 ? at.column == 0 && at.length == 0 : at.column >= 1, "a place is one");
}

optxv_listener hearing() {
  optxv_listener to{};
  to.size = sizeof to;
  to.line = [](void*, const optxv_place* at, const optxv_text*) { checkplace(*at); };
  to.comment = [](void*, const optxv_place* at) { checkplace(*at); };
  to.field = [](void*, const optxv_field* field) { checkplace(field->place); };
  to.key = [](void*, const optxv_key* key) { checkplace(key->place); };
  to.separator = [](void*, const optxv_place* at) { checkplace(*at); };
  to.value = [](void*, const optxv_value* value) { checkplace(value->place); };
  to.stored = [](void*, const optxv_store* store) { checkplace(store->place); };
  to.dot_option = [](void*, const optxv_entry* entry) { checkplace(entry->second_place); };
  to.indicator = [](void*, const optxv_entry* entry) { checkplace(entry->second_place); };
  to.message = [](void*, const optxv_message* message) { checkplace(message->place); };
  // No file is opened but those of the fuzzer.
  to.opening = [](void*, const char* name, optxv_text* text) {
    if (std::string_view(name).starts_with("/proc/self/fd/")) return 0;
    static constexpr std::string_view served = "steps 3\ntake more.opt\npaths a 'b c'\nflag";
    *text = {served.data(), served.size()};
    return 1;
  };
  return to;
}

// --- The functions

/// A row of either header: the function for the first handle, and that for the second.
struct row {
  std::string_view name;
  std::string (*first)(void* handle, picker& from);
  std::string (*second)(void* handle, picker& from);
};

template <auto Function>
std::string calling(void* handle, picker& from) {
  return calledwith(Function, handle, from);
}

constexpr auto classic = std::to_array<row>({
#define OPTXV_TWIN(api, linkage, ...) {#api, calling<linkage>, calling<c##linkage>},
#define OPTXV_PLAIN(api, linkage, ...) {#api, calling<linkage>, calling<linkage>},
#include "frame/api.def"
});

std::string arguments(void* handle, picker& from) {
  std::vector<std::string> words = {"program"};
  for (unsigned count = from.below(6); count > 0; count--) {
    words.push_back(wordof(from));
    if (from.coin()) words.back().insert(0, "--");
    if (from.coin()) words.back() += "=" + wordof(from);
  }
  std::vector<char*> argv;
  for (std::string& each : words) argv.push_back(each.data());
  argv.push_back(nullptr);
  int argc = static_cast<int>(words.size());
  const std::int32_t status =
      optxv_read_arguments(handle, &argc, argv.data(), static_cast<std::uint32_t>(from.coin()));
  demand(argc >= 1 && static_cast<std::size_t>(argc) <= words.size() &&
             argv[static_cast<std::size_t>(argc)] == nullptr,
         "arguments end in nil");
  return std::to_string(status) + '|' + std::to_string(argc);
}

std::string variables(void* handle, picker& from) {
  std::vector<std::string> all;
  for (unsigned count = from.below(4); count > 0; count--) {
    const std::string name = wordof(from);
    all.push_back("FUZZ_" + name + '=' + wordof(from));
  }
  std::vector<char*> pointers;
  for (std::string& each : all) pointers.push_back(each.data());
  pointers.push_back(nullptr);
  char** const host = environ;
  environ = pointers.data();
  const std::int32_t status = optxv_read_environment(handle, "FUZZ_");
  environ = host;
  return std::to_string(status);
}

std::string snapshots(void* handle, picker& from) {
  optxv_snapshot *one = nullptr, *two = nullptr;
  demand(optxv_take_snapshot(handle, &one) == 0, "a snapshot is taken");
  const std::string text = wordof(from);
  optxv_read_parameter_text(handle, "between", text.data(), text.size());
  demand(optxv_take_snapshot(handle, &two) == 0, "and another");
  demand(optxv_restore_snapshot(handle, one) == 0, "one goes back");
  if (from.coin()) demand(optxv_restore_snapshot(handle, two) == 0, "and forth");
  optxv_free_snapshot(&one);
  optxv_free_snapshot(&two);
  return {};
}

std::string writing(void* handle, picker&) {
  std::string text;
  const auto take = [](void* context, const char* bytes, std::size_t size) {
    static_cast<std::string*>(context)->assign(bytes, size);
    return 0;
  };
  demand(optxv_write_parameter_text(handle, take, &text) == 0, "the text is handed over");
  return text;
}

std::string reading(void* handle, picker& from) {
  std::string text;
  for (unsigned count = from.below(8); count > 0; count--) text += wordof(from) + '\n';
  return std::to_string(optxv_read_parameter_text(handle, "text", text.data(), text.size()));
}

std::string defining(void* handle, picker& from) {
  const std::string text = wordof(from) + " integer 1 5 0 9 1 1 Number\n" + wordof(from) +
                           " strlist 1 1 1 Texts\n" + wordof(from) + '\n';
  return std::to_string(optxv_read_definition_text(handle, "definition", text.data(), text.size()));
}

std::string counting(void* handle, picker&) {
  std::int32_t errors = 0, warnings = 0;
  optxv_error_count(handle, &errors, &warnings);
  optxv_table_mark(handle);
  return shown(errors) + '|' + shown(warnings);
}

template <auto Function>
constexpr row same(std::string_view name) {
  return {name, calling<Function>, calling<Function>};
}

#define FUZZ_SAME(name) same<optxv_##name>("optxv_" #name)
constexpr auto embedding = std::to_array<row>({
  {"arguments", arguments, arguments}, {"variables", variables, variables},
      {"snapshots", snapshots, snapshots}, {"writing", writing, writing},
      {"reading", reading, reading}, {"defining", defining, defining},
      {"counting", counting, counting}, FUZZ_SAME(read_line), FUZZ_SAME(switch), FUZZ_SAME(find),
      FUZZ_SAME(get_integer), FUZZ_SAME(get_real), FUZZ_SAME(get_text), FUZZ_SAME(set_integer),
      FUZZ_SAME(set_real), FUZZ_SAME(set_text), FUZZ_SAME(get_integer_nr), FUZZ_SAME(get_real_nr),
      FUZZ_SAME(get_text_nr), FUZZ_SAME(set_integer_nr), FUZZ_SAME(set_real_nr),
      FUZZ_SAME(set_text_nr), FUZZ_SAME(show_value), FUZZ_SAME(parse_value), FUZZ_SAME(reset),
      FUZZ_SAME(reset_all), FUZZ_SAME(option_count), FUZZ_SAME(option_info), FUZZ_SAME(item_info),
      FUZZ_SAME(help_line), FUZZ_SAME(group_count), FUZZ_SAME(group_info), FUZZ_SAME(synonym_count),
      FUZZ_SAME(synonym_info), FUZZ_SAME(nearest_names), FUZZ_SAME(message_count),
      FUZZ_SAME(add_message), FUZZ_SAME(clear_messages), FUZZ_SAME(show_help),
      FUZZ_SAME(message_info), FUZZ_SAME(show_message), FUZZ_SAME(message_nearest),
      FUZZ_SAME(dot_option_count), FUZZ_SAME(dot_option_info), FUZZ_SAME(dot_option_label),
      FUZZ_SAME(indicator_count), FUZZ_SAME(indicator_info), FUZZ_SAME(indicator_label),
      FUZZ_SAME(message_place), FUZZ_SAME(value_place), FUZZ_SAME(list_count), FUZZ_SAME(list_item),
      FUZZ_SAME(read_definition), FUZZ_SAME(read_parameters), FUZZ_SAME(write_parameters),
});
#undef FUZZ_SAME

/// The file that a function is given, if its text is the name of one.
const std::string* fileof(std::string_view name) {
  if (name == "optReadDefinition" || name == "optxv_read_definition")
    return &files().definitions.back().path();
  if (name == "optReadParameterFile" || name == "optxv_read_parameters")
    return &files().parameters.path();
  if (name == "optWriteParameterFile" || name == "optxv_write_parameters")
    return &files().written.path();
  return nullptr;
}

// --- The sequence

class handles {
 public:
  explicit handles(unsigned definition) {
    const optxv_listener listener = hearing();
    for (optxv_handle& each : all_) {
      demand(optxv_create(&each) == 0, "a handle is made");
      optxv_listen(each, &listener);
      const auto& file = files().definitions[definition % files().definitions.size()];
      demand(optxv_read_definition(each, file.path().c_str()) == 0, "the definition opens");
    }
  }
  ~handles() {
    for (optxv_handle& each : all_) optxv_free(&each);
  }
  handles(const handles&) = delete;
  handles& operator=(const handles&) = delete;

  void step(picker& from) {
    const unsigned which = from.byte();
    const row& called =
        which < 200 ? classic[which % classic.size()] : embedding[from.below(embedding.size())];
    state.path = fileof(called.name);
    if (from.below(4) == 0)
      called.first(all_[2], from);
    else
      together(called, from);
    state.path = nullptr;
  }
  void finish() {
    picker none(nullptr, 0);
    together({"writing", writing, writing}, none);
    for (const optxv_handle each : all_) checkstate(*static_cast<tzmaoptions*>(each));
  }

 private:
  void together(const row& called, picker& from) {
    picker again = from;
    const std::string one = called.first(all_[0], from), two = called.second(all_[1], again);
    demand(one == two, std::string(called.name) + ": " + one + " and " + two);
  }

  std::array<optxv_handle, 3> all_{};
};

}  // namespace
}  // namespace optxv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace optxv::fuzz;
  picker from(data, std::min<std::size_t>(size, 800));
  handles all(from.byte());
  while (!from.done()) all.step(from);
  all.finish();
  return 0;
}
