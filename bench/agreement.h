// Checks that the library and the yardstick give the same results, before their speeds are
// compared.
#pragma once

#include <string>

#include "optxv/optxv.hpp"
#include "yardstick.h"

namespace optxv::bench {

/// What differs between the two tables, one per line; empty where they agree on every field, value,
/// group and item.
std::string differences(const options& library, const yardstick& yard);

}  // namespace optxv::bench
