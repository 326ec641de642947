#include "report.h"

#include <algorithm>
#include <cstdio>

namespace optxv::bench {
namespace {

/// What of its two bounds a figure keeps.
const char* kept(double measured, const bounds& held) {
  if (measured > held.limit) return "NO";
  return measured <= held.goal.value_or(held.limit) ? "yes" : "limit";
}

void printrow(std::string_view what, double measured, const bounds& held) {
  std::printf("%-72.*s %9.2f %8.2f ", static_cast<int>(what.size()), what.data(), measured,
              held.limit);
  if (held.goal)
    std::printf("%8.2f", *held.goal);
  else
    std::printf("%8s", "");
  std::printf("  %s\n", kept(measured, held));
}

}  // namespace

bool leasttimes::ReportContext(const Context& context) {
  PrintBasicContext(&GetErrorStream(), context);
  return true;
}

void leasttimes::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
    const double time = run.cpu_accumulated_time / static_cast<double>(run.iterations);
    const auto [place, isnew] = seconds_.try_emplace(run.run_name.function_name, time);
    if (!isnew) place->second = std::min(place->second, time);
  }
}

void leasttimes::printtimes() const {
  std::printf("\n%-72s %17s\n", "least CPU time of one round", "microseconds");
  for (const auto& [name, time] : seconds_) std::printf("%-72s %17.2f\n", name.c_str(), time * 1e6);
}

void leasttimes::printtargets(const std::vector<target>& targets,
                              const std::vector<figure>& figures) const {
  std::printf("\n%-72s %9s %8s %8s  %s\n", "target", "measured", "limit", "goal", "met");
  for (const target& row : targets) {
    const auto name = seconds_.find(row.name), base = seconds_.find(row.base);
    if (name == seconds_.end() || base == seconds_.end()) continue;
    printrow(row.what, name->second / base->second * row.scale, row.held);
  }
  for (const figure& row : figures) printrow(row.what, row.measured, row.held);
}

}  // namespace optxv::bench
