#include "language/miniparser.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "foundation/strutilx.h"

namespace optxv {

namespace {

// The kind of each byte for the readers: one look-up in a table decides whether a scan goes on.
enum kind : unsigned char {
  letter = 1,
  digit = 2,
  underscore = 4,
  blank = 8,
  comma = 16,
  mark = 32,
  quote = 64,
};

constexpr std::array<unsigned char, 256> makeclasses() {  // unreached: the compiler runs it
  std::array<unsigned char, 256> classes{};
  for (std::size_t c = 'A'; c <= 'Z'; ++c) classes[c] = classes[c + 32] = letter;
  for (std::size_t c = '0'; c <= '9'; ++c) classes[c] = digit;
  classes['_'] = underscore;
  classes[' '] = classes['\t'] = blank;
  classes[','] = comma;
  classes['"'] = quote;
  classes[tminiparser::endofline] = classes[tminiparser::endofinput] = mark;
  return classes;
}
constexpr std::array<unsigned char, 256> classes = makeclasses();

constexpr bool is(char c, unsigned wanted) {
  return (classes[static_cast<unsigned char>(c)] & wanted) != 0;
}

constexpr charset makeinvalideolcommchar() {  // unreached: the compiler runs it
  charset set("\"'+-.");
  set.addrange(0, ' ');
  set.addrange('0', '9');
  set.addrange('A', 'Z');
  set.addrange('a', 'z');
  return set;
}

/// The first byte of that value, or the end. It is looked for in words of memory.
const char* findbyte(const char* from, const char* end, char wanted) {
  const void* found = std::memchr(from, wanted, static_cast<std::size_t>(end - from));
  return found != nullptr ? static_cast<const char*>(found) : end;
}

/// Appends a text; if not all of it fits, position 255 gets its last byte.
void appendrun(shortstring& text, std::string_view run) {
  const int room = shortstring::maximum - text.length();
  const bool fits = run.size() <= static_cast<std::size_t>(room);
  text.append(run);
  if (!fits) text[shortstring::maximum] = run.back();
}

void droplast(shortstring& text) {
  text.setlength(text.length() - 1);
}

void droptrailingblanks(shortstring& text) {
  text.setlength(static_cast<int>(trimright(text).size()));
}

/// A set with the marks added, for scans that stop at its members.
charset withmarks(charset set) {
  set.add(tminiparser::endofline);
  set.add(tminiparser::endofinput);
  return set;
}

constexpr char echomark = '\xBB';
constexpr std::int64_t echowidth = 130;

}  // namespace

constexpr charset invalideolcommchar = makeinvalideolcommchar();

tminiparser::tminiparser(txcustomstringlist* echolist, bool echoon, const charset& eolcommset)
    : echoon_(echoon), echolist_(echolist), eolcommset_(eolcommset) {}

// Sources ----------------------------------------------------------------------------------------

int tminiparser::fileopen(std::string_view name, bool nodevices) {
  srcfile_.assign(name);
  srcfile_.reset(nodevices);
  return startlines(ioresult());
}

void tminiparser::textopen(std::string_view bytes) {
  srcfile_.resetmemory(bytes);
  startlines(0);
}

int tminiparser::open(const linesource& from) {
  if (!from.bytes) return fileopen(from.name, from.nodevices);
  textopen(*from.bytes);
  return 0;
}

int tminiparser::startlines(int error) {
  linenr_ = 0;
  if (error == 0) {
    source_ = source::file;
    text_ = linebuf_;
  } else {
    ch_ = endofinput;
  }
  return error;
}

void tminiparser::startstring(const char* text, std::int64_t length, source kind) {
  srcfile_.close();
  text_ = text;
  linepos_ = -1;
  linelen_ = length;
  linenr_ = 0;
  source_ = kind;
  flushecho();
}

void tminiparser::readfromstr(std::string_view text) {
  const shortstring kept(text);
  std::memcpy(linebuf_, kept.data(), static_cast<std::size_t>(kept.length()));
  startstring(linebuf_, kept.length(), source::string);
}

void tminiparser::readfrompchar(const char* text) {
  readfrombytes(text == nullptr ? std::string_view() : std::string_view(text));
}

void tminiparser::readfrombytes(std::string_view bytes) {
  const char* const text = bytes.empty() ? "" : bytes.data();
  startstring(text, static_cast<std::int64_t>(bytes.size()), source::pchar);
}

// Lines and characters ---------------------------------------------------------------------------

/// Reads a physical line: a short one where it lies in its block, any other into the slices.
void tminiparser::readphysical() {
  skippedat_ = 0;
  std::string_view line;
  if (!srcfile_.takeline(slicelength, line)) return readslices();
  text_ = line.data();
  linelen_ = static_cast<std::int64_t>(line.size());
  ++linenr_;
  if (told_ != nullptr) tellline(0);
}

/// A slice that lost its last byte as a carriage return is not full, so that the line ends there,
/// even if more bytes follow.
void tminiparser::readslices() {
  text_ = linebuf_;
  linelen_ = 0;
  for (int slice = 1; slice <= slicecount; ++slice) {
    linelen_ += srcfile_.readstring(linebuf_ + linelen_, slicelength);
    if (linelen_ < std::int64_t{slice} * slicelength) break;
  }
  const auto lost = static_cast<std::int64_t>(srcfile_.readln());
  ++linenr_;
  if (told_ != nullptr) tellline(lost);
}

/// Reports the line that was read, and what was cut off it.
void tminiparser::tellline(std::int64_t lost) const {
  const textplace whole = {placeline(), 1, held(linelen_)};
  told_->line(whole, {text_, static_cast<std::size_t>(linelen_)});
  // A slice that is not full lost its carriage return, which stands in front of what follows.
  const std::int64_t dropped = linelen_ % slicelength != 0 ? 1 : 0;
  if (lost > 0)
    told_->tell(&optxv_listener::cut,
                {.what = optxv_cut_line,
                 .option = 0,
                 .place = told_->placed({whole.line, held(linelen_ + dropped + 1), held(lost)}),
                 .kept = {},
                 .lost = lost});
}

/// Reports what a mark within the line leaves unread.
void tminiparser::tellrest() const {
  if (linepos_ < 1 || linepos_ >= linelen_ || text_[linepos_ - 1] != ch_ || !atmark()) return;
  const std::int64_t lost = linelen_ - linepos_;
  told_->tell(&optxv_listener::cut,
              {.what = optxv_cut_rest,
               .option = 0,
               .place = told_->placed({placeline(), held(linepos_ + 1), held(lost)}),
               .kept = {},
               .lost = lost});
}

void tminiparser::filllinebuf() {
  if (told_ != nullptr) tellrest();
  linepos_ = 0;
  while (true) {
    if (srcfile_.eof()) {
      if (linelen_ >= 0) skippedat_ = linelen_ + 1;
      linelen_ = -1;
      ch_ = endofinput;
      return;
    }
    readphysical();
    flushecho();
    if (linelen_ == 0) continue;
    if (text_[0] != '*') break;
    if (told_ != nullptr)
      told_->tellplace(&optxv_listener::comment, {placeline(), 1, held(linelen_)});
  }
  linepos_ = 1;
  ch_ = text_[0];
}

bool tminiparser::nextline() {
  if (source_ == source::file) {
    filllinebuf();
  } else if (linepos_ <= 0) {
    if (told_ != nullptr) tellline(0);
    linepos_ = 1;
    ch_ = linelen_ > 0 ? text_[0] : endofinput;
  } else {
    if (told_ != nullptr) tellrest();
    linelen_ = 0;
  }
  return linelen_ > 0;
}

/// The steps of nextch that leave the line.
void tminiparser::leaveline() {
  if (ch_ == endofinput) return;
  if (linepos_ == linelen_) {
    ++linepos_;
    ch_ = endofline;
  } else if (source_ == source::file) {
    filllinebuf();
  } else {
    ch_ = endofinput;
  }
}

/// KEEP: a piece that is followed by exactly one more character has no mark at its end.
void tminiparser::flushecho() {
  if (!echoon_ || linelen_ < 0) return;
  const std::int32_t first = echolist_->count();
  if (linelen_ == 0) echolist_->addobject({}, nullptr);
  for (std::int64_t done = 0; done < linelen_; done += echowidth) {
    const std::int64_t left = linelen_ - done;
    const std::string_view piece(text_ + done, static_cast<std::size_t>(std::min(left, echowidth)));
    shortstring echo;
    echo.append(linelen_ <= echowidth ? ' ' : echomark).append(piece);
    if (left > echowidth + 1) echo.append(echomark);
    echolist_->addobject(echo, nullptr);
  }
  if (echoplaces_ == nullptr) return;
  for (std::int32_t i = first; i < echolist_->count(); ++i)
    echoplaces_->set(i, {{placeline(), 1, held(linelen_)}, sourcenumber_});
}

// Bulk scans -------------------------------------------------------------------------------------

/// Passes characters up to the first for which stop holds, and hands them to use: in one run if ch_
/// is in the line, in two if not. The result is the same as with a nextch for each character.
/// REQUIRES: stop holds for both marks, so that a scan does not leave its line.
template <class Stop, class Use>
void tminiparser::scan(Stop stop, Use use) {
  if (stop(ch_)) return;
  if (onbyte())
    --linepos_;
  else
    use(std::string_view(&ch_, 1));
  if (linepos_ < linelen_) {
    const char* const from = text_ + linepos_;
    const char* const end = text_ + linelen_;
    const char* const to = std::find_if(from, end, stop);
    if (to != from) use(std::string_view(from, static_cast<std::size_t>(to - from)));
    linepos_ = to - text_;
  }
  nextch();
}

template <class Stop>
void tminiparser::collect(Stop stop, shortstring& text) {
  scan(stop, [&](std::string_view run) { appendrun(text, run); });
}

void tminiparser::take(shortstring& text) {
  appendrun(text, {&ch_, 1});
  nextch();
}

void tminiparser::skipuntil(const charset& stop) {
  const charset all = withmarks(stop);
  scan([&all](char c) { return all.has(c); }, [](std::string_view) {});
}

std::string_view tminiparser::ahead() const {
  if (atmark()) return {};
  const char* const from = text_ + linepos_ - 1;
  // No line of a file has a line feed. A text may have many, so that the nearest ends all searches.
  const char* const line = text_ + linelen_;
  const char* const end = source_ == source::file ? line : findbyte(from, line, endofline);
  return {from, static_cast<std::size_t>(findbyte(from, end, endofinput) - from)};
}

// White space and punctuation --------------------------------------------------------------------

/// Tells of a separator of so many bytes, the last of which is ch().
void tminiparser::tellseparator(std::int32_t length) const {
  const textplace last = restplace();
  told_->tellplace(&optxv_listener::separator, {last.line, last.column + 1 - length, length});
}

void tminiparser::skipcomment() {
  if (told_ != nullptr) told_->tellplace(&optxv_listener::comment, restplace());
  skipuntil(charset());
}

bool tminiparser::skipbecomes() {
  const bool more = skipbl();
  const bool colon = ch_ == ':';
  if (colon) nextch();
  if (ch_ == '=') {
    if (told_ != nullptr) tellseparator(colon ? 2 : 1);
    nextch();
    return skipbl();
  }
  return more && !colon;
}

bool tminiparser::skiptochar(char wanted) {
  skipbl();
  if (ch_ != wanted) return false;
  nextch();
  return true;
}

bool tminiparser::skiptochars(const charset& wanted, char& found) {
  skipbl();
  found = ch_;
  if (!wanted.has(ch_)) return false;
  nextch();
  return true;
}

// Tokens -----------------------------------------------------------------------------------------

/// The rest of a quoted token, inner and closing quotes included.
void tminiparser::quotedtoken(shortstring& text) {
  bool odd = false;
  while (!atmark()) {
    collect([](char c) { return is(c, mark | quote); }, text);
    if (ch_ != '"') return;
    take(text);
    odd = !odd;
    if (odd && is(ch_, blank | comma)) return;
  }
}

bool tminiparser::nexttoken(shortstring& text) {
  text.clear();
  if (!skipbl()) return false;
  if (ch_ != '"') {
    collect([](char c) { return is(c, blank | comma | mark); }, text);
    return true;
  }
  nextch();
  quotedtoken(text);
  if (text.empty() || text.last() != '"') return false;
  droplast(text);
  return true;
}

std::string_view tminiparser::plaintoken() const {
  if (!onbyte() || ch_ == '"') return {};
  const char* const from = text_ + linepos_ - 1;
  const char* const end = text_ + std::min(linelen_, linepos_ + shortstring::maximum);
  const char* to = from;
  while (to != end && !is(*to, blank | comma | mark)) ++to;
  return {from, to - from <= shortstring::maximum ? static_cast<std::size_t>(to - from) : 0};
}

std::string_view tminiparser::plaindigits(std::int32_t& value) const {
  constexpr int most = 9;
  if (!onbyte()) return {};
  const char* const from = text_ + linepos_ - 1;
  const char* const line = text_ + linelen_;
  const char* const end = line - from < most ? line : from + most;
  const char* to = from;
  std::int32_t number = 0;
  for (; to != end && is(*to, digit); ++to) number = number * 10 + (*to - '0');
  if (to == from || (to != line && !is(*to, blank | comma | mark))) return {};
  value = number;
  return {from, static_cast<std::size_t>(to - from)};
}

bool tminiparser::nextident(shortstring& text) {
  text.clear();
  if (!is(ch_, letter)) return false;
  collect([](char c) { return !is(c, letter | digit | underscore); }, text);
  return true;
}

bool tminiparser::nextidentx(shortstring& text) {
  text.clear();
  if (!is(ch_, letter)) return false;
  collect([](char c) { return !is(c, letter | digit); }, text);
  return true;
}

std::string_view tminiparser::plainident() const {
  if (!is(ch_, letter) || !onbyte() || skippedat_ != 0) return {};
  const char* const from = text_ + linepos_ - 1;
  const char* const to = std::find_if(from, text_ + linelen_,
                                      [](char c) { return !is(c, letter | digit | underscore); });
  return {from, to - from <= shortstring::maximum ? static_cast<std::size_t>(to - from) : 0};
}

bool tminiparser::nextkey(parsedkey& key) {
  for (key.dashes = 0; ch_ == '-' || ch_ == '/'; ++key.dashes) nextch();
  key.text = plainident();
  if (key.text.empty()) {
    const textplace rest = restplace();
    nextident(key.own);
    key.text = key.own;
    key.place = since(rest);
  } else {
    key.place = placeof(key.text);
    pass(key.text.size());
  }
  return !key.text.empty();
}

/// The blanks that are dropped are those at the end of the kept 255 bytes. The first of these bytes
/// is the delimiter, and the last is the last byte of the element, however long the element is.
void tminiparser::quotedindex(shortstring& text) {
  const char delimiter = ch_;
  take(text);
  std::size_t length = 0;
  char last = delimiter;
  const auto stop = [=](char c) { return is(c, mark) || c == delimiter; };
  scan(stop, [&](std::string_view run) {
    text.append(run);
    length += run.size();
    last = run.back();
  });
  nextch();
  if (length < shortstring::maximum || isblank(last)) droptrailingblanks(text);
  text.append(delimiter);
}

std::string_view tminiparser::plainindex() const {
  if ((ch_ != '\'' && ch_ != '"') || !onbyte() || skippedat_ != 0) return {};
  const char* const from = text_ + linepos_ - 1;
  const char* const end = text_ + linelen_;
  const char* const to =
      std::find_if(from + 1, end, [this](char c) { return is(c, mark) || c == ch_; });
  const std::ptrdiff_t size = to - from + 1;
  if (to == end || *to != ch_ || isblank(to[-1]) || size > shortstring::maximum) return {};
  return {from, static_cast<std::size_t>(size)};
}

bool tminiparser::nextindex(shortstring& text) {
  text.clear();
  if (!skipbl()) return false;
  if (is(ch_, letter)) return nextident(text);
  if (ch_ == '*')
    take(text);
  else if (ch_ == '\'' || ch_ == '"')
    quotedindex(text);
  return !text.empty();
}

bool tminiparser::nextinteger(std::int32_t& value) {
  shortstring token;
  return nexttoken(token) && strasintex(token, value);
}

bool tminiparser::nextdouble(double& value) {
  shortstring token;
  return nexttoken(token) && strasdoubleex(token, value);
}

void tminiparser::restofline(shortstring& text) {
  text.clear();
  if (!skipbl()) return;
  if (onbyte() && linelen_ - linepos_ < shortstring::maximum) {
    const std::string_view rest = ahead();
    text = trimright(rest);
    return pass(rest.size());
  }
  collect([](char c) { return is(c, mark); }, text);
  droptrailingblanks(text);
}

}  // namespace optxv
