#include "frame/compatibility.h"

#include <algorithm>

#include "foundation/strutilx.h"
#include "frame/api.h"

#define OPTXV_NO_MIXED_CASE_NAMES
#include "optxv/optxv.h"

namespace optxv {

namespace {

// Names every position that differs, the result being position 0.
std::int32_t comparecodes(const signature& row, const std::int32_t* codes, shortstring& message) {
  for (int position = 0; position <= row.arguments; ++position) {
    if (codes[position] == row.codes[static_cast<std::size_t>(position)]) continue;
    if (message.empty()) {
      message = concat(row.apiname, " has wrong argument type for argument ");
    } else {
      message.append(',');
    }
    message.append(inttostr(position));
  }
  return message.empty() ? 1 : 0;
}

}  // namespace

std::int32_t checkfunction(std::string_view function, std::int32_t count, const std::int32_t* codes,
                           shortstring& message) {
  const auto row = std::ranges::find(signatures, function, &signature::apiname);
  if (row == signatures.end()) {
    message = concat(function, " cannot be found in optxvlib.");
    return 0;
  }
  message.clear();
  if (count == row->arguments) return comparecodes(*row, codes, message);
  // KEEP: the library's number stands as what the API expects, the caller's as the library's.
  message = concat(row->apiname, " has wrong number of arguments, the API expects ",
                   inttostr(row->arguments), " but it has ", inttostr(count), " in the library.");
  return 0;
}

std::int32_t checkversion(std::int32_t version, shortstring& message, std::int32_t& status) {
  constexpr std::int32_t own = OPTXV_API_VERSION;
  if (version <= 0) {
    status = 0;
    message = concat("The API is too old for the used library, API version: ", inttostr(version),
                     ", library version: ", inttostr(own));
    return 0;
  }
  if (version < own) {
    status = 2;
    message.assign("Client version is compatible to this version of the library.");
  } else if (version == own) {
    status = 1;
    message.assign("API version and library version are the same.");
  } else {
    status = 3;
    message.assign("API version is newer than this library.");
  }
  return 1;
}

}  // namespace optxv
