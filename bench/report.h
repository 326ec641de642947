// What a run of the benchmarks prints at its end: the times, then the table of targets.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace optxv::bench {

/// A limit on the cost of one benchmark in terms of another: cost(name) / cost(base) * scale.
struct target {
  std::string_view what;
  std::string name, base;
  double limit;
  double scale = 1;
};

/// A figure that was counted rather than timed, and its limit.
struct figure {
  std::string what;
  double measured, limit;
};

/// Keeps the least CPU time of each benchmark over all its repetitions: on a machine that others
/// use, noise only ever adds.
class leasttimes : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

  void printtimes() const;
  /// Prints a line for each figure, and for each target whose two benchmarks both ran.
  void printtargets(const std::vector<target>& targets, const std::vector<figure>& figures) const;

 private:
  std::map<std::string, double> seconds_;
};

}  // namespace optxv::bench
