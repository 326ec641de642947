#include "foundation/strutilx.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "foundation/runtime.h"

namespace optxv {
namespace {

using namespace std::string_view_literals;

constexpr std::int32_t maxint = 2147483647;
constexpr std::int32_t minint = -2147483647 - 1;

TEST(BoundedText, PartsDeletionsAndInsertions) {
  EXPECT_EQ(copy("abcdef", 2, 3), "bcd");
  EXPECT_EQ(copy("abcdef", 5, 300), "ef");
  EXPECT_EQ(copy("abcdef", 7, 1), "");
  EXPECT_EQ(copy("abcdef", 1, -1), "");
  EXPECT_EQ(pos("cd", "abcdcd"), 3);
  EXPECT_EQ(pos("x", "abc"), 0);
  EXPECT_EQ(pos("", ""), 1);

  const struct {
    int start, count;
    std::string_view left;
  } deletions[] = {{1, 2, "cde"},   {4, 300, "abc"}, {2, 0, "abcde"}, {2, -9, "abcde"},
                   {6, 1, "abcde"}, {5, 1, "abcd"},  {1, 5, ""}};
  for (const auto& row : deletions) {
    boundedstring<5> s("abcde");
    delete_(s, row.start, row.count);
    EXPECT_EQ(s, row.left) << row.start << ' ' << row.count;
  }
  const struct {
    int position;
    std::string_view result;
  } insertions[] = {{-3, "xyabc"}, {1, "xyabc"}, {2, "axybc"}, {4, "abcxy"}, {99, "abcxy"}};
  for (const auto& row : insertions) {
    boundedstring<5> s("abc");
    insert("xy", s, row.position);
    EXPECT_EQ(s, row.result) << row.position;
    insert(s, s, 2);
    EXPECT_EQ(s.view(), std::string(row.result, 0, 1) + std::string(row.result, 0, 4));
  }
}

TEST(Comparison, DifferencesOfBytesThenOfLengths) {
  const struct {
    std::string_view a, b;
    int exact, folded;
  } rows[] = {
      {"abc", "ABC", 32, 0},
      {"abc", "abd", -1, -1},
      {"abc", "ab", 1, 1},
      {"", "abc", -3, -3},
      {"", "", 0, 0},
      {"a", "_", 2, 'A' - '_'},
      {"a\0b"sv, "a"sv, 2, 2},
      {"\xE4", "\xC4", 0x20, 0x20},
      {"a", "\xE4", 'a' - 0xE4, 'A' - 0xE4},
      {"aB", "Ab", 32, 0},
      {"z", "[", 'z' - '[', 'Z' - '['},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(strcmp(row.a, row.b), row.exact) << row.a << ' ' << row.b;
    EXPECT_EQ(strcmp(row.b, row.a), -row.exact);
    EXPECT_EQ(strucmp(row.a, row.b), row.folded) << row.a << ' ' << row.b;
    EXPECT_EQ(strequal(row.a, row.b), row.exact == 0);
    EXPECT_EQ(struequal(row.a, row.b), row.folded == 0) << row.a << ' ' << row.b;
  }
  EXPECT_EQ(_Q9stccmp("", 'a'), -1);
  EXPECT_EQ(_Q9stccmp("c", 'a'), 2);
  EXPECT_EQ(_Q9stccmp("a", 'a'), 0);
  EXPECT_EQ(_Q9stccmp("ab", 'a'), 1);
  EXPECT_EQ(_Q9stccmp("ab", 'c'), -2);
}

/// One byte after the other, as slowly and plainly as can be.
bool sameletters(std::string_view a, std::string_view b) {
  const auto capital = [](unsigned char c) { return c > 96 && c < 123 ? c - 32 : c; };
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (capital(static_cast<unsigned char>(a[i])) != capital(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

TEST(Comparison, EveryPairOfBytesAtEveryPlace) {
  for (const std::size_t length : {1, 3, 7, 8, 9, 16, 21})
    for (std::size_t place = 0; place < length; ++place)
      for (int x = 0; x < 256; ++x)
        for (int y = 0; y < 256; ++y) {
          std::string a(length, 'q');
          std::string b(length, 'Q');
          a[place] = static_cast<char>(x);
          b[place] = static_cast<char>(y);
          ASSERT_EQ(struequal(a, b), sameletters(a, b))
              << length << ' ' << place << ' ' << x << ' ' << y;
        }
}

TEST(Comparison, NumbersAtTheEnd) {
  const struct {
    std::string_view a, b;
    int sign;
  } rows[] = {
      {"x2", "x10", -1}, {"X2", "x2", 0},       {"ab1", "abc1", 0}, {"", "", 0},
      {"abc", "ab", 0},  {"9", "10", -1},       {"b1", "a2", 1},    {"x", "x1", -1},
      {"x02", "x2", 1},  {"a1b3", "a1B12", -1}, {"x1y", "x2y", -1},
  };
  for (const auto& row : rows) {
    const auto sign = [](int n) { return (n > 0) - (n < 0); };
    EXPECT_EQ(sign(strucmpnum(row.a, row.b)), row.sign) << row.a << ' ' << row.b;
    EXPECT_EQ(sign(strucmpnum(row.b, row.a)), -row.sign) << row.a << ' ' << row.b;
  }
}

TEST(HeapStrings, ExactSizeAndNil) {
  const std::int64_t bytes = allocmemsize();
  pstring p = newstring("Abc");
  EXPECT_EQ(allocmemsize() - bytes, 4);
  EXPECT_EQ(getstring(p), "Abc");
  strassign(p, getstring(p).substr(1));
  EXPECT_EQ(getstring(p), "bc") << "a part of the text itself";
  strassign(p, std::string(300, 'x'));
  EXPECT_EQ(getstring(p).size(), 255u);
  strassign(p, "");
  EXPECT_EQ(p, nullptr);
  EXPECT_EQ(getstring(p), "");
  EXPECT_EQ(newstring(""), nullptr);
  disposestring(nullptr);
  {
    heapstring a("one");
    heapstring b = std::move(a);
    EXPECT_TRUE(a.isnil());  // NOLINT: a moved string is nil
    EXPECT_EQ(b.view(), "one");
    b = "two"sv;
    a = std::move(b);
    EXPECT_EQ(a.view(), "two");
    EXPECT_EQ(sizeof a, sizeof(void*));
  }
  EXPECT_EQ(allocmemsize(), bytes);
}

TEST(HeapStrings, NilIsBelowAndNotEqualToARealEmptyString) {
  const unsigned char empty[] = {0};
  const unsigned char lower[] = {1, 'a'};
  const unsigned char upper[] = {1, 'A'};
  const struct {
    const unsigned char *p, *q;
    int exact, folded;
  } rows[] = {{nullptr, nullptr, 0, 0}, {nullptr, empty, -1, -1}, {lower, nullptr, 1, 1},
              {lower, upper, 32, 0},    {empty, empty, 0, 0},     {empty, lower, -1, -1}};
  for (const auto& row : rows) {
    EXPECT_EQ(pstrcmp(row.p, row.q), row.exact);
    EXPECT_EQ(pstrucmp(row.p, row.q), row.folded);
    EXPECT_EQ(pstrequal(row.p, row.q), row.exact == 0);
    EXPECT_EQ(pstruequal(row.p, row.q), row.folded == 0);
  }
}

TEST(Search, CharactersFromBothEnds) {
  const struct {
    char ch;
    std::string_view s;
    int sp;
    int left, right, leftu, rightu;
  } rows[] = {
      {'a', "abAcab", 0, 1, 0, 1, 0},  {'a', "abAcab", 2, 5, 1, 3, 1},
      {'a', "abAcab", 6, 0, 5, 0, 5},  {'A', "abAcab", -7, 3, 0, 1, 0},
      {'a', "abAcab", 99, 0, 5, 0, 5}, {'x', "abAcab", 1, 0, 0, 0, 0},
      {'a', "", 1, 0, 0, 0, 0},        {'a', "aaa", 2, 2, 2, 2, 2},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(lchpossp(row.ch, row.s, row.sp), row.left) << row.s << row.sp;
    EXPECT_EQ(rchpossp(row.ch, row.s, row.sp), row.right) << row.s << row.sp;
    EXPECT_EQ(lchupossp(row.ch, row.s, row.sp), row.leftu) << row.s << row.sp;
    EXPECT_EQ(rchupossp(row.ch, row.s, row.sp), row.rightu) << row.s << row.sp;
  }
  EXPECT_EQ(lchpos('b', "abAcab"), 2);
  EXPECT_EQ(rchpos('b', "abAcab"), 6);
  EXPECT_EQ(lchupos('B', "abAcab"), 2);
  EXPECT_EQ(rchupos('B', "abAcab"), 6);
  EXPECT_EQ(lchsetpos(charset("xcA"), "abAcab"), 3);
  EXPECT_EQ(rchsetpos(charset("xcA"), "abAcab"), 4);
  EXPECT_EQ(lchsetpos(charset(), "abc"), 0);
}

TEST(Search, Texts) {
  const struct {
    std::string_view pat, s;
    int sp, position;
  } rows[] = {{"ab", "abcab", 1, 1}, {"ab", "abcab", 2, 4}, {"ab", "abcab", 5, 0},
              {"", "abc", 1, 0},     {"a", "", 1, 0},       {"ab", "abcab", 0, 0},
              {"AB", "abcab", 1, 0}, {"abc", "ab", 1, 0},   {"b", "ab", maxint, 0},
              {"aa", "aaa", 2, 2}};
  for (const auto& row : rows)
    EXPECT_EQ(lstrpossp(row.pat, row.s, row.sp), row.position) << row.pat << row.s << row.sp;
  EXPECT_EQ(lstrpos("ca", "abcab"), 3);
}

TEST(Change, CaseAndSets) {
  EXPECT_EQ(uppercase("az{`\xE4 Q"), "AZ{`\xE4 Q");
  EXPECT_EQ(lowercase("AZ[@\xC4 q"), "az[@\xC4 q");
  EXPECT_EQ(deletechar(charset(" ,"), " a, b,"), "ab");
  EXPECT_EQ(replacechar(charset("dD"), 'E', "1d3D"), "1E3E");
}

TEST(Change, ReplacedTexts) {
  const std::string full(255, 'a');
  const struct {
    std::string_view oldtext, newtext, s;
    std::string result;
  } rows[] = {
      {"aa", "a", "aaaa", "aa"}, {"a", "aba", "aca", "abacaba"},
      {"", "x", "abc", "abc"},   {"b", "", "abcb", "ac"},
      {"x", "y", "abc", "abc"},  {"a", "a", "aaa", "aaa"},
      {"aa", "x", "aaa", "xa"},  {"a", "bb", full, std::string(255, 'b')},
      {"abc", "x", "abc", "x"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(replacestr(row.oldtext, row.newtext, row.s).view(), row.result) << row.s;
}

TEST(Padding, Widths) {
  EXPECT_EQ(fillstr('x', 3), "xxx");
  EXPECT_EQ(fillstr('x', -1), "");
  EXPECT_EQ(fillstr('x', 999).length(), 255);
  EXPECT_EQ(blankstr(2), "  ");
  EXPECT_EQ(blankstr(0), "");
  EXPECT_EQ(blankstr(256), std::string(255, ' ').c_str());
  const struct {
    std::string_view s;
    int n;
    std::string left, right;
  } rows[] = {
      {"abc", 5, "  abc", "abc  "},
      {"abc", 2, "abc", "abc"},
      {"abc", -2, "abc", "abc"},
      {"", 2, "  ", "  "},
      {"abc", 300, std::string(252, ' ') + "abc", "abc" + std::string(252, ' ')},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(padleft(row.s, row.n).view(), row.left) << row.n;
    EXPECT_EQ(padright(row.s, row.n).view(), row.right) << row.n;
  }
  const struct {
    std::string_view s;
    int m, length;
    std::string padded;
  } multiples[] = {
      {"abc", 4, 4, "abc "},
      {"abc", 0, 3, "abc"},
      {"abc", -4, 3, "abc"},
      {"abcd", 4, 4, "abcd"},
      {"abc", 2, 4, "abc "},
      {"", 7, 0, ""},
      {"a", maxint, maxint, "a" + std::string(254, ' ')},
  };
  for (const auto& row : multiples) {
    EXPECT_EQ(padmodlength(row.s, row.m), row.length) << row.s << row.m;
    EXPECT_EQ(padrightmod(row.s, row.m).view(), row.padded) << row.s << row.m;
  }
}

TEST(Tokens, TakenOneByOne) {
  const struct {
    std::string_view s;
    std::string tokens;  // each with the position behind it
  } rows[] = {
      {"  \"two words\"  next", "[two words]14 [next]20 []20 "},
      {"a b", "[a]3 [b]4 []4 "},
      {"'it\"s' x", "[it\"s]7 [x]9 []9 "},
      {"\"open end ", "[open end ]11 []11 "},
      {"''b", "[]3 [b]4 []4 "},
      {"a'b c'", "[a'b]5 [c']7 []7 "},
      {"a ", "[a]3 []3 "},
      {"   ", "[]4 []4 "},
      {"\"", "[]2 []2 "},
      {"", "[]1 []1 "},
  };
  for (const auto& row : rows) {
    std::string tokens;
    int p = 1;
    for (int last = 0; last != p;) {
      last = p;
      const shortstring token = extracttoken(row.s, p);
      tokens += '[' + std::string(token.view()) + ']' + std::to_string(p) + ' ';
    }
    if (row.s.empty()) tokens += tokens;
    EXPECT_EQ(tokens, row.tokens) << row.s;
  }
  for (const int outside : {-1, 0, 4}) {
    int p = outside;
    EXPECT_EQ(extracttoken("abc", p), "");
    EXPECT_EQ(p, outside);
  }
}

TEST(IntegerText, PlainAndGrouped) {
  const struct {
    std::int32_t n;
    std::string_view plain, nice, symbolic;
  } rows[] = {
      {0, "0", "0", "0"},
      {7, "7", "7", "7"},
      {-123, "-123", "-123", "-123"},
      {-1000, "-1000", "-1,000", "-1000"},
      {123456, "123456", "123,456", "123456"},
      {1234567, "1234567", "1,234,567", "1234567"},
      {maxint, "2147483647", "2,147,483,647", "maxint"},
      {minint, "-2147483648", "-.,/,),,(-,*,(", "minint"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(inttostr(row.n), row.plain);
    EXPECT_EQ(inttonicestr(row.n), row.nice);
    EXPECT_EQ(inttostrex(row.n), row.symbolic);
    EXPECT_EQ(integerwidth(row.n), static_cast<int>(row.plain.size()));
    EXPECT_EQ(int64tonicestr(row.n), row.n == minint ? "-2,147,483,648" : row.nice);
  }
  EXPECT_EQ(inttostrw(5, 3), "  5");
  EXPECT_EQ(inttostrw(12345, 3), "12345");
  EXPECT_EQ(inttostrw(5, 999).length(), 255);
  EXPECT_EQ(inttonicestrw(-1234, 8), "  -1,234");
  EXPECT_EQ(inttostr(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(int64tonicestrw(std::numeric_limits<std::int64_t>::max(), 27),
            "  9,223,372,036,854,775,807");
  EXPECT_EQ(int64tonicestr(std::numeric_limits<std::int64_t>::min()), "-',..-,-).,0-*,(+,,))+,(0(");
}

TEST(RealText, ShortestOfFifteenDigits) {
  const double infinity = std::numeric_limits<double>::infinity();
  const struct {
    double x;
    std::string_view text;
  } rows[] = {
      {1.5, "1.5"},
      {100, "100"},
      {-1, "-1"},
      {1234.5678, "1234.5678"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {2.0 / 3, "0.666666666666667"},
      {0.0001, "0.0001"},
      {0.00123, "0.00123"},
      {0.00001, "1E-5"},
      {100000000000000, "100000000000000"},
      {999999999999999.9, "1000000000000000"},
      {999999999999999, "999999999999999"},
      {1e15, "1E15"},
      {123456789012345678.0, "1.23456789012346E17"},
      {1e100, "1E100"},
      {1.5e-300, "1.5E-300"},
      {0, "0"},
      {-0.0, "0"},
      {-0.05, "-0.05"},
      {-1.25e-7, "-1.25E-7"},
      {0.00009999999999999999, "1E-4"},
      {0.9999999999999999, "1"},
      {10.5, "10.5"},
      {1050, "1050"},
      {100.000000000001, "100.000000000001"},
      {5e-324, "4.94065645841247E-324"},
      {infinity, "INF"},
      {-infinity, "-INF"},
      {std::numeric_limits<double>::quiet_NaN(), "NAN"},
  };
  for (const auto& row : rows) EXPECT_EQ(dbltostr(row.x), row.text);
  EXPECT_EQ(dbltostrex(1e299), "maxdouble");
  EXPECT_EQ(dbltostrex(-1e299), "mindouble");
  EXPECT_EQ(dbltostrex(2e299), "2E299");
  EXPECT_EQ(dbltostrex(infinity), "INF");
}

TEST(RealText, ReadsBackToFifteenDigits) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> exponent(-290, 290);
  for (int i = 0; i < 20000; ++i) {
    const double x = std::pow(10, exponent(random) / (i % 2 == 0 ? 1 : 20)) * (i % 3 == 0 ? -1 : 1);
    const shortstring text = dbltostr(x);
    double back = 0;
    ASSERT_TRUE(strasdoubleex(text, back)) << text.view();
    ASSERT_NEAR(back, x, std::fabs(x) * 1e-14) << text.view();
    ASSERT_EQ(dbltostr(back), text) << "the text is as good as the number";
  }
}

TEST(TextToNumber, Integers) {
  const struct {
    std::string_view text;
    int plain;  // strasint
    bool good;
    int n;  // strasintex
    bool good2;
    int n2;  // strasintex2
  } rows[] = {
      {"12", 12, true, 12, true, 12},
      {" 12", 12, true, 12, true, 12},
      {"12 ", 0, false, 12, false, 0},
      {"-7", -7, true, -7, true, -7},
      {"007", 7, true, 7, true, 7},
      {"0x1F", 31, true, 31, true, 31},
      {"maxint", 0, true, maxint, true, maxint},
      {"MaxInt", 0, true, maxint, true, maxint},
      {"MININT", 0, true, minint, true, minint},
      {"maxin", 0, false, 0, false, 0},
      {"", 0, false, 0, false, 0},
      {"2147483648", maxint, true, maxint, true, maxint},
      {"-99999999999999999999", minint, true, minint, true, minint},
      {"1e3", 0, false, 1, true, 1000},
      {"1d3", 0, false, 1, true, 1000},
      {"2.5e1", 0, false, 2, true, 25},
      {"2.5", 0, false, 2, false, 0},
      {"-2147483648.0", 0, false, minint, true, minint},
      {"-2147483649.0", 0, false, minint, false, 0},
      {"2147483647.0", 0, false, maxint, true, maxint},
      {"2147483648.0", 0, false, maxint, false, 0},
      {"maxdouble", 0, false, 0, false, 0},
      {"eps", 0, false, 0, false, 0},
      {".", 0, false, 0, true, 0},
      {"1e999", 0, false, 1, false, 0},
  };
  for (const auto& row : rows) {
    std::int32_t n = 99;
    EXPECT_EQ(strasint(row.text), row.plain) << row.text;
    EXPECT_EQ(strasintex(row.text, n), row.good) << row.text;
    EXPECT_EQ(n, row.n) << row.text;
    n = 99;
    EXPECT_EQ(strasintex2(row.text, n), row.good2) << row.text;
    EXPECT_EQ(n, row.n2) << row.text;
  }
}

TEST(TextToNumber, Reals) {
  const struct {
    std::string_view text;
    bool good;
    double x;
  } rows[] = {
      {"1d3", true, 1000},
      {"1D-3", true, 0.001},
      {"-2.5e1", true, -25},
      {".5", true, 0.5},
      {".", true, 0},
      {" 1", true, 1},
      {"1 ", false, 1},
      {"0x10", false, 0},
      {"inf", false, 0},
      {"nan", false, 0},
      {"", false, 0},
      {"maxdoubl", false, 0},
      {"1e999", false, std::numeric_limits<double>::infinity()},
      {"MaxDouble", true, std::bit_cast<double>(0x7E031CFD3999F7B0u)},
      {"MINDOUBLE", true, std::bit_cast<double>(0xFE031CFD3999F7B0u)},
      {"Eps", true, std::bit_cast<double>(0x3BC79CA10C924223u)},
  };
  for (const auto& row : rows) {
    double x = 99;
    EXPECT_EQ(strasdoubleex(row.text, x), row.good) << row.text;
    EXPECT_EQ(x, row.x) << row.text;
  }
}

TEST(StrUtilX, Trim) {
  const struct {
    std::string_view text, right, both;
  } rows[] = {{"", "", ""},
              {" \t ", "", ""},
              {"\ta b ", "\ta b", "a b"},
              {"a\r\n", "a\r\n", "a\r\n"},
              {"a", "a", "a"}};
  for (const auto& row : rows) {
    EXPECT_EQ(trimright(row.text), row.right);
    EXPECT_EQ(trim(row.text), row.both);
  }
}

}  // namespace
}  // namespace optxv
