// A count of what the whole program, the loaded library with it, takes from the heap.
//
// The program defines malloc and its kin; they count and go on to the C library's own (the GNU C
// library, whose __libc_malloc and kin they call).
#pragma once

#include <cstddef>

namespace optxv::bench {

struct heapcount {
  std::size_t calls;  ///< blocks asked for since the program began
  std::size_t bytes;  ///< in use now, the bookkeeping of each block included
  std::size_t peak;   ///< the most that was in use since the last clearpeak()
};

heapcount heapnow();
void clearpeak();

/// The most memory that the process had resident so far, in KiB (Linux: VmHWM).
std::size_t residentpeak();

}  // namespace optxv::bench
