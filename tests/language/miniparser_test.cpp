#include "language/miniparser.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr char eol = 10, eoi = 26;

std::string xs(std::size_t count) {
  return std::string(count, 'x');
}

TEST(MiniParser, LinesOfAFile) {
  const std::tuple<std::string, lines, int> rows[] = {
      {"\n* comment\r\n\r\n*", {}, 4},
      {" *a\n", {" *a"}, 1},
      {xs(1020) + "12345\nb", {xs(1020), "b"}, 2},
      {xs(255) + "\r\nb\n", {xs(255), "b"}, 2},
      {xs(254) + "\ryz\nb\n", {xs(254), "b"}, 2},  // a piece that is not full ends the line
      {xs(500) + "\r" + xs(9) + "y\n", {xs(500) + "\r" + xs(9) + "y"}, 1}};
  for (const auto& [content, expected, linenr] : rows) {
    scratchfile file;
    file.put(content);
    tminiparser parser(nullptr, false, {});
    ASSERT_EQ(parser.fileopen(file.name()), 0);
    lines found;
    while (parser.nextline())
      for (found.emplace_back(); parser.ch() != eol; parser.nextch()) found.back() += parser.ch();
    EXPECT_EQ(found, expected);
    EXPECT_EQ(parser.linenr(), linenr);
    EXPECT_TRUE(!parser.nextline() && parser.ch() == eoi);
  }
}

TEST(MiniParser, Echo) {
  const std::string m = "\xBB";
  const std::pair<std::string, lines> rows[] = {
      {"", {""}},
      {xs(131), {m + xs(130), m + "x"}},
      {xs(132), {m + xs(130) + m, m + "xx"}},
      {"* " + xs(259), {m + "* " + xs(128) + m, m + xs(130), m + "x"}}};  // a remark as well
  for (const auto& [line, expected] : rows) {
    txstringlist echo, off;
    tminiparser(&echo, true, {}).readfrompchar(line.c_str());
    lines found;
    for (std::int32_t i = 0; i < echo.count(); ++i) found.emplace_back(echo.getname(i));
    EXPECT_EQ(found, expected);
    tminiparser(&off, false, {}).readfrompchar(line.c_str());
    EXPECT_EQ(off.count(), 0);
  }
}

}  // namespace
}  // namespace optxv
