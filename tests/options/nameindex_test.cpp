// The first entry of a list, found through an index: always the one that a walk from the front
// finds, while the lists grow.

#include "options/nameindex.h"

#include <random>
#include <string>
#include <vector>

#include "options/toption.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

/// The place of the first equal entry, or -1.
template <class Entry>
std::int32_t walked(const std::vector<Entry>& entries, const Entry& wanted) {
  const auto found = std::find(entries.begin(), entries.end(), wanted);
  return found != entries.end() ? static_cast<std::int32_t>(found - entries.begin()) : -1;
}

TEST(Indexes, FindTheFirstOfEqualNumbers) {
  std::mt19937 random(3);
  tzmaoptions options;
  tenumintoption items("items", &options, 0, {});
  tmultilistoption list("list", &options, {});
  std::vector<std::int32_t> numbers;
  const auto compare = [&] {
    for (std::int32_t wanted = -1; wanted < 60; ++wanted) {
      const std::int32_t first = walked(numbers, wanted);
      ASSERT_EQ(items.indexofvalue(wanted), first) << numbers.size();
      ASSERT_EQ(list.hasmember(wanted), first >= 0) << numbers.size();
      ASSERT_EQ(options.optgetgroupgrpnr(wanted), first >= 0 ? first + 1 : -1) << numbers.size();
    }
  };
  while (numbers.size() < 3 * shortlist) {
    numbers.push_back(static_cast<std::int32_t>(random() % 60) - 1);
    items.additem(numbers.back(), 0, {});
    list.additem(numbers.back());
    options.addgroup("g", std::make_unique<tgroupobj>(numbers.back(), 0, kepttext()));
    compare();
  }
  list.reset();
  EXPECT_FALSE(list.hasmember(numbers.front()));
  list.additem(59);
  EXPECT_TRUE(list.hasmember(59));
}

TEST(Indexes, FindTheFirstOfEqualTexts) {
  constexpr std::string_view letters = "aAbB";
  std::mt19937 random(4);
  tzmaoptions options;
  tenumstroption items("items", &options, {}, {});
  lines texts;
  const auto text = [&] {
    std::string made;
    for (std::size_t n = random() % 5; n > 0; --n) made += letters[random() % letters.size()];
    return made;
  };
  const auto folded = [](const std::string& made) { return str(uppercase(made)); };
  while (texts.size() < 3 * shortlist) {
    const std::string next = text();
    items.additem(next, 0, {});
    texts.push_back(folded(next));
    for (int tries = 0; tries < 100; ++tries) {
      const std::string wanted = text();
      const std::int32_t first = wanted.empty() ? -1 : walked(texts, folded(wanted));
      ASSERT_EQ(items.indexoftext(wanted), first) << wanted << " of " << texts.size();
    }
  }
}

}  // namespace
}  // namespace optxv
