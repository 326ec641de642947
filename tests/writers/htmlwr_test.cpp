#include "writers/htmlwr.h"

#include <functional>

#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr std::string_view head = "<html>\n<body>\n", tail = "\n</body>\n</html>\n";

/// The bytes of a document between its opening and its closing tags.
std::string body(const std::function<void(thtmlwrite&)>& write) {
  const scratchfile file;
  {
    thtmlwrite page(file.name());
    write(page);
  }
  const std::string all = file.content();
  EXPECT_TRUE(all.starts_with(head) && all.ends_with(tail)) << all;
  return all.substr(head.size(), all.size() - head.size() - tail.size());
}

struct operationrow {
  std::string expected;
  std::function<void(thtmlwrite&)> write;
};

TEST(HtmlOperations, AreWrittenToTheByte) {
  using page = thtmlwrite;
  const std::vector<operationrow> rows = {
      {"a&lt;b&gt;\"&amp;\"", [](page& p) { p.writehtmlstr("a<b>\"&\""); }},
      {"", [](page& p) { p.writehtmlstr(""); }},
      {"a&amp; ", [](page& p) { p.addtext("a&"); }},
      {"<b>&</b>\n", [](page& p) { p.passhtml("<b>&</b>"); }},
      {"<br>", [](page& p) { p.addbreak(); }},
      {"<p>", [](page& p) { p.startpara(); }},
      {"</p>\n", [](page& p) { p.endpara(); }},
      {"<p>&lt; </p>\n", [](page& p) { p.addpara("<"); }},
      {"\n<h3 align=Right>x&gt;</h3>\n", [](page& p) { p.addheading(3, alignRight, "x>"); }},
      {"\n<h1 align=Left></h1>\n", [](page& p) { p.addheading(-2147483647, alignLeft, ""); }},
      {"\n<h6 align=Center>x</h6>\n", [](page& p) { p.addheading(9, alignCenter, "x"); }},
      {"\n<a name=\"<n>\">\n", [](page& p) { p.addanchor("<n>"); }},
      {"<a href=\"f&g#<a>\">&lt;t</a>", [](page& p) { p.addhyperlink("f&g", "<a>", "<t"); }},
      {"<a href=\"f\">t</a>", [](page& p) { p.addhyperlink("f", "", "t"); }},
      {"\n<table border>\n", [](page& p) { p.starttable(true); }},
      {"\n<table>\n", [](page& p) { p.starttable(false); }},
      {"</table>\n", [](page& p) { p.endtable(); }},
      {"\n<tr>\n", [](page& p) { p.startrow(); }},
      {"</tr>\n", [](page& p) { p.endrow(); }},
      {"<td> ", [](page& p) { p.startcell(); }},
      {"<td align=Center>", [](page& p) { p.startcellaligned(alignCenter); }},
      {"<td BGCOLOR=\"0A0B0C\">", [](page& p) { p.startcellcolor(10, 11, 12); }},
      {" </td>\n", [](page& p) { p.endcell(); }},
      {"<td> a&lt;b </td>\n", [](page& p) { p.addcell("a<b"); }},
      {"<td>  </td>\n", [](page& p) { p.addcell(""); }},
      {"<ul>", [](page& p) { p.startbulletlist(); }},
      {"</ul>\n", [](page& p) { p.endbulletlist(); }},
      {"\n<ol>\n", [](page& p) { p.startnumberedlist(); }},
      {"\n</ol>\n", [](page& p) { p.endnumberedlist(); }},
      {"<li> ", [](page& p) { p.startlistitem(); }},
      {"</li>\n", [](page& p) { p.endlistitem(); }},
      {"<li> &amp;</li>\n", [](page& p) { p.addlistitem("&"); }},
      {"<COLOR=\"FF0010\">", [](page& p) { p.fgcolor(255, 0, 16); }},
      {"<BGCOLOR=\"9FA0F9\">", [](page& p) { p.bgcolor(0x9F, 0xA0, 0xF9); }},
      {"<x=\"000000\">", [](page& p) { p.writecolor("<x", 0, 0, 0); }},
      {"E7", [](page& p) { p.writehexbyte(0xE7); }},
  };
  for (const operationrow& row : rows) EXPECT_EQ(body(row.write), row.expected);
}

TEST(HtmlText, EveryByteHasItsForm) {
  std::string low;
  for (int c = 0; c < 160; ++c) low += static_cast<char>(c);
  const auto escaped = [](std::string_view text) {
    return body([&](thtmlwrite& page) { page.writehtmlstr(text); });
  };
  std::string expected = low;
  expected.replace(expected.find('&'), 1, "&amp;");
  expected.replace(expected.find('<'), 1, "&lt;");
  expected.replace(expected.find('>'), 1, "&gt;");
  EXPECT_EQ(escaped(low), expected);

  std::string high;
  for (int c = 160; c < 256; ++c) high += static_cast<char>(c);
  const std::string names = escaped(high);
  EXPECT_EQ(std::count(names.begin(), names.end(), ';'), 96);
  // By their codes in ISO 8859-1: some of each kind of letter and sign, and both ends.
  const std::vector<std::pair<int, std::string>> known = {
      {0xA0, "nbsp"},   {0xA3, "pound"},  {0xA7, "sect"},    {0xAB, "laquo"},  {0xAF, "macr"},
      {0xB2, "sup2"},   {0xB5, "micro"},  {0xB8, "cedille"}, {0xB9, "sup1"},   {0xBE, "frac34"},
      {0xBF, "iquest"}, {0xC4, "Auml"},   {0xC7, "Ccedil"},  {0xD0, "ETH"},    {0xD7, "times"},
      {0xDE, "THORN"},  {0xDF, "szlig"},  {0xE6, "aelig"},   {0xE7, "ccedil"}, {0xE9, "eacute"},
      {0xF0, "eth"},    {0xF7, "divide"}, {0xFC, "uuml"},    {0xFE, "thorn"},  {0xFF, "yuml"}};
  for (const auto& [code, name] : known)
    EXPECT_EQ(escaped(std::string(1, static_cast<char>(code))), "&" + name + ";") << code;
}

std::string failureof(const std::function<void()>& act) {
  try {
    act();
  } catch (const einouterror& failure) {
    return std::string(failure.message.view());
  }
  return "";
}

TEST(HtmlFile, CloseTellsOfFailuresAndTheDestructorDoesNot) {
  const std::int64_t before = allocmemcount();
  const scratchfile file;
  {
    thtmlwrite page(file.name());
    page.close();
    page.close();
    EXPECT_EQ(file.content(), std::string(head) + std::string(tail));
    EXPECT_NE(failureof([&] { page.addbreak(); }), "");
  }
  EXPECT_EQ(file.content(), std::string(head) + std::string(tail));

  const std::string full = "No space left on device";
  {
    thtmlwrite page("/dev/full");
    EXPECT_NE(failureof([&] { page.close(); }).find(full), std::string::npos);
    EXPECT_EQ(failureof([&] { page.close(); }), "");
  }
  // A write that fills what is held back fails then and there, and nothing is told again later.
  EXPECT_NE(failureof([] {
              thtmlwrite page("/dev/full");
              for (int i = 0; i < 300; ++i) page.passhtml(blanks255);
            }).find(full),
            std::string::npos);
  { const thtmlwrite silent("/dev/full"); }
  EXPECT_EQ(ioresult(), 0);
  EXPECT_NE(failureof([] { thtmlwrite page("/"); }).find("Is a directory"), std::string::npos);
  delete new thtmlwrite(file.name());
  EXPECT_EQ(allocmemcount(), before);
}

TEST(HtmlFile, AnEmptyNameIsStandardOutputAndStaysOpen) {
  testing::internal::CaptureStdout();
  {
    thtmlwrite page("");
    page.addtext("x");
  }
  std::printf("more");
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            std::string(head) + "x " + std::string(tail) + "more");
}

}  // namespace
}  // namespace optxv
