// All stores, and a std::map, go through the same loads, brackets, searches and reads.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>

#include "storeaid.h"
#include "stores/densestore.h"
#include "stores/hashedstore.h"
#include "stores/sparsestore.h"
#include "stores/tablestore.h"

namespace optxv {
namespace {

using std::string;
using storeaid::highest;
using storeaid::keyvalue;
using storeaid::lowest;

/// What the keys and data of one run are drawn from.
struct shape {
  std::int32_t n;
  std::size_t datasize;
  std::vector<std::int32_t> values;
  int assigns;
};

class agreement {
 public:
  agreement(const shape& of, unsigned seed) : of_(of), random_(seed) {}

  void run() {
    loadall();
    for (int round = 0; round < 6; ++round) {
      bracket(round % 2 == 0);
      compare();
      if (round == 3) comparedense();
      afterread();
    }
    for (tzemadatastore* store : stores_) store->clear();
    model_.clear();
    compare();
  }

 private:
  using records = std::map<keyvalue, string>;

  keyvalue somekey() {
    keyvalue key(static_cast<std::size_t>(of_.n));
    for (std::int32_t& integer : key) integer = of_.values[random_() % of_.values.size()];
    return key;
  }
  string somedata() {
    if (random_() % 4 == 0) return none_;
    string data = none_;
    for (char& byte : data) byte = static_cast<char>(random_() % 3);
    return data;
  }

  void loadall() {
    for (int i = 0; i < of_.assigns; ++i) model_[somekey()] = somedata();
    for (const auto& [key, data] : model_)
      for (tzemadatastore* store : stores_) store->loadrecord(key.data(), data.data());
  }

  void assignmodel(const keyvalue& key, const string& data) {
    if (of_.datasize == 0 || data != none_ || model_.count(key) != 0) model_[key] = data;
  }

  void bracket(bool inorder) {
    std::vector<std::pair<keyvalue, string>> changes;
    for (int i = 0; i < of_.assigns; ++i) changes.emplace_back(somekey(), somedata());
    if (inorder) std::sort(changes.begin(), changes.end());
    for (tzemadatastore* store : stores_) store->startassign();
    for (const auto& [key, data] : changes) {
      assignmodel(key, data);
      for (tzemadatastore* store : stores_) store->assignrecord(key.data(), data.data());
    }
    bool defaulted = false;
    for (tzemadatastore* store : stores_) {
      defaulted = store->defaulted();
      store->endassign();
    }
    if (defaulted) std::erase_if(model_, [this](const auto& row) { return row.second == none_; });
  }

  records readall(tzemadatastore& store) {
    records found;
    keyvalue key(static_cast<std::size_t>(of_.n)), last;
    string data = none_;
    if (!store.startread()) return found;
    while (store.getnextrecord(key.data(), data.data())) {
      EXPECT_TRUE(found.empty() || last < key);
      found[last = key] = data;
    }
    store.endread();
    return found;
  }

  void comparesearches(tzemadatastore& store, bool defaultisfound) {
    const auto from = storeaid::searcher(store);
    for (int i = 0; i < of_.assigns; ++i) {
      const keyvalue key = somekey();
      const auto known = model_.find(key);
      void* data = nullptr;
      const bool expected = known != model_.end() && (defaultisfound || known->second != none_);
      ASSERT_EQ(from->search(key.data(), data), expected);
      if (!expected) continue;
      ASSERT_EQ(string(static_cast<const char*>(data), of_.datasize), known->second);
    }
  }

  void compare() {
    for (tzemadatastore* store : stores_) {
      ASSERT_EQ(store->getcount(), static_cast<std::int32_t>(model_.size()));
      comparesearches(*store, true);
      ASSERT_EQ(readall(*store), model_);
      comparesearches(*store, true);
    }
  }

  void comparedense() {
    if (*std::min_element(of_.values.begin(), of_.values.end()) < 0) return;
    for (tzemadatastore* source : stores_) {
      tzemadatafull dense(*source);
      dense.allocatememory(*source);
      EXPECT_EQ(dense.getcount(), source->getcount());
      comparesearches(dense, false);
    }
  }

  /// The hashed store takes no new records behind a read that moved some, until it is cleared.
  void afterread() {
    if (hashed_.hashlist().linked().tail() != nullptr) return;
    hashed_.clear();
    for (const auto& [key, data] : model_) hashed_.loadrecord(key.data(), data.data());
  }

  shape of_;
  std::mt19937 random_;
  string none_ = string(of_.datasize, 1);
  records model_;
  tzemadatatable table_{of_.n, static_cast<std::int32_t>(of_.datasize), none_.data()};
  tzemadatasparse sparse_{of_.n, static_cast<std::int32_t>(of_.datasize), none_.data()};
  tzemadatahashed hashed_{of_.n, static_cast<std::int32_t>(of_.datasize), none_.data()};
  tzemadatastore* stores_[3] = {&table_, &sparse_, &hashed_};
};

TEST(Agreement, OfAllStoresWithAMap) {
  const shape shapes[] = {
      {1, 8, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, 12},
      {1, 1, {lowest, lowest + 1, -1, 0, 1, highest - 1, highest}, 6},
      {2, 0, {0, 3, 5, 1000, 70000}, 20},
      {2, 3, {-3, -2, -1, 0, 1, 2, 3}, 40},
      {3, 300, {0, 1, 2, 5}, 50},
      {4, 8, {lowest, 7, highest}, 60},
      {6, 16, {0, 1}, 40},
  };
  unsigned seed = 1;
  for (const shape& of : shapes) {
    SCOPED_TRACE(seed);
    agreement(of, seed++).run();
    if (HasFatalFailure()) return;
  }
}

TEST(Agreement, InLongRandomRuns) {
  shape of{3, 8, {}, 500};
  for (std::int32_t i = -9; i < 20; ++i) of.values.push_back(i * 3);
  for (unsigned seed = 100; seed < 102; ++seed) {
    SCOPED_TRACE(seed);
    agreement(of, seed).run();
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace optxv
