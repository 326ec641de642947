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

/// The first name that the key finds, by the whole name or by a rule above.
std::int32_t walked(std::uint8_t mode, const std::string& key, const lines& names) {
  for (std::size_t i = 0; i < names.size(); ++i)
    if ((mode == lookupNormal && !key.empty() && same(key, names[i])) ||
        (mode == lookupPath && path(key, names[i])) ||
        (mode == lookupMinos && minos(key, names[i])))
      return static_cast<std::int32_t>(i);
  return -1;
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
      options.addoption(name, options.make<tstrlistoption>(name, optionhelp()));
      for (int queries = 0; queries < 15; ++queries) {
        const std::string key = text("");
        options.lookupmode = static_cast<std::uint8_t>(random() % 5);
        ASSERT_EQ(options.optlookup(key), walked(options.lookupmode, key, names))
            << key << " in mode " << int{options.lookupmode};
      }
    }
  }
}

TEST(Lookup, PathAndMinosByExample) {
  // Rows: key >> name >> the rules that match.
  constexpr std::string_view rows = R"(
ite_lim >> iteration_limit >> Path
ITE_LIMI >> iteration_limit >> Path Minos
iterate_limit >> iteration_limit >> Path Minos
iteXYZ_limXYZ >> iteration_limit >> Path
it_lim >> iteration_limit >>
ite >> iteration_limit >>
ite_lim_it >> iteration_limit >>
ite_limi_ >> iteration_limit >>
a_long_name >> a_long_name >> Minos
a_long_naming >> a_long_name >>
tolerances >> tol >> Path Minos
to >> to >> Minos
abc_ >> abc_ >> Minos
_abc >> _abcd >>
_abcd >> _abcde >> Minos
)";
  for (const lines& row : rowsof(rows)) {
    optiontable options;
    const std::string& name = row[1];
    options->addoption(name, options->make<tstrlistoption>(name, optionhelp()));
    lines rules;
    for (const lookuprule rule : {lookupPath, lookupMinos}) {
      options->lookupmode = rule;
      if (options->optlookup(row[0]) == 0) rules.push_back(str(lookupcodes[rule]));
    }
    EXPECT_EQ(joined(rules, " "), row[2]) << row[0] << " for " << row[1];
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

/// String lists as plainly as can be: names and their items, taken from the front.
struct plainlists {
  /// The last list that was looked at, and the item if one was found.
  std::pair<std::string, std::string> takeany(bool dashed) {
    std::string seen;
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (items[i].empty()) continue;
      seen = names[i];
      if (seen.starts_with("--") == dashed) return {seen, take(i)};
    }
    return {seen, ""};
  }
  std::string take(std::size_t i) {
    if (items[i].empty()) return "";
    const std::string first = items[i].front();
    items[i].erase(items[i].begin());
    return first;
  }
  lines names;
  std::vector<lines> items;
};

TEST(StringLists, AreEmptiedFromTheFront) {
  std::mt19937 random(6);
  plainlists plain;
  tzmaoptions options;
  for (const char* name : {"a", "--b", "c", "--d", "e"}) {
    plain.names.emplace_back(name);
    options.addoption(name, options.make<tstrlistoption>(name, optionhelp()));
  }
  plain.items.resize(plain.names.size());
  for (int steps = 0; steps < 4000; ++steps) {
    const std::size_t i = random() % plain.names.size();
    toption& list = *options.getobjects(static_cast<std::int32_t>(i));
    // Lists fill for a while, and are emptied for a while.
    if (const std::size_t what = random() % 8 + (steps % 400 < 200 ? 0 : 3); what < 5) {
      plain.items[i].push_back(std::to_string(steps));
      list.setasstring(plain.items[i].back());
    } else if (what < 7) {
      shortstring item;
      options.optgetfromliststr(plain.names[i], item);
      ASSERT_EQ(str(item), plain.take(i)) << steps;
    } else if (random() % 50 == 0) {
      plain.items[i].clear();
      list.reset();
    } else {
      const bool dashed = random() % 2 == 0;
      shortstring name, item;
      const std::int32_t result = options.optgetfromanystrlist(dashed ? 2 : 0, name, item);
      ASSERT_EQ(std::pair(str(name), str(item)), plain.takeany(dashed)) << steps;
      ASSERT_EQ(result, item.empty() ? 0 : 1);
    }
    shortstring last;
    const auto count = static_cast<std::int32_t>(plain.items[i].size());
    ASSERT_EQ(options.optlistcountstr(plain.names[i]), count) << steps;
    options.optreadfromliststr(plain.names[i], count, last);
    ASSERT_EQ(str(last), count > 0 ? plain.items[i].back() : "") << steps;
  }
}

}  // namespace
}  // namespace optxv
