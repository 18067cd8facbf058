// Locale-aware casing and comparison against their plain baselines.
//
// AnsiUpperCase on ASCII text should stay close to a plain ASCII loop (its fast
// path never calls ICU); on non-ASCII text it is measured against ICU's own
// string upper-casing (u_strToUpper), which does full (length-changing)
// mapping. AnsiSameText is measured against a bare ICU collator comparison.
// Inputs are built once; each loop checks its result so a wrong answer stops
// the run. The ratios are printed at the end.
#include <benchmark/benchmark.h>
#include <unicode/ucol.h>
#include <unicode/ustring.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "bench/ratio_reporter.h"
#include "quill/rtl/casing.h"
#include "quill/rtl/compare.h"
#include "quill/rtl/syslocale.h"

namespace {

struct Texts {
  std::vector<std::u16string> ascii;     // words of ASCII letters and digits
  std::vector<std::u16string> accented;  // German/French/Greek words
  std::vector<std::string> ascii8;
  std::vector<std::u16string> ascii_flipped;  // the same words, case flipped
};

const Texts& Inputs() {
  static const Texts texts = [] {
    // Pin the locale so that the run does not depend on the machine.
    setenv("LC_ALL", "en_US.UTF-8", 1);
    setenv("QUILL_SYSTEM_LOCALE", "en-US", 1);
    quill::ResetLocaleCache();
    Texts t;
    std::mt19937 rng(4242);
    const std::u16string letters = u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 ";
    const std::u16string accents = u"\u00E4\u00F6\u00FC\u00DF\u00E9\u00E8\u00E7\u03B1\u03B2\u03B3\u0436abc";
    std::uniform_int_distribution<size_t> len(4, 40);
    for (int i = 0; i < 2048; ++i) {
      std::u16string a;
      std::u16string b;
      const size_t n = len(rng);
      for (size_t k = 0; k < n; ++k) {
        a.push_back(letters[rng() % letters.size()]);
        b.push_back(accents[rng() % accents.size()]);
      }
      t.ascii.push_back(a);
      t.accented.push_back(b);
      t.ascii8.emplace_back(a.begin(), a.end());
      std::u16string f = a;
      for (char16_t& c : f) {
        if (c >= u'a' && c <= u'z') c = char16_t(c - 32);
        else if (c >= u'A' && c <= u'Z') c = char16_t(c + 32);
      }
      t.ascii_flipped.push_back(f);
    }
    return t;
  }();
  return texts;
}

void BM_AsciiLoop(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    size_t total = 0;
    for (const std::u16string& s : t.ascii) {
      std::u16string out(s);
      for (char16_t& c : out) {
        if (c >= u'a' && c <= u'z') c = char16_t(c - 32);
      }
      total += out.size();
      benchmark::DoNotOptimize(out.data());
    }
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_AsciiLoop);

void BM_AnsiUpperCaseAscii(benchmark::State& state) {
  const Texts& t = Inputs();
  if (quill::AnsiUpperCase(t.ascii[0]) != quill::UpperCase(t.ascii[0])) state.SkipWithError("wrong result");
  for (auto _ : state) {
    size_t total = 0;
    for (const std::u16string& s : t.ascii) {
      std::u16string out = quill::AnsiUpperCase(s);
      total += out.size();
      benchmark::DoNotOptimize(out.data());
    }
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_AnsiUpperCaseAscii);

void BM_AnsiUpperCaseAscii8(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    size_t total = 0;
    for (const std::string& s : t.ascii8) {
      std::string out = quill::AnsiUpperCase(s);
      total += out.size();
      benchmark::DoNotOptimize(out.data());
    }
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_AnsiUpperCaseAscii8);

void BM_IcuStrToUpper(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    size_t total = 0;
    for (const std::u16string& s : t.accented) {
      std::u16string out(s.size() * 3, u'\0');
      UErrorCode err = U_ZERO_ERROR;
      const int32_t n = u_strToUpper(out.data(), static_cast<int32_t>(out.size()), s.data(),
                                     static_cast<int32_t>(s.size()), "en_US", &err);
      out.resize(static_cast<size_t>(n));
      total += out.size();
      benchmark::DoNotOptimize(out.data());
    }
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_IcuStrToUpper);

void BM_AnsiUpperCaseAccented(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    size_t total = 0;
    for (const std::u16string& s : t.accented) {
      std::u16string out = quill::AnsiUpperCase(s);
      if (out.size() != s.size()) state.SkipWithError("length changed");
      total += out.size();
      benchmark::DoNotOptimize(out.data());
    }
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_AnsiUpperCaseAccented);

void BM_IcuCollatorSameText(benchmark::State& state) {
  const Texts& t = Inputs();
  UErrorCode err = U_ZERO_ERROR;
  UCollator* coll = ucol_open("en_US", &err);
  ucol_setStrength(coll, UCOL_SECONDARY);
  for (auto _ : state) {
    size_t equal = 0;
    for (size_t i = 0; i < t.ascii.size(); ++i) {
      const auto& a = t.ascii[i];
      const auto& b = t.ascii_flipped[i];
      equal += ucol_strcoll(coll, a.data(), static_cast<int32_t>(a.size()), b.data(),
                            static_cast<int32_t>(b.size())) == UCOL_EQUAL;
    }
    if (equal != t.ascii.size()) state.SkipWithError("wrong result");
  }
  ucol_close(coll);
}
BENCHMARK(BM_IcuCollatorSameText);

void BM_AnsiSameText(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    size_t equal = 0;
    for (size_t i = 0; i < t.ascii.size(); ++i) equal += quill::AnsiSameText(t.ascii[i], t.ascii_flipped[i]);
    if (equal != t.ascii.size()) state.SkipWithError("wrong result");
  }
}
BENCHMARK(BM_AnsiSameText);

void BM_AnsiCompareText(benchmark::State& state) {
  const Texts& t = Inputs();
  for (auto _ : state) {
    size_t equal = 0;
    for (size_t i = 0; i < t.ascii.size(); ++i) equal += quill::AnsiCompareText(t.ascii[i], t.ascii_flipped[i]) == 0;
    if (equal != t.ascii.size()) state.SkipWithError("wrong result");
  }
}
BENCHMARK(BM_AnsiCompareText);

}  // namespace

int main(int argc, char** argv) {
  return quillbench::RunWithRatios(argc, argv,
                                   {{"BM_AnsiUpperCaseAscii", "BM_AsciiLoop"},
                                    {"BM_AnsiUpperCaseAscii8", "BM_AsciiLoop"},
                                    {"BM_AnsiUpperCaseAccented", "BM_IcuStrToUpper"},
                                    {"BM_AnsiSameText", "BM_IcuCollatorSameText"},
                                    {"BM_AnsiCompareText", "BM_IcuCollatorSameText"}});
}
