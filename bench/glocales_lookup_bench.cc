// Reverse locale lookups: the cached lookups against a plain walk over the
// same list that asks the locale database for each entry's code, as the
// lookups would without their index. Codes are every code of the list in
// mixed letter case plus a share of misses; each loop checks its answers so a
// wrong result stops the run. After the run the lookup rate per second is
// printed for each cached lookup (target: at least 1,000,000), then the
// ratios.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "bench/ratio_reporter.h"
#include "quill/locales/glocales.h"
#include "quill/rtl/casing.h"
#include "quill/rtl/compare.h"
#include "quill/rtl/syslocale.h"
#include "quill/rtl/tstrings.h"

namespace {

using namespace quill;
using namespace quill::Glocales;

struct Case {
  std::u16string code;
  LCID expected;
};

// Alternating letter case, so that the comparison's folding is exercised.
std::u16string MixCase(std::u16string s) {
  for (size_t i = 0; i < s.size(); ++i) {
    char16_t& c = s[i];
    if (i % 2 == 0 && c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - 32);
    if (i % 2 == 1 && c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 32);
  }
  return s;
}

LCID Walk(TLocaleListOpt opt, const std::function<UnicodeString(LCID)>& code_of, std::u16string_view code) {
  TStringList list;
  GetLocaleList(list, opt);
  for (int32_t i = 0; i < list.Count(); ++i) {
    if (CompareText(code_of(LocaleListLCID(list, i)), code) == 0) return LocaleListLCID(list, i);
  }
  return 0;
}

// The codes of every entry of the list for `opt`, with their first match, and
// one miss for every four hits.
std::vector<Case> Cases(TLocaleListOpt opt, const std::function<UnicodeString(LCID)>& code_of) {
  setenv("QUILL_SYSTEM_LOCALE", "en-US", 1);
  ResetLocaleCache();
  TStringList list;
  GetLocaleList(list, opt);
  std::vector<Case> out;
  for (int32_t i = 0; i < list.Count(); ++i) {
    const std::u16string code = MixCase(code_of(LocaleListLCID(list, i)));
    out.push_back({code, Walk(opt, code_of, code)});
    if (i % 4 == 3) out.push_back({u"zz-" + code, 0});
  }
  return out;
}

const std::vector<Case>& TmxCases() {
  static const auto cases = Cases(lloBoth, ISOCodesByLocaleTMX);
  return cases;
}
const std::vector<Case>& IsoCases() {
  static const auto cases = Cases(lloBoth, ISOCodesByLocale);
  return cases;
}
const std::vector<Case>& AbbrCases() {
  static const auto cases = Cases(lloBoth, AbbrByLocale);
  return cases;
}
const std::vector<Case>& CountryCases() {
  static const auto cases = Cases(lloPrimary, CountryISOCodeByLocale);
  return cases;
}

// Prefixes of the English language names of the lloSub list (the first up to
// five letters), with the first locale whose name begins with each.
const std::vector<Case>& EnglishNameCases() {
  static const auto cases = Cases(lloSub, [](LCID l) {
    UnicodeString name = LocaleInfo(l, LOCALE_SENGLANGUAGE);
    if (name.size() > 5) name.resize(5);
    return name;
  });
  return cases;
}

void Run(benchmark::State& state, const std::vector<Case>& cases, LCID (*lookup)(std::u16string_view)) {
  size_t i = 0;
  for (auto _ : state) {
    const Case& c = cases[i];
    const LCID got = lookup(c.code);
    if (got != c.expected) {
      state.SkipWithError("wrong answer");
      break;
    }
    benchmark::DoNotOptimize(got);
    if (++i == cases.size()) i = 0;
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_LocaleByISOCodesTMX(benchmark::State& state) { Run(state, TmxCases(), LocaleByISOCodesTMX); }
void BM_LocaleByISOCodes(benchmark::State& state) { Run(state, IsoCases(), LocaleByISOCodes); }
void BM_LocaleByAbbr(benchmark::State& state) { Run(state, AbbrCases(), LocaleByAbbr); }
void BM_LocaleByCountryISOCode(benchmark::State& state) { Run(state, CountryCases(), LocaleByCountryISOCode); }

// The English-name lookup compares prefixes, so the walk's answer differs
// from the exact-code walk above; the expected values are taken from the
// lookup's own definition.
void BM_LocaleByEnglishName(benchmark::State& state) {
  std::vector<Case> cases;
  TStringList sub;
  GetLocaleList(sub, lloSub);
  for (const Case& c : EnglishNameCases()) {
    LCID first = 0;
    for (int32_t k = 0; k < sub.Count() && first == 0; ++k) {
      const UnicodeString name = LowerCase(LocaleInfo(LocaleListLCID(sub, k), LOCALE_SENGLANGUAGE));
      if (name.starts_with(LowerCase(c.code))) first = LocaleListLCID(sub, k);
    }
    cases.push_back({c.code, first});
  }
  Run(state, cases, LocaleByEnglishName);
}

// The baseline: the same lookup as a walk over the list asking the database
// for each entry's code.
void BM_WalkISOCodesTMX(benchmark::State& state) {
  const auto& cases = TmxCases();
  TStringList list;
  GetLocaleList(list, lloBoth);
  size_t i = 0;
  for (auto _ : state) {
    const Case& c = cases[i];
    LCID got = 0;
    for (int32_t k = 0; k < list.Count(); ++k) {
      if (CompareText(ISOCodesByLocaleTMX(LocaleListLCID(list, k)), c.code) == 0) {
        got = LocaleListLCID(list, k);
        break;
      }
    }
    if (got != c.expected) {
      state.SkipWithError("wrong answer");
      break;
    }
    benchmark::DoNotOptimize(got);
    if (++i == cases.size()) i = 0;
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_LocaleByISOCodesTMX);
BENCHMARK(BM_LocaleByISOCodes);
BENCHMARK(BM_LocaleByAbbr);
BENCHMARK(BM_LocaleByCountryISOCode);
BENCHMARK(BM_LocaleByEnglishName);
BENCHMARK(BM_WalkISOCodesTMX);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  quillbench::RecordingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\n%-34s %s\n", "lookup", "lookups per second (CPU time; target >= 1000000)");
  for (const char* name : {"BM_LocaleByISOCodesTMX", "BM_LocaleByISOCodes", "BM_LocaleByAbbr",
                           "BM_LocaleByCountryISOCode", "BM_LocaleByEnglishName", "BM_WalkISOCodesTMX"}) {
    const auto it = reporter.Times().find(name);
    if (it != reporter.Times().end() && it->second > 0) std::printf("%-34s %.0f\n", name, 1e9 / it->second);
  }
  const auto lib = reporter.Times().find("BM_LocaleByISOCodesTMX");
  const auto base = reporter.Times().find("BM_WalkISOCodesTMX");
  if (lib != reporter.Times().end() && base != reporter.Times().end() && base->second > 0) {
    std::printf("\n%-34s %-34s %.4f\n", "BM_LocaleByISOCodesTMX", "BM_WalkISOCodesTMX", lib->second / base->second);
  }
  benchmark::Shutdown();
  return 0;
}
