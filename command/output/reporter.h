// Where findings go, and what the forms of them share.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/finding.h"
#include "analysis/hearing.h"

namespace command {

/// Takes findings in their order, and at the end what they come to. Each is written as it comes, so
/// that memory does not grow with them.
class reporter {
 public:
  virtual ~reporter() = default;
  virtual void take(const finding& found) = 0;
  virtual void summary(const tally& total) = 0;
  /// What it has to hear of the reading besides the findings; nil if nothing.
  virtual listener* hears() { return nullptr; }
};

/// Whether colours suit a stream: it is a terminal, and the environment does not ask for none
/// (NO_COLOR, or TERM=dumb).
bool wantscolour(std::FILE* out);

/// "3 errors, 1 warning in 2 files", with what else there is to count.
std::string summaryline(const tally& total);

/// "did you mean "a", "b" or "c"?" REQUIRES: there is a name.
std::string question(const std::vector<std::string>& names);

/// More about a finding in a line of its own.
struct addition {
  severity level = severity::note;  ///< plain for what would do
  std::string text = {};            ///< as it came; not all of it printable
  place where = {};                 ///< its own, or else that of the finding
  bool elsewhere = false;           ///< that it has a place of its own
};

/// The notes of a finding, the names that may have been meant, and what would do.
std::vector<addition> additionsof(const finding& found);

/// What would do: `write "steps 5" for the default`.
std::string advice(const hint& each);

/// Writes a text.
void put(std::FILE* out, std::string_view text);

}  // namespace command
