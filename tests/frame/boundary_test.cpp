#include "frame/boundary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <new>
#include <string>
#include <tuple>

namespace optxv {
namespace {

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
