// Loading and unloading the help engine library with dlopen.
#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

#include "quill/htmlhlp/ghtmlhlp.h"
#include "quill/htmlhlp/internal/engine.h"
#include "quill/utils/internal/module.h"

namespace quill::Ghtmlhlp {

TFNHtmlHelpA HtmlHelpA = nullptr;
TFNHtmlHelpW HtmlHelpW = nullptr;
TFNHtmlHelpW HtmlHelp = nullptr;

namespace internal {
namespace {

// The engine library's handle; null while it is not loaded.
void* g_engine = nullptr;

}  // namespace

std::string EnginePath() {
  if (const char* env = std::getenv("QUILL_HELP_ENGINE"); env != nullptr && env[0] != '\0') return env;
  const std::string self = Gutils::internal::ModulePathOf(reinterpret_cast<const void*>(&EnginePath));
  if (self.empty()) return kEngineFileName;  // no folder known: the loader's search path decides
  return (std::filesystem::path(self).parent_path() / kEngineFileName).string();
}

bool LoadHtmlHelp() {
  if (g_engine != nullptr) return true;
  const std::string path = EnginePath();
  g_engine = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (g_engine == nullptr) return false;
  HtmlHelpA = reinterpret_cast<TFNHtmlHelpA>(dlsym(g_engine, "HtmlHelpA"));
  HtmlHelpW = reinterpret_cast<TFNHtmlHelpW>(dlsym(g_engine, "HtmlHelpW"));
  HtmlHelp = HtmlHelpW;
  if (HtmlHelpA == nullptr || HtmlHelpW == nullptr) {
    UnloadHtmlHelp();
    return false;
  }
  return true;
}

bool UnloadHtmlHelp() {
  if (g_engine == nullptr) return true;
  const bool closed = dlclose(g_engine) == 0;
  g_engine = nullptr;
  HtmlHelpA = nullptr;
  HtmlHelpW = nullptr;
  HtmlHelp = nullptr;
  return closed;
}

bool HtmlHelpLoaded() { return g_engine != nullptr; }

}  // namespace internal
}  // namespace quill::Ghtmlhlp
