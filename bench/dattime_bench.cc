// Reading dates by format: Gdattime::TryStrToDateTimeByFormat against the C
// library's strptime (the baseline) on the same few thousand texts.
//
// Each benchmark reads every text of its set once per iteration and checks
// that all of them were read. Counters: "parses/s" (texts read per second)
// and "allocs/parse" (heap allocations per text, counted by replacing
// operator new; the target is 0). At the end the ratio of the library's time
// to the baseline's is printed for each pair.
#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <new>
#include <string>
#include <vector>

#include "quill/dattime/gdattime.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"

namespace {

std::atomic<uint64_t> g_allocs{0};

}  // namespace

// Kept out of line: inlined into callers, GCC would pair the malloc and free
// across the replacement and warn about a new/free mismatch.
__attribute__((noinline)) void* operator new(std::size_t n) {
  g_allocs.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(n == 0 ? 1 : n)) return p;
  throw std::bad_alloc();
}
__attribute__((noinline)) void operator delete(void* p) noexcept { std::free(p); }
__attribute__((noinline)) void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

struct TextSet {
  std::u16string format;      // Gdattime format
  const char* c_format;       // the same layout for strptime
  std::vector<std::u16string> texts;
  std::vector<std::string> utf8;
};

// A few thousand texts with varied day, month, year and time values, some with
// one-digit fields, blanks, two-digit years or leading zeros.
TextSet MakeSet(bool with_time, bool year_first) {
  TextSet set;
  set.format = year_first ? u"yyyy-mm-dd" : u"dd.mm.yyyy";
  set.c_format = year_first ? "%Y-%m-%d" : "%d.%m.%Y";
  if (with_time) {
    set.format += u" hh:nn:ss";
    set.c_format = year_first ? "%Y-%m-%d %H:%M:%S" : "%d.%m.%Y %H:%M:%S";
  }
  uint32_t seed = 12345;
  auto next = [&seed](uint32_t mod) {
    seed = seed * 1103515245u + 12345u;
    return (seed >> 8) % mod;
  };
  char buf[64];
  for (int i = 0; i < 4096; ++i) {
    const unsigned y = 1900 + next(200), m = 1 + next(12), d = 1 + next(28);
    const unsigned h = next(24), n = next(60), s = next(60);
    const bool padded = next(2) == 0;
    int len;
    if (year_first) {
      len = std::snprintf(buf, sizeof buf, padded ? "%04u-%02u-%02u" : "%u-%u-%u", y, m, d);
    } else {
      len = std::snprintf(buf, sizeof buf, padded ? "%02u.%02u.%04u" : "%u.%u.%u", d, m, y);
    }
    if (with_time) {
      std::snprintf(buf + len, sizeof buf - len, padded ? " %02u:%02u:%02u" : " %u:%u:%u", h, n, s);
    }
    set.utf8.emplace_back(buf);
    set.texts.push_back(quill::Utf8ToUnicode(buf));
  }
  return set;
}

const TextSet& Set(int which) {
  static const TextSet sets[3] = {MakeSet(false, false), MakeSet(true, false), MakeSet(false, true)};
  return sets[which];
}

void Finish(benchmark::State& state, size_t texts, uint64_t allocs) {
  const double parses = static_cast<double>(state.iterations()) * static_cast<double>(texts);
  state.counters["parses/s"] = benchmark::Counter(parses, benchmark::Counter::kIsRate);
  state.counters["allocs/parse"] = static_cast<double>(allocs) / parses;
}

void BM_Quill(benchmark::State& state) {
  const TextSet& set = Set(static_cast<int>(state.range(0)));
  quill::TDateTime v = 0;
  // One read outside the timing builds the per-thread settings of the format.
  if (!quill::Gdattime::TryStrToDateTimeByFormat(set.format, set.texts[0], v)) state.SkipWithError("unreadable");
  const uint64_t allocs_before = g_allocs.load();
  for (auto _ : state) {
    size_t ok = 0;
    for (const std::u16string& t : set.texts) {
      ok += quill::Gdattime::TryStrToDateTimeByFormat(set.format, t, v) ? 1 : 0;
    }
    benchmark::DoNotOptimize(v);
    if (ok != set.texts.size()) state.SkipWithError("a text was not read");
  }
  Finish(state, set.texts.size(), g_allocs.load() - allocs_before);
}

void BM_Strptime(benchmark::State& state) {
  const TextSet& set = Set(static_cast<int>(state.range(0)));
  const uint64_t allocs_before = g_allocs.load();
  for (auto _ : state) {
    size_t ok = 0;
    for (const std::string& t : set.utf8) {
      std::tm tm{};
      const char* end = strptime(t.c_str(), set.c_format, &tm);
      ok += end != nullptr && *end == '\0' ? 1 : 0;
      benchmark::DoNotOptimize(tm);
    }
    if (ok != set.utf8.size()) state.SkipWithError("a text was not read");
  }
  Finish(state, set.utf8.size(), g_allocs.load() - allocs_before);
}

// 0: dd.mm.yyyy, 1: dd.mm.yyyy hh:nn:ss, 2: yyyy-mm-dd
BENCHMARK(BM_Quill)->Arg(0)->Arg(1)->Arg(2);
BENCHMARK(BM_Strptime)->Arg(0)->Arg(1)->Arg(2);

// Prints, after the usual table, library time / baseline time per text set.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& r : runs) {
      if (!r.error_occurred && r.iterations > 0) cpu_[r.benchmark_name()] = r.GetAdjustedCPUTime();
    }
    ConsoleReporter::ReportRuns(runs);
  }
  void Finalize() override {
    ConsoleReporter::Finalize();
    for (const char* arg : {"0", "1", "2"}) {
      const auto q = cpu_.find(std::string("BM_Quill/") + arg);
      const auto b = cpu_.find(std::string("BM_Strptime/") + arg);
      if (q == cpu_.end() || b == cpu_.end() || b->second <= 0) continue;
      std::printf("set %s: quill / strptime time ratio = %.2f\n", arg, q->second / b->second);
    }
  }

 private:
  std::map<std::string, double> cpu_;
};

}  // namespace

int main(int argc, char** argv) {
  // A fixed system locale, so that "." and "-" are the only separators in play.
  setenv("QUILL_SYSTEM_LOCALE", "en-US", 1);
  quill::ResetLocaleCache();
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
