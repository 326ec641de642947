#include "foundation/runtime.h"

#include <cxxabi.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <typeinfo>

#include "foundation/numtext.h"

namespace optxv {
namespace {

/// A count that two threads of a host may change at once, each with objects of its own: such
/// changes may be lost, as no lock is wanted on this path, but they are no race.
class looselycounted {
 public:
  std::int64_t get() const { return value_.load(std::memory_order_relaxed); }
  void add(std::int64_t n) { value_.store(get() + n, std::memory_order_relaxed); }

 private:
  std::atomic<std::int64_t> value_{0};
};

looselycounted bytesinuse;
looselycounted blocksinuse;
thread_local int lastioresult = 0;  // as errno is
int programargc = -1;
char** programargv = nullptr;

/// A number as a part of a message.
class decimal {
 public:
  explicit decimal(int value) : end_(std::to_chars(text_, text_ + sizeof text_, value).ptr) {}
  operator std::string_view() const { return {text_, static_cast<std::size_t>(end_ - text_)}; }

 private:
  char text_[12];
  char* end_;
};

template <class E>
[[noreturn]] void throwas(std::string_view text) {
  throw E(text);
}

struct causerow {
  cause why;
  std::string_view text;
  void (*raise)(std::string_view);
};

constexpr causerow causes[] = {
    {cause::iocheck, "I/O Error. ", throwas<einouterror>},
    {cause::iounknown, "Some Unknown I/O Error. ", throwas<einouterror>},
    {cause::allocation, "Out of Memory in New or GetMem. ", throwas<eoutofmemory>},
    {cause::reallocation, "Out of Memory in ReAllocMem. ", throwas<exception>},
    {cause::assertion, "Assertion Failed. ", throwas<eassertionfailed>},
    {cause::abstractcall, "Call of Abstract Method. ", throwas<eabstracterror>},
    {cause::classcast, "Illegal conversion using 'as' operator. ", throwas<einvalidcast>},
    {cause::variantcast, "Illegal Variable Cast Conversion.\n", throwas<einvalidcast>},
    {cause::rangecheck, "Range Check Error. ", throwas<erangeerror>},
    {cause::emptyset, "Empty Set Error. ", throwas<exception>},
    {cause::halt, "_Q9_halt. ", throwas<exception>},
    {cause::unknown, "Unknown cause. ", throwas<exception>},
};

constexpr const causerow& rowof(cause why) {
  return causes[static_cast<std::size_t>(why)];
}

constexpr bool inorder() {  // unreached: the compiler runs it
  for (std::size_t i = 0; i < std::size(causes); ++i)
    if (causes[i].why != static_cast<cause>(i)) return false;
  return std::size(causes) == static_cast<std::size_t>(cause::unknown) + 1;
}
static_assert(inorder(), "a row stands at the place of its cause");

/// Adds the operating system's view of an I/O failure, and clears both error codes.
void appendoserror(shortstring& message, int oserror) {
  shortstring text = syserrormessage(oserror);
  if (text.empty()) text.assign("Message not available");
  message.append("\nC OS errno = ").append(decimal(oserror)).append(": '");
  message.append(text).append("'.\n");
  lastioresult = 0;
  errno = 0;
}

/// The class of an instance by its own name, without what it is nested in.
shortstring classname(const tobject& instance) {
  const char* const mangled = typeid(instance).name();
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> plain(
      abi::__cxa_demangle(mangled, nullptr, nullptr, &status), &std::free);
  const std::string_view name = status == 0 ? plain.get() : mangled;
  const std::size_t scope = name.rfind(':');
  return name.substr(scope == std::string_view::npos ? 0 : scope + 1);
}

void printfailure(std::string_view message) {
  constexpr std::string_view head = "Q9 Standard Exception Handler: ";
  std::fwrite(head.data(), 1, head.size(), stdout);
  std::fwrite(message.data(), 1, message.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

/// Where memory runs out, a handler that the program has set has its say first, as with operator
/// new. False if there is none, else there may be room now.
bool madespace() {
  const std::new_handler handler = std::get_new_handler();
  if (handler != nullptr) handler();
  return handler != nullptr;
}

}  // namespace

namespace {

/// A block of size bytes and some more that are not counted.
void* allocated(std::int64_t size, std::int64_t more) {
  void* block = nullptr;
  do block = std::malloc(static_cast<std::size_t>(size + more));
  while (block == nullptr && madespace());
  if (block == nullptr) raisecause(cause::allocation);
  bytesinuse.add(size);
  blocksinuse.add(1);
  return block;
}

/// The block resized, nil if there is no memory, and the old one is then as it was.
void* resized(void* block, std::int64_t oldsize, std::int64_t newsize) {
  void* moved = nullptr;
  do moved = std::realloc(block, static_cast<std::size_t>(newsize));
  while (moved == nullptr && madespace());
  if (moved != nullptr) bytesinuse.add(newsize - oldsize);
  return moved;
}

}  // namespace

void* getmem(std::int64_t size) {
  return size <= 0 ? nullptr : allocated(size, 0);
}

void* gettextmem(std::int64_t size) {
  char* const block = static_cast<char*>(allocated(size, 1));
  block[size] = 0;
  return block;
}

void freemem(void* block, std::int64_t size) noexcept {
  if (block == nullptr) return;
  std::free(block);
  bytesinuse.add(-size);
  blocksinuse.add(-1);
}

void* reallocmem(void* block, std::int64_t oldsize, std::int64_t newsize) {
  if (block == nullptr) return getmem(newsize);
  if (newsize <= 0) {
    freemem(block, oldsize);
    return nullptr;
  }
  void* const moved = resized(block, oldsize, newsize);
  if (moved == nullptr) {
    freemem(block, oldsize);
    raisecause(cause::reallocation);
  }
  return moved;
}

void* growmem(void* block, std::int64_t oldsize, std::int64_t newsize) {
  if (block == nullptr) return getmem(newsize);
  void* const moved = resized(block, oldsize, newsize);
  if (moved == nullptr) raisecause(cause::reallocation);
  return moved;
}

std::int64_t allocmemsize() noexcept {
  return bytesinuse.get();
}
std::int64_t allocmemcount() noexcept {
  return blocksinuse.get();
}

void raisecause(cause why, std::string_view site) {
  const int oserror = errno;
  const causerow& row = rowof(why);
  shortstring message = concat(row.text, site);
  if (lastioresult != 0)
    message.append("   IoResult = ").append(decimal(lastioresult)).append(". \n");
  if (why == cause::iocheck || why == cause::iounknown) appendoserror(message, oserror);
  row.raise(message);
  std::abort();  // not reached: every row raises
}

void raiseassertion(std::string_view text, std::string_view source, int line) {
  raisecause(cause::assertion, concat('(', source, ':', decimal(line), ") ", text, '\n'));
}

void raiseabstract(const tobject* instance) {
  if (instance == nullptr) raisecause(cause::abstractcall, "Abstract method called\n");
  raisecause(cause::abstractcall, concat("of class '", classname(*instance), "' called\n"));
}

void raiserange(std::int32_t value, std::int32_t lower, std::int32_t upper) {
  raisecause(cause::rangecheck, concat("Value ", decimal(value), ", bounds ", decimal(lower), "..",
                                       decimal(upper), "."));
}

void standardexceptionhandler() noexcept {
  try {
    throw;
  } catch (const eabort&) {
  } catch (const exception& failure) {
    printfailure(failure.message);
  } catch (const std::bad_alloc&) {
    printfailure(rowof(cause::allocation).text);
  } catch (...) {
  }
  std::signal(SIGABRT, SIG_DFL);
  std::abort();
}

void setioresult(int code) noexcept {
  lastioresult = code;
}

int ioresult() noexcept {
  const int code = lastioresult;
  lastioresult = 0;
  return code;
}

void _Q9error_check() {
  if (lastioresult != 0) raisecause(cause::iocheck);
}

int argumentcount() noexcept {
  return programargc;
}
char** argumentvector() noexcept {
  return programargv;
}

void setarguments(int count, char** vector) noexcept {
  programargc = count;
  programargv = vector;
}

}  // namespace optxv
