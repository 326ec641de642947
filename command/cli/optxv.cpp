// The command optxv: checks, shows, rewrites and documents option definitions and parameter files.

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "cli/commandline.h"
#include "output/reporter.h"
#include "text/source.h"

namespace {

/// Ends the process if memory runs out. This is a handler, not a catch: when the library itself
/// asks for memory, it would otherwise end the process first, in its own words.
[[noreturn]] void outofmemory() {
  command::put(stderr, "optxv: error: out of memory\n");  // it has no buffer to allocate
  std::_Exit(command::statusunusable);
}

/// Whether all that was printed has arrived.
bool flushed() {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return true;
  command::put(stderr,
               "standard output: error: cannot be written: " + command::systemtext(errno) + '\n');
  return false;
}

}  // namespace

int main(int count, char** words) {
  std::set_new_handler(outofmemory);
  const int status = command::runcommandline(count, words);
  return flushed() ? status : command::statusunusable;
}
