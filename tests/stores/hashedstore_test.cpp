#include "stores/hashedstore.h"

#include <gtest/gtest.h>

#include "storeaid.h"

namespace optxv {
namespace {

using namespace storeaid;

TEST(HashTable, HasFiveSizes) {
  tzemahashlist list(1, 0);
  const struct {
    std::int32_t records, buckets, rehashat;
  } table[] = {{0, 997, 1500},
               {1499, 997, 1500},
               {1500, 9973, 15000},
               {14999, 9973, 15000},
               {15000, 99991, 150000},
               {149999, 99991, 150000},
               {150000, 999979, 1500000},
               {1500000, 9999991, highest},
               {highest, 9999991, highest}};
  for (const auto& [records, buckets, rehashat] : table) {
    list.hashtablereset(records);
    EXPECT_EQ(list.hashcount(), buckets) << records;
    EXPECT_EQ(list.rehashat(), rehashat) << records;
  }
}

TEST(HashTable, GrowsOnceItHoldsMoreThanItsLimit) {
  tzemahashlist list(1, 0);
  for (std::int32_t key = 0; key < 1501; ++key) EXPECT_TRUE(list.additem(&key, nullptr));
  EXPECT_EQ(list.hashcount(), 997);
  const std::int32_t key = -1;
  EXPECT_TRUE(list.additem(&key, nullptr));
  EXPECT_EQ(list.hashcount(), 9973);
  EXPECT_EQ(list.memoryused(), 1502 * 12 + 9973 * 4);
}

TEST(HashTable, Hashes) {
  const struct {
    keyvalue key;
    std::int32_t bucket;
  } table[] = {
      {{0, 0, 0}, 0},
      {{0, 0, 996}, 996},
      {{0, 0, 997}, 0},
      {{0, 1, 0}, 1234593 % 997},
      {{0, 1, -1}, 1234592 % 997},
      {{0, 0, -1}, highest % 997},
      {{0, 0, lowest}, 0},
      {{1, 0, 0}, static_cast<std::int32_t>(1234593ULL * 1234593 % 2147483648 % 997)},
  };
  tzemahashlist list(3, 0);
  list.hashall();
  for (const auto& [key, bucket] : table) EXPECT_EQ(list.hash(key.data()), bucket);
}

TEST(Hashed, LoadsTwiceButInsertsOnce) {
  auto store = make<tzemadatahashed>(1);
  load(store, {{{4}, 1}, {{4}, 2}});
  EXPECT_EQ(store.getcount(), 2);
  EXPECT_EQ(store.hashlist().hashcount(), 0);
  const auto from = searcher(store);
  EXPECT_EQ(value(*from, {4}), 2) << "the later one";
  EXPECT_EQ(store.hashlist().hashcount(), 997);
  const std::int32_t key = 4;
  const std::int64_t data = 3;
  store.insertrecord(nullptr, &key, &data);
  EXPECT_EQ(read(store), (rows{{{4}, 1}, {{4}, 3}}));
  load(store, {{{5}, 5}});
  EXPECT_EQ(value(*from, {5}), 5) << "the table is built anew";
}

TEST(Hashed, TakesNoNewRecordBehindASort) {
  auto store = make<tzemadatahashed>(1);
  load(store, {{{1}, 1}, {{2}, 2}});
  EXPECT_EQ(read(store).size(), 2U);
  EXPECT_NE(store.hashlist().linked().tail(), nullptr) << "there was nothing to sort";
  load(store, {{{0}, 5}});
  EXPECT_EQ(read(store).front(), (row{{0}, 5}));
  EXPECT_EQ(store.hashlist().linked().tail(), nullptr);
  EXPECT_THROW(load(store, {{{7}, 7}}), eassertionfailed);
  EXPECT_THROW(assign(store, {{{7}, 7}}), eassertionfailed);
  assign(store, {{{2}, 4}});
  EXPECT_EQ(read(store), (rows{{{0}, 5}, {{1}, 1}, {{2}, 4}}));
  assign(store, {{{2}, 0}});
  assign(store, {{{3}, 3}});
  EXPECT_EQ(read(store), (rows{{{0}, 5}, {{1}, 1}, {{3}, 3}})) << "removal finds the tail";
  store.clear();
  load(store, {{{9}, 9}});
  EXPECT_EQ(read(store), (rows{{{9}, 9}}));
}

class Linked : public testing::Test {
 protected:
  void add(const rows& records) {
    for (const auto& [key, value] : records) list.additem(key.data(), &value);
  }
  rows read(const std::int32_t* order) {
    rows records;
    linkedrecord* cursor = nullptr;
    row next{keyvalue(2), 0};
    list.startread(cursor, order);
    while (list.getnextrecord(cursor, next.first.data(), &next.second)) records.push_back(next);
    return records;
  }
  tlinkeddata list{2, sizeof nothing};
};

TEST_F(Linked, KeepsCountOfKeysAndMemory) {
  EXPECT_EQ(list.minkey(), highest);
  EXPECT_EQ(list.maxkey(), 0);
  add({{{5, 7}, 1}, {{6, -9}, 2}});
  EXPECT_EQ(list.minkey(), -9);
  EXPECT_EQ(list.maxkey(), 7);
  EXPECT_EQ(list.memoryused(), 2 * (8 + 8 + 8));
  list.clear();
  EXPECT_EQ(list.minkey(), highest);
  EXPECT_EQ(list.maxkey(), 0);
  EXPECT_EQ(list.memoryused(), 0);
}

TEST_F(Linked, SortsInAnotherOrderOfTheKey) {
  add({{{2, 1}, 1}, {{1, 2}, 2}, {{2, 1}, 3}, {{1, 1}, 4}});
  const std::int32_t backward[] = {2, 1};
  EXPECT_EQ(read(backward), (rows{{{1, 1}, 4}, {{2, 1}, 1}, {{2, 1}, 3}, {{1, 2}, 2}}));
  EXPECT_EQ(read(nullptr), (rows{{{1, 1}, 4}, {{1, 2}, 2}, {{2, 1}, 1}, {{2, 1}, 3}}));
  EXPECT_EQ(read(backward), read(nullptr)) << "what is in order is left alone";
}

TEST_F(Linked, ListsItsKeys) {
  const std::int32_t** array = nullptr;
  std::int64_t size = 0;
  list.createlist(array, size);
  EXPECT_EQ(size, 1);
  add({{{5, 7}, 1}, {{6, -9}, 2}});
  list.createlist(array, size);
  ASSERT_EQ(size, 3);
  EXPECT_EQ(array[1][1], 7);
  EXPECT_EQ(array[2], tlinkeddata::keyof(list.tail()));
  xreallocmem(array, size * static_cast<std::int64_t>(sizeof *array), 0);
}

TEST_F(Linked, RemovesDefaultsAnywhere) {
  add({{{1, 1}, 0}, {{2, 2}, 1}, {{3, 3}, 0}, {{4, 4}, 2}, {{5, 5}, 0}});
  EXPECT_TRUE(list.removedefaults(&nothing));
  EXPECT_FALSE(list.removedefaults(&nothing));
  EXPECT_EQ(tlinkeddata::keyof(list.tail())[0], 4);
  EXPECT_EQ(read(nullptr), (rows{{{2, 2}, 1}, {{4, 4}, 2}}));
}

}  // namespace
}  // namespace optxv
