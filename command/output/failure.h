// The one form in which the command reports that it failed itself: that a file cannot be read or
// written, that its arguments make no sense, that memory ran out. What is wrong in the files is
// reported by the findings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace command {

/// What failed, and why. Names and texts are kept as they are, and made printable when reported.
struct failure {
  std::string what;      ///< "a.opt: cannot be written"
  int error = 0;         ///< of the system, or 0
  std::string why = {};  ///< in words; if empty, the system's words for the error number are used
  std::vector<std::string> notes = {};  ///< what helps to understand or to avoid it
};

/// The exit status of a run that failed in this way.
inline constexpr int statusfailed = 2;

/// The lines: `optxv: error: WHAT: WHY`, and `optxv: note: NOTE` for each note. There is no WHY if
/// there are neither words nor an error number. Printable, except for the line feeds.
std::string failuretext(const failure& told);

/// Writes these lines to standard error and gives the exit status.
int tell(const failure& told);

/// Writes the line `optxv: warning: TEXT` or `optxv: note: TEXT` to standard error, printable.
void tellwarning(std::string_view text);
void tellnote(std::string_view text);

/// A file as failures name it: an empty name is standard output.
std::string filewords(const std::string& file);

}  // namespace command
