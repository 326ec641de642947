// A pool allocator for many small records.
//
// A piece of up to 256 bytes comes from a block of 512 KiB, in one of 32 size classes of 8 bytes
// each; a freed piece waits on the free list of its class and is the next one that the class gives
// out. Anything larger is the system heap's. Every get and free is counted, block memory is subject
// to a limit, and all blocks can be given back at once.
//
// There is one heap for the whole library, without locks: it serves one thread. A piece is aligned
// to 8 bytes, no more, and its content is undefined. A freed piece never goes back into a block nor
// to the system; only zmaheaprelease returns blocks.
//
// The heap takes the caller's word for pointers and sizes.
// REQUIRES, throughout: what is freed came from this heap and is freed once, with its own size.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "foundation/visibility.h"

namespace optxv {

inline constexpr int heapslotcount = 32;          ///< size classes
inline constexpr int heapunitbytes = 8;           ///< bytes that one class is wider than the last
inline constexpr int heaplargestpiece = 256;      ///< the last size that is served from a block
inline constexpr int heapblockbytes = 524288;     ///< bytes of a block
inline constexpr int heapblockunits = 65536;      ///< units of 8 bytes in a block
inline constexpr int heapblocktablegrowth = 128;  ///< block records that the table grows by

/// A piece that waits on a free list; its first word leads to the next one.
struct heapfreepiece {
  heapfreepiece* next;
};

/// One size class: class n, from 1 on, holds requests of 8(n-1)+1 to 8n bytes.
struct heapslot {
  std::int64_t getcount;       ///< pieces ever asked for
  std::int64_t freecount;      ///< pieces ever freed
  std::int64_t freelistcount;  ///< pieces on the free list
  heapfreepiece* freelist;     ///< the piece freed last, nil if there is none
};

/// One block.
struct heapblock {
  std::int32_t unitsleft;  ///< units of 8 bytes never given out
  std::byte* base;         ///< start of the block
  std::byte* next;         ///< first byte never given out
};

/// The whole state of the heap, with the values that zmaheapinitial gives it.
struct heapstate {
  std::array<heapslot, heapslotcount> slots{};  ///< class n at index n-1
  std::int32_t basebufsize = -1;                ///< highest index that pbufbase has room for
  std::int32_t basebufused = -1;                ///< index of the current block
  heapblock* pbufbase = nullptr;                ///< the block records, OWNS
  std::int64_t otherget = 0;                    ///< blocks and large pieces held now
  std::int64_t otherfree = 0;    ///< KEEP: nothing adds to it; frees lower otherget instead
  double memorylimit = 1e20;     ///< bytes that othermemory may come to
  double othermemory = 0;        ///< bytes of blocks and large pieces held now
  double highmark = 0;           ///< the largest othermemory so far
  std::int64_t realloccnt = 0;   ///< calls of xreallocmem,
  std::int64_t reallocget = 0;   ///<   the bytes they asked for,
  std::int64_t reallocfree = 0;  ///<   and the bytes they gave back
};

/// Called with zmamemoryused() after each change of the memory held in blocks and large pieces; nil
/// for no call. It stays when the heap is released, and may not use the heap itself.
extern OPTXV_EXPORT void (*memoryreportproc)(double megabytes);

/// The present counts. BORROWS: good for as long as the library is loaded.
OPTXV_EXPORT const heapstate& zmaheapstate() noexcept;

/// The start of the module: no report procedure, and zmaheapinitial.
void initzmaheap() noexcept;

/// Puts every count, the limit and the free lists back to the start values and frees nothing:
/// blocks that are held stay with the process. memoryreportproc stays.
OPTXV_EXPORT void zmaheapinitial() noexcept;

/// A piece of class n, of 8n bytes. REQUIRES: n is 1 to 32.
///
/// Takes the last freed piece of the class, else the next bytes of the current block, else those of
/// a new block. What the old block has left over, fewer than n units, becomes a free piece of its
/// own class, which raises that class's freelistcount and not its getcount.
///
/// A new block that takes othermemory above the limit ends the process: the standard exception
/// handler prints "Requested memory exceeds assigned HeapLimit" and aborts, and no caller can catch
/// it. If the system has no memory, raises eoutofmemory (for the block) or `exception` (for the
/// table of blocks, which is lost then: the blocks so far stay with the process).
/// KEEP: a request is counted before the system is asked, and stays counted if it fails.
OPTXV_EXPORT void* zmagetmem(std::uint16_t n);

/// Gives back a piece of class n, which becomes the next one that the class gets. Its content stays
/// except for the first 8 bytes. Raises eassertionfailed, " Bad memory released", if the class has
/// more frees than gets, this one counted. REQUIRES: n is 1 to 32.
OPTXV_EXPORT void zmafreemem(void* p, std::uint16_t n);

/// size bytes: a piece of class (size - 1) / 8 + 1 up to 256, so that sizes of 0 and below are
/// class 1, and above that a block of the system heap. Fails as zmagetmem does.
OPTXV_EXPORT void* xgetmem(std::int32_t size);

/// Gives back what xgetmem gave for this size. Fails as zmafreemem does.
OPTXV_EXPORT void xfreemem(void* p, std::int32_t size);

/// A block of the system heap moved to newsize bytes, with the content that both sizes share; a nil
/// p makes it a get and a newsize of 0 a free that gives nil.
///
/// KEEP: only its own three counts follow; othermemory and the limit do not. For blocks that came
/// from xreallocmem itself: what xgetmem gave is not to be resized.
/// Raises an `exception` if there is no memory; the old block is gone then.
OPTXV_EXPORT void* xreallocmem(void* p, std::int64_t oldsize, std::int64_t newsize);

/// Gives all blocks back to the system, the last one first, and starts afresh with zmaheapinitial;
/// every piece of up to 256 bytes is gone with its block. Large pieces are not known to the heap
/// and stay with their owners, who free them as ever (otherget then falls below 0).
OPTXV_EXPORT void zmaheaprelease();

/// othermemory in millions of bytes.
OPTXV_EXPORT double zmamemoryused() noexcept;

/// The bytes on all free lists, in millions.
OPTXV_EXPORT double zmamemoryfree() noexcept;

/// The limit in millions of bytes. KEEP: the setter takes bytes.
OPTXV_EXPORT double getmemorylimit() noexcept;

/// Stores the limit, in bytes, and gives whether what is held now keeps to it. A limit below that
/// takes effect at the next block or large piece.
OPTXV_EXPORT bool setmemorylimit(double limit) noexcept;

}  // namespace optxv
