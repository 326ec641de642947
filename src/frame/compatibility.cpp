#include "frame/compatibility.h"

#include <algorithm>

#include "foundation/strutilx.h"
#include "frame/signatures.h"
#include "options/messages.h"
#include "options/optionkinds.h"

#define OPTXV_NO_MIXED_CASE_NAMES
#include "optxv/optxv.h"

namespace optxv {

// The constants of the public header are those of the library. Both have the same names, the
// header's at global scope.
#define OPTXV_SAME(name) static_assert(int{::name} == int{optxv::name})
OPTXV_SAME(optTypeInteger);
OPTXV_SAME(optTypeDouble);
OPTXV_SAME(optTypeString);
OPTXV_SAME(optTypeBoolean);
OPTXV_SAME(optTypeEnumStr);
OPTXV_SAME(optTypeEnumInt);
OPTXV_SAME(optTypeMultiList);
OPTXV_SAME(optTypeStrList);
OPTXV_SAME(optTypeMacro);
OPTXV_SAME(optTypeImmediate);
static_assert(::optTypeImmediate + 1 == optionkinds.size());
OPTXV_SAME(optsubRequired);
OPTXV_SAME(optsubNoValue);
OPTXV_SAME(optsubOptional);
OPTXV_SAME(optsub2Values);
static_assert(::optsub2Values + 1 == strtypemodifier.size());
OPTXV_SAME(optDataNone);
OPTXV_SAME(optDataInteger);
OPTXV_SAME(optDataDouble);
OPTXV_SAME(optDataString);
OPTXV_SAME(optDataStrList);
static_assert(::optDataStrList + 1 == datatypenames.size());
OPTXV_SAME(optMsgInputEcho);
OPTXV_SAME(optMsgHelp);
OPTXV_SAME(optMsgDefineError);
OPTXV_SAME(optMsgValueError);
OPTXV_SAME(optMsgValueWarning);
OPTXV_SAME(optMsgDeprecated);
OPTXV_SAME(optMsgFileEnter);
OPTXV_SAME(optMsgFileLeave);
OPTXV_SAME(optMsgTooManyMsgs);
OPTXV_SAME(optMsgUserError);
static_assert(::optMsgUserError + 1 == messagekinds.size());
#undef OPTXV_SAME
static_assert(optArgNone == kinds::none::code);
static_assert(optArgInteger == kinds::integer::code);
static_assert(optArgOutInteger == kinds::outinteger::code);
static_assert(optArgPChar == kinds::pchar::code);
static_assert(optArgText == kinds::text::code);
static_assert(optArgOutText == kinds::outtext::code);
static_assert(optArgDouble == kinds::real::code);
static_assert(optArgOutDouble == kinds::outreal::code);
static_assert(OPTXV_TEXT_SIZE == sizeof(shortstring));

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
