#include "frame/lifecycle.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "foundation/runtime.h"
#include "optxv/optxv.h"

namespace optxv {
namespace {

std::string trace;

// An exit procedure puts back what stood in the chain when it joined.
void (*behindfirst)();
void (*behindsecond)();
void first() {
  SYSTEM_exitproc = behindfirst;
  trace += _Q9_Finalizing != 0 ? "a1" : "a0";
}
void second() {
  SYSTEM_exitproc = behindsecond;
  trace += 'b';
}

TEST(LoadSteps, OnlyTheLastUnloadFinalises) {
  trace.clear();
  ASSERT_EQ(SYSTEM_dll_refcount, 1);  // the loader's own
  EXPECT_EQ(_Q9_DllInit(), SYSTEM_exitcode);
  behindfirst = std::exchange(SYSTEM_exitproc, first);
  behindsecond = std::exchange(SYSTEM_exitproc, second);
  _Q9_DllFini();
  EXPECT_EQ(trace, "");
  _Q9_DllFini();
  EXPECT_EQ(SYSTEM_dll_refcount, 0);
  EXPECT_EQ(trace, "ba1");  // the last that joined goes first
  EXPECT_EQ(SYSTEM_exitproc, nullptr);

  SYSTEM_exitproc = first;  // a first load empties the chain, and finds the arguments anew
  const int count = argumentcount();
  setarguments(count + 3, nullptr);
  setioresult(5);
  _Q9_DllInit();
  EXPECT_EQ(SYSTEM_dll_refcount, 1);
  EXPECT_EQ(SYSTEM_exitproc, nullptr);
  EXPECT_GE(count, 1);
  EXPECT_EQ(argumentcount(), count);
  EXPECT_EQ(ioresult(), 0);
}

TEST(Object, FreeStoresNilAndAcceptsIt) {
  const auto blocks = allocmemcount();
  void* object = nullptr;
  createobject(object);
  EXPECT_GT(allocmemcount(), blocks);
  for (int i = 0; i < 2; ++i) {
    freeobject(object);
    EXPECT_EQ(object, nullptr);
  }
  EXPECT_EQ(allocmemcount(), blocks);
}

}  // namespace
}  // namespace optxv
