#include "foundation/runtime.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <tuple>

// So that a sanitised run sees a refused allocation as the plain one does.
extern "C" const char* __asan_default_options();
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1";
}

namespace optxv {
namespace {

/// The message of the exception of class E that the call raises.
template <class E>
std::string messageof(const std::function<void()>& call) {
  try {
    call();
  } catch (const E& failure) {
    return std::string(failure.message.view());
  }
  return "no exception";
}

TEST(Memory, CountsBytesAndBlocks) {
  const std::int64_t bytes = allocmemsize(), blocks = allocmemcount();
  const auto inuse = [&] { return std::tuple(allocmemsize() - bytes, allocmemcount() - blocks); };
  EXPECT_EQ(getmem(-5), nullptr);
  freemem(nullptr, 100);
  auto* block = static_cast<char*>(reallocmem(nullptr, 0, 10));
  block[9] = 'x';
  EXPECT_EQ(inuse(), std::tuple(10, 1));
  block = static_cast<char*>(reallocmem(block, 10, 5000));
  EXPECT_EQ(block[9], 'x');
  EXPECT_EQ(inuse(), std::tuple(5000, 1));
  EXPECT_EQ(reallocmem(block, 5000, -1), nullptr);
  EXPECT_EQ(inuse(), std::tuple(0, 0));
  block = static_cast<char*>(getmem(16));
  constexpr std::int64_t toomuch = std::numeric_limits<std::int64_t>::max() / 2;
  EXPECT_EQ(messageof<eoutofmemory>([] { getmem(toomuch); }), "Out of Memory in New or GetMem. ");
  EXPECT_EQ(messageof<exception>([&] { reallocmem(block, 16, toomuch); }),
            "Out of Memory in ReAllocMem. ");
  std::set_new_handler([] { std::set_new_handler(nullptr); });
  EXPECT_THROW(getmem(toomuch), eoutofmemory);
  EXPECT_EQ(std::get_new_handler(), nullptr) << "the program's handler is asked for room first";
  EXPECT_EQ(inuse(), std::tuple(0, 0)) << "a refusal keeps the counts, but the old block is gone";
}

TEST(Exceptions, MessageAndClassOfEachCause) {
  const eoserror instance("");
  EXPECT_EQ(messageof<eassertionfailed>([] { raiseassertion("no room", "lists", 12); }),
            "Assertion Failed. (lists:12) no room\n");
  EXPECT_EQ(messageof<eabstracterror>([&] { raiseabstract(&instance); }),
            "Call of Abstract Method. of class 'eoserror' called\n");
  EXPECT_EQ(messageof<eabstracterror>([] { raiseabstract(nullptr); }),
            "Call of Abstract Method. Abstract method called\n");
  EXPECT_EQ(messageof<erangeerror>([] { raiserange(-1, 0, -2147483647 - 1); }),
            "Range Check Error. Value -1, bounds 0..-2147483648.");
  EXPECT_EQ(messageof<exception>([] { raisecause(cause::halt, std::string(300, 'x')); }),
            "_Q9_halt. " + std::string(245, 'x'));
}

TEST(IoResult, IsClearedByReadingAndRaisedByTheCheck) {
  _Q9error_check();
  setioresult(2);
  errno = ENOENT;
  EXPECT_EQ(messageof<einouterror>(_Q9error_check),
            "I/O Error.    IoResult = 2. \n\nC OS errno = 2: 'No such file or directory'.\n");
  EXPECT_EQ(errno, 0);
  EXPECT_EQ(ioresult(), 0);
}

}  // namespace
}  // namespace optxv
