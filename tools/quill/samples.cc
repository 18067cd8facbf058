// Where `quill demo` finds its sample files.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "tools/quill/commands.h"

namespace quilltool {

// QUILL_DATA_DIR when set; else the installed samples relative to the running
// executable (PREFIX/bin/quill reads PREFIX/share/quill/samples); else the
// source tree's samples, for the tool in the build tree.
std::string SampleDataDir() {
  if (const char* dir = std::getenv("QUILL_DATA_DIR"); dir && *dir) return dir;
  std::error_code ec;
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (!ec) {
    const auto installed = (exe.parent_path() / QUILL_TOOL_INSTALLED_SAMPLES).lexically_normal();
    if (std::filesystem::is_directory(installed, ec)) return installed.string();
  }
  return QUILL_TOOL_DATA_DIR;
}

}  // namespace quilltool
