// FitToTemplate with templates made of literal text and "*" only (a "?" would
// make the matcher loop forever, so every "?" of the input becomes "*").
// Checks: no crash or out-of-bounds read, "*" matches everything, a template
// without "*" matches exactly itself, and both forms agree on ASCII input.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "quill/strings/gstrings.h"

namespace gs = quill::Gstrings;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  // First byte: where the text ends and the template begins.
  const size_t split = 1 + data[0] % size;
  std::string s(reinterpret_cast<const char*>(data + 1), split - 1);
  std::string t(reinterpret_cast<const char*>(data + split), size - split);
  for (char& c : s) c = static_cast<char>(c & 0x7F);  // ASCII: both forms comparable
  for (char& c : t) c = static_cast<char>(c & 0x7F);
  for (char& c : t) {
    if (c == '?') c = '*';
  }
  const bool fits = gs::FitToTemplate(s, t, true);
  const quill::UnicodeString ws(s.begin(), s.end());
  const quill::UnicodeString wt(t.begin(), t.end());
  if (gs::FitToTemplate(ws, wt, true) != fits) std::abort();
  if (t.find('*') == std::string::npos && fits != (s == t)) std::abort();
  if (!gs::FitToTemplate(s, "*", true)) std::abort();
  (void)gs::FitToTemplate(s, t, false);
  (void)gs::FitToTemplate(ws, wt, false);
  return 0;
}
