#include "foundation/lists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
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
    std::swap(letters[at(i)], letters[at(j)]);
  }
  int compare(std::int32_t i, std::int32_t j) override {
    note('c', i, j);
    return upcase(letters[at(i)]) - upcase(letters[at(j)]);
  }
  std::string letters;
  std::string calls;

 private:
  static std::size_t at(std::int32_t i) { return static_cast<std::size_t>(i); }
  void note(char call, std::int32_t i, std::int32_t j) {
    if (letters.size() > 9) return;
    if (!calls.empty()) calls += ' ';
    calls += call + std::to_string(i) + std::to_string(j);
  }
};

TEST(Quicksort, MakesTheseCallsInThisOrder) {
  const struct {
    std::string before, after, calls;
  } rows[] = {
      {"", "", ""},
      {"a", "a", ""},
      {"ab", "ab", "c00 c10 c00 x00"},
      {"aA", "Aa", "c00 c10 x01"},
      {"baA", "Aab", "c01 c21 x02 c11 c11 x11"},
      {"cab", "abc", "c01 c21 c11 x01 c11 c21 x12"},
      {"aAaA", "aAaA", "c01 c31 x03 c11 c21 x12 c00 c10 x01 c22 c32 x23"},
  };
  for (const auto& row : rows) {
    lettersort sort(row.before);
    sort.sortn(static_cast<std::int32_t>(row.before.size()));
    EXPECT_EQ(sort.letters, row.after) << row.before;
    EXPECT_EQ(sort.calls, row.calls) << row.before;
  }
}

TEST(Quicksort, SortsWhateverTheOrderBefore) {
  std::mt19937 random(3);
  for (const std::size_t size : {10, 100, 3000})
    for (const char last : {'a', 'b', 'z'}) {
      std::string text(size, 'a');
      for (char& c : text)
        c = static_cast<char>('a' + random() % static_cast<unsigned>(last - 'a' + 1));
      lettersort sort(text);
      sort.sortn(static_cast<std::int32_t>(size));
      std::sort(text.begin(), text.end());
      EXPECT_EQ(sort.letters, text);
    }
}

TEST(Quicksort, AbstractOperationsRaise) {
  txlist list;
  list.add(&list);
  list.add(&list);
  try {
    list.sortn(2);
    FAIL();
  } catch (const eabstracterror& failure) {
    EXPECT_EQ(failure.message, "Call of Abstract Method. of class 'txlist' called\n");
  }
  tquicksortclass nothing;
  EXPECT_THROW(nothing.exchange(0, 0), eabstracterror);
}

TEST(Growth, EightfoldThenByAQuarterUpToTheLimit) {
  const std::int32_t capacities[] = {0,     16,     128,     1024,    8192,
                                     65536, 524288, 4194304, 5242880, 6553600};
  for (std::size_t i = 1; i < std::size(capacities); ++i)
    EXPECT_EQ(growncapacity(capacities[i - 1]), capacities[i]);
  EXPECT_EQ(growncapacity(5), 40);
  EXPECT_EQ(growncapacity(1048575), 8388600);
  EXPECT_EQ(growncapacity(1048576), 1310720);
  EXPECT_EQ(growncapacity(2000000000), 2147483647);
  EXPECT_THROW(growncapacity(2147483647), exception);
}

template <class List, class Add>
void checkgrowth(Add add) {
  const std::int64_t bytes = allocmemsize();
  List list;
  EXPECT_EQ(list.capacity(), 0);
  std::int32_t seen = 0;
  std::vector<std::int32_t> changes;
  for (std::int32_t i = 0; i < 8193; ++i) {
    EXPECT_EQ(add(list), i);
    if (list.capacity() != seen) changes.insert(changes.end(), {i, seen = list.capacity()});
  }
  EXPECT_EQ(changes, (std::vector{0, 16, 16, 128, 128, 1024, 1024, 8192, 8192, 65536}));
  list.setcapacity(10);
  EXPECT_EQ(list.capacity(), 8193) << "never below the count";
  list.clear();
  EXPECT_EQ(list.capacity(), 0);
  EXPECT_EQ(allocmemsize(), bytes);
  list.setcapacity(100);
  EXPECT_EQ(list.capacity(), 100);
  list.setcapacity(-1);
  EXPECT_EQ(list.capacity(), 0);
}

TEST(Growth, OfBothFamilies) {
  checkgrowth<txlist>([](txlist& list) { return list.add(nullptr); });
  checkgrowth<txstringlist>([](txstringlist& list) { return list.add(""); });
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
    list.add(&b);
    list.insert(0, &a);
    list.insert(2, &d);
    list.insert(2, &c);
    EXPECT_EQ(list.text(), "abcd");
    EXPECT_EQ(list.getlast(), &d);
    EXPECT_EQ(list.indexof(&c), 2);
    EXPECT_EQ(list.indexof(&other), -1);

    list.exchange(0, 3);
    EXPECT_EQ(list.text(), "dbca");
    EXPECT_EQ(list.extract(&b), &b);
    EXPECT_EQ(list.extract(&other), nullptr);
    EXPECT_EQ(log, "") << "extraction releases nothing";
    list.put(1, &b);
    EXPECT_EQ(list.text() + log, "dbac");
    EXPECT_EQ(list.remove(&other), -1);
    EXPECT_EQ(list.remove(&d), 0);
    EXPECT_EQ(list.text() + log, "bacd");
    list.delete_(1);
    EXPECT_EQ(list.text() + log, "bcda");
    list.add(&c);
    list.add(&d);
    log.clear();
  }
  EXPECT_EQ(log, "dcb") << "from the last to the first";
}

TEST(Texts, AreKeptAsHeapStrings) {
  const std::int64_t bytes = allocmemsize();
  {
    txstrings list;
    EXPECT_EQ(list.add("b"), 0);
    EXPECT_EQ(list.add(""), 1);
    list.insert(0, "ABC");
    EXPECT_EQ(list.get(0), "ABC");
    EXPECT_EQ(list.get(2), "");
    EXPECT_EQ(list.txlist::get(2), nullptr);
    EXPECT_EQ(list.indexof("B"), 1);
    EXPECT_EQ(list.indexof(""), -1) << "an empty text is never found";
    EXPECT_EQ(list.indexof("x"), -1);

    list.put(0, list.get(0).substr(1));
    EXPECT_EQ(list.get(0), "BC") << "a part of the text itself";
    list.sort();
    EXPECT_EQ(list.get(0), "");
    EXPECT_EQ(list.get(1), "BC");
    EXPECT_EQ(list.get(2), "b");
    EXPECT_EQ(list.extract("bc"), "bc") << "as asked for, not as kept";
    EXPECT_EQ(list.extract("bc"), "");
    EXPECT_EQ(list.extract(list.get(1)), "b");
    EXPECT_EQ(list.count(), 1);
  }
  EXPECT_EQ(allocmemsize(), bytes);
}

/// Writes down the names whose words it is told to release.
class loggednames : public txstringlist {
 public:
  explicit loggednames(std::string& log) : log_(log) {}
  ~loggednames() override { clear(); }
  void freeobject(std::int32_t i) override {
    if (getobject(i) != nullptr) log_ += *static_cast<char*>(getobject(i));
  }

 private:
  std::string& log_;
};

std::string names(const txcustomstringlist& list) {
  std::string result;
  for (std::int32_t i = 0; i < list.count(); ++i) {
    result += list.getname(i);
    const auto* word = static_cast<const char*>(list.getobject(i));
    result += word == nullptr ? "- " : std::string(1, *word) + ' ';
  }
  return result;
}

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
    EXPECT_EQ(names(list), "Alpha1 beta2 beta- - ");
    EXPECT_EQ(list.indexof("ALPHA"), 0);
    EXPECT_EQ(list.indexof("BETA"), 1) << "the first of equals";
    EXPECT_EQ(list.indexof(""), -1) << "an empty name is never found";
    EXPECT_EQ(list.indexofobject(&b), 1);
    EXPECT_EQ(list.indexofobject(nullptr), 2);
    EXPECT_EQ(list.indexofobject(&c), -1);

    list.putobject(2, &c);
    list.putobject(2, &b);
    list.putobject(2, &c);
    list.setname(0, list.getname(0).substr(2));
    list.exchange(0, 3);
    EXPECT_EQ(names(list), "- beta2 beta3 pha1 ");
    EXPECT_EQ(log, "");
    list.delete_(1);
    EXPECT_EQ(names(list) + log, "- beta3 pha1 2");
    list.add("Z");
    list.sortn(list.count());
    EXPECT_EQ(names(list), "- Z- beta3 pha1 ") << "by bytes, nil first";
  }
  EXPECT_EQ(log, "213") << "the rest from the last to the first";
  EXPECT_EQ(allocmemsize(), bytes);
}

}  // namespace
}  // namespace optxv
