// Benchmark inputs of every kind users feed the library: source text in
// several languages, prose in several scripts, executables and libraries,
// logs, CSV, already-compressed data and the worst cases of a coder or a
// search (one repeated byte, short periods, random bytes).
//
// Each kind is read from real files of the machine where they exist (sorted
// paths, so the same machine gives the same bytes every run) and completed by
// a deterministic generator, so every kind always exists at the size asked.
// Real data of at least 1 MB is repeated up to the size; less than that is
// followed by generated data of the same kind (a short file repeated many
// times would be unrealistically easy for coders with a large window).
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quillbench {

struct Corpus {
  std::string kind;    // "c", "perl", "prose-cyrillic", "random", ...
  std::string origin;  // where the bytes came from: "12 files + generated" ...
  std::string bytes;   // exactly the size asked for
};

// The kinds, in report order.
const std::vector<std::string>& CorpusKinds();

// True for the kinds that are text (searching them makes sense).
bool IsTextKind(const std::string& kind);

// One kind at `size` bytes. Unknown kinds throw std::invalid_argument.
Corpus MakeCorpus(const std::string& kind, std::size_t size);

// The corpus size in bytes: QUILL_BENCH_CORPUS_MB (whole megabytes) when set,
// else `default_mb` MB.
std::size_t CorpusSize(std::size_t default_mb);

// The kinds to build: QUILL_BENCH_KINDS (comma-separated) when set, else all.
std::vector<std::string> SelectedKinds();

}  // namespace quillbench
