/* The public header in C99 with every warning an error, with its mixed-case names. */
#include <optxv/optxv.h>
#include <stddef.h>

int main(void) {
  optHandle options;
  char text[OPTXV_TEXT_SIZE];
  int32_t kind;
  xcreate(&options);
  coptReadFromStr(options, "steplim 500");
  coptGetMessage(options, 2, text, &kind);
  xfree(&options);
  return options == NULL && kind == optMsgUserError ? 0 : 1;
}
