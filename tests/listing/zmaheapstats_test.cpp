#include "listing/zmaheapstats.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/textfile.h"
#include "listing/zmaheap.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

std::string report(std::int32_t line) {
  const test::scratchfolder folder;
  textfile file;
  file.assign(folder / "report");
  file.rewrite();
  {
    tzmalist list(&file, nullptr);
    zmaheapstats(list, line);
  }
  file.close();
  return folder.get("report");
}

TEST(HeapReport, OfPiecesBlocksAndLargeOnes) {
  initzmaheap();
  EXPECT_EQ(report(0).substr(0, 16), "Heap Statistics\n");
  for (int i = 0; i < 4000; ++i) xgetmem(256);
  void* const piece = xgetmem(1);
  xgetmem(5);
  xfreemem(piece, 8);
  zmagetmem(31);
  void* const large = xgetmem(1000000);
  const std::string pointers = sizeof(void*) == 8 ? "3" : "1";  // their table, in Kb
  EXPECT_EQ(report(17), R"(Heap Statistics, at line 17
 Nr     Allocated    Slot         #GetMem        #FreeMem        #FreeList           #Used
  1          0 Kb   1-  8               2               1                1               1
 31          0 Kb 241-248               1               0                0               1
 32      1,000 Kb 249-256           4,000               0                0           4,000
------------------------------------------------------------------------------------------
Totals            1000 Kb            4003               1                1            4002
Memory Allocated   = 1,024 Kb (In 2 blocks of 512 Kb each)

System Heap:
Memory High mark   = 2001 Kb
Memory allocated   = 2001 Kb
#GetMem            = 3
#FreeMem           = 0
#ReAllocMem        = 1
ReAlloc Memory     = )" + pointers +
                            R"( Kb
ReAlloc Free Memory= 0 Kb

)");
  xfreemem(large, 1000000);
  zmaheaprelease();
}

}  // namespace
}  // namespace optxv
