/* From words and files to settings. The struct of the options is made from minimizer.def. */
#include "settings.h"

#include <minimizer_options.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Prints the messages and clears them; gives 1 if none of them is an error. */
static int report(optxv_handle options) {
  char text[256];
  int32_t errors;
  optxv_error_count(options, &errors, NULL);
  for (int32_t i = 1; optxv_show_message(options, i, text) == optxv_ok; i++) puts(text);
  optxv_clear_messages(options);
  return errors == 0;
}

static void complain(optxv_handle options, const char* text) {
  optxv_add_message(options, text, OPTXV_ENDED);
}

static int is_set(optxv_handle options, int32_t number) {
  optxv_option option;
  return optxv_option_info(options, number, &option) == optxv_ok && option.defined != 0;
}

/* One coordinate from each entry x.start('<number>'); others are a mistake of the user. */
static void start_from_dots(optxv_handle options, struct settings* settings) {
  const int32_t count = optxv_dot_option_count(options, NULL);
  for (int32_t i = 1; i <= count; i++) {
    optxv_dot_option entry;
    optxv_text label;
    char digits[12] = "", *end = digits;
    optxv_dot_option_info(options, i, &entry);
    if (optxv_dot_option_label(options, i, 1, &label) == optxv_ok && label.size < sizeof(digits))
      memcpy(digits, label.bytes, label.size);
    const long index = strtol(digits, &end, 10);
    if (entry.labels == 1 && *end == '\0' && index >= 1 && index <= settings->problem.dimension)
      settings->start[index - 1] = entry.value;
    else
      complain(options, "x.start wants one number of a variable, as in x.start('1') = 0.5");
  }
}

static void take_values(optxv_handle options, const struct minimizer_options* given,
                        struct settings* settings) {
  settings->problem = (struct problem){(int)given->function, given->dimension, given->condition};
  settings->algorithm =
      (struct algorithm){(int)given->method, given->gradient_tol, given->iteration_limit,
                         given->decrease, given->curvature};
  settings->log_frequency = given->log_frequency;
  settings->summary = given->summary;
  /* The bounds of the definition hold, unless the user has switched them off. */
  if (given->dimension < 2 || given->dimension > MAX_DIMENSION) {
    settings->problem.dimension = 2;
    complain(options, "the number of variables is 2 to 100, whatever the bounds");
  }

  usual_start(&settings->problem, settings->start);
  if (is_set(options, MINIMIZER_NUMBER_START_POINT))
    memcpy(settings->start, given->start_point, sizeof(given->start_point));
  start_from_dots(options, settings);
}

/* Files come first, so that the other words have the last word. */
static void read_words(optxv_handle options, int count, char** words) {
  for (int i = 1; i < count; i++)
    if (words[i][0] == '@') optxv_read_parameters(options, words[i] + 1);
  optxv_read_arguments(options, &count, words, 0);
  for (int i = 1; i < count; i++)
    if (words[i][0] != '@') optxv_read_line(options, words[i], OPTXV_ENDED);
}

int read_settings(struct settings* settings, int count, char** words) {
  optxv_handle options;
  struct minimizer_options given;
  if (optxv_create(&options) != optxv_ok) return 0;
  int good = optxv_read_definition(options, words[0]) == optxv_ok;
  if (good) read_words(options, count, words);
  good = report(options) && good;
  if (good) {
    const int32_t status = minimizer_fill(&given, options);
    if (status != optxv_ok) fprintf(stderr, "minimizer: %s\n", optxv_status_text(status));
    good = status == optxv_ok;
  }
  if (good) {
    take_values(options, &given, settings);
    if (is_set(options, MINIMIZER_NUMBER_ECHO_OPTIONS)) optxv_write_parameters(options, "");
    good = report(options);
  }
  optxv_free(&options);
  return good;
}
