#include "stores/sparsestore.h"

#include <gtest/gtest.h>

#include "storeaid.h"

namespace optxv {
namespace {

using namespace storeaid;

TEST(Trie, SharesTheFrontsOfKeys) {
  const struct {
    std::int32_t n;
    rows records;
    std::int32_t inner, leaves;
    std::int64_t memory;
  } table[] = {
      {2, {}, 0, 0, 0},
      {2, {{{1, 1}, 1}, {{1, 2}, 1}, {{2, 1}, 1}}, 2, 3, 72},
      {1, {{{-3}, 1}, {{4}, 1}}, 0, 2, 32},
      {4, {{{1, 1, 1, 1}, 1}, {{1, 1, 2, 1}, 1}, {{1, 1, 2, 2}, 1}}, 4, 3, 96},
  };
  for (const auto& [n, records, inner, leaves, memory] : table) {
    auto loaded = make<tzemadatasparse>(n), assigned = make<tzemadatasparse>(n);
    load(loaded, records);
    assign(assigned, rows(records.rbegin(), records.rend()));
    for (tzemadatasparse* store : {&loaded, &assigned}) {
      EXPECT_EQ(store->innercount(), inner);
      EXPECT_EQ(store->leafcount(), leaves);
      EXPECT_EQ(store->memoryused(), memory);
      EXPECT_EQ(read(*store), records);
      store->clear();
      EXPECT_EQ(store->memoryused(), 0);
    }
  }
}

TEST(Trie, PrunesWhatHasNoLeafLeft) {
  auto store = make<tzemadatasparse>(3);
  load(store, {{{1, 1, 1}, 1}, {{1, 2, 1}, 1}, {{1, 2, 2}, 1}, {{5, 1, 1}, 1}, {{9, 1, 1}, 1}});
  EXPECT_EQ(store.innercount(), 7);
  assign(store, {{{1, 2, 1}, 0}, {{5, 1, 1}, 0}});
  EXPECT_EQ(store.innercount(), 5);
  assign(store, {{{1, 2, 2}, 0}});
  EXPECT_EQ(store.innercount(), 4);
  EXPECT_EQ(read(store), (rows{{{1, 1, 1}, 1}, {{9, 1, 1}, 1}}));
}

TEST(Trie, SearchSaysHowFarItGot) {
  auto store = make<tzemadatasparse>(3);
  load(store, {{{2, 2, 2}, 1}, {{2, 2, 4}, 2}, {{2, 6, 1}, 3}, {{8, 0, 0}, 4}});
  tzemadatasparsesearcher from(store);
  from.startsearch();
  const struct {
    keyvalue key;
    std::int64_t value;
    std::int32_t matched;
  } table[] = {
      {{2, 2, 4}, 2, 3},
      {{2, 2, 3}, -1, 2},
      {{8, 0, 0}, 4, 3},
      {{1, 2, 2}, -1, 0},
      {{2, 2, 2}, 1, 3},
      {{9, 2, 2}, -1, 0},
      {{2, 4, 1}, -1, 1},
      {{2, 6, 1}, 3, 3},
      {{2, 6, 0}, -1, 2},
      {{2, 1, 1}, -1, 1},
      {{lowest, highest, 0}, -1, 0},
  };
  for (const auto& [key, data, matched] : table) {
    EXPECT_EQ(value(from, key), data);
    EXPECT_EQ(from.matched(), matched);
  }
}

TEST(Trie, LoadsGoOnBehindTheLastRecord) {
  auto store = make<tzemadatasparse>(2);
  load(store, {{{1, 1}, 1}, {{1, 1}, 2}, {{1, 4}, 3}});
  EXPECT_EQ(store.getcount(), 2) << "the last key again: new data";
  assign(store, {{{3, 3}, 4}, {{2, 2}, 5}});
  load(store, {{{3, 4}, 6}});
  std::int32_t key[2];
  store.startread();
  store.getnextkey(key);
  load(store, {{{3, 5}, 7}});
  EXPECT_EQ(read(store),
            (rows{{{1, 1}, 2}, {{1, 4}, 3}, {{2, 2}, 5}, {{3, 3}, 4}, {{3, 4}, 6}, {{3, 5}, 7}}));
  load(store, {{{4, 0}, 8}});
  assign(store, {{{4, 0}, 0}});
  load(store, {{{3, 6}, 9}, {{7, 7}, 10}});
  EXPECT_EQ(store.getcount(), 8);
  EXPECT_EQ(read(store).back(), (row{{7, 7}, 10}));
}

TEST(Trie, LoadsOutOfOrderLoseOrderAndNothingElse) {
  auto store = make<tzemadatasparse>(2);
  const rows disorder = {{{2, 1}, 1}, {{1, 1}, 2}, {{2, 1}, 3}, {{2, 0}, 4}};
  load(store, disorder);
  EXPECT_EQ(read(store), disorder);
}

}  // namespace
}  // namespace optxv
