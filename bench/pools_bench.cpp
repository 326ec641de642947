#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <unordered_map>

#include "foundation/hashedlists.h"
#include "units.h"

namespace optxv::bench {
namespace {

using numbers = std::unordered_map<std::string, std::int32_t>;

std::vector<std::string> namesof(std::int64_t count) {
  std::vector<std::string> names;
  for (std::int64_t i = 0; i < count; ++i)
    names.push_back("variable_" + std::to_string(i) + "(i,j)");
  return names;
}

void addto(txstrpool& pool, const std::string& name) {
  benchmark::DoNotOptimize(pool.add(name));
}

void addto(numbers& map, const std::string& name) {
  benchmark::DoNotOptimize(map.try_emplace(name, static_cast<std::int32_t>(map.size())));
}

template <class Pool>
void fill(Pool& pool, const std::vector<std::string>& names) {
  for (const std::string& name : names) addto(pool, name);
}

/// Adds all names to a new pool, which is then freed.
template <class Pool>
void newnames(benchmark::State& state, const std::vector<std::string>& names) {
  for (auto _ : state) {
    Pool pool;
    fill(pool, names);
  }
}

/// Adds all names once more.
template <class Pool>
void knownnames(benchmark::State& state, const std::vector<std::string>& names) {
  Pool pool;
  fill(pool, names);
  for (auto _ : state) fill(pool, names);
}

}  // namespace

void registerpools() {
  for (const std::int64_t count : {10000, 100000}) {
    const auto names = std::make_shared<const std::vector<std::string>>(namesof(count));
    const auto enrol = [&](const std::string& what, auto run) {
      benchmark::RegisterBenchmark(("pool/" + std::to_string(count) + what).c_str(),
                                   [=](benchmark::State& state) { run(state, *names); });
    };
    enrol("/new/library", newnames<txstrpool>);
    enrol("/new/yardstick", newnames<numbers>);
    enrol("/known/library", knownnames<txstrpool>);
    enrol("/known/yardstick", knownnames<numbers>);
  }
}

std::vector<target> pooltargets() {
  constexpr bounds held = {1.5};
  return {{"10,000 names into a pool, to a standard map", "pool/10000/new/library",
           "pool/10000/new/yardstick", held},
          {"100,000 names into a pool, to a standard map", "pool/100000/new/library",
           "pool/100000/new/yardstick", held},
          {"10,000 names a pool has, to a standard map", "pool/10000/known/library",
           "pool/10000/known/yardstick", held},
          {"100,000 names a pool has, to a standard map", "pool/100000/known/library",
           "pool/100000/known/yardstick", held}};
}

}  // namespace optxv::bench
