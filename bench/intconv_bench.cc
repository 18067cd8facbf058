// TryStrToInt / StrToInt against std::from_chars on the same decimal texts.
//
// The library's reader does more (blanks, '+', hex prefixes, the 32-bit range
// check) but should stay within 2x of the standard parser. Each benchmark
// parses the same 4096 texts per iteration and checks the sum, so a wrong
// result stops the run. The ratio against from_chars is printed at the end.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "bench/ratio_reporter.h"
#include "quill/rtl/intconv.h"

namespace {

struct Texts {
  std::vector<std::string> narrow;
  std::vector<std::u16string> wide;
  int64_t sum = 0;
};

// 4096 decimal texts of mixed length and sign, fixed by the seed.
const Texts& Inputs() {
  static const Texts texts = [] {
    Texts t;
    std::mt19937 rng(20240601);
    std::uniform_int_distribution<int> digits(1, 10);
    for (int i = 0; i < 4096; ++i) {
      const int n = digits(rng);
      int64_t limit = 1;
      for (int k = 0; k < n - 1; ++k) limit *= 10;
      std::uniform_int_distribution<int64_t> value(0, std::min<int64_t>(limit * 10 - 1, INT32_MAX));
      int64_t v = value(rng);
      if (rng() & 1) v = -v;
      const std::string s = std::to_string(v);
      t.narrow.push_back(s);
      t.wide.emplace_back(s.begin(), s.end());
      t.sum += v;
    }
    return t;
  }();
  return texts;
}

void Verify(benchmark::State& state, int64_t sum) {
  if (sum != Inputs().sum) {
    state.SkipWithError("wrong sum");
  }
}

void BM_FromChars(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    int64_t sum = 0;
    for (const std::string& s : t.narrow) {
      int32_t v = 0;
      std::from_chars(s.data(), s.data() + s.size(), v);
      sum += v;
    }
    benchmark::DoNotOptimize(sum);
    Verify(state, sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(t.narrow.size()));
}
BENCHMARK(BM_FromChars);

void BM_TryStrToInt(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    int64_t sum = 0;
    for (const std::string& s : t.narrow) {
      int32_t v = 0;
      (void)quill::TryStrToInt(s, v);
      sum += v;
    }
    benchmark::DoNotOptimize(sum);
    Verify(state, sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(t.narrow.size()));
}
BENCHMARK(BM_TryStrToInt);

void BM_TryStrToIntUtf16(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    int64_t sum = 0;
    for (const std::u16string& s : t.wide) {
      int32_t v = 0;
      (void)quill::TryStrToInt(s, v);
      sum += v;
    }
    benchmark::DoNotOptimize(sum);
    Verify(state, sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(t.wide.size()));
}
BENCHMARK(BM_TryStrToIntUtf16);

void BM_StrToInt(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    int64_t sum = 0;
    for (const std::string& s : t.narrow) sum += quill::StrToInt(s);
    benchmark::DoNotOptimize(sum);
    Verify(state, sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(t.narrow.size()));
}
BENCHMARK(BM_StrToInt);

}  // namespace

// Ratio to std::from_chars on the same texts (lower is faster; target <= 2.00).
int main(int argc, char** argv) {
  return quillbench::RunWithRatios(argc, argv,
                                   {{"BM_TryStrToInt", "BM_FromChars"},
                                    {"BM_TryStrToIntUtf16", "BM_FromChars"},
                                    {"BM_StrToInt", "BM_FromChars"}});
}
