// The report of the heap, apart from the allocator so that its users need no listing.
#pragma once

#include <cstdint>

#include "foundation/visibility.h"
#include "listing/zmalist.h"

namespace optxv {

/// Writes what the heap counted to a listing: a row for each size class that was ever used, their
/// totals, the block memory, and the part of the system heap. line is named in the first line of
/// the report unless it is 0. Kb are 1024 bytes, cut to whole numbers except for the two memory
/// marks, which are rounded. KEEP: digits stand in groups of three in the rows and in the line of
/// the blocks; the totals and the part of the system heap are plain numbers.
OPTXV_EXPORT void zmaheapstats(tzmalist& list, std::int32_t line);

}  // namespace optxv
