// Gstrings number conversions against std::from_chars on the same texts:
// ZStrToInt and XStrToInt on decimal text, HexToInt on hexadecimal digits.
// from_chars reads 8-bit text, so the baseline gets the same numbers in that
// form.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "bench/ratio_reporter.h"
#include "quill/strings/gstrings.h"

namespace {

using namespace quill::Gstrings;

struct Texts {
  std::vector<std::string> ansi;
  std::vector<std::u16string> wide;
  int64_t sum = 0;  // of the values, to check each pass
};

Texts Make(bool hex) {
  Texts t;
  std::mt19937 rng(42);
  std::uniform_int_distribution<int32_t> dist(hex ? 0 : INT32_MIN / 2, INT32_MAX / 2);
  char buf[32];
  for (int i = 0; i < 1000; ++i) {
    const int32_t v = dist(rng);
    auto r = std::to_chars(buf, buf + sizeof buf, v, hex ? 16 : 10);
    t.ansi.emplace_back(buf, r.ptr);
    t.wide.emplace_back(t.ansi.back().begin(), t.ansi.back().end());
    t.sum += v;
  }
  return t;
}

const Texts& Decimal() {
  static const Texts t = Make(false);
  return t;
}
const Texts& Hexadecimal() {
  static const Texts t = Make(true);
  return t;
}

void Check(bool ok) {
  if (!ok) {
    std::fprintf(stderr, "benchmark result check failed\n");
    std::abort();
  }
}

void BM_from_chars_dec(benchmark::State& st) {
  const Texts& t = Decimal();
  for (auto _ : st) {
    int64_t sum = 0;
    for (const auto& s : t.ansi) {
      int32_t v = 0;
      std::from_chars(s.data(), s.data() + s.size(), v);
      sum += v;
    }
    Check(sum == t.sum);
  }
  st.SetItemsProcessed(st.iterations() * 1000);
}
void BM_ZStrToInt(benchmark::State& st) {
  const Texts& t = Decimal();
  for (auto _ : st) {
    int64_t sum = 0;
    for (const auto& s : t.wide) sum += ZStrToInt(s);
    Check(sum == t.sum);
  }
  st.SetItemsProcessed(st.iterations() * 1000);
}
void BM_XStrToInt(benchmark::State& st) {
  const Texts& t = Decimal();
  for (auto _ : st) {
    int64_t sum = 0;
    for (const auto& s : t.wide) sum += XStrToInt(s);
    Check(sum == t.sum);
  }
  st.SetItemsProcessed(st.iterations() * 1000);
}
void BM_from_chars_hex(benchmark::State& st) {
  const Texts& t = Hexadecimal();
  for (auto _ : st) {
    int64_t sum = 0;
    for (const auto& s : t.ansi) {
      int32_t v = 0;
      std::from_chars(s.data(), s.data() + s.size(), v, 16);
      sum += v;
    }
    Check(sum == t.sum);
  }
  st.SetItemsProcessed(st.iterations() * 1000);
}
void BM_HexToInt(benchmark::State& st) {
  const Texts& t = Hexadecimal();
  for (auto _ : st) {
    int64_t sum = 0;
    for (const auto& s : t.wide) sum += HexToInt(s);
    Check(sum == t.sum);
  }
  st.SetItemsProcessed(st.iterations() * 1000);
}

BENCHMARK(BM_from_chars_dec);
BENCHMARK(BM_ZStrToInt);
BENCHMARK(BM_XStrToInt);
BENCHMARK(BM_from_chars_hex);
BENCHMARK(BM_HexToInt);

}  // namespace

int main(int argc, char** argv) {
  return quillbench::RunWithRatios(argc, argv,
                                       {{"BM_ZStrToInt", "BM_from_chars_dec"},
                                        {"BM_XStrToInt", "BM_from_chars_dec"},
                                        {"BM_HexToInt", "BM_from_chars_hex"}});
}
