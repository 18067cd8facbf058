// Throughput of the two literal notations on 1 MiB of mixed text, against a
// plain copy of the same text as the baseline (the memory-bandwidth ceiling).
//
// Each library benchmark checks its result in the loop (a round trip must give
// the input back). At the end the program prints the MB/s of every benchmark
// and its ratio to the baseline, plus the per-byte time at 1 MiB and 8 MiB to
// show linear growth.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <random>
#include <string>

#include "quill/strings/gstrings.h"

namespace {

namespace gs = quill::Gstrings;

// Mixed text: words and blanks, digits, ~1% quotes, ~3% line breaks and tabs,
// some bytes above 127. Fixed seed: the same text on every run.
std::string MixedText(size_t size) {
  std::mt19937 rng(2024);
  std::uniform_int_distribution<int> pick(0, 999);
  std::string s;
  s.reserve(size);
  while (s.size() < size) {
    const int r = pick(rng);
    if (r < 5) s += '\'';
    else if (r < 10) s += '"';
    else if (r < 20) s += "\r\n";
    else if (r < 25) s += '\t';
    else if (r < 28) s += '\\';
    else if (r < 40) s += static_cast<char>(0xC0 + r % 32);
    else if (r < 180) s += ' ';
    else if (r < 260) s += static_cast<char>('0' + r % 10);
    else s += static_cast<char>('a' + r % 26);
  }
  s.resize(size);
  return s;
}

quill::UnicodeString Widen(const std::string& s) {
  quill::UnicodeString w(s.size(), u'\0');
  for (size_t i = 0; i < s.size(); ++i) w[i] = static_cast<unsigned char>(s[i]);
  return w;
}

constexpr size_t kSmall = 1 << 20;
constexpr size_t kLarge = 8 << 20;

const std::string& Text(size_t n) {
  static std::map<size_t, std::string> cache;
  auto it = cache.find(n);
  if (it == cache.end()) it = cache.emplace(n, MixedText(n)).first;
  return it->second;
}

const quill::UnicodeString& WText(size_t n) {
  static std::map<size_t, quill::UnicodeString> cache;
  auto it = cache.find(n);
  if (it == cache.end()) it = cache.emplace(n, Widen(Text(n))).first;
  return it->second;
}

void BM_Baseline_Copy(benchmark::State& state) {
  const std::string& in = Text(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    std::string copy = in;
    benchmark::DoNotOptimize(copy.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size()));
}

void BM_QuotedString(benchmark::State& state) {
  const std::string& in = Text(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    std::string q = gs::QuotedString(in, '\'');
    benchmark::DoNotOptimize(q.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size()));
}

void BM_UnquotedString(benchmark::State& state) {
  const std::string& in = Text(static_cast<size_t>(state.range(0)));
  const std::string quoted = gs::QuotedString(in, '\'');
  for (auto _ : state) {
    std::string back = gs::UnquotedString(quoted, '\'');
    if (back.size() != in.size()) state.SkipWithError("round trip lost text");
    benchmark::DoNotOptimize(back.data());
  }
  if (gs::UnquotedString(quoted, '\'') != in) state.SkipWithError("round trip differs");
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size()));
}

void BM_CStringEx(benchmark::State& state) {
  const std::string& in = Text(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    std::string c = gs::CStringEx(in, false, true);
    benchmark::DoNotOptimize(c.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size()));
}

void BM_UnquotedCString(benchmark::State& state) {
  const std::string& in = Text(static_cast<size_t>(state.range(0)));
  const std::string lit = gs::CStringEx(in, false, true);
  int32_t pos = 1;
  if (gs::XUnquotedCStringEx(lit, 2, pos) != in) state.SkipWithError("round trip differs");
  for (auto _ : state) {
    pos = 1;
    std::string back = gs::XUnquotedCStringEx(lit, 2, pos);
    if (back.size() != in.size()) state.SkipWithError("round trip lost text");
    benchmark::DoNotOptimize(back.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size()));
}

void BM_Baseline_CopyW(benchmark::State& state) {
  const quill::UnicodeString& in = WText(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    quill::UnicodeString copy = in;
    benchmark::DoNotOptimize(copy.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size() * 2));
}

void BM_QuotedStringW(benchmark::State& state) {
  const quill::UnicodeString& in = WText(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    quill::UnicodeString q = gs::QuotedString(in, u'\'');
    benchmark::DoNotOptimize(q.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size() * 2));
}

void BM_UnquotedStringW(benchmark::State& state) {
  const quill::UnicodeString& in = WText(static_cast<size_t>(state.range(0)));
  const quill::UnicodeString quoted = gs::QuotedString(in, u'\'');
  if (gs::UnquotedString(quoted, u'\'') != in) state.SkipWithError("round trip differs");
  for (auto _ : state) {
    quill::UnicodeString back = gs::UnquotedString(quoted, u'\'');
    if (back.size() != in.size()) state.SkipWithError("round trip lost text");
    benchmark::DoNotOptimize(back.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size() * 2));
}

void BM_CStringExW(benchmark::State& state) {
  const quill::UnicodeString& in = WText(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    quill::UnicodeString c = gs::CStringEx(in, false, true);
    benchmark::DoNotOptimize(c.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size() * 2));
}

void BM_UnquotedCStringW(benchmark::State& state) {
  const quill::UnicodeString& in = WText(static_cast<size_t>(state.range(0)));
  const quill::UnicodeString lit = gs::CStringEx(in, false, true);
  int32_t pos = 1;
  if (gs::XUnquotedCStringEx(lit, 2, pos) != in) state.SkipWithError("round trip differs");
  for (auto _ : state) {
    pos = 1;
    quill::UnicodeString back = gs::XUnquotedCStringEx(lit, 2, pos);
    if (back.size() != in.size()) state.SkipWithError("round trip lost text");
    benchmark::DoNotOptimize(back.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(in.size() * 2));
}

#define QUILL_SIZES Arg(kSmall)->Arg(kLarge)->Unit(benchmark::kMicrosecond)
BENCHMARK(BM_Baseline_Copy)->QUILL_SIZES;
BENCHMARK(BM_QuotedString)->QUILL_SIZES;
BENCHMARK(BM_UnquotedString)->QUILL_SIZES;
BENCHMARK(BM_CStringEx)->QUILL_SIZES;
BENCHMARK(BM_UnquotedCString)->QUILL_SIZES;
BENCHMARK(BM_Baseline_CopyW)->QUILL_SIZES;
BENCHMARK(BM_QuotedStringW)->QUILL_SIZES;
BENCHMARK(BM_UnquotedStringW)->QUILL_SIZES;
BENCHMARK(BM_CStringExW)->QUILL_SIZES;
BENCHMARK(BM_UnquotedCStringW)->QUILL_SIZES;

// Collects bytes per second and time per byte of every run for the summary.
class SummaryReporter : public benchmark::ConsoleReporter {
 public:
  struct Figures {
    double mb_per_s = 0;
    double ns_per_byte = 0;
  };
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const auto& r : runs) {
      auto it = r.counters.find("bytes_per_second");
      if (it == r.counters.end() || r.error_occurred) continue;
      const double bps = it->second.value;
      figures_[r.benchmark_name()] = {bps / 1e6, 1e9 / bps};
    }
  }
  const std::map<std::string, Figures>& figures() const { return figures_; }

 private:
  std::map<std::string, Figures> figures_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  SummaryReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  const auto& f = reporter.figures();
  auto get = [&](const std::string& name, size_t n) {
    auto it = f.find(name + "/" + std::to_string(n));
    return it == f.end() ? SummaryReporter::Figures{} : it->second;
  };
  std::printf("\nSummary (input MB/s; ratio = library / plain copy; growth = ns per byte at 8 MiB / at 1 MiB)\n");
  const struct {
    const char* name;
    const char* baseline;
  } rows[] = {{"BM_QuotedString", "BM_Baseline_Copy"},    {"BM_UnquotedString", "BM_Baseline_Copy"},
              {"BM_CStringEx", "BM_Baseline_Copy"},       {"BM_UnquotedCString", "BM_Baseline_Copy"},
              {"BM_QuotedStringW", "BM_Baseline_CopyW"},  {"BM_UnquotedStringW", "BM_Baseline_CopyW"},
              {"BM_CStringExW", "BM_Baseline_CopyW"},     {"BM_UnquotedCStringW", "BM_Baseline_CopyW"}};
  for (const auto& row : rows) {
    const auto lib = get(row.name, kSmall);
    const auto base = get(row.baseline, kSmall);
    const auto big = get(row.name, kLarge);
    if (lib.mb_per_s == 0) continue;  // filtered out or failed
    std::printf("%-22s %9.1f MB/s  ratio %5.3f  growth %5.2f  %s\n", row.name, lib.mb_per_s,
                base.mb_per_s > 0 ? lib.mb_per_s / base.mb_per_s : 0.0,
                big.ns_per_byte > 0 ? big.ns_per_byte / lib.ns_per_byte : 0.0,
                lib.mb_per_s >= 300 ? "(>= 300 MB/s)" : "(BELOW 300 MB/s)");
  }
  benchmark::Shutdown();
  return 0;
}
