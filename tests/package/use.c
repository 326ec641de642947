/* A caller in C, and in C++: a new object is made, holds no option, and is freed. */
#include <optxv/optxv.h>
#include <stddef.h>
#include <stdio.h>

int main(void) {
  void* handle = NULL;
  xcreate(&handle);
  if (handle == NULL || optcount(handle) != 0) return 1;
  xfree(&handle);
  puts("caller: ok");
  return handle == NULL ? 0 : 2;
}
