#include "stores/hashedstore.h"

#include "storeaid.h"

namespace optxv {
namespace {

using namespace storeaid;

TEST(HashTable, HasFiveSizes) {
  tzemahashlist list(1, 0);
  const keyvalue at = {0, 1499, 1500, 14999, 15000, 149999, 150000, 1500000, highest};
  const keyvalue buckets = {997, 997, 9973, 9973, 99991, 99991, 999979, 9999991, 9999991};
  const keyvalue limits = {1500, 1500, 15000, 15000, 150000, 150000, 1500000, highest, highest};
  for (std::size_t i = 0; i < at.size(); ++i) {
    list.hashtablereset(at[i]);
    EXPECT_EQ(std::pair(list.hashcount(), list.rehashat()), std::pair(buckets[i], limits[i]));
  }
  list.clear();
  for (std::int32_t key = 0; key < 1502; ++key) {
    EXPECT_TRUE(list.additem(&key, nullptr));
    EXPECT_EQ(list.hashcount(), key < 1501 ? 997 : 9973) << "once it holds more than its limit";
  }
  EXPECT_EQ(list.memoryused(), 1502 * 12 + 9973 * 4);
}

TEST(HashTable, Hashes) {
  tzemahashlist list(3, 0);
  list.hashall();
  const std::int64_t square = 1234593LL * 1234593 % 2147483648;
  const std::int64_t table[][4] = {{0, 0, 996, 996},          {0, 0, 997, 0},
                                   {0, 1, 0, 1234593 % 997},  {0, 1, -1, 1234592 % 997},
                                   {0, 0, -1, highest % 997}, {0, 0, lowest, 0},
                                   {1, 0, 0, square % 997}};
  for (const auto& row : table) EXPECT_EQ(list.hash(keyvalue(row, row + 3).data()), row[3]);
}

TEST(Hashed, LoadsTwiceButInsertsOnce) {
  holding<tzemadatahashed> store(1, {{{4}, 1}, {{4}, 2}});
  EXPECT_EQ(store.getcount(), 2);
  const auto from = searcher(store);
  EXPECT_EQ(value(*from, {4}), 2) << "the later one";
  assign(store, {{{4}, 3}});
  EXPECT_EQ(read(store), (rows{{{4}, 1}, {{4}, 3}}));
  load(store, {{{5}, 5}});
  EXPECT_EQ(value(*from, {5}), 5) << "the table is built anew";
}

TEST(Hashed, TakesNoNewRecordAfterASort) {
  holding<tzemadatahashed> store(1, {{{1}, 1}, {{2}, 2}});
  EXPECT_EQ(read(store).size(), 2U);
  load(store, {{{0}, 5}});  // as there was nothing to sort
  EXPECT_EQ(read(store).front(), (row{{0}, 5}));
  EXPECT_THROW(load(store, {{{7}, 7}}), eassertionfailed);
  EXPECT_THROW(assign(store, {{{7}, 7}}), eassertionfailed);
  assign(store, {{{2}, 0}});
  assign(store, {{{3}, 3}});
  EXPECT_EQ(read(store), (rows{{{0}, 5}, {{1}, 1}, {{3}, 3}})) << "removal finds the tail";
}

TEST(Linked, SortsAndKeepsCountOfKeysAndMemory) {
  tlinkeddata list(2, sizeof nothing);
  const auto given = [&](const std::int32_t* order) {
    rows records;
    linkedrecord* cursor = nullptr;
    row next{keyvalue(2), 0};
    list.startread(cursor, order);
    while (list.getnextrecord(cursor, next.first.data(), &next.second)) records.push_back(next);
    return records;
  };
  for (const auto& [key, value] : rows{{{2, 1}, 1}, {{1, 2}, 2}, {{2, 1}, 3}, {{1, 1}, 4}})
    list.additem(key.data(), &value);
  const std::int32_t backward[] = {2, 1};
  EXPECT_EQ(given(backward), (rows{{{1, 1}, 4}, {{2, 1}, 1}, {{2, 1}, 3}, {{1, 2}, 2}}));
  EXPECT_EQ(given(nullptr), (rows{{{1, 1}, 4}, {{1, 2}, 2}, {{2, 1}, 1}, {{2, 1}, 3}}));
  EXPECT_EQ(given(backward), given(nullptr)) << "what is in order stays as it is";
  list.clear();
  EXPECT_EQ(list.minkey(), highest);
  for (const keyvalue& key : {keyvalue{5, 7}, {6, -9}}) list.additem(key.data(), &nothing);
  EXPECT_EQ(std::pair(list.minkey(), list.maxkey()), std::pair(-9, 7));
  EXPECT_EQ(list.memoryused(), 2 * (8 + 8 + 8));
  std::int32_t* const key = list.allocindex();
  list.freeindex(key);
  EXPECT_EQ(list.allocindex(), key) << "the piece that came back last";
  list.freeindex(key);
}

}  // namespace
}  // namespace optxv
