// LZG against zlib level 1 and LZ4 on inputs of every kind (bench/corpus.h:
// source text in several languages, prose in several scripts, executables,
// libraries, logs, CSV, compressed data, one repeated byte, short periods,
// random bytes), 8 MB each by default. Every coder runs in this one program
// on the same bytes; the summary printed at the end gives, per kind, the
// compressed sizes, MB/s and the speed ratios
//   LZG compression / zlib-1 compression   (target: >= 1)
//   LZG expansion   / LZ4 expansion        (target: >= 0.5; random data aside)
// as the median over repetitions with the spread [min - max]. Run with
//   --benchmark_repetitions=3 --benchmark_enable_random_interleaving=true
// so that each kind's coders alternate. QUILL_BENCH_KINDS=c,perl picks kinds;
// QUILL_BENCH_CORPUS_MB sets the size.
#include <benchmark/benchmark.h>
#include <lz4.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/corpus.h"
#include "bench/ratio_reporter.h"
#include "quill/compress/gcompress.h"

namespace {

using Bytes = std::vector<uint8_t>;

struct Corpus {
  std::string name;
  std::string origin;
  Bytes plain;
  Bytes lzg, zlib, lz4;  // compressed once, for the expansion runs
};

std::vector<Corpus>& Corpora() {
  static std::vector<Corpus> corpora;
  return corpora;
}

void Check(bool ok, const char* what) {
  if (!ok) throw std::runtime_error(what);
}

Bytes LzgPack(const Bytes& plain) {
  quill::TMemoryStream s, d;
  s.WriteBuffer(plain.data(), static_cast<int64_t>(plain.size()));
  quill::Gcompress::LZGCompressFullStream(&s, &d);
  return Bytes(d.Memory(), d.Memory() + d.Size());
}

void Prepare() {
  const std::size_t size = quillbench::CorpusSize(8);
  for (const std::string& kind : quillbench::SelectedKinds()) {
    quillbench::Corpus raw = quillbench::MakeCorpus(kind, size);
    Corpus c{kind, raw.origin, Bytes(raw.bytes.begin(), raw.bytes.end()), {}, {}, {}};
    c.lzg = LzgPack(c.plain);
    uLongf zlen = compressBound(c.plain.size());
    c.zlib.resize(zlen);
    Check(compress2(c.zlib.data(), &zlen, c.plain.data(), c.plain.size(), 1) == Z_OK, "zlib");
    c.zlib.resize(zlen);
    c.lz4.resize(static_cast<size_t>(LZ4_compressBound(static_cast<int>(c.plain.size()))));
    const int n = LZ4_compress_default(reinterpret_cast<const char*>(c.plain.data()),
                                       reinterpret_cast<char*>(c.lz4.data()),
                                       static_cast<int>(c.plain.size()), static_cast<int>(c.lz4.size()));
    Check(n > 0, "lz4");
    c.lz4.resize(static_cast<size_t>(n));
    // The LZG output must expand back to the input.
    quill::TMemoryStream s, d;
    s.WriteBuffer(c.lzg.data(), static_cast<int64_t>(c.lzg.size()));
    quill::Gcompress::LZGDecompressFullStream(&s, &d);
    Check(d.Size() == static_cast<int64_t>(c.plain.size()) &&
              std::equal(c.plain.begin(), c.plain.end(), d.Memory()),
          "LZG round trip");
    Corpora().push_back(std::move(c));
  }
}

void BM_LzgCompress(benchmark::State& state, const Corpus* c) {
  quill::TMemoryStream s, d;
  s.WriteBuffer(c->plain.data(), static_cast<int64_t>(c->plain.size()));
  for (auto _ : state) {
    s.SetPosition(0);
    d.SetSize(0);
    quill::Gcompress::LZGCompressStream(&s, &d);
    if (d.Size() != static_cast<int64_t>(c->lzg.size())) state.SkipWithError("LZG size changed");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * c->plain.size()));
}

void BM_LzgExpand(benchmark::State& state, const Corpus* c) {
  quill::TMemoryStream s, d;
  s.WriteBuffer(c->lzg.data(), static_cast<int64_t>(c->lzg.size()));
  for (auto _ : state) {
    s.SetPosition(0);
    d.SetSize(0);
    quill::Gcompress::LZGDecompressStream(&s, &d);
    if (d.Size() != static_cast<int64_t>(c->plain.size())) state.SkipWithError("LZG expanded size");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * c->plain.size()));
}

void BM_ZlibCompress(benchmark::State& state, const Corpus* c) {
  Bytes out(compressBound(c->plain.size()));
  for (auto _ : state) {
    uLongf n = out.size();
    if (compress2(out.data(), &n, c->plain.data(), c->plain.size(), 1) != Z_OK || n != c->zlib.size())
      state.SkipWithError("zlib");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * c->plain.size()));
}

void BM_ZlibExpand(benchmark::State& state, const Corpus* c) {
  Bytes out(c->plain.size());
  for (auto _ : state) {
    uLongf n = out.size();
    if (uncompress(out.data(), &n, c->zlib.data(), c->zlib.size()) != Z_OK || n != c->plain.size())
      state.SkipWithError("zlib");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * c->plain.size()));
}

void BM_Lz4Compress(benchmark::State& state, const Corpus* c) {
  Bytes out(c->lz4.size() + 1024 + c->plain.size() / 200);
  out.resize(static_cast<size_t>(LZ4_compressBound(static_cast<int>(c->plain.size()))));
  for (auto _ : state) {
    const int n = LZ4_compress_default(reinterpret_cast<const char*>(c->plain.data()),
                                       reinterpret_cast<char*>(out.data()),
                                       static_cast<int>(c->plain.size()), static_cast<int>(out.size()));
    if (n != static_cast<int>(c->lz4.size())) state.SkipWithError("lz4");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * c->plain.size()));
}

void BM_Lz4Expand(benchmark::State& state, const Corpus* c) {
  Bytes out(c->plain.size());
  for (auto _ : state) {
    const int n = LZ4_decompress_safe(reinterpret_cast<const char*>(c->lz4.data()),
                                      reinterpret_cast<char*>(out.data()),
                                      static_cast<int>(c->lz4.size()), static_cast<int>(out.size()));
    if (n != static_cast<int>(c->plain.size())) state.SkipWithError("lz4");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * c->plain.size()));
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  Prepare();
  for (const auto& c : Corpora()) {
    const Corpus* p = &c;
    benchmark::RegisterBenchmark(("compress/lzg/" + c.name).c_str(), BM_LzgCompress, p)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("compress/zlib1/" + c.name).c_str(), BM_ZlibCompress, p)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("compress/lz4/" + c.name).c_str(), BM_Lz4Compress, p)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("expand/lzg/" + c.name).c_str(), BM_LzgExpand, p)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("expand/zlib1/" + c.name).c_str(), BM_ZlibExpand, p)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("expand/lz4/" + c.name).c_str(), BM_Lz4Expand, p)->Unit(benchmark::kMillisecond);
  }
  quillbench::RecordingReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);

  // MB/s of plain data from the median CPU time.
  auto rate = [&](const std::string& k, std::size_t bytes) {
    auto it = reporter.Times().find(k);
    return it == reporter.Times().end() || it->second <= 0 ? 0.0 : static_cast<double>(bytes) / it->second / 1e3;
  };
  auto pct = [](std::size_t part, std::size_t whole) { return 100.0 * static_cast<double>(part) / static_cast<double>(whole); };
  std::printf("\n%-15s %6s %6s %6s | %6s %6s %6s | %6s %6s %6s | %-18s | %-18s | %s\n", "kind", "lzg%",
              "zlib1%", "lz4%", "lzg c", "zlib1 c", "lz4 c", "lzg x", "zlib1 x", "lz4 x", "c: lzg/zlib1",
              "x: lzg/lz4", "input");
  for (const auto& c : Corpora()) {
    const std::size_t n = c.plain.size();
    // Speed ratios are inverse time ratios (same bytes).
    const quillbench::RatioStats cs = reporter.Ratio("compress/zlib1/" + c.name, "compress/lzg/" + c.name);
    const quillbench::RatioStats xs = reporter.Ratio("expand/lz4/" + c.name, "expand/lzg/" + c.name);
    char cbuf[32], xbuf[32];
    std::snprintf(cbuf, sizeof cbuf, "%.2f [%.2f-%.2f]", cs.median, cs.low, cs.high);
    std::snprintf(xbuf, sizeof xbuf, "%.2f [%.2f-%.2f]", xs.median, xs.low, xs.high);
    std::printf("%-15s %6.1f %6.1f %6.1f | %6.0f %6.0f %6.0f | %6.0f %6.0f %6.0f | %-18s | %-18s | %s\n",
                c.name.c_str(), pct(c.lzg.size(), n), pct(c.zlib.size(), n), pct(c.lz4.size(), n),
                rate("compress/lzg/" + c.name, n), rate("compress/zlib1/" + c.name, n),
                rate("compress/lz4/" + c.name, n), rate("expand/lzg/" + c.name, n),
                rate("expand/zlib1/" + c.name, n), rate("expand/lz4/" + c.name, n), cbuf, xbuf,
                c.origin.c_str());
  }
  std::printf("(sizes in %% of the input; speeds in MB/s of plain data (median CPU time); ratios: median "
              "[min-max] over repetitions; targets c >= 1, x >= 0.5)\n");
  benchmark::Shutdown();
  return 0;
}
