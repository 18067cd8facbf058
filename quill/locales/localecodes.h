// Glocales: codes and short names of a locale.
//
// A locale identifier (LCID) holds the primary language in bits 0 to 9 and
// the sublanguage in bits 10 to 15. A locale is *primary* (a language without
// a region) when GetPrimaryLangID gives the LCID itself; several routines
// below answer differently for primary locales. Unknown locales give empty
// strings. Each routine raises only what LocaleInfo raises.
//
//   using namespace quill::Glocales;
//   ISOCodesByLocale(0x0409);      // u"US en" (country first, one blank)
//   ISOCodesByLocaleTMX(0x0409);   // u"en-US"
//   ISOCodesByLocaleTMX(0x0009);   // u"en" (primary: the language alone)
//   AbbrByLocale(0x0009);          // u"EN" (primary: cut to 2 characters)
#pragma once

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

// `Locale` AND 0x3FF: the primary language identifier.
[[nodiscard]] constexpr LCID GetPrimaryLangID(LCID Locale) { return Locale & 0x3FF; }

// The three-letter abbreviation (LOCALE_SABBREVLANGNAME, "ENU"); for a primary
// locale only its first 2 characters ("EN").
[[nodiscard]] QUILL_API UnicodeString AbbrByLocale(LCID Locale);

// Country code, one blank, language code: "US en". Deliberately country
// first. A primary locale has no country, so it gives " en".
[[nodiscard]] QUILL_API UnicodeString ISOCodesByLocale(LCID Locale);

// Language code, "-", country code: "en-US"; for a primary locale the
// language code alone.
[[nodiscard]] QUILL_API UnicodeString ISOCodesByLocaleTMX(LCID Locale);

// The ISO 3166 country code (LOCALE_SISO3166CTRYNAME): "US"; "" for a primary locale.
[[nodiscard]] QUILL_API UnicodeString CountryISOCodeByLocale(LCID Locale);

// The ISO 639-1 language code (LOCALE_SISO639LANGNAME): "en".
[[nodiscard]] QUILL_API UnicodeString ISO6391CodeByLocale(LCID Locale);

// The display name in the system's language (LOCALE_SLANGUAGE): "English
// (United States)"; for a primary locale the part before the first "(",
// trimmed, as GetBeforeSep gives it.
[[nodiscard]] QUILL_API UnicodeString GetLocaleSLanguage(LCID Locale);

}  // namespace quill::Glocales
