/* Says what the library knows of this program: how many arguments there are, whether an audit is
   asked for, and where the program lies. Built twice: linked with the library, and loading it. */
#include <dlfcn.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

int32_t getosfilesys(void);

static void take(void* library, const char* name, void* function) {
  void* const symbol = dlsym(library, name);
  memcpy(function, &symbol, sizeof symbol);
}

int main(void) {
  int32_t (*count)(void), (*path)(char*, size_t);
  bool (*audit)(void);
  char text[255];
#ifdef OPTXV_LOADED_FILE
  void* const library = dlopen(OPTXV_LOADED_FILE, RTLD_NOW | RTLD_LOCAL);
#else
  void* const library = getosfilesys() == 4 ? dlopen(NULL, RTLD_NOW) : NULL;
#endif
  take(library, "unixgetmodulefilename", &path);
  take(library, "_ZN5optxv10paramcountEv", &count);
  take(library, "_ZN5optxv11zdlauditrunEv", &audit);
  if (path(text, sizeof text) != 0) return 22;
  return printf("%d %s %s", (int)count(), audit() ? "audit" : "-", text) < 0;
}
