// The help engine's readers of untrusted text: help names, object paths and
// the "#SYSTEM" records and the context map. Besides never crashing, a path accepted as safe must
// stay inside the folder it is written below, and so must the default topic
// once it is accepted.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "quill/htmlhlp/engine/chmsystem.h"
#include "quill/htmlhlp/engine/helpname.h"

namespace {

namespace E = quill::Ghtmlhlp::engine;

void CheckStaysInside(std::string_view path) {
  if (!E::IsSafeObjectPath(path)) return;
  // Backslashes count as separators for the check, as on the help files' home system.
  std::string slashed(path);
  for (char& c : slashed) {
    if (c == '\\') c = '/';
  }
  const std::filesystem::path joined = std::filesystem::path("/cache/x" + slashed).lexically_normal();
  const std::string s = joined.string();
  if (s.rfind("/cache/x/", 0) != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const E::THelpName name = E::ParseHelpName(text);
  if (name.File.size() > size || name.Topic.size() > size + 1 || name.Anchor.size() > size) std::abort();
  CheckStaysInside(name.Topic);
  CheckStaysInside(text);
  (void)E::FileUrl(name.File, name.Anchor);
  if (const auto topic = E::DefaultTopicFromSystem(std::span<const uint8_t>(data, size))) {
    if (topic->empty() || topic->front() != '/' || topic->size() > size + 1) std::abort();
    CheckStaysInside(*topic);
  }
  // The context map: the first half as "#IVB", the rest as "#STRINGS".
  const std::span<const uint8_t> all(data, size);
  const std::span<const uint8_t> ivb = all.first(size / 2);
  const std::span<const uint8_t> strings = all.subspan(size / 2);
  for (const uint32_t context : {0u, 1u, 42u, 0xFFFFFFFFu}) {
    if (const auto file = E::ContextFileName(ivb, strings, context)) {
      if (file->empty() || file->size() > strings.size()) std::abort();
    }
  }
  return 0;
}
