/* The run-time options of the minimizer, as plain values. */
#ifndef MINIMIZER_SETTINGS_H
#define MINIMIZER_SETTINGS_H

#include "minimize.h"

struct settings {
  struct problem problem;
  struct algorithm algorithm;
  double start[MAX_DIMENSION];
  int log_frequency;
  int summary;
};

/*
 * Fills the settings from a definition file and words of the command line: "@name" reads a file,
 * anything else is one line of parameter text. Prints whatever the library has to say.
 * Gives 1, or 0 if the program should not run.
 */
int read_settings(struct settings* settings, const char* definition, char** words, int count);

#endif
