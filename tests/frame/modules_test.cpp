#include "frame/modules.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

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

// Modules may be missing from the table, but those that are there stand in the order of dependency.
TEST(Modules, TableKeepsTheLoadOrder) {
  std::string_view order =
      "q9platform system_q9 q9private exceptions sysutils_q9 math_q9 q9utils q9process q9library "
      "q9ieeefp idglobal_q9 zmagen pchutil strutilx zmaobj zmaspecs dynstr zmalist zmaheap "
      "datastorage miniparser htmlwr zdlaudit zmaoptions";
  for (const moduleentry& module : modules()) {
    const std::size_t place = order.find(module.name);
    ASSERT_NE(place, order.npos) << module.name;
    order.remove_prefix(place + module.name.size());
  }
  EXPECT_EQ(order, "") << "the object comes last";
}

}  // namespace
}  // namespace optxv
