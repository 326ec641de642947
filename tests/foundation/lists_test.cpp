#include "foundation/lists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "foundation/zmaobj.h"

namespace optxv {
namespace {

/// Sorts the letters of a text, case ignored, and writes down every call.
class lettersort : public tquicksortclass {
 public:
  explicit lettersort(std::string text) : letters(std::move(text)) {}
  void exchange(std::int32_t i, std::int32_t j) override {
    note('x', i, j);
    std::swap(letters.data()[i], letters.data()[j]);
  }
  int compare(std::int32_t i, std::int32_t j) override {
    note('c', i, j);
    return upcase(letters.data()[i]) - upcase(letters.data()[j]);
  }
  std::string letters, calls;

 private:
  void note(char call, std::int32_t i, std::int32_t j) {
    if (letters.size() < 10) calls += ' ' + (call + std::to_string(i) + std::to_string(j));
  }
};

TEST(Quicksort, MakesTheseCallsInThisOrder) {
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"", "", ""},
      {"a", "a", ""},
      {"ab", "ab", " c00 c10 c00 x00"},
      {"baA", "Aab", " c01 c21 x02 c11 c11 x11"},
      {"cab", "abc", " c01 c21 c11 x01 c11 c21 x12"},
      {"aAaA", "aAaA", " c01 c31 x03 c11 c21 x12 c00 c10 x01 c22 c32 x23"}};
  for (const auto& [before, after, calls] : rows) {
    lettersort sort(before);
    sort.sortn(static_cast<std::int32_t>(before.size()));
    EXPECT_EQ(sort.letters, after) << before;
    EXPECT_EQ(sort.calls, calls) << before;
  }
}

TEST(Quicksort, SortsWhateverTheOrderBefore) {
  std::mt19937 random(3);
  for (const std::size_t size : {10, 3000})
    for (const unsigned kinds : {1u, 2u, 26u}) {
      std::string text(size, 'a');
      for (char& c : text) c = static_cast<char>('a' + random() % kinds);
      lettersort sort(text);
      sort.sortn(static_cast<std::int32_t>(size));
      std::ranges::sort(text);
      EXPECT_EQ(sort.letters, text);
    }
  txlist list;
  list.add(&list), list.add(&list);
  EXPECT_THROW(list.sortn(2), eabstracterror) << "no order of its own";
}

TEST(Growth, EightfoldThenByAQuarterUpToTheLimit) {
  const std::tuple<std::int32_t, std::int32_t> rows[] = {
      {0, 16}, {16, 128},         {1048575, 8388600}, {4194304, 5242880}, {2000000000, 2147483647},
      {5, 40}, {524288, 4194304}, {1048576, 1310720}};
  for (const auto& [from, to] : rows) EXPECT_EQ(growncapacity(from), to);
  EXPECT_THROW(growncapacity(2147483647), exception);
}

template <class List, class Item>
void checkgrowth(Item item) {
  const std::int64_t bytes = allocmemsize();
  List list;
  std::vector<std::int32_t> changes = {0};
  for (std::int32_t i = 0; i < 1025; ++i) {
    EXPECT_EQ(list.add(item), i);
    if (list.capacity() != changes.back()) changes.insert(changes.end(), {i, list.capacity()});
  }
  EXPECT_EQ(changes, (std::vector{0, 0, 16, 16, 128, 128, 1024, 1024, 8192}));
  list.setcapacity(10);
  EXPECT_EQ(list.capacity(), 1025) << "never below the count";
  list.clear();
  EXPECT_EQ(list.capacity(), 0);
  EXPECT_EQ(allocmemsize(), bytes);
  list.setcapacity(100);
  EXPECT_EQ(list.capacity(), 100);
  list.setcapacity(-1);
  EXPECT_EQ(list.capacity(), 0);
}

TEST(Growth, OfBothFamilies) {
  checkgrowth<txlist>(nullptr);
  checkgrowth<txstringlist>("");
}

/// Owns nothing, but writes down what it is told to release.
class loggedlist : public txlist {
 public:
  explicit loggedlist(std::string& log) : log_(log) {}
  ~loggedlist() override { clear(); }
  void freeitem(std::int32_t i) override { log_ += *static_cast<char*>(get(i)); }
  std::string text() const {
    std::string result;
    for (std::int32_t i = 0; i < count(); ++i) result += *static_cast<char*>(get(i));
    return result;
  }

 private:
  std::string& log_;
};

TEST(PointerList, MovesItemsAndReleasesThoseThatLeave) {
  char a = 'a', b = 'b', c = 'c', d = 'd', other = '?';
  std::string log;
  {
    loggedlist list(log);
    EXPECT_EQ(list.getlast(), nullptr);
    list.add(&b), list.insert(0, &a), list.insert(2, &d), list.insert(2, &c);
    EXPECT_EQ(list.text(), "abcd");
    EXPECT_EQ(list.getlast(), &d);
    list.exchange(0, 3);
    EXPECT_EQ(list.extract(&b), &b);
    EXPECT_EQ(list.extract(&other), nullptr);
    EXPECT_EQ(list.text() + log, "dca") << "extraction releases nothing";
    list.put(1, &b);
    EXPECT_EQ(list.remove(&other), -1);
    EXPECT_EQ(list.remove(&d), 0);
    list.delete_(0);
    EXPECT_EQ(list.text() + log, "acdb");
    list.add(&c);
  }
  EXPECT_EQ(log, "cdbca") << "from the last to the first";
}

TEST(Texts, AreKeptAsHeapStrings) {
  const std::int64_t bytes = allocmemsize();
  {
    txstrings list;
    list.add("b"), list.add(""), list.insert(0, "ABC");
    EXPECT_EQ(list.txlist::get(2), nullptr);
    EXPECT_EQ(list.indexof("B") + list.indexof(""), 0) << "an empty text is never found";
    list.put(0, list.get(0).substr(1));
    list.sort();
    EXPECT_EQ(list.get(1), "BC") << "a part of the text itself";
    EXPECT_EQ(list.extract("bc"), "bc") << "as asked for, not as kept";
    EXPECT_EQ(list.extract("bc"), "");
    EXPECT_EQ(list.extract(list.get(1)), "b");
  }
  EXPECT_EQ(allocmemsize(), bytes);
}

/// Writes down the names whose words it is told to release.
class loggednames : public txstringlist {
 public:
  explicit loggednames(std::string& log) : log_(log) {}
  ~loggednames() override { clear(); }
  void freeobject(std::int32_t i) override { log_ += word(i); }
  char word(std::int32_t i) const {
    const auto* word = static_cast<const char*>(getobject(i));
    return word == nullptr ? '-' : *word;
  }
  std::string text() const {
    std::string result;
    for (std::int32_t i = 0; i < count(); ++i) result.append(getname(i)) += {word(i), ' '};
    return result;
  }

 private:
  std::string& log_;
};

TEST(Names, KeepTheirWordsBesideThem) {
  const std::int64_t bytes = allocmemsize();
  char a = '1', b = '2', c = '3';
  std::string log;
  {
    loggednames list(log);
    EXPECT_EQ(list.addobject("beta", &b), 0);
    EXPECT_EQ(list.add(list.getname(0)), 1) << "a name of the list itself";
    list.insertobject(0, "Alpha", &a);
    list.insert(3, "");
    EXPECT_EQ(list.text(), "Alpha1 beta2 beta- - ");
    EXPECT_EQ(list.indexof("BETA"), 1) << "the first of equals";
    EXPECT_EQ(list.indexof(""), -1) << "an empty name is never found";
    EXPECT_EQ(list.indexofobject(nullptr), 2);
    EXPECT_EQ(list.indexofobject(&c), -1);
    list.putobject(2, &c);
    list.setname(0, list.getname(0).substr(2));
    list.exchange(0, 3);
    EXPECT_EQ(list.text() + log, "- beta2 beta3 pha1 ");
    list.delete_(1);
    list.add("Z");
    list.sortn(list.count());
    EXPECT_EQ(list.text() + log, "- Z- beta3 pha1 2") << "by bytes, nil first";
  }
  EXPECT_EQ(log, "213--") << "the rest from the last to the first";
  EXPECT_EQ(allocmemsize(), bytes);
}

}  // namespace
}  // namespace optxv
