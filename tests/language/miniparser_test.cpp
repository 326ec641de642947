#include "language/miniparser.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>

#include "support/optiontable.h"

namespace optxv {
namespace {

constexpr char eol = 10, eoi = 26;

std::string xs(std::size_t count) {
  return std::string(count, 'x');
}

struct stepreader;

// A token as the fields of a definition are read: from the line, where it just stands there.
bool field(tminiparser& reader, shortstring& text) {
  std::int32_t value = -7;
  reader.skipbl();
  const std::string_view digits = reader.plaindigits(value);
  const std::string_view plain = digits.empty() ? reader.plaintoken() : digits;
  EXPECT_EQ(value, digits.empty() ? -7 : strasint(digits));
  if (plain.empty()) return reader.nexttoken(text);
  text = plain;
  reader.pass(plain.size());
  return true;
}
bool field(stepreader& reader, shortstring& text);

// What one call of a reader gives: + or -, the texts it gave, and after ^ the character it left.
template <class Reader>
std::string told(Reader& reader, unsigned number) {
  shortstring text;
  bool good = false;
  if (number == 0) good = reader.nextline();
  if (number == 1) good = reader.skipbl();
  if (number == 2) good = reader.nexttoken(text);
  if (number == 3) good = reader.nextident(text);
  if (number == 4) reader.restofline(text);
  if (number == 5) reader.skipuntil({});
  if (number == 6) reader.skipuntil(charset("\"! ["));
  if (number == 7) reader.nextch();
  if (number == 8) good = field(reader, text);
  return (good ? "+" : "-") + str(text) + "^" + reader.ch();
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

constexpr std::string_view word = "_0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
const charset letters(word.substr(11)), wordbytes(word), blanks(" \t"), ends(", \t");

// The reader with every scan done one character at a time.
struct stepreader : tminiparser {
  using tminiparser::tminiparser;

  void take(shortstring& text) {
    if (text.length() == 255) text.setlength(254);
    text.append(ch());
    nextch();
  }
  void takeuntil(const charset& stop, shortstring& text) {
    while (!atmark() && !stop.has(ch())) take(text);
  }
  void skipuntil(const charset& stop) {
    while (!atmark() && !stop.has(ch())) nextch();
  }
  bool skipbl() {
    while (blanks.has(ch())) nextch();
    if (eolcommset().has(ch())) skipuntil({});
    return !atmark();
  }
  bool nexttoken(shortstring& text) {
    text.clear();
    if (!skipbl()) return false;
    if (ch() != '"') return takeuntil(ends, text), true;
    nextch();
    for (bool odd = false, quote = false; !atmark() && !(quote && odd && ends.has(ch()));) {
      odd = odd != (quote = ch() == '"');
      take(text);
    }
    if (text.empty() || text.last() != '"') return false;
    return text.setlength(text.length() - 1), true;
  }
  bool nextident(shortstring& text) {
    text.clear();
    if (!letters.has(ch())) return false;
    while (wordbytes.has(ch())) take(text);
    return true;
  }
  void restofline(shortstring& text) {
    text.clear();
    if (skipbl()) takeuntil({}, text);
    while (!text.empty() && blanks.has(text.last())) text.setlength(text.length() - 1);
  }
};

bool field(stepreader& reader, shortstring& text) {
  return reader.nexttoken(text);
}

// Characters of every kind that the rules distinguish, sometimes many of one kind.
std::string randomline(std::mt19937& random) {
  using namespace std::string_view_literals;
  constexpr std::string_view parts = "\"\"\"\"\",,    \t''*!=:-/_abcZ9994.\r$\n\x1A\xE9\0"sv;
  std::string text;
  for (std::size_t n = random() % 36; n > 0; --n) text += parts[random() % parts.size()];
  if (random() % 4 == 0) text += " " + std::string(8 + random() % 4, '9') + ",\t;"[random() % 3];
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
    const auto kind = random() % 4;
    const charset comments(random() % 2 == 0 ? "!" : "");
    std::string text = randomline(random);
    for (std::size_t n = random() % 6; kind % 3 == 0 && n > 0; --n)
      text += (random() % 4 == 0 ? "\r\n" : "\n") + randomline(random);
    scratch.put(text);
    tminiparser reader(nullptr, false, comments);
    stepreader steps(nullptr, false, comments);
    for (tminiparser* opened : {&reader, static_cast<tminiparser*>(&steps)}) {
      if (kind == 0 && opened->fileopen(scratch.name()) != 0) FAIL();
      if (kind == 1) opened->readfromstr(text);
      if (kind == 2) opened->readfrompchar(text.c_str());
      if (kind == 3) opened->textopen(text);
    }
    std::string trace;
    for (int i = 0; i < 60; ++i) {
      const auto call = static_cast<unsigned>(i == 0 ? 0 : random() % 9);
      trace += std::to_string(call) + " ";
      ASSERT_EQ(told(reader, call), told(steps, call)) << trace << testing::PrintToString(text);
      ASSERT_EQ(reader.linenr(), steps.linenr()) << trace;
    }
  }
}

TEST(MiniParser, IndicesLoseBlanksAtTheirEnd) {
  const std::string x(200, 'x'), blanks(60, ' ');
  const std::pair<std::string, std::string> rows[] = {
      {"'a b  '", "'a b'"},
      {"'" + x + blanks + "'", "'" + x + "'"},  // cut, among blanks
      {"'" + x + blanks.substr(6) + "'", "'" + x + "'"},
      {"'" + x + blanks.substr(6) + "y'", "'" + x + blanks.substr(6)},
      {"'" + x + blanks + "y'", "'" + x + blanks.substr(6)}};
  for (const auto& [text, index] : rows) {
    tminiparser reader(nullptr, false, {});
    reader.readfrompchar(text.c_str());
    shortstring found;
    EXPECT_TRUE(reader.nextline() && reader.nextindex(found)) << text;
    EXPECT_EQ(found, index);
  }
}

}  // namespace
}  // namespace optxv
