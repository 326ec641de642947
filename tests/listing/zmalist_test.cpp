#include "listing/zmalist.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

#include "foundation/runtime.h"
#include "foundation/textfile.h"
#include "support/scratchfolder.h"

namespace optxv {
namespace {

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();

using script = std::function<void(tzmalist&)>;

struct pages {
  std::string listing, index;
};

// What a script leaves in the two files of a listing.
pages written(const script& steps, bool withindex = true) {
  const test::scratchfolder folder;
  textfile list, index;
  list.assign(folder / "list");
  list.rewrite();
  index.assign(folder / "index");
  index.rewrite();
  {
    tzmalist listing(&list, withindex ? &index : nullptr);
    steps(listing);
  }
  list.close();
  index.close();
  return {folder.get("list"), folder.get("index")};
}

void lists(const script& steps, const std::string& listing) {
  EXPECT_EQ(written(steps).listing, listing);
}

// Titles, header lines that come back on later pages, a margin, an indent, a title that changes in
// the middle of a page, index lines queued and at once.
void report(tzmalist& l) {
  l.setrightmargin(30);
  l.setlinesperpage(20);
  l.setsystitle("left", "right");
  l.settitle("One");
  l.setsubtitle("Sub");
  l.addtoindex(3, "queued");
  l.wrstrln("first");
  l.headerstart("h");
  l.wrstrln("---- dashed");
  l.wrstr("repeated");
  l.headershow();
  l.setleftmargin(3);
  l.wrstr("item ");
  l.indentstart();
  l.wrstr("explained at");
  l.wrstr(" some length");
  l.wrln();
  l.settitle("Two");
  l.addtoindex(8, "waits");
  l.wrstrln("under a new title");
  l.addtoindex(9, "at once");
  for (int i = 1; i <= 12; ++i) {
    l.wrstrint("row ", i);
    l.wrln();
  }
}

const std::string reportpages[] = {
    "left              right Page 1\nOne\nSub\n\n\nfirst\n\n---- dashed\nrepeated\n\n"
    "  item explained at\n        some length\n",
    "left              right Page 2\nTwo\nSub\n\n\n     dashed  \nrepeated  \n  \n"
    "  under a new title\n  row 1\n  row 2\n  row 3\n  row 4\n  row 5\n  row 6\n  row 7\n"
    "  row 8\n  row 9\n  row 10\n  row 11\n",
    "left              right Page 3\nTwo\nSub\n\n\n     dashed  \nrepeated  \n  \n  row 12\n"};

// The text with a first column of its own: "1" where a page begins, a blank elsewhere but on the
// empty lines of a page header; and the blank that ends a header line.
const char* const withfirstcolumn =
    "1left              right Page 1\n One\n Sub\n\n\n first\n \n ---- dashed \n repeated \n \n"
    "   item explained at\n         some length\n"
    "1left              right Page 2\n Two\n Sub\n\n\n      dashed   \n repeated   \n   \n"
    "   under a new title\n   row 1\n   row 2\n   row 3\n   row 4\n   row 5\n   row 6\n   row 7\n"
    "   row 8\n   row 9\n   row 10\n   row 11\n"
    "1left              right Page 3\n Two\n Sub\n\n\n      dashed   \n repeated   \n   \n"
    "   row 12\n";

TEST(Listing, PagesUnderEachPageControl) {
  const auto& [one, two, three] = reportpages;
  const auto fill = [](int lines) {
    std::string all;
    for (; lines > 0; --lines) all += "  \n";
    return all;
  };
  const std::string index = "B 3 Sub\nD 4 queued\nI 16 waits\nJ 22 at once\n";
  const struct {
    std::uint8_t control;
    std::string listing, index;
  } rows[] = {{listPageFilled, one + fill(8) + two + three + fill(11),
               "B 3 Sub\nD 4 queued\nI 13 waits\nJ 30 at once\n"},
              {listPageColumn, withfirstcolumn, index},
              {listPageNone, one + two + three, index},
              {listPageFormFeed, "\f" + one + "\f" + two + "\f" + three, index}};
  for (const auto& row : rows) {
    const pages result = written([&](tzmalist& l) {
      l.pagecontrol = row.control;
      report(l);
    });
    EXPECT_EQ(result.listing, row.listing) << int{row.control};
    EXPECT_EQ(result.index, row.index) << int{row.control};
  }
}

TEST(Listing, FitsItemsIntoLines) {
  const script longitems = [](tzmalist& l) {
    l.setrightmargin(21);
    l.wrstr("abc");
    l.wrstr("1234567890123456789");
    l.wrstr("1234567890123456789012345678901234567890123");
    l.wrbl(21);
    l.wrch('x');
    EXPECT_EQ(l.getcharactersused(), 1);
    EXPECT_FALSE(l.reqcharacters(20));
    EXPECT_TRUE(l.reqcharacters(21));
  };
  lists(longitems,
        "abc\n1234567890123456789\n123456789012345678901\n234567890123456789012\n"
        "                    3\n                     \nx\n");
  const script items = [](tzmalist& l) {
    l.wrstrmod("abc", 4);
    l.wrstrfmt("d", 3);
    l.wrstrfmt("e", -3);
    l.wrstrln("f");
    l.wrint(lowest);
    l.wrintfmt(7, 3);
    l.wrintfmt(1, lowest);
    l.wrln();
    l.wrdblfmt(1.5, 0, 0);
    l.wrdblfmt(2.5, 8, 1);
    l.wrdblfmt(2.25, 0, 2);
    l.wrln();
    l.wrboolfmt(true, 4);
    l.wrboolfmt(false, 6);
    l.wrboolfmt(true, 5);
    l.casing = listUpper;
    l.wrstr("aB");
    l.casing = listLower;
    l.wrstr("aB");
  };
  lists(items,
        "abc   de  f\n-2147483648  71\n   1.50000000000000E+00     2.52.25\n   T FALSE TRUEABab\n");
  const script blocks = [](tzmalist& l) {
    l.setrightmargin(25);
    l.wrstr("key: ");
    l.wrstrblock("12345678901234567890   next 67890123456789 done");
    l.wrstrblock("");
    l.wrstrbrk("one,two,three,four,five,six,seven", ',');
    l.wrln();
    l.wrstrbrk("one,  two4567890123456789012", ',');
    l.wrln();
    l.usrwrite("longer than the line that it is on");
    l.wrstrbrk("", ',');
    l.wrln();
    l.wrstrbrk("it fits, all", ',');
    l.wrln();
    EXPECT_EQ(l.strblocklength("123456789012345678901", 6), 2);
    EXPECT_EQ(l.strblocklength("123", 26), 4) << "no room at all";
  };
  lists(blocks,
        "key: 12345678901234567890\n     next 67890123456789 \n     done\n\n"
        "one,two,three,four,five,\nsix,seven\none,\ntwo4567890123456789012\n"
        "longer than the line that it is on\nit fits, all\n");
}

TEST(Listing, EchoesSourceLines) {
  tdynamicstr marks, far;
  marks.addstr("  $        ");
  far.addstr("                 1  2                    3");
  const auto echo = [](tzmalist& l, int nr, const std::string& text, const tdynamicstr* markers) {
    l.wrpcharln(nr, nr != 8, text.data(), static_cast<std::int32_t>(text.size()) - 1, markers);
  };
  const script lines = [&](tzmalist& l) {
    l.setrightmargin(21);
    echo(l, 8, "eight", nullptr);
    echo(l, 1234567, "", nullptr);
    echo(l, 1, "abcdefghijklmnopqrstu", &marks);
    echo(l, 2, "abcdefghijklmnopqrstu", &far);
    l.showmarks = true, l.setuserleftmargin(3), l.setuserrightmargin(15);
    l.setuserleftmargin(0), l.setuserrightmargin(0);  // ignored
    echo(l, 3, "abcdefghijklmnopq", nullptr);
  };
  lists(lines,
        "      eight\n1234567  \n   1  abcdefghijklmno\n****    $        \n      pqrstu\n"
        "   2  abcdefghijklmno\n      pqrstu\n****    1  2         \n           3\n"
        "   3 ab|cdefghijklmn\n     o|pq\n");
}

TEST(Listing, PagesAndHeaderLines) {
  const auto head = [](int page) { return "               Page " + std::to_string(page) + "\n"; };
  const auto rows = [](tzmalist& l, int count) {
    for (l.setrightmargin(21); count > 0; --count) l.wrstrln(".");
  };
  const script kept = [&](tzmalist& l) {
    l.setlinesperpage(10);
    rows(l, 21);
    l.settitle("t");
    rows(l, 1);
    l.settitle("t");
    rows(l, 1);
    EXPECT_TRUE(l.reqlines(14)) << "of twenty, the least there is";
    EXPECT_FALSE(l.reqlines(15));
    l.reqlinesskip(1, 2);
    rows(l, 1);
  };
  std::string dots;
  for (int i = 0; i < 20; ++i) dots += ".\n";
  lists(kept, dots + head(1) + "\n\n.\n" + head(2) + "t\n\n\n.\n.\n" + head(3) + "t\n\n\n.\n");
  lists(
      [&](tzmalist& l) {
        l.setlinesperpage(0);
        rows(l, 60);
      },
      dots + dots + dots);
  const pages limited = written([&](tzmalist& l) {
    l.pagecontrol = listPageFilled;
    l.setlinesperpage(0);
    rows(l, 201);
  });
  EXPECT_EQ(limited.listing.find(head(1)), 400U) << "two hundred lines";
  const script levels = [](tzmalist& l) {
    for (const char* text : {"outer", "inner"}) {
      l.headerstart("level");
      l.wrstr(text);
      l.headerdone("level");
    }
    l.headershow();
    l.headershowlast(1);
    l.headerdrop("inner");
    l.headershowlast(0);
    l.headershowlast(largest);
    l.headerdrop("");
    l.headerdrop("");
    l.headershow();
    l.wrstr("end");
  };
  lists(levels, "\nouter\ninner\n\ninner\n\n\nouter\n\nend\n");
  const script roomier = [](tzmalist& l) {  // the page that was due is not
    l.setlinesperpage(20);
    l.headerstart("");
    l.wrstr("again");
    l.headerdone("");
    l.setlinesonpage(20);
    l.setlinesperpage(30);
    l.wrstrln("a");
    l.wrstrln("b");
  };
  lists(roomier, "again\n\na\nb\n");
  const script overfull = [](tzmalist& l) {  // every line gets them, and all end
    l.setrightmargin(21);
    l.setlinesperpage(20);
    l.headerstart("");
    for (int i = 0; i < 20; ++i) l.wrln();
    l.headerdone("");
    l.newpage();
    l.settitle("t");
    l.wrstrln("a");
    l.wrstrln("b");
  };
  const std::string headers = "t\n\n\n" + std::string(21, '\n');
  lists(overfull, head(1) + headers + "a\n" + head(2) + headers + "b\n");
}

TEST(Listing, CountsAndMarginsAreSetAndAsked) {
  const script numbers = [](tzmalist& l) {
    EXPECT_EQ(l.getlinenumber(), 2) << "one more on an empty line";
    l.wrstr("a");
    EXPECT_EQ(l.getlinenumber(), 1);
    l.setlinenumber(largest);
    l.wrln();
    EXPECT_EQ(l.getlinenumber(), lowest + 1) << "it starts over";
    l.setpagenumber(0);
    EXPECT_EQ(l.getpagenumber(), 0);
    l.setlinesperpage(20);
    l.setlinesonpage(19);
    EXPECT_EQ(l.getpagenumber(), 0);
    l.setlinesonpage(20);
    EXPECT_EQ(l.getpagenumber(), 1);
    l.setpagenumber(1);
    l.setpagenumber(7);
    EXPECT_EQ(l.getpagenumber(), 8);
    l.setrightmargin(30);
    l.settitle("t");
    l.wrstrln("b");
  };
  lists(numbers, "a\n                        Page 8\nt\n\n\nb\n");
  const script shortened = [](tzmalist& l) {  // below what the page has already
    l.setrightmargin(30);
    for (int i = 0; i < 25; ++i) l.wrln();
    l.setlinesperpage(20);
    l.wrstrln("b");
  };
  lists(shortened, std::string(25, '\n') + std::string(24, ' ') + "Page 1\n\n\nb\n");
  const script margins = [](tzmalist& l) {
    EXPECT_EQ(l.getuserleftmargin(), 0);
    EXPECT_EQ(l.getuserrightmargin(), largest);
    l.setuserleftmargin(0), l.setuserrightmargin(0);
    EXPECT_EQ(l.getuserleftmargin(), 0) << "ignored";
    EXPECT_EQ(l.getuserrightmargin(), largest);
    l.setuserleftmargin(3), l.setuserrightmargin(9);
    EXPECT_EQ(l.getuserleftmargin() * 100 + l.getuserrightmargin(), 309);
    l.setrightmargin(20), l.setleftmargin(113);
    EXPECT_EQ(l.getcharactersused(), 0) << "ignored: too narrow";
    for (const int column : {1, 3, 5}) l.setindent(column);
    EXPECT_EQ(l.getindent(), 2) << "as saved, not as in use";
    l.wrstrln("at five");
    l.wrstrln("at three");
    l.setindent(9);
    l.wrstr("at nine");
    l.setrightmargin(21);
    l.setindent(30);
    l.calccharsleft();
    l.setrightmargin(22);
    l.wrln();
  };
  lists(margins, "    at five\n  at three\n        at nine\n        \n");
  const script narrowed = [](tzmalist& l) {  // an empty line ends too, and is begun for that
    l.setindent(30);
    l.calccharsleft();
    l.setrightmargin(22);
    l.wrstrln("a");
  };
  const std::string indent(29, ' ');
  lists(narrowed, indent + '\n' + indent + "a\n");
}

TEST(Listing, DoubleSpaceRulerAndQuickHeaders) {
  const script spaced = [](tzmalist& l) {
    l.setrightmargin(23);
    l.setlinesperpage(20);
    l.setlinesonpage(20);
    l.showruler = l.doublespace = true;
    l.headersingle("head");
    l.wrstrln("a");
    l.setlinesonpage(10);
    EXPECT_TRUE(l.reqlines(5));
    EXPECT_TRUE(l.reqlines(0));
    l.reqlinesskip(1, 1);
    l.wrstr("b");
    l.newpage();
    EXPECT_TRUE(l.reqlines(99)) << "a page is due";
    l.setsubtitle("under");
    l.setsubtitlelastwritten("under");
    l.settitlelastwritten("Sub-title without a title");
    l.wrstr("c");
  };
  lists(spaced,
        "         1         2\n12345678901234567890123\n                 Page 1\n\n\nhead\n\n"
        "a\n\n\n\nb\n"
        "         1         2\n12345678901234567890123\n                 Page 2\n"
        "Sub-title without a title\nunder\n\n\nhead\n\nc\n");
  testing::internal::CaptureStdout();
  written([](tzmalist& l) {
    l.traceheaders = true;
    l.headerstart("h");
    l.wrstr("x");
    l.headerstart("i");
    l.headerdrop("i");
  });
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "\nHeaderStart: h Lev = 0 Sp = 0 0\n\nHeaderStart: i Lev = 0 Sp = 1 1\n"
            "\nPushHeader: lwrite, Lev = 0 Sp = 1\n\nHeaderDone: i Lev = 1 Sp = 1\n"
            "\nHeaderDrop: i Lev = 1 Sp = 2\n\nHeaderDone: i Lev = 1 Sp = 2\n"
            "\nHeaderDrop_Finished: i Lev = 1 Sp = 1\n");
}

TEST(Listing, HeaderLinesWantRoomBelowThem) {
  const auto ended = [](bool last, int lines) {
    bool page = false;
    written([&](tzmalist& l) {
      l.setlinesperpage(20);
      l.headerstart("h");
      l.wrstr("head");
      l.headerdone("h");
      l.setlinesonpage(lines);
      last ? l.headershowlast(1) : l.headershow();
      page = l.getpagenumber() == 1;
    });
    return page;
  };
  EXPECT_FALSE(ended(false, 14)) << "for five lines more";
  EXPECT_TRUE(ended(false, 15));
  EXPECT_FALSE(ended(true, 15)) << "for four";
  EXPECT_TRUE(ended(true, 16));
}

TEST(Listing, IndexAndAssertions) {
  const script six = [](tzmalist& l) {
    l.newpage();
    for (const char* text : {"1", "2", "3", "4", "5", "6"}) l.addtoindex(0, text);
    l.wrstr("x");
    l.writetoindex(1, "");
  };
  EXPECT_EQ(written(six).index, "A 1 1\nA 1 2\nA 1 3\nA 1 4\nA 1 6\nB 1 \n") << "the page has room";
  EXPECT_EQ(written(six, false).index, "");
  std::int32_t level = -1;
  EXPECT_EQ(inxcfindcode("Solution", level), 7);
  EXPECT_EQ(level, 3);
  EXPECT_EQ(inxcfindcode("solution", level) + level, 0);
  written([](tzmalist& l) { EXPECT_THROW(for (;;) l.indentstart(), eassertionfailed); });
  written([](tzmalist& l) { EXPECT_THROW(for (;;) l.headerstart("h"), eassertionfailed); });
  const auto endless = [](tzmalist& l) { EXPECT_THROW(for (;;) l.wrln(), eassertionfailed); };
  written([&](tzmalist& l) { l.headerstart("h"), endless(l); });
  textfile closed;
  tzmalist listing(&closed, nullptr);
  EXPECT_THROW(listing.wrstr("x"), einouterror);
}

}  // namespace
}  // namespace optxv
