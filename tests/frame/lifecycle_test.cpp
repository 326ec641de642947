#include "frame/lifecycle.h"

#include <gtest/gtest.h>

#include <string>
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
  trace += 'a';
  trace += _Q9_Finalizing != 0 ? '1' : '0';
}
void second() {
  SYSTEM_exitproc = behindsecond;
  trace += 'b';
}

TEST(LoadSteps, OnlyTheLastUnloadFinalises) {
  ASSERT_EQ(SYSTEM_dll_refcount, 1);  // the loader's own
  EXPECT_EQ(_Q9_DllInit(), SYSTEM_exitcode);
  EXPECT_EQ(SYSTEM_dll_refcount, 2);

  behindfirst = std::exchange(SYSTEM_exitproc, first);
  behindsecond = std::exchange(SYSTEM_exitproc, second);
  _Q9_DllFini();
  EXPECT_EQ(SYSTEM_dll_refcount, 1);
  EXPECT_EQ(trace, "");
  EXPECT_EQ(_Q9_Finalizing, 0);

  _Q9_DllFini();
  EXPECT_EQ(SYSTEM_dll_refcount, 0);
  EXPECT_EQ(trace, "ba1");  // the last that joined goes first
  EXPECT_EQ(_Q9_Finalizing, 1);
  EXPECT_EQ(SYSTEM_exitproc, nullptr);

  _Q9_DllInit();  // as it was, for the loader's unload step
  EXPECT_EQ(SYSTEM_dll_refcount, 1);
}

TEST(LoadSteps, FirstLoadEmptiesTheChainAndFindsTheArguments) {
  _Q9_DllFini();
  SYSTEM_exitproc = first;
  const int count = argumentcount();
  char** const vector = argumentvector();
  setarguments(count + 3, nullptr);
  setioresult(5);
  trace.clear();
  _Q9_DllInit();
  EXPECT_EQ(SYSTEM_exitproc, nullptr);
  EXPECT_EQ(trace, "");
  EXPECT_GE(count, 1);
  EXPECT_EQ(argumentcount(), count);
  EXPECT_EQ(argumentvector(), vector);
  EXPECT_EQ(ioresult(), 0);
}

TEST(Object, FreeStoresNilAndAcceptsIt) {
  const auto blocks = allocmemcount();
  void* one = nullptr;
  void* two = nullptr;
  createobject(one);
  createobject(two);
  EXPECT_NE(one, two);
  freeobject(one);
  EXPECT_EQ(one, nullptr);
  freeobject(one);
  freeobject(two);
  EXPECT_EQ(allocmemcount(), blocks);
}

}  // namespace
}  // namespace optxv
