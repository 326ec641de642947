#include "listing/zmaheap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "foundation/runtime.h"

namespace optxv {
namespace {

constexpr double block = 524288;

class Heap : public testing::Test {
 protected:
  void SetUp() override {
    initzmaheap();
    held_ = allocmemsize();
  }
  void TearDown() override {
    zmaheaprelease();
    EXPECT_EQ(allocmemsize(), held_);
    memoryreportproc = nullptr;
  }
  static const heapslot& slot(std::size_t n) { return zmaheapstate().slots[n - 1]; }

  std::int64_t held_ = 0;
};

TEST_F(Heap, SizeClasses) {
  const struct {
    std::int32_t size;
    std::size_t slot;
  } rows[] = {{0, 1},  {-1, 1},   {-7, 1},   {-2147483647 - 1, 1},
              {1, 1},  {8, 1},    {9, 2},    {16, 2},
              {17, 3}, {248, 31}, {249, 32}, {256, 32}};
  for (const auto& row : rows) {
    const std::int64_t gets = slot(row.slot).getcount, frees = slot(row.slot).freecount;
    void* const piece = xgetmem(row.size);
    EXPECT_EQ(slot(row.slot).getcount, gets + 1) << row.size;
    xfreemem(piece, row.size);
    EXPECT_EQ(slot(row.slot).freecount, frees + 1) << row.size;
  }
  EXPECT_EQ(zmaheapstate().otherget, 1) << "one block";
  void* const large = xgetmem(257);
  EXPECT_EQ(zmaheapstate().otherget, 2);
  EXPECT_EQ(zmaheapstate().othermemory, block + 257);
  xfreemem(large, 257);
  EXPECT_EQ(zmaheapstate().otherget, 1);
  EXPECT_EQ(zmaheapstate().otherfree, 0);
  EXPECT_EQ(zmaheapstate().othermemory, block);
  EXPECT_EQ(zmaheapstate().highmark, block + 257);
}

TEST_F(Heap, PiecesFollowOneAnotherAndComeBackLastFirst) {
  std::byte* const first = static_cast<std::byte*>(zmagetmem(2));
  EXPECT_EQ(zmagetmem(3), first + 16);
  void* const third = zmagetmem(2);
  EXPECT_EQ(third, first + 40);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % 8, 0u);
  zmafreemem(first, 2), zmafreemem(third, 2);
  EXPECT_EQ(slot(2).freelistcount, 2);
  EXPECT_EQ(zmamemoryfree(), 32e-6);
  EXPECT_EQ(zmagetmem(2), third);
  EXPECT_EQ(zmagetmem(2), first);
  EXPECT_EQ(slot(2).freelistcount, 0);
  EXPECT_EQ(zmagetmem(2), first + 56);
}

TEST_F(Heap, LeftoverOfABlockBecomesAPiece) {
  std::byte* const start = static_cast<std::byte*>(zmagetmem(29));
  for (int i = 0; i < 2047; ++i) zmagetmem(32);  // 65536 - 29 - 2047 * 32 leaves 3 units
  EXPECT_EQ(zmaheapstate().basebufused, 0);
  zmagetmem(4);
  EXPECT_EQ(zmaheapstate().basebufused, 1);
  EXPECT_EQ(slot(3).freelistcount, 1);
  EXPECT_EQ(slot(3).getcount, 0);
  EXPECT_EQ(zmagetmem(3), start + heapblockbytes - 24);
  for (int i = 0; i < 2047; ++i) zmagetmem(32);
  zmagetmem(28);
  EXPECT_EQ(zmaheapstate().pbufbase[1].unitsleft, 0) << "taken to the last unit";
  zmagetmem(32);
  EXPECT_EQ(zmaheapstate().basebufused, 2);
  for (std::size_t n = 1; n <= 32; ++n) EXPECT_EQ(slot(n).freelistcount, 0) << n;
}

TEST_F(Heap, TableOfBlocksGrowsAheadOfItsLastRecord) {
  const struct {
    int blocks, room, reallocations;
  } rows[] = {{1, 127, 1}, {127, 127, 1}, {128, 255, 2}, {129, 255, 2}};
  for (const auto& row : rows) {
    while (zmaheapstate().basebufused + 1 < row.blocks) zmagetmem(32);
    EXPECT_EQ(zmaheapstate().basebufsize, row.room) << row.blocks;
    EXPECT_EQ(zmaheapstate().realloccnt, row.reallocations) << row.blocks;
  }
  EXPECT_EQ(zmaheapstate().reallocget, 384 * std::int64_t{sizeof(heapblock)});
  EXPECT_EQ(zmaheapstate().reallocfree, 128 * std::int64_t{sizeof(heapblock)});
  EXPECT_EQ(zmamemoryused(), 129 * block / 1e6);
}

TEST_F(Heap, ReallocationIsCountedApart) {
  char* text = static_cast<char*>(xreallocmem(nullptr, 0, 4));
  std::memcpy(text, "abc", 4);
  text = static_cast<char*>(xreallocmem(text, 4, 4000));
  EXPECT_STREQ(text, "abc");
  EXPECT_EQ(xreallocmem(text, 4000, 0), nullptr);
  EXPECT_EQ(zmaheapstate().realloccnt, 3);
  EXPECT_EQ(zmaheapstate().reallocget, 4004);
  EXPECT_EQ(zmaheapstate().reallocfree, 4004);
  EXPECT_EQ(zmamemoryused(), 0);
}

std::vector<double> reports;

TEST_F(Heap, ReleaseStartsAfreshAndReportsEachStep) {
  reports.clear();
  memoryreportproc = [](double megabytes) { reports.push_back(megabytes); };
  void* const large = xgetmem(1000);
  for (int i = 0; i < 2049; ++i) xgetmem(256);
  EXPECT_FALSE(setmemorylimit(2 * block + 999));
  EXPECT_TRUE(setmemorylimit(2 * block + 1000));
  EXPECT_EQ(getmemorylimit(), (2 * block + 1000) / 1e6);
  zmaheaprelease();
  xfreemem(large, 1000);
  EXPECT_THAT(reports, testing::ElementsAre(0.001, (block + 1000) / 1e6, (2 * block + 1000) / 1e6,
                                            (block + 1000) / 1e6, 0.001, -0.001));
  EXPECT_EQ(zmaheapstate().otherget, -1) << "the heap forgot the large piece";
  EXPECT_EQ(zmaheapstate().basebufused, -1);
  EXPECT_EQ(zmaheapstate().basebufsize, -1);
  EXPECT_EQ(zmaheapstate().realloccnt, 0);
  EXPECT_EQ(zmaheapstate().highmark, 0);
  EXPECT_EQ(getmemorylimit(), 1e14);
  EXPECT_EQ(slot(32).getcount, 0);
  EXPECT_NE(memoryreportproc, nullptr);
  initzmaheap();
  EXPECT_EQ(memoryreportproc, nullptr);
}

TEST_F(Heap, MoreFreesThanGetsAreAnAssertion) {
  void* const piece = xgetmem(8);
  xfreemem(piece, 8);
  try {
    xfreemem(piece, 8);
    FAIL();
  } catch (const eassertionfailed& failure) {
    EXPECT_THAT(std::string(failure.message.view()),
                testing::AllOf(testing::StartsWith("Assertion Failed. (zmaheap:"),
                               testing::EndsWith(")  Bad memory released\n")));
  }
  EXPECT_EQ(slot(1).freelistcount, 1) << "the piece is not taken twice";
}

// In a child: a get above the limit, in the midst of somebody who would catch anything.
void getabovelimit(double limit, std::int32_t size) {
  dup2(2, 1);
  std::signal(SIGABRT, [](int) { _exit(3); });
  zmagetmem(32);
  setmemorylimit(limit);
  try {
    while (zmamemoryused() < 3 * block / 1e6) xgetmem(size);
  } catch (...) {
    _exit(4);
  }
  _exit(0);
}

using HeapDeathTest = Heap;

TEST_F(HeapDeathTest, NobodyCatchesTheLimit) {
  const char* const line =
      "^Q9 Standard Exception Handler: Requested memory exceeds assigned HeapLimit\n$";
  const auto aborted = testing::KilledBySignal(SIGABRT);
  EXPECT_EXIT(getabovelimit(2 * block - 1, 8), aborted, line);
  EXPECT_EXIT(getabovelimit(0, 257), aborted, line) << "below what is held: at the next change";
  EXPECT_EXIT(getabovelimit(3 * block, 256), testing::ExitedWithCode(0), "^$");
}

}  // namespace
}  // namespace optxv
