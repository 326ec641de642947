// A paged text listing: lines between margins, page headers, repeated header lines, echoed source
// lines with marks under them, and a file of index lines beside it.
//
// How it works. A caller passes an open text file and writes items; the listing decides
// when a line and when a page is full. The page header that is then due (pagepending) is written as
// late as possible: just before the next output. So a listing does not end in an empty page, and a
// title that is changed at the end of a page appears on the next one. There is no header at the
// start of a listing until settitle, setsubtitle, newpage or a full page asks for one.
//
// Columns, lines and pages count from 1 unless a function says otherwise. Numbers are 32-bit; those
// that count lines and pages start over at the lowest number when they pass the highest.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>

#include "foundation/boundedstring.h"
#include "foundation/runtime.h"
#include "foundation/textfile.h"
#include "foundation/visibility.h"
#include "listing/dynstr.h"

namespace optxv {

/// What stands at the start of a page and of its other lines; see tzmalist::pagecontrol.
enum listpagecontrol : std::uint8_t {
  listPageFilled = 0,    ///< the rest of the old page is filled with empty lines
  listPageColumn = 1,    ///< a first column of its own: "1" on a new page, else a blank
  listPageNone = 2,      ///< nothing
  listPageFormFeed = 3,  ///< a form feed is the first byte of the page
};

/// How letters are written; see tzmalist::casing.
enum listcasing : std::uint8_t { listAsIs = 0, listUpper = 1, listLower = 2 };

/// A kind of index line; the code is the index in the table.
struct indexkind {
  std::string_view text;
  std::int32_t level;
};
inline constexpr std::array<indexkind, 10> indexkinds = {{
    {"???", 0},
    {"SubTitle", 1},
    {"Solve Summary", 1},
    {"Equation", 2},
    {"Column", 2},
    {"SolEQU", 2},
    {"SolVAR", 2},
    {"Solution", 3},
    {"Display", 2},
    {"Message", 2},
}};

/// The code, 1 to 9, of the kind with exactly this text, and its level; 0 and level 0 for an
/// unknown text.
OPTXV_EXPORT std::uint8_t inxcfindcode(std::string_view text, std::int32_t& level) noexcept;

/// A paged listing.
///
/// Every write raises einouterror if it, or any I/O operation before it that has not been asked
/// about, failed; since files hold text back in blocks, a full disk may be noticed only when the
/// caller closes them. Nothing is refused for its length: what does not fit is cut into lines.
/// Assertions (eassertionfailed) are named where they may arise.
///
/// Output comes in two layers. The `sys` operations write to the file as it is, count the bytes of
/// the line and apply `casing`. The `wr` operations fit items into the line, start lines with page
/// header and margin, and, between headerstart and headerdone, collect header lines instead.
/// KEEP: the `sys` operations do not start a line. At the end of a line written only with them, a
/// pending page header and the blanks of the margin come out after its text.
class OPTXV_EXPORT tzmalist : public tobject {
 public:
  /// BORROWS: both files, open for writing, for the life of the listing; it does not close them.
  /// indexfile may be nil: then there is no index.
  tzmalist(textfile* listfile, textfile* indexfile);
  tzmalist(const tzmalist&) = delete;
  tzmalist& operator=(const tzmalist&) = delete;
  /// Ends the line if there is something on it; with listPageFilled fills the page instead if it
  /// has lines and no header is open. Raises nothing: a failed write shows in ioresult (runtime.h).
  ~tzmalist() override;

  // Output, from the lowest level up --------------------------------------------------------------

  void syschwrite(char ch);
  void sysstrwrite(std::string_view s);
  /// n blanks; none for an n below 1.
  void sysblwrite(std::int32_t n);

  /// Writes s without looking whether it fits; starts the line if need be, and writes queued index
  /// lines. In a header, appends to the line that is collected.
  void usrwrite(std::string_view s);

  /// Ends the line. With startline, an empty line is started first, and so gets a pending page
  /// header before it, and its margin. In a header, stores the line; see pushheader.
  void lwrite(bool startline);

  /// Takes the indent back (indentdone) and ends the line; with doublespace adds an empty one
  /// unless a page or a header is under way.
  void wrln();

  /// Writes ch, on a new line if this one is full.
  void wrch(char ch);
  /// n blanks, one by one.
  void wrbl(std::int32_t n);

  /// Writes s on this line if it fits, else on a new one. What is longer than a line fills lines,
  /// and KEEP: its last piece stands at the right edge.
  void wrstr(std::string_view s);
  void wrstrln(std::string_view s);
  /// s with blanks after it up to a multiple of m bytes; at most 255.
  void wrstrmod(std::string_view s, std::int32_t m);
  /// s with blanks before it up to w bytes, or for a negative w after it; at most 255.
  void wrstrfmt(std::string_view s, std::int32_t w);
  void wrint(std::int32_t n);
  void wrintfmt(std::int32_t n, std::int32_t w);
  /// s and n as one item.
  void wrstrint(std::string_view s, std::int32_t n);
  /// x in width w with d decimals, as _Q9_Str_d2 (numtext.h) forms it; with both 0 as _Q9_Str_d0.
  void wrdblfmt(double x, std::int32_t w, std::int32_t d);
  /// "TRUE" or "FALSE" with leading blanks up to w; "T" or "F" for a w below 5.
  void wrboolfmt(bool b, std::int32_t w);

  /// Writes s over as many lines as it takes; those after the first start in the column of the
  /// first, and without the blanks that would be at their start. KEEP: each line ends by wrln, so
  /// that each takes an indent back. An empty s is a wrln.
  void wrstrblock(std::string_view s);

  /// Writes s, broken after the last brk that fits. What is left goes on the same line if it fits,
  /// or if it fits without its leading blanks; otherwise wrstr writes it on a new line.
  void wrstrbrk(std::string_view s, char brk);

  /// Echoes a source line: a number column of at least 4 (blank unless shownr), a gap, the bytes 0
  /// to last of text, and under each piece of it the markers that stand there, if any but blanks;
  /// the first such line begins with "****". With showmarks the gap is narrower, and "|" stands
  /// before the column of userleftmargin and after that of userrightmargin. A text longer than the
  /// line goes on on the next; an empty text (last is -1) still gives a line. Markers past what was
  /// written under the last piece follow on lines of their own.
  /// KEEP: with listPageColumn the text lines have the first column and the marker lines have not.
  /// REQUIRES: last + 1 bytes at text. BORROWS: markers, nil for none.
  void wrpcharln(std::int32_t nr, bool shownr, const char* text, std::int32_t last,
                 const tdynamicstr* markers);

  // Layout ----------------------------------------------------------------------------------------

  /// Room on a line: rightmargin less the blanks at the start. KEEP: what is on the line already
  /// does not count.
  void calccharsleft();

  /// The first column, at least 1. Ignored unless 20 columns stay between the margins.
  void setleftmargin(std::int32_t v);
  /// The last column. Ignored unless 20 columns stay between the margins.
  void setrightmargin(std::int32_t v);
  /// At least 20; no limit for a v below 1; with listPageFilled at most 200, no limit included. A
  /// page that is full by this is ended.
  void setlinesperpage(std::int32_t v);
  void setlinesonpage(std::int32_t v);
  void setlinenumber(std::int32_t v) noexcept { linenumber_ = v; }
  /// The running number of this line over all pages. KEEP: one more on an empty line.
  std::int32_t getlinenumber() const noexcept;
  bool lineisempty() const noexcept;
  /// The number of this page, of the next one if a header is pending.
  std::int32_t getpagenumber() const noexcept;
  /// Makes a header due that shows v + 1; ignored unless v is above getpagenumber(). KEEP: a header
  /// whose page has room and whose titles are the last ones written is dropped.
  void setpagenumber(std::int32_t v);
  std::int32_t getcharactersused() const noexcept;

  /// Columns to mark in echoed lines; a v below 1 is ignored. Nothing is marked at first.
  void setuserleftmargin(std::int32_t v) noexcept;
  void setuserrightmargin(std::int32_t v) noexcept;
  /// 0 for the left one and 2147483647 for the right one if there is none.
  std::int32_t getuserleftmargin() const noexcept;
  std::int32_t getuserrightmargin() const noexcept;

  /// Saves the indent and lets lines start in column v; ignored for a v below 2. KEEP: it does not
  /// fail; of more than five saved indents only the first five are taken back.
  void setindent(std::int32_t v) noexcept;
  /// Saves the indent and lets later lines start in the present column, but not before the left
  /// margin. Asserts that no more than five are saved: "Too many indents".
  void indentstart();
  /// Takes back the indent saved last, if any.
  void indentdone() noexcept;
  /// KEEP: the indent that was saved last, 0 if none is; not the one in use.
  std::int32_t getindent() const noexcept;

  /// Whether n lines (twice that with doublespace) fit on the page; if not, the page ends here.
  /// True for an n below 1 and while a header is pending. KEEP: without a title the page goes on.
  bool reqlines(std::int32_t n);
  /// skip times wrln, if req lines fit and no header is pending.
  void reqlinesskip(std::int32_t req, std::int32_t skip);
  /// Ends the line, and gives true, unless n bytes fit on it. KEEP: the indent stays, unlike wrln.
  bool reqcharacters(std::int32_t n);
  /// An estimate of the lines that wrstrblock takes for s from column w on: the length of s divided
  /// by rightmargin + 1 - w, truncated, plus 1; a divisor of 0 counts as 1. REQUIRES: for a
  /// sensible result, w within the margins.
  std::int32_t strblocklength(std::string_view s, std::int32_t w) const noexcept;

  /// Ends the line if there is something on it, and makes a new page due. Nothing in a header.
  void newpage();

  // Titles ----------------------------------------------------------------------------------------
  // A title that differs from the one last written makes a header due. The texts are cut at 255.

  void settitle(std::string_view s);
  /// The title becomes "Sub-title without a title" if there is none. The next header writes the
  /// text to the index too.
  void setsubtitle(std::string_view s);
  /// What counts as written last; setting the title forgets the subtitle.
  void settitlelastwritten(std::string_view s);
  void setsubtitlelastwritten(std::string_view s);
  /// The texts on the left and before the page number in the first line of each page.
  void setsystitle(std::string_view left, std::string_view right);

  // Header lines ----------------------------------------------------------------------------------
  // Lines that are repeated below the titles of each page. What is written between headerstart and
  // headerdone is collected. Levels nest: headerdrop forgets what was collected since the
  // headerstart of its level. The names are for traceheaders only.

  /// Ends the line, closes an open header, and opens one more level. Asserts that there are at most
  /// 20: "Header stack capacity exceeded".
  void headerstart(std::string_view name);
  /// Stores the line being collected. Asserts that there are at most 20 lines: "Number of header
  /// lines limit reached".
  void pushheader(std::string_view name);
  /// Stores a line that was not ended, and ends the collecting.
  void headerdone(std::string_view name);
  void headerdrop(std::string_view name);
  /// Writes all header lines here, after an empty line, if they and 5 more lines fit on the page
  /// and no header is pending.
  void headershow();
  /// Writes the lines of the last n levels here, if they and 4 more lines fit on the page and no
  /// header is pending.
  void headershowlast(std::int32_t n);
  /// A level of one line, shown at once.
  void headersingle(std::string_view s);
  /// Writes the header lines from level k on, and an empty line. A line that begins with "----" and
  /// a blank has the four dashes blanked in what is kept: they show once.
  void writeheaderlines(std::int32_t k);

  // Index -----------------------------------------------------------------------------------------
  // An index line: the letter "A" plus the code, a blank, the running line number, a blank, the
  // text.

  /// Writes an index line; while a header is pending, queues it until the page is there. Of more
  /// than five queued lines the last takes the place of the fifth.
  void addtoindex(std::uint8_t code, std::string_view text);
  void writetoindex(std::uint8_t code, std::string_view text);
  /// Writes the lines that are queued.
  void checkindxque();

  // Line start ------------------------------------------------------------------------------------

  /// Starts a line: a pending page header, then the blanks of the margin. Asserts that no line is
  /// started, "No line start", and that no header is open, "No header here".
  void writelineheader();

  /// Begins the page that is pending: fills the old one (listPageFilled), then the ruler, the line
  /// with the page number, the titles, two empty lines and the header lines. If there is room on
  /// the page and the titles are those last written, only the header lines are written. Asserts
  /// that one is pending: "No Page pending". Header lines that do not fit on a page of their own
  /// run past its end.
  void writepageheader();

 protected:
  std::int32_t charsleft_ = 0;   ///< bytes that still fit on the line
  std::int32_t charsused_ = 0;   ///< bytes written on the line
  std::int32_t linenumber_ = 1;  ///< over all pages
  std::int32_t linesonpage_ = 0;
  std::int32_t linesperpage_ = std::numeric_limits<std::int32_t>::max();
  std::int32_t rightmargin_ = 132;
  std::int32_t leftmargin_ = 0;  ///< blanks at the start of each line
  std::int32_t pagenumber_ = 0;  ///< of the last page header
  shortstring title_, subtitle_;
  shortstring titlelastwritten_, subtitlelastwritten_;
  textfile* listfile_;
  textfile* indexfile_;
  bool pagepending_ = false;    ///< a page header is due before the next output
  bool linestart_ = true;       ///< nothing has passed through usrwrite on this line
  bool subtitleindex_ = false;  ///< the next header writes the subtitle to the index
  bool inheader_ = false;       ///< output is collected
  tdynamicstr headerbuf_;       ///< the header line being collected
  std::array<std::unique_ptr<tdynamicstr>, 20> headerlines_;  ///< made on first use, and kept
  std::array<std::int32_t, 21> headerstack_{};                ///< lines at each headerstart
  std::int32_t headercount_ = 0;
  std::int32_t headersp_ = 0;
  std::int32_t indent_ = 0;                    ///< the same, if above leftmargin_
  std::array<std::int32_t, 6> indentstack_{};  ///< the first stays 0
  std::int32_t indentcount_ = 0;
  std::int32_t userleftmark_ = -1;
  std::int32_t userrightmark_ = std::numeric_limits<std::int32_t>::max();
  shortstring systitleleft_, systitleright_;
  struct queuedindex {
    std::uint8_t code;
    shortstring text;
  };
  std::array<queuedindex, 5> indexqueue_{};
  std::uint8_t indexqueuecount_ = 0;

 public:
  // Switches, for the owner to set. REQUIRES: with listPageFilled, setlinesperpage is called after
  // pagecontrol is set, as a page without a limit would be filled too.
  std::uint8_t pagecontrol = listPageNone;
  std::uint8_t casing = listAsIs;
  bool showruler = false;     ///< two lines that number the columns, on each page
  bool showmarks = false;     ///< "|" at the marked columns of echoed lines
  bool doublespace = false;   ///< an empty line after each line
  bool traceheaders = false;  ///< report on header lines to standard output

 private:
  static constexpr std::int32_t headerlevels = 20;

  void put(textfile& file, std::string_view text);
  void endline();
  void endspacedline();
  void usrblanks(std::int32_t n);
  std::size_t fitting() const noexcept;
  bool fits(std::string_view s) const noexcept;
  bool isusermark(std::int64_t position) const noexcept;
  std::int64_t writepartialline(std::string_view text, std::int64_t position);
  void writeechostart(std::string_view number, std::int32_t gap);
  bool cansave() const noexcept;
  void saveindent() noexcept;
  void trace(std::string_view what, std::string_view name, std::string_view level,
             std::string_view more = {}) const;
  std::int32_t linesbelow(std::int32_t k) const noexcept;
  void writeheaderline(tdynamicstr& line);
  bool newtitles() const noexcept;
  void fillpage();
  void columnblank();
  void writeruler();
  void writepageline();
  void writetitleline(const shortstring& title, shortstring& lastwritten);
  void writetitles();
  void repeatheaderlines();

  bool repeating_ = false;  ///< the header lines of a page of their own are being written
  bool ending_ = false;     ///< there is nobody left to report a failure to
};

}  // namespace optxv
