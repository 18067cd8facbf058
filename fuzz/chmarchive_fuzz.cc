// A compiled help file of arbitrary bytes through the help engine's reading
// path: header checks, then, in a child process as the engine does it, chmlib,
// the default topic, the context map and a full extraction (total capped at
// 1 MiB so a run stays small). The fuzzer's own process must never crash,
// and nothing may be written outside the extraction folder. (chmlib crashes
// on some files; they end the child only. Coverage inside the child is not
// seen by the fuzzer. The child works in a scratch folder with its standard
// error closed, so the crash reports and artifacts that the fuzzer's runtime
// writes for a dying child stay out of the way.)
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include "quill/htmlhlp/engine/chmarchive.h"
#include "quill/htmlhlp/engine/isolate.h"

namespace {

namespace E = quill::Ghtmlhlp::engine;
namespace fs = std::filesystem;

// Made once and removed at exit; kept on the heap so that it outlives the
// exit handler that removes it.
const std::string& Scratch() {
  static const std::string* const dir = [] {
    const char* tmp = std::getenv("TMPDIR");
    auto* pattern = new std::string(std::string(tmp != nullptr && tmp[0] == '/' ? tmp : "/tmp") +
                                    "/chmarchive_fuzz-XXXXXX");
    if (mkdtemp(pattern->data()) == nullptr) std::abort();
    std::atexit([] {
      std::error_code ec;
      fs::remove_all(Scratch(), ec);
    });
    return pattern;
  }();
  return *dir;
}

// In the child: work in the scratch folder, standard error to /dev/null.
void QuietChild() {
  const fs::path cwd = fs::path(Scratch()) / "child";
  std::error_code ec;
  fs::create_directories(cwd, ec);
  if (chdir(cwd.c_str()) != 0) _exit(1);
  const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (null >= 0) dup2(null, STDERR_FILENO);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string file = Scratch() + "/input.chm";
  FILE* f = std::fopen(file.c_str(), "wb");
  if (f == nullptr) return 0;
  std::fwrite(data, 1, size, f);
  std::fclose(f);
  if (!E::HasSaneHeaders(file)) return 0;
  const fs::path box = fs::path(Scratch()) / "box";
  const fs::path out = box / "out";
  std::error_code ec;
  fs::remove_all(box, ec);
  fs::create_directories(out);
  (void)E::RunIsolated([&]() -> std::optional<std::string> {
    QuietChild();
    E::TChmArchive chm(file);
    if (!chm.IsOpen()) return std::nullopt;
    (void)chm.DefaultTopic();
    (void)chm.ContextTopic(42);
    (void)chm.ResolveTopic("/pages/index.htm");
    E::TExtractLimits limits;
    limits.MaxTotalSize = 1 << 20;
    return chm.ExtractTo(out, limits) ? std::optional<std::string>("done") : std::nullopt;
  });
  for (const auto& entry : fs::directory_iterator(box)) {
    if (entry.path() != out) std::abort();
  }
  return 0;
}
