// Load and unload through the system's loader. This program is not linked with the library, so that
// it can see it go: every function is asked for by name.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace {

class library {
 public:
  library() : loaded_(dlopen(OPTXV_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL)) {
    EXPECT_NE(loaded_, nullptr) << dlerror();
  }
  ~library() { dlclose(loaded_); }
  template <class Type>
  Type* symbol(const char* name) const {
    void* const address = dlsym(loaded_, name);
    EXPECT_NE(address, nullptr) << name;
    return reinterpret_cast<Type*>(address);
  }

 private:
  void* loaded_;
};

bool isloaded() {
  void* const handle = dlopen(OPTXV_LIBRARY_FILE, RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
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
  ASSERT_FALSE(isloaded());
  {
    library first;
    {
      library second;
      EXPECT_EQ(*second.symbol<std::int32_t>("SYSTEM_dll_refcount"), 1);
    }
    chain = first.symbol<exitprocedure>("SYSTEM_exitproc");
    finalizing = first.symbol<std::int32_t>("_Q9_Finalizing");
    EXPECT_EQ(*finalizing, 0);
    *chain = onexit;

    const auto count = first.symbol<std::int32_t>("SYSTEM_dll_refcount");
    EXPECT_EQ(first.symbol<std::int32_t()>("_Q9_DllInit")(), 0);
    EXPECT_EQ(*count, 2);
    first.symbol<void()>("_Q9_DllFini")();
    EXPECT_EQ(*count, 1);
    EXPECT_EQ(ran, 0);
  }
  EXPECT_EQ(ran, 1);
  EXPECT_FALSE(isloaded());
}

}  // namespace
