#include "foundation/sortedlists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "foundation/runtime.h"

namespace optxv {
namespace {

std::string all(const txcustomstringlist& list) {
  std::string result;
  for (std::int32_t i = 0; i < list.count(); ++i) result.append(list.getname(i)) += ' ';
  return result;
}

/// Steps, with blanks between: ( and ) open and close a bracket, s and u mark as sorted and not,
/// x clears, =a names the first entry a, +a adds a.
void perform(txsortedstringlist& list, const std::string& steps) {
  std::istringstream in(steps);
  for (std::string step; in >> step;) {
    if (step[0] == '(') list.beginupdate();
    if (step[0] == ')') list.endupdate();
    if (step[0] == 's' || step[0] == 'u') list.setsorted(step[0] == 's');
    if (step[0] == 'x') list.clear();
    if (step[0] == '=') list.setname(0, step.substr(1));
    if (step[0] == '+') list.add(step.substr(1));
  }
}

TEST(SortedNames, StandWhereTheseStepsPutThem) {
  const std::tuple<std::string, std::string, bool> rows[] = {{"", "", true},
                                                             {"+b +a +c +ab", "a ab b c ", false},
                                                             {"+b", "b ", false},
                                                             {"+a +b +c +B", "a B b c ", false},
                                                             {"+b +a s", "a b ", true},
                                                             {"( +b ( +a ) +c", "b a c ", false},
                                                             {"+b s +a", "a b ", true},
                                                             {"( +b ( +a ) +c )", "a b c ", true},
                                                             {"+a +a s x +b", "b ", false},
                                                             {"( +b +A +a +B )", "A B a b ", true},
                                                             {"( x", "", true},
                                                             {"( +c +b x +z +a )", "a z ", true},
                                                             {"( +b +a +c", "b a c ", false},
                                                             {"+b +a s =z u s", "b z ", true},
                                                             {") ( +c +a", "a c ", false},
                                                             {"+b +a s =z ( )", "z b ", true},
                                                             {"+b +a s =z s", "z b ", true}};
  for (const auto& [steps, names, sorted] : rows) {
    txsortedstringlist list;
    perform(list, steps);
    EXPECT_EQ(all(list), names) << steps;
    EXPECT_EQ(list.sorted(), sorted) << steps;
  }
}

TEST(SortedNames, AreFoundByHalves) {
  const std::tuple<std::string, std::string, bool, std::int32_t, std::int32_t> rows[] = {
      {"", "a", false, 0, -1},           {"+a +c +e s", "C", true, 1, 1},
      {"+a +c +e s", "d", false, 2, -1}, {"+a +c +e s", "f", false, 3, -1},
      {"+a +c +e s", "", false, 0, -1},  {"+a +a +a +a s", "A", true, 1, 1},
      {"+a +a +a +a", "A", true, 1, 0},  {"( +c +b +a", "c", false, 3, 0},
      {"( +a +B )", "a", false, 0, -1},  {"( +a +B )", "b", true, 0, 0}};
  for (const auto& [steps, name, found, at, indexof] : rows) {
    txsortedstringlist list;
    perform(list, steps);
    std::int32_t index = -5;
    const bool finds = list.find(name, index);
    EXPECT_EQ(std::tuple(finds, index, list.indexof(name)), std::tuple(found, at, indexof))
        << steps << ' ' << name;
  }
}

TEST(SortedNames, EmptyOnesComeFirstAndAreNeverFound) {
  txsortedstringlist list;
  char word = 0;
  list.add("a"), list.add("");
  EXPECT_EQ(list.addobject("", &word), 1) << "behind the one that is there";
  EXPECT_EQ(list.getobject(1), &word);
  EXPECT_EQ(list.indexof(""), -1);
  list.setsorted(true);
  EXPECT_EQ(list.indexof(""), -1);
  EXPECT_EQ(list.indexof("A"), 2);
  EXPECT_EQ(list.add(std::string(300, 'z')), 3);
  EXPECT_EQ(list.indexof(std::string(299, 'Z')), 3);
}

TEST(SortedNames, RandomOrdersEndTheSame) {
  std::mt19937 random(5);
  for (int round = 0; round < 50; ++round) {
    txsortedstringlist one, other;
    std::vector<std::string> words(random() % 40);
    other.beginupdate();
    for (std::string& word : words) {
      word = std::string(1 + random() % 2, static_cast<char>('a' + random() % 9));
      one.add(word), other.add(word);
    }
    other.endupdate();
    std::ranges::sort(words);
    std::string expected;
    for (const std::string& word : words) expected += word + ' ';
    EXPECT_EQ(all(one), expected);
    EXPECT_EQ(all(other), expected);
  }
}

TEST(TextsUnderNames, ReadAsEveryKind) {
  const std::tuple<std::string, std::int32_t, double, bool> rows[] = {
      {"==", 0, 0, false}, {"yes", 0, 0, true},    {"Y", 0, 0, true},      {"no", 0, 0, false},
      {"T", 0, 0, true},   {"1", 1, 1, true},      {"12", 12, 12, true},   {"-7", -7, -7, false},
      {" 3", 3, 3, false}, {"2.5", 0, 2.5, false}, {"1e3", 0, 1000, true}, {"1d3", 0, 0, true},
      {"3x", 0, 0, false}, {"$1F", 31, 0, false},  {"maxint", 0, 0, false}};
  for (const auto& [text, asinteger, asdouble, asboolean] : rows) {
    txstrstrlist list;
    list.setasstring("key", text);
    EXPECT_EQ(list.getasstring("KEY"), text);
    EXPECT_EQ(list.getasdouble("Key"), asdouble) << text;
    EXPECT_EQ(list.getasboolean("kEY"), asboolean) << text;
    EXPECT_EQ(list.getasinteger("key"), asinteger) << text;
    EXPECT_EQ(list.getasstring("other"), "");
    EXPECT_FALSE(list.getasboolean("other"));
  }
}

std::string texts(const txstrstrlist& list) {
  std::string result;
  for (std::int32_t i = 0; i < list.count(); ++i)
    result.append(list.getname(i)).append("=").append(list.getobject(i)).append(";");
  return result;
}

TEST(TextsUnderNames, AreOwnedAndReplaced) {
  const std::int64_t bytes = allocmemsize();
  {
    txstrstrlist list;
    list.setasstring("b", "one"), list.setasstring("a", "two"), list.setasstring("B", "three");
    list.setasstring("c", "");
    list.setasinteger("n", -42), list.setasdouble("x", 1.5), list.setasboolean("t", true);
    EXPECT_EQ(texts(list), "a=two;b=three;n=-42;t=T;x=   1.50000000000000E+00;");
    list.setasinteger("N", 0), list.setasdouble("X", -0.0), list.setasboolean("T", false);
    list.setasstring("A", list.getobject(1).substr(1));
    EXPECT_EQ(texts(list), "a=hree;b=three;");
    list.putobject(0, list.getobject(0).substr(1)), list.putobject(1, "");
    EXPECT_EQ(texts(list), "a=ree;b=;");
    EXPECT_EQ(list.addobject(list.getname(0), list.getobject(0)), 0) << "in front of its equal";
    list.setasstring(list.getname(0), list.getname(2));
    EXPECT_EQ(list.add("d"), 3);
    EXPECT_EQ(texts(list), "a=b;a=ree;b=;d=;");
    list.setasstring(list.getname(2), list.getobject(2));
    EXPECT_EQ(texts(list), "a=b;a=ree;d=;");
  }
  EXPECT_EQ(allocmemsize(), bytes);
}

TEST(Bits, AreSetAndRead) {
  tbooleanbitarray bits;
  EXPECT_EQ(bits.highindex(), -1);
  bits.setbit(-1, true), bits.sethighindex(-1);
  EXPECT_EQ(bits.allocated(), 0);
  bits.setbit(5, false);
  EXPECT_EQ(bits.highindex(), 5);
  for (const std::int32_t i : {0, 7, 8, 3000}) bits.setbit(i, true);
  bits.setbit(7, false), bits.sethighindex(9);
  EXPECT_EQ(bits.highindex(), 3000);
  std::string set;
  for (std::int32_t i = -1; i <= 20000; ++i) set += bits.getbit(i) ? std::to_string(i) + ' ' : "";
  EXPECT_EQ(set, "0 8 3000 ");
  bits.setbit(2147483647, true);
  EXPECT_TRUE(bits.getbit(2147483647) && !bits.getbit(2147483646) && bits.getbit(3000));
}

TEST(Bits, RoomGrowsInSteps) {
  const std::tuple<std::vector<std::int32_t>, std::int32_t> rows[] = {
      {{2039}, 256},   {{0, 2048}, 512}, {{2039, 2047}, 256},     {{65527, 65536, 81920}, 12800},
      {{2040}, 512},   {{0, 4095}, 768}, {{65527, 65536}, 10240}, {{2147483647}, 268435712},
      {{65535}, 8448}, {{65527}, 8192},  {{65519, 90000}, 12288}};
  for (const auto& [highest, bytes] : rows) {
    tbooleanbitarray bits;
    for (const std::int32_t v : highest) bits.sethighindex(v);
    EXPECT_EQ(bits.allocated(), bytes) << highest.back();
  }
}

TEST(ByteMover, CopiesUpwardsWhateverOverlaps) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyz";
  for (int n = -1; n <= 12; ++n)
    for (int from = 0; from <= 13; ++from)
      for (int to = 0; to <= 13; ++to) {
        std::string expected = letters, found = letters;
        for (int i = 0; i < n; ++i) expected.data()[to + i] = expected.data()[from + i];
        cmove(found.data() + from, found.data() + to, n);
        ASSERT_EQ(found, expected) << n << ' ' << from << ' ' << to;
      }
}

}  // namespace
}  // namespace optxv
