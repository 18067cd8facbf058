// Gstrings searching and replacing against the standard library on text of
// every kind (bench/corpus.h: source code in several languages, prose in
// Latin, Cyrillic and CJK scripts, logs, CSV), 4 MB each by default, in both
// forms (the UTF-16 text is the UTF-8 text converted).
//
// Each search looks for a needle found only once: at the end for the
// forward searches, at the front for the backward ones. Two needles: one
// whose first letter is rare in text ("q..."), one whose first letter is
// frequent ("e..."), since a search that hunts for the first character
// slows down on the second. Pairs (library / baseline):
//   XPos  / find        BXPos / rfind       (exact)
//   CXPos, CPos / find of the lowered needle (case-insensitive; the 8-bit
//   forms run under a single-byte code page: QUILL_ANSI_CODEPAGE, 1252 unless
//   set)
//   ReplaceStr / a find-and-append loop, replacing the text's most frequent
//   pair of letters.
// The summary prints, per kind, each pair's speed ratio (baseline time /
// library time: above 1 the library is faster) as the median over
// repetitions with the spread [min-max]. Run with
//   --benchmark_repetitions=3 --benchmark_enable_random_interleaving=true
// QUILL_BENCH_KINDS and QUILL_BENCH_CORPUS_MB pick kinds and size.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "bench/corpus.h"
#include "bench/ratio_reporter.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/unicode.h"
#include "quill/strings/gstrings.h"

namespace {

using namespace quill::Gstrings;

template <class C>
struct Texts {
  std::basic_string<C> back;   // corpus + needle
  std::basic_string<C> front;  // needle + corpus
  std::basic_string<C> needle;
  std::basic_string<C> upper;  // the needle in capitals
  std::basic_string<C> from, to;  // ReplaceStr's pattern and replacement
};

struct Kind {
  std::string name;
  Texts<char> rare8, frequent8;
  Texts<char16_t> rare16, frequent16;
};

std::vector<Kind>& Kinds() {
  static std::vector<Kind> kinds;
  return kinds;
}

void Check(bool ok) {
  if (!ok) {
    std::fprintf(stderr, "benchmark result check failed\n");
    std::abort();
  }
}

// The most frequent pair of ASCII letters in `s` (a common syllable).
std::string FrequentPair(const std::string& s) {
  std::map<std::string, std::size_t> count;
  auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  for (std::size_t i = 0; i + 1 < s.size(); i += 7) {
    if (letter(s[i]) && letter(s[i + 1])) ++count[s.substr(i, 2)];
  }
  std::string best = s.substr(s.size() / 2, 2);
  std::size_t most = 0;
  for (const auto& [pair, n] : count) {
    if (n > most) {
      most = n;
      best = pair;
    }
  }
  return best;
}

template <class C>
std::basic_string<C> Widen(const std::string& ascii) {
  return std::basic_string<C>(ascii.begin(), ascii.end());
}

// A needle starting with `first` that the corpus does not contain.
std::string Needle(const std::string& corpus, char first) {
  for (int k = 0;; ++k) {
    std::string n = std::string(1, first) + "_needle_zq" + std::to_string(k);
    if (corpus.find(n) == std::string::npos) return n;
  }
}

template <class C>
Texts<C> MakeTexts(const std::basic_string<C>& corpus, const std::string& needle, const std::string& pair) {
  Texts<C> t;
  t.needle = Widen<C>(needle);
  std::string upper = needle;
  for (char& c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
  t.upper = Widen<C>(upper);
  t.back = corpus + t.needle;
  t.front = t.needle + corpus;
  t.from = Widen<C>(pair);
  t.to = Widen<C>(pair + "+");
  return t;
}

void Prepare() {
  const std::size_t size = quillbench::CorpusSize(4);
  for (const std::string& name : quillbench::SelectedKinds()) {
    if (!quillbench::IsTextKind(name)) continue;
    const quillbench::Corpus c = quillbench::MakeCorpus(name, size);
    const std::u16string wide = quill::Utf8ToUnicode(c.bytes);
    const std::string pair = FrequentPair(c.bytes);
    Kind k{name, {}, {}, {}, {}};
    const std::string rare = Needle(c.bytes, 'q');
    const std::string frequent = Needle(c.bytes, 'e');
    k.rare8 = MakeTexts<char>(c.bytes, rare, pair);
    k.frequent8 = MakeTexts<char>(c.bytes, frequent, pair);
    k.rare16 = MakeTexts<char16_t>(wide, rare, pair);
    k.frequent16 = MakeTexts<char16_t>(wide, frequent, pair);
    Kinds().push_back(std::move(k));
  }
}

template <class C>
void Find(benchmark::State& st, const Texts<C>* t) {
  const std::basic_string_view<C> s = t->back;
  for (auto _ : st) {
    auto p = s.find(t->needle);
    benchmark::DoNotOptimize(p);
    Check(p == s.size() - t->needle.size());
  }
}
template <class C>
void XPosBench(benchmark::State& st, const Texts<C>* t) {
  const std::basic_string_view<C> s = t->back;
  for (auto _ : st) {
    int32_t p = XPos(std::basic_string_view<C>(t->needle), s, 1, 1);
    benchmark::DoNotOptimize(p);
    Check(p == static_cast<int32_t>(s.size() - t->needle.size() + 1));
  }
}
template <class C>
void RFind(benchmark::State& st, const Texts<C>* t) {
  const std::basic_string_view<C> s = t->front;
  for (auto _ : st) {
    auto p = s.rfind(t->needle);
    benchmark::DoNotOptimize(p);
    Check(p == 0);
  }
}
template <class C>
void BXPosBench(benchmark::State& st, const Texts<C>* t) {
  const std::basic_string_view<C> s = t->front;
  for (auto _ : st) {
    int32_t p = BXPos(std::basic_string_view<C>(t->needle), s, 0, 1);
    benchmark::DoNotOptimize(p);
    Check(p == 1);
  }
}
template <class C>
void CXPosBench(benchmark::State& st, const Texts<C>* t) {
  const std::basic_string_view<C> s = t->back;
  for (auto _ : st) {
    int32_t p = CXPos(std::basic_string_view<C>(t->upper), s, 1, 1);
    benchmark::DoNotOptimize(p);
    Check(p == static_cast<int32_t>(s.size() - t->needle.size() + 1));
  }
}
template <class C>
void CPosBench(benchmark::State& st, const Texts<C>* t) {
  const std::basic_string_view<C> s = t->back;
  for (auto _ : st) {
    int32_t p = CPos(std::basic_string_view<C>(t->upper), s);
    benchmark::DoNotOptimize(p);
    Check(p == static_cast<int32_t>(s.size() - t->needle.size() + 1));
  }
}

// Straightforward replace-all: find, append the gap and the new text.
template <class C>
void NaiveReplace(benchmark::State& st, const Texts<C>* t) {
  using View = std::basic_string_view<C>;
  const View text = t->back;
  const View from = t->from;
  const View to = t->to;
  for (auto _ : st) {
    std::basic_string<C> out;
    std::size_t last = 0;
    for (std::size_t p = text.find(from); p != View::npos; p = text.find(from, last)) {
      out.append(text.substr(last, p - last));
      out.append(to);
      last = p + from.size();
    }
    out.append(text.substr(last));
    benchmark::DoNotOptimize(out.data());
    Check(out.size() >= text.size());
  }
}
template <class C>
void ReplaceStrBench(benchmark::State& st, const Texts<C>* t) {
  using View = std::basic_string_view<C>;
  for (auto _ : st) {
    auto r = ReplaceStr(View(t->back), View(t->from), View(t->to));
    benchmark::DoNotOptimize(r.data());
    Check(r.size() >= t->back.size());
  }
}

// One comparison of the summary: library and baseline benchmark names.
struct Pair {
  std::string column;
  std::string lib;
  std::string base;
};

template <class C>
void Register(const std::string& kind, const std::string& form, const std::string& which,
              const Texts<C>* t, std::vector<Pair>& pairs, bool replace) {
  const std::string tail = "/" + form + "/" + which + "/" + kind;
  auto reg = [&](const std::string& op, void (*fn)(benchmark::State&, const Texts<C>*)) {
    benchmark::RegisterBenchmark((op + tail).c_str(), fn, t)->Unit(benchmark::kMicrosecond);
  };
  reg("find", &Find<C>);
  reg("XPos", &XPosBench<C>);
  reg("rfind", &RFind<C>);
  reg("BXPos", &BXPosBench<C>);
  reg("CXPos", &CXPosBench<C>);
  reg("CPos", &CPosBench<C>);
  const std::string col = form + " " + which;
  pairs.push_back({"XPos " + col, "XPos" + tail, "find" + tail});
  pairs.push_back({"BXPos " + col, "BXPos" + tail, "rfind" + tail});
  pairs.push_back({"CXPos " + col, "CXPos" + tail, "find" + tail});
  pairs.push_back({"CPos " + col, "CPos" + tail, "find" + tail});
  if (replace) {
    reg("naiveReplace", &NaiveReplace<C>);
    reg("ReplaceStr", &ReplaceStrBench<C>);
    pairs.push_back({"ReplaceStr " + form, "ReplaceStr" + tail, "naiveReplace" + tail});
  }
}

}  // namespace

int main(int argc, char** argv) {
  // The 8-bit caseless searches are measured under a single-byte code page.
  if (std::getenv("QUILL_ANSI_CODEPAGE") == nullptr) setenv("QUILL_ANSI_CODEPAGE", "1252", 1);
  quill::ResetLocaleCache();
  benchmark::Initialize(&argc, argv);
  Prepare();
  std::vector<Pair> pairs;
  for (const Kind& k : Kinds()) {
    Register(k.name, "8", "rare", &k.rare8, pairs, true);
    Register(k.name, "8", "frequent", &k.frequent8, pairs, false);
    Register(k.name, "16", "rare", &k.rare16, pairs, true);
    Register(k.name, "16", "frequent", &k.frequent16, pairs, false);
  }
  quillbench::RecordingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);

  std::printf("\nSpeed ratio library / baseline (baseline time / library time; above 1 the library is faster),\n"
              "median [min-max] over repetitions; code page %s\n",
              std::getenv("QUILL_ANSI_CODEPAGE"));
  std::map<std::string, std::map<std::string, std::string>> cells;  // column -> kind -> cell
  std::vector<std::string> columns;
  for (const Pair& p : pairs) {
    // Inverse of the time ratio.
    const quillbench::RatioStats st = reporter.Ratio(p.base, p.lib);
    if (st.samples == 0) continue;
    if (cells.find(p.column) == cells.end()) columns.push_back(p.column);
    char cell[48];
    std::snprintf(cell, sizeof cell, "%.2f [%.2f-%.2f]", st.median, st.low, st.high);
    const std::string kind = p.lib.substr(p.lib.rfind('/') + 1);
    cells[p.column][kind] = cell;
  }
  for (const std::string& col : columns) {
    std::printf("%-22s", col.c_str());
    for (const Kind& k : Kinds()) {
      auto it = cells[col].find(k.name);
      std::printf(" | %-14s %-18s", k.name.c_str(), it == cells[col].end() ? "-" : it->second.c_str());
    }
    std::printf("\n");
  }
  benchmark::Shutdown();
  return 0;
}
