#include "listing/zmaheap.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string>

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
  const std::pair<std::int32_t, std::size_t> rows[] = {
      {0, 1}, {-7, 1}, {-2147483647 - 1, 1}, {8, 1}, {9, 2}, {248, 31}, {249, 32}, {256, 32}};
  for (const auto& [size, number] : rows) {
    const std::int64_t gets = slot(number).getcount, frees = slot(number).freecount;
    void* const piece = xgetmem(size);
    EXPECT_EQ(slot(number).getcount, gets + 1) << size;
    xfreemem(piece, size);
    EXPECT_EQ(slot(number).freecount, frees + 1) << size;
  }
  void* const large = xgetmem(257);
  EXPECT_EQ(zmaheapstate().otherget, 2) << "one block, and what is larger";
  EXPECT_EQ(zmaheapstate().othermemory, block + 257);
  xfreemem(large, 257);
  void* const piece = xgetmem(16);
  xfreemem(piece, 16);
  EXPECT_THROW(xfreemem(piece, 16), eassertionfailed) << "more frees than gets";
}

TEST_F(Heap, PiecesFollowOneAnotherAndComeBackLastFirst) {
  std::byte* const first = static_cast<std::byte*>(zmagetmem(2));
  EXPECT_EQ(zmagetmem(27), first + 16);
  void* const third = zmagetmem(2);
  zmafreemem(first, 2);
  zmafreemem(third, 2);
  EXPECT_EQ(zmamemoryfree(), 32e-6);
  for (void* const piece : {third, static_cast<void*>(first)}) EXPECT_EQ(zmagetmem(2), piece);
  for (int i = 0; i < 2046; ++i) zmagetmem(32);
  zmagetmem(30);
  zmagetmem(4);  // 65536 - 31 - 2046 * 32 - 30 leaves 3 units
  EXPECT_EQ(zmaheapstate().basebufused, 1);
  EXPECT_EQ(zmagetmem(3), first + heapblockbytes - 24) << "the leftover became a piece";
  for (int i = 0; i < 2047; ++i) zmagetmem(32);
  zmagetmem(28);
  EXPECT_EQ(zmaheapstate().basebufused, 1) << "taken to the last unit";
  for (int i = 0; i < 2047; ++i) zmagetmem(32);
  zmagetmem(31);
  zmagetmem(2);
  EXPECT_EQ(zmamemoryfree(), 8e-6) << "the last unit alone";
}

double reported = 0;

TEST_F(Heap, ReportsWhatItTakes) {
  memoryreportproc = [](double megabytes) { reported = megabytes; };
  zmagetmem(1);
  EXPECT_EQ(reported, block / 1e6);
  void* const large = xgetmem(300);
  EXPECT_EQ(reported, (block + 300) / 1e6);
  EXPECT_EQ(zmamemoryused(), reported);
  const double before = getmemorylimit() * 1e6;
  EXPECT_TRUE(setmemorylimit(block + 300));
  EXPECT_FALSE(setmemorylimit(block + 299));
  EXPECT_EQ(getmemorylimit(), (block + 299) / 1e6);
  setmemorylimit(before);
  xfreemem(large, 300);
  EXPECT_EQ(reported, block / 1e6);
  xfreemem(xgetmem(299), 299);
  EXPECT_EQ(zmaheapstate().highmark, block + 300);
}

// In a child: a get above the limit, inside code that would catch anything.
void getabovelimit(double limit, std::int32_t size) {
  dup2(2, 1);
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
