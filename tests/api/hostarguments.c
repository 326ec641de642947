/* A plain C program that says what the library knows of it: how many arguments there are, whether
   an audit is asked for, and where the program lies. Built twice: linked with the library, and
   loading it by the name in OPTXV_LOADED_FILE. */
#include <dlfcn.h>
#include <stdbool.h>
#include <stdio.h>
#include <string.h>

#ifdef OPTXV_LOADED_FILE
#include <stddef.h>
#include <stdint.h>
#else
#include <optxv/optxv.h>
#endif

static void* library;

static void take(const char* name, void* function) {
  void* const symbol = dlsym(library, name);
  memcpy(function, &symbol, sizeof symbol);
}

int main(void) {
  int32_t (*count)(void);
  bool (*audit)(void);
  int32_t (*path)(char*, size_t);
  char text[255];
  int32_t failed;

#ifdef OPTXV_LOADED_FILE
  library = dlopen(OPTXV_LOADED_FILE, RTLD_NOW | RTLD_LOCAL);
  if (library == NULL) return 9;
  take("unixgetmodulefilename", &path);
#else
  library = dlopen(NULL, RTLD_NOW);
  path = unixgetmodulefilename;
#endif
  take("_ZN5optxv10paramcountEv", &count);
  take("_ZN5optxv11zdlauditrunEv", &audit);
  if (count == NULL || audit == NULL || path == NULL) return 8;
  failed = path(text, sizeof text);
  printf("%d %s %s", (int)count(), audit() ? "audit" : "-", failed != 0 ? "nowhere" : text);
  return failed;
}
