// Glocales: finding a locale by its codes or names.
//
// Each lookup walks one of the cached locale lists (see localelist.h) and
// returns the identifier carried by the first entry whose code matches, or 0
// when none does. Codes match when CompareText finds them equal: ASCII letters
// compare without regard to case, nothing else is folded. The codes of each
// list are indexed when the list is built, so a lookup costs one hash probe.
//
//   using namespace quill::Glocales;
//   LocaleByISOCodesTMX(u"EN-us");   // 0x0409
//   LocaleByISOCodes(u"US en");      // 0x0409
//   LocaleByISO6391Code(u"en");      // 0x09: the lloPrimary list carries the language
//   LocaleByAbbr(u"deu");            // 0x0407
#pragma once

#include <string_view>

#include "quill/locales/localelist.h"
#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

// LocaleByAbbrEx(Abbr, lloBoth).
[[nodiscard]] QUILL_API LCID LocaleByAbbr(std::u16string_view Abbr);

// The first entry of the list for `Opt` whose AbbrByLocale matches `Abbr`; in
// the lloPrimary list every abbreviation is cut to its first 2 characters, so
// "ENU" matches nothing there and "EN" the English entry.
[[nodiscard]] QUILL_API LCID LocaleByAbbrEx(std::u16string_view Abbr, TLocaleListOpt Opt);

// The first entry of the lloSub list whose English language name
// (LOCALE_SENGLANGUAGE) begins with `Name`, both lower-cased (ASCII letters
// only). An empty name gives the first entry of the list.
[[nodiscard]] QUILL_API LCID LocaleByEnglishName(std::u16string_view Name);

// The first entry of the lloBoth list whose ISOCodesByLocale ("US en") matches.
[[nodiscard]] QUILL_API LCID LocaleByISOCodes(std::u16string_view Codes);

// The first entry of the lloBoth list whose ISOCodesByLocaleTMX ("en-US", or
// "en" for a language entry) matches.
[[nodiscard]] QUILL_API LCID LocaleByISOCodesTMX(std::u16string_view Codes);

// The first entry of the lloPrimary list whose country code matches.
// Deliberately the lloPrimary list: a locale of a language with several
// locales is merged into its language entry there, which has no country, so
// a country is found only through a language with a single locale ("GB"
// finds Welsh, not English), and "" finds the first language entry.
[[nodiscard]] QUILL_API LCID LocaleByCountryISOCode(std::u16string_view Code);

// The first entry of the lloPrimary list whose ISO 639-1 code matches.
[[nodiscard]] QUILL_API LCID LocaleByISO6391Code(std::u16string_view Code);

}  // namespace quill::Glocales
