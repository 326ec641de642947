// What the fuzz targets share: input passed as a file, and what must hold after every input.
#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "options/zmaoptions.h"

namespace optxv::fuzz {

/// Ends the run where a rule does not hold; the fuzzer then keeps the input.
inline void demand(bool condition, std::string_view rule) {
  if (condition) return;
  // Not by stderr, which a target may have put elsewhere.
  ::dprintf(STDERR_FILENO, "broken: %.*s\n", static_cast<int>(rule.size()), rule.data());
  std::abort();
}

/// A file in memory with a path that can be opened, over and over.
class memoryfile {
 public:
  memoryfile() : file_(::memfd_create("fuzz", MFD_CLOEXEC)) {
    demand(file_ >= 0, "a file in memory");
    path_ = "/proc/self/fd/" + std::to_string(file_);
  }
  explicit memoryfile(std::string_view content) : memoryfile() { fill(content); }
  ~memoryfile() { ::close(file_); }
  memoryfile(const memoryfile&) = delete;
  memoryfile& operator=(const memoryfile&) = delete;

  const std::string& path() const { return path_; }

  void fill(std::string_view content) {
    demand(::ftruncate(file_, 0) == 0, "ftruncate");
    demand(
        ::pwrite(file_, content.data(), content.size(), 0) == static_cast<ssize_t>(content.size()),
        "pwrite");
  }
  std::string content() const {
    const off_t size = ::lseek(file_, 0, SEEK_END);
    std::string text(static_cast<std::size_t>(size), '\0');
    demand(::pread(file_, text.data(), text.size(), 0) == size, "pread");
    return text;
  }

 private:
  int file_;
  std::string path_;
};

/// The rules of the object between two calls.
inline void checkstate(tzmaoptions& options) {
  demand(options.parser == nullptr, "no reader is left over");
  demand(options.filedepth == 0, "every file was left");
  demand(options.assigndepth == 0, "every assignment was left");
  std::int32_t echoed = 0;
  for (std::int32_t i = 1; i <= options.optmessagecount(); ++i) {
    shortstring text;
    std::int32_t kind = -1;
    options.optgetmessage(i, text, kind);
    demand(kind >= optMsgInputEcho && kind <= optMsgUserError, "a message has a kind");
    echoed += kind == optMsgInputEcho ? 1 : 0;
  }
  demand(options.optmessagecount() - echoed <= maximummessages + 1, "the queue keeps its limit");
}

/// Asks everything of one option; the results of good numbers must be good.
inline void askoption(tzmaoptions& options, std::int32_t number, bool good) {
  shortstring text, other;
  std::int32_t a = 0, b = 0, c = 0, d = 0, e = 0, f = 0;
  double x = 0, y = 0, z = 0;
  demand(options.optgetinfonr(number, a, b, c, d, e, f) == (good ? 1 : 0), "info by number");
  demand(options.optgetnamenr(number, text) == (good ? 1 : 0), "name by number");
  options.optgetdefinednr(number, a);
  options.optgethelpnr(number, text, other);
  options.optgetopthelpnr(number, text, a, b);
  options.optgetoptgroupnr(number);
  options.optgetboundsint(number, a, b, c);
  options.optgetboundsdbl(number, x, y, z);
  options.optgetdefaultstr(number, text);
  options.optgetvaluesnr(number, text, a, x, other);
  options.optgetintnr(number, a);
  options.optgetint2nr(number, a);
  options.optgetdblnr(number, x);
  options.optgetdbl2nr(number, x);
  options.optgetstrnr(number, text);
  options.optgetstr2nr(number, text);
  options.optgetenumstrnr(number, text, a);
  std::int32_t count = 0;
  options.optgetenumcount(number, count);
  for (std::int32_t entry = 0; entry <= std::min(count, 20) + 1; ++entry) {
    options.optgetenumvalue(number, entry, a, text);
    options.optgetenumhelp(number, entry, a, text);
  }
}

/// Asks everything of the entries of parameter text.
inline void askentries(tzmaoptions& options) {
  shortstring name, other;
  std::int32_t a = 0, b = 0, c = 0;
  double x = 0;
  const std::int32_t dots = options.optdotoptcount(a), marks = options.optindicatorcount(b);
  for (std::int32_t i = 0; i <= dots + 1; ++i) {
    std::int32_t labels = 0;
    demand(options.optgetdotoptnr(i, name, a, labels, x) == (i >= 1 && i <= dots ? 1 : 0),
           "dot option by number");
    demand(labels <= 20, "a dot option has at most 20 labels");
    for (std::int32_t j = 0; j <= labels + 1; ++j) options.optgetdotoptuel(i, j, name);
  }
  for (std::int32_t i = 0; i <= marks + 1; ++i) {
    demand(options.optgetindicatornr(i, name, other, a, b, c) == (i >= 1 && i <= marks ? 1 : 0),
           "indicator by number");
    demand(a <= 20 && b <= 20, "an indicator has at most 20 labels on each side");
    for (std::int32_t j = 0; j <= 21; ++j) {
      options.optgetequindicatornr(i, j, name);
      options.optgetvarindicatornr(i, j, name);
    }
  }
}

/// Every getter, with good numbers and bad ones, and help in every mode.
inline void askall(tzmaoptions& options) {
  shortstring name, other;
  std::int32_t a = 0, b = 0;
  const std::int32_t count = options.optcount();
  for (std::int32_t i = -1; i <= std::min(count, 60) + 1; ++i)
    askoption(options, i, i >= 1 && i <= count);
  for (std::int32_t i = 0; i <= options.optsynonymcount() + 1; ++i)
    options.optgetsynonym(i, name, other);
  for (std::int32_t i = 0; i <= options.optgroupcount() + 1; ++i)
    options.optgetgroupnr(i, name, a, b, other);
  for (std::int32_t i = 1; i <= std::min(count, 20); ++i) {
    options.optgetnamenr(i, name);
    options.optfindstr(name, a, b);
    options.optgetvalstr(name, other);
    options.optlistcountstr(name);
    options.optreadfromliststr(name, 1, other);
    options.optshowhelp(name);
  }
  askentries(options);
  for (const std::string_view mode : {"", "1", "2", "4", "15", "no such name"})
    options.optshowhelp(mode);
  options.opterrorcount(a, b);
  checkstate(options);
}

}  // namespace optxv::fuzz

/// What a target does first: sends standard output nowhere, since one mode of the help prints
/// there.
extern "C" [[gnu::used]] inline int LLVMFuzzerInitialize(int*, char***) {
  const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere >= 0) ::dup2(nowhere, STDOUT_FILENO);
  return 0;
}
