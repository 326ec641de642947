/* The header for programs that embed the library, alone, in C99 with every warning an error; in a
   program that has functions of its own under the short names of the classic header. */
#include <optxv/embedding.h>
#include <string.h>

void xcreate(int* made);
int xfree(int value);

void xcreate(int* made) {
  ++*made;
}
int xfree(int value) {
  return value + 1;
}

static void hear(void* context, const optxv_message* message) {
  if (message->fault == optxv_fault_range) *(int64_t*)context = message->place.column;
}

int main(void) {
  const char* const definition = "steplim integer 1 10 0 99 1 1 Step limit";
  const char* const text = "steplim 500";
  const char* words[] = {"steps", "--steplim=12", "in.dat", NULL};
  char* argv[4];
  int argc = 3;
  int own = 0;
  int32_t limit = 0;
  optxv_handle options;
  int64_t column = 0;
  optxv_place place;
  optxv_listener listener = {0};
  listener.size = sizeof listener;
  listener.context = &column;
  listener.message = hear;

  memcpy(argv, words, sizeof argv);
  if (optxv_create(&options) != optxv_ok) return 1;
  optxv_listen(options, &listener);
  optxv_read_definition_text(options, "steps", definition, strlen(definition));
  optxv_read_parameter_text(options, "mine", text, strlen(text));
  if (!optxv_message_place(options, 2, &place)) return 1;
  if (strcmp(place.file, "mine") != 0) return 1;
  if (optxv_read_arguments(options, &argc, argv, 0) != optxv_ok || argc != 2) return 1;
  if (optxv_get_integer(options, "steplim", &limit) != optxv_ok || limit != 12) return 1;
  optxv_free(&options);
  xcreate(&own);
  return options == NULL && xfree(own) == 2 && column == 9 && place.column == column ? 0 : 1;
}
