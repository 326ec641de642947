// The command optxv: checks, shows, rewrites and documents option definitions and parameter files.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "cli/commandline.h"
#include "output/failure.h"
#include "output/reporter.h"

namespace {

/// Ends the process where memory runs out. As a handler, not as a catch, since the library would
/// end it first, in its own words, where it is the library that asks for memory.
[[noreturn]] void outofmemory() {
  command::put(stderr, "optxv: error: out of memory\n");  // it has no buffer to allocate
  std::_Exit(command::statusunusable);
}

/// The exit status, once all that was printed has arrived; or that of this failure.
int flushed(int status) {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
  return command::tell({.what = "standard output: cannot be written", .error = errno});
}

}  // namespace

int main(int count, char** words) {
  std::set_new_handler(outofmemory);
  return flushed(command::runcommandline(count, words));
}
