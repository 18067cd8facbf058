// The Windows locale fact table: LCID, tag, three-letter abbreviation, ANSI and
// OEM code pages, ISO codes and English names, one row per Windows LCID,
// sorted by LCID. Generated at build time from data/locales/windows-locales.tsv.
#pragma once

#include <span>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

struct WinLocaleFact {
  LCID lcid;
  std::string_view tag;               // "en-US"
  std::string_view abbrev;            // "ENU"
  uint32_t ansi_cp;                   // 1252; 0 for Unicode-only locales
  uint32_t oem_cp;                    // 437; 1 for Unicode-only locales; 0 when unknown
  std::string_view iso639;            // "en"
  std::string_view iso3166;           // "US"
  std::string_view english_language;  // "English"
  std::string_view english_display;   // "English (United States)"
};

// All rows, sorted by LCID.
[[nodiscard]] QUILL_API std::span<const WinLocaleFact> WinLocaleFacts();
// The row of `lcid`, or nullptr.
[[nodiscard]] QUILL_API const WinLocaleFact* FindLocaleFact(LCID lcid);
// The row whose tag equals `tag` ignoring ASCII case and treating '_' as '-',
// or nullptr. When several rows share a tag the lowest LCID wins.
[[nodiscard]] QUILL_API const WinLocaleFact* FindLocaleFactByTag(std::string_view tag);

}  // namespace quill
