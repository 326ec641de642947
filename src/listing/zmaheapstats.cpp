#include "listing/zmaheapstats.h"

#include "foundation/numtext.h"
#include "foundation/strutilx.h"
#include "listing/zmaheap.h"

namespace optxv {

namespace {

constexpr std::int64_t kilobyte = 1024;

/// One line of the table; the totals are the sum of the rows.
struct slotcounts {
  std::int64_t bytes = 0, gets = 0, frees = 0, onlist = 0, used = 0;

  slotcounts() = default;
  slotcounts(const heapslot& slot, int slotbytes)
      : bytes((slot.getcount - slot.freecount) * slotbytes),
        gets(slot.getcount),
        frees(slot.freecount),
        onlist(slot.freelistcount),
        used(slot.getcount - slot.freecount) {}

  bool any() const { return gets != 0 || frees != 0 || onlist != 0; }
  void add(const slotcounts& row) {
    bytes += row.bytes;
    gets += row.gets;
    frees += row.frees;
    onlist += row.onlist;
    used += row.used;
  }
};

/// How a number reads: with its digits in groups of three, or plain.
using numbertext = shortstring (*)(std::int64_t) noexcept;

void writecounts(tzmalist& list, const slotcounts& counts, numbertext text) {
  list.wrstrfmt(text(counts.gets), 16);
  list.wrstrfmt(text(counts.frees), 16);
  list.wrstrfmt(text(counts.onlist), 17);
  list.wrstrfmt(text(counts.used), 16);
  list.wrln();
}

void writerow(tzmalist& list, int n, const slotcounts& row) {
  list.wrintfmt(n, 3);
  list.wrstrfmt(int64tonicestr(row.bytes / kilobyte), 11);
  list.wrstr(" Kb");
  list.wrintfmt(heapunitbytes * (n - 1) + 1, 4);
  list.wrch('-');
  list.wrintfmt(heapunitbytes * n, 3);
  writecounts(list, row, int64tonicestr);
}

slotcounts writerows(tzmalist& list) {
  slotcounts totals;
  for (int n = 1; n <= heapslotcount; ++n) {
    const heapslot& slot = zmaheapstate().slots[static_cast<std::size_t>(n - 1)];
    const slotcounts row(slot, heapunitbytes * n);
    if (!row.any()) continue;
    writerow(list, n, row);
    totals.add(row);
  }
  return totals;
}

void writetotals(tzmalist& list, const slotcounts& totals) {
  list.wrstrln(fillstr('-', 90));
  list.wrstr("Totals");
  list.wrstrfmt(inttostr(totals.bytes / kilobyte), 16);
  list.wrstr(" Kb");
  writecounts(list, totals, inttostr);
}

void writeblocks(tzmalist& list) {
  const std::int64_t blocks = std::int64_t{zmaheapstate().basebufused} + 1;
  constexpr std::int64_t blockkilobytes = heapblockbytes / kilobyte;
  list.wrstrln(concat("Memory Allocated   = ", int64tonicestr(blocks * blockkilobytes), " Kb (In ",
                      int64tonicestr(blocks), " blocks of ", inttostr(blockkilobytes),
                      " Kb each)"));
  list.wrln();
}

void writesystemheap(tzmalist& list) {
  const heapstate& heap = zmaheapstate();
  const struct {
    std::string_view label;
    std::int64_t value;
    std::string_view unit;
  } rows[] = {
      {"Memory High mark   = ", round(heap.highmark / kilobyte), " Kb"},
      {"Memory allocated   = ", round(heap.othermemory / kilobyte), " Kb"},
      {"#GetMem            = ", heap.otherget, ""},
      {"#FreeMem           = ", heap.otherfree, ""},
      {"#ReAllocMem        = ", heap.realloccnt, ""},
      {"ReAlloc Memory     = ", heap.reallocget / kilobyte, " Kb"},
      {"ReAlloc Free Memory= ", heap.reallocfree / kilobyte, " Kb"},
  };
  list.wrstrln("System Heap:");
  for (const auto& row : rows) list.wrstrln(concat(row.label, inttostr(row.value), row.unit));
  list.wrln();
}

}  // namespace

void zmaheapstats(tzmalist& list, std::int32_t line) {
  list.wrstr("Heap Statistics");
  if (line != 0) list.wrstrint(", at line ", line);
  list.wrln();
  list.wrstrln(
      " Nr     Allocated    Slot         #GetMem        #FreeMem        #FreeList           #Used");
  writetotals(list, writerows(list));
  writeblocks(list);
  writesystemheap(list);
}

}  // namespace optxv
