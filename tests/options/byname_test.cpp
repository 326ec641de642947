// Lookup and access by name.

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <memory>
#include <random>
#include <string>

#include "options/zmaoptions.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

/// A table of string lists with these names, which finds them by a rule.
class namedlists {
 public:
  explicit namedlists(lookuprule rule) { options_.lookupmode = rule; }
  namedlists(lookuprule rule, const std::string& name) : namedlists(rule) { add(name); }
  void add(const std::string& name) {
    options_.addoption(name, options_.make<tstrlistoption>(name, optionhelp()));
  }
  std::int32_t find(const std::string& key) const { return options_.optlookup(key); }
  tzmaoptions* operator->() { return &options_; }

 private:
  tzmaoptions options_;
};

TEST(Lookup, ByPathAndByMinos) {
  const struct {
    const char *key, *name;
    bool path, minos;
  } rows[] = {
      {"iteration_limit", "ITERATION_LIMIT", true, true},
      {"ite_lim", "iteration_limit", true, false},  // Minos wants four of a later word
      {"ite_limi", "iteration_limit", true, true},
      {"it_limi", "iteration_limit", false, false},        // both want three of the first
      {"iterate_limited", "iteration_limit", true, true},  // what follows them does not count
      {"iteXYZ_limXYZ", "iteration_limit", true, false},
      {"ite", "iteration_limit", false, false},  // as many words as the name has
      {"ite_limi_it", "iteration_limit", false, false},
      {"ite_limi_", "iteration_limit", false, false},
      {"ite__limi", "iteration_limit", false, false},
      {"tolerances", "tol", true, true},
      {"to", "to", false, true},  // a short word is found whole, by Minos alone
      {"to", "tol", false, false},
      {"tol", "to", false, false},
      {"a_long_name", "a_long_name", false, true},
      {"a_long_naming", "a_long_name", false, false},
      {"abc_de", "abc_def", false, false},
      {"abc_", "abc_", false, true},  // and so is an empty one
      {"_abcd", "_abcde", false, true},
      {"_abc", "_abcd", false, false},
      {"abc", "[bc", false, false},  // only letters have a case
      {"abc[", "abc{", true, true},
      {"", "", false, true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(namedlists(lookupPath, row.name).find(row.key) == 0, row.path)
        << row.key << " for " << row.name << " by Path";
    EXPECT_EQ(namedlists(lookupMinos, row.name).find(row.key) == 0, row.minos)
        << row.key << " for " << row.name << " by Minos";
  }
}

/// A key finds the first of those names that it finds each in a table of its own.
TEST(Lookup, GivesTheFirstThatMatches) {
  std::mt19937 random(5);
  const lines parts = {"abc", "ABCD", "abcde", "abd",  "ab",    "a",     "_",     "_",
                       "_",   "x",    "abcx",  "_abc", "ABCDE", "[\xe1", "{\xc1", "@`"};
  const auto text = [&] {
    std::string all;
    for (std::size_t n = random() % 6; n > 0; --n) all += parts[random() % parts.size()];
    return all;
  };
  for (int tables = 0; tables < 60; ++tables) {
    const auto rule = static_cast<lookuprule>(tables % 3);
    namedlists all(rule);
    std::vector<std::unique_ptr<namedlists>> each;
    for (std::size_t n = random() % 40; n > 0; --n) {
      const std::string name = text();
      all.add(name);
      each.push_back(std::make_unique<namedlists>(rule, name));
      for (int queries = 0; queries < 15; ++queries) {
        const std::string key = text();
        const auto first =
            std::ranges::find_if(each, [&](auto& one) { return one->find(key) == 0; });
        const auto expected = first == each.end() ? -1 : first - each.begin();
        ASSERT_EQ(all.find(key), expected) << key << " by rule " << int{rule};
      }
    }
  }
}

TEST(Lookup, FindsNothingByARuleThatIsUnknown) {
  namedlists table(lookupNormal, "iteration_limit");
  EXPECT_EQ(table.find("Iteration_Limit"), 0);
  EXPECT_EQ(table.find(""), -1);
  for (const int code : {3, 255}) {
    table->lookupmode = static_cast<std::uint8_t>(code);
    EXPECT_EQ(table.find("iteration_limit"), -1) << code;
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

// As a queue of the standard library, while it fills for a while and is emptied for a while.
TEST(StringLists, AreEmptiedFromTheFront) {
  std::mt19937 random(6);
  namedlists table(lookupNormal, "queue");
  toption& list = *table->getobjects(0);
  std::deque<std::string> plain;
  for (int step = 0; step < 4000; ++step) {
    shortstring item, name;
    if (random() % 8 < (step % 400 < 200 ? 5U : 2U)) {
      plain.push_back(std::to_string(step));
      list.setasstring(plain.back());
    } else if (!plain.empty()) {
      if (step % 2 == 0)
        table->optgetfromliststr("queue", item);
      else
        table->optgetfromanystrlist(0, name, item);
      ASSERT_EQ(str(item), plain.front()) << step;
      plain.pop_front();
    }
    const auto count = static_cast<std::int32_t>(plain.size());
    ASSERT_EQ(table->optlistcountstr("queue"), count) << step;
    table->optreadfromliststr("queue", count, item);
    ASSERT_EQ(str(item), plain.empty() ? "" : plain.back()) << step;
  }
  list.reset();
  EXPECT_EQ(table->optlistcountstr("queue"), 0);
}

}  // namespace
}  // namespace optxv
