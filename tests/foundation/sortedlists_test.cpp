#include "foundation/sortedlists.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <tuple>

#include "foundation/runtime.h"

namespace optxv {
namespace {

std::string all(const txcustomstringlist& list) {
  std::string result;
  for (std::int32_t i = 0; i < list.count(); ++i) result.append(list.getname(i)) += ' ';
  return result;
}

/// Steps, with a blank between: "+a" adds a, "=a" names the first entry a, the others are words.
void perform(txsortedstringlist& list, const std::string& steps) {
  std::istringstream in(steps);
  for (std::string step; in >> step;) {
    if (step == "begin") list.beginupdate();
    if (step == "end") list.endupdate();
    if (step == "sorted") list.setsorted(true);
    if (step == "clear") list.clear();
    if (step[0] == '=') list.setname(0, step.substr(1));
    if (step[0] == '+') list.add(step.substr(1));
  }
}

TEST(SortedNames, StandWhereTheseStepsPutThem) {
  const struct {
    std::string steps, names;
    bool sorted;
  } rows[] = {{"", "", true},
              {"+a +b +c +B", "a B b c ", false},
              {"+b sorted +a", "a b ", true},
              {"begin +b begin +a end +c", "b a c ", false},
              {"begin +b +A +C +a end", "a A b C ", true},
              {"+a +a sorted clear +b", "b ", false},
              {"begin +c +b clear +z +a end", "a z ", true},
              {"end begin +c +a", "a c ", false},
              {"+b +a sorted =z sorted", "z b ", true}};
  for (const auto& row : rows) {
    txsortedstringlist list;
    perform(list, row.steps);
    EXPECT_EQ(all(list), row.names) << row.steps;
    EXPECT_EQ(list.sorted(), row.sorted) << row.steps;
  }
}

TEST(SortedNames, AreFoundByBinarySearch) {
  const struct {
    std::string steps, name;
    bool found;
    std::int32_t at, indexof;
  } rows[] = {{"", "a", false, 0, -1},
              {"+a +c +e sorted", "C", true, 1, 1},
              {"+a +c +e sorted", "d", false, 2, -1},
              {"+a +a +a +a sorted", "A", true, 1, 1},
              {"begin +c +b +a", "c", false, 3, 0},
              {"begin +b +A +C +a end", "B", true, 2, 2}};
  for (const auto& row : rows) {
    txsortedstringlist list;
    perform(list, row.steps);
    std::int32_t index = -5;
    EXPECT_EQ(list.find(row.name, index), row.found) << row.steps << ' ' << row.name;
    EXPECT_EQ(index, row.at) << row.steps << ' ' << row.name;
    EXPECT_EQ(list.indexof(row.name), row.indexof) << row.steps << ' ' << row.name;
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
    list.setasinteger("n", -42);
    list.setasdouble("x", 1.5);
    list.setasboolean("t", true);
    EXPECT_EQ(texts(list), "a=two;b=three;n=-42;t=T;x=   1.50000000000000E+00;");
    EXPECT_EQ(std::tuple(list.getasboolean("t"), list.getasboolean("a"), list.getasboolean("z")),
              std::tuple(true, true, false));
    list.setasinteger("N", 0);
    list.setasdouble("X", -0.0);
    list.setasboolean("T", false);
    list.setasstring("A", list.getobject(1).substr(1));
    EXPECT_EQ(texts(list), "a=hree;b=three;");
    list.setasstring(list.getname(0), list.getname(1));
    EXPECT_EQ(texts(list), "a=b;b=three;");
  }
  EXPECT_EQ(allocmemsize(), bytes);
}

TEST(Bits, AreSetAndRead) {
  tbooleanbitarray bits;
  bits.setbit(-1, true);
  bits.sethighindex(-1);
  EXPECT_EQ(bits.allocated(), 0);
  for (const std::int32_t i : {0, 7, 8, 3000}) bits.setbit(i, true);
  bits.setbit(7, false);
  bits.sethighindex(9);
  EXPECT_EQ(bits.highindex(), 3000);
  std::string set;
  for (std::int32_t i = -1; i <= 20000; ++i) set += bits.getbit(i) ? std::to_string(i) + ' ' : "";
  EXPECT_EQ(set, "0 8 3000 ");
}

}  // namespace
}  // namespace optxv
