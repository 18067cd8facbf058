// LZG against zlib level 1 and LZ4 on three 8 MB inputs built at run time:
// text (C and C++ headers from /usr/include plus the project's sources),
// binary (shared libraries from the system's library folder) and random
// bytes. Every coder runs in this one program on the same bytes; the summary
// printed at the end gives MB/s, compressed sizes and the speed ratios
//   LZG compression / zlib-1 compression   (target: >= 1)
//   LZG expansion   / LZ4 expansion        (target: >= 0.5)
// A missing folder only shrinks the corpus; it is then repeated to 8 MB (and a
// corpus with no source at all is made of pseudo-random words).
#include <benchmark/benchmark.h>
#include <lz4.h>
#include <zlib.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "quill/compress/gcompress.h"

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;
constexpr size_t kCorpusSize = 8u << 20;

void AppendFile(Bytes& out, const fs::path& p, size_t limit) {
  std::ifstream f(p, std::ios::binary);
  Bytes b((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
  const size_t room = limit - std::min(limit, out.size());
  out.insert(out.end(), b.begin(), b.begin() + static_cast<ptrdiff_t>(std::min(room, b.size())));
}

// Files under `dir` whose name passes `want`, in a stable order.
std::vector<fs::path> FilesUnder(const fs::path& dir, bool recursive, bool (*want)(const fs::path&)) {
  std::vector<fs::path> files;
  std::error_code ec;
  if (!fs::is_directory(dir, ec)) return files;
  auto add = [&](const fs::directory_entry& e) {
    std::error_code ec2;
    if (e.is_regular_file(ec2) && !e.is_symlink(ec2) && want(e.path())) files.push_back(e.path());
  };
  if (recursive) {
    for (auto it = fs::recursive_directory_iterator(dir, fs::directory_options::skip_permission_denied, ec);
         !ec && it != fs::recursive_directory_iterator(); it.increment(ec))
      add(*it);
  } else {
    for (auto it = fs::directory_iterator(dir, ec); !ec && it != fs::directory_iterator(); it.increment(ec))
      add(*it);
  }
  std::sort(files.begin(), files.end());
  return files;
}

// Repeats `b` until it holds exactly kCorpusSize bytes.
void RepeatTo8MB(Bytes& b, uint32_t seed) {
  if (b.empty()) {
    std::mt19937 rng(seed);
    while (b.size() < 4096) {
      const std::string w = "word" + std::to_string(rng() % 1000) + " ";
      b.insert(b.end(), w.begin(), w.end());
    }
  }
  const size_t n = b.size();
  while (b.size() < kCorpusSize) b.insert(b.end(), b.begin(), b.begin() + static_cast<ptrdiff_t>(std::min(n, kCorpusSize - b.size())));
  b.resize(kCorpusSize);
}

Bytes TextCorpus() {
  Bytes b;
  auto is_source = [](const fs::path& p) {
    const auto e = p.extension();
    return e == ".h" || e == ".hpp" || e == ".cc" || e == ".md" || p.parent_path().filename() == "c++";
  };
  for (const auto& f : FilesUnder(fs::path(QUILL_SOURCE_DIR) / "quill", true, +is_source))
    AppendFile(b, f, kCorpusSize / 4);
  auto is_header = [](const fs::path& p) { return p.extension() == ".h" || p.extension() == ""; };
  for (const char* dir : {"/usr/include/c++", "/usr/include/x86_64-linux-gnu", "/usr/include"}) {
    for (const auto& f : FilesUnder(dir, std::string(dir) != "/usr/include", +is_header)) {
      if (b.size() >= kCorpusSize) break;
      AppendFile(b, f, kCorpusSize);
    }
  }
  RepeatTo8MB(b, 1);
  return b;
}

Bytes BinaryCorpus() {
  Bytes b;
  auto is_lib = [](const fs::path& p) { return p.filename().string().find(".so") != std::string::npos; };
  for (const char* dir : {"/usr/lib/x86_64-linux-gnu", "/usr/lib64", "/usr/lib"}) {
    for (const auto& f : FilesUnder(dir, false, +is_lib)) {
      if (b.size() >= kCorpusSize) break;
      AppendFile(b, f, kCorpusSize);
    }
  }
  RepeatTo8MB(b, 2);
  return b;
}

Bytes RandomCorpus() {
  std::mt19937_64 rng(3);
  Bytes b(kCorpusSize);
  for (size_t i = 0; i < b.size(); i += 8) {
    const uint64_t v = rng();
    std::copy_n(reinterpret_cast<const uint8_t*>(&v), 8, b.begin() + static_cast<ptrdiff_t>(i));
  }
  return b;
}

struct Corpus {
  std::string name;
  Bytes plain;
  Bytes lzg, zlib, lz4;  // compressed once, for the expansion runs
};

std::vector<Corpus>& Corpora() {
  static std::vector<Corpus> corpora;
  return corpora;
}

std::map<std::string, size_t>& CompressedSizes() {
  static std::map<std::string, size_t> sizes;
  return sizes;
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
  for (auto [name, make] : {std::pair{"text", &TextCorpus}, std::pair{"binary", &BinaryCorpus},
                            std::pair{"random", &RandomCorpus}}) {
    Corpus c{name, make(), {}, {}, {}};
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
    CompressedSizes()["lzg/" + c.name] = c.lzg.size();
    CompressedSizes()["zlib1/" + c.name] = c.zlib.size();
    CompressedSizes()["lz4/" + c.name] = c.lz4.size();
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

// Keeps each run's throughput for the summary.
class SummaryReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& r : runs) {
      auto it = r.counters.find("bytes_per_second");
      if (it != r.counters.end() && !r.error_occurred) rates[r.benchmark_name()] = it->second / 1e6;
    }
    ConsoleReporter::ReportRuns(runs);
  }
  std::map<std::string, double> rates;
};

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
  SummaryReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);

  auto rate = [&](const std::string& k) {
    auto it = reporter.rates.find(k);
    return it == reporter.rates.end() ? 0.0 : it->second;
  };
  std::printf("\n%-8s %12s %10s %10s %10s | %9s %9s %9s | %9s %9s %9s | %8s %8s\n", "corpus", "bytes",
              "lzg", "zlib1", "lz4", "lzg c/s", "zlib1 c/s", "lz4 c/s", "lzg x/s", "zlib1 x/s",
              "lz4 x/s", "c:lzg/z1", "x:lzg/lz4");
  for (const auto& c : Corpora()) {
    const double lc = rate("compress/lzg/" + c.name), zc = rate("compress/zlib1/" + c.name);
    const double l4c = rate("compress/lz4/" + c.name);
    const double lx = rate("expand/lzg/" + c.name), zx = rate("expand/zlib1/" + c.name);
    const double l4x = rate("expand/lz4/" + c.name);
    std::printf("%-8s %12zu %9.1f%% %9.1f%% %9.1f%% | %9.0f %9.0f %9.0f | %9.0f %9.0f %9.0f | %8.2f %8.2f\n",
                c.name.c_str(), c.plain.size(), 100.0 * static_cast<double>(c.lzg.size()) / static_cast<double>(c.plain.size()),
                100.0 * static_cast<double>(c.zlib.size()) / static_cast<double>(c.plain.size()),
                100.0 * static_cast<double>(c.lz4.size()) / static_cast<double>(c.plain.size()), lc, zc, l4c, lx, zx, l4x,
                zc > 0 ? lc / zc : 0.0, l4x > 0 ? lx / l4x : 0.0);
  }
  std::printf("(sizes as %% of the input; speeds in MB/s of plain data; c:lzg/z1 >= 1 and x:lzg/lz4 >= 0.5 are the targets)\n");
  benchmark::Shutdown();
  return 0;
}
