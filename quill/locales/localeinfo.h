// Glocales: the locale database and the locales the system supports.
//
// Locale facts come from two sources: the Windows locale fact table compiled
// into the runtime (tags, three-letter abbreviations, ISO codes, English
// language names, code pages) and ICU (display names in any language, native
// names, country names). GetLocaleInfoW answers with them the way the Windows
// call does; LocaleInfo is the library's string form of it.
//
//   using namespace quill::Glocales;
//   LocaleInfo(0x0409, LOCALE_SISO639LANGNAME);   // u"en"
//   LocaleInfo(0x0407, LOCALE_SLANGUAGE);         // u"German (Germany)" under an English system
//   LocaleInfo(0xABCD, LOCALE_SENGLANGUAGE);      // u"" (unknown locale, no error)
//   EnumSystemLocales().front();                  // 0x0401, the lowest specific LCID
#pragma once

#include <cstdint>
#include <vector>

#include "quill/frame/errors.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

// Locale-information types, with the values of the Windows constants.
inline constexpr uint32_t LOCALE_ILANGUAGE = 0x0001;             // "0409": language identifier, 4 hex digits
inline constexpr uint32_t LOCALE_SLANGUAGE = 0x0002;             // "English (United States)" in the system language
inline constexpr uint32_t LOCALE_SABBREVLANGNAME = 0x0003;       // "ENU"
inline constexpr uint32_t LOCALE_SNATIVELANGNAME = 0x0004;       // "Deutsch" for 0407
inline constexpr uint32_t LOCALE_SCOUNTRY = 0x0006;              // country name in the system language
inline constexpr uint32_t LOCALE_SNATIVECTRYNAME = 0x0008;       // "Deutschland" for 0407
inline constexpr uint32_t LOCALE_IDEFAULTCODEPAGE = 0x000B;      // OEM code page, "437"; "1" for Unicode-only locales
inline constexpr uint32_t LOCALE_SENGLANGUAGE = 0x1001;          // "English"
inline constexpr uint32_t LOCALE_SENGCOUNTRY = 0x1002;           // "United States"
inline constexpr uint32_t LOCALE_IDEFAULTANSICODEPAGE = 0x1004;  // "1252"; "0" for Unicode-only locales
inline constexpr uint32_t LOCALE_SISO639LANGNAME = 0x0059;       // "en"
inline constexpr uint32_t LOCALE_SISO3166CTRYNAME = 0x005A;      // "US"
inline constexpr uint32_t LOCALE_SNAME = 0x005C;                 // "en-US"
inline constexpr uint32_t LOCALE_SENGLISHDISPLAYNAME = 0x0072;   // "English (United States)"

// Flags that may be or-ed into a type; they change nothing here (there are no
// user overrides, and every answer is UTF-16).
inline constexpr uint32_t LOCALE_NOUSEROVERRIDE = 0x80000000u;
inline constexpr uint32_t LOCALE_USE_CP_ACP = 0x40000000u;

// The locale database call. Writes the text of `LCType` for `Locale` and a
// terminating 0 into `LCData` and returns the units written, terminator
// included. With `cchData` 0 nothing is written and the length the text needs
// (terminator included) is returned. Returns 0 when the locale or the type is
// unknown, when the locale has no such fact (a neutral locale's country), and
// when `cchData` is too small. `Locale` may be 2048 (system default), 1024 or 0
// (user default). Never raises.
//   REQUIRES: `LCData` holds `cchData` units when `cchData` > 0.
QUILL_API int32_t GetLocaleInfoW(LCID Locale, uint32_t LCType, char16_t* LCData, int32_t cchData);

// The text of `LCType` for `Locale`. Asks GetLocaleInfoW for the length, then
// for the text; raises ELocalesError "Can not get locale info" only when the
// two answers disagree. An unknown locale or type gives an empty string: both
// answers are 0, which counts as agreement.
[[nodiscard]] QUILL_API UnicodeString LocaleInfo(LCID Locale, uint32_t LCType);

// The locales the system supports (the LCID_SUPPORTED enumeration): every
// specific locale of the fact table (one with a country; neutral, sort-order
// and pseudo locales are left out), in ascending LCID order. Every locale list
// and reverse lookup of the unit walks them in this order.
[[nodiscard]] QUILL_API std::vector<LCID> EnumSystemLocales();

}  // namespace quill::Glocales
