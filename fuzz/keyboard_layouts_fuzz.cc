// The installed-layout list (QUILL_KEYBOARD_LAYOUTS, XKBLAYOUT): arbitrary text
// must give at most 64 handles without crashing, and the layout search over
// them must answer with one of them or the language identifier.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "quill/locales/internal/keyboard_steps.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quill::Glocales;
  if (size < 2) return 0;
  const auto lang = static_cast<uint16_t>(data[0] | (data[1] << 8));
  const std::string_view text(reinterpret_cast<const char*>(data + 2), size - 2);
  const std::vector<HKL> layouts = internal::ParseKeyboardLayouts(text);
  if (layouts.size() > 64) std::abort();
  const HKL found = internal::KLByLocaleIn(layouts, lang);
  if ((found & lang) != lang) std::abort();
  bool listed = found == lang;
  for (HKL h : layouts) listed = listed || h == found;
  if (!listed) std::abort();
  return 0;
}
