// Glocales: keyboard layouts and the locale they serve.
//
// A keyboard layout handle (HKL) holds an input language identifier in its
// low word and the layout in its high word: US English is 0x04090409, German
// 0x04070407, Spanish on a Spanish keyboard 0x040A0C0A. The installed layouts
// are the system's XKB layouts (XKBLAYOUT in /etc/default/keyboard), or the
// list in QUILL_KEYBOARD_LAYOUTS when that variable is set (even empty): a
// comma list of XKB layout names ("us,de", variants in brackets ignored:
// "de(nodeadkeys)") or layout handles ("0x04090409", or exactly 8 hex
// digits), in any mix. Names the table below does not know are skipped.
//
//   // XKBLAYOUT="us,de"
//   GetKLByLocale(0x0407);   // 0x04070407
//   GetKLByLocale(0x0409);   // 0x04090409
//   GetKLByLocale(0x040C);   // 0x040C: no French layout, the language itself
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

// A keyboard layout handle: unsigned and pointer-sized.
using HKL = uintptr_t;

// The installed layouts in the order configured, at most 64.
[[nodiscard]] QUILL_API std::vector<HKL> GetKeyboardLayoutList();

// The Windows layout handle of a common XKB layout name ("us", "gb", "de",
// "fr", ...; ASCII case ignored), or 0 when the name is not in the table.
[[nodiscard]] QUILL_API HKL KeyboardLayoutByXkbName(std::string_view Name);

// The first installed layout H, in the configured order, for which
// H AND LangID equals LangID: every bit of the language identifier is set in
// the handle, deliberately a containment test rather than an equality of the
// low word (0x0409 is contained in 0x04090409, but also in 0x04190419, the
// Russian layout, which comes first if it is configured first). LangID 0 is
// contained in every handle: the first layout. When no layout passes, LangID
// itself, widened. Never fails.
[[nodiscard]] QUILL_API HKL GetKLByLocale(uint16_t LangID);

}  // namespace quill::Glocales
