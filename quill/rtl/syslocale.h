// The system default locale, the user locale and the default ANSI code page.
//
// System default locale (identifier 2048): QUILL_SYSTEM_LOCALE when set (a
// language tag such as "de-DE", or an LCID in decimal or 0x-hex), else the
// system's configured LANG (/etc/default/locale, /etc/locale.conf), else en-US;
// "C" and "POSIX" mean en-US.
// User locale (identifier 1024, "the process's current settings"): the first
// of LC_ALL, LC_CTYPE and LANG that is set decides; "C"/"POSIX" there (or
// none set) means the system default. POSIX names lose their codeset and
// modifiers ("de_DE.UTF-8@euro" is "de-DE"; "sr_RS@latin" is "sr-Latn-RS").
// GetACP(): QUILL_ANSI_CODEPAGE when set, else the system default locale's
// ANSI code page from the Windows locale fact table (0 there means UTF-8).
// The user locale never changes the code page.
//
// Results are computed on first use and cached; ResetLocaleCache() drops the
// cache so that a changed environment is read again (tests use it).
#pragma once

#include <string>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

inline constexpr LCID LOCALE_SYSTEM_DEFAULT = 2048;
inline constexpr LCID LOCALE_USER_DEFAULT = 1024;
inline constexpr LCID LOCALE_NEUTRAL = 0;
inline constexpr LCID LOCALE_INVARIANT = 127;

// BCP 47 tags ("en-US", "de-DE") of the two locales.
[[nodiscard]] QUILL_API std::string SystemDefaultLocaleTag();
[[nodiscard]] QUILL_API std::string UserDefaultLocaleTag();

// The LCIDs of the two locales (from the fact table; 0x0409 when unknown).
[[nodiscard]] QUILL_API LCID GetSystemDefaultLCID();
[[nodiscard]] QUILL_API LCID GetUserDefaultLCID();

// Resolves 2048 and 1024 (and 0, meaning the user's) to the real LCID; other
// values are returned unchanged.
[[nodiscard]] QUILL_API LCID ResolveLCID(LCID locale);

// The language tag of any LCID (2048/1024 resolved first); empty when unknown.
[[nodiscard]] QUILL_API std::string LCIDToTag(LCID locale);

// The default ANSI code page.
[[nodiscard]] QUILL_API TCodePage GetACP();
// The OEM code page of the system default locale: 65001 for a Unicode-only
// locale, 437 when the table has no OEM page for it.
[[nodiscard]] QUILL_API TCodePage GetOEMCP();

// Forgets cached locale answers (locales, code page, case tables, collators,
// FormatSettings()); each is computed again from the environment on next use.
QUILL_API void ResetLocaleCache();

}  // namespace quill
