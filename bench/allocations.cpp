#include "allocations.h"

#include <malloc.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string>

namespace optxv::bench {
namespace {

// One thread runs the benchmarks, and nothing here may allocate: plain numbers.
heapcount count;

void* taken(void* block) {
  if (block == nullptr) return nullptr;
  ++count.calls;
  count.bytes += malloc_usable_size(block) + sizeof(std::size_t);
  if (count.bytes > count.peak) count.peak = count.bytes;
  return block;
}

void given(void* block) {
  if (block != nullptr) count.bytes -= malloc_usable_size(block) + sizeof(std::size_t);
}

}  // namespace

heapcount heapnow() {
  return count;
}
void clearpeak() {
  count.peak = count.bytes;
}

std::size_t residentpeak() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;)
    if (std::size_t size = 0; word == "VmHWM:" && status >> size) return size;
  return 0;
}

}  // namespace optxv::bench

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

#define OPTXV_SEEN __attribute__((visibility("default")))

OPTXV_SEEN void* malloc(std::size_t size) noexcept {
  return optxv::bench::taken(__libc_malloc(size));
}
OPTXV_SEEN void* calloc(std::size_t number, std::size_t size) noexcept {
  return optxv::bench::taken(__libc_calloc(number, size));
}
OPTXV_SEEN void* realloc(void* block, std::size_t size) noexcept {
  optxv::bench::given(block);
  return optxv::bench::taken(__libc_realloc(block, size));
}
OPTXV_SEEN void* memalign(std::size_t alignment, std::size_t size) noexcept {
  return optxv::bench::taken(__libc_memalign(alignment, size));
}
OPTXV_SEEN void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return memalign(alignment, size);
}
OPTXV_SEEN int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
  *block = memalign(alignment, size);
  return *block == nullptr ? ENOMEM : 0;
}
OPTXV_SEEN void free(void* block) noexcept {
  optxv::bench::given(block);
  __libc_free(block);
}
}
