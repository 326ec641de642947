/* Both public headers in C99 with every warning an error, the one for programs that embed the
   library first and so alone. */
#include <optxv/embedding.h>
#include <optxv/optxv.h>
#include <string.h>

static void hear(void* context, const optxv_message* message) {
  if (message->fault == optxv_fault_range) *(int64_t*)context = message->place.column;
}

int main(void) {
  const char* const definition = "steplim integer 1 10 0 99 1 1 Step limit";
  const char* const text = "steplim 500";
  optHandle options;
  int64_t column = 0;
  optxv_place place;
  optxv_listener listener = {0};
  listener.size = sizeof listener;
  listener.context = &column;
  listener.message = hear;

  xcreate(&options);
  optxv_listen(options, &listener);
  optxv_read_definition_text(options, "steps", definition, strlen(definition));
  optxv_read_parameter_text(options, "mine", text, strlen(text));
  if (!optxv_message_place(options, 2, &place)) return 1;
  if (strcmp(place.file, "mine") != 0) return 1;
  coptReadFromStr(options, "steplim x"); /* a mixed-case name */
  xfree(&options);
  return options == NULL && column == 9 && place.column == column ? 0 : 1;
}
