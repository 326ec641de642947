#include "frame/lifecycle.h"

#include <utility>

#include "foundation/runtime.h"
#include "frame/boundary.h"
#include "frame/modules.h"
#include "options/zmaoptions.h"
#include "platform/arguments.h"

#define OPTXV_NO_MIXED_CASE_NAMES
#include "optxv/optxv.h"

// All constants: the loader may run the load step before any initialisation of our own.
std::int32_t SYSTEM_dll_refcount = 0;
std::int32_t SYSTEM_exitcode = 0;
void (*SYSTEM_exitproc)(void) = nullptr;
std::int32_t _Q9_Finalizing = 0;

namespace optxv {

namespace {

// A library has no arguments of its own, and no exit procedure from an earlier load. The arguments
// of the program come with the modules, from what is known of them.
void readyruntime() {
  setarguments(-1, nullptr);
  setioresult(0);
  SYSTEM_exitproc = nullptr;
}

// REQUIRES: every exit procedure takes itself out of the chain.
void runexitprocedures() {
  while (SYSTEM_exitproc != nullptr) SYSTEM_exitproc();
}

// In a program that the static library is a part of, 101 makes these the first step of all and the
// last: the initialisers of the program may use the library.
#if defined(__GLIBC__)
// glibc passes every constructor what it passes to main; other systems pass it nothing.
[[gnu::constructor(101)]] void atload(int count, char** vector, char**) {
  keephostarguments(count, vector);
  _Q9_DllInit();
}
#else
[[gnu::constructor(101)]] void atload() {
  _Q9_DllInit();
}
#endif
[[gnu::destructor(101)]] void atunload() {
  _Q9_DllFini();
}

}  // namespace

void createobject(void*& handle) {
  handle = new tzmaoptions;
}

void freeobject(void*& handle) {
  delete static_cast<tzmaoptions*>(std::exchange(handle, nullptr));
}

}  // namespace optxv

using namespace optxv;

std::int32_t _Q9_DllInit() {
  if (SYSTEM_dll_refcount++ == 0) {
    atboundary([] {
      readyruntime();
      initialisemodules(modules());
    });
  }
  return SYSTEM_exitcode;
}

void _Q9_DllFini() {
  if (--SYSTEM_dll_refcount != 0) return;
  atboundary([] {
    _Q9_Finalizing = 1;
    runexitprocedures();
    finalisemodules(modules());
  });
}
