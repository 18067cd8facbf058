// Glocales: English display names of locales.
//
// The unit keeps one table of its own: the English names of 135 common
// locales in the forms Windows once used ("Farsi", "Norwegian (Bokmal)",
// "Arabic (U.A.E.)"). Other locales are named from the locale database.
//
//   using namespace quill::Glocales;
//   LocaleEngName(0x0C0A);   // u"Spanish (International Sort)" (from the table)
//   LocaleEngName(0x0009);   // u"English" (not in the table: the English language name)
//   LocaleEngName(0x0432);   // u"Setswana (TSN)" (not in the table: name plus abbreviation)
#pragma once

#include <span>
#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Glocales {

struct TLocaleEngNameRow {
  LCID Locale;
  std::u16string_view Name;
};

// The 135 rows of the English name table, grouped by primary language. Keys
// are exact LCIDs: 0x10409 is not 0x0409.
[[nodiscard]] QUILL_API std::span<const TLocaleEngNameRow> LocaleEngNameTable();

// The English display name of `Locale`: its row of the table; else the
// locale's English language name (LOCALE_SENGLANGUAGE), and for a locale that
// is not primary the part of that name before " (" followed by " (", the
// locale's three-letter abbreviation and ")": an unlisted regional locale is
// named by its abbreviation, not by its country. A primary locale unknown to
// the database gives ""; an unknown regional one gives " ()". Raises only
// what LocaleInfo raises.
[[nodiscard]] QUILL_API UnicodeString LocaleEngName(LCID Locale);

}  // namespace quill::Glocales
