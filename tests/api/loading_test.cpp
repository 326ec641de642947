// Load and unload through the system's loader. This program is not linked with the library, so that
// it can see it unloaded: every function is looked up by name.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace {

using loaded = std::unique_ptr<void, int (*)(void*)>;
loaded load(int how = 0) {
  return {dlopen(OPTXV_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL | how), dlclose};
}

template <class Type>
Type* symbol(const loaded& library, const char* name) {
  void* const address = dlsym(library.get(), name);
  EXPECT_NE(address, nullptr) << name;
  return reinterpret_cast<Type*>(address);
}

using exitprocedure = void (*)();
exitprocedure* chain = nullptr;
std::int32_t* finalizing = nullptr;
int ran = 0;

void onexit() {
  *chain = nullptr;
  ran += *finalizing == 1 ? 1 : 100;
}

TEST(Loading, CountsAndFinalisesOnce) {
  ASSERT_EQ(load(RTLD_NOLOAD), nullptr);
  {
    const loaded first = load();
    ASSERT_NE(first, nullptr) << dlerror();
    EXPECT_EQ(*symbol<std::int32_t>(load(), "SYSTEM_dll_refcount"), 1);
    chain = symbol<exitprocedure>(first, "SYSTEM_exitproc");
    finalizing = symbol<std::int32_t>(first, "_Q9_Finalizing");
    EXPECT_EQ(*finalizing, 0);
    *chain = onexit;
    EXPECT_EQ(symbol<std::int32_t()>(first, "_Q9_DllInit")(), 0);
    symbol<void()>(first, "_Q9_DllFini")();
    EXPECT_EQ(ran, 0);
  }
  EXPECT_EQ(ran, 1);
  EXPECT_EQ(load(RTLD_NOLOAD), nullptr);
}

}  // namespace
