// Holds the library and the yardstick to the same results, ahead of any comparison of their speed.
#pragma once

#include <string>

#include "optxv/optxv.h"
#include "yardstick.h"

namespace optxv::bench {

/// What the two tables say differently, a line each; empty where they agree on every field, value,
/// group and item.
std::string differences(optHandle library, const yardstick& yard);

}  // namespace optxv::bench
