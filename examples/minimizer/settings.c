/* From words and files to settings, through the public interface of the library only. */
#include "settings.h"

#include <optxv/optxv.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Prints the messages and clears them; gives 1 if none of them is an error. */
static int report(optHandle options) {
  char text[OPTXV_TEXT_SIZE];
  int32_t errors, warnings, kind;
  optErrorCount(options, &errors, &warnings);
  for (int32_t number = 1; number <= optMessageCount(options); number++) {
    coptGetMessage(options, number, text, &kind);
    puts(text);
  }
  optClearMessages(options);
  return errors == 0;
}

/* The number of an option that the definition must have: a definition of something else ends here.
 */
static int32_t number_of(optHandle options, const char* name) {
  int32_t number, refnr;
  if (coptFindStr(options, name, &number, &refnr) == 1) return number;
  fprintf(stderr, "minimizer: the definition lacks the option %s\n", name);
  exit(2);
}

static int integer_of(optHandle options, const char* name) {
  int32_t value = 0;
  optGetIntNr(options, number_of(options, name), &value);
  return (int)value;
}

static double real_of(optHandle options, const char* name) {
  double value = 0;
  optGetDblNr(options, number_of(options, name), &value);
  return value;
}

/* The position of an enumerated text in its list, from 0. The library has checked the text. */
static int choice_of(optHandle options, const char* name) {
  char text[OPTXV_TEXT_SIZE];
  int32_t entry = 1;
  coptGetEnumStrNr(options, number_of(options, name), text, &entry);
  return entry > 0 ? (int)entry - 1 : 0;
}

static int is_set(optHandle options, const char* name) {
  int32_t mask = 0;
  optGetDefinedNr(options, number_of(options, name), &mask);
  return mask != 0;
}

/* One coordinate from each entry x.start('<number>'); others are a mistake of the user. */
static void start_from_dots(optHandle options, struct settings* settings) {
  char symbol[OPTXV_TEXT_SIZE], label[OPTXV_TEXT_SIZE];
  int32_t dropped, number, dimension;
  double value;
  const int32_t count = optDotOptCount(options, &dropped);
  for (int32_t entry = 1; entry <= count; entry++) {
    coptGetDotOptNr(options, entry, symbol, &number, &dimension, &value);
    coptGetDotOptUel(options, entry, 1, label);
    char* end;
    const long index = strtol(label, &end, 10);
    if (dimension == 1 && *end == '\0' && index >= 1 && index <= settings->problem.dimension)
      settings->start[index - 1] = value;
    else
      coptAddMessage(options, "x.start wants one number of a variable, as in x.start('1') = 0.5");
  }
}

static void take_values(optHandle options, struct settings* settings) {
  struct problem* problem = &settings->problem;
  problem->function = choice_of(options, "function");
  problem->dimension = integer_of(options, "dimension");
  problem->condition = real_of(options, "condition");
  /* The bounds of the definition hold, unless the user has switched them off. */
  if (problem->dimension < 2 || problem->dimension > MAX_DIMENSION) {
    problem->dimension = 2;
    coptAddMessage(options, "the number of variables is 2 to 100, whatever the bounds");
  }

  struct algorithm* algorithm = &settings->algorithm;
  algorithm->method = choice_of(options, "method");
  algorithm->gradient_tol = real_of(options, "gradient_tol");
  algorithm->iteration_limit = integer_of(options, "iteration_limit");
  algorithm->decrease = real_of(options, "decrease");
  algorithm->curvature = real_of(options, "curvature");

  settings->log_frequency = integer_of(options, "log_frequency");
  settings->summary = integer_of(options, "summary");

  usual_start(problem, settings->start);
  if (is_set(options, "start_point")) {
    const int32_t number = number_of(options, "start_point");
    optGetDblNr(options, number, &settings->start[0]);
    optGetDbl2Nr(options, number, &settings->start[1]);
  }
  start_from_dots(options, settings);
}

int read_settings(struct settings* settings, const char* definition, char** words, int count) {
  optHandle options;
  xcreate(&options);
  int good = coptReadDefinition(options, definition) == 0;
  for (int i = 0; good && i < count; i++) {
    if (words[i][0] == '@')
      coptReadParameterFile(options, words[i] + 1);
    else
      optReadFromPChar(options, words[i]);
  }
  good = report(options) && good;
  if (good) {
    take_values(options, settings);
    if (is_set(options, "echo_options")) coptWriteParameterFile(options, "");
    good = report(options);
  }
  xfree(&options);
  return good;
}
