// A program that makes one call of the library, named on its command line, on a handle that is
// ready for it, and then writes what came of it. `--list` writes the names of all calls. The driver
// runs it again and again, each time with something else that fails (prove/forkserver.h): between
// begin and end, and nowhere else.
#pragma once

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "optxv/embedding.h"
#include "optxv/optxv.h"

extern "C" {
// Of the preloaded library; without one nothing fails.
__attribute__((weak)) void prove_begin(void);
__attribute__((weak)) void prove_end(void);
__attribute__((weak)) long prove_blocks(void);
}

namespace walk {

/// The text of what a call gave. It asks for no memory.
class outcome {
 public:
  void put(std::string_view text) {
    const std::size_t room = sizeof text_ - size_, size = text.size() < room ? text.size() : room;
    std::memcpy(text_ + size_, text.data(), size);
    size_ += size;
  }
  void put(std::int64_t number) {
    char digits[24];
    const char* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    put(std::string_view(digits, static_cast<std::size_t>(end - digits)));
    put(" ");
  }
  void put(std::int32_t number) { put(std::int64_t{number}); }
  void put(double number) {
    char digits[40];
    std::snprintf(digits, sizeof digits, "%.17g ", number);
    put(digits);
  }
  void put(optxv_text text) {
    put(std::string_view(text.bytes, text.size));
    put("\n");
  }
  std::string_view text() const { return {text_, size_}; }

 private:
  char text_[std::size_t{1} << 18];
  std::size_t size_ = 0;
};

/// What a call may come to where something fails.
enum class promise {
  classic,  // the same, or the library's line and abort
  status,   // the same, or a status, with the handle good
  thrown,   // the same, or an exception
  silent    // the same, or less on standard output, of which nobody is told
};

using body = std::function<std::int32_t(optxv_handle& handle, outcome& out)>;

struct call {
  std::string name;  // of the function, and what tells apart several calls of it
  promise promised;
  body make;
  bool fresh = false;  // without a handle that is ready
};

inline std::string content(const char* file) {
  std::ifstream in(file);
  return {std::istreambuf_iterator<char>(in), {}};
}

inline optxv_handle prepared(const char* definition, const char* parameters) {
  optxv_handle handle = nullptr;
  xcreate(&handle);
  coptreaddefinition(handle, definition);
  optxv_clear_messages(handle);
  if (coptreadparameterfile(handle, parameters) != 0) return nullptr;
  return handle;
}

/// All that a handle knows, as the classic functions tell it.
inline std::string stateof(optxv_handle handle) {
  std::string all;
  char text[OPTXV_TEXT_SIZE], other[OPTXV_TEXT_SIZE];
  std::int32_t a = 0, b = 0, c = 0;
  double real = 0;
  for (std::int32_t i = 1; i <= optcount(handle); i++) {
    coptgetvaluesnr(handle, i, other, &a, &real, text);
    optgetdefinednr(handle, i, &b);
    all += std::string(other) + '=' + text + ' ' + std::to_string(a) + ' ' + std::to_string(b);
    optxv_text item;
    for (std::int32_t k = 1; optxv_list_item(handle, i, k, &item) == 1; k++)
      all += '|' + std::string(item.bytes, item.size);
    all += '\n';
  }
  for (std::int32_t i = 1; coptgetdotoptnr(handle, i, text, &a, &b, &real) == 1; i++)
    all += std::string(text) + ' ' + std::to_string(a) + ' ' + std::to_string(real) + '\n';
  for (std::int32_t i = 1; coptgetindicatornr(handle, i, text, other, &a, &b, &c) == 1; i++)
    all += std::string(text) + '$' + other + ' ' + std::to_string(a) + std::to_string(b) +
           std::to_string(c) + '\n';
  for (std::int32_t i = 1; i <= optmessagecount(handle); i++) {
    coptgetmessage(handle, i, text, &a);
    all += std::string(text) + '\n';
  }
  return all;
}

/// From here on things fail, but only in the first call of a process.
inline bool spent = false;
inline void begin() {
  if (prove_begin != nullptr && !spent) prove_begin();
}
inline void end() {
  if (prove_end != nullptr) prove_end();
}

/// Makes a call while things fail.
inline std::int32_t made(const call& what, optxv_handle& handle, outcome& out) {
  begin();
  const std::int32_t status = what.make(handle, out);
  end();
  spent = true;
  return status;
}

/// What came of a call, after what the library itself printed: a first line with its status, what
/// it gave, the state of the handle, and how many blocks of memory are left. After a failure the
/// call is made again, which has to succeed.
inline std::string told(const call& what, const char* definition, const char* parameters) {
  static outcome out, again;
  const long before = prove_blocks != nullptr ? prove_blocks() : 0;
  std::string all;
  {
    optxv_handle handle = what.fresh ? nullptr : prepared(definition, parameters);
    const std::int32_t status = made(what, handle, out);
    std::string state;
    if (handle != nullptr) state = stateof(handle);
    all = "== status " + std::to_string(status) + '\n' + std::string(out.text()) + '\n' + state;
    if (status > 0) all += "again " + std::to_string(what.make(handle, again)) + '\n';
    optxv_free(&handle);
  }
  const long text = all.capacity() > 15 ? 1 : 0;
  const long left = (prove_blocks != nullptr ? prove_blocks() : 0) - before - text;
  return all + "left " + std::to_string(left) + '\n';
}

/// The main program of a walk: `--list`, or the name of a call, a definition and a parameter file.
inline int run(const std::vector<call>& calls, int argc, char** argv) {
  constexpr const char* words[] = {"classic", "status", "thrown", "silent"};
  if (argc == 2)
    for (const call& each : calls)
      std::printf("%s %s\n", words[static_cast<int>(each.promised)], each.name.c_str());
  if (argc == 2) return 0;
  for (const call& each : calls) {
    if (argc != 4 || each.name != argv[1]) continue;
    const std::string text = told(each, argv[2], argv[3]);
    std::fwrite(text.data(), 1, text.size(), stdout);
    return 0;
  }
  return 124;
}

}  // namespace walk
