#include "foundation/hashedlists.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <tuple>
#include <vector>

namespace optxv {
namespace {

TEST(NameHash, IsThisInBothTables) {
  const struct {
    std::string name;
    std::int32_t small, large;
  } rows[] = {{"", 0, 0},
              {"a", 65, 65},
              {"aBC", 5715, 8119},
              {"\xe4\xff", 8471, 48363},
              {std::string(300, 'X'), 2972, 25521}};
  txhashedstringlist small, large;
  small.sethashsize(9973);
  large.sethashsize(9974);
  for (const auto& row : rows) {
    EXPECT_EQ(small.hashvalue(row.name), row.small) << row.name;
    EXPECT_EQ(large.hashvalue(row.name), row.large) << row.name;
  }
}

std::string all(const txcustomstringlist& list) {
  std::string result;
  for (std::int32_t i = 0; i < list.count(); ++i)
    result.append(list.getname(i)).append(list.getobject(i) == nullptr ? " " : "* ");
  return result;
}

std::int32_t meanof(const auto& list) {
  std::int32_t shortest, longest, mean;
  list.hashstats(shortest, longest, mean);
  return mean;
}

// awa and ban are in one chain.
TEST(HashedNames, AreNumberedByFirstUseAndSortByTheirOwnOrder) {
  const struct {
    std::vector<std::string> words;
    std::vector<std::int32_t> ignored, heeded;  ///< their numbers where case is, or is not, ignored
    std::string sortedlist, sortedpool;
  } rows[] = {
      {{"ABC", "abc", "x", "Abc"}, {0, 0, 1, 0}, {0, 1, 2, 3}, "ABC x ", "ABC Abc abc x "},
      {{"ban", "awa", "BAN", "awa"}, {0, 1, 0, 1}, {0, 1, 2, 1}, "awa ban ", "BAN awa ban "},
      {{"", "b", "", "a", "B"}, {0, 1, 2, 3, 1}, {0, 1, 2, 3, 4}, "  a b ", "  B a b "}};
  for (const auto& row : rows) {
    txhashedstringlist list;
    txstrpool pool;
    std::vector<std::int32_t> inlist, inpool;
    for (const std::string& word : row.words) {
      inlist.push_back(list.add(word));
      inpool.push_back(pool.add(word));
    }
    EXPECT_EQ(inlist, row.ignored);
    EXPECT_EQ(inpool, row.heeded);
    list.sort();
    pool.sort();
    EXPECT_EQ(list.hashcount(), 0);
    EXPECT_EQ(all(list), row.sortedlist);
    EXPECT_EQ(all(pool), row.sortedpool);
    for (std::int32_t i = 0; i < list.count(); ++i)
      EXPECT_EQ(list.indexof(list.getname(i)), list.getname(i).empty() ? -1 : i);
  }
}

TEST(HashedNames, LongListsGetTheLargerTable) {
  txstrpool pool;
  const auto fill = [&pool](std::int32_t count) {
    while (pool.count() < count) pool.add("n" + std::to_string(pool.count()));
    return pool.hashcount();
  };
  EXPECT_EQ(fill(39893), 9973);
  EXPECT_EQ(meanof(pool), 4);
  EXPECT_EQ(fill(39894), 99991) << "a table that has grown";
  for (const std::int32_t i : {0, 20000, 39892, 39893})
    EXPECT_EQ(pool.indexof("n" + std::to_string(i)), i);
  pool.delete_(0);
  pool.sethashsize(1);
  for (const std::int32_t i : {0, 20000, 39892})
    EXPECT_EQ(pool.indexof("n" + std::to_string(i + 1)), i) << "all have moved";
  pool.clearhashlist();
  EXPECT_EQ(pool.indexof("n20001"), 20000) << "the table is made anew";
  EXPECT_EQ(pool.indexof("none"), -1);
}

TEST(Reals, HaveThisHashAndAreNumberedByFirstUse) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const std::tuple<double, std::int32_t> rows[] = {{-0.0, 768}, {1.0, 368},      {-1.5, 1144},
                                                   {0.1, 277},  {infinity, 752}, {2003, 1999}};
  for (const auto& [x, hash] : rows) EXPECT_EQ(txconstpool::hashvalue(x), hash) << x;
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  txconstpool pool;
  std::vector<std::int32_t> numbers;
  for (const double x : {1.5, 0.0, 1.5, -0.0, nan, 0.0, nan, -0.0, 2003.0})
    numbers.push_back(pool.add(x));
  EXPECT_EQ(numbers, (std::vector<std::int32_t>{0, 1, 0, 2, 3, 1, 4, 2, 5}));
  for (int i = 0; i < 3000; ++i) pool.add(3000 + i / 1024.0);
  EXPECT_EQ(meanof(pool), 2) << "one and a half, rounded";
  EXPECT_EQ(pool.getdouble(5), 2003);
}

}  // namespace
}  // namespace optxv
