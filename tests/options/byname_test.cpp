// Lookup and access by name.

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <vector>

#include "options/zmaoptions.h"
#include "support/optiontable.h"

namespace optxv::test {
namespace {

// --- The three rules, stated a second time, step by step and with positions from 1 --------------

char up(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
bool same(const std::string& a, const std::string& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (up(a[i]) != up(b[i])) return false;
  return true;
}

bool path(const std::string& key, const std::string& name) {
  std::size_t i = 0;
  std::size_t j = 0;
  int c = 0;
  while (i < key.size() && j < name.size()) {
    ++i;
    ++j;
    const bool keyends = key[i - 1] == '_';
    const bool nameends = name[j - 1] == '_';
    if (!keyends && !nameends) {
      if (up(key[i - 1]) == up(name[j - 1]))
        ++c;
      else if (c < 3)
        return false;
      continue;
    }
    if (c < 3) return false;
    while (key[i - 1] != '_' && i < key.size()) ++i;
    while (name[j - 1] != '_' && j < name.size()) ++j;
    c = 0;
  }
  if (c < 3) return false;
  if (i < key.size()) {
    ++i;
    while (key[i - 1] != '_' && i < key.size()) ++i;
  }
  if (j < name.size()) {
    ++j;
    while (name[j - 1] != '_' && j < name.size()) ++j;
  }
  return key[i - 1] != '_' && name[j - 1] != '_';
}

std::string fourbehind(const std::string& text, std::size_t underscore) {
  std::string word = text.substr(underscore + 1, 4);
  return word.substr(0, word.find('_'));
}

bool minos(const std::string& key, const std::string& name) {
  if (!same(key.substr(0, 3), name.substr(0, 3))) return false;
  std::size_t p = 0;
  std::size_t q = 0;
  while (true) {
    const std::size_t k = key.find('_', p);
    const std::size_t n = name.find('_', q);
    if ((k == std::string::npos) != (n == std::string::npos)) return false;
    if (k == std::string::npos) return true;
    if (!same(fourbehind(key, k), fourbehind(name, n))) return false;
    p = k + 1;
    q = n + 1;
  }
}

void addplain(tzmaoptions& options, const std::string& name) {
  options.addoption(name, std::make_unique<tstrlistoption>(name, &options, optionhelp()));
}

TEST(Lookup, AgreesWithTheRulesWordByWord) {
  std::mt19937 random(5);
  const auto text = [&](bool key) {
    static const std::vector<std::string> parts = {
        "abc", "ABCD", "abcde", "abd", "ab", "a", "_", "_", "_", "abcx", "x", "_abc", "ABCDE"};
    std::string all = key || random() % 8 != 0 ? "" : "a";
    for (std::size_t n = random() % 6; n > 0; --n) all += parts[random() % parts.size()];
    return all;
  };
  for (int tables = 0; tables < 60; ++tables) {
    tzmaoptions options;
    std::vector<std::string> names;
    for (std::size_t n = random() % 40; n > 0; --n) {
      names.push_back(text(false));
      addplain(options, names.back());
    }
    for (int queries = 0; queries < 300; ++queries) {
      const std::string key = text(true);
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

TEST(Lookup, FindsTheseNames) {
  const lines names = {"steplim",     "iteration_limit", "print_level",       "print_limit",
                       "a_long_name", "STEPLIM",         "one_two_three_four"};
  const struct {
    std::uint8_t mode;
    const char* key;
    int found;
  } rows[] = {{0, "STEPLIM", 0},
              {0, "step", -1},
              {1, "ite_lim", 1},
              {1, "it_lim", -1},
              {1, "iteXYZ_limXYZ", 1},
              {1, "a_long_name", -1},
              {1, "pri_lim", 3},
              {1, "pri_l", -1},
              {2, "ite_limi", 1},
              {2, "iterate_limit", 1},
              {2, "ite_lim", -1},
              {2, "a_longer_named", 4},
              {2, "one_two_thre_fourteen", 6},
              {2, "one_two_thr_four", -1}};
  tzmaoptions options;
  for (const std::string& name : names) addplain(options, name);
  for (const auto& row : rows) {
    options.lookupmode = row.mode;
    EXPECT_EQ(options.optlookup(row.key), row.found) << int{row.mode} << ' ' << row.key;
  }
}

TEST(Synonyms, AreSeenWholeAndByThoseThatAssign) {
  optiontable options(
      "Path lookup\nfirst_name integer.TWO 77 3 0 9 0 0\nother synonym fir_nam\nl strlist 1 0 0\n"
      "long_list strlist 5 0 0\nll synonym long_list\n");
  std::int32_t number = 0;
  std::int32_t refnr = 0;
  for (const char* name : {"first_name", "FIR_NAM", "OTHER"}) {
    EXPECT_EQ(options->optfindstr(name, number, refnr), 1) << name;
    EXPECT_EQ(number, 2);
    EXPECT_EQ(refnr, 77);
    EXPECT_EQ(str(options->curoptname), name);
  }
  EXPECT_EQ(options->optfindstr("oth", number, refnr), 0);
  EXPECT_EQ(number, -1);
  EXPECT_EQ(refnr, -1);
  EXPECT_EQ(options->optlookup("other"), -1);
  EXPECT_EQ(options->optsetrefnrstr("other", 5), 0);
  EXPECT_EQ(options->optsetrefnrstr("fir_nam", 5), 1);
  EXPECT_EQ(options.option("other").refnr, 5);

  shortstring text = "?";
  EXPECT_EQ(options->optgetvalstr("other", text), 1);
  EXPECT_EQ(str(text), "3");
  options.option("other").setasstring2("4");
  EXPECT_EQ(options->optgetval2str("other", text), 1);
  EXPECT_EQ(str(text), "4");
  EXPECT_EQ(options->getasstring("other"), "3");
  EXPECT_EQ(options->optlistcountstr("ll"), 0);
  EXPECT_EQ(options->optlistcountstr("other"), -1);
  EXPECT_EQ(options->optgetval2str("ll", text), 0);
  EXPECT_EQ(str(text), "");
  text = "?";
  EXPECT_EQ(options->optgetvalstr("no", text), 0);
  EXPECT_EQ(str(text), "");
  EXPECT_EQ(options->getasstring("no"), "");
  options->setasstring("no", "1");
  EXPECT_EQ(options.queue(), lines());
  EXPECT_EQ(str(options->curoptname), "no");
}

TEST(Synonyms, OfNothingLeadNowhere) {
  optiontable options;
  options.define("lost synonym nothing\nx integer 1 0 0 1 0 0\nto synonym x\n");
  options->optclearmessages();
  const struct {
    std::int32_t position, result;
    std::string synonym, option;
  } rows[] = {{0, 0, "", ""}, {1, 1, "lost", ""},   {2, 1, "to", "x"},
              {3, 0, "", ""}, {INT_MIN, 0, "", ""}, {INT_MAX, 0, "", ""}};
  for (const auto& row : rows) {
    shortstring synonym = "?";
    shortstring option = "?";
    EXPECT_EQ(options->optgetsynonym(row.position, synonym, option), row.result);
    EXPECT_EQ(str(synonym), row.synonym);
    EXPECT_EQ(str(option), row.option);
  }
  EXPECT_EQ(options->optionasobj("lost"), nullptr);
  EXPECT_EQ(options->optlistcountstr("lost"), -2);
}

TEST(DisplayNames, HaveBlanksUnderMinos) {
  optiontable options("Minos lookup\nmax_iter_count integer 1 0 0 9 4 3 text\n");
  shortstring names[4];
  shortstring text;
  std::int32_t n[3] = {2, 0, 0};
  double real = 0;
  options->optgetnamenr(2, names[0]);
  options->optgetopthelpnr(2, names[1], n[1], n[2]);
  options->optgetvaluesnr(2, names[2], n[1], real, text);
  EXPECT_TRUE(options->checkoptnr(n[0]));
  names[3] = options->curoptname;
  for (const shortstring& name : names) EXPECT_EQ(str(name), "max iter count");
  options->optgethelpnr(2, names[0], text);
  EXPECT_EQ(str(names[0]), "max_iter_count");  // as it stands in the table
  EXPECT_EQ(options->optgetnamenr(3, names[0]), 0);
  EXPECT_EQ(str(names[0]), "");
}

TEST(StringLists, GiveTheirItemsByName) {
  optiontable options("l strlist 1 0 0\nx integer 2 0 0 9 0 0\n");
  options->setasstring("l", "one");
  options->setasstring("L", "two");
  const auto read = [&](const char* name, std::int32_t position) {
    shortstring item = "?";
    const std::int32_t result = options->optreadfromliststr(name, position, item);
    return std::to_string(result) + str(item);
  };
  const auto take = [&](const char* name) {
    shortstring item = "?";
    const std::int32_t result = options->optgetfromliststr(name, item);
    return std::to_string(result) + str(item);
  };
  EXPECT_EQ(options->optlistcountstr("l"), 2);
  EXPECT_EQ(lines({read("l", 0), read("l", 1), read("l", 2), read("l", 3), read("l", INT_MIN),
                   read("x", 1), read("y", 1)}),
            lines({"0", "1one", "1two", "0", "0", "-1", "-2"}));
  EXPECT_EQ(lines({take("l"), take("l"), take("l"), take("x"), take("y")}),
            lines({"1one", "1two", "0", "-1", "-2"}));
  EXPECT_EQ(options->optlistcountstr("l"), 0);
  EXPECT_EQ(options.option("l").defined, 1);
}

TEST(StringLists, AreEmptiedItemByItem) {
  optiontable options("a strlist 1 0 0\nb strlist 2 0 0\n");
  const auto take = [&](std::int32_t selector) {
    shortstring name = "name";
    shortstring item = "item";
    const std::int32_t result = options->optgetfromanystrlist(selector, name, item);
    return std::to_string(result) + " " + str(name) + " " + str(item);
  };
  EXPECT_EQ(take(0), "0 name item");
  for (const char* text : {"b 1", "--run 2", "b 3", "--run 4"}) options.readline(text);
  EXPECT_EQ(take(-1), "1 --run 2");
  EXPECT_EQ(take(0), "1 b 1");
  EXPECT_EQ(take(0), "1 b 3");
  EXPECT_EQ(take(0), "0 --run item");  // the last list that was looked at
  EXPECT_EQ(take(1), "1 --run 4");
  EXPECT_EQ(take(1), "0 name item");
}

}  // namespace
}  // namespace optxv::test
