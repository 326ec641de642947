#include "foundation/runtime.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <functional>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

// So that a sanitised run sees a refused allocation as the plain one does.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}

namespace optxv {
namespace {

constexpr std::int64_t toomuch = std::numeric_limits<std::int64_t>::max() / 2;

/// The message of the exception of class E that the call raises, or what went wrong instead.
template <class E>
std::string messageof(const std::function<void()>& call) {
  try {
    call();
  } catch (const E& failure) {
    return std::string(failure.message.view());
  } catch (...) {
    return "another class";
  }
  return "no exception";
}

TEST(Memory, CountsBytesAndBlocks) {
  const std::int64_t bytes = allocmemsize();
  const std::int64_t blocks = allocmemcount();
  const auto inuse = [&] { return std::pair(allocmemsize() - bytes, allocmemcount() - blocks); };
  using use = std::pair<std::int64_t, std::int64_t>;

  EXPECT_EQ(getmem(0), nullptr);
  EXPECT_EQ(getmem(-5), nullptr);
  freemem(nullptr, 100);
  EXPECT_EQ(inuse(), use(0, 0));

  auto* block = static_cast<char*>(reallocmem(nullptr, 0, 10));
  block[9] = 'x';
  EXPECT_EQ(inuse(), use(10, 1));
  block = static_cast<char*>(reallocmem(block, 10, 5000));
  EXPECT_EQ(block[9], 'x');
  EXPECT_EQ(inuse(), use(5000, 1));
  EXPECT_EQ(reallocmem(block, 5000, -1), nullptr);
  EXPECT_EQ(inuse(), use(0, 0));

  const tobject* object = new eabort("text");
  EXPECT_EQ(inuse(), use(sizeof(eabort), 1));
  delete object;
  EXPECT_EQ(inuse(), use(0, 0));
}

TEST(Memory, RefusalRaisesAndKeepsTheCounts) {
  const std::int64_t bytes = allocmemsize();
  void* block = getmem(16);
  EXPECT_EQ(messageof<eoutofmemory>([] { getmem(toomuch); }), "Out of Memory in New or GetMem. ");
  EXPECT_EQ(messageof<exception>([&] { reallocmem(block, 16, toomuch); }),
            "Out of Memory in ReAllocMem. ");
  EXPECT_EQ(allocmemsize(), bytes) << "the old block is gone";
}

TEST(Exceptions, MessageAndClassOfEachCause) {
  const struct {
    std::string message;
    std::string text;
  } rows[] = {
      {messageof<eassertionfailed>([] { raiseassertion("no room", "lists", 12); }),
       "Assertion Failed. (lists:12) no room\n"},
      {messageof<eabstracterror>([] { raiseabstract(nullptr); }),
       "Call of Abstract Method. Abstract method called\n"},
      {messageof<eabstracterror>([] {
         const eoserror instance("");
         raiseabstract(&instance);
       }),
       "Call of Abstract Method. of class 'eoserror' called\n"},
      {messageof<erangeerror>([] { raiserange(-1, 0, std::numeric_limits<std::int32_t>::min()); }),
       "Range Check Error. Value -1, bounds 0..-2147483648."},
      {messageof<einvalidcast>([] { raisecause(cause::classcast); }),
       "Illegal conversion using 'as' operator. "},
      {messageof<einvalidcast>([] { raisecause(cause::variantcast); }),
       "Illegal Variable Cast Conversion.\n"},
      {messageof<exception>([] { raisecause(cause::emptyset, "here"); }), "Empty Set Error. here"},
      {messageof<exception>([] { raisecause(cause::halt); }), "_Q9_halt. "},
      {messageof<exception>([] { raisecause(cause::unknown); }), "Unknown cause. "},
      {messageof<exception>([] { raisecause(cause::halt, std::string(300, 'x')); }),
       "_Q9_halt. " + std::string(245, 'x')},
  };
  for (const auto& row : rows) EXPECT_EQ(row.message, row.text);
}

TEST(IoResult, IsClearedByReadingAndRaisedByTheCheck) {
  _Q9error_check();
  setioresult(5);
  EXPECT_EQ(ioresult(), 5);
  EXPECT_EQ(ioresult(), 0);

  setioresult(2);
  EXPECT_EQ(messageof<exception>([] { raisecause(cause::halt, "Stop."); }),
            "_Q9_halt. Stop.   IoResult = 2. \n");
  errno = ENOENT;
  EXPECT_EQ(messageof<einouterror>(_Q9error_check),
            "I/O Error.    IoResult = 2. \n\nC OS errno = 2: 'No such file or directory'.\n");
  EXPECT_EQ(errno, 0);
  EXPECT_EQ(ioresult(), 0) << "other causes leave the code, the two of I/O clear it";

  errno = EISDIR;
  EXPECT_EQ(messageof<einouterror>([] { raisecause(cause::iounknown); }),
            "Some Unknown I/O Error. \nC OS errno = 21: 'Is a directory'.\n");
}

/// Runs in a child: lets an exception reach the handler, with standard output sent to the pipe that
/// the death test reads, and a handler for SIGABRT that must not run.
void diewith(const std::function<void()>& call) {
  dup2(2, 1);
  std::signal(SIGABRT, [](int) { _exit(3); });
  try {
    call();
  } catch (...) {
    standardexceptionhandler();
  }
}

TEST(StandardHandlerDeathTest, PrintsItsLineAndAborts) {
  const struct {
    const char* what;
    std::function<void()> call;
    const char* output;
  } rows[] = {
      {"ours", [] { throw econverterror("broken"); }, "^Q9 Standard Exception Handler: broken\n$"},
      {"empty text", [] { throw exception(""); }, "^Q9 Standard Exception Handler: \n$"},
      {"quiet", [] { throw eabort("unseen"); }, "^$"},
      {"foreign", [] { throw std::runtime_error("unseen"); }, "^$"},
      {"foreign memory", [] { throw std::bad_alloc(); },
       "^Q9 Standard Exception Handler: Out of Memory in New or GetMem. \n$"},
  };
  for (const auto& row : rows)
    EXPECT_EXIT(diewith(row.call), testing::KilledBySignal(SIGABRT), row.output) << row.what;
}

TEST(Arguments, AreUnknownUntilSet) {
  EXPECT_EQ(argumentcount(), -1);
  EXPECT_EQ(argumentvector(), nullptr);
  char name[] = "name";
  char* vector[] = {name, nullptr};
  setarguments(1, vector);
  EXPECT_EQ(argumentcount(), 1);
  EXPECT_EQ(argumentvector(), vector);
  setarguments(-1, nullptr);
}

}  // namespace
}  // namespace optxv
