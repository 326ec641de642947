#include "stores/datastorage.h"

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

using namespace storeaid;
using std::string;

/// What the keys and data of one run are drawn from.
struct shape {
  std::int32_t n, datasize;
  std::vector<std::int32_t> values;
  int assigns;
};

/// All stores, and a std::map, go through the same loads, brackets, searches and reads.
class agreement {
 public:
  explicit agreement(const shape& of) : of_(of) {}
  void run() {
    for (int i = 0; i < of_.assigns; ++i) model_[somekey()] = somedata();
    for (tzemadatastore* store : stores_) loadmodel(*store);
    if (of_.values[0] >= 0) comparedense();
    for (int round = 0; round < 6; ++round) {
      bracket(round % 2 == 0);
      compare();
      // The hashed store takes no new records after a read that moved some, until it is cleared.
      if (hashed_.hashlist().linked().tail() != nullptr) continue;
      hashed_.clear();
      loadmodel(hashed_);
    }
    for (tzemadatastore* store : stores_) store->clear();
    model_.clear();
    compare();
  }

 private:
  keyvalue somekey() {
    keyvalue key(static_cast<std::size_t>(of_.n));
    for (std::int32_t& integer : key) integer = of_.values[random_() % of_.values.size()];
    return key;
  }
  string somedata() {
    string data = none_;
    if (random_() % 4 != 0)
      for (char& byte : data) byte = static_cast<char>(random_() % 3);
    return data;
  }

  void loadmodel(tzemadatastore& store) {
    for (const auto& [key, data] : model_) store.loadrecord(key.data(), data.data());
  }

  void bracket(bool inorder) {
    std::vector<std::pair<keyvalue, string>> changes;
    for (int i = 0; i < of_.assigns; ++i) changes.emplace_back(somekey(), somedata());
    if (inorder) std::sort(changes.begin(), changes.end());
    for (tzemadatastore* store : stores_) store->startassign();
    bool defaulted = false;
    for (const auto& [key, data] : changes) {
      const bool known = model_.count(key) != 0, none = of_.datasize != 0 && data == none_;
      defaulted |= known && none;
      if (known || !none) model_[key] = data;
      for (tzemadatastore* store : stores_) store->assignrecord(key.data(), data.data());
    }
    for (tzemadatastore* store : stores_) {
      EXPECT_EQ(store->defaulted(), defaulted);
      store->endassign();
    }
    auto gone = defaulted ? std::erase_if(model_, [&](auto& r) { return r.second == none_; }) : 0;
    EXPECT_EQ(table_.defaulted(), gone != 0);
  }

  void compareread(tzemadatastore& store) {
    std::map<keyvalue, string> found;
    keyvalue key(static_cast<std::size_t>(of_.n)), last;
    string data = none_;
    ASSERT_EQ(store.startread(), !model_.empty());
    while (store.getnextrecord(key.data(), data.data())) {
      EXPECT_TRUE(found.empty() || last < key);
      found[last = key] = data;
    }
    store.endread();
    ASSERT_EQ(found, model_);
  }

  void comparesearches(tzemadatastore& store, bool defaultisfound) {
    const auto from = searcher(store);
    for (int i = 0; i < of_.assigns; ++i) {
      const keyvalue key = somekey();
      const auto known = model_.find(key);
      void* data = nullptr;
      const bool expected = known != model_.end() && (defaultisfound || known->second != none_);
      ASSERT_EQ(from->search(key.data(), data), expected);
      ASSERT_TRUE(!expected || std::memcmp(data, known->second.data(), none_.size()) == 0);
    }
  }

  void compare() {
    for (tzemadatastore* store : stores_) {
      ASSERT_EQ(store->getcount(), static_cast<std::int32_t>(model_.size()));
      comparesearches(*store, true);
      compareread(*store);
      comparesearches(*store, true);
    }
  }

  void comparedense() {
    for (tzemadatastore* source : stores_) {
      tzemadatafull dense(*source);
      dense.allocatememory(*source);
      comparesearches(dense, false);
    }
  }

  shape of_;
  std::mt19937 random_{1};
  string none_ = string(static_cast<std::size_t>(of_.datasize), 1);
  std::map<keyvalue, string> model_;
  tzemadatatable table_{of_.n, of_.datasize, none_.data()};
  tzemadatasparse sparse_{of_.n, of_.datasize, none_.data()};
  tzemadatahashed hashed_{of_.n, of_.datasize, none_.data()};
  tzemadatastore* stores_[3] = {&table_, &sparse_, &hashed_};
};

const std::vector<shape> shapes = {{1, 8, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, 12},
                                   {1, 1, {lowest, lowest + 1, -1, 0, highest - 1, highest}, 6},
                                   {2, 0, {0, 3, 5, 1000, 70000}, 20},
                                   {3, 300, {0, 1, 2, 5}, 50},
                                   {4, 8, {lowest, 7, highest}, 60},
                                   {3, 8, {-27, -24, -9, -3, 0, 3, 6, 9, 12, 33, 57}, 500}};

TEST(Stores, AgreeWithAMapAndGiveBackEveryBlock) {
  const auto held = [&heap = zmaheapstate()] {
    std::int64_t pieces = heap.otherget - (heap.basebufused + 1);  // blocks hold the pieces
    for (const heapslot& slot : heap.slots) pieces += slot.getcount - slot.freecount;
    return std::pair(pieces, allocmemcount() - heap.basebufused);
  };
  for (const shape& of : shapes) {
    const auto before = held();
    agreement(of).run();
    if (HasFatalFailure()) return;
    EXPECT_TRUE(of.values[0] >= 0 || held() == before);  // dense ones keep theirs
  }
}

/// A store of which no operation is there.
struct bare : tzemadatastore, tzemadatasearcher {
  bare()
      : tzemadatastore(1, sizeof nothing, &nothing),
        tzemadatasearcher(static_cast<tzemadatastore&>(*this)) {}
};

TEST(Stores, WithoutAnOperationRaise) {
  bare store;
  void* data = nullptr;
  const std::int32_t key = 1;
  EXPECT_THROW(store.getcount(), eabstracterror);
  EXPECT_THROW(store.clear(), eabstracterror);
  EXPECT_THROW(store.loadrecord(&key, &nothing), eabstracterror);
  EXPECT_THROW(store.getnextkey(nullptr), eabstracterror);
  EXPECT_THROW(store.memoryused(), eabstracterror);
  EXPECT_THROW(store.createsearcher(), eabstracterror);
  EXPECT_THROW(store.search(&key, data), eabstracterror);
}

TEST(Stores, ReportKeysOutOfOrder) {
  holding<tzemadatatable> store(2, {{{1, 2}, 1}, {{-7, 20}, 2}, {{3, 0}, 3}});
  const auto told = [&](bool printall) {
    testing::internal::CaptureStdout();
    store.verify(printall);
    return testing::internal::GetCapturedStdout();
  };
  const std::string wrong = "     1     2\n    -7    20\nKeys out of order\n";
  EXPECT_EQ(told(false), wrong);
  EXPECT_EQ(told(true), wrong + "     3     0\n");
  std::int32_t* const key = store.allocindex();
  void** const places = store.allocptrs();
  void** const more = store.allocptrs();
  const auto apart = reinterpret_cast<char*>(more) - reinterpret_cast<char*>(places);
  EXPECT_GE(std::abs(apart), 3 * static_cast<std::ptrdiff_t>(sizeof(void*)));
  store.freeptrs(more);
  key[1] = 5, places[2] = nullptr;
  store.freeindex(key);
  store.freeptrs(places);
}

}  // namespace
}  // namespace optxv
