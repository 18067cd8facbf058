// Date and time text: reading dates and times under format settings, and
// writing them with the runtime's format letters.
//
// Reading is driven by four settings only: the order of day, month and year
// (the first of the letters d, m, y found in ShortDateFormat; "e" counts as
// y; none found means month/day/year), DateSeparator, TimeSeparator with
// DecimalSeparator for milliseconds, and the AM/PM words. ShortTimeFormat and
// LongTimeFormat are not consulted. "Blank" below means the space character
// only.
//
//   TFormatSettings fs;  fs.ShortDateFormat = u"dd/mm/yyyy";
//   TDateTime v;
//   quill::TryStrToDateTime(u"25/12/23 3:04 pm", v, fs);   // 2023-12-25 15:04
//
// A date is two or three numbers joined by DateSeparator, each preceded by
// optional blanks (the separator too). A number is a run of digits read while
// its value is below 1000, so "12345" stops after "1234". With three numbers
// the order decides which is which; with two, the year is the current year
// and the pair is day/month for a day-first order and month/day otherwise. A
// year typed with one or two digits is completed by
// TwoDigitYearCenturyWindow: the pivot is the current year minus the window,
// the year goes into the pivot's century, and 100 is added when it then falls
// before the pivot (window 0: the current century). Three or more digits are
// taken as typed ("0005" is year 5). One trailing DateSeparator and blanks are
// allowed.
//
// A time is an optional AM/PM word, an hour, then optionally TimeSeparator
// and minutes, and after minutes optionally TimeSeparator and seconds, and
// after seconds optionally DecimalSeparator and milliseconds read as an
// integer count (".5" is 5 ms, ".1234" fails). Without a leading AM/PM word a
// trailing one may follow. AM/PM words are TimeAMString or "AM", then
// TimePMString or "PM", in any case; with one the hour must be 1..12 (12 AM
// is midnight, 12 PM noon). Trailing blanks are allowed.
//
// A date and time is a date, then (after blanks) a time; or, when no date can
// be read, the whole text as a time on day 0. Text left over after the time is
// an error, as is anything before the first number.
#pragma once

#include <string_view>

#include "quill/rtl/export.h"
#include "quill/rtl/formatsettings.h"
#include "quill/rtl/types.h"

namespace quill {

// Reads a date (time 0). False, with `value` untouched, unless the whole text
// is a date as described above and the date exists.
QUILL_API bool TryStrToDate(std::u16string_view s, TDateTime& value, const TFormatSettings& fs);
QUILL_API bool TryStrToDate(std::u16string_view s, TDateTime& value);

// Reads a time of day (date 0). False, with `value` untouched, unless the
// whole text is a time and the time exists.
QUILL_API bool TryStrToTime(std::u16string_view s, TDateTime& value, const TFormatSettings& fs);
QUILL_API bool TryStrToTime(std::u16string_view s, TDateTime& value);

// Reads a date optionally followed by a time, or a time alone. For a negative
// date the time is subtracted (so the time of day reads back unchanged).
// Never allocates.
QUILL_API bool TryStrToDateTime(std::u16string_view s, TDateTime& value, const TFormatSettings& fs);
QUILL_API bool TryStrToDateTime(std::u16string_view s, TDateTime& value);

// The raising forms: EConvertError "'<text>' is not a valid date", "... valid
// time", "... valid date and time". The forms without settings use
// FormatSettings().
[[nodiscard]] QUILL_API TDateTime StrToDate(std::u16string_view s, const TFormatSettings& fs);
[[nodiscard]] QUILL_API TDateTime StrToDate(std::u16string_view s);
[[nodiscard]] QUILL_API TDateTime StrToTime(std::u16string_view s, const TFormatSettings& fs);
[[nodiscard]] QUILL_API TDateTime StrToTime(std::u16string_view s);
[[nodiscard]] QUILL_API TDateTime StrToDateTime(std::u16string_view s, const TFormatSettings& fs);
[[nodiscard]] QUILL_API TDateTime StrToDateTime(std::u16string_view s);

// Writes `value` by `format`. Letters, in any case:
//   c        ShortDateFormat, then " " and LongTimeFormat unless the time is 0
//   d dd     day without / with leading zero   ddd dddd  short / long day name
//   ddddd    ShortDateFormat                    dddddd    LongDateFormat
//   m mm     month (minutes right after an h or hh)  mmm mmmm short / long month name
//   yy yyyy  two-digit / four-digit year (y alone and yyy count as yy / yyyy)
//   h hh     hour   n nn minute   s ss second   z zzz millisecond (zz as zzz)
//   t tt     ShortTimeFormat / LongTimeFormat
//   am/pm a/p  the letters in the case written; ampm  TimeAMString/TimePMString;
//            any of them anywhere in the format makes h a 12-hour clock
//   /  :     DateSeparator / TimeSeparator
//   "..." '...'  literal text; every other character is copied.
// An empty format gives the "c" form. A date that does not decode (before
// year 1) prints zeros.
[[nodiscard]] QUILL_API UnicodeString FormatDateTime(std::u16string_view format, TDateTime value,
                                                     const TFormatSettings& fs);
[[nodiscard]] QUILL_API UnicodeString FormatDateTime(std::u16string_view format, TDateTime value);

// FormatDateTime with "ddddd", "t"/"tt" and "c": ShortDateFormat,
// LongTimeFormat, and both.
[[nodiscard]] QUILL_API UnicodeString DateToStr(TDateTime value, const TFormatSettings& fs);
[[nodiscard]] QUILL_API UnicodeString TimeToStr(TDateTime value, const TFormatSettings& fs);
[[nodiscard]] QUILL_API UnicodeString DateTimeToStr(TDateTime value, const TFormatSettings& fs);

}  // namespace quill
