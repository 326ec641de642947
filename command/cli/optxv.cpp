// The command optxv: checks, shows, rewrites and documents option definitions and parameter files.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "cli/commandline.h"
#include "output/failure.h"
#include "output/reporter.h"

namespace {

/// Ends the process if memory runs out. This is a handler, not a catch: when the library itself
/// asks for memory, it would otherwise end the process first, in its own words.
[[noreturn]] void outofmemory() {
  command::put(stderr, "optxv: error: out of memory\n");  // it has no buffer to allocate
  std::_Exit(command::statusunusable);
}

/// In place before all other static objects are made, since some of them ask for memory.
const struct handlers {
  handlers() { std::set_new_handler(outofmemory); }
} installed [[gnu::init_priority(101)]];

/// The exit status, once all that was printed has arrived; or that of this failure.
int flushed(int status) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  return command::tell({.what = "standard output: cannot be written", .error = errno});
}

}  // namespace

int main(int count, char** words) {
  try {
    return flushed(command::runcommandline(count, words));
  } catch (const std::bad_alloc&) {  // of what asks for memory by other ways than operator new
    outofmemory();
  }
}
