#include "parameter/miniparser.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "foundation/strutilx.h"

namespace optxv {
namespace {

using namespace std::string_literals;
using lines = std::vector<std::string>;

lines contentof(const txcustomstringlist& list) {
  lines all;
  for (std::int32_t i = 0; i < list.count(); ++i) all.emplace_back(list.getname(i));
  return all;
}

// A file of the test's own, in memory, that is written anew for every use.
class scratchfile {
 public:
  ~scratchfile() { close(descriptor_); }
  std::string holding(const std::string& content) const {
    EXPECT_EQ(ftruncate(descriptor_, 0), 0);
    EXPECT_EQ(pwrite(descriptor_, content.data(), content.size(), 0),
              static_cast<ssize_t>(content.size()));
    return "/proc/self/fd/" + std::to_string(descriptor_);
  }

 private:
  int descriptor_ = memfd_create("lines", MFD_CLOEXEC);
};

// Token readers on one line ----------------------------------------------------------------------

using reading = std::function<bool(tminiparser&, shortstring&)>;
const reading token = [](auto& p, auto& text) { return p.nexttoken(text); };
const reading ident = [](auto& p, auto& text) { return p.nextident(text); };
const reading identx = [](auto& p, auto& text) { return p.nextidentx(text); };
const reading index = [](auto& p, auto& text) { return p.nextindex(text); };
const reading rest = [](auto& p, auto& text) { return p.restofline(text), true; };
const reading becomes = [](auto& p, auto&) { return p.skipbecomes(); };
const reading key = [](auto& p, auto& text) {
  std::int32_t dashes = -1;
  const bool good = p.nextkey(text, dashes);
  text.append(std::to_string(dashes));
  return good;
};
const reading integer = [](auto& p, auto& text) {
  std::int32_t value = 0;
  const bool good = p.nextinteger(value);
  text = std::string_view(std::to_string(value));
  return good;
};
const reading comma = [](auto& p, auto&) { return p.skiptochar(','); };
const reading bracket = [](auto& p, auto& text) {
  char found = 0;
  const bool good = p.skiptochars(charset("([{"), found);
  text.append(found);
  return good;
};

TEST(MiniParser, TokensOfALine) {
  constexpr char eol = tminiparser::endofline, eoi = tminiparser::endofinput;
  const struct {
    std::string line;
    reading read;
    bool good;
    std::string text;
    char ch;
  } rows[] = {
      {"  ab c", token, true, "ab", ' '},
      {"ab\tc", token, true, "ab", '\t'},
      {"a!b\"c,", token, true, "a!b\"c", ','},
      {",x", token, true, "", ','},
      {"  ! ab", token, false, "", eol},
      {" ", token, false, "", eol},
      {"ab\ncd", token, true, "ab", eol},
      {"ab\x1A"s + "cd", token, true, "ab", eoi},
      {"\"a, b\" c", token, true, "a, b", ' '},
      {"\"ab\"c\" d\"", token, true, "ab\"c\" d", eol},
      {"\"ab\"c\" d\" e", token, true, "ab\"c\" d", ' '},
      {"\"ab\"c\"", token, true, "ab\"c", eol},
      {"\"ab\"c\" ", token, false, "ab\"c\" ", eol},
      {"\"a\"\"b\",", token, true, "a\"\"b", ','},
      {"\"\"\tx", token, true, "", '\t'},
      {"\"abc", token, false, "abc", eol},
      {"\"", token, false, "", eol},
      {"\"ab\nc\"", token, false, "ab", eol},
      {"aB_9-", ident, true, "aB_9", '-'},
      {" a", ident, false, "", ' '},
      {"_a", ident, false, "", '_'},
      {"a1_b", identx, true, "a1", '_'},
      {"-/-key=", key, true, "key3", '='},
      {"--9", key, false, "2", '9'},
      {"  abc,", index, true, "abc", ','},
      {"*x", index, true, "*", 'x'},
      {"'a \"b \t' x", index, true, "'a \"b'", ' '},
      {"\"\")", index, true, "\"\"", ')'},
      {"'abc", index, true, "'abc'", eoi},
      {"5", index, false, "", '5'},
      {"\"12\",", integer, true, "12", ','},
      {"1x 2", integer, false, "1", ' '},
      {"  a ! \"b\" \t ", rest, true, "a ! \"b\"", eol},
      {"! x", rest, true, "", eol},
      {" = 5", becomes, true, "", '5'},
      {" := 5", becomes, true, "", '5'},
      {":x", becomes, false, "", 'x'},
      {"=", becomes, false, "", eol},
      {"= !x", becomes, false, "", eol},
      {"x", becomes, true, "", 'x'},
      {" ,x", comma, true, "", 'x'},
      {" x", comma, false, "", 'x'},
      {" [x", bracket, true, "[", 'x'},
      {" <x", bracket, false, "<", '<'},
  };
  for (const auto& row : rows) {
    tminiparser parser(nullptr, false, charset("!#"));
    parser.readfrompchar(row.line.c_str());
    ASSERT_TRUE(parser.nextline());
    shortstring text;
    EXPECT_EQ(row.read(parser, text), row.good) << row.line;
    EXPECT_EQ(text, row.text) << row.line;
    EXPECT_EQ(parser.ch(), row.ch) << row.line;
  }
}

TEST(MiniParser, CommentCharactersThatAreRefused) {
  for (int c = 0; c < 256; ++c) {
    const bool expected =
        c <= 32 || (c != 0 && c < 128 && (std::isalnum(c) || std::strchr("\"'+-.", c)));
    EXPECT_EQ(invalideolcommchar.has(static_cast<char>(c)), expected) << c;
  }
}

// Lines ------------------------------------------------------------------------------------------

std::string xs(int count) {
  return std::string(static_cast<std::size_t>(count), 'x');
}

TEST(MiniParser, LinesOfAFile) {
  const struct {
    std::string content;
    lines expected;
    int linenr;
  } rows[] = {
      {"", {}, 0},
      {"\n* comment\r\n\r\n*", {}, 4},
      {" \na\r\nb", {" ", "a", "b"}, 3},
      {" *a\n", {" *a"}, 1},
      {xs(1020) + "12345\nb", {xs(1020), "b"}, 2},
      {xs(255) + "\r\nb\n", {xs(255), "b"}, 2},
      {xs(254) + "\ryz\nb\n", {xs(254), "b"}, 2},  // a slice that is not full ends the line
      {xs(500) + "\r" + xs(9) + "y\n", {xs(500) + "\r" + xs(9) + "y"}, 1},
      {xs(509) + "\ryz\n", {xs(509)}, 1},
      {"a\rb\n\r\n", {"a\rb"}, 2},
  };
  scratchfile file;
  for (const auto& row : rows) {
    tminiparser parser(nullptr, false, {});
    ASSERT_EQ(parser.fileopen(file.holding(row.content)), 0);
    lines found;
    while (parser.nextline()) {
      found.emplace_back();
      for (; parser.ch() != tminiparser::endofline; parser.nextch()) found.back() += parser.ch();
    }
    EXPECT_EQ(found, row.expected);
    EXPECT_EQ(parser.linenr(), row.linenr);
    EXPECT_FALSE(parser.nextline());
    EXPECT_EQ(parser.ch(), tminiparser::endofinput);
  }
}

TEST(MiniParser, FailedOpen) {
  tminiparser parser(nullptr, false, {});
  EXPECT_EQ(parser.fileopen("/none/such"), ENOENT);
  EXPECT_EQ(parser.fileopen("/"), EISDIR);
  EXPECT_FALSE(parser.nextline());
}

TEST(MiniParser, Echo) {
  const std::string m = "\xBB";
  const struct {
    std::string line;
    lines expected;
  } rows[] = {
      {"", {""}},
      {"a b", {" a b"}},
      {xs(130), {" " + xs(130)}},
      {xs(131), {m + xs(130), m + "x"}},
      {xs(132), {m + xs(130) + m, m + "xx"}},
      {xs(260), {m + xs(130) + m, m + xs(130)}},
      {xs(261), {m + xs(130) + m, m + xs(130), m + "x"}},
      {"* " + xs(1018), {}},
  };
  scratchfile file;
  for (auto row : rows) {
    if (row.expected.empty())  // a comment line, shown whole
      for (int i = 0; i < 8; ++i)
        row.expected.push_back(m + (i == 0 ? "* " + xs(128) : xs(i == 7 ? 110 : 130)) +
                               (i == 7 ? "" : m));
    txstringlist pchar, fromfile, off;
    tminiparser(&pchar, true, {}).readfrompchar(row.line.c_str());
    EXPECT_EQ(contentof(pchar), row.expected);
    tminiparser parser(&fromfile, true, {});
    ASSERT_EQ(parser.fileopen(file.holding(row.line + "\n")), 0);
    parser.nextline();
    EXPECT_EQ(contentof(fromfile), row.expected);
    tminiparser(&off, false, {}).readfrompchar(row.line.c_str());
    EXPECT_EQ(off.count(), 0);
  }
}

// Against single steps ---------------------------------------------------------------------------

constexpr char eol = 10, eoi = 26;

bool isletter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
bool isalphanumeric(char c) {
  return isletter(c) || (c >= '0' && c <= '9');
}
bool isblank(char c) {
  return c == ' ' || c == '\t';
}
bool ismark(char c) {
  return c == eol || c == eoi;
}

void store(shortstring& text, char c) {
  if (text.length() == 255)
    text[255] = c;
  else
    text.append(c);
}

void stripblanks(shortstring& text) {
  while (!text.empty() && isblank(text.last())) text.setlength(text.length() - 1);
}

// The same reader, one character at a time: every rule is a step with nextch, nothing is bulk.
struct stepreader {
  bool file;
  std::string source;  // of a file everything, else the line
  charset comments;
  std::size_t taken = 0;
  std::array<std::string, 4> slices;
  char now = eoi;
  long linepos = 0, linelen = 0, linenr = 0;
  lines echo;

  stepreader(bool isfile, const std::string& text, const charset& comm)
      : file(isfile), source(text), comments(comm) {
    if (file) return;
    linepos = -1;
    linelen = static_cast<long>(source.size());
    flushecho();
  }

  char at(long position) const {
    if (!file) return source[static_cast<std::size_t>(position - 1)];
    const auto slice = static_cast<std::size_t>((position - 1) / 255);
    return slices[slice][static_cast<std::size_t>((position - 1) % 255)];
  }
  std::string readpiece() {
    std::string piece;
    while (piece.size() < 255 && taken < source.size() && source[taken] != '\n')
      piece += source[taken++];
    if (!piece.empty() && piece.back() == '\r') piece.pop_back();
    return piece;
  }
  void fill() {
    for (linepos = 0;;) {
      if (taken == source.size()) {
        linelen = -1;
        now = eoi;
        return;
      }
      for (auto& slice : slices) slice = readpiece();
      while (taken < source.size() && source[taken++] != '\n') continue;
      ++linenr;
      linelen = 0;
      for (const auto& slice : slices) {
        linelen += static_cast<long>(slice.size());
        if (slice.size() < 255) break;
      }
      flushecho();
      if (linelen <= 0 || at(1) == '*') continue;
      linepos = 1;
      now = at(1);
      return;
    }
  }
  void flushecho() {
    if (linelen == 0) echo.push_back("");
    std::string piece;
    for (long i = 1; i <= linelen; ++i) {
      piece += at(i);
      if (i == linelen) {
        echo.push_back((linelen <= 130 ? " " : "\xBB") + piece);
      } else if (piece.size() == 130) {
        if (linelen > i + 1) piece += '\xBB';
        echo.push_back("\xBB" + piece);
        piece.clear();
      }
    }
  }
  bool nextline() {
    if (file) {
      fill();
    } else if (linepos <= 0) {
      linepos = 1;
      now = linelen > 0 ? at(1) : eoi;
    } else {
      linelen = 0;
    }
    return linelen > 0;
  }
  void nextch() {
    if (now == eoi) return;
    if (linepos < linelen)
      now = at(++linepos);
    else if (linepos == linelen)
      ++linepos, now = eol;
    else if (file)
      fill();
    else
      now = eoi;
  }
  void skiptoeol() { linepos = linelen; }
  bool skipbl() {
    while (isblank(now)) nextch();
    if (comments.has(now))
      while (!ismark(now)) nextch();
    return !ismark(now);
  }
  bool skipbecomes() {
    const bool more = skipbl();
    if (now == '=') return nextch(), skipbl();
    if (now != ':') return more;
    nextch();
    if (now != '=') return false;
    nextch();
    return skipbl();
  }
  bool skiptochars(const charset& wanted, char& found) {
    skipbl();
    found = now;
    if (wanted.has(now)) nextch();
    return wanted.has(found);
  }
  template <class Stop>
  void collect(shortstring& text, Stop stop) {
    for (; !ismark(now) && !stop(now); nextch()) store(text, now);
  }
  bool nexttoken(shortstring& text) {
    text.clear();
    if (!skipbl()) return false;
    if (now != '"') {
      collect(text, [](char c) { return c == ',' || isblank(c); });
      return true;
    }
    nextch();
    for (bool toggle = false; !ismark(now);) {
      store(text, now);
      const bool quote = now == '"';
      nextch();
      if (!quote) continue;
      toggle = !toggle;
      if (toggle && (now == ',' || isblank(now))) break;
    }
    if (text.empty() || text.last() != '"') return false;
    text.setlength(text.length() - 1);
    return true;
  }
  bool word(shortstring& text, bool underscore) {
    text.clear();
    if (!isletter(now)) return false;
    collect(text, [=](char c) { return !isalphanumeric(c) && !(underscore && c == '_'); });
    return true;
  }
  bool nextident(shortstring& text) { return word(text, true); }
  bool nextidentx(shortstring& text) { return word(text, false); }
  bool nextkey(shortstring& text, std::int32_t& dashes) {
    for (dashes = 0; now == '-' || now == '/'; nextch()) ++dashes;
    return word(text, true);
  }
  bool nextindex(shortstring& text) {
    text.clear();
    if (!skipbl()) return false;
    if (isletter(now)) return word(text, true);
    const char first = now;
    if (first != '*' && first != '\'' && first != '"') return false;
    nextch();
    if (first == '*') return store(text, first), true;
    collect(text, [=](char c) { return c == first; });
    nextch();
    stripblanks(text);
    text = concat(first, text, first);
    return true;
  }
  void restofline(shortstring& text) {
    text.clear();
    if (!skipbl()) return;
    collect(text, [](char) { return false; });
    stripblanks(text);
  }
  bool nextinteger(std::int32_t& n) {
    shortstring text;
    return nexttoken(text) && strasintex(text, n);
  }
  bool nextdouble(double& x) {
    shortstring text;
    return nexttoken(text) && strasdoubleex(text, x);
  }
  bool skiptochar(char wanted) {
    char found;
    return skiptochars(charset({&wanted, 1}), found);
  }
  void takeuntil(const charset& stop, shortstring& text) {
    collect(text, [&](char c) { return stop.has(c); });
  }
  void skipuntil(const charset& stop) {
    shortstring unused;
    takeuntil(stop, unused);
  }
  void take(shortstring& text) {
    store(text, now);
    nextch();
  }
  char ch() const { return now; }
  bool atmark() const { return ismark(now); }
};

class randomtext {
 public:
  explicit randomtext(unsigned seed) : random(seed) {}
  int upto(int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); }
  // One to many pieces of line, with everything that the rules tell apart.
  std::string line() {
    static const lines parts = {"\"", "\"", "\"", ",", " ",    " ",    "\t", "'",  "*",   "!",
                                "=",  ":",  "-",  "/", "_",    "abc",  "Z9", "42", "1e3", "\"\"",
                                ".",  "\r", "$",  "(", "\x1A", "\xE9", "k=", ", ", "' ",  "\"x\" "};
    std::string text;
    for (int n = upto(25); n > 0; --n) text += parts[static_cast<std::size_t>(upto(29))];
    if (upto(5) == 0)
      text.insert(static_cast<std::size_t>(upto(static_cast<int>(text.size()))),
                  std::string(1, upto(1) == 0 ? '\0' : '\n'));
    if (upto(3) == 0) text += longrun();
    return text;
  }
  std::string longrun() {
    static const std::array<int, 6> lengths = {125, 250, 505, 760, 1010, 1500};
    const int length = lengths[static_cast<std::size_t>(upto(5))] + upto(12);
    std::string text(static_cast<std::size_t>(length), "xx\" "[upto(3)]);
    for (int n = upto(6); n > 0; --n)
      text[static_cast<std::size_t>(upto(length - 1))] = "\r\", \t'z"[upto(6)];
    return text;
  }
  std::string file() {
    std::string text;
    for (int n = upto(6); n > 0; --n)
      text += line() + (upto(3) == 0 ? "\r\n" : upto(20) == 0 ? "" : "\n");
    return text;
  }
  std::mt19937 random;
};

// What one call of a reader says, with all that it gave out and the character it left.
template <class Reader>
std::string told(Reader& reader, int operation) {
  shortstring text;
  std::int32_t number = 0;
  double real = 0;
  char found = 0;
  bool good = false;
  const charset stop("\"! ");
  const std::array<std::function<void()>, 19> calls = {
      [&] { good = reader.nextline(); },
      [&] { reader.nextch(); },
      [&] { reader.skiptoeol(); },
      [&] { good = reader.skipbl(); },
      [&] { good = reader.skipbecomes(); },
      [&] { good = reader.skiptochar(','); },
      [&] { good = reader.skiptochars(stop, found); },
      [&] { good = reader.nexttoken(text); },
      [&] { good = reader.nextident(text); },
      [&] { good = reader.nextidentx(text); },
      [&] { good = reader.nextkey(text, number); },
      [&] { good = reader.nextindex(text); },
      [&] { good = reader.nextinteger(number); },
      [&] { good = reader.nextdouble(real); },
      [&] { reader.restofline(text); },
      [&] { reader.takeuntil({}, text = std::string_view(xs(250))); },
      [&] { reader.takeuntil(stop, text); },
      [&] {
        if (!reader.atmark()) reader.take(text);
      },
      [&] { reader.skipuntil(charset("=")); },
  };
  calls[static_cast<std::size_t>(operation)]();
  return testing::PrintToString(
      std::tuple(good, std::string(text.view()), number, real, found, reader.ch()));
}

TEST(MiniParser, BulkScansAgreeWithSingleSteps) {
  scratchfile scratch;
  for (unsigned seed = 1; seed <= 6000; ++seed) {
    randomtext random(seed);
    const int kind = random.upto(2);
    const charset comments(random.upto(1) == 0 ? "!" : "");
    std::string text = kind == 0 ? random.file() : random.line();
    if (kind == 1) text.resize(std::min<std::size_t>(text.size(), 255));
    if (kind == 2) text = text.c_str();
    txstringlist echo;
    tminiparser reader(&echo, true, comments);
    if (kind == 0 && reader.fileopen(scratch.holding(text)) != 0) FAIL();
    if (kind == 1) reader.readfromstr(text);
    if (kind == 2) reader.readfrompchar(text.c_str());
    stepreader steps(kind == 0, text, comments);
    std::string trace;
    for (int i = 0; i < 60; ++i) {
      const int operation = i == 0 ? 0 : random.upto(7) == 0 ? 1 : random.upto(18);
      trace += std::to_string(operation) + " ";
      ASSERT_EQ(told(reader, operation), told(steps, operation))
          << trace << testing::PrintToString(text);
      ASSERT_EQ(reader.linenr(), steps.linenr) << trace;
    }
    ASSERT_EQ(contentof(echo), steps.echo) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace optxv
