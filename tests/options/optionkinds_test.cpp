#include "options/optionkinds.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "support/optiontable.h"

namespace optxv::test {
namespace {

TEST(OptionKinds, HaveNamesInTheInterface) {
  const std::vector<lines> groups = {
      {"optDataNone", "optDataInteger", "optDataDouble", "optDataString", "optDataStrList"},
      {"optTypeInteger", "optTypeDouble", "optTypeString", "optTypeBoolean", "optTypeEnumStr",
       "optTypeEnumInt", "optTypeMultiList", "optTypeStrList", "optTypeMacro", "optTypeImmediate"},
      {"optsubRequired", "optsubNoValue", "optsubOptional", "optsub2Values"},
      // The tenth has a name too, which is not given out.
      {"optMsgInputEcho", "optMsgHelp", "optMsgDefineError", "optMsgValueError",
       "optMsgValueWarning", "optMsgDeprecated", "optMsgFileEnter", "optMsgFileLeave",
       "optMsgTooManyMsgs"}};
  for (std::int32_t group = -1; group <= 6; ++group) {
    const bool good = group >= 1 && group <= 4;
    const lines& names = good ? groups[static_cast<std::size_t>(group - 1)] : lines();
    for (std::int32_t i = -2; i < 12; ++i) {
      const bool named = i >= 0 && i < static_cast<std::int32_t>(names.size());
      shortstring name = "?";
      EXPECT_EQ(tzmaoptions::optgetconstname(group, i, name), named ? 1 : 0) << group << ' ' << i;
      EXPECT_EQ(str(name), named ? names[static_cast<std::size_t>(i)] : "");
    }
  }
}

TEST(OptionKinds, LeadToTheirClasses) {
  optiontable options(
      "a integer 1 0 0 1 0 0\nb double 2 0 0 1 0 0\nc string 3 x 0 0\nd boolean 4 0 0 0\n"
      "e enumstr 5 x 0 0\n x 0\nf enumint 6 1 0 0\n 1 0\ng multilist 7 0 0\nh strlist 8 0 0\n"
      "i macro 0 0\nj immediate Help 0 0\n");
  const lines keywords = {"integer", "double",    "string",  "boolean", "enumstr",
                          "enumint", "multilist", "strlist", "macro",   "immediate"};
  for (std::int32_t i = -2; i < 12; ++i) {
    const bool good = i >= 0 && i < 10;
    shortstring name = "?";
    EXPECT_EQ(tzmaoptions::optgettypename(i, name), good ? 1 : 0);
    EXPECT_EQ(str(name), good ? keywords[static_cast<std::size_t>(i)] : "");
    if (!good) continue;
    toption& option = *options->getobjects(i + 1);
    EXPECT_EQ(option.opttype, i);
    EXPECT_TRUE(withkind(std::as_const(option), [&](auto& typed) {
      return typeid(std::remove_cvref_t<decltype(typed)>) == typeid(option);
    })) << str(name);
    EXPECT_EQ(askind<tmacrooption>(&option) != nullptr, i == optTypeMacro);
  }
}

}  // namespace
}  // namespace optxv::test
