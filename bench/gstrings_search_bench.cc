// Gstrings searching and replacing against the standard library on 1 MB of
// text: XPos/PosNum vs find, BXPos vs rfind, CXPos/CPos vs find on the same
// ASCII text, ReplaceStr/XReplaceStr vs a find-and-append replace-all.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <string_view>

#include "bench/ratio_reporter.h"
#include "quill/strings/gstrings.h"

namespace {

using namespace quill::Gstrings;

constexpr std::size_t kTextSize = 1 << 20;

// About 1 MB of ASCII prose, with `tail` appended (found only at the end).
template <class S>
S Prose(const S& tail) {
  const std::string_view words = "lorem ipsum dolor sit amet consectetur adipiscing elit sed do ";
  S s;
  s.reserve(kTextSize + tail.size());
  while (s.size() + words.size() <= kTextSize) s.append(words.begin(), words.end());
  s += tail;
  return s;
}

const std::u16string& WideText() {
  static const std::u16string t = Prose<std::u16string>(u"needle");
  return t;
}
const std::string& AnsiText() {
  static const std::string t = Prose<std::string>("needle");
  return t;
}
// The same text with the needle at the front, for the backward searches.
const std::u16string& WideTextFront() {
  static const std::u16string t = u"needle" + Prose<std::u16string>(u"");
  return t;
}

void Check(bool ok) {
  if (!ok) {
    std::fprintf(stderr, "benchmark result check failed\n");
    std::abort();
  }
}

void BM_Wide_find(benchmark::State& st) {
  const std::u16string_view t = WideText();
  for (auto _ : st) {
    auto p = t.find(u"needle");
    benchmark::DoNotOptimize(p);
    Check(p == t.size() - 6);
  }
}
void BM_Wide_XPos(benchmark::State& st) {
  const std::u16string_view t = WideText();
  for (auto _ : st) {
    int32_t p = XPos(u"needle", t, 1, 1);
    benchmark::DoNotOptimize(p);
    Check(p == static_cast<int32_t>(t.size() - 5));
  }
}
void BM_Wide_PosNum(benchmark::State& st) {
  const std::u16string_view t = WideText();
  for (auto _ : st) {
    int32_t p = PosNum(u"needle", t, 1);
    benchmark::DoNotOptimize(p);
    Check(p == static_cast<int32_t>(t.size() - 5));
  }
}
void BM_Wide_rfind(benchmark::State& st) {
  const std::u16string_view t = WideTextFront();
  for (auto _ : st) {
    auto p = t.rfind(u"needle");
    benchmark::DoNotOptimize(p);
    Check(p == 0);
  }
}
void BM_Wide_BXPos(benchmark::State& st) {
  const std::u16string_view t = WideTextFront();
  for (auto _ : st) {
    int32_t p = BXPos(u"needle", t, 0, 1);
    benchmark::DoNotOptimize(p);
    Check(p == 1);
  }
}
void BM_Wide_CXPos(benchmark::State& st) {
  const std::u16string_view t = WideText();
  for (auto _ : st) {
    int32_t p = CXPos(u"NEEDLE", t, 1, 1);
    benchmark::DoNotOptimize(p);
    Check(p == static_cast<int32_t>(t.size() - 5));
  }
}
void BM_Wide_CPos(benchmark::State& st) {
  const std::u16string_view t = WideText();
  for (auto _ : st) {
    int32_t p = CPos(u"Needle", t);
    benchmark::DoNotOptimize(p);
    Check(p == static_cast<int32_t>(t.size() - 5));
  }
}
void BM_Ansi_find(benchmark::State& st) {
  const std::string_view t = AnsiText();
  for (auto _ : st) {
    auto p = t.find("needle");
    benchmark::DoNotOptimize(p);
    Check(p == t.size() - 6);
  }
}
void BM_Ansi_CXPos(benchmark::State& st) {
  const std::string_view t = AnsiText();
  for (auto _ : st) {
    int32_t p = CXPos("NEEDLE", t, 1, 1);
    benchmark::DoNotOptimize(p);
    Check(p == static_cast<int32_t>(t.size() - 5));
  }
}
void BM_Ansi_CPos(benchmark::State& st) {
  const std::string_view t = AnsiText();
  for (auto _ : st) {
    int32_t p = CPos("Needle", t);
    benchmark::DoNotOptimize(p);
    Check(p == static_cast<int32_t>(t.size() - 5));
  }
}

// Straightforward replace-all: find, append the gap and the new text.
// With `reserve`, the output is first reserved at the text's size (a fairer
// baseline for UTF-16, whose unreserved appends are slow in libstdc++).
template <class C>
std::basic_string<C> NaiveReplace(std::basic_string_view<C> text, std::basic_string_view<C> from,
                                  std::basic_string_view<C> to, bool reserve = false) {
  std::basic_string<C> out;
  if (reserve) out.reserve(text.size());
  std::size_t last = 0;
  for (std::size_t p = text.find(from); p != std::basic_string_view<C>::npos;
       p = text.find(from, last)) {
    out.append(text.substr(last, p - last));
    out.append(to);
    last = p + from.size();
  }
  out.append(text.substr(last));
  return out;
}

void BM_Wide_naiveReplace(benchmark::State& st) {
  const std::u16string_view t = WideText();
  for (auto _ : st) {
    auto r = NaiveReplace<char16_t>(t, u"sit", u"stand");
    benchmark::DoNotOptimize(r.data());
    Check(r.size() > t.size());
  }
}
void BM_Wide_naiveReplaceReserved(benchmark::State& st) {
  const std::u16string_view t = WideText();
  for (auto _ : st) {
    auto r = NaiveReplace<char16_t>(t, u"sit", u"stand", true);
    benchmark::DoNotOptimize(r.data());
    Check(r.size() > t.size());
  }
}
void BM_Wide_ReplaceStr(benchmark::State& st) {
  const std::u16string_view t = WideText();
  for (auto _ : st) {
    auto r = ReplaceStr(t, u"sit", u"stand");
    benchmark::DoNotOptimize(r.data());
    Check(r.size() > t.size());
  }
}
void BM_Wide_XReplaceStr(benchmark::State& st) {
  const std::u16string_view t = WideText();
  for (auto _ : st) {
    auto r = XReplaceStr(t, u"SIT", u"stand", false);
    benchmark::DoNotOptimize(r.data());
    Check(r.size() > t.size());
  }
}
void BM_Ansi_naiveReplace(benchmark::State& st) {
  const std::string_view t = AnsiText();
  for (auto _ : st) {
    auto r = NaiveReplace<char>(t, "sit", "stand");
    benchmark::DoNotOptimize(r.data());
    Check(r.size() > t.size());
  }
}
void BM_Ansi_ReplaceStr(benchmark::State& st) {
  const std::string_view t = AnsiText();
  for (auto _ : st) {
    auto r = ReplaceStr(t, "sit", "stand");
    benchmark::DoNotOptimize(r.data());
    Check(r.size() > t.size());
  }
}
void BM_Ansi_XReplaceStr(benchmark::State& st) {
  const std::string_view t = AnsiText();
  for (auto _ : st) {
    auto r = XReplaceStr(t, "SIT", "stand", false);
    benchmark::DoNotOptimize(r.data());
    Check(r.size() > t.size());
  }
}

BENCHMARK(BM_Wide_find);
BENCHMARK(BM_Wide_XPos);
BENCHMARK(BM_Wide_PosNum);
BENCHMARK(BM_Wide_rfind);
BENCHMARK(BM_Wide_BXPos);
BENCHMARK(BM_Wide_CXPos);
BENCHMARK(BM_Wide_CPos);
BENCHMARK(BM_Ansi_find);
BENCHMARK(BM_Ansi_CXPos);
BENCHMARK(BM_Ansi_CPos);
BENCHMARK(BM_Wide_naiveReplace);
BENCHMARK(BM_Wide_naiveReplaceReserved);
BENCHMARK(BM_Wide_ReplaceStr);
BENCHMARK(BM_Wide_XReplaceStr);
BENCHMARK(BM_Ansi_naiveReplace);
BENCHMARK(BM_Ansi_ReplaceStr);
BENCHMARK(BM_Ansi_XReplaceStr);

}  // namespace

int main(int argc, char** argv) {
  return quillbench::RunWithRatios(argc, argv,
                                       {{"BM_Wide_XPos", "BM_Wide_find"},
                                        {"BM_Wide_PosNum", "BM_Wide_find"},
                                        {"BM_Wide_BXPos", "BM_Wide_rfind"},
                                        {"BM_Wide_CXPos", "BM_Wide_find"},
                                        {"BM_Wide_CPos", "BM_Wide_find"},
                                        {"BM_Ansi_CXPos", "BM_Ansi_find"},
                                        {"BM_Ansi_CPos", "BM_Ansi_find"},
                                        {"BM_Wide_ReplaceStr", "BM_Wide_naiveReplace"},
                                        {"BM_Wide_XReplaceStr", "BM_Wide_naiveReplace"},
                                        {"BM_Wide_ReplaceStr", "BM_Wide_naiveReplaceReserved"},
                                        {"BM_Wide_XReplaceStr", "BM_Wide_naiveReplaceReserved"},
                                        {"BM_Ansi_ReplaceStr", "BM_Ansi_naiveReplace"},
                                        {"BM_Ansi_XReplaceStr", "BM_Ansi_naiveReplace"}});
}
