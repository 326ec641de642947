// A count of what the whole program, including the loaded library, takes from the heap.
//
// The program defines malloc and its kin; they count and then call the C library's own (the GNU C
// library's __libc_malloc and its kin).
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
