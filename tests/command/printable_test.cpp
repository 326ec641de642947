#include "text/printable.h"

#include <gtest/gtest.h>

#include "text/names.h"

namespace optxv::test {
namespace {

using command::printable, command::columns;

TEST(Printable, WhatActsOnATerminalOrHidesIsEscaped) {
  const std::pair<std::string, std::string> rows[] = {
      {"plain text, 100% \\x41 ~", "plain text, 100% \\x41 ~"},
      {"caf\u00E9 \u4F60\u597D \u20AC \U0001F600", "caf\u00E9 \u4F60\u597D \u20AC \U0001F600"},
      {"e\u0301 no-break\u00A0space", "e\u0301 no-break\u00A0space"},
      {"\x1B[31mred", "\\x1B[31mred"},
      {"a\tb\nc\r\x7F", "a\\x09b\\x0Ac\\x0D\\x7F"},
      {std::string(1, '\0'), "\\x00"},
      {"\x9B;31m", "\\x9B;31m"},
      {"\u009B31m \u0085", "\\xC2\\x9B31m \\xC2\\x85"},
      {"Caf\xE9", "Caf\\xE9"},
      {"\u202Etxt.exe \u2066x\u2069 \u061C",
       "\\xE2\\x80\\xAEtxt.exe \\xE2\\x81\\xA6x\\xE2\\x81\\xA9 \\xD8\\x9C"},
      {"\u2028\u2029", "\\xE2\\x80\\xA8\\xE2\\x80\\xA9"},
      {"tol\u200Ba\u00ADb\uFEFF", "tol\\xE2\\x80\\x8Ba\\xC2\\xADb\\xEF\\xBB\\xBF"},
      {"\uFE0F\u3164\U000E0041", "\\xEF\\xB8\\x8F\\xE3\\x85\\xA4\\xF3\\xA0\\x81\\x81"},
      {"\uFFFE\U0001FFFF\U00050000", "\\xEF\\xBF\\xBE\\xF0\\x9F\\xBF\\xBF\\xF1\\x90\\x80\\x80"},
      {"\xED\xA0\x80 \xF4\x90\x80\x80 \xF8", "\\xED\\xA0\\x80 \\xF4\\x90\\x80\\x80 \\xF8"},
      {"\xC0\x9B \xE0\x82\x9B \xE4\xBD", "\\xC0\\x9B \\xE0\\x82\\x9B \\xE4\\xBD"},
      {"\x80\xBF", "\\x80\\xBF"}};
  for (const auto& [bytes, shown] : rows) EXPECT_EQ(printable(bytes), shown);
  EXPECT_EQ(command::printableline("\ta\x1B"), " a\\x1B");
}

TEST(Printable, ColumnsAreThoseOfATerminal) {
  const std::pair<const char*, std::size_t> rows[] = {{"", 0},
                                                      {"steplim", 7},
                                                      {"caf\u00E9", 4},
                                                      {"cafe\u0301", 4},
                                                      {"\u4F60\u597D", 4},
                                                      {"\uFF21", 2},
                                                      {"\uFF71", 1},
                                                      {"\U0001F600", 2},
                                                      {"\u20AC", 1},
                                                      {"\u0E19\u0E49\u0E33", 2},
                                                      {"\u1112\u1161", 2},
                                                      {"\u2603", 1},
                                                      {"\U00020000", 2},
                                                      {"\u0431", 1},
                                                      {"\u302E", 2}};
  for (const auto& [text, width] : rows) EXPECT_EQ(columns(text), width) << text;
}

TEST(Printable, LinesAndJsonKeepTheirForm) {
  EXPECT_EQ(command::printablelines("a\x1B\n\n\tb\n"), "a\\x1B\n\n b\n");
  EXPECT_EQ(command::printablelines("\nlast"), "\nlast");
  EXPECT_EQ(command::printablejson("[\n  \"\u00E9\u009B\x7F\u202E\U000E0001\"\n]"),
            "[\n  \"\u00E9\\u009B\\u007F\\u202E\\uDB40\\uDC01\"\n]");
}

TEST(Printable, ValuesAndNumbersForPeople) {
  EXPECT_EQ(command::externalform("plain"), "plain");
  EXPECT_EQ(command::externalform(""), "\"\"");
  EXPECT_EQ(command::externalform("a,b\x1B"), "\"a,b\\x1B\"");
  EXPECT_EQ(command::counted(1, "file") + ' ' + command::counted(1234567, "file"),
            "1 file 1,234,567 files");
  EXPECT_EQ(command::grouped(999) + ' ' + command::grouped(1000), "999 1,000");
}

TEST(Names, CaseIsOfTheLettersAToZAlone) {
  EXPECT_TRUE(command::samename("Step_Lim1", "sTEP_lIM1"));
  EXPECT_FALSE(command::samename("steplim", "steplimi"));
  EXPECT_FALSE(command::samename("[", "{"));
  EXPECT_FALSE(command::samename("\xC3\x89", "\xC3\xA9"));
  std::string found;
  for (int c = 0; c < 256; c++)
    if (command::isnamecharacter(static_cast<char>(c))) found += static_cast<char>(c);
  EXPECT_EQ(found, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
}

}  // namespace
}  // namespace optxv::test
