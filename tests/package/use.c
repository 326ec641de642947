/* A caller in C: a fresh object is made, holds no option, and is given back. */
#include <optxv/optxv.h>
#include <stddef.h>
#include <stdio.h>

int main(void) {
  void* handle = NULL;
  xcreate(&handle);
  if (handle == NULL) return 1;
  if (optcount(handle) != 0) return 2;
  xfree(&handle);
  puts("c caller: ok");
  return handle == NULL ? 0 : 3;
}
