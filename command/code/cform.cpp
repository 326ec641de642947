// Generated code in C99: one header, whose functions are inline.

#include "code/languages.h"

namespace command {
namespace {

constexpr std::string_view skeleton = R"(/* The options of $(source), made by: $(made)
 * Change the definition and make this anew: what is changed here is lost. */
#ifndef $(PREFIX)_OPTIONS_H
#define $(PREFIX)_OPTIONS_H

#include <optxv/embedding.h>
#include <stdbool.h>
#include <stdint.h>
#include <string.h>

/* The table of options that the numbers are of; see optxv_table_mark. */
#define $(PREFIX)_TABLE_MARK UINT64_C(0x$(mark))

/* The numbers of the options. */
enum {
%each options
  $(PREFIX)_NUMBER_$(ID) = $(number)$(comma)
%end
};
%if references

/* The numbers that the definition gives them. */
enum {
%each references
  $(PREFIX)_REFERENCE_$(ID) = $(reference)$(comma)
%end
};
%end
%each enumerations

$(comment)
enum $(prefix)_$(id) {
%each items
  $(comment)
  $(constant) = $(value)$(comma)
%end
};
%if choice

/* The items of $(prefix)_$(id) as the definition writes them. */
static inline const char* const* $(prefix)_$(id)_texts(void) {
  static const char* const texts[] = {
%each items
      $(literal)$(comma)
%end
  };
  return texts;
}
%end
%if listed

/* The values of $(prefix)_$(id). */
static inline const int32_t* $(prefix)_$(id)_values(void) {
  static const int32_t values[] = {
%each items
      $(value)$(comma)
%end
  };
  return values;
}
%end
%end

/* The values of the options. Texts are zero-terminated. */
struct $(prefix)_options {
%each fields
  $(comment)
  $(declaration);
%end
%unless fields
  char none;
%end
};

/* The defaults of the definition. */
static inline struct $(prefix)_options $(prefix)_defaults(void) {
  static const struct $(prefix)_options values = {
%each fields
      .$(id) = $(default),
%end
%unless fields
      .none = 0,
%end
  };
  return values;
}

/* What the functions below are made of. A status keeps the first failure. */

static inline void $(prefix)_note(int32_t* status, int32_t next) {
  if (*status == optxv_ok) *status = next;
}

static inline void $(prefix)_get_integer(optxv_handle handle, int32_t number, int32_t which,
                                         int32_t* value, int32_t* status) {
  $(prefix)_note(status, optxv_get_integer_nr(handle, number, which, value));
}

static inline void $(prefix)_set_integer(optxv_handle handle, int32_t number, int32_t which,
                                         const int32_t* value, int32_t* status) {
  int32_t now = 0;
  $(prefix)_get_integer(handle, number, which, &now, status);
  if (now != *value) $(prefix)_note(status, optxv_set_integer_nr(handle, number, which, *value));
}

static inline void $(prefix)_get_boolean(optxv_handle handle, int32_t number, int32_t which,
                                         bool* value, int32_t* status) {
  int32_t now = *value;
  $(prefix)_get_integer(handle, number, which, &now, status);
  *value = now != 0;
}

static inline void $(prefix)_set_boolean(optxv_handle handle, int32_t number, int32_t which,
                                         const bool* value, int32_t* status) {
  bool now = false;
  $(prefix)_get_boolean(handle, number, which, &now, status);
  if (now != *value) $(prefix)_note(status, optxv_set_integer_nr(handle, number, which, *value));
}

static inline void $(prefix)_get_real(optxv_handle handle, int32_t number, int32_t which,
                                      double* value, int32_t* status) {
  $(prefix)_note(status, optxv_get_real_nr(handle, number, which, value));
}

static inline void $(prefix)_set_real(optxv_handle handle, int32_t number, int32_t which,
                                      const double* value, int32_t* status) {
  double now = 0;
  $(prefix)_get_real(handle, number, which, &now, status);
  if (now != *value) $(prefix)_note(status, optxv_set_real_nr(handle, number, which, *value));
}

static inline void $(prefix)_get_text(optxv_handle handle, int32_t number, int32_t which,
                                      char (*value)[256], int32_t* status) {
  optxv_text text = {NULL, 0};
  const int32_t got = optxv_get_text_nr(handle, number, which, &text);
  const size_t size = text.size < 255 ? text.size : 255;
  $(prefix)_note(status, got);
  if (got != optxv_ok) return;
  if (size > 0) memcpy(*value, text.bytes, size);
  (*value)[size] = '\0';
}

static inline void $(prefix)_set_text(optxv_handle handle, int32_t number, int32_t which,
                                      const char (*value)[256], int32_t* status) {
  char now[256] = "";
  const char* const end = (const char*)memchr(*value, '\0', 256);
  const size_t size = end == NULL ? 256 : (size_t)(end - *value);
  $(prefix)_get_text(handle, number, which, &now, status);
  if (strncmp(now, *value, 256) != 0)
    $(prefix)_note(status, optxv_set_text_nr(handle, number, which, *value, size));
}

static inline char $(prefix)_small(char c) {
  return c >= 'A' && c <= 'Z' ? (char)(c + ('a' - 'A')) : c;
}

static inline bool $(prefix)_same(const char* item, const optxv_text* text) {
  size_t i = 0;
  while (i < text->size && item[i] != '\0' && $(prefix)_small(item[i]) == $(prefix)_small(text->bytes[i])) i++;
  return i == text->size && item[i] == '\0';
}

/* The position of the item that an option is set to; what it was if that is none of them. */
static inline int $(prefix)_get_choice(optxv_handle handle, int32_t number, int32_t which, int value,
                                       const char* const* texts, int count, int32_t* status) {
  optxv_text text = {NULL, 0};
  const int32_t got = optxv_get_text_nr(handle, number, which, &text);
  for (int i = 0; got == optxv_ok && i < count; i++)
    if ($(prefix)_same(texts[i], &text)) return i;
  $(prefix)_note(status, got == optxv_ok ? optxv_refused : got);
  return value;
}

static inline void $(prefix)_set_choice(optxv_handle handle, int32_t number, int32_t which,
                                        int value, const char* const* texts, int count,
                                        int32_t* status) {
  int32_t ignored = optxv_ok;
  if (value < 0 || value >= count) {
    $(prefix)_note(status, optxv_bad_argument);
  } else if ($(prefix)_get_choice(handle, number, which, -1, texts, count, &ignored) != value) {
    $(prefix)_note(status, optxv_set_text_nr(handle, number, which, texts[value], OPTXV_ENDED));
  }
}

/* The integer that an option is set to; what it was if that is none of its items. */
static inline int32_t $(prefix)_get_listed(optxv_handle handle, int32_t number, int32_t which,
                                           int32_t value, const int32_t* values, int count,
                                           int32_t* status) {
  int32_t now = value;
  $(prefix)_get_integer(handle, number, which, &now, status);
  for (int i = 0; i < count; i++)
    if (values[i] == now) return now;
  $(prefix)_note(status, optxv_refused);
  return value;
}

/*
 * Fills the values from a handle. optxv_other_table for a handle of another definition: nothing is
 * filled then. optxv_refused where an option has a value that is none of its items, which is so
 * while bounds are off: that field has its default.
 */
static inline int32_t $(prefix)_fill(struct $(prefix)_options* values, optxv_handle handle) {
  int32_t status = optxv_ok;
  if (optxv_table_mark(handle) != $(PREFIX)_TABLE_MARK) return optxv_other_table;
  *values = $(prefix)_defaults();
%each fields
%each parts
%if choice
  values->$(id)$(part) = (enum $(prefix)_$(id))$(prefix)_get_choice(
      handle, $(number), $(which), (int)values->$(id)$(part), $(prefix)_$(id)_texts(), $(count), &status);
%end
%if listed
  values->$(id)$(part) = (enum $(prefix)_$(id))$(prefix)_get_listed(
      handle, $(number), $(which), (int32_t)values->$(id)$(part), $(prefix)_$(id)_values(), $(count), &status);
%end
%if plain
  $(prefix)_get_$(shape)(handle, $(number), $(which), &values->$(id)$(part), &status);
%end
%end
%end
  return status;
}

/*
 * Sets the options whose values differ from those of the handle. The first failure is the status;
 * the other options are set all the same. What was refused is in the queue of messages.
 */
static inline int32_t $(prefix)_apply(const struct $(prefix)_options* values, optxv_handle handle) {
  int32_t status = optxv_ok;
  if (optxv_table_mark(handle) != $(PREFIX)_TABLE_MARK) return optxv_other_table;
%each fields
%each parts
%if choice
  $(prefix)_set_choice(handle, $(number), $(which), (int)values->$(id)$(part), $(prefix)_$(id)_texts(), $(count), &status);
%end
%if listed
  {
    const int32_t value = (int32_t)values->$(id)$(part);
    $(prefix)_set_integer(handle, $(number), $(which), &value, &status);
  }
%end
%if plain
  $(prefix)_set_$(shape)(handle, $(number), $(which), &values->$(id)$(part), &status);
%end
%end
%end
  return status;
}
%each lists

/* $(name): how many items it has, and item `position`, from 1, as optxv_list_item gives it. */
static inline int32_t $(prefix)_$(id)_count(optxv_handle handle) {
  return optxv_list_count(handle, $(number));
}
static inline int32_t $(prefix)_$(id)_item(optxv_handle handle, int32_t position, optxv_text* item) {
  return optxv_list_item(handle, $(number), position, item);
}
%end
%if embedded

/* Reads the definition that this was made from. Its text is here, so that no file is needed. */
static inline int32_t $(prefix)_read_definition(optxv_handle handle) {
  static const unsigned char text[] = {
      $(bytes)
      0};
  return optxv_read_definition_text(handle, $(file), (const char*)text, sizeof(text) - 1);
}
%end

#endif
)";

}  // namespace

const language clanguage = {
    .name = "c",
    .rules =
        {.keywords =
             " auto break case char const continue default do double else enum extern float "
             "for goto if inline int long register restrict return short signed sizeof static "
             "struct switch typedef union unsigned void volatile while asm typeof bool true "
             "false alignas alignof constexpr nullptr static_assert thread_local typeof_unqual "
             "errno stdin stdout stderr assert linux unix i386 major minor makedev offsetof "
             "complex imaginary noreturn I NULL EOF "},
    .ownwords = "options",
    .listfields = false,
    .comment = {"/* ", "   ", " */", "*//*"},
    .textliteral = ctext,
    .realliteral = plainreal,
    .integerliteral = cinteger,
    .booleans = {"false", "true"},
    .declarations = {{{"int32_t $(id)", "int32_t $(id)[2]"},
                      {"double $(id)", "double $(id)[2]"},
                      {"char $(id)[256]", "char $(id)[2][256]"},
                      {"bool $(id)", "bool $(id)[2]"},
                      {"enum $(prefix)_$(id) $(id)", "enum $(prefix)_$(id) $(id)[2]"},
                      {"enum $(prefix)_$(id) $(id)", "enum $(prefix)_$(id) $(id)[2]"},
                      {"", ""}}},
    .constant = "$(PREFIX)_$(ID)_$(ITEM)",
    .itemvalue = "$(constant)",
    .pairvalue = "{$(first), $(second)}",
    .parts = {"[0]", "[1]"},
    .skeleton = skeleton};

}  // namespace command
