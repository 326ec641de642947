#include "listing/zmalist.h"

#include <algorithm>

#include "foundation/numtext.h"
#include "foundation/strutilx.h"

namespace optxv {

namespace {

constexpr std::int32_t nolimit = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallestpage = 20, largestfilledpage = 200;
constexpr std::int32_t marginspace = 20;
constexpr std::string_view dashes = "---- ";
constexpr std::string_view markerflag = "****";

/// a + b, starting over beyond 32 bits.
constexpr std::int32_t plus(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

std::int32_t lengthof(std::string_view s) noexcept {
  return static_cast<std::int32_t>(s.size());
}

std::string_view withoutleadingblanks(std::string_view s) noexcept {
  return s.substr(std::min(s.find_first_not_of(' '), s.size()));
}

/// The first count bytes of s, which are removed.
std::string_view takefront(std::string_view& s, std::size_t count) noexcept {
  const std::string_view front = s.substr(0, count);
  s.remove_prefix(front.size());
  return front;
}

template <class Write>
void inpieces(std::int32_t blanks, Write write) {
  for (; blanks > 0; blanks -= lengthof(blanks255))
    write(blanks255.substr(0, static_cast<std::size_t>(blanks)));
}

shortstring cased(std::string_view s, std::uint8_t casing) noexcept {
  return casing == listUpper ? uppercase(s) : lowercase(s);
}

/// A flag that is set for as long as this lives.
class whileset {
 public:
  explicit whileset(bool& flag) noexcept : flag_(flag) { flag_ = true; }
  whileset(const whileset&) = delete;
  whileset& operator=(const whileset&) = delete;
  ~whileset() { flag_ = false; }

 private:
  bool& flag_;
};

/// Whether there is anything but blanks among the markers from start to end.
bool marked(std::string_view markers, std::int64_t start, std::int64_t end) noexcept {
  if (start >= static_cast<std::int64_t>(markers.size())) return false;
  const std::string_view under =
      markers.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
  return !withoutleadingblanks(under).empty();
}

[[noreturn]] void failedassertion(std::string_view text, int line) {
  raiseassertion(text, "zmalist", line);
}

}  // namespace

std::uint8_t inxcfindcode(std::string_view text, std::int32_t& level) noexcept {
  std::size_t code = indexkinds.size() - 1;
  while (code > 0 && indexkinds[code].text != text) --code;
  level = indexkinds[code].level;
  return static_cast<std::uint8_t>(code);
}

tzmalist::tzmalist(textfile* listfile, textfile* indexfile)
    : listfile_(listfile), indexfile_(indexfile) {
  calccharsleft();
}

tzmalist::~tzmalist() {
  ending_ = true;
  try {
    if (pagecontrol == listPageFilled && linesonpage_ > 0 && !inheader_)
      fillpage();
    else if (!lineisempty())
      lwrite(true);
  } catch (...) {
    // A header line that nobody will see could not be stored.
  }
}

// Output, from the lowest level up

void tzmalist::put(textfile& file, std::string_view text) {
  file.write(text);
  if (!ending_) _Q9error_check();
}

void tzmalist::syschwrite(char ch) {
  sysstrwrite({&ch, 1});
}

void tzmalist::sysstrwrite(std::string_view s) {
  charsused_ = plus(charsused_, lengthof(s));
  if (casing != listUpper && casing != listLower) return put(*listfile_, s);
  while (!s.empty()) put(*listfile_, cased(takefront(s, shortstring::maximum), casing));
}

void tzmalist::sysblwrite(std::int32_t n) {
  inpieces(n, [this](std::string_view blanks) { sysstrwrite(blanks); });
}

void tzmalist::usrwrite(std::string_view s) {
  if (inheader_) {
    headerbuf_.addstr(s);
  } else {
    if (linestart_) writelineheader();
    checkindxque();
    sysstrwrite(s);
  }
  charsleft_ = plus(charsleft_, -lengthof(s));
}

void tzmalist::usrblanks(std::int32_t n) {
  inpieces(n, [this](std::string_view blanks) { usrwrite(blanks); });
}

void tzmalist::endline() {
  put(*listfile_, "\n");
  linenumber_ = plus(linenumber_, 1);
  linesonpage_ = plus(linesonpage_, 1);
  if (linesonpage_ >= linesperpage_) pagepending_ = true;
}

void tzmalist::lwrite(bool startline) {
  if (inheader_) {
    pushheader("lwrite");
  } else {
    if (linestart_ && startline) writelineheader();
    endline();
  }
  charsused_ = 0;
  linestart_ = true;
  calccharsleft();
}

void tzmalist::endspacedline() {
  lwrite(true);
  if (doublespace && !pagepending_ && !inheader_) lwrite(true);
}

void tzmalist::wrln() {
  indentdone();
  endspacedline();
}

void tzmalist::wrch(char ch) {
  if (charsleft_ < 1) lwrite(true);
  usrwrite({&ch, 1});
}

void tzmalist::wrbl(std::int32_t n) {
  for (; n > 0; --n) wrch(' ');
}

/// At least 1, for a line whose indent leaves no room, so that each line uses up some of a text.
std::size_t tzmalist::fitting() const noexcept {
  return static_cast<std::size_t>(std::max(charsleft_, 1));
}

bool tzmalist::fits(std::string_view s) const noexcept {
  return static_cast<std::int64_t>(s.size()) <= charsleft_;
}

void tzmalist::wrstr(std::string_view s) {
  if (!fits(s) && !lineisempty()) lwrite(true);
  if (fits(s)) return usrwrite(s);
  if (s.empty()) return;
  while (s.size() > fitting()) {
    usrwrite(takefront(s, fitting()));
    lwrite(true);
  }
  usrblanks(charsleft_ - lengthof(s));
  usrwrite(s);
}

void tzmalist::wrstrln(std::string_view s) {
  wrstr(s);
  wrln();
}

void tzmalist::wrstrmod(std::string_view s, std::int32_t m) {
  wrstr(padrightmod(s, m));
}

void tzmalist::wrstrfmt(std::string_view s, std::int32_t w) {
  wrstr(w < 0 ? padright(s, -std::max(w, -nolimit)) : padleft(s, w));
}

void tzmalist::wrint(std::int32_t n) {
  wrstr(inttostr(n));
}

void tzmalist::wrintfmt(std::int32_t n, std::int32_t w) {
  wrstr(inttostrw(n, std::max(w, 0)));
}

void tzmalist::wrstrint(std::string_view s, std::int32_t n) {
  wrstr(concat(s, inttostr(n)));
}

void tzmalist::wrdblfmt(double x, std::int32_t w, std::int32_t d) {
  wrstr(w == 0 && d == 0 ? _Q9_Str_d0(x) : _Q9_Str_d2(x, w, d));
}

void tzmalist::wrboolfmt(bool b, std::int32_t w) {
  const std::string_view word = b ? "TRUE" : "FALSE";
  wrstr(padleft(w < 5 ? word.substr(0, 1) : word, std::max(w, 0)));
}

void tzmalist::wrstrblock(std::string_view s) {
  if (s.empty()) return wrln();
  if (charsleft_ < 1 && !lineisempty()) lwrite(true);
  while (!s.empty()) {
    const auto width = static_cast<std::int32_t>(fitting());
    wrstrln(takefront(s, static_cast<std::size_t>(width)));
    s = withoutleadingblanks(s);
    if (!s.empty()) wrbl(charsleft_ - width);
  }
}

void tzmalist::wrstrbrk(std::string_view s, char brk) {
  while (!s.empty() && !fits(s)) {
    const std::size_t room = static_cast<std::size_t>(std::max(charsleft_, 0));
    const std::size_t found = s.substr(0, room).rfind(brk);
    const std::string_view stripped = withoutleadingblanks(s);
    if (found != std::string_view::npos) {
      usrwrite(takefront(s, found + 1));
    } else if (stripped.size() < s.size()) {
      s = stripped;
    } else {
      if (!lineisempty()) lwrite(true);
      return wrstr(s);
    }
  }
  if (!s.empty()) usrwrite(s);
}

// Echoed lines

bool tzmalist::isusermark(std::int64_t position) const noexcept {
  return showmarks && (position == userleftmark_ || position == userrightmark_);
}

/// Writes text from position on, as much as fits, and gives the position after that.
std::int64_t tzmalist::writepartialline(std::string_view text, std::int64_t position) {
  const std::int64_t room = std::int64_t{rightmargin_} + (pagecontrol == listPageColumn ? 1 : 0);
  for (; position < static_cast<std::int64_t>(text.size()); ++position) {
    const bool mark = isusermark(position);
    if (std::int64_t{charsused_} + (mark ? 2 : 1) > room) break;
    if (mark && position == userleftmark_) syschwrite('|');
    syschwrite(text[static_cast<std::size_t>(position)]);
    if (mark && position == userrightmark_) syschwrite('|');
  }
  lwrite(true);
  return position;
}

/// What stands before a piece of an echoed line.
void tzmalist::writeechostart(std::string_view number, std::int32_t gap) {
  if (pagepending_) writepageheader();
  columnblank();
  sysstrwrite(number);
  sysblwrite(gap);
}

void tzmalist::wrpcharln(std::int32_t nr, bool shownr, const char* text, std::int32_t last,
                         const tdynamicstr* markers) {
  const std::int32_t width = std::max(integerwidth(nr), 4), gap = showmarks ? 1 : 2;
  const std::string_view line(text, static_cast<std::size_t>(std::max(last, -1) + std::int64_t{1}));
  const std::string_view marks = markers != nullptr ? markers->view() : std::string_view();
  const auto lineend = static_cast<std::int64_t>(line.size());
  const auto marksend = static_cast<std::int64_t>(marks.size());
  std::int64_t position = 0, marksdone = marksend;
  shortstring number = shownr ? inttostrw(nr, width) : blankstr(width);
  std::string_view flag = markerflag;
  do {
    writeechostart(number, gap);
    number = blankstr(width);
    const std::int64_t start = position;
    position = writepartialline(line, start);
    if (!marked(marks, start, position)) continue;
    sysstrwrite(flag);
    sysblwrite(gap + width - lengthof(flag));
    flag = {};
    marksdone = writepartialline(marks, start);
  } while (position < lineend);
  while (marksdone < marksend) marksdone = writepartialline(marks, marksdone);
}

// Layout

void tzmalist::calccharsleft() {
  charsleft_ = plus(rightmargin_, -std::max(indent_, leftmargin_));
}

void tzmalist::setleftmargin(std::int32_t v) {
  v = std::max(v, 1);
  if (std::int64_t{v} + marginspace >= rightmargin_) return;
  leftmargin_ = v - 1;
  if (lineisempty()) calccharsleft();
}

void tzmalist::setrightmargin(std::int32_t v) {
  if (v <= std::int64_t{leftmargin_} + marginspace) return;
  rightmargin_ = v;
  calccharsleft();
  if (charsleft_ < 0) lwrite(true);
}

void tzmalist::setlinesperpage(std::int32_t v) {
  linesperpage_ = v < 1 ? nolimit : std::max(v, smallestpage);
  if (pagecontrol == listPageFilled) linesperpage_ = std::min(linesperpage_, largestfilledpage);
  if (linesonpage_ >= linesperpage_) pagepending_ = true;
}

void tzmalist::setlinesonpage(std::int32_t v) {
  linesonpage_ = v;
  if (linesonpage_ >= linesperpage_) pagepending_ = true;
}

std::int32_t tzmalist::getlinenumber() const noexcept {
  return lineisempty() ? plus(linenumber_, 1) : linenumber_;
}

bool tzmalist::lineisempty() const noexcept {
  return inheader_ ? headerbuf_.length() == 0 : charsused_ == 0;
}

std::int32_t tzmalist::getpagenumber() const noexcept {
  return plus(pagenumber_, pagepending_ ? 1 : 0);
}

void tzmalist::setpagenumber(std::int32_t v) {
  if (v <= getpagenumber()) return;
  pagenumber_ = v;
  pagepending_ = true;
}

std::int32_t tzmalist::getcharactersused() const noexcept {
  return plus(rightmargin_, -charsleft_);
}

void tzmalist::setuserleftmargin(std::int32_t v) noexcept {
  if (v >= 1) userleftmark_ = v - 1;
}

void tzmalist::setuserrightmargin(std::int32_t v) noexcept {
  if (v >= 1) userrightmark_ = v - 1;
}

std::int32_t tzmalist::getuserleftmargin() const noexcept {
  return userleftmark_ + 1;
}

std::int32_t tzmalist::getuserrightmargin() const noexcept {
  return std::min(userrightmark_, nolimit - 1) + 1;
}

bool tzmalist::cansave() const noexcept {
  return indentcount_ + 1 < static_cast<std::int32_t>(indentstack_.size());
}

void tzmalist::saveindent() noexcept {
  if (cansave()) indentstack_[static_cast<std::size_t>(++indentcount_)] = indent_;
}

void tzmalist::setindent(std::int32_t v) noexcept {
  if (v < 2) return;
  saveindent();
  indent_ = v - 1;
}

void tzmalist::indentstart() {
  if (!cansave()) failedassertion("Too many indents", __LINE__);
  saveindent();
  indent_ = std::max(leftmargin_, getcharactersused());
}

void tzmalist::indentdone() noexcept {
  if (indentcount_ > 0) indent_ = indentstack_[static_cast<std::size_t>(indentcount_--)];
}

std::int32_t tzmalist::getindent() const noexcept {
  return indentstack_[static_cast<std::size_t>(indentcount_)];
}

bool tzmalist::reqlines(std::int32_t n) {
  if (n < 1 || pagepending_) return true;
  const std::int64_t needed = std::int64_t{n} * (doublespace ? 2 : 1);
  if (needed + linesonpage_ <= linesperpage_) return true;
  pagepending_ = true;
  titlelastwritten_.clear();
  return false;
}

void tzmalist::reqlinesskip(std::int32_t req, std::int32_t skip) {
  if (pagepending_ || !reqlines(req)) return;
  for (; skip > 0; --skip) wrln();
}

bool tzmalist::reqcharacters(std::int32_t n) {
  if (charsleft_ >= n) return false;
  endspacedline();
  return true;
}

std::int32_t tzmalist::strblocklength(std::string_view s, std::int32_t w) const noexcept {
  const std::int64_t places = std::int64_t{rightmargin_} + 1 - w;
  return static_cast<std::int32_t>(lengthof(s) / (places == 0 ? 1 : places)) + 1;
}

void tzmalist::newpage() {
  if (inheader_) return;
  if (!lineisempty()) lwrite(true);
  pagepending_ = true;
  titlelastwritten_.clear();
}

// Titles

void tzmalist::settitle(std::string_view s) {
  title_ = s;
  if (!(title_ == titlelastwritten_)) pagepending_ = true;
}

void tzmalist::setsubtitle(std::string_view s) {
  subtitle_ = s;
  subtitleindex_ = true;
  if (title_.empty()) title_ = "Sub-title without a title";
  if (!(subtitle_ == subtitlelastwritten_)) pagepending_ = true;
}

void tzmalist::settitlelastwritten(std::string_view s) {
  titlelastwritten_ = s;
  subtitlelastwritten_.clear();
}

void tzmalist::setsubtitlelastwritten(std::string_view s) {
  subtitlelastwritten_ = s;
}

void tzmalist::setsystitle(std::string_view left, std::string_view right) {
  systitleleft_ = left;
  systitleright_ = right;
}

// Header lines

/// With traceheaders, reports what happens to the header lines: what and the name, then the counts.
void tzmalist::trace(std::string_view what, std::string_view name, std::string_view level,
                     std::string_view more) const {
  if (!traceheaders) return;
  tdynamicstr line;
  for (const std::string_view part : {std::string_view("\n"), what, name, level}) line.addstr(part);
  line.addint(headercount_);
  line.addstr(" Sp = ");
  line.addint(headersp_);
  line.addstr(more);
  line.addstr("\n");
  line.write();
}

void tzmalist::headerstart(std::string_view name) {
  trace("HeaderStart: ", name, " Lev = ", inheader_ ? " 1" : " 0");
  if (!lineisempty()) wrln();
  if (inheader_) headerdone(name);
  if (headersp_ >= headerlevels) failedassertion("Header stack capacity exceeded", __LINE__);
  headerstack_[static_cast<std::size_t>(++headersp_)] = headercount_;
  headerbuf_.clear();
  inheader_ = true;
}

void tzmalist::pushheader(std::string_view name) {
  trace("PushHeader: ", name, ", Lev = ");
  const auto next = static_cast<std::size_t>(headercount_);
  if (next == headerlines_.size())
    failedassertion("Number of header lines limit reached", __LINE__);
  if (headerlines_[next] == nullptr) headerlines_[next].reset(new tdynamicstr());
  headerlines_[next]->assign(headerbuf_);
  ++headercount_;
  headerbuf_.clear();
}

void tzmalist::headerdone(std::string_view name) {
  trace("HeaderDone: ", name, " Lev = ");
  if (!inheader_) return;
  if (headerbuf_.length() > 0) pushheader(name);
  inheader_ = false;
}

void tzmalist::headerdrop(std::string_view name) {
  trace("HeaderDrop: ", name, " Lev = ");
  headerdone(name);
  if (headersp_ > 0) headercount_ = headerstack_[static_cast<std::size_t>(headersp_--)];
  trace("HeaderDrop_Finished: ", name, " Lev = ");
}

/// The number of lines below level k.
std::int32_t tzmalist::linesbelow(std::int32_t k) const noexcept {
  return headerstack_[static_cast<std::size_t>(std::clamp(k, 0, headerlevels))];
}

void tzmalist::headershow() {
  headerdone("headershow");
  if (pagepending_ || headercount_ == 0 || !reqlines(headercount_ + 5)) return;
  lwrite(true);
  writeheaderlines(1);
}

void tzmalist::headershowlast(std::int32_t n) {
  headerdone("headershowlast");
  const auto k = static_cast<std::int32_t>(
      std::clamp<std::int64_t>(std::int64_t{headersp_} + 1 - n, 0, headerlevels));
  if (pagepending_ || headercount_ == 0 || !reqlines(headercount_ + 4 - linesbelow(k))) return;
  writeheaderlines(k);
}

void tzmalist::headersingle(std::string_view s) {
  headerstart("headersingle");
  wrstrln(s);
  headerdone("headersingle");
  headershow();
}

void tzmalist::writeheaderline(tdynamicstr& line) {
  columnblank();
  sysstrwrite(line.view());
  lwrite(true);
  if (!line.view().starts_with(dashes)) return;
  for (std::int32_t i = 0; i < lengthof(dashes); ++i) line.setch(i, ' ');
}

void tzmalist::writeheaderlines(std::int32_t k) {
  for (std::int32_t i = linesbelow(k); i < headercount_; ++i)
    writeheaderline(*headerlines_[static_cast<std::size_t>(i)]);
  lwrite(true);
}

// Index

void tzmalist::addtoindex(std::uint8_t code, std::string_view text) {
  if (indexfile_ == nullptr) return;
  if (!pagepending_) return writetoindex(code, text);
  if (indexqueuecount_ < indexqueue_.size()) ++indexqueuecount_;
  indexqueue_[indexqueuecount_ - 1u] = {code, text};
}

void tzmalist::writetoindex(std::uint8_t code, std::string_view text) {
  if (indexfile_ == nullptr) return;
  const char letter = static_cast<char>('A' + code);
  put(*indexfile_, concat(letter, ' ', inttostr(linenumber_), ' '));
  put(*indexfile_, text);
  put(*indexfile_, "\n");
}

void tzmalist::checkindxque() {
  for (std::size_t i = 0; i < indexqueuecount_; ++i)
    writetoindex(indexqueue_[i].code, indexqueue_[i].text);
  indexqueuecount_ = 0;
}

// Line start and page header

void tzmalist::writelineheader() {
  if (!linestart_) failedassertion("No line start", __LINE__);
  if (inheader_) failedassertion("No header here", __LINE__);
  if (pagepending_ && !repeating_) writepageheader();
  linestart_ = false;
  usrblanks(plus(std::max(leftmargin_, indent_), pagecontrol == listPageColumn ? 1 : 0));
  calccharsleft();
}

bool tzmalist::newtitles() const noexcept {
  return !(title_ == titlelastwritten_ && subtitle_ == subtitlelastwritten_);
}

void tzmalist::fillpage() {
  pagepending_ = false;
  while (linesonpage_ < linesperpage_) lwrite(true);
}

void tzmalist::columnblank() {
  if (pagecontrol == listPageColumn) syschwrite(' ');
}

void tzmalist::writeruler() {
  for (std::int32_t i = 1; i <= rightmargin_ / 10; ++i) sysstrwrite(padleft(inttostr(i), 10));
  lwrite(false);
  for (std::int32_t i = 0; i < rightmargin_; ++i) syschwrite(static_cast<char>('0' + (i + 1) % 10));
  lwrite(false);
}

void tzmalist::writepageline() {
  const shortstring page = concat(" Page ", inttostr(pagenumber_));
  if (pagecontrol == listPageFormFeed) syschwrite('\f');
  if (pagecontrol == listPageColumn) syschwrite('1');
  sysstrwrite(systitleleft_);
  sysblwrite(rightmargin_ - systitleleft_.length() - systitleright_.length() - page.length());
  sysstrwrite(systitleright_);
  sysstrwrite(page);
  lwrite(false);
}

void tzmalist::writetitleline(const shortstring& title, shortstring& lastwritten) {
  columnblank();
  sysstrwrite(title);
  lastwritten = title;
  lwrite(false);
}

void tzmalist::writetitles() {
  if (title_.empty()) return;
  writetitleline(title_, titlelastwritten_);
  if (subtitle_.empty()) return;
  if (subtitleindex_) writetoindex(1, subtitle_);
  subtitleindex_ = false;
  writetitleline(subtitle_, subtitlelastwritten_);
}

/// The header lines of a new page. Those that fill it make a page due which could hold them no
/// better, so that no page header is written until they are through.
void tzmalist::repeatheaderlines() {
  const whileset set(repeating_);
  writeheaderlines(1);
}

void tzmalist::writepageheader() {
  if (!pagepending_) failedassertion("No Page pending", __LINE__);
  if (linesonpage_ < linesperpage_ && !newtitles()) {
    pagepending_ = false;
    if (headercount_ > 0) writeheaderlines(1);
    return;
  }
  if (pagecontrol == listPageFilled && linesonpage_ > 0 && !inheader_) fillpage();
  pagenumber_ = plus(pagenumber_, 1);
  pagepending_ = false;
  linesonpage_ = 0;
  if (showruler) writeruler();
  writepageline();
  writetitles();
  checkindxque();
  lwrite(false);
  lwrite(false);
  if (headercount_ > 0) repeatheaderlines();
}

}  // namespace optxv
