// Glocales' code-page conversions and sort keys against ICU called directly.
//
// StrToWideByCodePage and WideToStrByCodePage for 1252 and 65001 run on
// several kinds of text (ASCII source code, accented Latin prose, Cyrillic
// and CJK prose for 65001; the prose comes from the machine's message
// catalogs where present, else the corpus generator) next to the same
// conversion written directly against ICU: a converter opened once,
// ucnv_toUChars / ucnv_fromUChars into a string sized for the worst case,
// then cut to length. MB/s count the 8-bit side's bytes in both directions.
// GetSortKey (8-bit words, fresh key block each) runs next to
// ucol_getSortKey on the same words already in UTF-16, into a reused buffer,
// with a collator opened once at the same strength. Every loop checks its
// result; the ratios (library / ICU, lower is better) print at the end.
#include <benchmark/benchmark.h>
#include <unicode/ucnv.h>
#include <unicode/ucol.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "bench/corpus.h"
#include "bench/ratio_reporter.h"
#include "quill/locales/codepages.h"
#include "quill/locales/sortkey.h"
#include "quill/rtl/getmem.h"
#include "quill/rtl/syslocale.h"

namespace {

namespace Gl = quill::Glocales;

struct Input {
  std::string bytes;       // the text in the page
  std::u16string units;    // the same text in UTF-16
};

// page -> kind -> text
using Inputs = std::map<int32_t, std::map<std::string, Input>>;

const std::vector<std::pair<int32_t, std::string>>& Cases() {
  static const std::vector<std::pair<int32_t, std::string>> cases = {
      {1252, "ascii"},  {1252, "latin"},    {65001, "ascii"},
      {65001, "latin"}, {65001, "cyrillic"}, {65001, "cjk"}};
  return cases;
}

const Inputs& Texts() {
  static const Inputs inputs = [] {
    setenv("QUILL_SYSTEM_LOCALE", "en-US", 1);
    unsetenv("QUILL_ANSI_CODEPAGE");
    quill::ResetLocaleCache();
    const size_t size = quillbench::CorpusSize(4);
    std::map<std::string, std::string> utf8 = {
        {"ascii", quillbench::MakeCorpus("c", size).bytes},
        {"latin", quillbench::MakeCorpus("prose-latin", size).bytes},
        {"cyrillic", quillbench::MakeCorpus("prose-cyrillic", size).bytes},
        {"cjk", quillbench::MakeCorpus("prose-cjk", size).bytes}};
    // Source code is mostly ASCII; keep only its ASCII bytes.
    std::string& a = utf8["ascii"];
    std::erase_if(a, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    Inputs in;
    for (const auto& [page, kind] : Cases()) {
      Input t;
      const std::u16string units = Gl::StrToWideByCodePage(utf8[kind], 65001);
      t.bytes = Gl::WideToStrByCodePage(units, page);
      t.units = Gl::StrToWideByCodePage(t.bytes, page);
      in[page][kind] = std::move(t);
    }
    return in;
  }();
  return inputs;
}

struct Converter {
  explicit Converter(const char* name) {
    UErrorCode err = U_ZERO_ERROR;
    conv = ucnv_open(name, &err);
    ucnv_setSubstChars(conv, "?", 1, &err);
    if (U_FAILURE(err)) std::abort();
  }
  ~Converter() { ucnv_close(conv); }
  UConverter* conv;
};

const char* IcuName(int32_t page) { return page == 65001 ? "UTF-8" : "windows-1252"; }

void LibDecode(benchmark::State& state, int32_t page, std::string kind) {
  const Input& in = Texts().at(page).at(kind);
  for (auto _ : state) {
    const std::u16string out = Gl::StrToWideByCodePage(in.bytes, page);
    if (out.size() != in.units.size()) state.SkipWithError("wrong length");
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * in.bytes.size()));
}

void IcuDecode(benchmark::State& state, int32_t page, std::string kind) {
  const Input& in = Texts().at(page).at(kind);
  Converter c(IcuName(page));
  for (auto _ : state) {
    std::u16string out(in.bytes.size() * 2 + 2, u'\0');
    UErrorCode err = U_ZERO_ERROR;
    const int32_t n = ucnv_toUChars(c.conv, out.data(), static_cast<int32_t>(out.size()), in.bytes.data(),
                                    static_cast<int32_t>(in.bytes.size()), &err);
    out.resize(static_cast<size_t>(n));
    if (out.size() != in.units.size()) state.SkipWithError("wrong length");
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * in.bytes.size()));
}

void LibEncode(benchmark::State& state, int32_t page, std::string kind) {
  const Input& in = Texts().at(page).at(kind);
  for (auto _ : state) {
    const std::string out = Gl::WideToStrByCodePage(in.units, page);
    if (out.size() != in.bytes.size()) state.SkipWithError("wrong length");
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * in.bytes.size()));
}

void IcuEncode(benchmark::State& state, int32_t page, std::string kind) {
  const Input& in = Texts().at(page).at(kind);
  Converter c(IcuName(page));
  for (auto _ : state) {
    const auto units = static_cast<int32_t>(in.units.size());
    std::string out(static_cast<size_t>(UCNV_GET_MAX_BYTES_FOR_STRING(units, ucnv_getMaxCharSize(c.conv))), '\0');
    UErrorCode err = U_ZERO_ERROR;
    const int32_t n = ucnv_fromUChars(c.conv, out.data(), static_cast<int32_t>(out.size()), in.units.data(),
                                      units, &err);
    out.resize(static_cast<size_t>(n));
    if (out.size() != in.bytes.size()) state.SkipWithError("wrong length");
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * in.bytes.size()));
}

// Words of the Latin prose in 1252, for the sort keys.
struct Words {
  std::vector<std::string> bytes;
  std::vector<std::u16string> units;
};

const Words& SortWords() {
  static const Words words = [] {
    Words w;
    const std::string& text = Texts().at(1252).at("latin").bytes;
    size_t i = 0;
    while (w.bytes.size() < 4096 && i < text.size()) {
      const size_t end = text.find_first_of(" \n\t.,;:()\"", i);
      const size_t stop = end == std::string::npos ? text.size() : end;
      if (stop - i >= 3) w.bytes.push_back(text.substr(i, stop - i));
      i = stop + 1;
    }
    for (const std::string& b : w.bytes) w.units.push_back(Gl::StrToWideByCodePage(b, 1252));
    return w;
  }();
  return words;
}

void LibSortKey(benchmark::State& state) {
  const Words& w = SortWords();
  size_t i = 0;
  int64_t bytes = 0;
  for (auto _ : state) {
    const std::string& word = w.bytes[i++ % w.bytes.size()];
    uint8_t* key = nullptr;
    const int32_t n = Gl::GetSortKey(word, 0x0407, key);
    if (n <= 0) state.SkipWithError("no key");
    benchmark::DoNotOptimize(key);
    quill::FreeMem(key);
    bytes += static_cast<int64_t>(word.size());
  }
  state.SetBytesProcessed(bytes);
}

void IcuSortKey(benchmark::State& state) {
  const Words& w = SortWords();
  UErrorCode err = U_ZERO_ERROR;
  UCollator* c = ucol_open("de_DE", &err);
  ucol_setStrength(c, UCOL_SECONDARY);
  std::vector<uint8_t> buf(1024);
  size_t i = 0;
  int64_t bytes = 0;
  for (auto _ : state) {
    const size_t at = i++ % w.units.size();
    const std::u16string& word = w.units[at];
    const int32_t n = ucol_getSortKey(c, word.data(), static_cast<int32_t>(word.size()), buf.data(),
                                      static_cast<int32_t>(buf.size()));
    if (n <= 0 || n > static_cast<int32_t>(buf.size())) state.SkipWithError("no key");
    benchmark::DoNotOptimize(buf.data());
    bytes += static_cast<int64_t>(w.bytes[at].size());
  }
  state.SetBytesProcessed(bytes);
  ucol_close(c);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::pair<std::string, std::string>> pairs;
  for (const auto& [page, kind] : Cases()) {
    const std::string tag = std::to_string(page) + "/" + kind;
    benchmark::RegisterBenchmark(("StrToWideByCodePage/" + tag).c_str(), LibDecode, page, kind);
    benchmark::RegisterBenchmark(("ucnv_toUChars/" + tag).c_str(), IcuDecode, page, kind);
    benchmark::RegisterBenchmark(("WideToStrByCodePage/" + tag).c_str(), LibEncode, page, kind);
    benchmark::RegisterBenchmark(("ucnv_fromUChars/" + tag).c_str(), IcuEncode, page, kind);
    pairs.emplace_back("StrToWideByCodePage/" + tag, "ucnv_toUChars/" + tag);
    pairs.emplace_back("WideToStrByCodePage/" + tag, "ucnv_fromUChars/" + tag);
  }
  benchmark::RegisterBenchmark("GetSortKey/de-DE", LibSortKey);
  benchmark::RegisterBenchmark("ucol_getSortKey/de-DE", IcuSortKey);
  pairs.emplace_back("GetSortKey/de-DE", "ucol_getSortKey/de-DE");
  return quillbench::RunWithRatios(argc, argv, pairs);
}
