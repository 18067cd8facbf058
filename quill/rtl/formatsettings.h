// TFormatSettings: a locale's number, date and time text settings.
//
// Date and time formats use the runtime's format letters (d, dd, ddd, dddd,
// m, mm, mmm, mmmm, yy, yyyy, h, hh, n, nn, s, ss, z, zzz, am/pm, ampm, '/'
// for the date separator, ':' for the time separator, quoted literals).
// Settings for a locale are built from ICU's data for that locale, always on
// the Gregorian calendar:
// - ShortDateFormat is ICU's short date pattern with four-digit years;
//   LongDateFormat is ICU's full pattern (with the weekday name); the time
//   formats are the short and medium time patterns, with the narrow no-break
//   space before AM/PM written as an ordinary space. The locale's own date
//   separator stays in the format ("dd.mm.yyyy").
// - DateSeparator/TimeSeparator are the first separators in those patterns.
// - Month and day names are the format-context forms ("Januar", "janvier").
// - ThousandSeparator is the locale's grouping character as ICU gives it
//   (U+202F for fr-FR); ListSeparator is ';' where the decimal separator is
//   ',', else ','.
// - CurrencyFormat/NegCurrFormat follow the currency pattern's sign position
//   (0 "$1", 1 "1$", 2 "$ 1", 3 "1 $"; negatives with a leading minus).
//
//   TFormatSettings de = TFormatSettings::Create(u"de-DE");
//   de.DecimalSeparator == u',';  de.LongMonthNames[0] == u"Januar";
#pragma once

#include <array>
#include <string>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

struct QUILL_API TFormatSettings {
  uint8_t CurrencyFormat = 0;
  uint8_t NegCurrFormat = 0;
  WideChar ThousandSeparator = u',';
  WideChar DecimalSeparator = u'.';
  uint8_t CurrencyDecimals = 2;
  WideChar DateSeparator = u'/';
  WideChar TimeSeparator = u':';
  WideChar ListSeparator = u',';
  UnicodeString CurrencyString = u"$";
  UnicodeString ShortDateFormat = u"M/d/yyyy";
  UnicodeString LongDateFormat = u"dddd, MMMM d, yyyy";
  UnicodeString TimeAMString = u"AM";
  UnicodeString TimePMString = u"PM";
  UnicodeString ShortTimeFormat = u"h:mm AMPM";
  UnicodeString LongTimeFormat = u"h:mm:ss AMPM";
  // Index 0 is January / Sunday (the runtime's index 1).
  std::array<UnicodeString, 12> ShortMonthNames;
  std::array<UnicodeString, 12> LongMonthNames;
  std::array<UnicodeString, 7> ShortDayNames;
  std::array<UnicodeString, 7> LongDayNames;
  uint16_t TwoDigitYearCenturyWindow = 50;

  // Settings of `locale` (2048 = system default, 1024 = user locale). An LCID
  // the fact table does not know gives the settings of the system default.
  static TFormatSettings Create(LCID locale);
  // Settings of the locale named by a language tag ("fr-FR"); an unknown tag
  // gives ICU's root-locale settings.
  static TFormatSettings Create(const UnicodeString& tag);
  // Settings of the user locale (the process's current settings at start).
  static TFormatSettings Create();
};

// The process's current format settings: built from the user locale on first
// use; callers may change them (tests pin them). Not guarded: one thread.
[[nodiscard]] QUILL_API TFormatSettings& FormatSettings();

// Rebuilds FormatSettings() from the user locale.
QUILL_API void ResetFormatSettings();

}  // namespace quill
