#include "foundation/hashedlists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "foundation/runtime.h"

namespace optxv {
namespace {

constexpr std::int32_t none = std::numeric_limits<std::int32_t>::max();

TEST(NameHash, IsThisInBothTables) {
  txhashedstringlist list;
  EXPECT_EQ(list.hashvalue(""), 0) << "even without a table";
  const struct {
    std::string name;
    std::int32_t small, large;
  } rows[] = {
      {"", 0, 0},
      {"a", 65, 65},
      {"ab", 3808, 13781},
      {"Abc", 5715, 8119},
      {"aBC", 5715, 8119},
      {"variable(i,j)", 8374, 98166},
      {"VARIABLE(I,J)", 8374, 98166},
      {"\xe4\xff", 8471, 48363},
      {std::string(255, 'x'), 2972, 25521},
      {std::string(300, 'X'), 2972, 25521},
  };
  list.sethashsize(9973);
  for (const auto& row : rows) EXPECT_EQ(list.hashvalue(row.name), row.small) << row.name;
  list.sethashsize(9974);
  for (const auto& row : rows) EXPECT_EQ(list.hashvalue(row.name), row.large) << row.name;
}

std::string all(const txcustomstringlist& list) {
  std::string result;
  for (std::int32_t i = 0; i < list.count(); ++i)
    result.append(list.getname(i)).append(list.getobject(i) == nullptr ? " " : "* ");
  return result;
}

/// Adds words one by one and gives their numbers. awa and ban are in one chain.
template <class List>
std::string numbersof(List& list, const std::vector<std::string>& words) {
  std::string result;
  for (const std::string& word : words) result += std::to_string(list.add(word));
  return result;
}

TEST(HashedNames, AreNumberedByFirstUse) {
  const struct {
    std::vector<std::string> words;
    std::string ignored, heeded, names, sorted;
  } rows[] = {
      {{"ABC", "abc", "x", "Abc"}, "0010", "0123", "ABC x ", "ABC x "},
      {{"ban", "awa", "BAN", "awa"}, "0101", "0121", "ban awa ", "awa ban "},
      {{"", "b", "", "a"}, "0123", "0123", " b  a ", "  a b "},
      {{std::string(255, 'y'), std::string(256, 'y')}, "00", "00", "", ""},
  };
  for (const auto& row : rows) {
    txhashedstringlist list;
    EXPECT_EQ(numbersof(list, row.words), row.ignored);
    txstrpool pool;
    EXPECT_EQ(numbersof(pool, row.words), row.heeded);
    if (row.names.empty()) continue;
    EXPECT_EQ(all(list), row.names);
    list.sort();
    EXPECT_EQ(list.hashcount(), 0);
    EXPECT_EQ(all(list), row.sorted);
    for (std::int32_t i = 0; i < list.count(); ++i)
      EXPECT_EQ(list.indexof(list.getname(i)), list.getname(i).empty() ? -1 : i);
  }
}

TEST(HashedNames, SortByTheirOwnOrder) {
  txhashedstringlist list;
  txstrpool pool;
  for (const char* name : {"b", "a", "B", "A", "c"}) list.add(name), pool.add(name);
  list.sort();
  pool.sort();
  EXPECT_EQ(all(list), "a b c ");
  EXPECT_EQ(all(pool), "A B a b c ");
  EXPECT_EQ(pool.indexof("b"), 3);
  EXPECT_EQ(pool.indexof("C"), -1);
}

TEST(HashedNames, LookUpBuildsTheTable) {
  const std::int64_t bytes = allocmemsize(), blocks = allocmemcount();
  {
    char object = 0;
    txhashedstringlist list;
    std::int32_t min = 0, max = 0, avg = 0;
    list.hashstats(min, max, avg);
    EXPECT_EQ((std::vector{min, max, avg}), (std::vector{none, 0, 0}));
    EXPECT_EQ(list.indexof("nothing"), -1);
    EXPECT_EQ(list.hashcount(), 9973);
    EXPECT_EQ(list.addobject("ban", nullptr), 0);
    EXPECT_EQ(list.addobject("BAN", &object), 0) << "the object is dropped";
    EXPECT_EQ(list.addobject("awa", &object), 1);
    EXPECT_EQ(all(list), "ban awa* ");
    EXPECT_EQ(list.add(list.getname(1).substr(1)), 2) << "from a name of the list itself";
    list.hashstats(min, max, avg);
    EXPECT_EQ((std::vector{min, max, avg}), (std::vector{0, 2, 0}));

    list.delete_(0);
    list.clearhashlist();
    EXPECT_EQ(list.hashcount(), 0);
    EXPECT_EQ(list.indexof("awa"), 0);
    list.clear();
    EXPECT_EQ(list.hashcount() + list.count() + list.capacity(), 0);
    EXPECT_EQ(list.add("again"), 0);
    list.clear();
    list.clearhashlist();
  }
  EXPECT_EQ(allocmemcount(), blocks);
  // Three tables went, each of 9973 pointers, and each took 40,000,004 bytes off the count.
  const std::int64_t table = 9973 * static_cast<std::int64_t>(sizeof(void*));
  EXPECT_EQ(allocmemsize() - bytes, 3 * (table - 40000004));
}

TEST(HashedNames, LongListsGetTheLargerTable) {
  txstrpool pool;
  const auto fill = [&pool](std::int32_t count) {
    while (pool.count() < count) pool.add("n" + std::to_string(pool.count()));
    return pool.hashcount();
  };
  EXPECT_EQ(fill(9974), 9973);
  pool.clearhashlist();
  EXPECT_EQ(pool.indexof("n9973"), 9973);
  EXPECT_EQ(pool.hashcount(), 99991) << "a table that is built anew";
  pool.clear();
  EXPECT_EQ(fill(39893), 9973);
  std::int32_t min = 0, max = 0, avg = 0;
  pool.hashstats(min, max, avg);
  EXPECT_EQ(avg, 4);
  EXPECT_EQ(fill(39894), 99991) << "a table that has grown";
  for (const std::int32_t i : {0, 1, 20000, 39892, 39893})
    EXPECT_EQ(pool.indexof("n" + std::to_string(i)), i);
}

/// Takes names with the same first letter for the same.
class byfirstletter : public txhashedstringlist {
 public:
  bool equaltoentry(std::string_view s, std::int32_t i) const override {
    return s.front() == getname(i).front();
  }
  std::int32_t hashvalue(std::string_view) const override { return 7; }
};

TEST(HashedNames, DescendantsSayWhatIsEqual) {
  byfirstletter list;
  EXPECT_EQ(list.add("one"), 0);
  EXPECT_EQ(list.add("two"), 1);
  EXPECT_EQ(list.add("only"), 0);
  EXPECT_EQ(list.indexof("three"), 1);
  EXPECT_EQ(list.indexof("six"), -1);
}

TEST(HashedNames, RandomWordsAgreeWithAMap) {
  std::mt19937 random(11);
  txhashedstringlist list;
  std::map<std::string, std::int32_t> known;
  for (int step = 0; step < 20000; ++step) {
    std::string word(1 + random() % 3, ' ');
    for (char& c : word) c = static_cast<char>('a' + random() % 12 - 32 * (random() % 2));
    std::string folded = word;
    std::ranges::transform(folded, folded.begin(), upcase);
    const auto place = known.find(folded);
    const std::int32_t expected = place == known.end() ? -1 : place->second;
    ASSERT_EQ(list.indexof(word), expected);
    if (random() % 2 == 0) continue;
    const std::int32_t added = list.add(word);
    ASSERT_EQ(added, expected < 0 ? static_cast<std::int32_t>(known.size()) : expected);
    known.emplace(folded, added);
    if (random() % 1000 == 0) list.clearhashlist();
  }
  EXPECT_EQ(list.count(), static_cast<std::int32_t>(known.size()));
}

TEST(Reals, HaveThisHash) {
  const struct {
    double x;
    std::int32_t hash;
  } rows[] = {
      {0.0, 0},     {-0.0, 768}, {1.0, 368},    {1.5, 376},
      {-1.5, 1144}, {0.1, 277},  {1e300, 1663}, {std::numeric_limits<double>::infinity(), 752},
      {2003, 1999}};
  for (const auto& row : rows) EXPECT_EQ(txconstpool::hashvalue(row.x), row.hash) << row.x;
}

TEST(Reals, AreNumberedByFirstUse) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  const std::int64_t bytes = allocmemsize(), blocks = allocmemcount();
  {
    txconstpool pool;
    const double values[] = {1.5, 0.0, 1.5, -0.0, nan, 0.0, nan, -0.0, 2003};
    std::string numbers;
    for (const double x : values) numbers += std::to_string(pool.add(x));
    EXPECT_EQ(numbers, "010231425");
    EXPECT_EQ(pool.count(), 6);
    EXPECT_EQ(pool.getdouble(0), 1.5);
    EXPECT_EQ(pool.getdouble(5), 2003);
  }
  EXPECT_EQ(allocmemcount(), blocks);
  EXPECT_EQ(allocmemsize(), bytes);
}

TEST(Reals, PoolGrowsAndCountsItsChains) {
  txconstpool pool;
  const auto stats = [&pool] {
    std::vector<std::int32_t> result(3);
    pool.hashstats(result[0], result[1], result[2]);
    return result;
  };
  EXPECT_EQ(stats(), (std::vector{0, 0, 0}));
  pool.add(2003);
  EXPECT_EQ(stats(), (std::vector{0, 0, 0})) << "the last chain is left out";
  std::vector<std::int32_t> capacities = {pool.capacity()};
  for (int i = 0; i < 3000; ++i) {
    EXPECT_EQ(pool.add(i / 1024.0), i + 1);
    if (pool.capacity() != capacities.back()) capacities.push_back(pool.capacity());
  }
  EXPECT_EQ(capacities, (std::vector{16, 128, 1024, 8192}));
  EXPECT_EQ(stats()[2], 2) << "one and a half, rounded";
  pool.setcapacity(3000);
  EXPECT_EQ(pool.capacity(), 8192) << "never below the count";
  pool.setcapacity(3001);
  EXPECT_EQ(pool.capacity(), 3001);
  EXPECT_EQ(pool.add(2999 / 1024.0), 3000);
  EXPECT_EQ(pool.getdouble(3000), 2999 / 1024.0);
}

}  // namespace
}  // namespace optxv
