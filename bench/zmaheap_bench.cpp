// The pool allocator compared with the system's: many small records are got in turn, and given back
// in random order. A round is 100,000 records, and 100 rounds are measured. The system's side calls
// the C library without the count that this program adds to it.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

#include "listing/zmaheap.h"
#include "units.h"

extern "C" {
void* __libc_malloc(std::size_t size);
void __libc_free(void* block);
}

namespace optxv::bench {
namespace {

constexpr std::size_t records = 100000;
constexpr std::int32_t smallest = 16, largest = 256;
constexpr int rounds = 100, repetitions = 3;

struct work {
  std::vector<std::int32_t> sizes;   ///< in the order of the gets
  std::vector<std::uint32_t> frees;  ///< indices of records, in the order of the frees
};

work randomwork() {
  std::mt19937 random(20260101);
  std::uniform_int_distribution<std::int32_t> size(smallest, largest);
  work made{std::vector<std::int32_t>(records), std::vector<std::uint32_t>(records)};
  for (std::int32_t& each : made.sizes) each = size(random);
  std::iota(made.frees.begin(), made.frees.end(), 0u);
  std::shuffle(made.frees.begin(), made.frees.end(), random);
  return made;
}

template <class Get, class Free>
void run(benchmark::State& state, Get get, Free free) {
  const work todo = randomwork();
  std::vector<void*> held(records);
  for (auto _ : state) {
    for (std::size_t i = 0; i < records; ++i) held[i] = get(todo.sizes[i]);
    for (const std::uint32_t i : todo.frees) free(held[i], todo.sizes[i]);
  }
}

void pool(benchmark::State& state) {
  run(state, xgetmem, xfreemem);
  zmaheaprelease();
}

void system(benchmark::State& state) {
  run(
      state, [](std::int32_t size) { return __libc_malloc(static_cast<std::size_t>(size)); },
      [](void* record, std::int32_t) { __libc_free(record); });
}

}  // namespace

void registerheap() {
  for (auto* each : {benchmark::RegisterBenchmark("heap/pool", pool),
                     benchmark::RegisterBenchmark("heap/system", system)})
    each->Iterations(rounds)->Repetitions(repetitions);
}

std::vector<target> heaptargets() {
  return {
      {"10,000,000 small records, to the system's heap", "heap/pool", "heap/system", {1.0 / 3}}};
}

}  // namespace optxv::bench
