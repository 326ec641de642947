#include "frame/api.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <new>
#include <string>
#include <tuple>

namespace optxv {
namespace {

// Stand-ins for methods: functions that need no object.
std::string seen;
void take(std::string_view text) {
  seen = text;
}
void leave(shortstring&) {}
void giveboth(shortstring& first, shortstring& second) {
  first.assign("1");
  second.assign("22");
}

TEST(Texts, InOfEachLength) {
  unsigned char text[256];
  for (const int length : {0, 1, 254, 255}) {
    std::fill_n(text, 256, 'x');
    text[0] = static_cast<unsigned char>(length);
    optcall<take>(nullptr, static_cast<const unsigned char*>(text));
    EXPECT_EQ(seen, std::string(static_cast<std::size_t>(length), 'x'));
  }
}

TEST(Texts, OutUntouchedAndInOrder) {
  unsigned char bounded[256] = "\3abc";
  optcall<leave>(nullptr, static_cast<unsigned char*>(bounded));
  EXPECT_EQ(given(static_cast<unsigned char*>(bounded)).view(), "abc");
  char shared[256] = "abc";
  coptcall<leave>(nullptr, static_cast<char*>(shared));
  EXPECT_STREQ(shared, "");
  coptcall<giveboth>(nullptr, static_cast<char*>(shared), static_cast<char*>(shared));
  EXPECT_STREQ(shared, "22");
}

void fail(std::string_view text) {
  dup2(STDERR_FILENO, STDOUT_FILENO);           // the line goes where a death test looks
  std::signal(SIGABRT, [](int) { _exit(3); });  // must not run
  if (text == "abort") throw eabort("not to be seen");
  if (text == "memory") throw std::bad_alloc();
  if (text == "foreign") throw 5;
  throw einouterror("the disk is full");
}

TEST(BoundaryDeathTest, NoExceptionCrosses) {
  const std::tuple<const char*, const char*> rows[] = {
      {"io", "Q9 Standard Exception Handler: the disk is full\n"},
      {"memory", "Q9 Standard Exception Handler: Out of Memory in New or GetMem. \n"},
      {"abort", ""},
      {"foreign", ""}};
  for (const auto& [how, output] : rows)
    EXPECT_EXIT(coptcall<fail>(nullptr, how), ::testing::KilledBySignal(SIGABRT),
                ::testing::Matcher<const std::string&>(::testing::StrEq(output)))
        << how;
}

}  // namespace
}  // namespace optxv
