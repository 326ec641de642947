#include "writers/htmlwr.h"

#include <functional>

#include <gmock/gmock.h>

#include "support/optiontable.h"

namespace optxv {
namespace {

using page = thtmlwrite;

constexpr std::string_view head = "<html>\n<body>\n", tail = "\n</body>\n</html>\n";

/// The bytes of a document between its opening and its closing tags.
std::string body(const std::function<void(page&)>& write) {
  const scratchfile file;
  page(file.name()).close();
  EXPECT_EQ(file.content(), str(head) + str(tail));
  {
    page whole(file.name());
    write(whole);
  }
  const std::string all = file.content();
  return all.substr(head.size(), all.size() - head.size() - tail.size());
}

TEST(HtmlOperations, AreWrittenByteForByte) {
  const std::pair<const char*, std::function<void(page&)>> rows[] = {
      {"a&amp; ", [](page& p) { p.addtext("a&"); }},
      {"<b>&</b>\n", [](page& p) { p.passhtml("<b>&</b>"); }},
      {"<p>&lt; </p>\n", [](page& p) { p.addpara("<"); }},
      {"\n<h3 align=Right>x&gt;</h3>\n", [](page& p) { p.addheading(3, alignRight, "x>"); }},
      {"\n<h1 align=Left></h1>\n", [](page& p) { p.addheading(-2147483647, alignLeft, ""); }},
      {"\n<h6 align=Center>x</h6>\n", [](page& p) { p.addheading(9, alignCenter, "x"); }},
      {"\n<a name=\"<n>\">\n", [](page& p) { p.addanchor("<n>"); }},
      {"<a href=\"f&g#<a>\">&lt;t</a>", [](page& p) { p.addhyperlink("f&g", "<a>", "<t"); }},
      {"<a href=\"f\">t</a>", [](page& p) { p.addhyperlink("f", "", "t"); }},
      {"<td BGCOLOR=\"0A0B0C\">", [](page& p) { p.startcellcolor(10, 11, 12); }},
      {"<li> &amp;</li>\n", [](page& p) { p.addlistitem("&"); }},
      {"<br>", [](page& p) { p.addbreak(); }},
      {"<p>", [](page& p) { p.startpara(); }},
      {"</p>\n", [](page& p) { p.endpara(); }},
      {"\n<table border>\n", [](page& p) { p.starttable(true); }},
      {"\n<table>\n", [](page& p) { p.starttable(false); }},
      {"</table>\n", [](page& p) { p.endtable(); }},
      {"\n<tr>\n", [](page& p) { p.startrow(); }},
      {"</tr>\n", [](page& p) { p.endrow(); }},
      {"<td> ", [](page& p) { p.startcell(); }},
      {"<td align=Right>", [](page& p) { p.startcellaligned(alignRight); }},
      {" </td>\n", [](page& p) { p.endcell(); }},
      {"<td> &gt; </td>\n", [](page& p) { p.addcell(">"); }},
      {"<ul>", [](page& p) { p.startbulletlist(); }},
      {"</ul>\n", [](page& p) { p.endbulletlist(); }},
      {"\n<ol>\n", [](page& p) { p.startnumberedlist(); }},
      {"\n</ol>\n", [](page& p) { p.endnumberedlist(); }},
      {"<li> ", [](page& p) { p.startlistitem(); }},
      {"</li>\n", [](page& p) { p.endlistitem(); }},
      {"<COLOR=\"FF0010\">", [](page& p) { p.fgcolor(255, 0, 16); }},
      {"<BGCOLOR=\"9FA0F9\">", [](page& p) { p.bgcolor(0x9F, 0xA0, 0xF9); }}};
  for (const auto& [expected, write] : rows) EXPECT_EQ(body(write), expected);
}

TEST(HtmlText, EveryByteHasItsForm) {
  std::string low, high;
  for (int c = 0; c < 256; ++c) (c < 160 ? low : high) += static_cast<char>(c);
  const auto escaped = [](std::string_view text) {
    return body([&](page& p) { p.writehtmlstr(text); });
  };
  EXPECT_EQ(escaped(low),
            replaced(replaced(replaced(low, "&", "&amp;"), "<", "&lt;"), ">", "&gt;"));
  const std::string names = escaped(high);
  EXPECT_EQ(std::count(names.begin(), names.end(), ';'), 96);
  // By their codes in ISO 8859-1: some of each kind of letter and sign, and both ends.
  const std::pair<std::string, const char*> known[] = {
      {"\xA0\xA3\xA7\xAB\xB2\xB8\xBE\xBF", "nbsp pound sect laquo sup2 cedille frac34 iquest"},
      {"\xC4\xC7\xD0\xD7\xDE\xDF\xE6", "Auml Ccedil ETH times THORN szlig aelig"},
      {"\xE9\xF0\xF7\xFC\xFE\xFF", "eacute eth divide uuml thorn yuml"}};
  for (const auto& [bytes, expected] : known)
    EXPECT_EQ(escaped(bytes), "&" + replaced(expected, " ", ";&") + ";");
}

std::string failureof(const std::function<void()>& act) {
  try {
    act();
  } catch (const einouterror& failure) {
    return str(failure.message);
  }
  return "";
}

TEST(HtmlFile, CloseReportsFailuresAndTheDestructorDoesNot) {
  const std::int64_t before = allocmemcount();
  const auto full = testing::HasSubstr("No space left on device");
  {
    page closed("/dev/full");
    EXPECT_THAT(failureof([&] { closed.close(); }), full);
    EXPECT_EQ(failureof([&] { closed.close(); }), "");
    EXPECT_NE(failureof([&] { closed.addbreak(); }), "");
  }
  // A write that fills what is held back fails then and there, and nothing is reported again later.
  page filled("/dev/full");
  EXPECT_THAT(failureof([&] {
                for (int i = 0; i < 300; ++i) filled.passhtml(blanks255);
              }),
              full);
  { const page silent("/dev/full"); }
  EXPECT_EQ(ioresult(), 0);
  EXPECT_THAT(failureof([] { page p("/"); }), testing::HasSubstr("Is a directory"));
  EXPECT_EQ(allocmemcount(), before);
}

TEST(HtmlFile, AnEmptyNameIsStandardOutputAndStaysOpen) {
  testing::internal::CaptureStdout();
  page("").addtext("x");
  std::printf("more");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), str(head) + "x " + str(tail) + "more");
}

}  // namespace
}  // namespace optxv
