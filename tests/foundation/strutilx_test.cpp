#include "foundation/strutilx.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <string>
#include <tuple>

namespace optxv {
namespace {

using namespace std::string_view_literals;
using text = std::string_view;
using std::tuple;

constexpr std::int32_t maxint = 2147483647;
constexpr std::int32_t minint = -2147483647 - 1;

TEST(BoundedText, PartsDeletionsAndInsertions) {
  const tuple<int, int, text, text> parts[] = {
      {2, 3, "bcd", "aef"}, {5, 300, "ef", "abcd"}, {7, 1, "", "abcdef"}, {2, -9, "", "abcdef"}};
  for (const auto& [start, count, part, rest] : parts) {
    EXPECT_EQ(copy("abcdef", start, count), part);
    boundedstring<6> s("abcdef");
    delete_(s, start, count);
    EXPECT_EQ(s, rest) << start << ' ' << count;
  }
  boundedstring<5> s("abc");
  insert("xy", s, 2);
  EXPECT_EQ(s, "axybc");
  insert(s, s, 2);
  EXPECT_EQ(s, "aaxyb") << "of itself";
  EXPECT_EQ(pos("cd", "abcdcd") * 10 + pos("", ""), 31);
}

TEST(Comparison, DifferencesOfBytesThenOfLengths) {
  const tuple<text, text, int, int> rows[] = {
      {"abc", "ABC", 32, 0}, {"abc", "abd", -1, -1}, {"", "abc", -3, -3},
      {"", "", 0, 0},        {"a\0b"sv, "a", 2, 2},  {"\xE4", "\xC4", 0x20, 0x20},
      {"z", "[", 31, -1},    {"a", "_", 2, -30},     {"a", "\xE4", 'a' - 0xE4, 'A' - 0xE4}};
  for (const auto& [a, b, exact, folded] : rows)
    EXPECT_EQ(tuple(strcmp(a, b), strucmp(a, b)), tuple(exact, folded)) << a << ' ' << b;
}

TEST(Comparison, EveryPairOfBytesAtEveryPlace) {
  const auto capital = [](int c) { return c > 96 && c < 123 ? c - 32 : c; };
  EXPECT_FALSE(struequal("a", "ab"));
  for (const std::size_t length : {1, 7, 8, 9, 21})
    for (std::size_t place = 0; place < length; ++place)
      for (int pair = 0; pair < 256 * 256; ++pair) {
        std::string a(length, 'q'), b(length, 'Q');
        a[place] = static_cast<char>(pair % 256);
        b[place] = static_cast<char>(pair / 256);
        ASSERT_EQ(struequal(a, b), capital(pair % 256) == capital(pair / 256))
            << length << ' ' << place << ' ' << pair;
      }
}

TEST(Comparison, NumbersAtTheEnd) {
  const tuple<text, text, int> rows[] = {{"x2", "x10", -1}, {"X2", "x2", 0}, {"ab1", "abc1", 0},
                                         {"abc", "ab", 0},  {"b1", "a2", 1}, {"x", "x1", -1},
                                         {"x02", "x2", 1},  {"9", "10", -1}, {"a1b3", "a1B12", -1},
                                         {"", "", 0}};
  const auto sign = [](int n) { return (n > 0) - (n < 0); };
  for (const auto& [a, b, order] : rows)
    EXPECT_EQ(tuple(sign(strucmpnum(a, b)), sign(strucmpnum(b, a))), tuple(order, -order)) << a;
}

TEST(Comparison, HeapStringsAndCharacters) {
  unsigned char nothing[] = {0, 0}, lower[] = "\2ab", upper[] = "\2AB";
  const tuple<pstring, pstring, int, bool> rows[] = {
      {nullptr, nullptr, 0, true}, {nullptr, nothing, -1, false}, {nothing, nothing, 0, true},
      {lower, nullptr, 1, false},  {lower, lower, 0, true},       {lower, upper, 1, true}};
  const auto sign = [](int n) { return (n > 0) - (n < 0); };
  for (const auto& [a, b, order, folded] : rows) {
    EXPECT_EQ(sign(pstrcmp(a, b)), order);
    EXPECT_EQ(pstrequal(a, b), order == 0);
    EXPECT_EQ(pstrucmp(a, b) == 0, folded);
    EXPECT_EQ(pstruequal(a, b), folded);
  }
  const std::pair<text, int> before_b[] = {{"", -1}, {"a", -1}, {"b", 0}, {"bb", 1}, {"d", 2}};
  for (const auto& [s, order] : before_b) EXPECT_EQ(_Q9stccmp(s, 'b'), order) << s;
}

TEST(Search, PositionsUpAndDown) {
  // From a position: the first and the last b, then b or B.
  const tuple<text, int, int, int, int, int> rows[] = {
      {"aBcbBd", 1, 4, 0, 2, 0}, {"aBcbBd", 4, 4, 4, 4, 4}, {"aBcbBd", 5, 0, 4, 5, 5},
      {"aBcbBd", 9, 0, 4, 0, 5}, {"bcB", -1, 1, 0, 1, 0},   {"", 1, 0, 0, 0, 0}};
  for (const auto& [s, from, up, down, anyup, anydown] : rows)
    EXPECT_EQ(tuple(lchpossp('b', s, from), rchpossp('b', s, from), lchupossp('b', s, from),
                    rchupossp('b', s, from)),
              tuple(up, down, anyup, anydown))
        << s << ' ' << from;
  EXPECT_EQ(
      tuple(lchpos('b', "aBbb"), rchpos('b', "bbBa"), lchupos('b', "aBb"), rchupos('B', "bbA"),
            lchsetpos(charset("xb"), "aBbx"), rchsetpos(charset("xb"), "bxBa")),
      tuple(3, 2, 2, 2, 3, 2));
  const tuple<text, int, int> pieces[] = {{"cd", 1, 3}, {"cd", 4, 5}, {"cd", 6, 0},
                                          {"cd", 0, 0}, {"", 1, 0},   {"cd", 99, 0}};
  for (const auto& [piece, from, position] : pieces)
    EXPECT_EQ(lstrpossp(piece, "abcdcd", from), position) << piece << ' ' << from;
  EXPECT_EQ(lstrpos("b", "abb"), 2);
}

TEST(Change, CaseSetsBlanksAndTexts) {
  EXPECT_EQ(deletechar(charset(" -"), " a-b -"), "ab");
  EXPECT_EQ(replacechar(charset(" -"), '_', " a-b"), "_a_b");
  EXPECT_EQ(uppercase("az{`\xE4 Q"), "AZ{`\xE4 Q");
  EXPECT_EQ(lowercase("AZ[@\xC4 q"), "az[@\xC4 q");
  EXPECT_EQ(trimright("\ta b \t"), "\ta b");
  EXPECT_EQ(trim("\ta\r\n \t"), "a\r\n");
  const std::string full(255, 'a'), doubled(255, 'b');
  const tuple<text, text, text, text> rows[] = {{"aa", "a", "aaaa", "aa"},
                                                {"a", "aba", "aca", "abacaba"},
                                                {"", "x", "abc", "abc"},
                                                {"b", "", "abcb", "ac"},
                                                {"a", "bb", full, doubled}};
  for (const auto& [oldtext, newtext, before, after] : rows)
    EXPECT_EQ(replacestr(oldtext, newtext, before).view(), after) << before;
}

TEST(Tokens, TakenOneByOne) {
  // Each token with the position after it.
  const std::pair<text, text> rows[] = {{"''b", "[]3 [b]4 []4 "},
                                        {"'it\"s' x", "[it\"s]7 [x]9 []9 "},
                                        {"  \"two words\"  next", "[two words]14 [next]20 []20 "},
                                        {"\"open end ", "[open end ]11 []11 "},
                                        {"a'b c'", "[a'b]5 [c']7 []7 "}};
  for (const auto& [s, expected] : rows) {
    std::string tokens;
    for (int p = 1, last = 0; last != p;) {
      last = p;
      tokens.append("[").append(extracttoken(s, p).view());
      tokens += ']' + std::to_string(p) + ' ';
    }
    EXPECT_EQ(tokens, expected) << s;
  }
  for (const int outside : {0, -1, 4, minint}) {
    int p = outside;
    EXPECT_EQ(extracttoken("abc", p).view(), "") << outside;
    EXPECT_EQ(p, outside) << "the position stays";
  }
}

TEST(IntegerText, PlainAndGrouped) {
  const tuple<std::int32_t, text, text, text> rows[] = {
      {1234567, "1234567", "1,234,567", "1234567"},
      {maxint, "2147483647", "2,147,483,647", "maxint"},
      {minint, "-2147483648", "-.,/,),,(-,*,(", "minint"}};
  for (const auto& [n, plain, nice, symbolic] : rows) {
    EXPECT_EQ(tuple(inttostr(n), inttonicestr(n), inttostrex(n)), tuple(plain, nice, symbolic));
    EXPECT_EQ(integerwidth(n), static_cast<int>(plain.size()));
    EXPECT_EQ(int64tonicestr(n), n == minint ? "-2,147,483,648" : nice);
  }
  constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(int64tonicestrw(-(lowest + 1), 27), "  9,223,372,036,854,775,807");
  EXPECT_EQ(int64tonicestr(lowest), "-',..-,-).,0-*,(+,,))+,(0(");
}

constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(RealText, ShortestOfFifteenDigits) {
  const tuple<double, text> rows[] = {
      {1e15, "1E15"},      {1234.5678, "1234.5678"}, {2.0 / 3, "0.666666666666667"},
      {0.1 + 0.2, "0.3"},  {0.0001, "0.0001"},       {999999999999999.9, "1000000000000000"},
      {-0.0, "0"},         {-1.25e-7, "-1.25E-7"},   {0.00009999999999999999, "1E-4"},
      {-infinity, "-INF"}, {std::nan(""), "NAN"},    {5e-324, "4.94065645841247E-324"}};
  for (const auto& [x, shown] : rows) EXPECT_EQ(dbltostr(x), shown);
}

TEST(TextToNumber, Integers) {
  // strasint; strasintex; strasintex2
  const tuple<text, int, bool, int, bool, int> rows[] = {
      {" 12", 12, true, 12, true, 12},  {"12 ", 0, false, 12, false, 0},
      {"", 0, false, 0, false, 0},      {"MININT", 0, true, minint, true, minint},
      {"1e3", 0, false, 1, true, 1000}, {"2147483648", maxint, true, maxint, true, maxint},
      {"2.5", 0, false, 2, false, 0},   {"-2147483648.0", 0, false, minint, true, minint},
      {".", 0, false, 0, true, 0},      {"2147483648.0", 0, false, maxint, false, 0}};
  for (const auto& [s, plain, good, number, good2, number2] : rows) {
    std::int32_t n = 99, n2 = 99;
    const bool is = strasintex(s, n), is2 = strasintex2(s, n2);
    EXPECT_EQ(tuple(strasint(s), is, n, is2, n2), tuple(plain, good, number, good2, number2)) << s;
  }
}

TEST(TextToNumber, BeyondTheLimits) {
  const std::pair<text, bool> rows[] = {{"2147483647", false},   {"2147483648", true},
                                        {"-2147483648", false},  {"-2147483649", true},
                                        {"99999999999x", false}, {"maxint", false}};
  for (const auto& [s, beyond] : rows) EXPECT_EQ(saturatedinteger(s), beyond) << s;
}

TEST(TextToNumber, Reals) {
  const tuple<text, bool, double> rows[] = {
      {"1D-3", true, 0.001},
      {"1 ", false, 1},
      {"MaxDouble", true, std::bit_cast<double>(0x7E031CFD3999F7B0u)},
      {"Eps", true, std::bit_cast<double>(0x3BC79CA10C924223u)}};
  for (const auto& [s, good, number] : rows) {
    double x = 99;
    EXPECT_EQ(tuple(strasdoubleex(s, x), x), tuple(good, number)) << s;
  }
}

}  // namespace
}  // namespace optxv
