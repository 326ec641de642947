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
 * Fills the settings from the first word, a definition file, and the words after it: "@name" reads
 * a file; then come options as in --name=value or name=value; what is left is a line of parameter
 * text each. Prints whatever the library has to say. Gives 1, or 0 if the program should not run.
 */
int read_settings(struct settings* settings, int count, char** words);

#endif
