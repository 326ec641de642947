#include "foundation/hashedlists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>
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
  using text = std::string;
  const std::tuple<std::vector<text>, text, text, text, text> rows[] = {
      {{"ABC", "abc", "x", "Abc"}, "0010", "0123", "ABC x ", "ABC Abc abc x "},
      {{"ban", "awa", "BAN", "awa"}, "0101", "0121", "awa ban ", "BAN awa ban "},
      {{"", "b", "", "a", "B"}, "01231", "01234", "  a b ", "  B a b "}};
  for (const auto& [words, ignored, heeded, sortedlist, sortedpool] : rows) {
    txhashedstringlist list;
    txstrpool pool;
    std::string inlist, inpool;
    for (const std::string& word : words) {
      inlist += std::to_string(list.add(word));
      inpool += std::to_string(pool.add(word));
    }
    EXPECT_EQ(std::tie(inlist, inpool), std::tie(ignored, heeded));
    list.sort();
    pool.sort();
    EXPECT_EQ(list.hashcount(), 0);
    EXPECT_EQ(std::pair(all(list), all(pool)), std::pair(sortedlist, sortedpool));
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
}

TEST(HashedNames, RandomWordsAgreeWithAMap) {
  std::mt19937 random(11);
  txhashedstringlist list;
  std::map<std::string, std::int32_t> known;
  for (int step = 0; step < 20000; ++step) {
    std::string word(1 + random() % 3, ' '), folded = word;
    for (char& c : word) c = static_cast<char>('a' + random() % 12 - 32 * (random() % 2));
    std::ranges::transform(word, folded.begin(), upcase);
    ASSERT_EQ(list.indexof(word), known.contains(folded) ? known[folded] : -1);
    if (random() % 2 == 0) continue;
    ASSERT_EQ(list.add(word), known.emplace(folded, known.size()).first->second);
    if (random() % 1000 == 0) list.clearhashlist();
  }
}

TEST(Reals, HaveThisHashAndAreNumberedByFirstUse) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const std::tuple<double, std::int32_t> rows[] = {{-0.0, 768}, {1.0, 368},      {-1.5, 1144},
                                                   {0.1, 277},  {infinity, 752}, {2003, 1999}};
  for (const auto& [x, hash] : rows) EXPECT_EQ(txconstpool::hashvalue(x), hash) << x;
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  txconstpool pool;
  std::string numbers;
  for (const double x : {1.5, 0.0, 1.5, -0.0, nan, 0.0, nan, -0.0, 2003.0})
    numbers += std::to_string(pool.add(x));
  EXPECT_EQ(numbers, "010231425");
  for (int i = 0; i < 3000; ++i) pool.add(3000 + i / 1024.0);
  EXPECT_EQ(meanof(pool), 2) << "one and a half, rounded";
  EXPECT_EQ(pool.getdouble(5), 2003);
}

}  // namespace
}  // namespace optxv
