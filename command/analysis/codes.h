// The codes with which findings are told, and what each stands for.
#pragma once

#include <vector>

#include "analysis/finding.h"

namespace command {

/// Every code that a finding of a run may have: the faults of the library in the order of their
/// numbers, then the findings of the command itself.
std::vector<coderow> checkcodes();

}  // namespace command
