#include "language/nearestnames.h"

#include <gtest/gtest.h>

#include <tuple>

namespace optxv {
namespace {

using names = std::vector<std::string>;

TEST(NearestNames, Finds) {
  const std::tuple<std::string, names> rows[] = {
      {"stelpim", {"steplim"}},  // two neighbours swapped; its synonym is not told too
      {"STPLM", {"stplim"}},     // the synonym is the nearer of the two
      {"tpl", {"tol"}},
      {"to", {}},  // too short to tell a slip
      {"max_iteration", {"max iterations"}},
      {"gap_mip_rel", {"mip_rel_gap", "mip_abs_gap"}},  // words in another order; two of three
      {"lim_time", {"time_limit"}},                     // the beginning of a word, of three letters
      {"lim_tim", {"time_limit"}},
      {"limit_tmie", {"time_limit"}},
      {"li_time", {}},                         // but not of two
      {"cut_x", {"cut_a", "cut_b", "cut_c"}},  // no more than three
      {std::string(300, 'a'), {}}};
  const std::vector<knownname> table = {
      {"steplim", 1},        {"stplim", 1},      {"tol", 2},
      {"time_limit", 3},     {"mip_rel_gap", 4}, {"mip_abs_gap", 5},
      {"max iterations", 9}, {"cut_a", 10},      {"cut_b", 11},
      {"cut_c", 12},         {"cut_d", 13}};
  const nearestnames nearest(table);
  for (const auto& [wrong, found] : rows) EXPECT_EQ(nearest.nearest(wrong), found) << wrong;
}

TEST(NearestNames, CountSlips) {
  const struct {
    std::string one, other;
    std::size_t slips;
  } rows[] = {{"steplim", "steplim", 0}, {"steplim", "stelpim", 1},  // two neighbours swapped
              {"steplim", "setplm", 2},  {"tol", "", 3},
              {"abcdef", "bcdefa", 2},  // one in front gone, one at the end more
              {"ca", "abc", 3},         // what was swapped is not changed again
              {"kitten", "sitting", 3},  {"abcabc", "acbacb", 2},
              {"aaaa", "bbbb", 4}};
  for (const auto& row : rows)
    for (const std::size_t limit : {0U, 1U, 2U, 3U, 4U, 9U}) {
      const std::size_t known = std::min(row.slips, limit + 1);
      EXPECT_EQ(slips(row.one, row.other, limit), known) << row.one << ' ' << row.other << limit;
      EXPECT_EQ(slips(row.other, row.one, limit), known) << row.other << ' ' << row.one << limit;
    }
}

}  // namespace
}  // namespace optxv
