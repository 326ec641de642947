#include "listing/zmalist.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "foundation/runtime.h"
#include "foundation/textfile.h"

namespace optxv {
namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();

using script = std::function<void(tzmalist&)>;

struct pages {
  std::string listing, index;
};

std::string content(const std::string& name) {
  std::ostringstream all;
  all << std::ifstream(name, std::ios::binary).rdbuf();
  return all.str();
}

// What a script leaves in the two files of a listing.
pages written(const script& steps, bool withindex = true) {
  char folder[] = "/tmp/optxvlistXXXXXX";
  if (mkdtemp(folder) == nullptr) return {"no folder", ""};
  const std::string listname = folder + std::string("/list"),
                    indexname = folder + std::string("/x");
  textfile list, index;
  list.assign(listname);
  index.assign(indexname);
  list.rewrite();
  index.rewrite();
  {
    tzmalist listing(&list, withindex ? &index : nullptr);
    steps(listing);
  }
  list.close();
  index.close();
  pages result = {content(listname), content(indexname)};
  std::filesystem::remove_all(folder);
  return result;
}

template <class Failure>
std::string messageof(const std::function<void()>& call) {
  try {
    call();
  } catch (const Failure& failure) {
    return std::string(failure.message.view());
  }
  return "nothing raised";
}

// One report under each way of starting a page: titles, header lines that come back on later pages,
// a margin, an indent, a title that changes in mid-page, index lines queued and at once.
void report(tzmalist& list) {
  list.setrightmargin(30);
  list.setlinesperpage(20);
  list.setsystitle("left", "right");
  list.settitle("One");
  list.setsubtitle("Sub");
  list.addtoindex(3, "queued");
  list.wrstrln("first");
  list.headerstart("h");
  list.wrstrln("---- dashed");
  list.wrstr("repeated");
  list.headershow();
  list.setleftmargin(3);
  list.wrstr("item ");
  list.indentstart();
  list.wrstr("explained at");
  list.wrstr(" some length");
  list.wrln();
  list.settitle("Two");
  list.addtoindex(8, "waits");
  list.wrstrln("under a new title");
  list.addtoindex(9, "at once");
  for (int i = 1; i <= 12; ++i) {
    list.wrstrint("row ", i);
    list.wrln();
  }
}

const std::string filled12 = "  \n  \n  \n  \n  \n  \n  \n  \n  \n  \n  \n  \n";

const char* const firstpage =
    "left              right Page 1\nOne\nSub\n\n\n"
    "first\n\n---- dashed\nrepeated\n\n"
    "  item explained at\n        some length\n";
const char* const rows1to11 =
    "  row 1\n  row 2\n  row 3\n  row 4\n  row 5\n  row 6\n  row 7\n  row 8\n  row 9\n  row 10\n"
    "  row 11\n";
const char* const secondpage =
    "left              right Page 2\nTwo\nSub\n\n\n"
    "     dashed  \nrepeated  \n  \n"
    "  under a new title\n";
const char* const thirdpage =
    "left              right Page 3\nTwo\nSub\n\n\n"
    "     dashed  \nrepeated  \n  \n"
    "  row 12\n";

// The text with a first column of its own: "1" where a page begins, a blank elsewhere but on the
// empty lines of a page header; and the blank that ends a header line.
std::string withfirstcolumn() {
  return "1left              right Page 1\n One\n Sub\n\n\n"
         " first\n \n ---- dashed \n repeated \n \n"
         "   item explained at\n         some length\n"
         "1left              right Page 2\n Two\n Sub\n\n\n"
         "      dashed   \n repeated   \n   \n"
         "   under a new title\n"
         "   row 1\n   row 2\n   row 3\n   row 4\n   row 5\n   row 6\n   row 7\n   row 8\n   row "
         "9\n"
         "   row 10\n   row 11\n"
         "1left              right Page 3\n Two\n Sub\n\n\n"
         "      dashed   \n repeated   \n   \n"
         "   row 12\n";
}

TEST(Listing, PagesUnderEachPageControl) {
  const std::string plain = std::string(firstpage) + secondpage + rows1to11 + thirdpage;
  const struct {
    std::uint8_t control;
    std::string listing;
    std::string index = "B 3 Sub\nD 4 queued\nI 16 waits\nJ 22 at once\n";
  } cases[] = {
      {listPageFilled,
       std::string(firstpage) + filled12.substr(0, 24) + secondpage + rows1to11 + thirdpage +
           filled12.substr(0, 33),
       "B 3 Sub\nD 4 queued\nI 13 waits\nJ 30 at once\n"},
      {listPageColumn, withfirstcolumn()},
      {listPageNone, plain},
      {listPageFormFeed,
       std::string("\f") + firstpage + "\f" + secondpage + rows1to11 + "\f" + thirdpage},
  };
  for (const auto& row : cases) {
    const pages result = written([&](tzmalist& list) {
      list.pagecontrol = row.control;
      report(list);
    });
    EXPECT_EQ(result.listing, row.listing) << int{row.control};
    EXPECT_EQ(result.index, row.index) << int{row.control};
  }
}

std::string blanks(std::size_t count) {
  return std::string(count, ' ');
}

struct listingcase {
  const char* what;
  script steps;
  std::string listing;
};

void expectlistings(const std::vector<listingcase>& cases) {
  for (const listingcase& row : cases)
    EXPECT_EQ(written(row.steps).listing, row.listing) << row.what;
}

TEST(Listing, FitsItemsIntoLines) {
  expectlistings({
      {"nothing", [](tzmalist&) {}, ""},
      {"an open line is ended", [](tzmalist& l) { l.wrstr("a"); }, "a\n"},
      {"does not fit: on the next line, then cut with the last piece at the right edge",
       [](tzmalist& l) {
         l.setrightmargin(21);
         l.wrstr("abc");
         l.wrstr("1234567890123456789");
         l.wrstr("1234567890123456789012345678901234567890123");
       },
       "abc\n1234567890123456789\n123456789012345678901\n234567890123456789012\n" + blanks(20) +
           "3\n"},
      {"characters and blanks pass to the next line",
       [](tzmalist& l) {
         l.setrightmargin(21);
         l.wrbl(21);
         l.wrch('x');
         EXPECT_EQ(l.getcharactersused(), 1);
         EXPECT_FALSE(l.reqcharacters(20));
         EXPECT_TRUE(l.reqcharacters(21));
         EXPECT_TRUE(l.lineisempty());
       },
       blanks(21) + "\nx\n"},
      {"items",
       [](tzmalist& l) {
         l.wrstrmod("abc", 4), l.wrstrfmt("d", 3), l.wrstrfmt("e", -3), l.wrstrln("f");
         l.wrint(lowest), l.wrintfmt(7, 3), l.wrintfmt(1, lowest), l.wrstrint(" n=", 5), l.wrln();
         l.wrdblfmt(1.5, 0, 0), l.wrdblfmt(2.5, 8, 1), l.wrdblfmt(2.25, 0, 2), l.wrln();
         l.wrboolfmt(true, 4), l.wrboolfmt(false, 6), l.wrboolfmt(true, 5),
             l.wrboolfmt(true, lowest);
       },
       "abc   de  f\n-2147483648  71 n=5\n   1.50000000000000E+00     2.52.25\n   T FALSE TRUET\n"},
      {"block: continued in the column of the first piece, blanks in front dropped",
       [](tzmalist& l) {
         l.setrightmargin(25);
         l.wrstr("key: ");
         l.wrstrblock("12345678901234567890   next 67890123456789 done");
         l.wrstrblock("");
         EXPECT_EQ(l.strblocklength("123456789012345678901", 6), 2);
         EXPECT_EQ(l.strblocklength("123", 26), 4) << "no place at all";
       },
       "key: 12345678901234567890\n     next 67890123456789 \n     done\n\n"},
      {"broken behind the last comma that fits, once",
       [](tzmalist& l) {
         l.setrightmargin(24);
         l.wrstrbrk("one,two,three,four,five,six", ','), l.wrln();
         l.wrstrbrk("one,  two4567890123456789012", ','), l.wrln();
         l.wrstrbrk("no place to break in this text", ',');
       },
       "one,two,three,four,five,\nsix\none,\ntwo4567890123456789012\nno place to break in thi\n" +
           blanks(18) + "s text\n"},
      {"double space", [](tzmalist& l) { l.doublespace = true, l.wrstrln("a"), l.wrstrln("b"); },
       "a\n\nb\n\n"},
      {"casing",
       [](tzmalist& l) {
         l.casing = listUpper, l.wrstr("aB"), l.casing = listLower, l.wrstr("aB\xc4");
       },
       "ABab\xc4\n"},
  });
}

TEST(Listing, MarginsAndIndents) {
  const std::string deep = blanks(199);
  expectlistings({
      {"margins keep their distance",
       [](tzmalist& l) {
         l.setrightmargin(20);
         EXPECT_EQ(l.getcharactersused(), 0);
         l.setrightmargin(40), l.setleftmargin(19), l.setleftmargin(20), l.setleftmargin(largest),
             l.wrstr("a");
         l.setleftmargin(lowest), l.wrln(), l.wrstr("b");
       },
       blanks(18) + "a\nb\n"},
      {"wide", [](tzmalist& l) { l.setrightmargin(1000), l.setleftmargin(301), l.wrstr("x"); },
       blanks(300) + "x\n"},
      {"indents go one a line; more than five are set and not saved",
       [](tzmalist& l) {
         l.setindent(1);
         for (int column = 2; column <= 8; ++column) l.setindent(column);
         EXPECT_EQ(l.getindent(), 4);
         for (int i = 0; i < 7; ++i) l.wrstrln("i");
         EXPECT_EQ(l.getindent(), 0);
       },
       "       i\n    i\n   i\n  i\n i\ni\ni\n"},
      {"an indent that leaves no room",
       [](tzmalist& l) {
         l.setindent(200), l.setrightmargin(21);
         l.wrch('a'), l.wrstrblock("bc"), l.wrstr("de");
       },
       deep + "\n" + deep + "\n" + deep + "a\n" + deep + "b\n" + blanks(20) + "c\nde\n"},
  });
}

TEST(Listing, EchoesSourceLines) {
  tdynamicstr marks, farmarks;
  marks.addstr("  $        ");
  farmarks.addstr("                 1  2                    3");
  const auto echo = [](tzmalist& l, int nr, const std::string& text, const tdynamicstr* markers,
                       bool shownr = true) {
    l.wrpcharln(nr, shownr, text.data(), static_cast<std::int32_t>(text.size()) - 1, markers);
  };
  expectlistings({
      {"number, none, wide number, empty text",
       [&](tzmalist& l) {
         echo(l, 7, "seven", nullptr), echo(l, 8, "eight", nullptr, false);
         echo(l, 1234567, "much", nullptr), echo(l, 9, "", nullptr);
       },
       "   7  seven\n      eight\n1234567  much\n   9  \n"},
      {"markers under the piece where they stand; the rest behind the text",
       [&](tzmalist& l) {
         l.setrightmargin(21);
         echo(l, 1, "abcdefghijklmnopqrstu", &marks),
             echo(l, 2, "abcdefghijklmnopqrstu", &farmarks);
       },
       "   1  abcdefghijklmno\n****    $        \n      pqrstu\n"
       "   2  abcdefghijklmno\n      pqrstu\n****    1  2         \n           3\n"},
      {"user margins take a place",
       [&](tzmalist& l) {
         l.setrightmargin(21), l.showmarks = true;
         EXPECT_EQ(l.getuserleftmargin(), 0);
         EXPECT_EQ(l.getuserrightmargin(), largest);
         l.setuserleftmargin(3), l.setuserrightmargin(15), l.setuserleftmargin(0);
         echo(l, 1, "abcdefghijklmnopq", nullptr);
       },
       "   1 ab|cdefghijklmn\n     o|pq\n"},
      {"margin blanks behind the text, one more for the first column",
       [&](tzmalist& l) {
         l.pagecontrol = listPageColumn, l.setleftmargin(3), echo(l, 1, "abc", &marks);
       },
       "    1  abc   \n****    $           \n"},
  });
}

TEST(Listing, Pages) {
  const auto head = [](int number) {
    return blanks(24) + " Page " + std::to_string(number) + "\n";
  };
  const auto rows = [](tzmalist& l, int count) {
    l.setrightmargin(31);
    for (; count > 0; --count) l.wrstrln(".");
  };
  const auto dots = [](std::size_t count) {
    std::string all;
    for (; count > 0; --count) all += ".\n";
    return all;
  };
  expectlistings({
      {"at least twenty lines", [&](tzmalist& l) { l.setlinesperpage(10), rows(l, 21); },
       dots(20) + head(1) + "\n\n" + ".\n"},
      {"no limit", [&](tzmalist& l) { l.setlinesperpage(0), rows(l, 300); }, dots(300)},
      {"a limit where pages are filled",
       [&](tzmalist& l) { l.pagecontrol = listPageFilled, l.setlinesperpage(0), rows(l, 201); },
       dots(200) + head(1) + "\n\n.\n" + std::string(196, '\n')},
      {"the same title again is no new page; without a title, lines are not kept together",
       [&](tzmalist& l) {
         l.setlinesperpage(20), rows(l, 1);
         EXPECT_FALSE(l.reqlines(largest));
         rows(l, 1), l.settitle("t"), rows(l, 1), l.settitle("t"), rows(l, 1);
         EXPECT_TRUE(l.reqlines(14));
         EXPECT_FALSE(l.reqlines(15));
         EXPECT_TRUE(l.reqlines(100)) << "a page is pending";
         l.reqlinesskip(1, 1), rows(l, 1), l.reqlinesskip(1, 2), rows(l, 1);
       },
       ".\n.\n" + head(1) + "t\n\n\n.\n.\n" + head(2) + "t\n\n\n.\n\n\n.\n"},
      {"numbers",
       [&](tzmalist& l) {
         EXPECT_EQ(l.getlinenumber(), 2);
         l.wrstr("a");
         EXPECT_EQ(l.getlinenumber(), 1);
         l.setpagenumber(0);
         EXPECT_EQ(l.getpagenumber(), 0);
         l.setpagenumber(largest), l.newpage(), l.setrightmargin(31);
         l.setlinenumber(largest), l.setlinesonpage(largest), l.settitle("t"), l.wrstr("b");
         EXPECT_EQ(l.getpagenumber(), lowest) << "starts over";
       },
       "a\n" + blanks(14) + " Page -2147483648\nt\n\n\nb\n"},
      {"ruler",
       [](tzmalist& l) {
         l.showruler = true, l.setrightmargin(32), l.setsubtitle("s"), l.wrstr("x");
       },
       "         1         2         3\n12345678901234567890123456789012\n" + blanks(25) +
           " Page 1\nSub-title without a title\ns\n\n\nx\n"},
  });
}

TEST(Listing, HeaderLines) {
  const auto level = [](tzmalist& l, const char* text) {
    l.headerstart("level"), l.wrstr(text), l.headerdone("level");
  };
  expectlistings({
      {"levels are dropped and shown",
       [&](tzmalist& l) {
         level(l, "outer"), level(l, "inner"), l.headershow(), l.headershowlast(1);
         l.headerdrop("inner"), l.headershowlast(0), l.headershowlast(lowest),
             l.headershowlast(largest);
         l.headerdrop(""), l.headerdrop(""), l.headershow(), l.wrstr("end");
       },
       "\nouter\ninner\n\ninner\n\n\nouter\n\nouter\n\nend\n"},
      {"a line of one level, and only dashes with a blank behind go",
       [](tzmalist& l) { l.headersingle("----"), l.headersingle("---- b"), l.headershowlast(2); },
       "\n----\n\n\n----\n---- b\n\n----\n     b\n\n"},
      {"more than a page holds: every line gets them, and all end",
       [](tzmalist& l) {
         l.setrightmargin(21), l.setlinesperpage(20), l.headerstart("");
         for (int i = 0; i < 20; ++i) l.wrln();
         l.headerdone(""), l.newpage(), l.settitle("t"), l.wrstrln("a"), l.wrstrln("b");
       },
       blanks(14) + " Page 1\nt\n\n\n" + std::string(21, '\n') + "a\n" + blanks(14) +
           " Page 2\nt\n\n\n" + std::string(21, '\n') + "b\n"},
  });
  testing::internal::CaptureStdout();
  written([&](tzmalist& l) { l.traceheaders = true, level(l, "a"), l.headerdrop("b"); });
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "\nHeaderStart: level Lev = 0 Sp = 0 0\n\nHeaderDone: level Lev = 0 Sp = 1\n"
            "\nPushHeader: level, Lev = 0 Sp = 1\n\nHeaderDrop: b Lev = 1 Sp = 1\n"
            "\nHeaderDone: b Lev = 1 Sp = 1\n\nHeaderDrop_Finished: b Lev = 0 Sp = 0\n");
}

TEST(Listing, Index) {
  const script six = [](tzmalist& l) {
    l.newpage();
    for (const char* text : {"1", "2", "3", "4", "5", "6"}) l.addtoindex(0, text);
    l.wrstr("x");
  };
  EXPECT_EQ(written(six).index, "A 1 1\nA 1 2\nA 1 3\nA 1 4\nA 1 6\n") << "the page has room";
  EXPECT_EQ(written(six, false).index, "");
  EXPECT_EQ(
      written([](tzmalist& l) { l.setsubtitle("s"), l.wrstr("x"), l.writetoindex(1, ""); }, false)
          .index,
      "");
  const struct {
    const char* text;
    int code, level;
  } kinds[] = {{"SubTitle", 1, 1}, {"Solution", 7, 3}, {"Message", 9, 2},
               {"message", 0, 0},  {"???", 0, 0},      {"", 0, 0}};
  for (const auto& kind : kinds) {
    std::int32_t level = -1;
    EXPECT_EQ(inxcfindcode(kind.text, level), kind.code) << kind.text;
    EXPECT_EQ(level, kind.level) << kind.text;
  }
}

TEST(Listing, AssertionsAndFailures) {
  const struct {
    const char* text;
    script steps;
  } cases[] = {
      {"Too many indents",
       [](tzmalist& l) {
         for (;;) l.indentstart();
       }},
      {"Header stack capacity exceeded",
       [](tzmalist& l) {
         for (;;) l.headerstart("h");
       }},
      {"Number of header lines limit reached",
       [](tzmalist& l) {
         for (l.headerstart("h");;) l.wrln();
       }},
      {"No line start", [](tzmalist& l) { l.wrstr("x"), l.writelineheader(); }},
      {"No header here", [](tzmalist& l) { l.headerstart("h"), l.writelineheader(); }},
      {"No Page pending", [](tzmalist& l) { l.writepageheader(); }},
  };
  for (const auto& row : cases)
    written([&](tzmalist& l) {
      EXPECT_THAT(messageof<eassertionfailed>([&] { row.steps(l); }),
                  testing::AllOf(testing::StartsWith("Assertion Failed. (zmalist:"),
                                 testing::EndsWith(std::string(" ") + row.text + "\n")));
    });

  textfile closed;
  {
    tzmalist listing(&closed, nullptr);
    EXPECT_THAT(messageof<einouterror>([&] { listing.wrstr("x"); }),
                testing::StartsWith("I/O Error. "));
    EXPECT_EQ(ioresult(), 0);
  }
  EXPECT_NE(ioresult(), 0) << "the end of the line, of which nobody could be told otherwise";
}

}  // namespace
}  // namespace optxv
