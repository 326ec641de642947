#include "stores/densestore.h"

#include <gtest/gtest.h>

#include "storeaid.h"
#include "stores/hashedstore.h"
#include "stores/sparsestore.h"
#include "stores/tablestore.h"

namespace optxv {
namespace {

using namespace storeaid;

TEST(Mapping, GrowsToWhatIsAskedFor) {
  const struct {
    std::vector<std::int32_t> indices;
    std::int32_t capacity;
  } table[] = {
      {{}, 0},
      {{0}, 1024},
      {{1024}, 2048},
      {{0, 1024}, 2048},
      {{0, 4096}, 5120},
      {{32767, 32768}, 65536},
      {{65535, 65536}, 81920},
      {{65535, 81920}, 98304},
      {{-1, lowest}, 0},
  };
  for (const auto& [indices, capacity] : table) {
    tintegermapping mapping;
    for (const std::int32_t i : indices) mapping.setmapping(i, 7);
    EXPECT_EQ(mapping.capacity(), capacity);
    EXPECT_EQ(mapping.memoryused(), 4 * std::int64_t{capacity});
    EXPECT_EQ(mapping.highest(), capacity == 0 ? -1 : indices.back());
    for (const std::int32_t i : indices) EXPECT_EQ(mapping.getmapping(i), i < 0 ? -1 : 7);
    for (const std::int32_t i : {lowest, -1, 5, capacity - 2, capacity, highest})
      EXPECT_EQ(mapping.getmapping(i), -1) << i;
  }
  tintegermapping mapping;
  EXPECT_THROW(mapping.setmapping(highest, 1), exception);
  EXPECT_EQ(mapping.getmapping(highest), -1);
}

TEST(Dense, LaysOutWhatOccurs) {
  auto source = make<tzemadatahashed>(3);
  load(source, {{{9, 4, 2}, 1}, {{3, 4, 8}, 2}, {{9, 4, 5}, 3}});
  tzemadatafull store(source);
  const std::int32_t strides[] = {24, 24, 8}, firsts[] = {3, 4, 2}, sizes[] = {2, 0, 3};
  for (std::int32_t i = 0; i < 3; ++i) {
    EXPECT_EQ(store.stride(i), strides[i]);
    EXPECT_EQ(store.firstkey(i), firsts[i]);
    EXPECT_EQ(store.size(i), sizes[i]);
  }
  EXPECT_EQ(store.mapping(2).getmapping(5), 1);
  EXPECT_EQ(store.totalsize(), 48);
  EXPECT_EQ(store.memoryused(), 48 + 3 * 4096);
  const keyvalue key = {9, 4, 5};
  EXPECT_EQ(store.getoffset(key.data()), nullptr) << "not yet allocated";
  store.clear();
  for (int twice = 0; twice < 2; ++twice) store.allocatememory(source);
  EXPECT_EQ(store.getcount(), 3);
  const auto from = searcher(store);
  const row table[] = {{{9, 4, 2}, 1},  {{3, 4, 8}, 2},  {{9, 4, 5}, 3},   {{3, 4, 2}, -1},
                       {{9, 5, 2}, -1}, {{8, 4, 2}, -1}, {{9, 4, -2}, -1}, {{highest, 4, 2}, -1}};
  for (const auto& [place, expected] : table) EXPECT_EQ(value(*from, place), expected);
}

TEST(Dense, DefaultDataIsNotFoundButPointedTo) {
  auto source = make<tzemadatatable>(2);
  load(source, {{{1, 1}, 1}, {{2, 2}, 2}});
  tzemadatafull store(source);
  store.allocatememory(source);
  const auto from = searcher(store);
  void* data = nullptr;
  const keyvalue between = {1, 2}, outside = {1, 3};
  EXPECT_FALSE(from->search(between.data(), data));
  ASSERT_NE(data, nullptr);
  EXPECT_TRUE(store.isdefaultdata(data));
  EXPECT_FALSE(from->search(outside.data(), data));
  EXPECT_EQ(data, nullptr);
  load(store, {{{1, 2}, 5}, {{1, 2}, 6}, {{1, 3}, 7}});
  EXPECT_EQ(value(*from, between), 6);
  EXPECT_EQ(store.getcount(), 4) << "counts loads";
  assign(store, {{{1, 1}, 8}, {{2, 1}, 0}});
  EXPECT_EQ(value(*from, {1, 1}), 8);
  EXPECT_THROW(assign(store, {{{2, 1}, 9}}), eabstracterror);
  EXPECT_TRUE(store.startread());
  EXPECT_THROW(store.getnextkey(keyvalue(2).data()), eabstracterror);
  store.clear();
  EXPECT_EQ(value(*from, between), -1);
  EXPECT_EQ(store.getcount(), 4);
}

TEST(Dense, HasNoPlaceForIntegersBelowZero) {
  auto source = make<tzemadatasparse>(1);
  load(source, {{{lowest}, 1}, {{-1}, 2}, {{0}, 3}, {{4}, 4}});
  tzemadatafull store(source);
  store.allocatememory(source);
  EXPECT_EQ(store.getcount(), 2);
  EXPECT_EQ(store.totalsize(), 16);
  const auto from = searcher(store);
  for (const auto& [key, expected] : rows{{{lowest}, -1}, {{-1}, -1}, {{0}, 3}, {{4}, 4}})
    EXPECT_EQ(value(*from, key), expected);
}

TEST(Dense, EmptyAndWithoutData) {
  auto source = make<tzemadatatable>(1);
  tzemadatafull empty(source);
  empty.allocatememory(source);
  EXPECT_EQ(empty.totalsize(), 8);
  EXPECT_EQ(value(*searcher(empty), {0}), -1);
  tzemadatatable bare(1, 0, nullptr);
  for (const std::int32_t key : {1, 2}) bare.loadrecord(&key, nullptr);
  tzemadatafull store(bare);
  store.allocatememory(bare);
  EXPECT_EQ(store.getcount(), 2);
  EXPECT_EQ(value(*searcher(store), {1}), -1) << "all data is default";
}

TEST(Dense, RefusesWhatCannotBeAllocated) {
  auto tall = make<tzemadatatable>(2);
  for (std::int32_t i = 0; i < 20000; ++i) load(tall, {{{i, i}, 1}});
  EXPECT_THROW(tzemadatafull{tall}, eoutofmemory);
  EXPECT_THROW(tzemadatafull{*std::make_unique<tzemadatatable>(54, 0, nullptr)}, eoutofmemory);
  auto far = make<tzemadatatable>(1);
  load(far, {{{highest}, 1}});
  EXPECT_THROW(tzemadatafull{far}, exception);
}

TEST(Dense, KeepsTheMemoryOfItsMappings) {
  auto source = make<tzemadatatable>(2);
  const double before = zmaheapstate().othermemory;
  { tzemadatafull store(source); }
  EXPECT_EQ(zmaheapstate().othermemory - before, 80000000);
}

}  // namespace
}  // namespace optxv
