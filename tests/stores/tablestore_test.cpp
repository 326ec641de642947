#include "stores/tablestore.h"

#include <gtest/gtest.h>

#include "storeaid.h"

namespace optxv {
namespace {

using namespace storeaid;

TEST(RecordList, GrowsFourfold) {
  treclist list(4);
  std::vector<std::int32_t> changes;
  for (std::int32_t i = 0, seen = 0; i < 257; ++i) {
    list.additem();
    if (list.capacity() != seen) changes.insert(changes.end(), {i, seen = list.capacity()});
  }
  EXPECT_EQ(changes, (std::vector{0, 16, 16, 64, 64, 256, 256, 1024}));
  list.setcapacity(3);
  EXPECT_EQ(list.capacity(), 257) << "never below the count";
  list.clear();
  EXPECT_EQ(list.capacity(), 0);
  list.setcapacity(1048576);
  list.grow();
  EXPECT_EQ(list.capacity(), 1310720);
}

/// Keys 10, 20 and so on to 200: the place of key k is k / 10 - 1.
class Finger : public testing::Test {
 protected:
  Finger() {
    for (std::int32_t key = 10; key <= 200; key += 10) load(store, {{{key}, key}});
  }
  tzemadatatable store = make<tzemadatatable>(1);
};

TEST_F(Finger, FindsEveryPlaceFromEveryPlace) {
  tzemadatatablesearcher from(store);
  for (std::int32_t start = 10; start <= 200; start += 10)
    for (std::int32_t key = 5; key <= 205; key += 5) {
      ASSERT_EQ(value(from, {start}), start);
      EXPECT_EQ(value(from, {key}), key % 10 == 0 ? key : -1);
      EXPECT_EQ(from.position(), (key + 9) / 10 - 1) << start << " to " << key;
    }
}

TEST_F(Finger, SurvivesAStoreThatShrank) {
  const auto from = searcher(store);
  EXPECT_EQ(value(*from, {200}), 200);
  store.clear();
  EXPECT_EQ(value(*from, {200}), -1);
  load(store, {{{1}, 1}});
  EXPECT_EQ(value(*from, {1}), 1);
}

TEST(Table, SortsLoadsOutOfOrder) {
  auto store = make<tzemadatatable>(2);
  store.sort();
  load(store, {{{2, lowest}, 1}, {{highest, 0}, 2}, {{lowest, 0}, 3}, {{2, highest}, 4}});
  store.sort();
  EXPECT_EQ(read(store),
            (rows{{{lowest, 0}, 3}, {{2, lowest}, 1}, {{2, highest}, 4}, {{highest, 0}, 2}}));
}

TEST(Table, ReckonsMemory) {
  tzemadatatable store(3, 5, "12345");
  EXPECT_EQ(store.memoryused(), 0);
  const keyvalue key = {1, 2, 3};
  store.loadrecord(key.data(), "abcde");
  EXPECT_EQ(store.memoryused(), 17 + 4 * 16);
  store.setcapacity(1);
  EXPECT_EQ(store.getcapacity(), 1);
  EXPECT_EQ(store.memoryused(), 17 + 4);
}

TEST(Table, KeepsTheMarkOfABracketThatRemoved) {
  auto store = make<tzemadatatable>(1);
  assign(store, {{{1}, 1}, {{1}, 0}, {{1}, 2}});
  EXPECT_FALSE(store.defaulted()) << "nothing to remove";
  assign(store, {{{1}, 0}});
  EXPECT_TRUE(store.defaulted());
  store.startassign();
  EXPECT_FALSE(store.defaulted());
}

}  // namespace
}  // namespace optxv
