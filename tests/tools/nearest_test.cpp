#include "nearest.h"

#include <gtest/gtest.h>

#include <random>

namespace command {
namespace {

using names = std::vector<std::string>;

const std::vector<knownname> table = {{"steplim", 1},
                                      {"stplim", 1},
                                      {"tol", 2},
                                      {"time_limit", 3},
                                      {"mip_rel_gap", 4},
                                      {"mip_abs_gap", 5},
                                      {"mip_heuristic_effort", 6},
                                      {"Solver", 7},
                                      {"solve_relaxation", 8},
                                      {"max iterations", 9},
                                      {"cut_a", 10},
                                      {"cut_b", 11},
                                      {"cut_c", 12},
                                      {"cut_d", 13},
                                      {"primal_feasibility_tolerance", 14}};

TEST(NearestNames, Finds) {
  struct row {
    std::string wrong;
    names expected;
  };
  const std::vector<row> rows = {
      {"stelpim", {"steplim"}},               // two neighbours swapped; its synonym is not told too
      {"STEPLIN", {"steplim"}},               // case does not count
      {"stplm", {"stplim"}},                  // the synonym is the nearer of the two
      {"too", {"tol"}},                       //
      {"to", {}},                             // too short to tell a slip
      {"solvr", {"Solver"}},                  //
      {"max_iteration", {"max iterations"}},  // a blank is an underscore
      {"time", {"time_limit"}},               // the beginning
      {"gap_mip_rel", {"mip_rel_gap", "mip_abs_gap"}},  // words in another order; two of three
      {"heuristics_effort", {"mip_heuristic_effort"}},
      {"primal_feas_tol", {"primal_feasibility_tolerance"}},
      {"cut_x", {"cut_a", "cut_b", "cut_c"}},  // no more than three, in the order of the table
      {"gomory_rounds", {}},
      {"", {}},
      {std::string(300, 'a'), {}},
  };
  const nearestnames nearest(table);
  for (const row& each : rows) EXPECT_EQ(nearest.nearest(each.wrong), each.expected) << each.wrong;
}

/// The distance by its definition, with no bound on the work.
std::size_t plaindistance(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); i++)
    for (std::size_t j = 0; j <= b.size(); j++) {
      d[i][j] = i + j;
      if (i == 0 || j == 0) continue;
      d[i][j] = std::min(
          {d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
    }
  return d[a.size()][b.size()];
}

TEST(NearestNames, BoundedDistanceIsTheDistance) {
  std::mt19937 random(7);
  const auto word = [&] {
    std::string text(random() % 9, 'a');
    for (char& c : text) c = static_cast<char>('a' + random() % 3);
    return text;
  };
  for (int round = 0; round < 20000; round++) {
    const std::string a = word(), b = word();
    const std::size_t limit = random() % 5, exact = plaindistance(a, b);
    const std::size_t bounded = slips(a, b, limit);
    ASSERT_EQ(bounded, std::min(exact, limit + 1)) << a << ' ' << b << ' ' << limit;
  }
}

}  // namespace
}  // namespace command
