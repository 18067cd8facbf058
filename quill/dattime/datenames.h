// Gdattime: month names and the textual date.
//
// Two process-wide settings shape GetDateName: ShortYearName, written right
// after the year, and LongMonthNames2[1..12], the month phrase written after
// the day. The unit's first start sets LongMonthNames2[i] to "of " plus the
// long name of month i in the system default locale (identifier 2048, never
// the user's); its last stop clears both. InitDateTimeParams replaces them.
// Nothing here is guarded: set them from one thread, before use.
//
//   quill::Gdattime::GetDateName(quill::EncodeDate(2024, 5, 5));  // u"5 of May 2024"
//   quill::Gdattime::InitDateTimeParams(u" AD", {u"Jan.", u"Feb."});
//   quill::Gdattime::GetDateName(quill::EncodeDate(2024, 2, 1));  // u"1 Feb. 2024 AD"
#pragma once

#include <array>
#include <initializer_list>
#include <span>

#include "quill/rtl/export.h"
#include "quill/rtl/tstrings.h"
#include "quill/rtl/types.h"

namespace quill::Gdattime {

// Text appended directly after the year by GetDateName; empty at start-up.
QUILL_API extern UnicodeString ShortYearName;

// Month phrases used by GetDateName, indexed 1..12 (index 0 is unused and
// stays empty).
QUILL_API extern std::array<UnicodeString, 13> LongMonthNames2;

// Day, " ", LongMonthNames2[month], " ", year, ShortYearName; day and year in
// decimal without leading zeros. A date before 1 January 0001 decodes as
// 0/0/0 and gives "0  0" followed by ShortYearName.
[[nodiscard]] QUILL_API UnicodeString GetDateName(TDateTime Date);

// Clears `List` and adds the twelve long month names of the system default
// locale, January first.
QUILL_API void GetMonthNames(TStrings& List);

// Sets ShortYearName to `YearName` and LongMonthNames2[i + 1] to Names[i] for
// every name given. More than twelve names are outside the contract; names
// after the twelfth are ignored.
QUILL_API void InitDateTimeParams(const UnicodeString& YearName, std::span<const UnicodeString> Names);
QUILL_API void InitDateTimeParams(const UnicodeString& YearName, std::initializer_list<UnicodeString> Names);

}  // namespace quill::Gdattime
