// Line breaks and delimited text.
//
// * AdjustLineBreaks on 1 MiB (UTF-16 bytes) of LF text against a naive
//   one-unit-at-a-time rewrite, and on text already in CR LF form, where the
//   program counts heap allocations (operator new is replaced below): there
//   must be none.
// * ComposeCommaText and DelimitedText on 10,000 and 100,000 fields, against
//   a plain split at commas into a vector; the summary prints the time ratio
//   of the two sizes (about 10 for linear time).
#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <new>
#include <string>
#include <vector>

#include "quill/rtl/tstrings.h"
#include "quill/strings/gstrings.h"

// Heap allocation counter for the no-allocation check. GCC cannot see that
// these replacements pair malloc with free and warns at inlined call sites.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif
static std::atomic<long> g_allocations{0};

void* operator new(std::size_t n) {
  g_allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(n == 0 ? 1 : n)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

namespace gs = quill::Gstrings;
using quill::UnicodeString;

constexpr size_t kUnits = 512 * 1024;  // 1 MiB of UTF-16

// Lines of 20..80 characters separated by `brk`.
UnicodeString LinesText(size_t units, const UnicodeString& brk) {
  UnicodeString s;
  s.reserve(units + 80);
  unsigned len = 20;
  while (s.size() < units) {
    for (unsigned i = 0; i < len; ++i) s.push_back(static_cast<char16_t>(u'a' + (i * 7 + len) % 26));
    s += brk;
    len = 20 + (len * 13) % 61;
  }
  s.resize(units);
  return s;
}

// Reference rewrite: one unit at a time, growing the result as it goes.
UnicodeString NaiveAdjust(const UnicodeString& s) {
  UnicodeString out;
  for (size_t i = 0; i < s.size(); ++i) {
    const char16_t c = s[i];
    if (c == u'\r') {
      out += u"\r\n";
      if (i + 1 < s.size() && s[i + 1] == u'\n') ++i;
    } else if (c == u'\n') {
      out += u"\r\n";
    } else {
      out.push_back(c);
    }
  }
  return out;
}

void BM_Baseline_NaiveAdjust(benchmark::State& state) {
  const UnicodeString in = LinesText(kUnits, u"\n");
  for (auto _ : state) {
    UnicodeString out = NaiveAdjust(in);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size() * 2));
}

void BM_AdjustLineBreaks_LF(benchmark::State& state) {
  const UnicodeString in = LinesText(kUnits, u"\n");
  if (gs::AdjustLineBreaks(in) != NaiveAdjust(in)) state.SkipWithError("result differs");
  for (auto _ : state) {
    UnicodeString out = gs::AdjustLineBreaks(in);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size() * 2));
}

void BM_AdjustLineBreaks_CRLF(benchmark::State& state) {
  UnicodeString text = LinesText(kUnits, u"\r\n");
  if (text.back() == u'\r') text.back() = u'x';  // no CR cut off from its LF
  const long before = g_allocations.load();
  for (auto _ : state) {
    text = gs::AdjustLineBreaks(std::move(text));
    benchmark::DoNotOptimize(text.data());
  }
  const long allocations = g_allocations.load() - before;
  state.counters["allocations"] = static_cast<double>(allocations);
  if (allocations != 0) state.SkipWithError("text in CR LF form was copied");
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size() * 2));
}

UnicodeString CommaText(int64_t fields) {
  UnicodeString s;
  for (int64_t i = 0; i < fields; ++i) {
    if (i > 0) s.push_back(u',');
    if (i % 5 == 0) {
      s += u"\"a,b\"\"" + UnicodeString(1, static_cast<char16_t>(u'0' + i % 10)) + u"\"";
    } else {
      s += u" field" + UnicodeString(1, static_cast<char16_t>(u'0' + i % 10));
    }
  }
  return s;
}

void BM_Baseline_SplitAtCommas(benchmark::State& state) {
  const UnicodeString text = CommaText(state.range(0));
  for (auto _ : state) {
    std::vector<UnicodeString> parts;
    size_t start = 0;
    for (size_t i = 0; i <= text.size(); ++i) {
      if (i == text.size() || text[i] == u',') {
        parts.emplace_back(text.substr(start, i - start));
        start = i + 1;
      }
    }
    benchmark::DoNotOptimize(parts.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_ComposeCommaText(benchmark::State& state) {
  const UnicodeString text = CommaText(state.range(0));
  quill::TStringList list;
  for (auto _ : state) {
    gs::ComposeCommaText(text, list);
    if (list.Count() != state.range(0)) state.SkipWithError("wrong field count");
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_DelimitedText(benchmark::State& state) {
  quill::TStringList list;
  gs::ComposeCommaText(CommaText(state.range(0)), list);
  for (auto _ : state) {
    UnicodeString out = gs::DelimitedText(list, u',', u'"');
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_Baseline_NaiveAdjust)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AdjustLineBreaks_LF)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AdjustLineBreaks_CRLF)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Baseline_SplitAtCommas)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ComposeCommaText)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DelimitedText)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

class SummaryReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const auto& r : runs) {
      if (r.error_occurred) continue;
      Figures f;
      f.cpu_ns = r.GetAdjustedCPUTime() *
                 (r.time_unit == benchmark::kMillisecond ? 1e6
                  : r.time_unit == benchmark::kMicrosecond ? 1e3 : 1.0);
      auto it = r.counters.find("bytes_per_second");
      if (it != r.counters.end()) f.mb_per_s = it->second.value / 1e6;
      figures_[r.benchmark_name()] = f;
    }
  }
  struct Figures {
    double cpu_ns = 0;
    double mb_per_s = 0;
  };
  std::map<std::string, Figures> figures_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  SummaryReporter rep;
  benchmark::RunSpecifiedBenchmarks(&rep);
  const auto& f = rep.figures_;
  auto at = [&](const std::string& n) {
    auto it = f.find(n);
    return it == f.end() ? SummaryReporter::Figures{} : it->second;
  };
  std::printf("\nSummary (CPU time)\n");
  const auto lf = at("BM_AdjustLineBreaks_LF");
  const auto naive = at("BM_Baseline_NaiveAdjust");
  const auto crlf = at("BM_AdjustLineBreaks_CRLF");
  if (lf.mb_per_s > 0) {
    std::printf("AdjustLineBreaks, LF text   : %8.1f MB/s (UTF-16 bytes), %.1fx the naive rewrite %s\n",
                lf.mb_per_s, naive.mb_per_s > 0 ? lf.mb_per_s / naive.mb_per_s : 0.0,
                lf.mb_per_s >= 1000 ? "(>= 1 GB/s)" : "(BELOW 1 GB/s)");
  }
  if (crlf.cpu_ns > 0) {
    std::printf("AdjustLineBreaks, CR LF text: %8.1f MB/s, no allocation (checked)\n", crlf.mb_per_s);
  }
  for (const char* name : {"BM_Baseline_SplitAtCommas", "BM_ComposeCommaText", "BM_DelimitedText"}) {
    const auto small = at(std::string(name) + "/10000");
    const auto big = at(std::string(name) + "/100000");
    if (small.cpu_ns > 0 && big.cpu_ns > 0) {
      std::printf("%-26s: 10,000 fields %8.3f ms, 100,000 fields %8.3f ms, growth %.1fx\n", name,
                  small.cpu_ns / 1e6, big.cpu_ns / 1e6, big.cpu_ns / small.cpu_ns);
    }
  }
  benchmark::Shutdown();
  return 0;
}
