// Where findings go, and what the forms of them share.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/finding.h"

namespace command {

/// Takes findings in their order, and at the end what they come to. Each is written as it comes, so
/// that memory does not grow with them.
class reporter {
 public:
  virtual ~reporter() = default;
  virtual void take(const finding& found) = 0;
  virtual void summary(const tally& total) = 0;
};

/// Whether colours suit a stream: it is a terminal, and the environment does not ask for none
/// (NO_COLOR, or TERM=dumb).
bool wantscolour(std::FILE* out);

/// "3 errors, 1 warning in 2 files", with what else there is to count.
std::string summaryline(const tally& total);

/// "did you mean "a", "b" or "c"?" REQUIRES: there is a name.
std::string question(const std::vector<std::string>& names);

/// Writes a text.
void put(std::FILE* out, std::string_view text);

}  // namespace command
