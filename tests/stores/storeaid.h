// What the tests of the stores share: records of an integer each, in and out.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <vector>

#include "stores/datastorage.h"

namespace optxv::storeaid {

using keyvalue = std::vector<std::int32_t>;
using row = std::pair<keyvalue, std::int64_t>;
using rows = std::vector<row>;

inline constexpr std::int64_t nothing = 0;  ///< the default data
inline constexpr std::int32_t lowest = INT32_MIN, highest = INT32_MAX;

inline void load(tzemadatastore& store, const rows& records) {
  for (const auto& [key, value] : records) store.loadrecord(key.data(), &value);
}

/// A store with these records.
template <class Store>
struct holding : Store {
  explicit holding(std::int32_t n, const rows& records = {}) : Store(n, sizeof nothing, &nothing) {
    load(*this, records);
  }
};

/// All in one bracket.
inline void assign(tzemadatastore& store, const rows& records) {
  store.startassign();
  for (const auto& [key, value] : records) store.assignrecord(key.data(), &value);
  store.endassign();
}

/// All records in the order in which the store reads them.
inline rows read(tzemadatastore& store) {
  rows records;
  row next{keyvalue(static_cast<std::size_t>(store.dimension())), 0};
  if (!store.startread()) return records;
  while (store.getnextrecord(next.first.data(), &next.second)) records.push_back(next);
  store.endread();
  return records;
}

inline std::unique_ptr<tzemadatasearcher> searcher(tzemadatastore& store) {
  std::unique_ptr<tzemadatasearcher> made(store.createsearcher());
  made->startsearch();
  return made;
}

/// The value of a key, or -1.
inline std::int64_t value(tzemadatasearcher& searcher, const keyvalue& key) {
  void* data = nullptr;
  std::int64_t found = -1;
  if (searcher.search(key.data(), data)) std::memcpy(&found, data, sizeof found);
  return found;
}

}  // namespace optxv::storeaid
