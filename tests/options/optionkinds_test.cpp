#include "options/optionkinds.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/optiontable.h"

namespace optxv {
namespace {

TEST(OptionKinds, HaveNamesInTheInterface) {
  const std::vector<lines> groups = {
      {"integer", "double", "string", "boolean", "enumstr", "enumint", "multilist", "strlist",
       "macro", "immediate"},
      {"optDataNone", "optDataInteger", "optDataDouble", "optDataString", "optDataStrList"},
      {"optTypeInteger", "optTypeDouble", "optTypeString", "optTypeBoolean", "optTypeEnumStr",
       "optTypeEnumInt", "optTypeMultiList", "optTypeStrList", "optTypeMacro", "optTypeImmediate"},
      {"optsubRequired", "optsubNoValue", "optsubOptional", "optsub2Values"},
      // The tenth has a name too, which is not given out.
      {"optMsgInputEcho", "optMsgHelp", "optMsgDefineError", "optMsgValueError",
       "optMsgValueWarning", "optMsgDeprecated", "optMsgFileEnter", "optMsgFileLeave",
       "optMsgTooManyMsgs"}};
  for (std::int32_t group = -1; group <= 6; ++group) {
    const lines& names =
        group >= 0 && group <= 4 ? groups[static_cast<std::size_t>(group)] : lines();
    for (std::int32_t i = -2; i < 12; ++i) {
      const bool named = i >= 0 && i < static_cast<std::int32_t>(names.size());
      shortstring name = "?";
      const std::int32_t result = group == 0 ? tzmaoptions::optgettypename(i, name)
                                             : tzmaoptions::optgetconstname(group, i, name);
      EXPECT_EQ(result, named ? 1 : 0) << group << ' ' << i;
      EXPECT_EQ(str(name), named ? names[static_cast<std::size_t>(i)] : "");
    }
  }
}

}  // namespace
}  // namespace optxv
