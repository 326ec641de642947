#include "stores/datastorage.h"

#include <gtest/gtest.h>

#include "storeaid.h"
#include "stores/densestore.h"
#include "stores/hashedstore.h"
#include "stores/sparsestore.h"
#include "stores/tablestore.h"

namespace optxv {
namespace {

using namespace storeaid;

TEST(Base, KeepsSizesAndItsOwnDefaultData) {
  char bytes[] = "abc";
  const tzemadatastore store(3, 3, bytes);
  EXPECT_EQ(store.keysize(), 12);
  EXPECT_EQ(store.recordsize(), 15);
  bytes[1] = 'x';
  EXPECT_TRUE(store.isdefaultdata("abc"));
  EXPECT_FALSE(store.isdefaultdata("axc"));
  const tzemadatastore bare(1, 0, nullptr);
  EXPECT_EQ(bare.defaultdata(), nullptr);
  EXPECT_TRUE(bare.isdefaultdata(nullptr));
  EXPECT_THROW(tzemadatastore(600000000, 0, nullptr), eoutofmemory);
}

TEST(Base, ComparesKeysOverTheWholeRange) {
  const tzemadatastore store(2, 0, nullptr);
  const struct {
    keyvalue a, b;
    std::int64_t order;
  } table[] = {
      {{1, 2}, {1, 2}, 0},
      {{1, 2}, {1, 5}, -3},
      {{4, 2}, {1, 5}, 3},
      {{lowest, 0}, {highest, 0}, -4294967295},
      {{0, highest}, {0, lowest}, 4294967295},
  };
  for (const auto& [a, b, order] : table) EXPECT_EQ(store.comparekeys(a.data(), b.data()), order);
  EXPECT_EQ(tzemadatastore(0, 0, nullptr).comparekeys(table[1].a.data(), table[2].a.data()), 0);
}

TEST(Base, AbstractOperationsRaise) {
  tzemadatastore store(1, 0, nullptr);
  tzemadatasearcher searcher(store);
  std::int32_t key = 1;
  void* data = nullptr;
  EXPECT_THROW(store.getcount(), eabstracterror);
  EXPECT_THROW(store.clear(), eabstracterror);
  EXPECT_THROW(store.insertrecord(&searcher, &key, nullptr), eabstracterror);
  EXPECT_THROW(store.loadrecord(&key, nullptr), eabstracterror);
  EXPECT_THROW(store.startread(), eabstracterror);
  EXPECT_THROW(store.getnextkey(&key), eabstracterror);
  EXPECT_THROW(store.startassign(), eabstracterror);
  EXPECT_THROW(store.memoryused(), eabstracterror);
  EXPECT_THROW(searcher.search(&key, data), eabstracterror);
}

TEST(Base, GivesBackEveryBlock) {
  const auto held = [] {
    std::int64_t pieces = 0;
    for (const heapslot& slot : zmaheapstate().slots) pieces += slot.getcount - slot.freecount;
    return pieces + zmaheapstate().otherget -
           (zmaheapstate().basebufused + 1);  // blocks hold the pieces
  };
  const std::int64_t before = held(), bytes = allocmemcount() - zmaheapstate().basebufused;
  {
    auto table = make<tzemadatatable>(2);
    auto sparse = make<tzemadatasparse>(2);
    auto hashed = make<tzemadatahashed>(2);
    for (tzemadatastore* store :
         {static_cast<tzemadatastore*>(&table), static_cast<tzemadatastore*>(&sparse),
          static_cast<tzemadatastore*>(&hashed)}) {
      assign(*store, {{{1, 1}, 1}, {{2, 1}, 2}, {{1, 7}, 3}, {{1, 1}, 0}});
      store->startassign();  // and left open
      store->startassign();
    }
    table.freeindex(table.allocindex());
    table.freeptrs(table.allocptrs());
  }
  EXPECT_EQ(held(), before);
  EXPECT_EQ(allocmemcount() - zmaheapstate().basebufused, bytes);
}

template <class Store>
class Order : public testing::Test {};
using Readable = testing::Types<tzemadatatable, tzemadatasparse>;
TYPED_TEST_SUITE(Order, Readable);

TYPED_TEST(Order, IsVerifiedInPrint) {
  const struct {
    rows records;
    std::string brief, all;
  } table[] = {
      {{}, "", ""},
      {{{{1, 2}, 1}, {{1, 30}, 1}}, "", "     1     2\n     1    30\n"},
      {{{{-1, 7}, 1}, {{3, -5}, 1}, {{2, 1000000}, 1}},
       "     3    -5\n     21000000\nKeys out of order\n",
       "    -1     7\n     3    -5\n     21000000\nKeys out of order\n"},
      {{{{-2, 0}, 1}},
       "    -1    -1\n    -2     0\nKeys out of order\n",
       "    -2     0\nKeys out of order\n"},
  };
  for (const auto& [records, brief, all] : table) {
    auto store = make<TypeParam>(2);
    load(store, records);
    testing::internal::CaptureStdout();
    store.verify(false);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), brief);
    testing::internal::CaptureStdout();
    store.verify(true);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), all);
  }
}

/// What every store that can be read does in a bracket and in a read.
template <class Store>
class Bracket : public testing::Test {};
using Growing = testing::Types<tzemadatatable, tzemadatasparse, tzemadatahashed>;
TYPED_TEST_SUITE(Bracket, Growing);

TYPED_TEST(Bracket, DefaultDataMeansNoRecord) {
  auto store = make<TypeParam>(2);
  EXPECT_FALSE(store.startread());
  std::int32_t key[2];
  EXPECT_EQ(store.getnextkey(key), nullptr);
  load(store, {{{1, 1}, 5}, {{1, 3}, 6}, {{2, 1}, 7}});
  store.startassign();
  const keyvalue present = {1, 3}, absent = {1, 2};
  store.assignrecord(absent.data(), &nothing);
  EXPECT_FALSE(store.defaulted());
  EXPECT_EQ(store.getcount(), 3);
  store.assignrecord(present.data(), &nothing);
  EXPECT_TRUE(store.defaulted());
  EXPECT_EQ(store.getcount(), 3) << "stays to the end of the bracket";
  store.endassign();
  EXPECT_EQ(read(store), (rows{{{1, 1}, 5}, {{2, 1}, 7}}));
  assign(store, {{{1, 1}, 0}, {{2, 1}, 0}, {{1, 1}, 9}});
  EXPECT_EQ(read(store), (rows{{{1, 1}, 9}})) << "default for a while only";
  assign(store, {{{1, 1}, 0}});
  EXPECT_EQ(store.getcount(), 0);
  EXPECT_EQ(store.getnextkey(key), nullptr);
  load(store, {{{3, 3}, 1}});
  EXPECT_EQ(read(store), (rows{{{3, 3}, 1}}));
  store.clear();
  EXPECT_EQ(store.getnextkey(key), nullptr);
  EXPECT_TRUE(read(store).empty());
}

}  // namespace
}  // namespace optxv
