// The runtime calendar: TDateTime encode and decode, today and now.
//
// A TDateTime counts days since 30 December 1899 (value 0); the fraction is
// the time of day. The calendar is the proleptic Gregorian one for years 1 to
// 9999. Values before 30 December 1899 are negative and their time of day is
// the absolute value of the fraction: -1.25 is 29 December 1899 06:00, and
// -0.25 reads like +0.25 (there is no day between 0 and -1).
//
//   TDateTime d = quill::EncodeDate(2024, 2, 29) + quill::EncodeTime(13, 5, 0, 0);
//   uint16_t y, m, day;
//   quill::DecodeDate(d, y, m, day);   // 2024, 2, 29
#pragma once

#include <cstdint>

#include "quill/rtl/export.h"
#include "quill/rtl/types.h"

namespace quill {

inline constexpr int32_t HoursPerDay = 24;
inline constexpr int32_t MinsPerDay = 24 * 60;
inline constexpr int32_t SecsPerDay = 24 * 60 * 60;
inline constexpr int32_t MSecsPerDay = 24 * 60 * 60 * 1000;
// Day number of 1 January 0001 and of 31 December 9999.
inline constexpr int32_t MinDateTimeDays = -693593;
inline constexpr int32_t MaxDateTimeDays = 2958465;

// True for Gregorian leap years: divisible by 4, except centuries that are not
// divisible by 400.
[[nodiscard]] QUILL_API bool IsLeapYear(uint16_t year) noexcept;

// Days in `month` (1..12) of `year`; 0 for a month outside 1..12.
[[nodiscard]] QUILL_API uint16_t DaysInAMonth(uint16_t year, uint16_t month) noexcept;

// Encodes a calendar date. False (and `value` untouched) unless year is
// 1..9999, month 1..12 and day 1..the days of that month.
QUILL_API bool TryEncodeDate(uint16_t year, uint16_t month, uint16_t day, TDateTime& value) noexcept;

// Encodes a calendar date; raises EConvertError "Invalid argument to date
// encode" for an impossible combination.
[[nodiscard]] QUILL_API TDateTime EncodeDate(uint16_t year, uint16_t month, uint16_t day);

// Encodes a time of day as a fraction of a day. False (and `value` untouched)
// unless hour < 24, min < 60, sec < 60 and msec < 1000.
QUILL_API bool TryEncodeTime(uint16_t hour, uint16_t min, uint16_t sec, uint16_t msec,
                             TDateTime& value) noexcept;

// Encodes a time of day; raises EConvertError "Invalid argument to time
// encode" for an impossible combination.
[[nodiscard]] QUILL_API TDateTime EncodeTime(uint16_t hour, uint16_t min, uint16_t sec, uint16_t msec);

// Decodes the date part. The value is first rounded to the nearest
// millisecond, so a value less than half a millisecond before midnight is the
// next day. The day number is the rounded value truncated toward zero. Days
// outside 1 January 0001 .. 31 December 9999, and values that are not finite,
// decode as 0/0/0.
QUILL_API void DecodeDate(TDateTime value, uint16_t& year, uint16_t& month, uint16_t& day) noexcept;

// Decodes the time of day (of the absolute value, rounded to the nearest
// millisecond). Values that are not finite decode as 00:00:00.000.
QUILL_API void DecodeTime(TDateTime value, uint16_t& hour, uint16_t& min, uint16_t& sec,
                          uint16_t& msec) noexcept;

// Day of the week of the date part: 1 = Sunday .. 7 = Saturday.
[[nodiscard]] QUILL_API uint16_t DayOfWeek(TDateTime value) noexcept;

// The current local date (time 0), the current local time of day (date 0),
// and both together, to the millisecond. Local means the process's time zone.
[[nodiscard]] QUILL_API TDateTime Date();
[[nodiscard]] QUILL_API TDateTime Time();
[[nodiscard]] QUILL_API TDateTime Now();

// The current local year (what DecodeDate(Date()) gives as year).
[[nodiscard]] QUILL_API uint16_t CurrentYear();

}  // namespace quill
