/*
 * What the driver of a part asks for and what it is told: one order for each run of a program, and
 * one report after it. prove/aid/server.py has the same two in its own words.
 */
#ifndef OPTXV_PROVE_ORDER_H
#define OPTXV_PROVE_ORDER_H

#include <stdint.h>

/* Fail calls first, first + 1, ... of the run, `count` of them; none where count is 0. */
struct order {
  int64_t first;
  int64_t count;
  int64_t error; /* how: errno, or a number below 0 that the library of the part explains */
};

struct report {
  int64_t status; /* as waitpid gives it */
  int64_t calls;  /* how many calls were counted */
  int64_t failed; /* how many of them were made to fail */
  int64_t heeded; /* 1 if a failure has to show in the result; 2 if nobody can be told; else 0 */
};

#endif
