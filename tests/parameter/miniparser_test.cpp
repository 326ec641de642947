#include "parameter/miniparser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <random>
#include <string>

#include "foundation/strutilx.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr char eol = 10, eoi = 26;

lines contentof(const txcustomstringlist& list) {
  lines all;
  for (std::int32_t i = 0; i < list.count(); ++i) all.emplace_back(list.getname(i));
  return all;
}

std::string xs(std::size_t count) {
  return std::string(count, 'x');
}

enum call { LINE, CH, TOEOL, BLANK, BECOMES, COMMA, CHARS, TOKEN, IDENT, IDENTX, KEY, INDEX, INT };
constexpr int allcalls = 19;  // the others have no name

// What one call of a reader says: + or -, what it gave out, and behind ^ the character it left.
template <class Reader>
std::string told(Reader& reader, int number) {
  shortstring text;
  std::int32_t integer = 0;
  double real = 0;
  char found = 0;
  bool good = false;
  const charset stop("\"! [");
  const std::function<void()> calls[allcalls] = {
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
      [&] { good = reader.nextkey(text, integer); },
      [&] { good = reader.nextindex(text); },
      [&] { good = reader.nextinteger(integer); },
      [&] { good = reader.nextdouble(real); },
      [&] { reader.restofline(text); },
      [&] { reader.takeuntil({}, text = std::string_view(xs(250))); },
      [&] { reader.takeuntil(stop, text); },
      [&] { reader.atmark() ? void() : reader.take(text); },
      [&] { reader.skipuntil(charset("=")); }};
  calls[number]();
  std::string all = (good ? "+" : "-") + str(text);
  if (integer != 0) all += std::to_string(integer);
  if (real != 0) all += str(dbltostr(real));
  if (found != 0) all += found;
  return all + "^" + reader.ch();
}

TEST(MiniParser, TokensOfALine) {
  const struct {
    std::string line;
    call read;
    std::string expected;
  } rows[] = {{"a!b\"c,", TOKEN, "+a!b\"c^,"},
              {"  ! ab", TOKEN, "-^\n"},
              {"ab\x1A,", TOKEN, "+ab^\x1A"},
              {"\"a, b\"\tc", TOKEN, "+a, b^\t"},
              {"\"ab\"c\" d\"", TOKEN, "+ab\"c\" d^\n"},
              {"\"ab\"c\"", TOKEN, "+ab\"c^\n"},
              {"\"ab\"c\" ", TOKEN, "-ab\"c\" ^\n"},
              {"\"", TOKEN, "-^\n"},
              {"aB_9-", IDENT, "+aB_9^-"},
              {"a1_b", IDENTX, "+a1^_"},
              {"-/-key=", KEY, "+key3^="},
              {"*x", INDEX, "+*^x"},
              {"'a \"b \t' x", INDEX, "+'a \"b'^ "},
              {"'abc", INDEX, "+'abc'^\x1A"},
              {"\"12\",", INT, "+12^,"},
              {" := 5", BECOMES, "+^5"},
              {":x", BECOMES, "-^x"},
              {"= !x", BECOMES, "-^\n"},
              {" [x", CHARS, "+[^x"}};
  for (const auto& row : rows) {
    tminiparser parser(nullptr, false, charset("!#"));
    parser.readfrompchar(row.line.c_str());
    ASSERT_TRUE(parser.nextline());
    EXPECT_EQ(told(parser, row.read), row.expected) << row.line;
  }
  for (int c = 0; c < 256; ++c)
    EXPECT_EQ(invalideolcommchar.has(static_cast<char>(c)),
              c <= 32 || (c < 128 && (std::isalnum(c) || std::strchr("\"'+-.", c))))
        << c;
}

TEST(MiniParser, LinesOfAFile) {
  const struct {
    std::string content;
    lines expected;
    int linenr;
  } rows[] = {{"\n* comment\r\n\r\n*", {}, 4},
              {" \na\r\nb", {" ", "a", "b"}, 3},
              {" *a\n", {" *a"}, 1},
              {xs(1020) + "12345\nb", {xs(1020), "b"}, 2},
              {xs(255) + "\r\nb\n", {xs(255), "b"}, 2},
              {xs(254) + "\ryz\nb\n", {xs(254), "b"}, 2},  // a piece that is not full ends the line
              {xs(500) + "\r" + xs(9) + "y\n", {xs(500) + "\r" + xs(9) + "y"}, 1}};
  for (const auto& row : rows) {
    scratchfile file;
    file.put(row.content);
    tminiparser parser(nullptr, false, {});
    ASSERT_EQ(parser.fileopen(file.name()), 0);
    lines found;
    while (parser.nextline())
      for (found.emplace_back(); parser.ch() != eol; parser.nextch()) found.back() += parser.ch();
    EXPECT_EQ(found, row.expected);
    EXPECT_EQ(parser.linenr(), row.linenr);
    EXPECT_FALSE(parser.nextline());
    EXPECT_EQ(parser.ch(), eoi);
  }
  tminiparser parser(nullptr, false, {});
  EXPECT_EQ(parser.fileopen("/none/such"), ENOENT);
  EXPECT_EQ(parser.fileopen("/"), EISDIR);
  EXPECT_FALSE(parser.nextline());
}

TEST(MiniParser, Echo) {
  const std::string m = "\xBB";
  const std::pair<std::string, lines> rows[] = {
      {"", {""}},
      {xs(130), {" " + xs(130)}},
      {xs(131), {m + xs(130), m + "x"}},
      {xs(132), {m + xs(130) + m, m + "xx"}},
      {"* " + xs(259), {m + "* " + xs(128) + m, m + xs(130), m + "x"}}};  // a remark as well
  for (const auto& [line, expected] : rows) {
    txstringlist echo, off;
    tminiparser(&echo, true, {}).readfrompchar(line.c_str());
    EXPECT_EQ(contentof(echo), expected);
    tminiparser(&off, false, {}).readfrompchar(line.c_str());
    EXPECT_EQ(off.count(), 0);
  }
}

// Against single steps ---------------------------------------------------------------------------

const charset letters("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"), blanks(" \t");

// The reader with every scan done one character at a time.
struct stepreader : tminiparser {
  using tminiparser::tminiparser;

  void take(shortstring& text) {
    if (text.length() == 255)
      text[255] = ch();
    else
      text.append(ch());
    nextch();
  }
  template <class Stop>
  void collect(shortstring& text, Stop stop) {
    while (!atmark() && !stop(ch())) take(text);
  }
  void takeuntil(const charset& stop, shortstring& text) {
    collect(text, [&](char c) { return stop.has(c); });
  }
  void skipuntil(const charset& stop) {
    while (!atmark() && !stop.has(ch())) nextch();
  }
  bool skipbl() {
    while (blanks.has(ch())) nextch();
    if (comments.has(ch())) skipuntil({});
    return !atmark();
  }
  bool nexttoken(shortstring& text) {
    text.clear();
    if (!skipbl()) return false;
    if (ch() != '"') return collect(text, [](char c) { return c == ',' || blanks.has(c); }), true;
    nextch();
    for (bool odd = false; !atmark();) {
      const bool quote = ch() == '"';
      take(text);
      odd = odd != quote;
      if (quote && odd && (ch() == ',' || blanks.has(ch()))) break;
    }
    if (text.empty() || text.last() != '"') return false;
    return text.setlength(text.length() - 1), true;
  }
  bool word(shortstring& text, std::string_view rest) {
    text.clear();
    if (!letters.has(ch())) return false;
    collect(text, [=](char c) { return !letters.has(c) && rest.find(c) == rest.npos; });
    return true;
  }
  bool nextident(shortstring& text) { return word(text, "0123456789_"); }
  bool nextidentx(shortstring& text) { return word(text, "0123456789"); }
  void restofline(shortstring& text) {
    text.clear();
    if (skipbl()) takeuntil({}, text);
    while (!text.empty() && blanks.has(text.last())) text.setlength(text.length() - 1);
  }

  charset comments;
};

// Pieces of line with everything that the rules tell apart, now and then long.
std::string randomline(std::mt19937& random) {
  static const lines parts = {
      "\"", "\"", "\"", ",",  " ",    " ",    "\t", "'",  "*",      "!",
      "=",  ":",  "-",  "/",  "_",    "abc",  "Z9", "42", "1e3",    "\"\"",
      ".",  "\r", "$",  "\n", "\x1A", "\xE9", ", ", "' ", "\"x\" ", std::string(1, '\0')};
  std::string text;
  for (std::size_t n = random() % 26; n > 0; --n) text += parts[random() % parts.size()];
  if (random() % 4 != 0) return text;
  static const std::size_t lengths[] = {125, 250, 505, 760, 1010, 1500};
  std::string run(lengths[random() % 6] + random() % 12, "xx\" "[random() % 4]);
  for (std::size_t n = random() % 7; n > 0; --n)
    run[random() % run.size()] = "\r\", \t'z"[random() % 7];
  return text + run;
}

TEST(MiniParser, BulkScansAgreeWithSingleSteps) {
  scratchfile scratch;
  for (unsigned seed = 1; seed <= 2500; ++seed) {
    std::mt19937 random(seed);
    const auto kind = random() % 3;
    const charset comments(random() % 2 == 0 ? "!" : "");
    std::string text = randomline(random);
    for (std::size_t n = random() % 6; kind == 0 && n > 0; --n)
      text += (random() % 4 == 0 ? "\r\n" : "\n") + randomline(random);
    scratch.put(text);
    tminiparser reader(nullptr, false, comments);
    stepreader steps(nullptr, false, comments);
    steps.comments = comments;
    for (tminiparser* opened : {&reader, static_cast<tminiparser*>(&steps)}) {
      if (kind == 0 && opened->fileopen(scratch.name()) != 0) FAIL();
      if (kind == 1) opened->readfromstr(text);
      if (kind == 2) opened->readfrompchar(text.c_str());
    }
    std::string trace;
    for (int i = 0; i < 60; ++i) {
      const auto call = static_cast<int>(i == 0 ? 0 : random() % 8 == 0 ? 1 : random() % allcalls);
      trace += std::to_string(call) + " ";
      ASSERT_EQ(told(reader, call), told(steps, call)) << trace << testing::PrintToString(text);
      ASSERT_EQ(reader.linenr(), steps.linenr()) << trace;
    }
  }
}

}  // namespace
}  // namespace optxv
