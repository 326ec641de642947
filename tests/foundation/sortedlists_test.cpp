#include "foundation/sortedlists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "foundation/runtime.h"

namespace optxv {
namespace {

std::string all(const txcustomstringlist& list) {
  std::string result;
  for (std::int32_t i = 0; i < list.count(); ++i)
    result.append(result.empty() ? "" : " ").append(list.getname(i));
  return result;
}

/// Steps, with blanks between: ( and ) open and close a bracket, s and u mark as sorted and not,
/// x clears, =a names the first entry a, +a adds a.
void perform(txsortedstringlist& list, const std::string& steps) {
  std::istringstream in(steps);
  for (std::string step; in >> step;) switch (step[0]) {
      case '(':
        list.beginupdate();
        break;
      case ')':
        list.endupdate();
        break;
      case 's':
        list.setsorted(true);
        break;
      case 'u':
        list.setsorted(false);
        break;
      case 'x':
        list.clear();
        break;
      case '=':
        list.setname(0, step.substr(1));
        break;
      default:
        list.add(step.substr(1));
    }
}

TEST(SortedNames, StandWhereTheseStepsPutThem) {
  const struct {
    std::string steps, names;
    bool sorted;
  } rows[] = {
      {"", "", true},
      {"+b", "b", false},
      {"+b +a +c +ab", "a ab b c", false},
      {"+b +a s", "a b", true},
      {"+b s +a", "a b", true},
      {"+a +b +c +B", "a B b c", false},
      {"+a +a s x +b", "b", false},
      {"( x", "", true},
      {"( +b", "b", false},
      {"( +b +a +c", "b a c", false},
      {"( +b ( +a ) +c", "b a c", false},
      {"( +b ( +a ) +c )", "a b c", true},
      {"( +b +A +a +B )", "A B a b", true},
      {"( +c +b x +z +a )", "a z", true},
      {") ( +c +a", "a c", false},
      {"+b +a s =z s", "z b", true},
      {"+b +a s =z u s", "b z", true},
      {"+b +a s =z ( )", "z b", true},
  };
  for (const auto& row : rows) {
    txsortedstringlist list;
    perform(list, row.steps);
    EXPECT_EQ(all(list), row.names) << row.steps;
    EXPECT_EQ(list.sorted(), row.sorted) << row.steps;
  }
}

TEST(SortedNames, AreFoundByHalves) {
  const struct {
    std::string steps, name;
    bool found;
    std::int32_t index, indexof;
  } rows[] = {
      {"", "a", false, 0, -1},
      {"+a +c +e s", "C", true, 1, 1},
      {"+a +c +e s", "d", false, 2, -1},
      {"+a +c +e s", "f", false, 3, -1},
      {"+a +c +e s", "", false, 0, -1},
      {"+a +a +a +a s", "A", true, 1, 1},
      {"+a +a +a +a", "A", true, 1, 0},  // from front to back
      {"( +c +b +a", "c", false, 3, 0},
      {"( +a +B )", "a", false, 0, -1},  // B stands in front of a, and a below B is looked for
      {"( +a +B )", "b", true, 0, 0},
  };
  for (const auto& row : rows) {
    txsortedstringlist list;
    perform(list, row.steps);
    std::int32_t index = -5;
    EXPECT_EQ(list.find(row.name, index), row.found) << row.steps << ' ' << row.name;
    EXPECT_EQ(index, row.index) << row.steps << ' ' << row.name;
    EXPECT_EQ(list.indexof(row.name), row.indexof) << row.steps << ' ' << row.name;
  }
}

TEST(SortedNames, EmptyOnesComeFirstAndAreNeverFound) {
  txsortedstringlist list;
  char word = 0;
  EXPECT_EQ(list.add("a"), 0);
  EXPECT_EQ(list.add(""), 0);
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
    std::vector<std::string> words;
    for (unsigned i = 0, n = random() % 40; i < n; ++i)
      words.push_back(std::string(1 + random() % 2, static_cast<char>('a' + random() % 9)));
    txsortedstringlist one, other;
    other.beginupdate();
    for (const std::string& word : words) one.add(word), other.add(word);
    other.endupdate();
    std::ranges::sort(words);
    ASSERT_EQ(one.count(), static_cast<std::int32_t>(words.size()));
    for (std::int32_t i = 0; i < one.count(); ++i) {
      EXPECT_EQ(one.getname(i), words[static_cast<std::size_t>(i)]);
      EXPECT_EQ(other.getname(i), one.getname(i));
    }
  }
}

TEST(TextsUnderNames, ReadAsEveryKind) {
  const struct {
    std::string text, asstring;
    std::int32_t asinteger;
    double asdouble;
    bool asboolean;
  } rows[] = {
      {"=", "", 0, 0, false},
      {"==", "==", 0, 0, false},
      {"T", "T", 0, 0, true},
      {"yes", "yes", 0, 0, true},
      {"Y", "Y", 0, 0, true},
      {"true", "true", 0, 0, true},
      {"no", "no", 0, 0, false},
      {"1", "1", 1, 1, true},
      {"12", "12", 12, 12, true},
      {"-7", "-7", -7, -7, false},
      {" 3", " 3", 3, 3, false},
      {"2.5", "2.5", 0, 2.5, false},
      {"1e3", "1e3", 0, 1000, true},
      {"1d3", "1d3", 0, 0, true},
      {"3x", "3x", 0, 0, false},
      {"$1F", "$1F", 31, 0, false},
      {"maxint", "maxint", 0, 0, false},
  };
  for (const auto& row : rows) {
    txstrstrlist list;
    list.setasstring("key", row.text);
    EXPECT_EQ(list.count(), 1);
    EXPECT_EQ(list.getobject(0), row.text);
    EXPECT_EQ(list.getasstring("KEY"), row.asstring);
    EXPECT_EQ(list.getasdouble("Key"), row.asdouble) << row.text;
    EXPECT_EQ(list.getasboolean("kEY"), row.asboolean) << row.text;
    EXPECT_EQ(list.getasinteger("key"), row.asinteger) << row.text;
    EXPECT_EQ(list.getasstring("other"), "");
    EXPECT_EQ(list.getasinteger("other"), 0);
    EXPECT_EQ(list.getasdouble("other"), 0);
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
    list.setasstring("b", "one");
    list.setasstring("a", "two");
    list.setasstring("B", "three");
    list.setasstring("c", "");
    EXPECT_EQ(texts(list), "a=two;b=three;");
    list.setasinteger("n", -42);
    list.setasdouble("x", 1.5);
    list.setasboolean("t", true);
    EXPECT_EQ(texts(list), "a=two;b=three;n=-42;t=T;x=   1.50000000000000E+00;");
    EXPECT_EQ(list.getasdouble("x"), 1.5);
    list.setasinteger("N", 0);
    list.setasdouble("X", -0.0);
    list.setasboolean("T", false);
    list.setasstring("A", list.getobject(1).substr(1));
    EXPECT_EQ(texts(list), "a=hree;b=three;");
    list.putobject(0, list.getobject(0).substr(1));
    list.putobject(1, "");
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
  const std::int64_t bytes = allocmemsize();
  EXPECT_EQ(bits.highindex(), -1);
  EXPECT_FALSE(bits.getbit(0));
  bits.setbit(-1, true);
  bits.sethighindex(-1);
  EXPECT_EQ(bits.allocated(), 0);
  bits.setbit(5, false);
  EXPECT_EQ(bits.highindex(), 5);
  for (const std::int32_t i : {0, 7, 8, 3000}) bits.setbit(i, true);
  bits.setbit(7, false);
  bits.sethighindex(9);
  EXPECT_EQ(bits.highindex(), 3000);
  std::string set;
  for (std::int32_t i = -1; i <= 20000; ++i)
    if (bits.getbit(i)) set += std::to_string(i) + ' ';
  EXPECT_EQ(set, "0 8 3000 ");
  EXPECT_EQ(allocmemsize(), bytes + bits.allocated());
}

TEST(Bits, RoomGrowsInSteps) {
  const struct {
    std::vector<std::int32_t> highest;
    std::int32_t bytes;
  } rows[] = {
      {{0}, 256},
      {{2039}, 256},
      {{2040}, 512},
      {{2039, 2047}, 256},
      {{0, 2048}, 512},
      {{0, 4095}, 768},
      {{0, 2048, 4096}, 1024},
      {{65535}, 8448},
      {{65527}, 8192},
      {{65527, 65536}, 10240},
      {{65527, 65536, 81920}, 12800},
      {{65519, 90000}, 12288},
  };
  for (const auto& row : rows) {
    tbooleanbitarray bits;
    for (const std::int32_t v : row.highest) bits.sethighindex(v);
    EXPECT_EQ(bits.allocated(), row.bytes) << row.highest.back();
  }
}

TEST(Bits, LongestArray) {
  tbooleanbitarray bits;
  bits.setbit(2147483647, true);
  EXPECT_TRUE(bits.getbit(2147483647));
  EXPECT_FALSE(bits.getbit(2147483646));
  EXPECT_EQ(bits.allocated(), 268435712);
}

TEST(ByteMover, CopiesUpwardsWhateverOverlaps) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyz";
  for (int n = -1; n <= 12; ++n)
    for (int from = 0; from <= 13; ++from)
      for (int to = 0; to <= 13; ++to) {
        std::string expected = letters, found = letters;
        for (int i = 0; i < n; ++i)
          expected[static_cast<std::size_t>(to + i)] = expected[static_cast<std::size_t>(from + i)];
        cmove(found.data() + from, found.data() + to, n);
        ASSERT_EQ(found, expected) << n << ' ' << from << ' ' << to;
      }
  cmove(nullptr, nullptr, 0);
}

}  // namespace
}  // namespace optxv
