// What the command can do. Each function writes its product to standard output, whatever it finds
// wrong to standard error (but check, whose product that is), and gives the exit status: 0, or 1 if
// there were errors in the files, or 2 if a file could not be read or written.
#pragma once

#include <string>

#include "analysis/session.h"
#include "output/outputs.h"

namespace command {

inline constexpr int statuserrors = 1;

/// Reads and tells everything that is found, as lines or as JSON.
int check(const readsettings& settings, bool json);

/// Reads and shows the options that are set, or all of them, as a table or as JSON.
int show(const readsettings& settings, bool all, bool json);

/// Reads and writes what is set as a parameter file; an empty name is standard output.
int write(const readsettings& settings, const std::string& file);

/// Shows the library's help: of one option, by mode, or by group for an empty request.
int help(const std::string& definition, const std::string& request);

/// A form in which the library documents a definition.
enum class documentform {
  html,        ///< a table of the raw definition
  definition,  ///< the definition language
  include,     ///< an include file in Object Pascal
};

/// Writes a document about a definition; an empty name is standard output.
int document(documentform form, const std::string& definition, const std::string& file);

/// Writes the reference page index.html into a folder, which is made if there is none.
int reference(const std::string& definition, const std::string& folder);

/// Shows version, build and signatures of the library's functions.
int api(bool json);

}  // namespace command
