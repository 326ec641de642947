#include "language/nearestnames.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

namespace optxv {
namespace {

using names = std::vector<std::string>;

TEST(NearestNames, Finds) {
  const std::tuple<std::string, names> rows[] = {
      {"stelpim", {"steplim"}},  // two neighbours swapped; its synonym is not told too
      {"STPLM", {"stplim"}},     // the synonym is the nearer of the two
      {"to", {}},                // too short to tell a slip
      {"max_iteration", {"max iterations"}},
      {"gap_mip_rel", {"mip_rel_gap", "mip_abs_gap"}},  // words in another order; two of three
      {"cut_x", {"cut_a", "cut_b", "cut_c"}},           // no more than three
      {std::string(300, 'a'), {}}};
  const std::vector<knownname> table = {
      {"steplim", 1},        {"stplim", 1},      {"tol", 2},
      {"time_limit", 3},     {"mip_rel_gap", 4}, {"mip_abs_gap", 5},
      {"max iterations", 9}, {"cut_a", 10},      {"cut_b", 11},
      {"cut_c", 12},         {"cut_d", 13}};
  const nearestnames nearest(table);
  for (const auto& [wrong, found] : rows) EXPECT_EQ(nearest.nearest(wrong), found) << wrong;
}

/// The distance by its definition, with no bound on the work.
std::size_t plaindistance(const std::string& a, const std::string& b) {
  std::size_t d[10][10];
  for (std::size_t i = 0; i <= a.size(); i++)
    for (std::size_t j = 0; j <= b.size(); j++) {
      d[i][j] = i + j;
      if (i == 0 || j == 0) continue;
      const std::size_t changed = d[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, changed});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
    }
  return d[a.size()][b.size()];
}

TEST(NearestNames, BoundedDistanceIsTheDistance) {
  std::mt19937 random(7);
  for (int round = 0; round < 20000; round++) {
    std::string words[2];
    for (auto n = random() % 18; n > 0; n--) {
      std::string& word = words[n % 2];
      if (word.size() < 9) word += static_cast<char>('a' + random() % 3);
    }
    const std::size_t limit = random() % 5, exact = plaindistance(words[0], words[1]);
    ASSERT_EQ(slips(words[0], words[1], limit), std::min(exact, limit + 1))
        << words[0] << ' ' << words[1] << ' ' << limit;
  }
}

}  // namespace
}  // namespace optxv
