#include "foundation/lists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>

#include "foundation/zmaobj.h"

namespace optxv {
namespace {

/// Sorts the letters of a text, case ignored, and writes down every call: 1?2 compares, 1<>2
/// exchanges.
class lettersort : public tquicksortclass {
 public:
  explicit lettersort(std::string text) : letters(std::move(text)) {}
  void exchange(std::int32_t i, std::int32_t j) override {
    note("<>", i, j);
    std::swap(letters.data()[i], letters.data()[j]);
  }
  int compare(std::int32_t i, std::int32_t j) override {
    note("?", i, j);
    return upcase(letters.data()[i]) - upcase(letters.data()[j]);
  }
  std::string letters, calls;

 private:
  void note(const char* call, std::int32_t i, std::int32_t j) {
    calls += ' ' + std::to_string(i) + call + std::to_string(j);
  }
};

TEST(Quicksort, MakesTheseCallsInThisOrder) {
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"a", "a", ""},
      {"ab", "ab", " 0?0 1?0 0?0 0<>0"},
      {"baA", "Aab", " 0?1 2?1 0<>2 1?1 1?1 1<>1"},
      {"cab", "abc", " 0?1 2?1 1?1 0<>1 1?1 2?1 1<>2"},
      {"aAaA", "aAaA", " 0?1 3?1 0<>3 1?1 2?1 1<>2 0?0 1?0 0<>1 2?2 3?2 2<>3"}};
  for (const auto& [before, after, calls] : rows) {
    lettersort sort(before);
    sort.sortn(static_cast<std::int32_t>(before.size()));
    EXPECT_EQ(std::tie(sort.letters, sort.calls), std::tie(after, calls)) << before;
  }
}

TEST(Quicksort, SortsALongText) {
  for (std::string text :
       {std::string(3000, 'a'), std::string("the quick brown fox jumps over the lazy dog"),
        std::string("zyxwvutsrqponmlkjihgfedcba"), std::string("abcdefghijklmnopqrstuvwxyz")}) {
    lettersort sort(text);
    sort.sortn(static_cast<std::int32_t>(text.size()));
    std::ranges::sort(text);
    EXPECT_EQ(sort.letters, text);
  }
}

/// Writes down the names whose words it is asked to release.
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
    list.putobject(2, &c);
    list.setname(0, list.getname(0).substr(2));
    list.exchange(0, 3);
    EXPECT_EQ(list.text() + log, "- beta2 beta3 pha1 ");
    list.delete_(1);
    list.add("Z");
    list.sortn(list.count());
    EXPECT_EQ(list.text() + log, "- beta3 pha1 Z- 2") << "case ignored, nil first";
  }
  EXPECT_EQ(log, "2-13-") << "the rest from the last to the first";
}

/// Items that it is asked to release are written down.
class loggeditems : public txlist {
 public:
  ~loggeditems() override { clear(); }
  void freeitem(std::int32_t i) override { log += *static_cast<const char*>(get(i)); }
  std::string text() const {
    std::string result;
    for (std::int32_t i = 0; i < count(); ++i) result += *static_cast<const char*>(get(i));
    return result;
  }
  std::string log;
};

TEST(Items, LeaveOneByOne) {
  char a = 'a', b = 'b', c = 'c', none = '-';
  loggeditems list;
  EXPECT_EQ(list.getlast(), nullptr);
  for (char* const item : {&a, &b, &c, &b}) list.add(item);
  EXPECT_EQ(list.remove(&none), -1);
  EXPECT_EQ(list.extract(&none), nullptr);
  EXPECT_EQ(list.remove(&b), 1);
  EXPECT_EQ(list.extract(&a), &a);
  EXPECT_EQ(list.text() + list.log, "cbb") << "what is extracted is not released";
  list.put(0, &a);
  list.insert(1, &c);
  list.exchange(0, 2);
  EXPECT_EQ(list.getlast(), &a);
  list.delete_(1);
  EXPECT_EQ(list.text() + list.log, "babcc");
}

TEST(Texts, LeaveByTheirText) {
  txstrings list;
  for (const char* const text : {"one", "", "Two", "one"}) list.add(text);
  list.put(0, list.get(2).substr(1));
  EXPECT_EQ(list.extract("TWO").view(), "TWO") << "as it was asked for";
  for (const char* const none : {"", "three"}) EXPECT_EQ(list.extract(none).view(), "");
  EXPECT_EQ(list.count(), 3);
  EXPECT_EQ(list.indexof("WO") * 10 + list.indexof("One"), 2);
  EXPECT_EQ(list.extract("wo").view(), "wo");
}

TEST(Texts, AreSortedAsTheyAreSought) {
  txstrings list;
  for (const char* const text : {"b", "A", "", "C", "a_", "aB"}) list.add(text);
  list.sort();
  std::string sorted;
  for (std::int32_t i = 0; i < list.count(); ++i) sorted.append(list.get(i)) += ' ';
  EXPECT_EQ(sorted, " A aB a_ b C ");
}

}  // namespace
}  // namespace optxv
