/*
 * optxv: run-time options of solver-style programs.
 *
 * A program gives the library a definition file, which declares every option that the program
 * knows, and then any amount of parameter text, from files or from strings. The library checks the
 * text against the definition, keeps the typed values and collects whatever it has to say in a
 * queue of messages. Values are read and changed by number or by name. Nothing is printed, and no
 * line of bad text ever stops a read.
 *
 * This header is C99 and C++11. Link with -loptxv.
 *
 *
 * A WHOLE RUN
 *
 *     optHandle options;
 *     int32_t number, refnr, errors, warnings, kind, limit;
 *     char text[OPTXV_TEXT_SIZE];
 *
 *     xcreate(&options);
 *     if (coptReadDefinition(options, "solver.def") != 0) return 1;    the table of options
 *     coptReadParameterFile(options, "solver.opt");                    what the user wrote
 *     coptReadFromStr(options, "steplim 500");                         and some more of it
 *
 *     optErrorCount(options, &errors, &warnings);
 *     for (int32_t i = 1; i <= optMessageCount(options); i++) {
 *       coptGetMessage(options, i, text, &kind);
 *       puts(text);
 *     }
 *     optClearMessages(options);
 *
 *     if (coptFindStr(options, "steplim", &number, &refnr) == 1)
 *       optGetIntNr(options, number, &limit);                          500
 *     xfree(&options);
 *
 *
 * NAMES
 *
 * Every function has one lower-case name for the linker, `optgetvaluesnr`, and one in mixed case
 * that people speak of and that xcheck knows, `optGetValuesNr`. The functions are declared under
 * the first; the second are macros at the end of this header. Define
 * OPTXV_NO_MIXED_CASE_NAMES before the inclusion to do without the macros.
 *
 *
 * TWO FORMS OF TEXT
 *
 * A function with text among its arguments exists twice, with the same arguments in the same order,
 * the same effect and the same result. A function without text exists once, under `opt`.
 *
 *   `opt`   Bounded strings: a length byte, then as many bytes of text; no terminator, and any byte
 *           may occur. An out text is a buffer of 256 bytes which the library fills in place.
 *   `copt`  Zero-terminated strings. A nil pointer reads as the empty text. A text of 255 bytes or
 *           more does not fit, and the call goes on with the text "PCharToStr Overflow" in its
 *           place. An out text needs a buffer of 256 bytes (OPTXV_TEXT_SIZE); no more is ever
 *           written, and what is written ends in a zero byte.
 *
 * Text has no encoding. Where case is ignored, only A to Z and a to z are taken for the same. What
 * does not fit 255 bytes is cut silently.
 *
 *
 * HANDLES
 *
 * A handle stands for one set of options with its values and messages. The caller owns it from
 * xcreate to xfree; any number may live side by side, and they share nothing but the load path.
 * A handle is not checked: a nil or freed one is undefined behaviour, except with optVersion,
 * optGetTypeName and optGetConstName, which do not look at it.
 *
 *
 * RESULTS AND OUT ARGUMENTS
 *
 * Unless a function says otherwise, its result is 1 for success and 0 for failure. A bad number or
 * the wrong kind of option is reported by the result only: it adds no message. All pointers to out
 * arguments must be valid, even those whose value does not interest the caller.
 *
 * Below, "cleared" means that on failure an out text is made empty and an out number 0, or the
 * value given there. "Untouched" means that on failure the out argument stays as the caller left
 * it; an untouched out text of a `copt` function comes out empty, since it is copied all the same.
 *
 *
 * NUMBERS
 *
 * An option has a number, `optnr`: its position in the table, from 1 to optCount. Number 1 is
 * always the option "Help", which the library adds itself; the options of the definition follow in
 * their order. A number stays good until xfree. It is not the reference number, `refnr`, which the
 * definition or the caller puts on an option for the caller's own use.
 *
 * Positions in the other lists (messages, groups, synonyms, items, ...) count from 1 as well. The
 * only count from 0 is the result of optLookUp.
 *
 *
 * MESSAGES
 *
 * Faults in a definition, in parameter text and in values are messages in the queue of the handle.
 * A message has a kind (optMsg... below). The queue holds 5000 messages and one more that says that
 * the limit is reached; what comes later is lost until optClearMessages or optResetAll. Only echoed
 * lines are added beyond it.
 *
 *
 * THREADS AND FAULTS OF THE RUN
 *
 * Handles of different threads are free of each other: threads may call the library at the same
 * time, each with handles of its own, and only what belongs to the whole process, the load path and
 * the load and unload steps, is for one thread at a time.
 *
 * No exception ever reaches the caller. Where memory runs out or a write to a file that is open
 * fails, there is nobody to report it to: the library prints a line to standard output,
 * "Q9 Standard Exception Handler: " and the cause, and calls abort().
 */
#ifndef OPTXV_OPTXV_H
#define OPTXV_OPTXV_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define OPTXV_API __attribute__((visibility("default")))
#else
#define OPTXV_API
#endif

/* The version of this interface, for xapiversion. */
#define OPTXV_API_VERSION 2

/* The room that every out text needs, in either form. */
#define OPTXV_TEXT_SIZE 256

#ifdef __cplusplus
extern "C" {
#endif

/* One set of options; see HANDLES. */
typedef void* optHandle;

/* The kinds of option: what optGetInfoNr gives as the option type. */
enum {
  optTypeInteger = 0,
  optTypeDouble = 1,
  optTypeString = 2,
  optTypeBoolean = 3,   /* an integer that is 0 or 1 */
  optTypeEnumStr = 4,   /* one text of a given set */
  optTypeEnumInt = 5,   /* one integer of a given set */
  optTypeMultiList = 6, /* one assignment spread over several options */
  optTypeStrList = 7,   /* a list of texts that grows with each assignment */
  optTypeMacro = 8,     /* one assignment repeated for several options */
  optTypeImmediate = 9  /* an instruction to the reader, such as reading another file */
};

/* How many values an option takes in parameter text: the sub-type. */
enum {
  optsubRequired = 0, /* one */
  optsubNoValue = 1,  /* none: naming the option sets it to its default */
  optsubOptional = 2, /* one or none */
  optsub2Values = 3   /* two: the functions with a 2 in their name reach the second */
};

/* The type of an option's value: the data type. */
enum {
  optDataNone = 0,
  optDataInteger = 1,
  optDataDouble = 2,
  optDataString = 3,
  optDataStrList = 4
};

/* The kinds of message. optGetMessage puts what stands here before each text. */
enum {
  optMsgInputEcho = 0,    /* >> ; a line read while the echo is on */
  optMsgHelp = 1,         /* nothing; a line of help */
  optMsgDefineError = 2,  /* *** Definition Error ; a fault in the definition file */
  optMsgValueError = 3,   /* *** Value Error ; a value was refused */
  optMsgValueWarning = 4, /* *** Warning ; a value out of its bounds was taken */
  optMsgDeprecated = 5,   /* *** Warning ; a deprecated or obsolete name was used */
  optMsgFileEnter = 6,    /* Reading parameter(s) from , the text in double quotes */
  optMsgFileLeave = 7,    /* Finished reading from , the text in double quotes */
  optMsgTooManyMsgs = 8,  /* nothing; the queue is full */
  optMsgUserError = 9     /* *** Error ; a fault in parameter text, or optAddMessage */
};

/* The codes of result and arguments in a signature; see xcheck. */
enum {
  optArgNone = 0,
  optArgInteger = 3,
  optArgOutInteger = 4,
  optArgPChar = 10,
  optArgText = 11,
  optArgOutText = 12,
  optArgDouble = 13,
  optArgOutDouble = 14
};

/* ---- The object -------------------------------------------------------------------------- */

/* Makes a new, empty set of options and stores its handle. */
OPTXV_API void xcreate(optHandle* handle);

/* Frees what the handle stands for and stores nil; does nothing if the stored handle is nil. */
OPTXV_API void xfree(optHandle* handle);

/* ---- The library ------------------------------------------------------------------------- */

/*
 * Compares the caller's idea of one function with the library's.
 *
 * `function` is a mixed-case name ("optGetValuesNr", case counts; never a copt name, whose
 * signature is that of its opt form), `count` the number of arguments after the handle, and
 * `signature` has count + 1 of the codes optArg...: the result first, then the arguments.
 *
 * Result 1 and an empty message if both agree. Otherwise 0, and the message says what differs: no
 * such function; another number of arguments; or the positions that differ, 0 being the result. The
 * functions of "The object" and "The library" have no signature to compare with.
 *
 *     const int32_t signature[] = {optArgInteger, optArgInteger, optArgOutInteger};
 *     cxcheck("optGetIntNr", 2, signature, message);    1
 */
OPTXV_API int32_t xcheck(const unsigned char* function, int32_t count, const int32_t* signature,
                         unsigned char* message);
OPTXV_API int32_t cxcheck(const char* function, int32_t count, const int32_t* signature,
                          char* message);

/*
 * Compares the version that the caller was built for, OPTXV_API_VERSION, with the library's.
 *
 *   caller older than 1   result 0, status 0
 *   older, still served   result 1, status 2
 *   the same              result 1, status 1
 *   newer                 result 1, status 3: only the status tells this from "the same"
 *
 * The message puts the result in words in all cases.
 */
OPTXV_API int32_t xapiversion(int32_t version, unsigned char* message, int32_t* status);
OPTXV_API int32_t cxapiversion(int32_t version, char* message, int32_t* status);

/*
 * A text kept for the whole process, empty at first, for the caller's use: the directory that the
 * library was loaded from, say. The library itself does nothing with it.
 */
OPTXV_API void optgetloadpath(unsigned char* path);
OPTXV_API void coptgetloadpath(char* path);
OPTXV_API void optsetloadpath(const unsigned char* path);
OPTXV_API void coptsetloadpath(const char* path);

/*
 * The load and unload steps. The system's loader calls them; calling them by hand is allowed, in
 * pairs: the steps are counted, and only the first load and the last unload do anything. The last
 * unload runs the exit procedures. _Q9_DllInit gives SYSTEM_exitcode, which is 0.
 */
OPTXV_API int32_t _Q9_DllInit(void);
OPTXV_API void _Q9_DllFini(void);

/* How many times the library has been loaded and not unloaded. Not to be written to. */
extern OPTXV_API int32_t SYSTEM_dll_refcount;

/* What the load step gives back. */
extern OPTXV_API int32_t SYSTEM_exitcode;

/*
 * The first of the exit procedures, or nil. To add one, keep the present value and store your own.
 * The last unload calls what stands here until it finds nil: an exit procedure must therefore put
 * back what it kept, or the unload never ends.
 */
extern OPTXV_API void (*SYSTEM_exitproc)(void);

/* 1 from the start of the last unload on, else 0. Not to be written to. */
extern OPTXV_API int32_t _Q9_Finalizing;

/* ---- Reading and writing text ------------------------------------------------------------ */

/*
 * Reads a definition file and adds its options, synonyms and groups to the table, after the option
 * "Help". Meant to be called once per handle; a second read adds to what is there.
 *
 * Result 0 if the file could be opened, however many faults it holds, else the system's error
 * number (errno), with two messages. Faults are messages of kind optMsgDefineError in either case.
 * The first line that can be neither a record nor the continuation of one ends the definition,
 * without a message.
 */
OPTXV_API int32_t optreaddefinition(optHandle handle, const unsigned char* filename);
OPTXV_API int32_t coptreaddefinition(optHandle handle, const char* filename);

/*
 * Reads a file of parameter text: a line `steplim 500` sets the option steplim. Lines that begin
 * with an asterisk are comments.
 *
 * Result 0 if the file could be opened, else the system's error number, with two messages of kind
 * optMsgUserError. Whatever is wrong inside is a message that begins with the number of the line,
 * and the read goes on. The messages about the file stand between one of kind optMsgFileEnter and
 * one of kind optMsgFileLeave; if there are none, neither are those two.
 *
 * The empty name stands for standard input, here and in optReadDefinition.
 */
OPTXV_API int32_t optreadparameterfile(optHandle handle, const unsigned char* filename);
OPTXV_API int32_t coptreadparameterfile(optHandle handle, const char* filename);

/*
 * Reads a text as one line of a parameter file, but never as a comment; a line feed ends it. A text
 * that is longer than the form of text allows goes through optReadFromPChar.
 */
OPTXV_API void optreadfromstr(optHandle handle, const unsigned char* text);
OPTXV_API void coptreadfromstr(optHandle handle, const char* text);

/*
 * The same for a zero-terminated text of any length, in the one form for that reason. A nil text
 * is empty.
 */
OPTXV_API void optreadfrompchar(optHandle handle, const char* text);

/*
 * Writes a file of parameter text that sets what is set now: the options, in table order, then the
 * dot options and the indicators. The empty name stands for standard output. The file says what the
 * language can say, which has no escapes: a value with a line feed, which only a call can give,
 * comes out as two lines and does not survive.
 *
 * Result 0, or the system's error number of the failed open, with two messages of kind
 * optMsgUserError. A failure later than that ends the process; see FAULTS OF THE RUN.
 */
OPTXV_API int32_t optwriteparameterfile(optHandle handle, const unsigned char* filename);
OPTXV_API int32_t coptwriteparameterfile(optHandle handle, const char* filename);

/*
 * Adds lines of help to the queue, as messages of kind optMsgHelp. The request is
 *
 *   a name     of an option or synonym, blanks read as underscores: help on that option;
 *   a number   the sum of what is wanted: 1 all options by group, 2 all options in alphabetical
 *              order with their help, 4 a list for debugging, which goes to standard output
 *              (that it cannot be written is told to nobody), 8 marks of deprecation in the lines
 *              of 1. A number below 1 stands for 3;
 *   else       as 1.
 */
OPTXV_API void optshowhelp(optHandle handle, const unsigned char* request);
OPTXV_API void coptshowhelp(optHandle handle, const char* request);

/* ---- Messages ---------------------------------------------------------------------------- */

/* Empties the queue. */
OPTXV_API void optclearmessages(optHandle handle);

/* Adds a message of kind optMsgUserError. */
OPTXV_API void optaddmessage(optHandle handle, const unsigned char* text);
OPTXV_API void coptaddmessage(optHandle handle, const char* text);

/*
 * Gives message `number`, from 1 to optMessageCount, ready to be shown, and its kind. The message
 * stays in the queue. A bad number is not added to the queue but comes back as a message: the text
 * "Bad message number = " and the number less 1, with the kind optMsgUserError.
 */
OPTXV_API void optgetmessage(optHandle handle, int32_t number, unsigned char* text, int32_t* kind);
OPTXV_API void coptgetmessage(optHandle handle, int32_t number, char* text, int32_t* kind);

/* The number of messages in the queue. */
OPTXV_API int32_t optmessagecount(optHandle handle);

/*
 * Counts the queue. Warnings are the kinds optMsgValueWarning and optMsgDeprecated; errors are
 * optMsgDefineError, optMsgValueError, optMsgTooManyMsgs and optMsgUserError. A refused value
 * counts 2 where the message that names the allowed values follows the complaint.
 */
OPTXV_API void opterrorcount(optHandle handle, int32_t* errors, int32_t* warnings);

/* Turns the echo of lines that are read, as messages of kind optMsgInputEcho, on or off (0). */
OPTXV_API void optechoset(optHandle handle, int32_t flag);

/* ---- Switches and counts ----------------------------------------------------------------- */

/*
 * The number of options, hence also the highest option number; 0 before a definition is read.
 * Parameter text can add options: a key that begins with "--" makes a list of texts of that name.
 */
OPTXV_API int32_t optcount(optHandle handle);

/* The number of groups. */
OPTXV_API int32_t optgroupcount(optHandle handle);

/* The number of synonyms. */
OPTXV_API int32_t optsynonymcount(optHandle handle);

/* The number of dot options; `errors` is how many were dropped for faults since optResetAll. */
OPTXV_API int32_t optdotoptcount(optHandle handle, int32_t* errors);

/* The number of indicators; `errors` is how many were dropped for faults since optResetAll. */
OPTXV_API int32_t optindicatorcount(optHandle handle, int32_t* errors);

/* 1 if setting an option also marks it as recently set, else 0. On in a new handle. */
OPTXV_API int32_t optrecentenabled(optHandle handle);

/* Turns that marking on or off (0). */
OPTXV_API void optrecentenabledset(optHandle handle, int32_t flag);

/*
 * Sets how parameter text is read from now on, and gives the old setting, 1 or 0. On, as in a new
 * handle: one option per line, and its value reaches to the end of the line. Off (0): any number of
 * options per line, and values are single words or stand in quotes.
 */
OPTXV_API int32_t opteolonlyset(optHandle handle, int32_t flag);

/* On: values out of their bounds are taken, with a warning. Off (0, as in a new handle): refused.
 */
OPTXV_API void optnoboundsset(optHandle handle, int32_t flag);

/* ---- Reset ------------------------------------------------------------------------------- */
/*
 * To reset an option is to unset it: it shows its default again and counts neither as set nor as
 * recently set. A list of texts loses its items; a macro resets its members; a multi-list loses its
 * members for good and takes no value any more.
 */

/* Resets all options, drops dot options and indicators with their counts of faults, and empties
 * the queue. */
OPTXV_API void optresetall(optHandle handle);

/* Takes the mark "recently set" from all options, which keep their values, and drops dot options
 * and indicators. */
OPTXV_API void optresetallrecent(optHandle handle);

/* Resets the options that are marked as recently set: to their defaults, not to what they were
 * before. Drops dot options and indicators. */
OPTXV_API void optresetrecentchanges(optHandle handle);

/* Resets one option. Fails on a bad number. */
OPTXV_API int32_t optresetnr(optHandle handle, int32_t optnr);

/* ---- By name ----------------------------------------------------------------------------- */
/*
 * Case is ignored in names. The definition says whether names must be written in full or may be
 * shortened; of several options that fit, the first in the table is found. A synonym is always
 * written in full.
 */

/*
 * The position of an option in the table counted FROM 0, hence its number less 1; -1 if there is
 * none. Synonyms are not looked at. optFindStr is the function that most callers want.
 */
OPTXV_API int32_t optlookup(optHandle handle, const unsigned char* name);
OPTXV_API int32_t coptlookup(optHandle handle, const char* name);

/* Number and reference number of an option, found by its name or a synonym. Fails on an unknown
 * name; both are then -1. */
OPTXV_API int32_t optfindstr(optHandle handle, const unsigned char* name, int32_t* optnr,
                             int32_t* refnr);
OPTXV_API int32_t coptfindstr(optHandle handle, const char* name, int32_t* optnr, int32_t* refnr);

/* The value as text, by name or synonym; the default if no value is set. Fails on an unknown name,
 * cleared. */
OPTXV_API int32_t optgetvalstr(optHandle handle, const unsigned char* name, unsigned char* value);
OPTXV_API int32_t coptgetvalstr(optHandle handle, const char* name, char* value);

/* The second value as text. Fails on an unknown name or an option of one value, cleared. */
OPTXV_API int32_t optgetval2str(optHandle handle, const unsigned char* name, unsigned char* value);
OPTXV_API int32_t coptgetval2str(optHandle handle, const char* name, char* value);

/* Replaces the reference number of an option. Fails on an unknown name; synonyms are not looked
 * at. */
OPTXV_API int32_t optsetrefnrstr(optHandle handle, const unsigned char* name, int32_t refnr);
OPTXV_API int32_t coptsetrefnrstr(optHandle handle, const char* name, int32_t refnr);

/* Synonym `position`, from 1 to optSynonymCount, and the name of its option, which is empty if the
 * definition names one that is not there. Fails on a bad position, both cleared. */
OPTXV_API int32_t optgetsynonym(optHandle handle, int32_t position, unsigned char* synonym,
                                unsigned char* optionname);
OPTXV_API int32_t coptgetsynonym(optHandle handle, int32_t position, char* synonym,
                                 char* optionname);

/* The number of items of an option of kind optTypeStrList; -1 for another kind of option, -2 for an
 * unknown name. */
OPTXV_API int32_t optlistcountstr(optHandle handle, const unsigned char* name);
OPTXV_API int32_t coptlistcountstr(optHandle handle, const char* name);

/* Item `position` of such a list, which stays in it. Result 1; 0 for a bad position, -1 for another
 * kind of option, -2 for an unknown name, all three cleared. */
OPTXV_API int32_t optreadfromliststr(optHandle handle, const unsigned char* name, int32_t position,
                                     unsigned char* item);
OPTXV_API int32_t coptreadfromliststr(optHandle handle, const char* name, int32_t position,
                                      char* item);

/* Takes the first item out of such a list. Result 1; 0 for an empty list, -1 for another kind of
 * option, -2 for an unknown name, all three cleared. */
OPTXV_API int32_t optgetfromliststr(optHandle handle, const unsigned char* name,
                                    unsigned char* item);
OPTXV_API int32_t coptgetfromliststr(optHandle handle, const char* name, char* item);

/*
 * Takes the first item out of the first list in the table that has any, and gives the name of the
 * list with it. A selector other than 0 takes the lists whose names begin with "--" (those that
 * parameter text has made), 0 all the others. Call it until it fails to empty them all.
 *
 * On failure `item` is untouched; `optionname` is untouched or names a list that was passed over.
 */
OPTXV_API int32_t optgetfromanystrlist(optHandle handle, int32_t selector,
                                       unsigned char* optionname, unsigned char* item);
OPTXV_API int32_t coptgetfromanystrlist(optHandle handle, int32_t selector, char* optionname,
                                        char* item);

/* ---- Information by number --------------------------------------------------------------- */

/*
 * All numbers about an option.
 *
 *   isdefined   0 nothing is set and the option shows its default; 1 the first value is set, 2 the
 *               second, 3 both
 *   isrecent    the same for values set since optResetAllRecent
 *   refnr       the reference number
 *   datatype    optData...
 *   opttype     optType...
 *   subtype     optsub...
 *
 * Fails on a bad number: the first three are then 0, the last three -1.
 */
OPTXV_API int32_t optgetinfonr(optHandle handle, int32_t optnr, int32_t* isdefined,
                               int32_t* isrecent, int32_t* refnr, int32_t* datatype,
                               int32_t* opttype, int32_t* subtype);

/* Only `isdefined` of optGetInfoNr. Fails on a bad number, cleared. */
OPTXV_API int32_t optgetdefinednr(optHandle handle, int32_t optnr, int32_t* isdefined);

/* The name as the user writes it: with blanks for underscores where the definition asks for that.
 * Fails on a bad number, cleared. */
OPTXV_API int32_t optgetnamenr(optHandle handle, int32_t optnr, unsigned char* name);
OPTXV_API int32_t coptgetnamenr(optHandle handle, int32_t optnr, char* name);

/* The name as the definition has it, underscores and all, and the line of help. Fails on a bad
 * number, both cleared. */
OPTXV_API int32_t optgethelpnr(optHandle handle, int32_t optnr, unsigned char* name,
                               unsigned char* helptext);
OPTXV_API int32_t coptgethelpnr(optHandle handle, int32_t optnr, char* name, char* helptext);

/* The name as the user writes it, the help context and the group number. Fails on a bad number: the
 * name is cleared, the others are -1. */
OPTXV_API int32_t optgetopthelpnr(optHandle handle, int32_t optnr, unsigned char* name,
                                  int32_t* helpcontext, int32_t* group);
OPTXV_API int32_t coptgetopthelpnr(optHandle handle, int32_t optnr, char* name,
                                   int32_t* helpcontext, int32_t* group);

/* The group number, or -1 for a bad option number. */
OPTXV_API int32_t optgetoptgroupnr(optHandle handle, int32_t optnr);

/* Bounds and default of an option of kind optTypeInteger. Fails on a bad number and on any other
 * kind, untouched. */
OPTXV_API int32_t optgetboundsint(optHandle handle, int32_t optnr, int32_t* low, int32_t* high,
                                  int32_t* defaultvalue);

/* Bounds and default of an option of kind optTypeDouble. Fails on a bad number and on any other
 * kind, untouched. */
OPTXV_API int32_t optgetboundsdbl(optHandle handle, int32_t optnr, double* low, double* high,
                                  double* defaultvalue);

/* The default of an option of kind optTypeString. Fails on a bad number and on any other kind,
 * enumerations included, cleared. */
OPTXV_API int32_t optgetdefaultstr(optHandle handle, int32_t optnr, unsigned char* defaultvalue);
OPTXV_API int32_t coptgetdefaultstr(optHandle handle, int32_t optnr, char* defaultvalue);

/* ---- Values by number -------------------------------------------------------------------- */
/*
 * A getter gives the default of an option that is not set. A setter stores the value and marks the
 * option as set, or refuses it with messages of kind optMsgValueError, the result then being 0. Its
 * result is 1 exactly if no error was added to the queue: a value that is taken with a warning
 * counts as success, and so does everything while the queue is full.
 *
 * The functions with a 2 work on the second value and fail unless the sub-type is optsub2Values.
 */

/*
 * Name and value of an option of any kind. `text` is the value as text; `integer` is the value of
 * an integer, Boolean or enumerated integer, `number` that of a double.
 *
 * Whatever does not apply is cleared. Fails on a bad number, all cleared, and on the kinds
 * optTypeMultiList to optTypeImmediate, which have a name but no value: all but the name cleared.
 */
OPTXV_API int32_t optgetvaluesnr(optHandle handle, int32_t optnr, unsigned char* name,
                                 int32_t* integer, double* number, unsigned char* text);
OPTXV_API int32_t coptgetvaluesnr(optHandle handle, int32_t optnr, char* name, int32_t* integer,
                                  double* number, char* text);

/*
 * Sets an option from that one of the three values that fits its kind; the other two are ignored.
 * Unlike optSetStrNr it takes a text as it is, double quotes included. Fails on a bad number, on
 * the kinds optTypeMultiList to optTypeImmediate and on a refused value.
 */
OPTXV_API int32_t optsetvaluesnr(optHandle handle, int32_t optnr, int32_t integer, double number,
                                 const unsigned char* text);
OPTXV_API int32_t coptsetvaluesnr(optHandle handle, int32_t optnr, int32_t integer, double number,
                                  const char* text);
OPTXV_API int32_t optsetvalues2nr(optHandle handle, int32_t optnr, int32_t integer, double number,
                                  const unsigned char* text);
OPTXV_API int32_t coptsetvalues2nr(optHandle handle, int32_t optnr, int32_t integer, double number,
                                   const char* text);

/* The value of an integer, Boolean or enumerated integer. Fails on a bad number and on other kinds,
 * untouched. */
OPTXV_API int32_t optgetintnr(optHandle handle, int32_t optnr, int32_t* value);
OPTXV_API int32_t optgetint2nr(optHandle handle, int32_t optnr, int32_t* value);

/* Sets such an option. Fails on a bad number, on other kinds and on a refused value. */
OPTXV_API int32_t optsetintnr(optHandle handle, int32_t optnr, int32_t value);
OPTXV_API int32_t optsetint2nr(optHandle handle, int32_t optnr, int32_t value);

/* The value of a double. Fails on a bad number and on other kinds, untouched. */
OPTXV_API int32_t optgetdblnr(optHandle handle, int32_t optnr, double* value);
OPTXV_API int32_t optgetdbl2nr(optHandle handle, int32_t optnr, double* value);

/* Sets a double. Fails on a bad number, on other kinds and on a refused value. */
OPTXV_API int32_t optsetdblnr(optHandle handle, int32_t optnr, double value);
OPTXV_API int32_t optsetdbl2nr(optHandle handle, int32_t optnr, double value);

/* The value of any option as text; empty for the kinds that have no value of their own, with result
 * 1. Fails on a bad number, cleared. */
OPTXV_API int32_t optgetstrnr(optHandle handle, int32_t optnr, unsigned char* value);
OPTXV_API int32_t coptgetstrnr(optHandle handle, int32_t optnr, char* value);
OPTXV_API int32_t optgetstr2nr(optHandle handle, int32_t optnr, unsigned char* value);
OPTXV_API int32_t coptgetstr2nr(optHandle handle, int32_t optnr, char* value);

/* Sets any option from a text, as parameter text would; does nothing on an immediate option, with
 * result 1. Fails on a bad number and on a refused value. */
OPTXV_API int32_t optsetstrnr(optHandle handle, int32_t optnr, const unsigned char* value);
OPTXV_API int32_t coptsetstrnr(optHandle handle, int32_t optnr, const char* value);
OPTXV_API int32_t optsetstr2nr(optHandle handle, int32_t optnr, const unsigned char* value);
OPTXV_API int32_t coptsetstr2nr(optHandle handle, int32_t optnr, const char* value);

/* Replaces the reference number of an option. Fails on a bad number. */
OPTXV_API int32_t optsetrefnr(optHandle handle, int32_t optnr, int32_t refnr);

/* ---- Enumerations and groups ------------------------------------------------------------- */

/* How many values an enumerated option allows. Fails on a bad number and on other kinds; the count
 * is then -1. */
OPTXV_API int32_t optgetenumcount(optHandle handle, int32_t optnr, int32_t* count);

/* Allowed value `entry`, from 1 to that count, as integer (0 for enumerated texts) and as text.
 * Fails on a bad number, other kinds and a bad entry: -1 and cleared. */
OPTXV_API int32_t optgetenumvalue(optHandle handle, int32_t optnr, int32_t entry, int32_t* integer,
                                  unsigned char* text);
OPTXV_API int32_t coptgetenumvalue(optHandle handle, int32_t optnr, int32_t entry, int32_t* integer,
                                   char* text);

/* Help context and line of help of allowed value `entry`. Fails as optGetEnumValue does: -1 and
 * cleared. */
OPTXV_API int32_t optgetenumhelp(optHandle handle, int32_t optnr, int32_t entry,
                                 int32_t* helpcontext, unsigned char* helptext);
OPTXV_API int32_t coptgetenumhelp(optHandle handle, int32_t optnr, int32_t entry,
                                  int32_t* helpcontext, char* helptext);

/* The present value of an option of kind optTypeEnumStr and its entry; the entry is 0 for a value
 * that is none of those allowed. Fails on a bad number and on any other kind: cleared and -1. */
OPTXV_API int32_t optgetenumstrnr(optHandle handle, int32_t optnr, unsigned char* text,
                                  int32_t* entry);
OPTXV_API int32_t coptgetenumstrnr(optHandle handle, int32_t optnr, char* text, int32_t* entry);

/* Group `position`, from 1 to optGroupCount: its name, its number in the definition, its help
 * context and its line of help. Fails on a bad position, all four cleared. */
OPTXV_API int32_t optgetgroupnr(optHandle handle, int32_t position, unsigned char* name,
                                int32_t* groupnr, int32_t* helpcontext, unsigned char* helptext);
OPTXV_API int32_t coptgetgroupnr(optHandle handle, int32_t position, char* name, int32_t* groupnr,
                                 int32_t* helpcontext, char* helptext);

/* The position of the first group with that number in the definition, from 1; -1 if there is
 * none. */
OPTXV_API int32_t optgetgroupgrpnr(optHandle handle, int32_t groupnr);

/* ---- Dot options and indicators ---------------------------------------------------------- */
/*
 * Parameter text can tie a number to a symbol of the caller's own, `x.scale('a',*) = 2.5`, and an
 * equation to a variable, `rowtype eqa('a')$vara('a') = yes`. The library checks the attribute
 * (".scale", an option of the definition whose name begins with a dot) and the value, and keeps the
 * entries in their order; symbols and labels mean nothing to it.
 */

/*
 * Dot option `position`, from 1 to optDotOptCount: the symbol ("x"), the number of the attribute's
 * option, how many labels there are, and the value. Fails on a bad position, all four cleared.
 */
OPTXV_API int32_t optgetdotoptnr(optHandle handle, int32_t position, unsigned char* name,
                                 int32_t* optnr, int32_t* dimension, double* value);
OPTXV_API int32_t coptgetdotoptnr(optHandle handle, int32_t position, char* name, int32_t* optnr,
                                  int32_t* dimension, double* value);

/* Label `index`, from 1 to the dimension, of a dot option: without its quotes, or `*`. Fails on a
 * bad position or index, cleared. */
OPTXV_API int32_t optgetdotoptuel(optHandle handle, int32_t position, int32_t index,
                                  unsigned char* label);
OPTXV_API int32_t coptgetdotoptuel(optHandle handle, int32_t position, int32_t index, char* label);

/* Indicator `position`, from 1 to optIndicatorCount: equation and variable, how many labels each
 * has, and the value, 1 or 0. Fails on a bad position, all five cleared. */
OPTXV_API int32_t optgetindicatornr(optHandle handle, int32_t position, unsigned char* equation,
                                    unsigned char* variable, int32_t* equationdimension,
                                    int32_t* variabledimension, int32_t* mark);
OPTXV_API int32_t coptgetindicatornr(optHandle handle, int32_t position, char* equation,
                                     char* variable, int32_t* equationdimension,
                                     int32_t* variabledimension, int32_t* mark);

/* Label `index` of the equation, or of the variable, of an indicator. A quoted label keeps its
 * quotes, which tell it from an identifier. Fails on a bad position or index, cleared. */
OPTXV_API int32_t optgetequindicatornr(optHandle handle, int32_t position, int32_t index,
                                       unsigned char* label);
OPTXV_API int32_t coptgetequindicatornr(optHandle handle, int32_t position, int32_t index,
                                        char* label);
OPTXV_API int32_t optgetvarindicatornr(optHandle handle, int32_t position, int32_t index,
                                       unsigned char* label);
OPTXV_API int32_t coptgetvarindicatornr(optHandle handle, int32_t position, int32_t index,
                                        char* label);

/* ---- Constants and identity -------------------------------------------------------------- */

/* The word that declares this kind of option in a definition: "integer" for optTypeInteger. Fails
 * on what is no optType..., cleared. The handle is not used. */
OPTXV_API int32_t optgettypename(optHandle handle, int32_t opttype, unsigned char* name);
OPTXV_API int32_t coptgettypename(optHandle handle, int32_t opttype, char* name);

/* The name of a constant of this header. The group is 1 for optData..., 2 for optType..., 3 for
 * optsub..., 4 for optMsg... (of which the last, optMsgUserError, is not given out). Fails on a bad
 * group or index, cleared. The handle is not used. */
OPTXV_API int32_t optgetconstname(optHandle handle, int32_t group, int32_t index,
                                  unsigned char* name);
OPTXV_API int32_t coptgetconstname(optHandle handle, int32_t group, int32_t index, char* name);

/* The audit line: 78 bytes that say what build of the library this is. The handle is not used. */
OPTXV_API void optversion(optHandle handle, unsigned char* auditline);
OPTXV_API void coptversion(optHandle handle, char* auditline);

/* The name of the definition file, without its directory: the last that was asked for, also if it
 * could not be opened; empty before that. */
OPTXV_API void optdefinitionfile(optHandle handle, unsigned char* filename);
OPTXV_API void coptdefinitionfile(optHandle handle, char* filename);

/* ---- Platform helpers -------------------------------------------------------------------- */

/*
 * The system under the program, for callers that want one answer on every system. They have nothing
 * to do with options: they take no handle, have lower-case names only, no second form, and no
 * signature in xcheck.
 *
 * Unless a function says otherwise, its result is 0 or an error number of the system (errno.h), and
 * on failure out numbers are untouched. An out text is zero-terminated and has room for `size`
 * bytes, the zero byte included. A longer text gives ERANGE; on failure the text is empty, if there
 * is any room. A nil name counts as an empty one.
 */

/* The processor time that the process has used, for itself and in the system, in nanoseconds. */
OPTXV_API int32_t get_cpu_time(int64_t* nanoseconds);

/* The time since 1 January 1970 UTC, in nanoseconds. */
OPTXV_API int32_t get_time(int64_t* nanoseconds);

/* Milliseconds on a clock that is never set, from an unspecified start: only differences matter.
 * Does not fail. */
OPTXV_API int64_t gettickcount(void);

/* The absolute path of the current directory. */
OPTXV_API int32_t get_cwd(char* path, size_t size);

/* The value of an environment variable. ENOENT if it is not set; an empty value is a value. */
OPTXV_API int32_t get_env(const char* name, char* value, size_t size);

/*
 * A file, by its open descriptor or by its name, which may lead through symbolic links: its size in
 * bytes, when its content was last modified (nanoseconds since 1 January 1970 UTC), and its mode,
 * which is st_mode of POSIX: the kind of file and the permissions.
 */
OPTXV_API int32_t get_file_stat(int32_t handle, int64_t* size, int64_t* modified, int32_t* mode);
OPTXV_API int32_t get_file_stat_by_name(const char* name, int64_t* size, int64_t* modified,
                                        int32_t* mode);

/* What POSIX uname reports of the system: five texts, each with room for `size` bytes. If one does
 * not fit, all are empty. */
OPTXV_API int32_t get_uname(char* sysname, char* nodename, char* release, char* version,
                            char* machine, size_t size);

/* The type of the file system: 4, which stands for UNIX. Does not fail. */
OPTXV_API int32_t getosfilesys(void);

/*
 * The absolute path of the running program. It is found from the word that the program was called
 * by, along PATH if there is no slash in it and otherwise from the current directory; one symbolic
 * link is followed, and the path is not normalised. EINVAL if that leads to nothing or does not
 * fit.
 */
OPTXV_API int32_t unixgetmodulefilename(char* path, size_t size);

#ifdef __cplusplus
}
#endif

/* ---- The mixed-case names ---------------------------------------------------------------- */

#ifndef OPTXV_NO_MIXED_CASE_NAMES
#define optGetLoadPath optgetloadpath
#define coptGetLoadPath coptgetloadpath
#define optSetLoadPath optsetloadpath
#define coptSetLoadPath coptsetloadpath
#define optReadDefinition optreaddefinition
#define coptReadDefinition coptreaddefinition
#define optReadParameterFile optreadparameterfile
#define coptReadParameterFile coptreadparameterfile
#define optReadFromStr optreadfromstr
#define coptReadFromStr coptreadfromstr
#define optReadFromPChar optreadfrompchar
#define optWriteParameterFile optwriteparameterfile
#define coptWriteParameterFile coptwriteparameterfile
#define optShowHelp optshowhelp
#define coptShowHelp coptshowhelp
#define optClearMessages optclearmessages
#define optAddMessage optaddmessage
#define coptAddMessage coptaddmessage
#define optGetMessage optgetmessage
#define coptGetMessage coptgetmessage
#define optMessageCount optmessagecount
#define optErrorCount opterrorcount
#define optEchoSet optechoset
#define optCount optcount
#define optGroupCount optgroupcount
#define optSynonymCount optsynonymcount
#define optDotOptCount optdotoptcount
#define optIndicatorCount optindicatorcount
#define optRecentEnabled optrecentenabled
#define optRecentEnabledSet optrecentenabledset
#define optEOLOnlySet opteolonlyset
#define optNoBoundsSet optnoboundsset
#define optResetAll optresetall
#define optResetAllRecent optresetallrecent
#define optResetRecentChanges optresetrecentchanges
#define optResetNr optresetnr
#define optLookUp optlookup
#define coptLookUp coptlookup
#define optFindStr optfindstr
#define coptFindStr coptfindstr
#define optGetValStr optgetvalstr
#define coptGetValStr coptgetvalstr
#define optGetVal2Str optgetval2str
#define coptGetVal2Str coptgetval2str
#define optSetRefNrStr optsetrefnrstr
#define coptSetRefNrStr coptsetrefnrstr
#define optGetSynonym optgetsynonym
#define coptGetSynonym coptgetsynonym
#define optListCountStr optlistcountstr
#define coptListCountStr coptlistcountstr
#define optReadFromListStr optreadfromliststr
#define coptReadFromListStr coptreadfromliststr
#define optGetFromListStr optgetfromliststr
#define coptGetFromListStr coptgetfromliststr
#define optGetFromAnyStrList optgetfromanystrlist
#define coptGetFromAnyStrList coptgetfromanystrlist
#define optGetInfoNr optgetinfonr
#define optGetDefinedNr optgetdefinednr
#define optGetNameNr optgetnamenr
#define coptGetNameNr coptgetnamenr
#define optGetHelpNr optgethelpnr
#define coptGetHelpNr coptgethelpnr
#define optGetOptHelpNr optgetopthelpnr
#define coptGetOptHelpNr coptgetopthelpnr
#define optGetOptGroupNr optgetoptgroupnr
#define optGetBoundsInt optgetboundsint
#define optGetBoundsDbl optgetboundsdbl
#define optGetDefaultStr optgetdefaultstr
#define coptGetDefaultStr coptgetdefaultstr
#define optGetValuesNr optgetvaluesnr
#define coptGetValuesNr coptgetvaluesnr
#define optSetValuesNr optsetvaluesnr
#define coptSetValuesNr coptsetvaluesnr
#define optSetValues2Nr optsetvalues2nr
#define coptSetValues2Nr coptsetvalues2nr
#define optGetIntNr optgetintnr
#define optGetInt2Nr optgetint2nr
#define optSetIntNr optsetintnr
#define optSetInt2Nr optsetint2nr
#define optGetDblNr optgetdblnr
#define optGetDbl2Nr optgetdbl2nr
#define optSetDblNr optsetdblnr
#define optSetDbl2Nr optsetdbl2nr
#define optGetStrNr optgetstrnr
#define coptGetStrNr coptgetstrnr
#define optGetStr2Nr optgetstr2nr
#define coptGetStr2Nr coptgetstr2nr
#define optSetStrNr optsetstrnr
#define coptSetStrNr coptsetstrnr
#define optSetStr2Nr optsetstr2nr
#define coptSetStr2Nr coptsetstr2nr
#define optSetRefNr optsetrefnr
#define optGetEnumCount optgetenumcount
#define optGetEnumValue optgetenumvalue
#define coptGetEnumValue coptgetenumvalue
#define optGetEnumHelp optgetenumhelp
#define coptGetEnumHelp coptgetenumhelp
#define optGetEnumStrNr optgetenumstrnr
#define coptGetEnumStrNr coptgetenumstrnr
#define optGetGroupNr optgetgroupnr
#define coptGetGroupNr coptgetgroupnr
#define optGetGroupGrpNr optgetgroupgrpnr
#define optGetDotOptNr optgetdotoptnr
#define coptGetDotOptNr coptgetdotoptnr
#define optGetDotOptUel optgetdotoptuel
#define coptGetDotOptUel coptgetdotoptuel
#define optGetIndicatorNr optgetindicatornr
#define coptGetIndicatorNr coptgetindicatornr
#define optGetEquIndicatorNr optgetequindicatornr
#define coptGetEquIndicatorNr coptgetequindicatornr
#define optGetVarIndicatorNr optgetvarindicatornr
#define coptGetVarIndicatorNr coptgetvarindicatornr
#define optGetTypeName optgettypename
#define coptGetTypeName coptgettypename
#define optGetConstName optgetconstname
#define coptGetConstName coptgetconstname
#define optVersion optversion
#define coptVersion coptversion
#define optDefinitionFile optdefinitionfile
#define coptDefinitionFile coptdefinitionfile
#endif /* OPTXV_NO_MIXED_CASE_NAMES */

#endif /* OPTXV_OPTXV_H */
