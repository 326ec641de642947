/* The public header, and a whole run through it, in C99 with every warning an error. */
#include <optxv/optxv.h>
#include <stdio.h>
#include <string.h>

static int run(const char* definition) {
  optHandle options;
  char text[OPTXV_TEXT_SIZE];
  int32_t number, refnr, kind, value = 0;

  xcreate(&options);
  if (coptReadDefinition(options, definition) != 0) return 1;
  coptReadFromStr(options, "steplim 500");
  coptReadFromStr(options, "steplim 6000");
  if (coptFindStr(options, "steplim", &number, &refnr) != 1 || number != 2) return 2;
  if (optGetIntNr(options, number, &value) != 1 || value != 500) return 3;
  coptGetMessage(options, 2, text, &kind);
  if (kind != optMsgValueError || strncmp(text, "*** Value Error ", 16) != 0) return 4;
  xfree(&options);
  return options == NULL ? 0 : 5;
}

int main(int count, char** arguments) {
  FILE* file = count == 2 ? fopen(arguments[1], "w") : NULL;
  int failed;
  if (file == NULL) return 99;
  fputs("steplim integer 1 1000 0 5000 5 1 Step limit\n", file);
  if (fclose(file) != 0) return 98;
  failed = run(arguments[1]);
  remove(arguments[1]);
  return failed;
}
