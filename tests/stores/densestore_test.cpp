#include "stores/densestore.h"

#include "storeaid.h"
#include "stores/tablestore.h"

namespace optxv {
namespace {

using namespace storeaid;

TEST(Mapping, GrowsToWhatIsAskedFor) {
  const auto growsto = [](const keyvalue& indices, std::int64_t capacity) {
    tintegermapping mapping;
    for (const std::int32_t i : indices) mapping.setmapping(i, 7);
    EXPECT_EQ(mapping.capacity(), capacity);
    EXPECT_EQ(mapping.memoryused(), 4 * capacity);
    for (const std::int32_t i : indices) EXPECT_EQ(mapping.getmapping(i), i < 0 ? -1 : 7);
    for (const std::int64_t i :
         std::initializer_list<std::int64_t>{-1, 5, capacity - 2, capacity, 2147483647})
      EXPECT_EQ(mapping.getmapping(static_cast<std::int32_t>(i)), -1) << i;
  };
  growsto({0}, 1024);
  growsto({1024}, 2048);
  growsto({0, 1024}, 2048);
  growsto({0, 4096}, 5120);
  growsto({32767, 32768}, 65536);
  growsto({65535, 65536}, 81920);
  growsto({65535, 81920}, 98304);
  growsto({-1, lowest}, 0);
  EXPECT_THROW(tintegermapping().setmapping(highest, 1), exception);
}

TEST(Dense, LaysOutWhatOccurs) {
  holding<tzemadatatable> source(3, {{{9, 4, 2}, 1}, {{3, 4, 8}, 2}, {{9, 4, 5}, 3}});
  const double before = zmaheapstate().othermemory;
  {
    tzemadatafull store(source);
    const keyvalue layout[] = {{24, 3, 2}, {24, 4, 0}, {8, 2, 3}};
    for (std::int32_t i = 0; i < 3; ++i)
      EXPECT_EQ((keyvalue{store.stride(i), store.firstkey(i), store.size(i)}), layout[i]);
    EXPECT_EQ(store.totalsize(), 48);
    EXPECT_EQ(store.memoryused(), 48 + 3 * 4096);
    const auto from = searcher(store);
    EXPECT_EQ(value(*from, {9, 4, 5}), -1) << "not yet allocated";
    store.clear();
    for (int twice = 0; twice < 2; ++twice) store.allocatememory(source);
    EXPECT_EQ(store.getcount(), 3);
    for (const auto& [key, expected] :
         rows{{{9, 4, 5}, 3}, {{3, 4, 2}, -1}, {{9, 5, 2}, -1}, {{highest, 4, 2}, -1}})
      EXPECT_EQ(value(*from, key), expected);
  }
  EXPECT_EQ(zmaheapstate().othermemory - before, 120000000) << "the mappings' memory stays";
}

TEST(Dense, DefaultDataIsNotFoundButPointedTo) {
  holding<tzemadatatable> source(2, {{{1, 1}, 1}, {{2, 2}, 2}});
  tzemadatafull store(source);
  store.allocatememory(source);
  const auto from = searcher(store);
  void* data = nullptr;
  const keyvalue between = {1, 2}, outside = {1, 3};
  EXPECT_FALSE(from->search(between.data(), data));
  EXPECT_TRUE(data != nullptr && store.isdefaultdata(data));
  EXPECT_TRUE(!from->search(outside.data(), data) && data == nullptr);
  load(store, {{{1, 2}, 5}, {{1, 2}, 6}, {{1, 3}, 7}});
  EXPECT_EQ(store.getcount(), 4) << "counts loads";
  assign(store, {{{1, 1}, 8}, {{2, 1}, 0}});
  EXPECT_EQ(value(*from, {1, 1}), 8);
  EXPECT_THROW(assign(store, {{{2, 1}, 9}}), eabstracterror);
  EXPECT_EQ(value(*from, between), 6);
}

TEST(Dense, RefusesWhatCannotBeAllocated) {
  holding<tzemadatatable> tall(2), far(1, {{{highest}, 1}}), empty(1);
  holding<tzemadatatable> negative(1, {{{lowest}, 1}, {{-1}, 2}, {{0}, 3}, {{4}, 4}});
  for (std::int32_t i = 0; i < 20000; ++i) load(tall, {{{i, i}, 1}});
  EXPECT_THROW(tzemadatafull{tall}, eoutofmemory);
  EXPECT_THROW(tzemadatafull{*std::make_unique<tzemadatatable>(54, 0, nullptr)}, eoutofmemory);
  EXPECT_THROW(tzemadatafull{far}, exception);
  EXPECT_EQ(tzemadatafull{empty}.totalsize(), 8);
  EXPECT_EQ(tzemadatafull{negative}.totalsize(), 16) << "only numbers from 0 on have a place";
}

}  // namespace
}  // namespace optxv
