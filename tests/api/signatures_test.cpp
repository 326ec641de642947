// The names of the public header against the rows that the functions are made from.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "optxv/optxv.h"

namespace {

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

TEST(Signatures, AreCheckedInBothFormsOfText) {
  unsigned char message[OPTXV_TEXT_SIZE];
  const int32_t codes[] = {0, 3, 3};
  EXPECT_EQ(xcheck(reinterpret_cast<const unsigned char*>("\13optGetIntNr"), 2, codes, message), 0);
  EXPECT_EQ(std::string(message + 1, message + 1 + message[0]),
            "optGetIntNr has wrong argument type for argument 0,2");
  char text[OPTXV_TEXT_SIZE];
  const int32_t right[] = {3, 3, 4};
  EXPECT_EQ(cxcheck("optGetIntNr", 2, right, text), 1);
}

}  // namespace
