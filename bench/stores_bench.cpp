// The data stores: ascending assigns at three sizes, and the hashed store compared with
// std::unordered_map and std::sort on the same keys.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "stores/hashedstore.h"
#include "stores/sparsestore.h"
#include "stores/tablestore.h"
#include "units.h"

namespace optxv::bench {
namespace {

constexpr int dimension = 3;
constexpr int perlabel = 100;  // values of an integer of a key
constexpr int sizes[] = {10000, 100000, 1000000};
constexpr int hashedsize = 100000, repetitions = 5;
constexpr double nothing = 0, something = 1;

using key = std::array<std::int32_t, dimension>;
using row = std::pair<key, double>;

key keyof(int i) {
  return {i / (perlabel * perlabel), i / perlabel % perlabel, i % perlabel};
}

struct keyhash {
  std::size_t operator()(const key& of) const {
    std::uint32_t h = 0;
    for (const std::int32_t integer : of) h = h * 1234593 + static_cast<std::uint32_t>(integer);
    return h;
  }
};

/// Different keys in random order.
std::vector<key> randomkeys(unsigned seed) {
  std::vector<key> keys;
  for (int i = 0; i < hashedsize; ++i) keys.push_back(keyof(i * 7));
  std::shuffle(keys.begin(), keys.end(), std::mt19937(seed));
  return keys;
}

template <class Store>
void assignascending(benchmark::State& state, int size) {
  for (auto _ : state) {
    Store store(dimension, sizeof nothing, &nothing);
    store.startassign();
    for (int i = 0; i < size; ++i) store.assignrecord(keyof(i).data(), &something);
    store.endassign();
    benchmark::DoNotOptimize(store.getcount());
  }
}

void fill(tzemadatahashed& store, const std::vector<key>& keys) {
  for (const key& each : keys) store.insertrecord(nullptr, each.data(), &something);
}

void insertstore(benchmark::State& state) {
  const auto keys = randomkeys(1);
  for (auto _ : state) {
    tzemadatahashed store(dimension, sizeof nothing, &nothing);
    fill(store, keys);
  }
}

void insertmap(benchmark::State& state) {
  const auto keys = randomkeys(1);
  for (auto _ : state) {
    std::unordered_map<key, double, keyhash> map;
    for (const key& each : keys) map[each] = something;
    benchmark::DoNotOptimize(map.size());
  }
}

void searchstore(benchmark::State& state) {
  tzemadatahashed store(dimension, sizeof nothing, &nothing);
  fill(store, randomkeys(1));
  const std::unique_ptr<tzemadatasearcher> searcher(store.createsearcher());
  const auto keys = randomkeys(2);
  void* data = nullptr;
  for (auto _ : state)
    for (const key& each : keys) benchmark::DoNotOptimize(searcher->search(each.data(), data));
}

void searchmap(benchmark::State& state) {
  std::unordered_map<key, double, keyhash> map;
  for (const key& each : randomkeys(1)) map[each] = something;
  const auto keys = randomkeys(2);
  for (auto _ : state)
    for (const key& each : keys) benchmark::DoNotOptimize(map.find(each));
}

/// The read in order of a store whose records came in random order.
void readstore(benchmark::State& state) {
  const auto keys = randomkeys(1);
  for (auto _ : state) {
    state.PauseTiming();
    tzemadatahashed store(dimension, sizeof nothing, &nothing);
    for (const key& each : keys) store.loadrecord(each.data(), &something);
    row next;
    state.ResumeTiming();
    store.startread();
    while (store.getnextrecord(next.first.data(), &next.second)) benchmark::DoNotOptimize(next);
    state.PauseTiming();
    store.clear();
    state.ResumeTiming();
  }
}

/// The same keys with the same data in a vector of their own, sorted and read.
void readsorted(benchmark::State& state) {
  const auto keys = randomkeys(1);
  for (auto _ : state) {
    state.PauseTiming();
    std::vector<row> rows;
    for (const key& each : keys) rows.emplace_back(each, something);
    state.ResumeTiming();
    std::sort(rows.begin(), rows.end(),
              [](const row& a, const row& b) { return a.first < b.first; });
    for (row next : rows) benchmark::DoNotOptimize(next);
  }
}

std::string assignname(const char* store, int size) {
  return "stores/assign/" + std::string(store) + "/" + std::to_string(size);
}

template <class Store>
void registerassign(const char* store) {
  for (const int size : sizes)
    benchmark::RegisterBenchmark(assignname(store, size).c_str(), assignascending<Store>, size)
        ->Repetitions(repetitions);
}

}  // namespace

void registerstores() {
  registerassign<tzemadatatable>("table");
  registerassign<tzemadatasparse>("trie");
  const std::pair<const char*, void (*)(benchmark::State&)> pairs[] = {
      {"stores/insert/hashed", insertstore}, {"stores/insert/map", insertmap},
      {"stores/search/hashed", searchstore}, {"stores/search/map", searchmap},
      {"stores/read/hashed", readstore},     {"stores/read/sort", readsorted},
  };
  for (const auto& [name, run] : pairs)
    benchmark::RegisterBenchmark(name, run)->Repetitions(repetitions);
}

std::vector<target> storetargets() {
  std::vector<target> rows = {
      {"inserts of the hashed store, to a map", "stores/insert/hashed", "stores/insert/map", {1.5}},
      {"searches of the hashed store, to a map",
       "stores/search/hashed",
       "stores/search/map",
       {1.5}},
      {"read in order of the hashed store, to std::sort",
       "stores/read/hashed",
       "stores/read/sort",
       {1}},
  };
  // A record costs more where the store no longer fits into the caches; a cost that grew with the
  // number of records would be tenfold at each step.
  for (const char* store : {"table", "trie"})
    for (const int size : {sizes[1], sizes[2]})
      rows.push_back({"ascending assigns, a record of many to one of 10,000",
                      assignname(store, size),
                      assignname(store, sizes[0]),
                      {3},
                      static_cast<double>(sizes[0]) / size});
  return rows;
}

}  // namespace optxv::bench
