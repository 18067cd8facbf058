// A compiled help file of arbitrary bytes through the help engine's archive
// reader and chmlib: header checks, the default topic, the context map and a
// full extraction into a scratch folder, with a 1 MiB total size cap so
// that a run stays small. Must never crash, leak or write outside the folder.
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "quill/htmlhlp/engine/chmarchive.h"

namespace {

namespace E = quill::Ghtmlhlp::engine;
namespace fs = std::filesystem;

const std::string& Scratch() {
  static const std::string dir = [] {
    const char* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp != nullptr && tmp[0] == '/' ? tmp : "/tmp") + "/chmarchive_fuzz-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
    return pattern;
  }();
  return dir;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string file = Scratch() + "/input.chm";
  FILE* f = std::fopen(file.c_str(), "wb");
  if (f == nullptr) return 0;
  std::fwrite(data, 1, size, f);
  std::fclose(f);
  E::TChmArchive chm(file);
  if (!chm.IsOpen()) return 0;
  (void)chm.DefaultTopic();
  (void)chm.ContextTopic(42);
  (void)chm.ResolveTopic("/pages/index.htm");
  const fs::path out = fs::path(Scratch()) / "box" / "out";
  std::error_code ec;
  fs::remove_all(fs::path(Scratch()) / "box", ec);
  fs::create_directories(out);
  E::TExtractLimits limits;
  limits.MaxTotalSize = 1 << 20;
  (void)chm.ExtractTo(out, limits);
  // Everything written stays inside the extraction folder.
  for (const auto& entry : fs::directory_iterator(fs::path(Scratch()) / "box")) {
    if (entry.path() != out) std::abort();
  }
  return 0;
}
