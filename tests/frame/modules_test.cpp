#include "frame/modules.h"

#include <gtest/gtest.h>

#include <string>

namespace optxv {
namespace {

std::string trace;

TEST(Modules, InitialiseInOrderFinaliseInReverse) {
  const moduleentry table[] = {
      {"one", [] { trace += "+1"; }, [] { trace += "-1"; }},
      {"two", nullptr, [] { trace += "-2"; }},
      {"three", [] { trace += "+3"; }, nullptr},
      {"four", [] { trace += "+4"; }, [] { trace += "-4"; }},
  };
  trace.clear();
  initialisemodules(table);
  EXPECT_EQ(trace, "+1+3+4");
  trace.clear();
  finalisemodules(table);
  EXPECT_EQ(trace, "-4-2-1");
}

}  // namespace
}  // namespace optxv
