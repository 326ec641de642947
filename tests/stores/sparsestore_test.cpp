#include "stores/sparsestore.h"

#include <tuple>

#include "storeaid.h"

namespace optxv {
namespace {

using namespace storeaid;

TEST(Trie, KeysShareTheirFirstIntegers) {
  // What they need: inner nodes, leaves, bytes.
  const auto need = [](std::int32_t n, const rows& records, const keyvalue& needed) {
    holding<tzemadatasparse> loaded(n, records), assigned(n);
    assign(assigned, rows(records.rbegin(), records.rend()));
    for (const tzemadatasparse* s : {&loaded, &assigned})
      EXPECT_EQ((std::tuple(s->innercount(), s->leafcount(), s->memoryused())),
                std::tuple(needed[0], needed[1], needed[2]));
  };
  need(2, {}, {0, 0, 0});
  need(2, {{{1, 1}, 1}, {{1, 2}, 1}, {{2, 1}, 1}}, {2, 3, 72});
  need(1, {{{-3}, 1}, {{4}, 1}}, {0, 2, 32});
  need(4, {{{1, 1, 1, 1}, 1}, {{1, 1, 2, 1}, 1}, {{1, 1, 2, 2}, 1}}, {4, 3, 96});
  holding<tzemadatasparse> store(
      3, {{{1, 1, 1}, 1}, {{1, 2, 1}, 1}, {{1, 2, 2}, 1}, {{5, 1, 1}, 1}, {{9, 1, 1}, 1}});
  EXPECT_EQ(store.innercount(), 7);
  assign(store, {{{1, 2, 1}, 0}, {{5, 1, 1}, 0}});
  EXPECT_EQ(store.innercount(), 5) << "what has no leaf left goes";
  store.clear();
  EXPECT_EQ(store.memoryused(), 0);
}

TEST(Trie, LoadsGoOnAfterTheLastRecord) {
  holding<tzemadatasparse> store(2, {{{1, 1}, 1}, {{1, 1}, 2}, {{1, 4}, 3}});
  EXPECT_EQ(store.getcount(), 2) << "the last key again: new data";
  assign(store, {{{3, 3}, 4}, {{2, 2}, 5}});
  load(store, {{{3, 4}, 6}});
  std::int32_t key[2];
  store.startread();
  store.getnextkey(key);
  load(store, {{{3, 5}, 7}});
  EXPECT_EQ(read(store),
            (rows{{{1, 1}, 2}, {{1, 4}, 3}, {{2, 2}, 5}, {{3, 3}, 4}, {{3, 4}, 6}, {{3, 5}, 7}}));
  assign(store, {{{3, 5}, 0}});
  load(store, {{{3, 6}, 9}, {{1, 1}, 8}});
  EXPECT_EQ(read(store).back(), (row{{1, 1}, 8})) << "out of order, and nothing lost";
  EXPECT_EQ(store.getcount(), 7);
}

}  // namespace
}  // namespace optxv
