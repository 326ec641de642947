/*
 * optxv for programs that embed it: an interface whose names begin with `optxv_`, which gives facts
 * as data and a status for everything that can fail.
 *
 * It can be used alone or beside the classic interface of optxv.h, on the same handles: a handle of
 * optxv_create and one of xcreate are the same thing. It has what a program needs to take in its
 * options: reading definitions and parameters from files, memory, the command line and the
 * environment; typed values by name and by number; the table, the messages, dot options and
 * indicators as structs; snapshots of the values; writing. For tools it has a listener, which the
 * readers call as they learn something: a key and its place, a value, what was stored and by which
 * road, a message with its cause.
 *
 * No function of optxv.h changes by this, and the queue of messages, the values and the written
 * files are byte for byte the same with a listener and without. This header is C99 and C++11 and
 * needs no other header of the library. Programs in C++17 have optxv/optxv.hpp above it.
 *
 *
 * A WHOLE RUN
 *
 *     optxv_handle options;
 *     double limit;
 *
 *     if (optxv_create(&options) != 0) return 1;
 *     if (optxv_read_definition(options, "solver.def") != 0) return 1;   the table of options
 *     optxv_read_parameters(options, "solver.opt");                      what the user wrote
 *     optxv_read_arguments(options, &argc, argv, 0);                     --time_limit=5
 *
 *     for (int32_t i = 1; i <= optxv_message_count(options); i++) {
 *       char text[256];
 *       optxv_show_message(options, i, text);
 *       fprintf(stderr, "%s\n", text);
 *     }
 *     optxv_get_real(options, "time_limit", &limit);
 *     optxv_free(&options);
 *
 *
 * STATUS
 *
 * The result of a function is a status unless it says otherwise: 0 for success, a positive error
 * number of the system (errno.h; ENOMEM where memory ran out), or one of the negative numbers
 * optxv_... below. optxv_status_text puts it in words. On any status but 0 the out arguments are
 * untouched. A status tells of faults of the call; faults in what a user wrote are messages in the
 * queue, and never stop a read.
 *
 * The functions that promise a status end the process for no cause: where the classic interface
 * prints a line and aborts, for want of memory or for a write that failed, they give the error
 * number. After ENOMEM a handle may be read, changed and freed; a read that was cut short has kept
 * what it read.
 *
 *
 * PLACES
 *
 * A place is a piece of text in its source, as the reader met it; it is never found by a search.
 * Lines and columns count from 1. Columns and lengths are in bytes of the line as it is in the
 * source. A length of 0 is a place between two bytes, where something was expected. A line of 0
 * means that there is no place: the file name is then empty and the numbers are 0.
 *
 *   A file of any kind   its lines. A column is at most 1,021: what a line has after 1,020 bytes is
 *                        not read.
 *   A string             optReadFromStr and optReadFromPChar read one line, number 1; the first of
 *                        them takes 255 bytes at most. Its file name is the one in messages,
 *                        "string" or "pchar". The places of a string of more than 2,147,483,647
 *                        bytes are not exact beyond them.
 *
 * The file name is zero-terminated, belongs to the handle, and is good until xfree. A handle keeps
 * each name once, and at most 65,535 of them; after that, a file with a new name has an empty one.
 *
 *
 * TEXT
 *
 * An optxv_text is bytes and their number. It is not zero-terminated unless its member says so, and
 * any byte may occur. What a callback gets is good until it returns. What a function gives belongs
 * to the handle and is good until the next call for it that is not a question; the texts of the
 * table (names, help, items, groups) are good until the handle is freed.
 *
 * A text that goes in is bytes and a size; the size OPTXV_ENDED says that the text ends with a zero
 * byte. Nil with the size 0 is the empty text. Names are zero-terminated where they come alone.
 */
#ifndef OPTXV_EMBEDDING_H
#define OPTXV_EMBEDDING_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define OPTXV_EMBEDDING_API __attribute__((visibility("default")))
#else
#define OPTXV_EMBEDDING_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The same handle as optHandle. */
typedef void* optxv_handle;

typedef struct optxv_text {
  const char* bytes;
  size_t size;
} optxv_text;

typedef struct optxv_place {
  const char* file;
  int64_t line;
  int64_t column;
  int64_t length;
} optxv_place;

/* The size of a text that goes in and ends with a zero byte. */
#define OPTXV_ENDED ((size_t)-1)

/* What can be wrong with a call. Numbers stay as they are; new ones are added at the end. */
enum {
  optxv_ok = 0,
  optxv_unknown = -1,     /* no option, message, group, ... of that name or number */
  optxv_wrong_kind = -2,  /* the option is of another kind, or has no second value */
  optxv_refused = -3,     /* the value was refused; messages in the queue say why */
  optxv_too_long = -4,    /* a text of 255 bytes or more, or a file name of more than 255 */
  optxv_other_table = -5, /* made for another handle, or from another definition */
  optxv_bad_argument = -6 /* nil or a number outside its range where that has no meaning */
};
/* A function without a status takes a nil handle too: it does nothing, counts 0 and finds nothing.
 */

/* A status in words, without a full stop: "no such option". Of a positive number, the system's. The
 * text is good until the same thread asks again. */
OPTXV_EMBEDDING_API const char* optxv_status_text(int32_t status);

/* ---- The handle ------------------------------------------------------------------------------ */

/* Makes a new, empty set of options. OWNS: the caller, until optxv_free or xfree. */
OPTXV_EMBEDDING_API int32_t optxv_create(optxv_handle* handle);
/* Frees it and stores nil; does nothing if the stored handle is nil. */
OPTXV_EMBEDDING_API void optxv_free(optxv_handle* handle);

/* ---- Reading --------------------------------------------------------------------------------- */

/*
 * These do what optReadDefinition, optReadParameterFile and optReadFromPChar do. The status is that
 * of opening and reading the file, with messages in the queue, or optxv_too_long for its name.
 */
OPTXV_EMBEDDING_API int32_t optxv_read_definition(optxv_handle handle, const char* filename);
OPTXV_EMBEDDING_API int32_t optxv_read_parameters(optxv_handle handle, const char* filename);
OPTXV_EMBEDDING_API int32_t optxv_read_line(optxv_handle handle, const char* bytes, size_t size);

/* What optxv_read_arguments does beside taking options. To be added up. */
enum {
  /* Arguments whose name no option has stay in argv, without a message: for a program that has
     arguments of its own. */
  optxv_arguments_keep_unknown = 1
};

/*
 * Reads options from the arguments of main. Taken are
 *
 *   --name=value   name=value
 *   --name value   an option of two values takes two arguments, or one for both
 *   --name         an option that takes no value; one whose value may be left out, which takes no
 *                  argument after it; a Boolean, which becomes 1, where the next argument is none
 * of its words
 *   --             ends the options; it is taken itself
 *
 * What is taken leaves argv; the rest, and all after --, moves up in its order, argc becomes its
 * number, and argv[argc] is nil. argv[0], a single `-`, words of one hyphen, and all other words
 * stay. In name=value the name begins with a letter or an underscore and has only those, digits,
 * points and hyphens; other words with a = stay. A name is looked up as in parameter text, synonyms
 * and marks included; where it is not found as it is written, hyphens within it are read as
 * underscores. A name that no option has is a fault, and its argument leaves argv; but see
 * optxv_arguments_keep_unknown. Dot options and indicators are not read here. An immediate option
 * acts as in parameter text: --read=file reads the file.
 *
 * An argument that begins with `--` is not taken as a value; --name=--x gives such a one. A value
 * is the whole argument or all after the =, and two values there are separated by a blank. Blanks
 * at its ends and a pair of double quotes around it are no part of it, but comment characters are.
 * An empty argument is an empty value; nothing after a = is a value that is missing.
 *
 * A value is checked as in parameter text. What is wrong is a message whose text begins with the
 * argument ("argument 3: ..."); after an unknown name, a message of detail tells the nearest ones.
 * There are no messages for the beginning and the end of the read. The place of a message and of a
 * value (optxv_value_place) is in a source named "argument 3", line 1, columns in that argument; 3
 * is its index in argv before the call.
 */
OPTXV_EMBEDDING_API int32_t optxv_read_arguments(optxv_handle handle, int* argc, char** argv,
                                                 uint32_t flags);

/*
 * Reads options from the environment: every variable that begins with `prefix`, which is not empty
 * and whose case counts. The rest of the variable's name is looked up as a name in parameter text
 * is: SOLVER_TIME_LIMIT=5 with the prefix "SOLVER_" sets time_limit. Variables are read in the
 * order of their names. A variable with an empty value is no setting, except of an option that
 * takes none. Two values are separated by a blank. Messages and places are as those of arguments,
 * in a source named after the variable, "variable SOLVER_TIME_LIMIT", columns in the text
 * SOLVER_TIME_LIMIT=5. A name that no option has is a message of kind warning.
 */
OPTXV_EMBEDDING_API int32_t optxv_read_environment(optxv_handle handle, const char* prefix);

/* The switches of a handle, as opteolonlyset and its neighbours set them. */
enum {
  optxv_switch_line_mode = 0, /* one option a line; on in a new handle */
  optxv_switch_no_bounds = 1, /* values out of bounds are taken, with a warning */
  optxv_switch_echo = 2,      /* lines that are read become messages */
  optxv_switch_recent = 3,    /* setting an option marks it as recently set; on in a new handle */
  optxv_switch_print = 4      /* help prints its table for debugging on standard output, which the
                                 number 4 asks for, also in parameter text; on in a new handle */
};
/* Sets a switch, on or off (0), and gives what it was, 0 or 1; optxv_bad_argument for no switch. */
OPTXV_EMBEDDING_API int32_t optxv_switch(optxv_handle handle, int32_t which, int32_t on);

/* ---- Values ---------------------------------------------------------------------------------- */
/*
 * Integers (also Booleans and enumerated integers), reals, and texts (also enumerated texts) have
 * functions of their own, and an option of another kind gives optxv_wrong_kind. Except that an
 * integer fits wherever a real does: optxv_get_real and optxv_set_real work on integers too, where
 * a value that is no whole number of 32 bits is refused as it is in parameter text, "Integer
 * expected"; and optxv_set_integer works on reals. optxv_get_integer of a real is a wrong kind.
 *
 * The getters give the default of an option that is not set. A setter checks as optSetValuesNr
 * does; a value that is taken with a warning is a success, and the status is right while the queue
 * is full, too. A text goes in as it is, quotes included.
 *
 * By name: synonyms count, and the lookup rule of the definition holds. By number: `which` is 1 or
 * 2, for the first or the second value.
 */

/* The number of the option of that name or synonym. optxv_unknown if there is none. */
OPTXV_EMBEDDING_API int32_t optxv_find(optxv_handle handle, const char* name, size_t size,
                                       int32_t* number);

OPTXV_EMBEDDING_API int32_t optxv_get_integer(optxv_handle handle, const char* name,
                                              int32_t* value);
OPTXV_EMBEDDING_API int32_t optxv_get_real(optxv_handle handle, const char* name, double* value);
OPTXV_EMBEDDING_API int32_t optxv_get_text(optxv_handle handle, const char* name,
                                           optxv_text* value);
OPTXV_EMBEDDING_API int32_t optxv_set_integer(optxv_handle handle, const char* name, int32_t value);
OPTXV_EMBEDDING_API int32_t optxv_set_real(optxv_handle handle, const char* name, double value);
OPTXV_EMBEDDING_API int32_t optxv_set_text(optxv_handle handle, const char* name, const char* bytes,
                                           size_t size);

OPTXV_EMBEDDING_API int32_t optxv_get_integer_nr(optxv_handle handle, int32_t number, int32_t which,
                                                 int32_t* value);
OPTXV_EMBEDDING_API int32_t optxv_get_real_nr(optxv_handle handle, int32_t number, int32_t which,
                                              double* value);
OPTXV_EMBEDDING_API int32_t optxv_get_text_nr(optxv_handle handle, int32_t number, int32_t which,
                                              optxv_text* value);
OPTXV_EMBEDDING_API int32_t optxv_set_integer_nr(optxv_handle handle, int32_t number, int32_t which,
                                                 int32_t value);
OPTXV_EMBEDDING_API int32_t optxv_set_real_nr(optxv_handle handle, int32_t number, int32_t which,
                                              double value);
OPTXV_EMBEDDING_API int32_t optxv_set_text_nr(optxv_handle handle, int32_t number, int32_t which,
                                              const char* bytes, size_t size);

/* The value of any option as text, zero-terminated, in the 256 bytes at `text`; empty for a kind
 * without a value of its own. */
OPTXV_EMBEDDING_API int32_t optxv_show_value(optxv_handle handle, int32_t number, int32_t which,
                                             char* text);
/* Sets any option from a text, as the value in parameter text would (optSetStrNr): items are added
 * to a list of texts, and a macro or multi-list hands it on. An immediate option is a wrong kind,
 * since it acts in parameter text only. */
OPTXV_EMBEDDING_API int32_t optxv_parse_value(optxv_handle handle, int32_t number, int32_t which,
                                              const char* bytes, size_t size);

/* Unsets one option, or all (optResetAll: the queue, dot options and indicators are emptied too).
 */
OPTXV_EMBEDDING_API int32_t optxv_reset(optxv_handle handle, int32_t number);
OPTXV_EMBEDDING_API int32_t optxv_reset_all(optxv_handle handle);

/*
 * A snapshot is all values as they are: of every option, which of them are set and recently set,
 * where they came from; the items of lists; the dot options and indicators. Messages and switches
 * are no part of it. It takes memory for what is set, not for the whole table.
 *
 * Going back to one makes all of this as it was, without a read and without a message; it may be
 * done any number of times. Lists that parameter text made since then stay in the table, empty.
 * After ENOMEM all values are as before the call. A snapshot is good for the handle that it was
 * taken of, and gives optxv_other_table for another one.
 * OWNS: the caller, until optxv_free_snapshot, which may come after the end of the handle.
 */
typedef struct optxv_snapshot optxv_snapshot;
OPTXV_EMBEDDING_API int32_t optxv_take_snapshot(optxv_handle handle, optxv_snapshot** snapshot);
OPTXV_EMBEDDING_API int32_t optxv_restore_snapshot(optxv_handle handle,
                                                   const optxv_snapshot* snapshot);
/* Frees it and stores nil; does nothing if what is stored is nil. */
OPTXV_EMBEDDING_API void optxv_free_snapshot(optxv_snapshot** snapshot);

/* ---- The table ------------------------------------------------------------------------------- */

/* The kinds of option; the numbers are those of optType... */
enum {
  optxv_kind_integer = 0,
  optxv_kind_real = 1,
  optxv_kind_text = 2,
  optxv_kind_boolean = 3,
  optxv_kind_enumerated_text = 4,
  optxv_kind_enumerated_integer = 5,
  optxv_kind_multilist = 6,
  optxv_kind_list = 7,
  optxv_kind_macro = 8,
  optxv_kind_immediate = 9
};
/* How many values an option takes; the numbers are those of optsub... */
enum { optxv_takes_one = 0, optxv_takes_none = 1, optxv_takes_optional = 2, optxv_takes_two = 3 };
/* The type by which a value is got and set. */
enum {
  optxv_data_none = 0,
  optxv_data_integer = 1,
  optxv_data_real = 2,
  optxv_data_text = 3,
  optxv_data_list = 4
};
/* The marks of a name. To be added up. */
enum { optxv_mark_deprecated = 1, optxv_mark_obsolete = 2 };

/* One option. Bounds and default count in the member of the option's data type and are 0 or empty
 * elsewhere; a kind without bounds has the limits of its type. */
typedef struct optxv_option {
  int32_t kind;        /* optxv_kind_... */
  int32_t takes;       /* optxv_takes_... */
  int32_t data;        /* optxv_data_... */
  int32_t reference;   /* the caller's number */
  int32_t group;       /* the number that the definition gives its group */
  int32_t helpcontext; /* below 0 for an option that help does not list */
  int32_t marks;       /* optxv_mark_... of its own name */
  int32_t defined;     /* which values are set: 1 the first, 2 the second, 3 both */
  int32_t recent;      /* likewise, which were set recently */
  int32_t items;       /* how many allowed values or items or members it has; see optxv_item_info */
  int32_t helplines;   /* how many lines of long help */
  int32_t runtime;     /* 1 for a list that parameter text has made, else 0 */
  int32_t default_integer, low_integer, high_integer;
  double default_real, low_real, high_real;
  optxv_text default_text;
  optxv_text name;       /* as the definition writes it, zero-terminated */
  optxv_text help;       /* zero-terminated, as the two below */
  optxv_text markedtext; /* what the definition says of a marked name */
} optxv_option;

/* One of the items of an option: an allowed value of an enumeration, an item of a list of texts, a
 * member of a macro or a multi-list. */
typedef struct optxv_item {
  int32_t integer; /* the value of an enumerated integer */
  int32_t option;  /* the option of a member; 0 where the definition names one that is not there */
  int32_t helpcontext; /* of an allowed value */
  optxv_text text;     /* the value as text, or the name of a member's option */
  optxv_text help;     /* of an allowed value */
} optxv_item;

typedef struct optxv_group {
  int32_t number; /* as in the definition; two groups may have the same */
  int32_t helpcontext;
  optxv_text name;
  optxv_text help;
} optxv_group;

typedef struct optxv_synonym {
  int32_t option; /* 0 if the definition names one that is not there */
  int32_t marks;  /* optxv_mark_... that the definition puts on this very name */
  optxv_text name;
  optxv_text markedtext;
} optxv_synonym;

/* Numbers and positions count from 1; optxv_unknown for one that is outside. */
OPTXV_EMBEDDING_API int32_t optxv_option_count(optxv_handle handle);
OPTXV_EMBEDDING_API int32_t optxv_option_info(optxv_handle handle, int32_t number,
                                              optxv_option* option);
OPTXV_EMBEDDING_API int32_t optxv_item_info(optxv_handle handle, int32_t number, int32_t position,
                                            optxv_item* item);
OPTXV_EMBEDDING_API int32_t optxv_help_line(optxv_handle handle, int32_t number, int32_t position,
                                            optxv_text* line);
OPTXV_EMBEDDING_API int32_t optxv_group_count(optxv_handle handle);
OPTXV_EMBEDDING_API int32_t optxv_group_info(optxv_handle handle, int32_t position,
                                             optxv_group* group);
OPTXV_EMBEDDING_API int32_t optxv_synonym_count(optxv_handle handle);
OPTXV_EMBEDDING_API int32_t optxv_synonym_info(optxv_handle handle, int32_t position,
                                               optxv_synonym* synonym);

/*
 * A number that stands for the table of options of a definition: the same for tables whose options
 * have the same names, kinds and sub-types in the same order, on every system; lists that parameter
 * text made do not count. By it, generated code knows that its numbers are those of the handle. It
 * is the 64-bit FNV-1a hash (Fowler, Noll, Vo) of, for each option in order, its name as the
 * definition writes it in lower case, a zero byte, and one byte each for kind and sub-type.
 */
OPTXV_EMBEDDING_API uint64_t optxv_table_mark(optxv_handle handle);

/*
 * The names, of options and synonyms, that are nearest to one that no option has: at most three,
 * the nearest first, zero-terminated. The result is how many; it is 0 if none is near, and where
 * memory ran out.
 */
OPTXV_EMBEDDING_API int32_t optxv_nearest_names(optxv_handle handle, const char* name, size_t size,
                                                optxv_text nearest[3]);

/* ---- Messages -------------------------------------------------------------------------------- */

/* The kinds of message; the numbers are those of optMsg... */
enum {
  optxv_said_echo = 0,
  optxv_said_help = 1,
  optxv_said_definition_error = 2,
  optxv_said_value_error = 3,
  optxv_said_value_warning = 4,
  optxv_said_deprecated = 5,
  optxv_said_file_enter = 6,
  optxv_said_file_leave = 7,
  optxv_said_queue_full = 8,
  optxv_said_error = 9
};

OPTXV_EMBEDDING_API int32_t optxv_message_count(optxv_handle handle);
/* Errors and warnings as optErrorCount counts them; either may be nil. */
OPTXV_EMBEDDING_API void optxv_error_count(optxv_handle handle, int32_t* errors, int32_t* warnings);
/* Adds a message of kind optxv_said_error. */
OPTXV_EMBEDDING_API int32_t optxv_add_message(optxv_handle handle, const char* bytes, size_t size);
OPTXV_EMBEDDING_API void optxv_clear_messages(optxv_handle handle);
/* Adds lines of help to the queue, as optShowHelp does. */
OPTXV_EMBEDDING_API int32_t optxv_show_help(optxv_handle handle, const char* request);

/* ---- What the listener gets ---------------------------------------------------------------- */

/* What is read. */
enum {
  optxv_source_definition = 0, /* a definition */
  optxv_source_parameters = 1, /* a file of parameter text, or such text from memory */
  optxv_source_string = 2,     /* one line: optReadFromStr, optReadFromPChar, optxv_read_line */
  optxv_source_argument = 3,   /* an argument of main */
  optxv_source_variable = 4    /* a variable of the environment */
};

typedef struct optxv_source {
  int32_t kind;     /* optxv_source_... */
  int32_t level;    /* 1 for a read that the program asked for, 2 for a file named there, ... */
  const char* name; /* as messages show it and as it was opened; good until xfree */
  optxv_place from; /* where the text that named it has the name; no place on level 1 */
} optxv_source;

/* What was cut off a text, or off a number. */
enum {
  optxv_cut_line = 0,  /* the bytes of a line after the first 1,020, or after a carriage return in
                          the middle of it that is its byte 255, 510, 765 or 1,020 */
  optxv_cut_rest = 1,  /* the rest of a line after a byte 26 (or, in a string, a line feed) */
  optxv_cut_name = 2,  /* a name of more than 255 bytes */
  optxv_cut_value = 3, /* a value, or a field of a definition, of more than 255 bytes */
  optxv_cut_number = 4 /* a number beyond the limit of its type; the limit was taken instead */
};

typedef struct optxv_cut {
  int32_t what;      /* optxv_cut_... */
  int32_t option;    /* the option it is for, 0 if none is known */
  optxv_place place; /* of the text as written; for a line or a rest, of what is lost */
  optxv_text kept;   /* what is left of a name or a value; a number's text */
  int64_t lost;      /* how many bytes are lost; 0 for a number */
} optxv_cut;

/* What a definition declares. */
enum {
  optxv_declared_option = 0,  /* number: of the option */
  optxv_declared_group = 1,   /* number: position in the list of groups */
  optxv_declared_synonym = 2, /* number: position in the list of synonyms; option: its target */
  optxv_declared_item = 3,    /* number: of the item, from 1; option: its enumeration */
  optxv_declared_member = 4,  /* number: of the member, from 1, or 0 for one that a macro does not
                                 know and so does not take; option: its list or macro */
  optxv_declared_deprecated =
      5,                        /* option: the option marked; number: 0, or of the synonym marked */
  optxv_declared_obsolete = 6,  /* likewise */
  optxv_declared_indicator = 7, /* the word that begins an indicator */
  optxv_declared_lookup = 8,    /* the rule of lookup; number: its own, from 0 */
  optxv_declared_comment = 9    /* the characters that begin a comment */
};

/*
 * An enumeration of integers and a macro enter the table after their items and members. So these
 * are reported first, with the number that the option is about to get. The option Help, which each
 * definition has though no record declares it, is not reported.
 */
typedef struct optxv_declaration {
  int32_t what; /* optxv_declared_... */
  int32_t number;
  int32_t option; /* 0 where there is none, such as a synonym or a member without a target */
  int32_t target; /* the option of a member; 0 if it was not found, and for everything else */
  optxv_text name;
  optxv_place place; /* of the name */
} optxv_declaration;

/* The fields of the records of a definition. */
enum {
  optxv_field_none = 0,
  optxv_field_record = 1, /* the record's name */
  optxv_field_type = 2,   /* the type word, with its modifier */
  optxv_field_usermap = 3,
  optxv_field_default = 4,
  optxv_field_low = 5,
  optxv_field_high = 6,
  optxv_field_helpcontext = 7,
  optxv_field_group = 8,
  optxv_field_text = 9,      /* the help of an option, a group, an item; the text of a mark */
  optxv_field_longhelp = 10, /* a line that continues an option */
  optxv_field_item = 11,     /* a value of an enumeration */
  optxv_field_member = 12,   /* a member of a list or macro */
  optxv_field_target = 13,   /* what a synonym stands for */
  optxv_field_action = 14,   /* what an immediate option does */
  optxv_field_groupnumber = 15,
  optxv_field_marked = 16,     /* a name that is deprecated or obsolete */
  optxv_field_heading = 17,    /* the rest of the line of a deprecated or obsolete record */
  optxv_field_characters = 18, /* the comment characters */
  optxv_fields = 19            /* how many there are */
};

typedef struct optxv_field {
  int32_t field;     /* optxv_field_... */
  int32_t option;    /* the one that the record declares or is about to; 0 for other records */
  int32_t good;      /* 1 if the field was there and could be read, else 0 */
  optxv_text text;   /* as read: without quotes, cut at 255 bytes */
  optxv_place place; /* as written, quotes and all */
} optxv_field;

typedef struct optxv_key {
  int32_t option;    /* the option that it names; 0 if it is unknown or names no option */
  int32_t synonym;   /* the position of the synonym that was used, 0 for the option's own name */
  int32_t dashes;    /* how many - and / stand before it */
  optxv_text text;   /* the name as it was looked up */
  optxv_place place; /* as written, without the dashes */
} optxv_key;

/* The quotes of a value. */
enum {
  optxv_quotes_none = 0,
  optxv_quotes_closed = 1,
  optxv_quotes_open = 2 /* an opening quote without its closing one */
};

typedef struct optxv_value {
  int32_t option;      /* 0 for the value of an indicator */
  int32_t which;       /* 1 or 2: the first or the second value of the entry */
  int32_t quotes;      /* optxv_quotes_... */
  int32_t good;        /* 0 if the reader drops the value, as a token with an open quote; else 1 */
  optxv_text text;     /* as read, without quotes, cut at 255 bytes */
  optxv_place place;   /* of the text without its quotes */
  optxv_place written; /* with them */
} optxv_value;

/* The road by which an option got a value. */
enum {
  optxv_road_none = 0,  /* it has none */
  optxv_road_entry = 1, /* an entry that names it */
  optxv_road_macro = 2, /* a macro handed it on */
  optxv_road_list = 3,  /* a multi-list handed it on */
  optxv_road_dot = 4,   /* a dot option, whose value the option checks and keeps */
  optxv_road_call = 5   /* a call of the program, outside any read */
};

typedef struct optxv_store {
  int32_t option;
  int32_t which;     /* 1 or 2 */
  int32_t road;      /* optxv_road_... */
  int32_t through;   /* the macro or multi-list that handed the value on, else 0 */
  optxv_place place; /* of the value; of the key if the entry has no value; none for a call */
} optxv_store;

/* A dot option, x.scale('a') = 2, or an indicator, word eq(i)$x(i) = 1. */
typedef struct optxv_entry {
  int32_t number;           /* its position in its list; 0 if it was dropped for a fault */
  int32_t option;           /* a dot option's attribute; 0 for an indicator */
  optxv_text name;          /* the symbol, or the equation */
  optxv_place place;        /* of that name */
  optxv_text second;        /* the attribute with its dot, or the variable */
  optxv_place second_place; /* of the second text */
} optxv_entry;

/* What is wrong: the cause of a message. Numbers stay as they are; new ones are added at the end.
 */
enum {
  optxv_fault_none = 0, /* not a fault: help, the beginning and the end of a read */
  /* parameter text */
  optxv_fault_key_expected = 1,
  optxv_fault_bad_separator = 2,
  optxv_fault_unknown_option = 3,
  optxv_fault_value_expected = 4,
  optxv_fault_remainder = 5,  /* text after the value */
  optxv_fault_deprecated = 6, /* a name that still works; about: the name */
  optxv_fault_obsolete = 7,   /* a name that no longer works; about: the name */
  optxv_fault_quote = 8,      /* a double quote within a value */
  optxv_fault_integer_expected = 9,
  optxv_fault_real_expected = 10,
  optxv_fault_boolean_expected = 11,
  optxv_fault_range = 12,         /* a number out of bounds */
  optxv_fault_unknown_value = 13, /* a value that the enumeration does not have */
  optxv_fault_list_overflow = 14, /* more values than the multi-list has members */
  optxv_fault_nesting = 15,       /* lists and macros nested too deep */
  optxv_fault_handed_on = 16,     /* values handed on too often in one entry */
  optxv_fault_own = 17,           /* a message of the program or of the parameter file */
  /* details, which add to the message before them */
  optxv_fault_allowed_range = 18,
  optxv_fault_allowed_values = 19,
  optxv_fault_system = 20, /* the system's words for a failure */
  /* files and the queue */
  optxv_fault_cannot_open = 21, /* about: the file */
  optxv_fault_cannot_read = 22,
  optxv_fault_cannot_write = 23,
  optxv_fault_file_nesting = 24, /* files too deep in one another, or too many in one read */
  optxv_fault_queue_full = 25,
  /* dot options and indicators */
  optxv_fault_suffix_expected = 26,
  optxv_fault_unknown_suffix = 27,
  optxv_fault_symbol_expected = 28,
  optxv_fault_index_expected = 29,
  optxv_fault_index_not_allowed = 30,
  optxv_fault_index_too_long = 31,
  optxv_fault_index_not_controlled = 32,
  optxv_fault_too_many_indices = 33,
  optxv_fault_bracket_expected = 34,
  optxv_fault_dollar_expected = 35,
  optxv_fault_name_too_long = 36,
  /* definitions */
  optxv_fault_bad_field = 37,       /* a field that is missing or cannot be read */
  optxv_fault_default_range = 38,   /* a default out of bounds */
  optxv_fault_default_unknown = 39, /* a default that is no item */
  optxv_fault_duplicate_option = 40,
  optxv_fault_duplicate_member = 41,
  optxv_fault_duplicate_synonym = 42,
  optxv_fault_duplicate_group = 43,
  optxv_fault_duplicate_groupnumber = 44,
  optxv_fault_duplicate_indicator = 45,
  optxv_fault_unknown_type = 46,
  optxv_fault_unknown_modifier = 47,
  optxv_fault_modifier_not_allowed = 48,
  optxv_fault_unknown_member = 49,
  optxv_fault_unknown_target = 50, /* a synonym for an option that does not exist */
  optxv_fault_unknown_marked = 51, /* a mark on a name that does not exist */
  optxv_fault_unknown_action = 52, /* a word that no immediate option knows */
  optxv_fault_unknown_lookup = 53,
  optxv_fault_comma = 54,   /* a comma among members */
  optxv_fault_nearest = 55, /* a detail: names that may have been meant */
  optxv_faults = 56         /* how many there are */
};

typedef struct optxv_message {
  int32_t number;   /* its position in the queue; 0 if the queue did not take it */
  int32_t kind;     /* optMsg... of optxv.h */
  int32_t fault;    /* optxv_fault_... */
  int32_t detail;   /* 1 if it adds to the message before it, else 0 */
  int32_t option;   /* the option it is about, 0 if none */
  int32_t field;    /* in a definition: the field at fault, optxv_field_... */
  optxv_text text;  /* without the words for its kind and without its line number */
  optxv_text about; /* the name, key or file that it is about; in a definition the record's name */
  optxv_text seen;  /* what was found where something else was expected. Both may be empty */
  optxv_place place;
} optxv_message;

/*
 * The listener. A function that is nil is not called; so a program sets the functions it wants and
 * leaves the rest 0. `size` is sizeof(optxv_listener); it shows a later library which functions an
 * older program has.
 *
 * Calls come in the order of the text, on the thread that reads, at the moment when the reader is
 * at the place that it reports; but a comment at the end of a line may come before the value that
 * precedes it. An entry gives: key, separator (if = or := is there), value, what comes of that
 * (stores, messages), and so on with a second value. An unknown key gives only its message. A dot
 * option gives no key: its value and what comes of it, then the entry. So does an indicator, after
 * its key, the word that begins it. A record gives: its fields as they are read, declarations as
 * they are made, messages as they arise.
 *
 * A callback can stop nothing, and must change nothing. It may call the functions of optxv.h that
 * ask by number (optCount, optGetInfoNr, optGetNameNr, optGetStrNr, ..., optMessageCount,
 * optGetMessage, optErrorCount), the functions below that ask something, and any function for
 * another handle. REQUIRES: it calls nothing else for this handle (a function that finds by name
 * keeps the name, and so changes later messages), and no exception leaves it.
 */
typedef struct optxv_listener {
  size_t size;
  void* context; /* handed to each call; the library does not look at it */

  void (*entered)(void* context, const optxv_source* source);
  /* error: 0, or the system's number for the failure that ended the read */
  void (*left)(void* context, const optxv_source* source, int32_t error);
  /* a line, as far as it is read; also comments and empty lines. A string gives its one line. */
  void (*line)(void* context, const optxv_place* place, const optxv_text* text);
  void (*comment)(void* context, const optxv_place* place);
  void (*cut)(void* context, const optxv_cut* cut);

  void (*declared)(void* context, const optxv_declaration* declaration);
  void (*field)(void* context, const optxv_field* field);
  /* the line, not empty, that ends a definition before its text ends: it begins no record */
  void (*ended)(void* context, const optxv_place* place);

  void (*key)(void* context, const optxv_key* key);
  void (*separator)(void* context, const optxv_place* place);
  void (*value)(void* context, const optxv_value* value);
  void (*stored)(void* context, const optxv_store* store);
  void (*dot_option)(void* context, const optxv_entry* entry);
  void (*indicator)(void* context, const optxv_entry* entry);

  /* not for echoed lines, which `line` tells of. A message that a read ends, directly after the one
     that it began, takes that from the queue instead, and has the number 0. */
  void (*message)(void* context, const optxv_message* message);

  /* Parameter text names a file, which is about to be opened; or the program does. 1 with bytes in
     `text` to have those read in place of the file, as optxv_read_parameter_text would: an editor
     has texts that are newer than its files. 0 to have the file opened. The bytes stay as they are
     until that read is left, or until the call that reads returns. */
  int32_t (*opening)(void* context, const char* name, optxv_text* text);
} optxv_listener;

/* Gives the handle a listener, which is copied; nil takes the listener away. This cannot fail. */
OPTXV_EMBEDDING_API void optxv_listen(optxv_handle handle, const optxv_listener* listener);

/* ---- Questions ------------------------------------------------------------------------------ */

/* Message `number` (from 1) as the listener gets it; but the text lacks its end where the queue had
 * no room for it after the line number. */
OPTXV_EMBEDDING_API int32_t optxv_message_info(optxv_handle handle, int32_t number,
                                               optxv_message* message);
/* The same message ready to be shown, as optGetMessage gives it, zero-terminated, in the 256 bytes
 * at `text`. */
OPTXV_EMBEDDING_API int32_t optxv_show_message(optxv_handle handle, int32_t number, char* text);
/*
 * The names that somebody may have meant who got this message: options and synonyms for an unknown
 * name, allowed values for an unknown value. At most three, the nearest first, zero-terminated. The
 * result is how many, 0 also for every other message and a bad number, and where memory ran out.
 */
OPTXV_EMBEDDING_API int32_t optxv_message_nearest(optxv_handle handle, int32_t number,
                                                  optxv_text nearest[3]);

/* Dot option x.scale('a',*) = 2.5: symbol, the option of its attribute, labels and value. */
typedef struct optxv_dot_option {
  int32_t option;
  int32_t labels;
  double value;
  optxv_text symbol;
} optxv_dot_option;
/* Indicator word eq('a')$x('a') = 1. */
typedef struct optxv_indicator {
  int32_t equation_labels;
  int32_t variable_labels;
  int32_t mark; /* 1 or 0 */
  optxv_text equation;
  optxv_text variable;
} optxv_indicator;

/* How many there are; `dropped`, which may be nil, is how many were dropped for faults. */
OPTXV_EMBEDDING_API int32_t optxv_dot_option_count(optxv_handle handle, int32_t* dropped);
OPTXV_EMBEDDING_API int32_t optxv_dot_option_info(optxv_handle handle, int32_t position,
                                                  optxv_dot_option* entry);
/* Label `index`, from 1, without its quotes, or `*`. */
OPTXV_EMBEDDING_API int32_t optxv_dot_option_label(optxv_handle handle, int32_t position,
                                                   int32_t index, optxv_text* label);
OPTXV_EMBEDDING_API int32_t optxv_indicator_count(optxv_handle handle, int32_t* dropped);
OPTXV_EMBEDDING_API int32_t optxv_indicator_info(optxv_handle handle, int32_t position,
                                                 optxv_indicator* entry);
/* Label `index` of the equation (side 1) or of the variable (side 2). A quoted label keeps its
 * quotes, which tell it from an identifier. */
OPTXV_EMBEDDING_API int32_t optxv_indicator_label(optxv_handle handle, int32_t position,
                                                  int32_t side, int32_t index, optxv_text* label);

/*
 * The place of message `number` (from 1): where the fault is. Gives 1, or 0 for a bad number or a
 * message without a place, such as one caused by a call outside any read.
 */
OPTXV_EMBEDDING_API int32_t optxv_message_place(optxv_handle handle, int32_t number,
                                                optxv_place* place);

/*
 * Where option `optnr` last got a value (of two values, whichever came last), and by which road
 * (optxv_road_...). Gives 1, or 0 and optxv_road_none for a bad number or an option that is not
 * set. A value that the program set has no place and the road optxv_road_call. `road` and `through`
 * (the macro or multi-list that handed the value on, else 0) may be nil.
 */
OPTXV_EMBEDDING_API int32_t optxv_value_place(optxv_handle handle, int32_t optnr,
                                              optxv_place* place, int32_t* road, int32_t* through);

/*
 * The number of items of option `optnr`, a list of texts; -1 for a bad number or an option of
 * another kind.
 */
OPTXV_EMBEDDING_API int32_t optxv_list_count(optxv_handle handle, int32_t optnr);
/* Item `position`, from 1. Gives 1, or 0 and an empty text. Good until the list changes. */
OPTXV_EMBEDDING_API int32_t optxv_list_item(optxv_handle handle, int32_t optnr, int32_t position,
                                            optxv_text* item);

/*
 * The name of a fault for people and programs, such as "unknown-option" for
 * optxv_fault_unknown_option: lower-case words joined by hyphens. Nil for a bad number. Names stay
 * as they are.
 */
OPTXV_EMBEDDING_API const char* optxv_fault_name(int32_t fault);
/* The name of a field, such as "usermap" for optxv_field_usermap; nil for a bad number. */
OPTXV_EMBEDDING_API const char* optxv_field_name(int32_t field);

/*
 * Record `number` (from 1) of the definition language: its type word; the names of the fields that
 * follow that on its line, separated by blanks, as in "usermap default low high hc group text"; and
 * those of each line that continues it, as in "item hc text", empty if there are none. Gives 1, or
 * 0 for a bad number. The texts are constants.
 */
OPTXV_EMBEDDING_API int32_t optxv_record_form(int32_t number, const char** word,
                                              const char** fields, const char** lines);

/* ---- Text from memory ----------------------------------------------------------------------- */

/*
 * These two do what optReadDefinition and optReadParameterFile do with a file of this name that
 * holds these bytes, any number of them: with the same results, values and messages, byte for byte.
 * Only the files that the text names are opened. The name is zero-terminated; nil is the empty
 * name. Its first 255 bytes are taken. Gives 0, or the system's error number if a read of a file
 * failed.
 * BORROWS: the bytes, for the call.
 */
OPTXV_EMBEDDING_API int32_t optxv_read_definition_text(optxv_handle handle, const char* name,
                                                       const char* bytes, size_t size);
OPTXV_EMBEDDING_API int32_t optxv_read_parameter_text(optxv_handle handle, const char* name,
                                                      const char* bytes, size_t size);

/*
 * Writes what optWriteParameterFile would write, to a file, of which a reader sees the old content
 * or the whole new one and nothing between: the text goes to a new file beside it, which is then
 * given its name. Links are followed, the mode and the owner stay. What is no regular file, such as
 * a pipe or /dev/stdout, is written through. The empty name stands for standard output. On any
 * status but 0 a regular file is as it was, with two exceptions. One that cannot be replaced,
 * because it has further names or its folder or owner does not allow it, is written in place. And
 * where the folder cannot be synced to the disk, the file is whole and new, but a crash of the
 * machine may bring the old one back: that is a status too, the last that can come. Adds no
 * message. While the file is written, the signals that end a process wait, for this thread.
 */
OPTXV_EMBEDDING_API int32_t optxv_write_parameters(optxv_handle handle, const char* filename);

/*
 * Gives what optWriteParameterFile would write to a function of the program: it is called once,
 * with `context` and the whole text, which is good until it returns. The result is 0, or another
 * number that the function returned, which is up to the program; or ENOMEM if memory ran out before
 * the call.
 */
OPTXV_EMBEDDING_API int32_t optxv_write_parameter_text(
    optxv_handle handle, int32_t (*take)(void* context, const char* bytes, size_t size),
    void* context);

#ifdef __cplusplus
}
#endif

#endif
