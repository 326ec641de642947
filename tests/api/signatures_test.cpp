// The functions of the built library against a table of signatures of its own: each is there under
// its linkage name, has a twin exactly if it carries text, and is known to xcheck by these codes.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "optxv/optxv.h"

namespace {

struct signature {
  std::string name;
  std::vector<int32_t> codes;
  bool text() const {
    return std::any_of(codes.begin(), codes.end(), [](int32_t c) { return c == 11 || c == 12; });
  }
};

// Codes of result and arguments, and the functions that have them.
const struct {
  std::vector<int32_t> codes;
  const char* names;
} table[] = {
    {{0}, "optClearMessages optResetAll optResetAllRecent optResetRecentChanges"},
    {{3}, "optSynonymCount optCount optMessageCount optGroupCount optRecentEnabled"},
    {{0, 3}, "optEchoSet optNoBoundsSet optRecentEnabledSet"},
    {{0, 10}, "optReadFromPChar"},
    {{0, 11}, "optReadFromStr optAddMessage optShowHelp"},
    {{0, 12}, "optVersion optDefinitionFile"},
    {{3, 3}, "optResetNr optEOLOnlySet optGetGroupGrpNr optGetOptGroupNr"},
    {{3, 4}, "optIndicatorCount optDotOptCount"},
    {{3, 11},
     "optReadDefinition optReadParameterFile optWriteParameterFile optListCountStr optLookUp"},
    {{0, 4, 4}, "optErrorCount"},
    {{3, 3, 3}, "optSetIntNr optSetInt2Nr optSetRefNr"},
    {{3, 3, 4}, "optGetIntNr optGetInt2Nr optGetEnumCount optGetDefinedNr"},
    {{3, 3, 11}, "optSetStrNr optSetStr2Nr"},
    {{3, 3, 12}, "optGetDefaultStr optGetStrNr optGetStr2Nr optGetNameNr optGetTypeName"},
    {{3, 3, 13}, "optSetDblNr optSetDbl2Nr"},
    {{3, 3, 14}, "optGetDblNr optGetDbl2Nr"},
    {{3, 11, 3}, "optSetRefNrStr"},
    {{3, 11, 12}, "optGetFromListStr optGetValStr optGetVal2Str"},
    {{0, 3, 12, 4}, "optGetMessage"},
    {{3, 3, 3, 12}, "optGetDotOptUel optGetEquIndicatorNr optGetVarIndicatorNr optGetConstName"},
    {{3, 3, 12, 4}, "optGetEnumStrNr"},
    {{3, 3, 12, 12}, "optGetFromAnyStrList optGetSynonym optGetHelpNr"},
    {{3, 11, 3, 12}, "optReadFromListStr"},
    {{3, 11, 4, 4}, "optFindStr"},
    {{3, 3, 3, 4, 12}, "optGetEnumHelp optGetEnumValue"},
    {{3, 3, 3, 13, 11}, "optSetValuesNr optSetValues2Nr"},
    {{3, 3, 4, 4, 4}, "optGetBoundsInt"},
    {{3, 3, 12, 4, 4}, "optGetOptHelpNr"},
    {{3, 3, 14, 14, 14}, "optGetBoundsDbl"},
    {{3, 3, 12, 4, 4, 12}, "optGetGroupNr"},
    {{3, 3, 12, 4, 4, 14}, "optGetDotOptNr"},
    {{3, 3, 12, 4, 14, 12}, "optGetValuesNr"},
    {{3, 3, 12, 12, 4, 4, 4}, "optGetIndicatorNr"},
    {{3, 3, 4, 4, 4, 4, 4, 4}, "optGetInfoNr"},
};

std::vector<signature> signatures() {
  std::vector<signature> all;
  for (const auto& row : table) {
    std::istringstream names(row.names);
    for (std::string name; names >> name;) all.push_back({name, row.codes});
  }
  return all;
}

std::string lowercase(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

bool exported(const std::string& name) {
  static void* const library = dlopen(OPTXV_LIBRARY_FILE, RTLD_NOW | RTLD_NOLOAD);
  EXPECT_NE(library, nullptr) << OPTXV_LIBRARY_FILE;
  return dlsym(library, name.c_str()) != nullptr;
}

int32_t check(const signature& row, const std::vector<int32_t>& codes) {
  char message[OPTXV_TEXT_SIZE];
  return cxcheck(row.name.c_str(), static_cast<int32_t>(codes.size()) - 1, codes.data(), message);
}

TEST(Signatures, SeventyFiveFunctionsWithTheirTwins) {
  const auto all = signatures();
  EXPECT_EQ(all.size(), 75U);
  EXPECT_EQ(std::count_if(all.begin(), all.end(), [](auto& row) { return row.text(); }), 41);
  for (const signature& row : all) {
    EXPECT_TRUE(exported(lowercase(row.name))) << row.name;
    EXPECT_FALSE(exported(row.name)) << row.name;
    EXPECT_EQ(exported("c" + lowercase(row.name)), row.text()) << row.name;
  }
}

TEST(Signatures, CheckTakesTheseCodesAndNoOthers) {
  for (const signature& row : signatures()) {
    EXPECT_EQ(check(row, row.codes), 1) << row.name;
    for (std::size_t i = 0; i < row.codes.size(); ++i) {
      auto codes = row.codes;
      codes[i] += 1;
      EXPECT_EQ(check(row, codes), 0) << row.name << " at " << i;
    }
  }
}

TEST(Signatures, CheckInBoundedStrings) {
  unsigned char message[OPTXV_TEXT_SIZE];
  const int32_t codes[] = {0, 3, 3};
  EXPECT_EQ(xcheck(reinterpret_cast<const unsigned char*>("\13optGetIntNr"), 2, codes, message), 0);
  EXPECT_EQ(std::string(message + 1, message + 1 + message[0]),
            "optGetIntNr has wrong argument type for argument 0,2");
  int32_t status = 77;
  EXPECT_EQ(xapiversion(OPTXV_API_VERSION, message, &status), 1);
  EXPECT_EQ(status, 1);
}

}  // namespace
