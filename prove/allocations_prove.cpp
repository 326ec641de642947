// Each exported function, called as a program would; see walk.h. Functions of the table of the
// classic interface are called by their signatures: with every number of an option, and the texts
// that are given here.

#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

#include "foundation/runtime.h"
#include "options/zmaoptions.h"
#include "walk.h"
#include "writers/optionwriter.h"

namespace {

using namespace walk;

using texts = std::vector<const char*>;

constexpr std::int32_t mostnumbers = 27;  // more than the definition has options

/// One argument of a classic function: in, from the text or the number of the round, or out, into
/// the outcome.
template <class Argument>
struct slot {
  using held = std::remove_const_t<std::remove_pointer_t<Argument>>;
  static constexpr bool out = std::is_same_v<Argument, held*>;
  static constexpr bool text = sizeof(held) == 1;
  static constexpr bool bounded = std::is_same_v<held, unsigned char>;

  slot(const char* given, std::int32_t number) {
    if constexpr (text && !out) {
      const std::size_t size = std::strlen(given);
      std::memcpy(bytes + (bounded ? 1 : 0), given, size + 1);
      if (bounded) bytes[0] = static_cast<held>(size);
    } else if constexpr (!text && !out) {
      value = static_cast<held>(number);
    }
  }
  Argument pass() {
    if constexpr (text) return bytes;
    if constexpr (out && !text) return &value;
    if constexpr (!out && !text) return value;
  }
  void tell(outcome& to) const {
    if constexpr (out && text && bounded)
      to.put(std::string_view(reinterpret_cast<const char*>(bytes) + 1, bytes[0]));
    if constexpr (out && text && !bounded) to.put(std::string_view(bytes));
    if constexpr (out && !text) to.put(value);
    if constexpr (out) to.put(",");
  }

  held value = {};
  held bytes[OPTXV_TEXT_SIZE] = {};
};

/// The arguments of a function: the first takes the number of the round, others a small one of it.
template <class... Arguments, std::size_t... Places>
auto slotsfor([[maybe_unused]] const char* text, [[maybe_unused]] std::int32_t number,
              std::index_sequence<Places...>) {
  return std::tuple<slot<Arguments>...>(
      slot<Arguments>(text, Places == 0 ? number : number % 3)...);
}

template <class Result, class... Arguments>
void once(Result (*function)(void*, Arguments...), void* handle, const char* text,
          std::int32_t number, outcome& out) {
  auto slots = slotsfor<Arguments...>(text, number, std::index_sequence_for<Arguments...>());
  std::apply(
      [&](auto&... each) {
        if constexpr (std::is_void_v<Result>)
          function(handle, each.pass()...);
        else
          out.put(static_cast<std::int64_t>(function(handle, each.pass()...)));
        (each.tell(out), ...);
      },
      slots);
}

/// Calls a function with each text, if it takes one, and each number, if it takes one.
template <class Result, class... Arguments>
body classic(Result (*function)(void*, Arguments...), const texts& given) {
  constexpr bool numbered = ((std::is_same_v<Arguments, std::int32_t>) || ...);
  constexpr bool worded = ((std::is_same_v<Arguments, const char*> ||
                            std::is_same_v<Arguments, const unsigned char*>) ||
                           ...);
  static const texts none = {""};
  return [function, used = worded ? given : none](optxv_handle& handle, outcome& out) {
    for (const char* text : used)
      for (std::int32_t number = numbered ? 0 : 1; number < (numbered ? mostnumbers : 2); number++)
        once(function, handle, text, number, out);
    return 0;
  };
}

const char* longtext() {
  static const std::string text(200, 'x');
  return text.c_str();
}

/// The texts that a function of the table is given.
texts textsfor(std::string_view function) {
  if (function == "optreaddefinition") return {"more.def"};
  if (function == "optreadparameterfile") return {"values.opt", "none.opt"};
  if (function == "optwriteparameterfile") return {"new.opt"};
  if (function == "optreadfromstr" || function == "optreadfrompchar")
    return {"steplim 7",          "nosuch 1",
            "names /c",           "--made it",
            "x.scale('a',*) = 2", "tie e(i,'b')$v(i) = 1",
            "read values.opt",    "explain 2",
            "pair abc:7",         "both 3",
            "maxsteps 5",         "gone 1",
            "tol 1e-3 0.25",      "logname \"an \"inner\" quote\""};
  if (function == "optshowhelp") return {"steplim", "1", "2", "4", "9", "reltol"};
  if (function == "optaddmessage") return {"hello", longtext()};
  if (function.starts_with("optset")) return {"5", "dual", longtext(), "a b"};
  return {"steplim", "reltol", "names", "nosuch"};
}

/// Of the table: each function, in both forms where it has two.
std::vector<call> tabled() {
  std::vector<call> all;
#define OPTXV_PLAIN(api, linkage, ...) \
  all.push_back({#linkage, promise::classic, classic(&linkage, textsfor(#linkage))});
#define OPTXV_TWIN(api, linkage, ...)    \
  OPTXV_PLAIN(api, linkage, __VA_ARGS__) \
  all.push_back({"c" #linkage, promise::classic, classic(&c##linkage, textsfor(#linkage))});
#include "frame/api.def"
  return all;
}

/// The functions that the table does not have.
std::vector<call> others() {
  static unsigned char bounded[OPTXV_TEXT_SIZE];
  static char text[OPTXV_TEXT_SIZE];
  static const std::int32_t signature[] = {optArgInteger, optArgInteger, optArgOutInteger};
  const auto plain = [](const char* name, auto make, bool fresh = false) {
    return call{name, promise::classic,
                [make](optxv_handle& handle, outcome& out) {
                  make(handle, out);
                  return 0;
                },
                fresh};
  };
  const auto helper = [](const char* name, auto make) {
    return call{name, promise::status, [make](optxv_handle&, outcome& out) { return make(out); },
                true};
  };
  return {
      plain("xcreate xfree",
            [](optxv_handle& handle, outcome&) {
              xfree(&handle), xcreate(&handle), xfree(&handle), xcreate(&handle);
            }),
      plain("xcheck",
            [](optxv_handle&, outcome& out) {
              out.put(xcheck(reinterpret_cast<const unsigned char*>("\13optGetIntNr"), 2, signature,
                             bounded));
              out.put(xcheck(reinterpret_cast<const unsigned char*>("\6nosuch"), 2, signature,
                             bounded));
            }),
      plain("cxcheck",
            [](optxv_handle&, outcome& out) {
              out.put(cxcheck("optGetIntNr", 1, signature, text));
              out.put(text);
            }),
      plain("xapiversion",
            [](optxv_handle&, outcome& out) {
              std::int32_t status = 0;
              out.put(xapiversion(2, bounded, &status));
            }),
      plain("cxapiversion",
            [](optxv_handle&, outcome& out) {
              std::int32_t status = 0;
              out.put(cxapiversion(9, text, &status));
              out.put(text);
            }),
      plain("optgetloadpath optsetloadpath",
            [](optxv_handle&, outcome&) {
              optsetloadpath(reinterpret_cast<const unsigned char*>("\1x"));
              optgetloadpath(bounded);
            }),
      plain("coptgetloadpath coptsetloadpath",
            [](optxv_handle&, outcome& out) {
              coptsetloadpath("/some/where");
              coptgetloadpath(text);
              out.put(text);
            }),
      plain("_Q9_DllInit _Q9_DllFini",
            [](optxv_handle&, outcome& out) {
              out.put(_Q9_DllInit());
              _Q9_DllFini();
            }),
      helper("get_cpu_time get_time gettickcount",
             [](outcome& out) {
               std::int64_t some = 0;
               out.put(get_cpu_time(&some));
               out.put(get_time(&some));
               out.put(gettickcount() > 0 ? 1 : 0);
               return 0;
             }),
      helper("get_cwd", [](outcome& out) { return out.put(get_cwd(text, sizeof text)), 0; }),
      helper("get_env",
             [](outcome& out) { return out.put(get_env("PATH", text, sizeof text)), 0; }),
      helper("get_file_stat get_file_stat_by_name",
             [](outcome& out) {
               std::int64_t size = 0, modified = 0;
               std::int32_t mode = 0;
               out.put(get_file_stat(0, &size, &modified, &mode));
               out.put(get_file_stat_by_name("values.opt", &size, &modified, &mode));
               out.put(size);
               return 0;
             }),
      helper("get_uname getosfilesys",
             [](outcome& out) {
               static char five[5][OPTXV_TEXT_SIZE];
               out.put(get_uname(five[0], five[1], five[2], five[3], five[4], OPTXV_TEXT_SIZE));
               out.put(getosfilesys());
               return 0;
             }),
      helper("unixgetmodulefilename",
             [](outcome& out) { return out.put(unixgetmodulefilename(text, sizeof text)), 0; }),
  };
}

// --- The embedding header

/// A call with a status, on a handle that is ready.
call checked(const char* name, std::function<std::int32_t(optxv_handle, outcome&)> make) {
  return {name, promise::status,
          [make](optxv_handle& handle, outcome& out) { return make(handle, out); }};
}
/// A call that has none, and so has to come to the same whatever fails.
call sure(const char* name, std::function<void(optxv_handle, outcome&)> make) {
  return {name, promise::status, [make](optxv_handle& handle, outcome& out) {
            make(handle, out);
            return 0;
          }};
}

/// A call that gives the names that may have been meant: none where memory runs out.
call guess(const char* name, std::function<std::int32_t(optxv_handle, optxv_text*)> ask) {
  return {name, promise::status, [ask](optxv_handle& handle, outcome& out) -> std::int32_t {
            optxv_text near[3];
            const std::int32_t count = ask(handle, near);
            for (std::int32_t i = 0; i < count; i++) out.put(near[i]);
            return count == 0 ? ENOMEM : 0;
          }};
}

/// A call of a function with one out argument, for each number; the first failure ends it.
template <class Out, class Ask>
std::int32_t each(Ask ask, outcome& out) {
  for (std::int32_t number = 0; number < mostnumbers; number++) {
    Out given = {};
    const std::int32_t status = ask(number, given);
    if (status > 0) return status;
    out.put(status);
    if constexpr (std::is_arithmetic_v<Out> || std::is_same_v<Out, optxv_text>)
      if (status == 0) out.put(given);
  }
  return 0;
}

constexpr std::string_view moretext =
    "more integer 1 1 0 9 1 1 More\nlimits group 7 1 The limits\nmo synonym more\n";
constexpr std::string_view valuetext =
    "steplim 5\nlogname \"other\"\nmethod primal\nnames /a\n--made first\nx.scale('a',*) = 2\n"
    "tie e(i,'b')$v(i) = 1\nscale maybe\nnosuch 1\nread values.opt\nexplain 15\n";

std::int32_t readwords(optxv_handle handle, outcome& out, std::uint32_t flags) {
  static char words[5][32] = {"program", "--setplim=1", "--steplim", "7", "file"};
  char* argv[] = {words[0], words[1], words[2], words[3], words[4], nullptr};
  int argc = 5;
  const std::int32_t status = optxv_read_arguments(handle, &argc, argv, flags);
  out.put(argc);
  return status > 0 && argc != 5 ? -argc : status;  // what could not be read is all there still
}

std::int32_t counttext(void* context, const char*, std::size_t size) {
  static_cast<outcome*>(context)->put(static_cast<std::int64_t>(size));
  return 0;
}

void heard(void* context, const optxv_message* message) {
  static_cast<outcome*>(context)->put(message->text);
}
std::int32_t openedas(void*, const char*, optxv_text*) {
  return 0;
}

std::vector<call> reads() {
  return {
      {"optxv_create optxv_free", promise::status,
       [](optxv_handle& handle, outcome&) {
         handle = nullptr;
         const std::int32_t status = optxv_create(&handle);
         return status > 0 && handle != nullptr ? -1 : status;
       },
       true},
      checked("optxv_read_definition",
              [](optxv_handle h, outcome&) { return optxv_read_definition(h, "more.def"); }),
      checked("optxv_read_parameters",
              [](optxv_handle h, outcome&) { return optxv_read_parameters(h, "values.opt"); }),
      checked("optxv_read_line",
              [](optxv_handle h, outcome&) { return optxv_read_line(h, "nosuch 7", OPTXV_ENDED); }),
      checked("optxv_read_line a list",
              [](optxv_handle h, outcome&) { return optxv_read_line(h, "names /new", 10); }),
      checked("optxv_read_definition_text",
              [](optxv_handle h, outcome&) {
                return optxv_read_definition_text(h, "m", moretext.data(), moretext.size());
              }),
      checked("optxv_read_parameter_text",
              [](optxv_handle h, outcome&) {
                return optxv_read_parameter_text(h, "p", valuetext.data(), valuetext.size());
              }),
      checked("optxv_read_arguments",
              [](optxv_handle h, outcome& out) { return readwords(h, out, 0); }),
      checked("optxv_read_arguments unknown ones kept",
              [](optxv_handle h, outcome& out) {
                return readwords(h, out, optxv_arguments_keep_unknown);
              }),
      checked("optxv_read_environment",
              [](optxv_handle h, outcome&) { return optxv_read_environment(h, "WALKED_"); }),
      checked("optxv_show_help", [](optxv_handle h, outcome&) { return optxv_show_help(h, "15"); }),
      checked("optxv_add_message",
              [](optxv_handle h, outcome&) { return optxv_add_message(h, "hello", 5); }),
      checked("optxv_switch",
              [](optxv_handle h, outcome& out) {
                return out.put(optxv_switch(h, optxv_switch_echo, 1)), 0;
              }),
      sure("optxv_listen",
           [](optxv_handle h, outcome& out) {
             optxv_listener listener = {};
             listener.size = sizeof listener;
             listener.context = &out;
             optxv_listen(h, &listener);
             optxv_listen(h, nullptr);
           }),
      checked("optxv_read_parameter_text with a listener",
              [](optxv_handle h, outcome& out) {
                optxv_listener listener = {};
                listener.size = sizeof listener;
                listener.context = &out;
                listener.message = heard;
                listener.opening = openedas;
                optxv_listen(h, &listener);
                const std::int32_t status =
                    optxv_read_parameter_text(h, "p", valuetext.data(), valuetext.size());
                optxv_listen(h, nullptr);
                return status;
              }),
      checked("optxv_write_parameters",
              [](optxv_handle h, outcome&) { return optxv_write_parameters(h, "new.opt"); }),
      checked("optxv_write_parameters over a file",
              [](optxv_handle h, outcome&) { return optxv_write_parameters(h, "old.opt"); }),
      checked("optxv_write_parameters to standard output",
              [](optxv_handle h, outcome&) { return optxv_write_parameters(h, ""); }),
      checked("optxv_write_parameter_text",
              [](optxv_handle h, outcome& out) {
                return optxv_write_parameter_text(h, counttext, &out);
              }),
  };
}

std::vector<call> values() {
  const auto names = [](auto ask) {
    return [ask](optxv_handle h, outcome& out) -> std::int32_t {
      for (const char* name :
           {"steplim", "tol", "logname", "method", "maxsteps", "names", "none"}) {
        const std::int32_t status = ask(h, name, out);
        if (status > 0) return status;
        out.put(status);
      }
      return 0;
    };
  };
  const auto got = [=](const char* function, auto get, auto value) {
    return checked(function, names([get, value](optxv_handle h, const char* name, outcome& out) {
                     auto found = value;
                     const std::int32_t status = get(h, name, &found);
                     if (status == 0) out.put(found);
                     return status;
                   }));
  };
  const auto gotnr = []<class Value>(const char* function, auto get, Value) {
    return checked(function, [get](optxv_handle h, outcome& out) {
      return each<Value>(
          [&](std::int32_t number, Value& found) { return get(h, number, 1, &found); }, out);
    });
  };
  const auto setnr = [](const char* function, auto set) {
    return checked(function, [set](optxv_handle h, outcome& out) {
      return each<int>([&](std::int32_t number, int&) { return set(h, number); }, out);
    });
  };
  static optxv_snapshot* snapshot = nullptr;
  return {
      got("optxv_get_integer", &optxv_get_integer, std::int32_t{0}),
      got("optxv_get_real", &optxv_get_real, 0.0),
      got("optxv_get_text", &optxv_get_text, optxv_text{"", 0}),
      got(
          "optxv_find",
          [](optxv_handle h, const char* name, std::int32_t* number) {
            return optxv_find(h, name, OPTXV_ENDED, number);
          },
          std::int32_t{0}),
      checked("optxv_set_integer", names([](optxv_handle h, const char* name, outcome&) {
                return optxv_set_integer(h, name, 77777);
              })),
      checked("optxv_set_real", names([](optxv_handle h, const char* name, outcome&) {
                return optxv_set_real(h, name, 0.75);
              })),
      checked("optxv_set_text", names([](optxv_handle h, const char* name, outcome&) {
                return optxv_set_text(h, name, longtext(), 200);
              })),
      gotnr("optxv_get_integer_nr", &optxv_get_integer_nr, std::int32_t{0}),
      gotnr("optxv_get_real_nr", &optxv_get_real_nr, 0.0),
      checked("optxv_get_text_nr",
              [](optxv_handle h, outcome& out) {
                return each<optxv_text>(
                    [&](std::int32_t number, optxv_text& text) {
                      return optxv_get_text_nr(h, number, 1, &text);
                    },
                    out);
              }),
      setnr("optxv_set_integer_nr",
            [](optxv_handle h, std::int32_t number) {
              return optxv_set_integer_nr(h, number, 1, 5);
            }),
      setnr(
          "optxv_set_real_nr",
          [](optxv_handle h, std::int32_t number) { return optxv_set_real_nr(h, number, 1, 0.5); }),
      setnr("optxv_set_text_nr",
            [](optxv_handle h, std::int32_t number) {
              return optxv_set_text_nr(h, number, 1, "text of it", 10);
            }),
      setnr("optxv_parse_value",
            [](optxv_handle h, std::int32_t number) {
              return optxv_parse_value(h, number, 1, "1", 1);
            }),
      setnr("optxv_parse_value a long text",
            [](optxv_handle h, std::int32_t number) {
              return optxv_parse_value(h, number, 1, longtext(), 200);
            }),
      setnr("optxv_reset",
            [](optxv_handle h, std::int32_t number) { return optxv_reset(h, number); }),
      checked("optxv_reset_all", [](optxv_handle h, outcome&) { return optxv_reset_all(h); }),
      checked("optxv_show_value",
              [](optxv_handle h, outcome& out) {
                char text[OPTXV_TEXT_SIZE] = "";
                return each<int>(
                    [&](std::int32_t number, int&) { return optxv_show_value(h, number, 1, text); },
                    out);
              }),
      checked("optxv_take_snapshot optxv_free_snapshot",
              [](optxv_handle h, outcome&) {
                const std::int32_t status = optxv_take_snapshot(h, &snapshot);
                if (status != 0 && snapshot != nullptr) return -1;
                optxv_free_snapshot(&snapshot);
                return status;
              }),
  };
}

/// A function that fills in what is known of each number; its other numbers are 1.
template <class... Arguments>
call asked(const char* name, std::int32_t (*ask)(optxv_handle, std::int32_t, Arguments...)) {
  constexpr std::size_t others = sizeof...(Arguments) - 1;
  using info = std::remove_pointer_t<std::tuple_element_t<others, std::tuple<Arguments...>>>;
  return checked(name, [ask](optxv_handle h, outcome& out) {
    const auto one = [&](std::int32_t number, info& found) {
      if constexpr (others == 0) return ask(h, number, &found);
      if constexpr (others == 1) return ask(h, number, 1, &found);
      if constexpr (others == 2) return ask(h, number, 1, 1, &found);
    };
    return each<info>(one, out);
  });
}

std::vector<call> questions() {
  const auto counted = [](const char* name, auto count) {
    return sure(name, [count](optxv_handle h, outcome& out) { out.put(count(h)); });
  };
  return {
      counted("optxv_option_count", &optxv_option_count),
      counted("optxv_group_count", &optxv_group_count),
      counted("optxv_synonym_count", &optxv_synonym_count),
      counted("optxv_message_count", &optxv_message_count),
      counted("optxv_dot_option_count",
              [](optxv_handle h) { return optxv_dot_option_count(h, nullptr); }),
      counted("optxv_indicator_count",
              [](optxv_handle h) { return optxv_indicator_count(h, nullptr); }),
      counted("optxv_table_mark",
              [](optxv_handle h) { return static_cast<std::int64_t>(optxv_table_mark(h)); }),
      asked("optxv_option_info", &optxv_option_info),
      asked("optxv_item_info", &optxv_item_info),
      asked("optxv_help_line", &optxv_help_line),
      asked("optxv_group_info", &optxv_group_info),
      asked("optxv_synonym_info", &optxv_synonym_info),
      asked("optxv_message_info", &optxv_message_info),
      asked("optxv_dot_option_info", &optxv_dot_option_info),
      asked("optxv_dot_option_label", &optxv_dot_option_label),
      asked("optxv_indicator_info", &optxv_indicator_info),
      asked("optxv_indicator_label", &optxv_indicator_label),
      checked("optxv_show_message",
              [](optxv_handle h, outcome& out) {
                char text[OPTXV_TEXT_SIZE] = "";
                return each<int>(
                    [&](std::int32_t number, int&) { return optxv_show_message(h, number, text); },
                    out);
              }),
      guess("optxv_nearest_names",
            [](optxv_handle h, optxv_text* near) {
              return optxv_nearest_names(h, "setplim", OPTXV_ENDED, near);
            }),
      guess("optxv_message_nearest",  // the first message tells of the file
            [](optxv_handle h, optxv_text* near) { return optxv_message_nearest(h, 2, near); }),
      sure("optxv_error_count optxv_clear_messages",
           [](optxv_handle h, outcome& out) {
             std::int32_t errors = 0;
             optxv_error_count(h, &errors, nullptr);
             out.put(errors);
             optxv_clear_messages(h);
           }),
      sure("optxv_message_place optxv_value_place optxv_list_count optxv_list_item",
           [](optxv_handle h, outcome& out) {
             optxv_place place;
             optxv_text item;
             for (std::int32_t nr = 0; nr < mostnumbers; nr++) {
               out.put(optxv_message_place(h, nr, &place));
               out.put(optxv_value_place(h, nr, &place, nullptr, nullptr));
               out.put(optxv_list_count(h, nr));
               out.put(optxv_list_item(h, nr, 1, &item));
             }
           }),
      sure("optxv_status_text optxv_fault_name optxv_field_name optxv_record_form",
           [](optxv_handle, outcome& out) {
             const char *word, *fields, *lines;
             out.put(optxv_status_text(ENOENT));
             out.put(optxv_status_text(optxv_refused));
             out.put(optxv_fault_name(3));
             out.put(optxv_field_name(3));
             out.put(optxv_record_form(1, &word, &fields, &lines));
           }),
  };
}

// --- Snapshots, and the writers of documents

/// Restores a snapshot; where that fails, all values are as before.
std::int32_t restored(optxv_handle& handle, outcome&) {
  end();  // all but the restore has what it needs
  optxv_snapshot* taken = nullptr;
  optxv_take_snapshot(handle, &taken);
  optxv_reset_all(handle);
  optxv_read_line(handle, "logname now", OPTXV_ENDED);
  const std::string before = stateof(handle);
  begin();
  const std::int32_t status = optxv_restore_snapshot(handle, taken);
  end();
  const bool same = status == 0 || stateof(handle) == before;
  optxv_free_snapshot(&taken);
  return same ? status : -1;
}

/// A document of the table, made by the C++ classes that the library exports: memory that runs out
/// is an exception.
call document(const char* name, std::string (optxv::tzmaoptionwriter::*form)() const) {
  return {name, promise::thrown, [form](optxv_handle& handle, outcome& out) -> std::int32_t {
            try {
              const optxv::tzmaoptionwriter writer(*static_cast<const optxv::tzmaoptions*>(handle));
              out.put((writer.*form)());
            } catch (const std::bad_alloc&) {
              return ENOMEM;
            } catch (const optxv::eoutofmemory&) {
              return ENOMEM;
            }
            return 0;
          }};
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<call> all = tabled();
  for (const auto& more : {others(), reads(), values(), questions()})
    all.insert(all.end(), more.begin(), more.end());
  all.push_back({"optxv_restore_snapshot", promise::status, restored});
  all.push_back(document("htmltext", &optxv::tzmaoptionwriter::htmltext));
  all.push_back(document("definitiontext", &optxv::tzmaoptionwriter::definitiontext));
  all.push_back(document("delphiinctext", &optxv::tzmaoptionwriter::delphiinctext));
  return walk::run(all, argc, argv);
}
