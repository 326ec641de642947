/*
 * A program that is started once and run many times: its main is held back, and each order that
 * comes in forks a process that runs it. So a run costs a fork, not a start. Included by the
 * preloaded libraries.
 *
 * The environment names the descriptors: PROVE_ORDERS, where orders come in, and PROVE_REPORTS,
 * where reports go out. With PROVE_LATER the program says itself from where to count, by
 * prove_begin; else that is the entry of main.
 */
#ifndef OPTXV_PROVE_FORKSERVER_H
#define OPTXV_PROVE_FORKSERVER_H

#include <dlfcn.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "order.h"

enum { longestrun = 20 }; /* seconds; a run that takes longer is ended by SIGALRM */

/* Shared with the processes that run. */
static struct report* told;
static struct order asked;

/* The library begins, and ends, to count and to fail calls. */
static void begincounting(void);
static void endcounting(void);
/* What is to be done once, before the first run. */
static void setup(void);
/* What goes out after the report of a run; 0 if that worked. */
static int tellmore(int reports);

typedef int (*mainfunction)(int, char**, char**);
static mainfunction heldback;

__attribute__((visibility("default"))) void prove_begin(void) {
  begincounting();
}
__attribute__((visibility("default"))) void prove_end(void) {
  endcounting();
}

static int numbered(const char* variable) {
  const char* const text = getenv(variable);
  return text == NULL ? -1 : atoi(text);
}

/* Runs the program once in a process of its own; 0 in that process. */
static pid_t runforked(int orders, int reports) {
  lseek(STDIN_FILENO, 0, SEEK_SET);
  *told = (struct report){0, 0, 0, 0};
  const pid_t child = fork();
  if (child == 0) {
    close(orders);
    close(reports);
    alarm(longestrun);
  }
  return child;
}

static int serve(int argc, char** argv, char** environment) {
  const int orders = numbered("PROVE_ORDERS"), reports = numbered("PROVE_REPORTS");
  if (orders < 0) return heldback(argc, argv, environment);
  told = mmap(NULL, sizeof *told, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (told == MAP_FAILED) return 125;
  unsetenv("LD_PRELOAD");
  setup();
  while (read(orders, &asked, sizeof asked) == (ssize_t)sizeof asked) {
    const pid_t child = runforked(orders, reports);
    if (child < 0) return 125;
    if (child == 0) {
      if (getenv("PROVE_LATER") == NULL) begincounting();
      return heldback(argc, argv, environment);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child) return 125;
    told->status = status;
    if (write(reports, told, sizeof *told) != (ssize_t)sizeof *told) return 125;
    if (tellmore(reports) != 0) return 125;
  }
  _exit(0);
}

typedef int (*startfunction)(mainfunction, int, char**, void (*)(void), void (*)(void),
                             void (*)(void), void*);
int __libc_start_main(mainfunction program, int argc, char** argv, void (*init)(void),
                      void (*fini)(void), void (*rtldfini)(void), void* stackend);

__attribute__((visibility("default"))) int __libc_start_main(mainfunction program, int argc,
                                                             char** argv, void (*init)(void),
                                                             void (*fini)(void),
                                                             void (*rtldfini)(void),
                                                             void* stackend) {
  heldback = program;
  void* const next = dlsym(RTLD_NEXT, "__libc_start_main");
  startfunction start = NULL;
  __builtin_memcpy(&start, &next, sizeof start);
  return start(serve, argc, argv, init, fini, rtldfini, stackend);
}

#endif
