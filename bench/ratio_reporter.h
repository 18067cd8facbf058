// Ratio reporting shared by the benchmark programs: each library benchmark is
// registered next to its baseline, both run in the same process, and after the
// run one line per pair prints library time / baseline time.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace quillbench {

// A ratio over repetitions: the median of the per-repetition ratios and
// their smallest and largest value (the spread).
struct RatioStats {
  double median = 0;
  double low = 0;
  double high = 0;
  std::size_t samples = 0;
};

// Records each run's CPU time per iteration (steadier than wall time on a
// shared machine) while printing as usual.
class RecordingReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& r : runs) {
      if (r.error_occurred || r.iterations <= 0) continue;
      if (r.run_type == Run::RT_Iteration) {
        times_.try_emplace(r.run_name.str(), r.GetAdjustedCPUTime());
        samples_[r.run_name.str()].push_back(r.GetAdjustedCPUTime());
      } else if (r.aggregate_name == "median") {
        // With repetitions, the median stands for the benchmark.
        times_[r.run_name.str()] = r.GetAdjustedCPUTime();
      }
    }
    ConsoleReporter::ReportRuns(runs);
  }
  [[nodiscard]] const std::map<std::string, double>& Times() const { return times_; }

  // time(lib) / time(base) for each repetition k (the k-th run of each; with
  // --benchmark_enable_random_interleaving the two ran close together).
  // samples == 0 when either did not run.
  [[nodiscard]] RatioStats Ratio(const std::string& lib, const std::string& base) const {
    RatioStats st;
    const auto l = samples_.find(lib);
    const auto b = samples_.find(base);
    if (l == samples_.end() || b == samples_.end()) return st;
    std::vector<double> r;
    for (std::size_t k = 0; k < std::min(l->second.size(), b->second.size()); ++k) {
      if (b->second[k] > 0) r.push_back(l->second[k] / b->second[k]);
    }
    if (r.empty()) return st;
    std::sort(r.begin(), r.end());
    st.samples = r.size();
    st.low = r.front();
    st.high = r.back();
    st.median = r.size() % 2 ? r[r.size() / 2] : (r[r.size() / 2 - 1] + r[r.size() / 2]) / 2;
    return st;
  }

 private:
  std::map<std::string, double> times_;
  std::map<std::string, std::vector<double>> samples_;
};

// Runs every registered benchmark, then prints "library / baseline" for each
// pair {library name, baseline name} whose both members ran.
inline int RunWithRatios(int argc, char** argv,
                         const std::vector<std::pair<std::string, std::string>>& pairs) {
  benchmark::Initialize(&argc, argv);
  RecordingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\n%-44s %-34s %s\n", "library", "baseline",
              "CPU time ratio (lower is better): median [min - max] of n runs");
  for (const auto& [lib, base] : pairs) {
    const RatioStats st = reporter.Ratio(lib, base);
    if (st.samples == 0) continue;
    std::printf("%-44s %-34s %.2f [%.2f - %.2f] n=%zu\n", lib.c_str(), base.c_str(), st.median,
                st.low, st.high, st.samples);
  }
  benchmark::Shutdown();
  return 0;
}

}  // namespace quillbench
