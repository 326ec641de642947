// The first entry of a list with a number, found through an index: always the one that a walk from
// the front finds, while the lists grow. Names have their test in byname_test.cpp.

#include "options/nameindex.h"

#include <algorithm>
#include <random>
#include <vector>

#include "options/toption.h"
#include "support/optiontable.h"

namespace optxv {
namespace {

TEST(Indexes, FindTheFirstOfEqualNumbers) {
  std::mt19937 random(3);
  tzmaoptions options;
  tenumintoption items("items", &options, 0, {});
  tmultilistoption list("list", &options, {});
  std::vector<std::int32_t> numbers;
  const auto compare = [&] {
    for (std::int32_t wanted = -1; wanted < 60; ++wanted) {
      const auto found = std::ranges::find(numbers, wanted);
      const auto first =
          found == numbers.end() ? -1 : static_cast<std::int32_t>(found - numbers.begin());
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

}  // namespace
}  // namespace optxv
