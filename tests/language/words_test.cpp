#include "language/words.h"

#include <gtest/gtest.h>

#include <string>

namespace optxv {
namespace {

using namespace std::string_view_literals;

TEST(Words, CheckBoolean) {
  for (const auto word : {"1", "y", "Y", "yes", "YeS", "oN", "tRUE", "T"})
    EXPECT_EQ(checkboolean(word), 0) << word;
  for (const auto word : {"0", "n", "NO", "no", "Off", "FALSE", "falsE", "f"})
    EXPECT_EQ(checkboolean(word), 1) << word;
  for (const auto word : {""sv, "2"sv, "10"sv, "o"sv, "YE"sv, "yess"sv, " on"sv, "on "sv, "tru"sv,
                          "falsee"sv, "\0"sv, "\0t"sv, "t\0"sv, "\x11"sv, "[ES"sv, "FALSEFALSE"sv})
    EXPECT_EQ(checkboolean(word), 2) << word;
}

TEST(Words, ExternalForm) {
  const std::pair<std::string, std::string> rows[] = {
      {"", "\"\""},
      {",", "\",\""},
      {"a\" b", "\"a\" b\""},
      {"a\nb;'", "a\nb;'"},
      {" " + std::string(252, 'x'), "\" " + std::string(252, 'x') + "\""},
      {" " + std::string(253, 'x'), "\" " + std::string(253, 'x')},
      {std::string(255, 'x'), std::string(255, 'x')}};
  for (const auto& [value, external] : rows) EXPECT_EQ(strexternal(value), external);
}

}  // namespace
}  // namespace optxv
