// The functions of the built library against a table of signatures of its own: each is there under
// its linkage name, has a twin exactly if it carries text, and is known to xcheck by these codes.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "optxv/optxv.h"

namespace {

// clang-format off
// Codes of result and arguments, and the functions that have them.
const struct {
  std::vector<int32_t> codes;
  const char* names;
} table[] = {
    {{0}, "optClearMessages optResetAll optResetAllRecent optResetRecentChanges"},
    {{3}, "optSynonymCount optCount optMessageCount optGroupCount optRecentEnabled"},
    {{0, 3}, "optEchoSet optNoBoundsSet optRecentEnabledSet"}, {{0, 10}, "optReadFromPChar"},
    {{0, 11}, "optReadFromStr optAddMessage optShowHelp"},
    {{0, 12}, "optVersion optDefinitionFile"},
    {{3, 3}, "optResetNr optEOLOnlySet optGetGroupGrpNr optGetOptGroupNr"},
    {{3, 4}, "optIndicatorCount optDotOptCount"},
    {{3, 11}, "optReadDefinition optReadParameterFile optWriteParameterFile optListCountStr "
              "optLookUp"},
    {{0, 4, 4}, "optErrorCount"}, {{3, 3, 3}, "optSetIntNr optSetInt2Nr optSetRefNr"},
    {{3, 3, 4}, "optGetIntNr optGetInt2Nr optGetEnumCount optGetDefinedNr"},
    {{3, 3, 11}, "optSetStrNr optSetStr2Nr"},
    {{3, 3, 12}, "optGetDefaultStr optGetStrNr optGetStr2Nr optGetNameNr optGetTypeName"},
    {{3, 3, 13}, "optSetDblNr optSetDbl2Nr"}, {{3, 3, 14}, "optGetDblNr optGetDbl2Nr"},
    {{3, 11, 3}, "optSetRefNrStr"}, {{3, 11, 12}, "optGetFromListStr optGetValStr optGetVal2Str"},
    {{0, 3, 12, 4}, "optGetMessage"},
    {{3, 3, 3, 12}, "optGetDotOptUel optGetEquIndicatorNr optGetVarIndicatorNr optGetConstName"},
    {{3, 3, 12, 4}, "optGetEnumStrNr"},
    {{3, 3, 12, 12}, "optGetFromAnyStrList optGetSynonym optGetHelpNr"},
    {{3, 11, 3, 12}, "optReadFromListStr"}, {{3, 11, 4, 4}, "optFindStr"},
    {{3, 3, 3, 4, 12}, "optGetEnumHelp optGetEnumValue"},
    {{3, 3, 3, 13, 11}, "optSetValuesNr optSetValues2Nr"}, {{3, 3, 4, 4, 4}, "optGetBoundsInt"},
    {{3, 3, 12, 4, 4}, "optGetOptHelpNr"}, {{3, 3, 14, 14, 14}, "optGetBoundsDbl"},
    {{3, 3, 12, 4, 4, 12}, "optGetGroupNr"}, {{3, 3, 12, 4, 4, 14}, "optGetDotOptNr"},
    {{3, 3, 12, 4, 14, 12}, "optGetValuesNr"}, {{3, 3, 12, 12, 4, 4, 4}, "optGetIndicatorNr"},
    {{3, 3, 4, 4, 4, 4, 4, 4}, "optGetInfoNr"},
};
// clang-format on

bool exported(const std::string& name) {
  static void* const library = dlopen(OPTXV_LIBRARY_FILE, RTLD_NOW | RTLD_NOLOAD);
  EXPECT_NE(library, nullptr) << OPTXV_LIBRARY_FILE;
  return dlsym(library, name.c_str()) != nullptr;
}

int32_t check(const std::string& name, const std::vector<int32_t>& codes) {
  char message[OPTXV_TEXT_SIZE];
  return cxcheck(name.c_str(), static_cast<int32_t>(codes.size()) - 1, codes.data(), message);
}

TEST(Signatures, AreTheseAndNoOthers) {
  int count = 0;
  for (const auto& [codes, names] : table) {
    std::istringstream words(names);
    for (std::string name, lower; words >> name; ++count) {
      lower = name;
      std::ranges::transform(name, lower.begin(), [](unsigned char c) { return std::tolower(c); });
      EXPECT_TRUE(exported(lower) && !exported(name)) << name;
      const auto istext = [](int32_t code) { return code == 11 || code == 12; };
      EXPECT_EQ(exported("c" + lower), std::ranges::any_of(codes, istext)) << name;
      EXPECT_EQ(check(name, codes), 1) << name;
      for (std::size_t i = 0; i < codes.size(); ++i) {
        auto wrong = codes;
        wrong[i] += 1;
        EXPECT_EQ(check(name, wrong), 0) << name << " at " << i;
      }
    }
  }
  EXPECT_EQ(count, 75);
}

using names = std::map<std::string, std::string>;

/// What the rows ask of the header: the name that people speak of, and the linker's.
names namesofrows() {
#define OPTXV_PLAIN(api, linkage, ...) {#api, #linkage},
#define OPTXV_TWIN(api, linkage, ...) {#api, #linkage}, {"c" #api, "c" #linkage},
  return {
#include "frame/api.def"
      {"optGetLoadPath", "optgetloadpath"},
      {"coptGetLoadPath", "coptgetloadpath"},
      {"optSetLoadPath", "optsetloadpath"},
      {"coptSetLoadPath", "coptsetloadpath"}};
}

/// The macros in the text of the header that begin as such a name does.
names namesofheader() {
  std::ifstream header(OPTXV_SOURCE_DIR "/include/optxv/optxv.h");
  names found;
  for (std::string line; std::getline(header, line);) {
    std::istringstream words(line);
    std::string define, name, linkage;
    words >> define >> name >> linkage;
    if (define != "#define" || !(name.starts_with("opt") || name.starts_with("copt"))) continue;
    EXPECT_TRUE(found.emplace(name, linkage).second) << name << " twice";
  }
  return found;
}

TEST(Signatures, EachHasItsMixedCaseNameAndNoOtherStands) {
  EXPECT_EQ(namesofheader(), namesofrows());
}

TEST(Signatures, CheckInBoundedStrings) {
  unsigned char message[OPTXV_TEXT_SIZE];
  const int32_t codes[] = {0, 3, 3};
  EXPECT_EQ(xcheck(reinterpret_cast<const unsigned char*>("\13optGetIntNr"), 2, codes, message), 0);
  EXPECT_EQ(std::string(message + 1, message + 1 + message[0]),
            "optGetIntNr has wrong argument type for argument 0,2");
}

}  // namespace
