// Keeps distances between places in a store: fills it, searches, changes and prunes, and reads it
// in order; then makes a dense copy for fast searches.
#include <optxv/stores/densestore.h>
#include <optxv/stores/sparsestore.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

constexpr double nothing = 0;

void load(optxv::tzemadatastore& store, std::int32_t from, std::int32_t to, double distance) {
  const std::int32_t key[] = {from, to};
  store.loadrecord(key, &distance);
}

void assign(optxv::tzemadatastore& store, std::int32_t from, std::int32_t to, double distance) {
  const std::int32_t key[] = {from, to};
  store.assignrecord(key, &distance);
}

void print(optxv::tzemadatastore& store, std::int32_t from, std::int32_t to) {
  const std::unique_ptr<optxv::tzemadatasearcher> searcher(store.createsearcher());
  const std::int32_t key[] = {from, to};
  void* data = nullptr;
  searcher->startsearch();
  if (!searcher->search(key, data)) {
    std::printf("%d to %d: no way\n", from, to);
    return;
  }
  double distance;
  std::memcpy(&distance, data, sizeof distance);
  std::printf("%d to %d: %g\n", from, to, distance);
}

void printall(optxv::tzemadatastore& store) {
  std::int32_t key[2];
  double distance;
  store.startread();
  while (store.getnextrecord(key, &distance))
    std::printf("  %3d %3d %6g\n", key[0], key[1], distance);
  store.endread();
}

}  // namespace

int main() {
  optxv::tzemadatasparse store(2, sizeof nothing, &nothing);
  load(store, 1, 2, 7.5);  // in ascending order of keys
  load(store, 1, 5, 12);
  load(store, 4, 2, 3.25);
  std::printf("loaded %d records, %d bytes\n", store.getcount(),
              static_cast<int>(store.memoryused()));
  printall(store);

  store.startassign();
  assign(store, 1, 5, 11);       // a new distance
  assign(store, 2, 5, 4);        // a new record
  assign(store, 4, 2, nothing);  // no record any more
  assign(store, 9, 9, nothing);  // still no record
  store.endassign();
  std::printf("changed to %d records, %d bytes\n", store.getcount(),
              static_cast<int>(store.memoryused()));
  printall(store);

  optxv::tzemadatafull dense(store);
  dense.allocatememory(store);
  std::printf("a dense array of %d bytes\n", dense.totalsize());
  print(dense, 2, 5);
  print(dense, 2, 2);
  print(dense, 4, 2);
}
