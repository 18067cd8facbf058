// Ratio reporting shared by the benchmark programs: each library benchmark is
// registered next to its baseline, both run in the same process, and after the
// run one line per pair prints library time / baseline time.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quillbench {

// Records each run's CPU time per iteration (steadier than wall time on a
// shared machine) while printing as usual.
class RecordingReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& r : runs) {
      if (r.error_occurred || r.iterations <= 0) continue;
      if (r.run_type == Run::RT_Iteration) {
        times_.try_emplace(r.run_name.str(), r.GetAdjustedCPUTime());
      } else if (r.aggregate_name == "median") {
        // With repetitions, the median stands for the benchmark.
        times_[r.run_name.str()] = r.GetAdjustedCPUTime();
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }
  [[nodiscard]] const std::map<std::string, double>& Times() const { return times_; }

 private:
  std::map<std::string, double> times_;
};

// Runs every registered benchmark, then prints "library / baseline" for each
// pair {library name, baseline name} whose both members ran.
inline int RunWithRatios(int argc, char** argv,
                         const std::vector<std::pair<std::string, std::string>>& pairs) {
  benchmark::Initialize(&argc, argv);
  RecordingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\n%-44s %-34s %s\n", "library", "baseline", "CPU time ratio (lower is better)");
  for (const auto& [lib, base] : pairs) {
    const auto l = reporter.Times().find(lib);
    const auto b = reporter.Times().find(base);
    if (l == reporter.Times().end() || b == reporter.Times().end() || b->second <= 0) continue;
    std::printf("%-44s %-34s %.2f\n", lib.c_str(), base.c_str(), l->second / b->second);
  }
  benchmark::Shutdown();
  return 0;
}

}  // namespace quillbench
