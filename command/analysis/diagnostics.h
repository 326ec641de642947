// What there is to say about a file, and how it is made from the messages of the library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/optionset.h"
#include "text/document.h"

namespace command {

enum class severity {
  error,
  warning,
  note,
  plain,  ///< a line that somebody asked for, as help is; it says nothing about the file
};

/// The word of a severity; empty for plain.
std::string_view severityword(severity level);

/// One finding. Lines and columns count from 1, columns in bytes; 0 is "not known".
struct diagnostic {
  severity level = severity::error;
  std::int32_t kind = ownkind;  ///< the kind of the library's message
  std::string file = {};
  std::int32_t line = 0;
  std::size_t column = 0;
  std::size_t length = 0;  ///< of the text at that column; 0 without a column
  std::string text = {};
  std::vector<std::string> notes = {};    ///< more about the same, such as the values allowed
  std::vector<std::string> nearest = {};  ///< names that may have been meant

  static constexpr std::int32_t ownkind = -1;  ///< this command's own finding
};

/// The queue as findings, in its order. `file` is the file that was handed to the library; files
/// that it reads in turn are told by their enter and leave messages. The line number and the
/// prefix of the kind are taken off the text; a message that adds to the one before it becomes a
/// note of it. A text that the library had to cut ends in "...".
std::vector<diagnostic> findings(const optionset& options, const std::string& file);

/// The pieces of a message that say what it is about: the name of an option or a key, and the
/// value that was seen. Empty where the message has none.
struct subject {
  std::string_view name, value;
};
subject subjectof(std::string_view text);

/// Fills in line and column, where they can be found in the source with certainty: the name or
/// value that the text quotes must stand in one place alone, or where an entry begins.
void locate(diagnostic& found, const textdocument& source);

/// What a file's text itself gives rise to, whatever it says: a byte-order mark, zero bytes, text
/// that the library never gets to see.
enum class filerole { definition, parameters };
std::vector<diagnostic> observations(const std::string& file, const textdocument& source,
                                     filerole role);

/// The exit status of a run with errors in its files, and of one whose files or words are unusable.
inline constexpr int statuserrors = 1;
inline constexpr int statusunusable = 2;

/// What a run has found, over all files.
struct tally {
  std::size_t errors = 0;
  std::size_t warnings = 0;
  std::size_t files = 0;       ///< that were handed to the command
  std::size_t unreadable = 0;  ///< of these
  std::size_t dotoptions = 0;
  std::size_t indicators = 0;
  std::size_t omitted = 0;  ///< of the errors: those that are counted but not shown

  /// The exit status: 2 if a file could not be read, else 1 if there are errors, or warnings where
  /// these count as errors, else 0.
  int status(bool strict = false) const {
    if (unreadable > 0) return statusunusable;
    return errors + (strict ? warnings : 0) > 0 ? statuserrors : 0;
  }
};

/// Takes findings in their order, and at the end what they come to.
class reporter {
 public:
  virtual ~reporter() = default;
  /// BORROWS: the source of the finding's file, for the call.
  virtual void take(const diagnostic& found, const textdocument& source) = 0;
  virtual void summary(const tally& total) = 0;
};

}  // namespace command
