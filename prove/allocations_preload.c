/*
 * Stands ahead of the C library and refuses chosen requests for memory. All requests count: those
 * of operator new and those of the C library itself come through here too. A block is filled when
 * it is given and when it is given back, so that a use of either shows.
 */
#define _GNU_SOURCE
#include <errno.h>
#include <malloc.h>
#include <stddef.h>
#include <string.h>

#include "forkserver.h"

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);
long prove_blocks(void);

static int counting;
static long blocks;

static void setup(void) {}
static int tellmore(int reports) {
  (void)reports;
  return 0;
}
static void begincounting(void) {
  counting = 1;
}
static void endcounting(void) {
  counting = 0;
}

/* How many blocks are given out. */
__attribute__((visibility("default"))) long prove_blocks(void) {
  return blocks;
}

static int refused(void) {
  if (!counting) return 0;
  const int64_t number = ++told->calls;
  if (number < asked.first || number - asked.first >= asked.count) return 0;
  told->failed++;
  errno = ENOMEM;
  return 1;
}

static void* given(void* block) {
  if (block != NULL) blocks++;
  return block;
}
static void* filled(void* block) {
  if (counting && block != NULL) memset(block, 0xa5, malloc_usable_size(block));
  return given(block);
}

#define PUBLIC __attribute__((visibility("default")))
PUBLIC void* malloc(size_t size) {
  return refused() ? NULL : filled(__libc_malloc(size));
}
PUBLIC void* calloc(size_t count, size_t size) {
  return refused() ? NULL : given(__libc_calloc(count, size));
}
PUBLIC void* realloc(void* block, size_t size) {
  if (refused()) return NULL;
  void* const moved = __libc_realloc(block, size);
  if (block == NULL) return given(moved);
  if (moved == NULL && size == 0) blocks--;
  return moved;
}
PUBLIC void* memalign(size_t alignment, size_t size) {
  return refused() ? NULL : filled(__libc_memalign(alignment, size));
}
PUBLIC void* aligned_alloc(size_t alignment, size_t size) {
  return memalign(alignment, size);
}
PUBLIC int posix_memalign(void** block, size_t alignment, size_t size) {
  void* const made = memalign(alignment, size);
  if (made == NULL) return ENOMEM;
  *block = made;
  return 0;
}
PUBLIC void free(void* block) {
  if (block == NULL) return;
  const int before = errno;
  if (counting) memset(block, 0xdf, malloc_usable_size(block));
  blocks--;
  __libc_free(block);
  errno = before;
}
