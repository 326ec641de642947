/* Minimizes a classic function; see README.md. */
#include <stdio.h>

#include "settings.h"

static void log_line(const struct result* now, void* context) {
  const struct settings* settings = context;
  if (settings->log_frequency > 0 && now->iterations % settings->log_frequency == 0)
    printf("%6d %6d %14.6e %14.6e\n", now->iterations, now->evaluations, now->value, now->gradient);
}

static void summarise(const struct settings* settings, const struct result* end) {
  printf("%s after %d iterations, %d evaluations: value %.3e, gradient %.1e\n",
         end->converged ? "minimum" : "stopped", end->iterations, end->evaluations, end->value,
         end->gradient);
  for (int i = 0; i < settings->problem.dimension; i++)
    printf("  x%d = %.6f\n", i + 1, settings->start[i]);
}

int main(int count, char** words) {
  if (count < 2) {
    fputs("usage: minimizer <definition file> [@<option file> | --<option>=<value>]...\n", stderr);
    return 2;
  }
  struct settings settings = {0};
  if (!read_settings(&settings, count - 1, words + 1)) return 2;
  if (settings.log_frequency > 0) puts("  iter  evals          value       gradient");
  const struct result end = minimize(&settings.problem, &settings.algorithm, settings.start,
                                     settings.log_frequency > 0 ? log_line : NULL, &settings);
  if (settings.summary) summarise(&settings, &end);
  return end.converged ? 0 : 1;
}
