// What the subcommands that make a product have in common: they tell what is wrong with the files,
// and then deliver what they made of them, or say why not.
#pragma once

#include <string>
#include <string_view>

#include "analysis/run.h"
#include "tasks/request.h"
#include "writers/optionwriter.h"

namespace command {

/// Writes findings to standard error, as lines.
findingtaker tostandarderror();

/// Whether nothing may be made of what was read: a file could not be read or has errors, and the
/// request does not force it. Says so, and gives the exit status; 0 if it may.
int withheld(const request& given, const run& read, const std::string& destination);

/// Delivers a product to a file, or says why not; an empty name is standard output, where a
/// terminal gets it printable, line by line. It is not laid over a file that was read, unless the
/// request forces it. Gives the exit status of the whole run: 2 if this fails, else that of the
/// findings.
int delivered(const request& given, const run& read, const std::string& destination,
              std::string_view product);

/// Delivers a text that stands for no file to standard output, where a terminal gets it printable.
/// Gives 0, or the exit status of the failure, which is told.
int shownproduct(std::string_view text);

/// Writes what a file that was read has become over it; of "-", to standard output. Gives 0, or the
/// exit status of the failure, which is told.
int replaced(const std::string& file, std::string_view text);

/// The library's table of the options that were read. BORROWS: the run's.
const optxv::tzmaoptions& tableof(const run& read);

/// One of the forms in which the library documents a table.
using documentform = std::string (optxv::tzmaoptionwriter::*)() const;

/// Reads the definition, makes that form of it and delivers it. Gives the exit status.
int document(const request& given, documentform form);

}  // namespace command
