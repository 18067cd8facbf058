// Gdattime: calendar arithmetic over TDateTime.
//
// First and last days of years, quarters and months, the quarter of a date
// and its Roman numeral, year/month/day extraction, and adding years, months,
// days, hours, minutes and seconds. Everything decodes and encodes through
// the runtime calendar (quill/rtl/datetime.h), so years run from 1 to 9999 and
// an impossible year/month/day raises the runtime's EConvertError "Invalid
// argument to date encode".
//
//   using namespace quill::Gdattime;
//   GetLastMonthDate(quill::EncodeDate(2024, 2, 10));   // 29 February 2024
//   AddDate(quill::EncodeDate(2024, 3, 31), 0, 10, 0);  // 31 January 2025
//   AddDate(quill::EncodeDate(2024, 3, 31), 0, 1, 0);   // raises: 31 April
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill::Gdattime {

// 1 January / 31 December of the year of `Date` (whole days).
[[nodiscard]] QUILL_API TDateTime GetFirstYearDate(TDateTime Date);
[[nodiscard]] QUILL_API TDateTime GetLastYearDate(TDateTime Date);

// Day 1 of the month of `Date`.
[[nodiscard]] QUILL_API TDateTime GetFirstMonthDate(TDateTime Date);

// The last day of the month of `Date`: the first day of the following month
// (after December, 1 January of the next year) minus one day.
[[nodiscard]] QUILL_API TDateTime GetLastMonthDate(TDateTime Date);

// The first day of the month after `Month`; after December, 1 January of
// Year + 1. Month 0 gives 1 January of Year; a month above 12 raises.
[[nodiscard]] QUILL_API TDateTime NextMonthFirstDay(uint16_t Year, uint16_t Month);

// Day 1 of month 3 x Quarter: deliberately the first day of the quarter's
// LAST month (quarter 1 gives 1 March, quarter 4 gives 1 December), unlike
// GetLastQuarterDate. Quarter 0 or above 4 raises the encoder's error.
[[nodiscard]] QUILL_API TDateTime GetFirstQuarterDate(uint16_t Year, uint16_t Quarter);

// LastMonthDate(Year, 3 x Quarter): the true last day of the quarter (quarter
// 1 gives 31 March). Quarter 0 does not raise: it gives 31 December of
// Year - 1 (the day before 1 January of Year). Quarter 5 and above raise.
[[nodiscard]] QUILL_API TDateTime GetLastQuarterDate(uint16_t Year, uint16_t Quarter);

// The last day of `Month` of `Year`: the first day of the next month minus one
// day, month 12 rolling over to January of Year + 1. Month 0 gives 31
// December of Year - 1. The arguments are taken as 16-bit values, as the
// encoder's are (so they wrap rather than being range-checked); a month below
// 0 or above 12, or a year out of 1..9999, raises.
[[nodiscard]] QUILL_API TDateTime LastMonthDate(int32_t Year, int32_t Month);

// The quarter of `Date`: (month - 1) div 3 + 1, so 1 to 4.
[[nodiscard]] QUILL_API int32_t GetQuartal(TDateTime Date);

// The Roman numeral of a quarter: "I", "II", "III", "IV". A quarter outside
// 1..4 is outside the contract; it gives the empty string.
[[nodiscard]] QUILL_API AnsiString GetQuartalWrite(uint16_t Quarter);

// The decoded year, month or day of `Date` (0 before 1 January 0001).
[[nodiscard]] QUILL_API uint16_t GetYear(TDateTime Date);
[[nodiscard]] QUILL_API uint16_t GetMonth(TDateTime Date);
[[nodiscard]] QUILL_API uint16_t GetDay(TDateTime Date);

// Adds whole days, then months, then years. Steps: add Days to Date; decode;
// add Months to the month (16-bit) and, when it passes 12, carry
// (month - 1) div 12 into the year and keep (month - 1) mod 12 + 1; add Years
// (16-bit); encode with the unchanged day. The day is deliberately NOT
// clamped to the new month: 31 January plus one month raises the encoder's
// error instead of giving the end of February. The time of day is dropped.
[[nodiscard]] QUILL_API TDateTime AddDate(TDateTime Date, uint16_t Years, uint16_t Months, uint16_t Days);

// Adds seconds, then minutes, then hours to the time of day of `Time`,
// carrying once per field in that order with 16-bit sums (enough for any
// 16-bit input); hours past 23 become whole days. The result is the integer
// part of Time (toward zero) plus those days plus the new time of day; the
// milliseconds of Time are kept.
[[nodiscard]] QUILL_API TDateTime AddTime(TDateTime Time, uint16_t Hours, uint16_t Minutes, uint16_t Seconds);

}  // namespace quill::Gdattime
