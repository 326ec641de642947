#include "foundation/sortedlists.h"

#include <gtest/gtest.h>

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
  const std::tuple<std::string, std::string, bool> rows[] = {
      {"", "", true},
      {"+a +b +c +B", "a B b c ", false},
      {"+b s +a", "a b ", true},
      {"( +b ( +a ) +c", "b a c ", false},
      {"( +b +A ( +a ) +B )", "A B a b ", true},
      {"+a +a s x +b", "b ", false},
      {"( +c +b x +z +a )", "a z ", true},
      {") ( +c +a", "a c ", false},
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
      {"+a +c +e s", "d", false, 2, -1}, {"+a +a +a +a s", "A", true, 1, 1},
      {"( +c +b +a", "c", false, 3, 0},  {"( +a +B )", "b", true, 0, 0}};
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
  list.add("a"), list.add("");
  EXPECT_EQ(list.add(""), 1) << "behind the one that is there";
  list.setsorted(true);
  EXPECT_EQ(list.indexof(""), -1);
  EXPECT_EQ(list.add(std::string(300, 'z')), 3);
  EXPECT_EQ(list.indexof(std::string(299, 'Z')), 3);
}

TEST(TextsUnderNames, ReadAsEveryKind) {
  const std::tuple<std::string, std::int32_t, double, bool> rows[] = {
      {"yes", 0, 0, true}, {"no", 0, 0, false},    {"12", 12, 12, true},   {"-7", -7, -7, false},
      {"1d3", 0, 0, true}, {"2.5", 0, 2.5, false}, {"1e3", 0, 1000, true}, {"$1F", 31, 0, false}};
  for (const auto& [text, asinteger, asdouble, asboolean] : rows) {
    txstrstrlist list;
    list.setasstring("key", text);
    EXPECT_EQ(list.getasstring("KEY"), text);
    EXPECT_EQ(list.getasdouble("Key"), asdouble) << text;
    EXPECT_EQ(list.getasboolean("kEY"), asboolean) << text;
    EXPECT_EQ(list.getasinteger("key"), asinteger) << text;
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
    list.setasstring(list.getname(0), list.getname(1));
    EXPECT_EQ(texts(list), "a=b;b=three;");
  }
  EXPECT_EQ(allocmemsize(), bytes);
}

TEST(Bits, AreSetAndRead) {
  tbooleanbitarray bits;
  bits.setbit(-1, true), bits.sethighindex(-1);
  EXPECT_EQ(bits.allocated(), 0);
  for (const std::int32_t i : {0, 7, 8, 3000}) bits.setbit(i, true);
  bits.setbit(7, false), bits.sethighindex(9);
  EXPECT_EQ(bits.highindex(), 3000);
  std::string set;
  for (std::int32_t i = -1; i <= 20000; ++i) set += bits.getbit(i) ? std::to_string(i) + ' ' : "";
  EXPECT_EQ(set, "0 8 3000 ");
}

TEST(Bits, RoomGrowsInSteps) {
  const std::tuple<std::vector<std::int32_t>, std::int32_t> rows[] = {
      {{2039, 2047}, 256},     {{2040}, 512},
      {{0, 4095}, 768},        {{65527}, 8192},
      {{65535}, 8448},         {{65527, 65536, 81920}, 12800},
      {{65519, 90000}, 12288}, {{2147483647}, 268435712}};
  for (const auto& [highest, bytes] : rows) {
    tbooleanbitarray bits;
    for (const std::int32_t v : highest) bits.sethighindex(v);
    EXPECT_EQ(bits.allocated(), bytes) << highest.back();
  }
}

TEST(ByteMover, CopiesUpwardsWhateverOverlaps) {
  for (int n = -1; n <= 12; ++n)
    for (int to = 0; to <= 13; ++to) {
      std::string expected = "abcdefghijklmnopqrstuvwxyz", found = expected;
      for (int i = 0; i < n; ++i) expected.data()[to + i] = expected.data()[5 + i];
      cmove(found.data() + 5, found.data() + to, n);
      ASSERT_EQ(found, expected) << n << ' ' << to;
    }
}

}  // namespace
}  // namespace optxv
