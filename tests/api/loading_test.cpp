// Load and unload through the system's loader. This program is not linked with the library, so that
// it can see it go: every function is asked for by name.

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <fstream>
#include <string>

namespace {

class library {
 public:
  library() : loaded_(dlopen(OPTXV_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL)) {
    EXPECT_NE(loaded_, nullptr) << dlerror();
  }
  ~library() { dlclose(loaded_); }
  library(const library&) = delete;
  library& operator=(const library&) = delete;

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

TEST(Loading, EachLoadStartsAnew) {
  for (int load = 0; load < 2; ++load) {
    library loaded;
    char path[256] = "left over";
    loaded.symbol<void(char*)>("coptgetloadpath")(path);
    EXPECT_STREQ(path, "");
    loaded.symbol<void(const char*)>("coptsetloadpath")("/some/where");
    char line[256] = "";
    loaded.symbol<void(void*, char*)>("coptversion")(nullptr, line);
    EXPECT_EQ(std::string(line).size(), 78U);
  }
  EXPECT_FALSE(isloaded());
}

// A full disk is a failure that no result tells: the process prints a line and ends.
void writetofulldisk(const std::string& definition) {
  dup2(STDERR_FILENO, STDOUT_FILENO);  // where a death test reads
  library loaded;
  void* handle = nullptr;
  loaded.symbol<void(void**)>("xcreate")(&handle);
  loaded.symbol<std::int32_t(void*, const char*)>("coptreaddefinition")(handle, definition.c_str());
  loaded.symbol<void(void*, const char*)>("coptreadfromstr")(handle, "steplim 5");
  loaded.symbol<std::int32_t(void*, const char*)>("coptwriteparameterfile")(handle, "/dev/full");
}

TEST(BoundaryDeathTest, FailedWritePrintsItsLineAndAborts) {
  if (access("/dev/full", W_OK) != 0) GTEST_SKIP() << "no device that is always full";
  const std::string definition = ::testing::TempDir() + "loading.def";
  std::ofstream(definition) << "steplim integer 1 1000 0 5000 5 1 Step limit\n";
  EXPECT_EXIT(writetofulldisk(definition), ::testing::KilledBySignal(SIGABRT),
              ::testing::StartsWith("Q9 Standard Exception Handler: I/O Error. "));
  unlink(definition.c_str());
}

}  // namespace
