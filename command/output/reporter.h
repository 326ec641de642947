// Where findings go: to a person, in the form of compilers, or to a program, as JSON.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/diagnostics.h"
#include "text/source.h"

namespace command {

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
  virtual void take(const diagnostic& found, const sourcefile& source) = 0;
  virtual void summary(const tally& total) = 0;
};

/// Writes each finding as it comes: `file:line:column: error: text`, with the line beneath and a
/// caret if the column is known, then its notes. BORROWS: the stream. In colour if it is a terminal
/// and the environment does not ask for none (NO_COLOR, or TERM=dumb).
std::unique_ptr<reporter> makelines(std::FILE* out);

/// Writes one JSON object at the end. BORROWS: the stream.
std::unique_ptr<reporter> makejson(std::FILE* out);

/// Whether colours suit a stream.
bool wantscolour(std::FILE* out);

/// "3 errors, 1 warning in 2 files", with what else there is to count.
std::string summaryline(const tally& total);

/// "did you mean "a", "b" or "c"?" REQUIRES: there is a name.
std::string question(const std::vector<std::string>& names);

/// Writes a text.
void put(std::FILE* out, std::string_view text);

}  // namespace command
