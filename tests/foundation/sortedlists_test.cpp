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
  const auto give = [](const std::string& steps, const std::string& names, bool sorted) {
    txsortedstringlist list;
    perform(list, steps);
    EXPECT_EQ(std::pair(all(list), list.sorted()), std::pair(names, sorted)) << steps;
  };
  give("", "", true), give("+a +b +c +B", "a B b c ", false), give("+b s +a", "a b ", true);
  give("( +b ( +a ) +c", "b a c ", false), give("( +b +A +C +a )", "a A b C ", true);
  give("+a +a s x +b", "b ", false), give("( +c +b x +z +a )", "a z ", true);
  give(") ( +c +a", "a c ", false), give("+b +a s =z s", "z b ", true);
}

TEST(SortedNames, AreFoundByBinarySearch) {
  const std::tuple<std::string, std::string, bool, std::int32_t, std::int32_t> rows[] = {
      {"", "a", false, 0, -1},
      {"+a +c +e s", "C", true, 1, 1},
      {"+a +c +e s", "d", false, 2, -1},
      {"+a +a +a +a s", "A", true, 1, 1},
      {"( +c +b +a", "c", false, 3, 0},
      {"( +b +A +C +a )", "c", true, 3, 3},
      {"( +b +A +C +a )", "B", true, 2, 2}};
  for (const auto& [steps, name, found, at, indexof] : rows) {
    txsortedstringlist list;
    perform(list, steps);
    std::int32_t index = -5;
    const bool finds = list.find(name, index);
    EXPECT_EQ(std::tuple(finds, index, list.indexof(name)), std::tuple(found, at, indexof))
        << steps << ' ' << name;
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

}  // namespace
}  // namespace optxv
