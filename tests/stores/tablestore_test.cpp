#include "stores/tablestore.h"

#include "storeaid.h"

namespace optxv {
namespace {

using namespace storeaid;

TEST(Table, GrowsFourfoldAndCountsMemory) {
  tzemadatatable store(3, 5, "12345");
  const keyvalue key = {1, 2, 3};
  for (const std::int64_t capacity : {16, 64, 256, 1024}) {
    while (store.getcount() < capacity / 4 + 1) store.loadrecord(key.data(), "abcde");
    EXPECT_EQ(store.getcapacity(), capacity);
    EXPECT_EQ(store.memoryused(), 17 * (capacity / 4 + 1) + 4 * capacity);
  }
  store.setcapacity(3);
  EXPECT_EQ(store.getcapacity(), 257) << "never below the count";
}

TEST(Table, TheFingerSurvivesAStoreThatShrank) {
  holding<tzemadatatable> store(1, {{{1}, 1}, {{2}, 2}});
  const auto from = searcher(store);
  EXPECT_EQ(value(*from, {2}), 2);
  store.clear();
  EXPECT_EQ(value(*from, {2}), -1);
  load(store, {{{1}, 3}});
  EXPECT_EQ(value(*from, {1}), 3);
}

TEST(Table, SortsLoadsOutOfOrder) {
  holding<tzemadatatable> store(
      2, {{{2, lowest}, 1}, {{highest, 0}, 2}, {{lowest, 0}, 3}, {{2, highest}, 4}});
  store.sort();
  EXPECT_EQ(read(store),
            (rows{{{lowest, 0}, 3}, {{2, lowest}, 1}, {{2, highest}, 4}, {{highest, 0}, 2}}));
}

}  // namespace
}  // namespace optxv
