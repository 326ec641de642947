// What a run of the benchmarks prints at its end: the times, then the table of targets.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace optxv::bench {

/// What a figure is held against. The limit may not be passed; the goal is where we want to be, and
/// a figure without one of its own is where it should be once it is within its limit.
struct bounds {
  double limit;
  std::optional<double> goal = std::nullopt;
};

/// The cost of one benchmark in terms of another: cost(name) / cost(base) * scale.
struct target {
  std::string_view what;
  std::string name, base;
  bounds held;
  double scale = 1;
};

/// A figure that was counted rather than timed.
struct figure {
  std::string what;
  double measured;
  bounds held;
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
