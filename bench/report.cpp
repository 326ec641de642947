#include "report.h"

#include <algorithm>
#include <cstdio>

namespace optxv::bench {
namespace {

void printrow(std::string_view what, double measured, double limit) {
  std::printf("%-68.*s %9.2f %7.2f  %s\n", static_cast<int>(what.size()), what.data(), measured,
              limit, measured <= limit ? "yes" : "NO");
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
  std::printf("\n%-68s %17s\n", "least CPU time of one round", "microseconds");
  for (const auto& [name, time] : seconds_) std::printf("%-68s %17.2f\n", name.c_str(), time * 1e6);
}

void leasttimes::printtargets(const std::vector<target>& targets,
                              const std::vector<figure>& figures) const {
  std::printf("\n%-68s %9s %7s  %s\n", "target", "measured", "limit", "met");
  for (const target& row : targets) {
    const auto name = seconds_.find(row.name), base = seconds_.find(row.base);
    if (name == seconds_.end() || base == seconds_.end()) continue;
    printrow(row.what, name->second / base->second * row.scale, row.limit);
  }
  for (const figure& row : figures) printrow(row.what, row.measured, row.limit);
}

}  // namespace optxv::bench
