// Lookup and access by name.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "options/zmaoptions.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

// The three rules, written a second time, step by step and with positions from 1.

char up(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
bool same(const std::string& a, const std::string& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char c, char d) { return up(c) == up(d); });
}

lines wordsof(const std::string& text) {
  lines words(1);
  for (const char c : text) c == '_' ? void(words.emplace_back()) : words.back().push_back(c);
  return words;
}

bool minos(const std::string& key, const std::string& name) {
  const lines a = wordsof(key), b = wordsof(name);
  if (a.size() != b.size() || !same(key.substr(0, 3), name.substr(0, 3))) return false;
  for (std::size_t i = 1; i < a.size(); ++i)
    if (!same(a[i].substr(0, 4), b[i].substr(0, 4))) return false;
  return true;
}

void toend(const std::string& text, std::size_t& i) {
  while (text[i - 1] != '_' && i < text.size()) ++i;
}

bool path(const std::string& key, const std::string& name) {
  std::size_t i = 0, j = 0;
  int c = 0;
  while (i < key.size() && j < name.size()) {
    ++i;
    ++j;
    const bool words = key[i - 1] != '_' && name[j - 1] != '_';
    const bool alike = words && up(key[i - 1]) == up(name[j - 1]);
    if (c < 3 && !alike) return false;
    c = words ? c + alike : 0;
    if (words) continue;
    toend(key, i);
    toend(name, j);
  }
  if (c < 3) return false;
  if (i < key.size()) toend(key, ++i);
  if (j < name.size()) toend(name, ++j);
  return key[i - 1] != '_' && name[j - 1] != '_';
}

TEST(Lookup, AgreesWithTheRulesWordByWord) {
  std::mt19937 random(5);
  const lines parts = {"abc", "ABCD", "abcde", "abd",  "ab",    "a",     "_",     "_",
                       "_",   "x",    "abcx",  "_abc", "ABCDE", "[\xe1", "{\xc1", "@`"};
  const auto text = [&](std::string all) {
    for (std::size_t n = random() % 6; n > 0; --n) all += parts[random() % parts.size()];
    return all;
  };
  for (int tables = 0; tables < 60; ++tables) {
    tzmaoptions options;
    lines names;
    for (std::size_t n = random() % 40; n > 0; --n) {
      names.push_back(text(random() % 8 == 0 ? "a" : ""));
      const std::string& name = names.back();
      options.addoption(name, std::make_unique<tstrlistoption>(name, &options, optionhelp()));
    }
    for (int queries = 0; queries < 300; ++queries) {
      const std::string key = text("");
      for (std::uint8_t mode = 0; mode < 5; ++mode) {
        options.lookupmode = mode;
        std::int32_t first = -1;
        for (std::size_t i = 0; first < 0 && i < names.size(); ++i)
          if ((mode == 0 && !key.empty() && same(key, names[i])) ||
              (mode == 1 && path(key, names[i])) || (mode == 2 && minos(key, names[i])))
            first = static_cast<std::int32_t>(i);
        ASSERT_EQ(options.optlookup(key), first) << key << " in mode " << int{mode};
      }
    }
  }
}

TEST(Synonyms, AreSeenWholeAndByThoseThatAssign) {
  optiontable options(
      "Path lookup\nfirst_name integer.TWO 77 3 0 9 0 0\nother synonym fir_nam\n"
      "long_list strlist 5 0 0\nll synonym long_list\n");
  std::int32_t number = 0, refnr = 0;
  for (const char* name : {"first_name", "FIR_NAM", "OTHER", "oth"}) {
    const bool found = str(name) != "oth";
    EXPECT_EQ(options->optfindstr(name, number, refnr), found ? 1 : 0) << name;
    EXPECT_EQ(number, found ? 2 : -1);
    EXPECT_EQ(refnr, found ? 77 : -1);
    EXPECT_EQ(options->curoptname.view(), name);
  }
  EXPECT_EQ(options->optsetrefnrstr("other", 5), 0);
  EXPECT_EQ(options->optsetrefnrstr("fir_nam", 5), 1);
  EXPECT_EQ(options->optlistcountstr("ll"), 0);
  EXPECT_EQ(options->optlistcountstr("other"), -1);
}

TEST(StringLists, GiveTheirItems) {
  optiontable options("l strlist 1 0 0\nx integer 2 0 0 9 0 0\nb strlist 2 0 0\n");
  for (const char* text : {"L one", "l two", "b 1", "--run 2", "b 3", "--run 4"})
    options.read(text);
  shortstring first;
  EXPECT_EQ(options->optgetfromliststr("l", first), 1);
  EXPECT_EQ(str(first), "one");
  EXPECT_EQ(options->optgetfromliststr("l", first) + options->optgetfromliststr("l", first), 1);
  EXPECT_EQ(options.state(), "l=[] b=[1|3] --run=[2|4]");
  lines seen;
  for (const std::int32_t selector : {-1, 0, 0, 0, 1, 1}) {
    shortstring name = "name", item = "item";
    const std::int32_t result = options->optgetfromanystrlist(selector, name, item);
    seen.push_back(std::to_string(result) + " " + str(name) + " " + str(item));
  }
  EXPECT_EQ(joined(seen),  // the last list that was looked at
            "1 --run 2 | 1 b 1 | 1 b 3 | 0 --run item | 1 --run 4 | 0 name item");
}

}  // namespace
}  // namespace optxv
