// Glocales: does a locale write right to left?
//
// Windows answered this two ways, by platform family, and the library keeps
// both. Linux counts as the NT family: IsMiddleEast asks the locale's ANSI
// code page. IsMiddleEastFor takes the family, so the older rule stays
// available and tested.
//
//   using namespace quill::Glocales;
//   IsMiddleEast(0x0401);                                   // true: Arabic, code page 1256
//   IsMiddleEast(0x040D);                                   // false: see below
//   IsMiddleEastFor(0x040D, VER_PLATFORM_WIN32_WINDOWS);    // true: Hebrew by language
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

// Platform identifiers of the version record.
inline constexpr uint32_t VER_PLATFORM_WIN32_WINDOWS = 1;
inline constexpr uint32_t VER_PLATFORM_WIN32_NT = 2;

// The NT-family answer. The characters 0x80 to 0xBF of the locale's default
// ANSI code page (the system's, for a locale whose page is 0) are classified
// in the deliberate layout 0x80, 0x00, 0x81, 0x00, ... 0xBF, 0x00 (128 bytes:
// a table of 16-bit values 0x80..0xFF read as bytes); true when one of them is
// strongly right-to-left (bidirectional class R or AL). 0xC0 to 0xFF are never
// looked at, so Hebrew (code page 1255, letters from 0xE0) gives false while
// the Arabic-script locales of code page 1256 give true. An unknown locale
// gives false.
[[nodiscard]] QUILL_API bool IsMiddleEast(LCID Locale);

// With `PlatformId` VER_PLATFORM_WIN32_NT: IsMiddleEast. Otherwise the rule
// of the older platforms, a pure function of the primary language: true
// exactly for 0x01 (Arabic), 0x0D (Hebrew), 0x1E (Thai), 0x20 (Urdu) and
// 0x29 (Farsi), the bits of 0x20140002002 over languages 0 to 63; languages
// 64 and above are false.
[[nodiscard]] QUILL_API bool IsMiddleEastFor(LCID Locale, uint32_t PlatformId);

}  // namespace quill::Glocales
