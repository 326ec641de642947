// What the command can do: a function for each subcommand, in a file of the same name. Each writes
// its product to standard output or the file that the request names, whatever it finds wrong to
// standard error (but check, whose product that is), and gives the exit status: 0, or 1 if there
// were errors in the files, or 2 if a file could not be read or written.
#pragma once

#include "tasks/request.h"

namespace command {

/// Reads and tells everything that is found, in one of several forms. Without a definition, that is
/// all that the nearest optxv.json binds.
int check(const request& given);

/// Repairs what has one sure repair, shows the differences or writes the files, and tells what is
/// left.
int fix(const request& given);

/// Reads and tells what rules find, in the definition if it is alone, else in the parameter files.
int lint(const request& given);

/// Lays files out anew, parameter files or definitions, and shows or writes them, or names those
/// that would change.
int format(const request& given);

/// Reads and shows the options that are set, or all of them, as a table or as JSON.
int show(const request& given);

/// Reads and shows where the values come from, and what they overrode.
int origins(const request& given);

/// Shows what differs between two settings, or between two definitions. Gives 0 if nothing does, 1
/// if something does, of definitions if something breaks what worked, and 2 for any trouble.
int diff(const request& given);

/// Shows the library's help: of one option, by mode, or by group if there is no topic.
int help(const request& given);

/// Reads and writes what is set as a parameter file.
int write(const request& given);

/// Writes the raw definition as a table in HTML.
int html(const request& given);

/// Writes what was understood of the definition in the form of a definition.
int definition(const request& given);

/// Writes the numbers of the options as an include file in Object Pascal.
int include(const request& given);

/// Writes a parameter file as JSON, or settings in JSON as a parameter file.
int convert(const request& given);

/// Writes a JSON Schema of the settings that the definition takes.
int schema(const request& given);

/// Writes code for programs that have the options, in one of several languages.
int generate(const request& given);

/// Writes the reference: the page index.html into a folder, which is made if there is none, or a
/// file of another form.
int reference(const request& given);

/// Serves an editor at standard input and output, until that ends it.
int lsp(const request& given);

/// Shows version, build and signatures of the library's functions.
int api(const request& given);

}  // namespace command
