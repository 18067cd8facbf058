// Gscanner throughput: a full walk (FirstToken .. EOS, every token field
// filled) over corpora of at least 5 MB in each style, next to a minimal
// baseline tokenizer over the same lines; plus the cost of one NextToken
// while the queue is full and of taking and restoring a bookmark.
//
// Corpora are built at run time: C headers from /usr/include for the C style,
// generated Pascal, SQL and Perl sources for the others.
//
//   build-rel/bench/scanner_bench --benchmark_counters_tabular=true
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "quill/scanner/gscanner.h"

namespace {

using quill::UnicodeString;
using quill::Gscanner::TGScanner;
using quill::Gscanner::TSourceStyle;

constexpr size_t kMinCorpus = 5u << 20;  // characters

struct Corpus {
  std::vector<UnicodeString> lines;
  size_t chars = 0;  // characters including one line break per line
  void Add(UnicodeString line) {
    chars += line.size() + 1;
    lines.push_back(std::move(line));
  }
};

// Widens bytes one by one (headers are ASCII; any other byte becomes the
// code of the same value), splitting at LF and dropping CR.
void AddText(Corpus& c, const std::string& bytes) {
  UnicodeString line;
  for (unsigned char b : bytes) {
    if (b == '\n') {
      c.Add(std::move(line));
      line.clear();
    } else if (b != '\r') {
      line += static_cast<char16_t>(b);
    }
  }
  if (!line.empty()) c.Add(std::move(line));
}

Corpus CHeaders() {
  namespace fs = std::filesystem;
  std::vector<fs::path> files;
  std::error_code ec;
  for (auto it = fs::recursive_directory_iterator("/usr/include", fs::directory_options::skip_permission_denied, ec);
       it != fs::recursive_directory_iterator(); it.increment(ec)) {
    if (ec) break;
    if (it->is_regular_file(ec) && it->path().extension() == ".h") files.push_back(it->path());
  }
  std::sort(files.begin(), files.end());
  Corpus c;
  // Go round the files again if there are fewer than 5 MB of them.
  for (int round = 0; round < 100 && c.chars < kMinCorpus && !files.empty(); ++round) {
    for (const fs::path& p : files) {
      std::ifstream in(p, std::ios::binary);
      AddText(c, std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()));
      if (c.chars >= kMinCorpus + (1u << 20)) break;
    }
  }
  return c;
}

Corpus Generated(const char* const* templ, size_t n) {
  Corpus c;
  char buf[512];
  for (int k = 0; c.chars < kMinCorpus + (1u << 20); ++k) {
    for (size_t i = 0; i < n; ++i) {
      const int len = std::snprintf(buf, sizeof buf, templ[i], k, k, k, k, k, k, k, k);
      AddText(c, std::string(buf, static_cast<size_t>(len)) + "\n");
    }
  }
  return c;
}

const char* const kPascal[] = {
    "procedure Proc%d(const AValue: Integer; var AName: string);",
    "var",
    "  I, Total%d: Integer;",
    "begin",
    "  { compute the total of block %d }",
    "  Total%d := 0;",
    "  for I := 1 to AValue do",
    "    Total%d := Total%d + I * %d; // accumulate",
    "  if Total%d > 100 then",
    "    AName := 'Large value ' + IntToStr(Total%d) + #13#10",
    "  else",
    "    AName := 'It''s small'; (* %d *)",
    "end;",
    "",
};

const char* const kSql[] = {
    "SELECT c.id, c.name, SUM(o.amount) AS total_%d",
    "FROM customers c /* join the orders of block %d */",
    "JOIN orders o ON o.customer_id = c.id",
    "WHERE c.region = 'North%d' AND o.amount >= %d.50 // filter",
    "  AND c.note <> 'it''s \\t fine' AND c.code != %d",
    "GROUP BY c.id, c.name",
    "HAVING SUM(o.amount) <> 0;",
    "",
};

const char* const kPerl[] = {
    "# block %d",
    "my $total%d = 0;",
    "foreach my $item (@items%d) {",
    "    $total%d += $item->{price} * %d;",
    "    print \"Item: $item->{name}\\n\" if $item =~ /^x/;",
    "}",
    "",
};

const Corpus& CorpusFor(TSourceStyle style) {
  static const Corpus c_headers = CHeaders();
  static const Corpus pascal = Generated(kPascal, std::size(kPascal));
  static const Corpus sql = Generated(kSql, std::size(kSql));
  static const Corpus perl = Generated(kPerl, std::size(kPerl));
  switch (style) {
    case quill::Gscanner::ssC: return c_headers;
    case quill::Gscanner::ssSQL: return sql;
    case quill::Gscanner::ssPerl: return perl;
    default: return pascal;
  }
}

void Load(TGScanner& sc, const Corpus& c) {
  sc.Source().Clear();
  sc.Source().SetCapacity(static_cast<int32_t>(c.lines.size()));
  for (const UnicodeString& l : c.lines) sc.Source().Add(l);
}

// The library: a full walk, reading type, position and length of every token.
void BM_Walk(benchmark::State& state, TSourceStyle style) {
  const Corpus& corpus = CorpusFor(style);
  TGScanner sc;
  sc.SetSourceStyle(style);
  Load(sc, corpus);
  int64_t tokens = 0;
  for (auto _ : state) {
    int64_t n = 0;
    int64_t check = 0;
    for (sc.FirstToken(); !sc.EOS(); sc.NextToken()) {
      check += sc.TokType() + sc.TokPos() + sc.TokLength();
      ++n;
    }
    benchmark::DoNotOptimize(check);
    if (n < 100000) state.SkipWithError("corpus too small");
    tokens = n;
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(corpus.chars));
  state.counters["tokens/s"] = benchmark::Counter(static_cast<double>(tokens) * static_cast<double>(state.iterations()),
                                                  benchmark::Counter::kIsRate);
  state.counters["tokens"] = static_cast<double>(tokens);
  state.counters["MB"] = static_cast<double>(corpus.chars) / 1e6;
}

// The baseline: the simplest useful tokenizer over the same lines (blank
// skipping, runs of letters and digits, every other character alone), with
// the token's text copied as the scanner copies it.
void BM_Baseline(benchmark::State& state, TSourceStyle style) {
  const Corpus& corpus = CorpusFor(style);
  UnicodeString text;
  for (auto _ : state) {
    int64_t n = 0;
    for (const UnicodeString& line : corpus.lines) {
      size_t i = 0;
      while (i < line.size()) {
        const char16_t c = line[i];
        if (c == ' ' || c == '\t') {
          ++i;
          continue;
        }
        size_t j = i + 1;
        const auto word = [](char16_t ch) {
          return (ch >= '0' && ch <= '9') || (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z') || ch == '_';
        };
        if (word(c))
          while (j < line.size() && word(line[j])) ++j;
        text.assign(line, i, j - i);
        benchmark::DoNotOptimize(text.data());
        ++n;
        i = j;
      }
    }
    benchmark::DoNotOptimize(n);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(corpus.chars));
}

// One NextToken with a full queue, in the middle of a long source: constant
// whatever the queue holds.
void BM_NextTokenSteadyState(benchmark::State& state) {
  const Corpus& corpus = CorpusFor(quill::Gscanner::ssC);
  TGScanner sc;
  sc.SetSourceStyle(quill::Gscanner::ssC);
  Load(sc, corpus);
  sc.FirstToken();
  for (auto _ : state) {
    sc.NextToken();
    if (sc.EOS()) {
      state.PauseTiming();
      sc.FirstToken();
      state.ResumeTiming();
    }
  }
}

// Taking and restoring a bookmark (21 slots copied each way).
void BM_BookmarkTakeAndRestore(benchmark::State& state) {
  const Corpus& corpus = CorpusFor(quill::Gscanner::ssPascal);
  TGScanner sc;
  Load(sc, corpus);
  sc.FirstToken();
  for (int i = 0; i < 1000; ++i) sc.NextToken();
  for (auto _ : state) {
    const auto bm = sc.GetBookmark();
    sc.SetBookmark(bm);
    benchmark::DoNotOptimize(&bm);
  }
}

BENCHMARK_CAPTURE(BM_Baseline, c, quill::Gscanner::ssC)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Walk, c, quill::Gscanner::ssC)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Baseline, pascal, quill::Gscanner::ssPascal)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Walk, pascal, quill::Gscanner::ssPascal)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Baseline, sql, quill::Gscanner::ssSQL)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Walk, sql, quill::Gscanner::ssSQL)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Baseline, perl, quill::Gscanner::ssPerl)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Walk, perl, quill::Gscanner::ssPerl)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_NextTokenSteadyState);
BENCHMARK(BM_BookmarkTakeAndRestore);

// Prints the walk / baseline time ratio per corpus after the table.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& r : runs) {
      const std::string name = r.benchmark_name();
      const double t = r.GetAdjustedCPUTime();
      if (name.rfind("BM_Baseline/", 0) == 0) baseline_[name.substr(12)] = t;
      if (name.rfind("BM_Walk/", 0) == 0) {
        const std::string corpus = name.substr(8);
        if (baseline_.count(corpus))
          GetOutputStream() << "ratio " << corpus << ": scanner walk takes " << t / baseline_[corpus]
                            << " x the baseline tokenizer's time\n";
      }
    }
  }

 private:
  std::map<std::string, double> baseline_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
