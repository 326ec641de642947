// Whether a caller and the library mean the same functions: one signature at a time, and the two
// version numbers. The exported xcheck and xapiversion are these.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/boundedstring.h"

namespace optxv {

/// Compares a caller's signature of one function with the library's.
///
/// codes holds count + 1 numbers: the result's code, then the arguments'. Returns 1 with an empty
/// message if they agree, else 0 with a message that names the difference. Names are compared
/// exactly. The codes are read only where count is right.
std::int32_t checkfunction(std::string_view function, std::int32_t count, const std::int32_t* codes,
                           shortstring& message);

/// Compares the caller's version of the interface with the library's, which is 2.
///
/// Returns 0 and status 0 for a version of 0 or below, else 1 and status 2 for an older version, 1
/// for the same, 3 for a newer one. The message states the result in every case.
std::int32_t checkversion(std::int32_t version, shortstring& message, std::int32_t& status);

}  // namespace optxv
