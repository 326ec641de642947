/* The solver of solver.cpp in C. */
#include <optxv/embedding.h>
#include <stdio.h>
#include <string.h>

struct solver_options {
  double time_limit;
  int32_t threads;
  char method[256];
  int32_t presolve;
  char log_file[256];
};

static int32_t get_copy(optxv_handle handle, const char* name, char* copy) {
  optxv_text text = {"", 0};
  const int32_t status = optxv_get_text(handle, name, &text);
  if (text.size > 0) memcpy(copy, text.bytes, text.size);
  copy[text.size] = '\0';
  return status;
}

static int32_t solver_fill(struct solver_options* values, optxv_handle handle) {
  int32_t status = optxv_get_real(handle, "time_limit", &values->time_limit);
  if (status == 0) status = optxv_get_integer(handle, "threads", &values->threads);
  if (status == 0) status = get_copy(handle, "method", values->method);
  if (status == 0) status = optxv_get_integer(handle, "presolve", &values->presolve);
  return status != 0 ? status : get_copy(handle, "log_file", values->log_file);
}

/* Shows the messages, and gives the number of errors. */
static int32_t report(optxv_handle handle) {
  char text[256];
  int32_t errors = 0;
  for (int32_t i = 1; i <= optxv_message_count(handle); i++)
    if (optxv_show_message(handle, i, text) == 0) fprintf(stderr, "%s\n", text);
  optxv_error_count(handle, &errors, NULL);
  return errors;
}

int main(int argc, char** argv) {
  struct solver_options values;
  optxv_handle options;
  if (optxv_create(&options) != 0) return 3;
  int32_t status = optxv_read_definition(options, "examples/embedding/solver.def");
  if (status == 0) status = optxv_read_environment(options, "SOLVER_");
  if (status == 0) status = optxv_read_arguments(options, &argc, argv, 0);
  const int32_t errors = report(options);
  if (status == 0) status = solver_fill(&values, options);
  optxv_free(&options);
  if (status != 0) return fprintf(stderr, "solver_c: %s\n", optxv_status_text(status)), 3;
  if (errors > 0 || argc != 2)
    return fputs("usage: solver_c [--option=value]... MODEL\n", stderr), 2;
  printf("%s: %s on %d threads for %g s%s\n", argv[1], values.method, (int)values.threads,
         values.time_limit, values.presolve ? ", presolved" : "");
  if (values.log_file[0] != '\0') printf("log in %s\n", values.log_file);
  return 0;
}
