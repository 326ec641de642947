#include "options/optionkinds.h"

#include "support/optiontable.h"

namespace optxv {
namespace {

TEST(OptionKinds, HaveNamesInTheInterface) {
  std::string all;
  for (std::int32_t group = -1; group <= 6; ++group)
    for (std::int32_t i = -2; i < 12; ++i) {
      shortstring name = "?";
      const std::int32_t result = group == 0 ? tzmaoptions::optgettypename(i, name)
                                             : tzmaoptions::optgetconstname(group, i, name);
      EXPECT_EQ(result, name.empty() ? 0 : 1) << group << ' ' << i;
      if (result == 1) all += (i == 0 ? "|" : ",") + str(name);
    }
  EXPECT_EQ(all,  // the tenth kind of message has a name too, which is not given out
            "|integer,double,string,boolean,enumstr,enumint,multilist,strlist,macro,immediate|"
            "optDataNone,optDataInteger,optDataDouble,optDataString,optDataStrList|optTypeInteger,"
            "optTypeDouble,optTypeString,optTypeBoolean,optTypeEnumStr,optTypeEnumInt,"
            "optTypeMultiList,optTypeStrList,optTypeMacro,optTypeImmediate|optsubRequired,"
            "optsubNoValue,optsubOptional,optsub2Values|optMsgInputEcho,optMsgHelp,"
            "optMsgDefineError,optMsgValueError,optMsgValueWarning,optMsgDeprecated,"
            "optMsgFileEnter,optMsgFileLeave,optMsgTooManyMsgs");
}

}  // namespace
}  // namespace optxv
